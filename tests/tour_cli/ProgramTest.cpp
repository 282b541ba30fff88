#include "tour_cli/HelpText.h"
#include "tour_cli/TourFixture.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <sys/stat.h>

namespace wendmark::test {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

class ProgramTest : public TourFixture {};

TEST_F(ProgramTest, helpGoesToTheStandardOutput) {
    for (const std::string option : {"--help", "-h"}) {
        const ProgramResult result = program().run({option});
        expectDone(result);
        EXPECT_EQ(result.output, cli::helpText());
    }
}

TEST_F(ProgramTest, helpOfOneCommandIsAskedInTwoWays) {
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"help", "new"}, {"new", "--help"}}) {
        const ProgramResult result = program().run(words);
        expectDone(result);
        EXPECT_EQ(result.output, cli::helpText("new"));
    }
}

TEST_F(ProgramTest, versionIsPrinted) {
    for (const std::string option : {"--version", "-v"}) {
        const ProgramResult result = program().run({option});
        expectDone(result);
        EXPECT_EQ(result.output, "wendmark-tour 1.09\n");
    }
}

TEST_F(ProgramTest, nothingThatSteersATerminalIsWritten) {
    const std::string evil =
        makeTour("evil\x1b[2J", "<<<VoskInfo>>>#Author\r\nTitle\x1b]0;x\x07\x9b\r\n\r\n");
    const ProgramResult done = program().run({"publish", evil, "--into", scratch / "www\x1b[31m"});
    EXPECT_EQ(done.status, 0);
    EXPECT_THAT(done.output, HasSubstr("\"Title\\x1B]0;x\\x07"));
    EXPECT_THAT(done.output, HasSubstr("/www\\x1B[31m\n"));
    const std::string turning = std::string("\xe2\x80") + '\xae'; // In pieces: it would turn this line, too.
    const std::string over = makeTour("over" + turning, "");
    fs::create_symlink("../evil", evil + "/out\x1b.htm");
    writeFile(scratch / "evil", "");
    for (const std::vector<std::string>& words : std::vector<std::vector<std::string>>{
             {"publish", over}, {"\x1b[2J"}, {"publish", evil, "--into", scratch / "out"}}) {
        const ProgramResult result = program().run(words);
        EXPECT_THAT(result.errors, ::testing::AnyOf(HasSubstr("\\x1B"), HasSubstr("over\\u202E/script.txt")));
        for (const std::string& raw : {std::string("\x1b"), turning, std::string("\x07")})
            EXPECT_THAT(result.output + result.errors + done.output + done.errors,
                        ::testing::Not(HasSubstr(raw)));
    }
}

TEST_F(ProgramTest, wrongUseEndsWithStatusTwoAndOneSentence) {
    const auto before = folderState(scratch.path());
    const std::vector<std::vector<std::string>> cases = {{},
                                                         {"pubish"},
                                                         {"help", "pubish"},
                                                         {"help", "new", "print"},
                                                         {"publish"},
                                                         {"publish", tour, "--bogus"},
                                                         {"new", scratch / "new"},
                                                         {"print", tour},
                                                         {"print", tour, "--to", "a.pdf", "--from", "two"},
                                                         {"check"},
                                                         {"check", ""},
                                                         {"check", tour, "--for", "ftp"},
                                                         {"check", tour, "--jobs", "0"},
                                                         {"check", tour, "--jobs=25"},
                                                         {"check", tour, "--timeout", "601"},
                                                         {"check", tour, "--json"},
                                                         {"publish", tour, tour}};
    for (const auto& words : cases) {
        SCOPED_TRACE(::testing::PrintToString(words));
        const ProgramResult result = program().run(words);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.output, "");
        ASSERT_EQ(linesOf(result.errors).size(), 1U);
        EXPECT_THAT(result.errors, ::testing::StartsWith("wendmark-tour: "));
        EXPECT_THAT(result.errors, HasSubstr("see wendmark-tour --help"));
    }
    EXPECT_EQ(folderState(scratch.path()), before);
}

