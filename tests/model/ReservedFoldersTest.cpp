#include "model/ReservedFolders.h"

#include "model/Workspace.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace wendmark {
namespace {

namespace fs = std::filesystem;

const std::string reservedTemplate =
    "The 'Template' folder is used for internal operations, and cannot be used to store or retrieve user "
    "tours.";
const std::string reservedNewTour =
    "The 'NewTour' folder is used for internal operations, and cannot be used to store or retrieve user "
    "tours.";

class ReservedFoldersTest : public testing::Test {
protected:
    ReservedFoldersTest() {
        for (const std::string name : {"Template/sub", "NewTour/sub", "MyTours/walk"})
            fs::create_directories(scratch / ("app/" + name));
    }

    /// The message for a folder of the scratch folder.
    std::string messageFor(const std::string& name) const {
        return reservedTourMessage(folders, scratch / name);
    }

    test::ScratchFolder scratch;
    WorkspaceFolders folders = WorkspaceFolders::inside(scratch / "app");
};

TEST_F(ReservedFoldersTest, programsOwnFoldersAndWhatIsInThemAreRefused) {
    for (const std::string end : {"", "/", "/sub", "/sub/", "/not there", "/sub/../sub"}) {
        EXPECT_EQ(messageFor("app/Template" + end), reservedTemplate) << end;
        EXPECT_EQ(messageFor("app/NewTour" + end), reservedNewTour) << end;
    }
}

TEST_F(ReservedFoldersTest, caseOfTheNameDoesNotMatter) {
    EXPECT_EQ(messageFor("app/TEMPLATE"), reservedTemplate);
    EXPECT_EQ(messageFor("app/template/sub"), reservedTemplate);
    EXPECT_EQ(messageFor("app/newtour"), reservedNewTour);
}

TEST_F(ReservedFoldersTest, linksAreFollowed) {
    fs::create_directory_symlink(scratch / "app/Template", scratch / "link");
    fs::create_directory_symlink(scratch / "app", scratch / "program");
    fs::create_directory_symlink(scratch / "app/NewTour/sub", scratch / "app/MyTours/inside");
    EXPECT_EQ(messageFor("link"), reservedTemplate);
    EXPECT_EQ(messageFor("link/sub"), reservedTemplate);
    EXPECT_EQ(messageFor("program/newtour/new"), reservedNewTour);
    EXPECT_EQ(messageFor("app/MyTours/inside"), reservedNewTour);
}

TEST_F(ReservedFoldersTest, fixedFolderThatIsALinkIsRefusedByBothNames) {
    fs::rename(scratch / "app/Template", scratch / "shared");
    fs::create_directory_symlink(scratch / "shared", scratch / "app/Template");
    EXPECT_EQ(messageFor("app/Template"), reservedTemplate);
    EXPECT_EQ(messageFor("shared/sub"), reservedTemplate);
}

TEST_F(ReservedFoldersTest, relativePathsCountFromTheCurrentFolder) {
    fs::current_path(scratch / "app/MyTours");
    EXPECT_EQ(reservedTourMessage(folders, "../NewTour"), reservedNewTour);
    EXPECT_EQ(reservedTourMessage(folders, "walk"), "");
    fs::current_path("/");
}

TEST_F(ReservedFoldersTest, everyOtherFolderMayHoldATour) {
    for (const std::string name : {"app/MyTours/walk", "app/MyTours/sample", "app/Templates", "app/NewTour2",
                                   "app", "Template", "app/MyTours/Template", "app/Template/../MyTours"})
        EXPECT_EQ(messageFor(name), "") << name;
    EXPECT_EQ(reservedTourMessage(folders, ""), "");
}

} // namespace
} // namespace wendmark
