#include "tour_cli/TourFixture.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace wendmark::test {
namespace {

namespace fs = std::filesystem;

class InstallTest : public TourFixture {
protected:
    /// Installs the build and checks that the program works from the folder of programs.
    void installAndPublish(const ProgramRun& install, const std::string& prefix,
                           const std::string& installed) const {
        const ProgramResult result = install.run({"--install", WENDMARK_BUILD, "--prefix", prefix});
        ASSERT_EQ(result.status, 0) << result.errors;
        expectDone(
            ProgramRun(installed + "/bin/wendmark-tour").run({"publish", tour, "--into", scratch / "www"}));
        EXPECT_TRUE(exists(scratch / "www/playtour.htm"));
        fs::remove_all(scratch / "www");
    }
};

TEST_F(InstallTest, installedProgramPublishes) {
    installAndPublish(ProgramRun(WENDMARK_CMAKE), scratch / "prefix", scratch / "prefix");
    EXPECT_TRUE(exists(scratch / "prefix/share/man/man1/wendmark-tour.1.gz"));
    installAndPublish(ProgramRun(WENDMARK_CMAKE).with("DESTDIR", scratch / "package"), "/usr",
                      scratch / "package/usr");
    EXPECT_EQ(fs::read_symlink(scratch / "package/usr/bin/wendmark-tour"),
              "../" WENDMARK_INSTALL_LIBDIR "/wendmark/wendmark-tour");
}

TEST_F(InstallTest, manualPageRendersWithoutAWarning) {
    if (std::string(WENDMARK_GROFF).empty())
        GTEST_SKIP() << "groff is not installed";
    const ProgramResult result =
        ProgramRun(WENDMARK_GROFF).run({"-man", "-Tutf8", "-ww", "-P-cbou", WENDMARK_MANUAL_PAGE});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    for (const std::string word :
         {"publish", "print", "check", "--for", "--json", "--jobs", "--timeout", "--into", "--template",
          "--working-copy", "--title", "--from", "--to-stop", "--version"})
        EXPECT_THAT(result.output, ::testing::HasSubstr(word));
}

} // namespace
} // namespace wendmark::test
