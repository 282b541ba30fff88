#include "tour_cli/Folders.h"

#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace wendmark::cli {
namespace {

namespace fs = std::filesystem;
using test::ScratchFolder;

TEST(Folders, typedFolderBecomesAbsoluteWithoutSeparatorAtItsEnd) {
    const ScratchFolder scratch;
    fs::current_path(scratch.path());
    EXPECT_EQ(absoluteFolder("tour"), scratch / "tour");
    EXPECT_EQ(absoluteFolder("tour///"), scratch / "tour");
    EXPECT_EQ(absoluteFolder("./a//./b/."), scratch / "a/b");
    EXPECT_EQ(absoluteFolder("."), scratch.path());
    EXPECT_EQ(absoluteFolder("/x/"), "/x");
    EXPECT_EQ(absoluteFolder("/"), "/");
}

TEST(Folders, twoDotsBehindALinkLeadOutOfWhatItLinksTo) {
    const ScratchFolder scratch;
    fs::create_directories(scratch / "far/away");
    fs::create_directory_symlink(scratch / "far/away", scratch / "link");
    EXPECT_EQ(absoluteFolder(scratch / "link/../tour"), scratch / "far/tour");
}

TEST(Folders, linksStayInAPathWithoutTwoDots) {
    const ScratchFolder scratch;
    fs::create_directory(scratch / "real");
    fs::create_directory_symlink("real", scratch / "link");
    EXPECT_EQ(absoluteFolder(scratch / "link/tour"), scratch / "link/tour");
}

TEST(Folders, tourIsNamedByItsFolderOrItsScript) {
    const ScratchFolder scratch;
    test::writeFile(scratch / "tour/script.txt", "Title");
    fs::create_directories(scratch / "odd/script.txt");
    EXPECT_EQ(tourFolder(scratch / "tour"), scratch / "tour");
    EXPECT_EQ(tourFolder(scratch / "tour/script.txt"), scratch / "tour");
    EXPECT_EQ(tourFolder(scratch / "tour/SCRIPT.TXT"), scratch / "tour");
    EXPECT_EQ(tourFolder(scratch / "tour/page1.htm"), scratch / "tour/page1.htm");
    EXPECT_EQ(tourFolder(scratch / "odd/script.txt"), scratch / "odd/script.txt");
    fs::current_path(scratch / "tour");
    EXPECT_EQ(tourFolder("script.txt"), scratch / "tour");
    fs::current_path("/");
}

TEST(Folders, insideIsDecidedByWhereLinksLead) {
    const ScratchFolder scratch;
    fs::create_directories(scratch / "outer/inner");
    fs::create_directory_symlink(scratch / "outer", scratch / "link");
    EXPECT_TRUE(isInside(scratch / "outer", scratch / "outer"));
    EXPECT_TRUE(isInside(scratch / "outer/inner", scratch / "outer/"));
    EXPECT_TRUE(isInside(scratch / "link/inner/new", scratch / "outer"));
    EXPECT_TRUE(isInside(scratch / "outer/inner", scratch / "link"));
    EXPECT_FALSE(isInside(scratch / "outer", scratch / "outer/inner"));
    EXPECT_FALSE(isInside(scratch / "outer2", scratch / "outer"));
}

TEST(Folders, madeFolderGoesAgainWithItsParentsUnlessKept) {
    const ScratchFolder scratch;
    {
        MadeFolder folder(scratch / "a/b/c");
        ASSERT_TRUE(folder.makeIfMissing().ok());
        EXPECT_TRUE(fs::is_directory(scratch / "a/b/c"));
    }
    EXPECT_FALSE(test::exists(scratch / "a"));
    {
        MadeFolder folder(scratch / "a/b/c");
        ASSERT_TRUE(folder.makeIfMissing().ok());
        folder.keep();
    }
    EXPECT_TRUE(fs::is_directory(scratch / "a/b/c"));
}

TEST(Folders, folderThatWasThereBeforeStays) {
    const ScratchFolder scratch;
    test::writeFile(scratch / "a/file", "old");
    {
        MadeFolder folder(scratch / "a");
        ASSERT_TRUE(folder.makeIfMissing().ok());
    }
    EXPECT_EQ(test::readFile(scratch / "a/file"), "old");
}

TEST(Folders, folderCannotBeMadeWhereAFileStands) {
    const ScratchFolder scratch;
    test::writeFile(scratch / "file", "old");
    fs::create_symlink("nowhere", scratch / "dangling");
    for (const std::string& path : {scratch / "file", scratch / "file/sub", scratch / "dangling"}) {
        MadeFolder folder(path);
        const Outcome made = folder.makeIfMissing();
        EXPECT_FALSE(made.ok());
        EXPECT_TRUE(made.message().starts_with("cannot create the folder " + path + ": ")) << made.message();
    }
    EXPECT_EQ(test::readFile(scratch / "file"), "old");
    EXPECT_TRUE(test::exists(scratch / "dangling"));
}

} // namespace
} // namespace wendmark::cli
