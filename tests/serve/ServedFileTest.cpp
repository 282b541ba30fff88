#include "serve/ServedFile.h"

#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <sys/stat.h>

namespace wendmark {
namespace {

class ServedFileTest : public testing::Test {
protected:
    ServedFileTest() {
        test::writeFile(scratch / "tour/page1.htm", "<p>one");
        test::writeFile(scratch / "tour/pictures/Map one.gif", "GIF89a");
        test::writeFile(scratch / "secret.txt", "secret");
        test::writeFile(scratch / "tourist/page.htm", "not of this tour");
    }

    /// "-" for no file.
    std::string contents(std::string_view path) const {
        const std::optional<ServedFile> file = ServedFile::open(scratch / "tour", path);
        if (!file)
            return "-";
        std::string bytes(file->size() + 1, '\0');
        bytes.resize(file->read(0, bytes.data(), bytes.size()));
        return bytes;
    }

    void write(const std::string& name) const { test::writeFile(scratch / ("tour/" + name), "there"); }
    void link(const std::string& to, const std::string& name) const {
        std::filesystem::create_symlink(to, scratch / ("tour/" + name));
    }

    test::ScratchFolder scratch;
};

} // namespace

TEST_F(ServedFileTest, filesOfTheFolderAreServed) {
    EXPECT_EQ(contents("page1.htm"), "<p>one");
    EXPECT_EQ(contents("pictures/Map one.gif"), "GIF89a");
    write("\xC3\xBC"
          "ber.htm");
    EXPECT_EQ(contents("\xC3\xBC"
                       "ber.htm"),
              "there");
    write("old~town.htm");
    EXPECT_EQ(contents("old~town.htm"), "there");
}

TEST_F(ServedFileTest, nameMeansOneFileAlone) {
    EXPECT_EQ(contents("Page1.htm"), "-"); // As on most web servers.
    EXPECT_EQ(contents("page1.htm/"), "-");
    EXPECT_EQ(contents("page2.htm"), "-");
    EXPECT_EQ(contents(""), "-");
    EXPECT_EQ(contents(std::string_view("page1.htm\0.gif", 14)), "-");
}

TEST_F(ServedFileTest, nothingLeadsOut) {
    for (const char* const path :
         {"..", "../secret.txt", "pictures/../../secret.txt", "pictures/../page1.htm", "./page1.htm",
          "/etc/passwd", "//etc/passwd", "..\\secret.txt", "../tourist/page.htm", "../tour/page1.htm"})
        EXPECT_EQ(contents(path), "-") << path;
}

TEST_F(ServedFileTest, foldersPipesAndDevicesAreNoFiles) {
    EXPECT_EQ(contents("pictures"), "-");
    EXPECT_EQ(contents("pictures/"), "-");
    ASSERT_EQ(::mkfifo((scratch / "tour/pipe.htm").c_str(), 0600), 0);
    EXPECT_EQ(contents("pipe.htm"), "-");
    link("/dev/zero", "zero.htm");
    EXPECT_EQ(contents("zero.htm"), "-");
}

TEST_F(ServedFileTest, linksAreFollowedInsideTheFolderOnly) {
    link("page1.htm", "first.htm");
    EXPECT_EQ(contents("first.htm"), "<p>one");
    link("../secret.txt", "out.txt");
    EXPECT_EQ(contents("out.txt"), "-");
    link("../tourist", "beside");
    EXPECT_EQ(contents("beside/page.htm"), "-");
    link("circle.htm", "circle.htm");
    EXPECT_EQ(contents("circle.htm"), "-");
    link("nowhere.htm", "dangling.htm");
    EXPECT_EQ(contents("dangling.htm"), "-");
    write("goodlist.txt");
    link("goodlist.txt", "list.htm");
    EXPECT_EQ(contents("list.htm"), "-");
}

TEST_F(ServedFileTest, folderMayBeALinkItself) {
    std::filesystem::create_directory_symlink(scratch / "tour", scratch / "link");
    EXPECT_TRUE(ServedFile::open(scratch / "link", "page1.htm"));
    EXPECT_FALSE(ServedFile::open(scratch / "gone", "page1.htm"));
}

TEST_F(ServedFileTest, whatIsNotForVisitorsStays) {
    for (const char* const name :
         {".htaccess", ".git/config", "brhist.txt", "goodlist.txt", "GoodList.TXT", "page1.htm~",
          "page1.htm.bak", "Page.OLD", "page1.htm.orig", ".page1.htm.swp", "page1.swp", "#page1.htm#",
          "a.tmp", "pictures/.hidden", "pictures/goodlist.txt"}) {
        write(name);
        EXPECT_EQ(contents(name), "-") << name;
    }
}

TEST_F(ServedFileTest, readsFromAnywhere) {
    const ServedFile file = ServedFile::open(scratch / "tour", "page1.htm").value();
    std::array<char, 3> bytes = {'.', '.', '.'};
    EXPECT_EQ(file.size(), 6U);
    EXPECT_EQ(file.read(3, bytes.data(), bytes.size()), 3U);
    EXPECT_EQ(std::string(bytes.data(), 3), "one");
    EXPECT_EQ(file.read(5, bytes.data(), bytes.size()), 1U);
    EXPECT_EQ(file.read(6, bytes.data(), bytes.size()), 0U);
}

TEST(ContentTypeTest, endingTellsIt) {
    EXPECT_EQ(contentTypeOf("page1.htm"), "text/html");
    EXPECT_EQ(contentTypeOf("PAGE.HTML"), "text/html");
    EXPECT_EQ(contentTypeOf("tour.css"), "text/css");
    EXPECT_EQ(contentTypeOf("a/b.min.js"), "text/javascript");
    EXPECT_EQ(contentTypeOf("fr-logo.gif"), "image/gif");
    EXPECT_EQ(contentTypeOf("photo.JPEG"), "image/jpeg");
    EXPECT_EQ(contentTypeOf("drawing.svg"), "image/svg+xml");
    EXPECT_EQ(contentTypeOf("script.txt"), "text/plain");
    EXPECT_EQ(contentTypeOf("htm"), "application/octet-stream");
    EXPECT_EQ(contentTypeOf("archive.tar.gz"), "application/octet-stream");
    EXPECT_EQ(contentTypeOf(""), "application/octet-stream");
}

} // namespace wendmark