TEST_F(ProgramTest, orderOfWordsDoesNotDependOnTheEnvironment) {
    const ProgramResult result =
        program().with("POSIXLY_CORRECT", "1").run({"publish", tour, "--into", scratch / "www"});
    expectDone(result);
    EXPECT_TRUE(exists(scratch / "www/playtour.htm"));
}

TEST_F(ProgramTest, printingReplacesOnlyRegularFiles) {
    ASSERT_EQ(mkfifo((scratch / "pipe").c_str(), 0666), 0);
    fs::create_symlink("/dev/null", scratch / "device");
    expectFailure(program(), {"print", tour, "--to", scratch / "pipe"},
                  {"pipe: only regular files are replaced"});
    expectFailure(program(), {"print", tour, "--to", scratch / "device"}, {"device: only regular files"});
    expectFailure(program(), {"print", tour, "--to", tour}, {"cannot write " + tour + ": it is a folder"});
}

TEST_F(ProgramTest, printingNeedsTheProgramBesideThisOne) {
    const ProgramRun alone = programInFolder(scratch / "app");
    expectFailure(alone, {"print", tour, "--to", scratch / "tour.pdf"},
                  {"cannot start", "app/print-tour", "No such file"});
}

TEST_F(ProgramTest, checkingNeedsTheProgramBesideThisOneAndSaysNothingOfTheTourWithoutIt) {
    const ProgramResult result = programInFolder(scratch / "app").run({"check", tour});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "wendmark-tour: cannot start " + (scratch / "app/check-tour") +
                                 ": No such file or directory\n");
}

TEST_F(ProgramTest, helpThatCannotBePrintedIsAFailure) {
    const ProgramResult result = program().withOutputTo("/dev/full").run({"--help"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "wendmark-tour: cannot write to the standard output: No space left on device\n");
}

TEST_F(ProgramTest, tourIsPublishedAlsoWhenTheReportCannotBePrinted) {
    const ProgramResult result =
        program().withOutputTo("/dev/full").run({"publish", tour, "--into", scratch / "www"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors,
              "wendmark-tour: warning: cannot write to the standard output: No space left on device\n");
    EXPECT_TRUE(exists(scratch / "www/playtour.htm"));
}

TEST_F(ProgramTest, tourIsPublishedAlsoWhenNobodyReadsTheReport) {
    const ProgramResult result =
        program().withOutputUnread().run({"publish", tour, "--into", scratch / "www"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "wendmark-tour: warning: cannot write to the standard output: Broken pipe\n");
    EXPECT_TRUE(exists(scratch / "www/playtour.htm"));
}

TEST_F(ProgramTest, tourIsPublishedAlsoWhenNobodyReadsTheErrors) {
    const std::string faulty = makeTour("faulty", "<<<VoskInfo>>>#Author\r\n" + scriptWithStops(1));
    const ProgramResult result =
        program().withErrorsUnread().run({"publish", faulty, "--into", scratch / "www"});
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(exists(scratch / "www/playtour.htm"));
}

TEST_F(ProgramTest, reportNamesTitleStopsAndFolder) {
    const ProgramResult result = program().run({"publish", tour, "--into", scratch / "www"});
    expectDone(result);
    EXPECT_EQ(result.output, "Published \"Plants of the Desert\", stops: 3, in " + (scratch / "www") + "\n");
}

TEST_F(ProgramTest, programThatIsALinkUsesTheTemplatesBesideTheRealOne) {
    programInFolder(scratch / "app");
    fs::create_symlink("app/wendmark-tour", scratch / "linked");
    expectDone(ProgramRun(scratch / "linked").run({"publish", tour, "--into", scratch / "www"}));
    EXPECT_TRUE(exists(scratch / "www/playtour.htm"));
}

} // namespace
} // namespace wendmark::test
