#include "recovery/SavedScripts.h"

#include "support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace wendmark {
namespace {

using testing::ElementsAre;

class SavedScripts : public testing::Test {
protected:
    /// Contents of the kept scripts of a tour, the oldest first.
    std::vector<std::string> kept(const std::string& tour) const {
        std::vector<std::string> scripts;
        for (const auto& [name, bytes] : test::folderContents(folder + "/" + folderNameFor(tour))) {
            if (name != "tour.txt")
                scripts.push_back(bytes);
        }
        return scripts;
    }

    test::ScratchFolder scratch;
    std::string folder = scratch / "state/scripts";
};

TEST_F(SavedScripts, lastFiveAreKept) {
    std::int64_t now = 1700000000;
    for (const std::string script : {"1", "2", "3", "4", "5", "6", "7"})
        EXPECT_TRUE(keepSavedScript(folder, "/tours/a", script, now += 10).ok());
    EXPECT_THAT(kept("/tours/a"), ElementsAre("3", "4", "5", "6", "7"));
}

TEST_F(SavedScripts, savesOfOneSecondAreKeptInTheirOrder) {
    for (const std::string script : {"1", "2", "3", "4", "5", "6", "7", "8"})
        EXPECT_TRUE(keepSavedScript(folder, "/tours/a", script, 1700000000).ok());
    EXPECT_THAT(kept("/tours/a"), ElementsAre("4", "5", "6", "7", "8"));
}

TEST_F(SavedScripts, clockThatWasSetBackDoesNotMixThemUp) {
    std::int64_t now = 1700000000;
    for (const std::string script : {"1", "2", "3", "4", "5", "6", "7"})
        EXPECT_TRUE(keepSavedScript(folder, "/tours/a", script, now -= 10).ok());
    EXPECT_THAT(kept("/tours/a"), ElementsAre("3", "4", "5", "6", "7"));
}

TEST_F(SavedScripts, sameScriptIsNotKeptTwice) {
    for (const std::string script : {"1", "1", "2", "2", "1"})
        EXPECT_TRUE(keepSavedScript(folder, "/tours/a", script, 1700000000).ok());
    EXPECT_THAT(kept("/tours/a"), ElementsAre("1", "2", "1"));
}

TEST_F(SavedScripts, eachTourHasItsOwn) {
    EXPECT_TRUE(keepSavedScript(folder, "/tours/a", "a", 1).ok());
    EXPECT_TRUE(keepSavedScript(folder, "/tours/b", "b", 1).ok());
    EXPECT_THAT(kept("/tours/a"), ElementsAre("a"));
    EXPECT_THAT(kept("/tours/b"), ElementsAre("b"));
    EXPECT_EQ(test::readFile(folder + "/" + folderNameFor("/tours/b") + "/tour.txt"), "/tours/b\n");
}

TEST_F(SavedScripts, folderThatCannotBeMadeIsAFailure) {
    test::writeFile(scratch / "state", "a file");
    EXPECT_FALSE(keepSavedScript(folder, "/tours/a", "a", 1).ok());
}

TEST(FolderNameFor, isTheSameInEveryRun) {
    EXPECT_EQ(folderNameFor(""), "cbf29ce484222325");
    EXPECT_EQ(folderNameFor("a"), "af63dc4c8601ec8c");
    EXPECT_NE(folderNameFor("/tours/a"), folderNameFor("/tours/b"));
}

} // namespace
} // namespace wendmark
