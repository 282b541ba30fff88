#include "recovery/SavedScripts.h"

#include "support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace wendmark {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

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

    /// The scripts "first" to "last".
    static std::vector<std::string> numbered(int first, int last) {
        std::vector<std::string> scripts;
        for (int n = first; n <= last; ++n)
            scripts.push_back(std::to_string(n));
        return scripts;
    }

    /// Contents of listed scripts.
    static std::vector<std::string> contents(const std::vector<SavedScript>& scripts) {
        std::vector<std::string> all;
        for (const SavedScript& script : scripts)
            all.push_back(test::readFile(script.path));
        return all;
    }

    test::ScratchFolder scratch;
    std::string folder = scratch / "state/scripts";
};

TEST_F(SavedScripts, lastTwentyAreKept) {
    std::int64_t now = 1700000000;
    for (const std::string& script : numbered(1, 22))
        EXPECT_TRUE(keepSavedScript(folder, "/tours/a", script, now += 10).ok());
    EXPECT_EQ(kept("/tours/a"), numbered(3, 22));
}

TEST_F(SavedScripts, savesOfOneSecondAreKeptInTheirOrder) {
    for (const std::string& script : numbered(1, 23))
        EXPECT_TRUE(keepSavedScript(folder, "/tours/a", script, 1700000000).ok());
    EXPECT_EQ(kept("/tours/a"), numbered(4, 23));
}

TEST_F(SavedScripts, clockThatWasSetBackDoesNotMixThemUp) {
    std::int64_t now = 1700000000;
    for (const std::string& script : numbered(1, 22))
        EXPECT_TRUE(keepSavedScript(folder, "/tours/a", script, now -= 10).ok());
    EXPECT_EQ(kept("/tours/a"), numbered(3, 22));
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

TEST_F(SavedScripts, areListedTheLatestFirst) {
    EXPECT_TRUE(keepSavedScript(folder, "/tours/a", "1", 100).ok());
    EXPECT_TRUE(keepSavedScript(folder, "/tours/a", "2", 300).ok());
    EXPECT_TRUE(keepSavedScript(folder, "/tours/a", "3", 300).ok());
    EXPECT_TRUE(keepSavedScript(folder, "/tours/b", "4", 200).ok());
    const std::vector<SavedScript> own = savedScriptsOf(folder, "/tours/a");
    EXPECT_THAT(contents(own), ElementsAre("3", "2", "1"));
    EXPECT_EQ(own.at(0).time, 300);
    EXPECT_EQ(own.at(2).time, 100);
    EXPECT_EQ(own.at(0).tourPath, "/tours/a");
    const std::vector<SavedScript> all = savedScriptsOfAllTours(folder);
    EXPECT_THAT(contents(all), ElementsAre("3", "2", "4", "1"));
    EXPECT_EQ(all.at(2).tourPath, "/tours/b");
}

TEST_F(SavedScripts, listIsEmptyWhereNothingIsKept) {
    EXPECT_THAT(savedScriptsOf(folder, "/tours/a"), IsEmpty());
    EXPECT_THAT(savedScriptsOfAllTours(folder), IsEmpty());
    EXPECT_TRUE(keepSavedScript(folder, "", "of a tour without a folder", 1).ok());
    EXPECT_THAT(savedScriptsOf(folder, ""), IsEmpty());
}

TEST_F(SavedScripts, filesOfOthersAreNotListed) {
    EXPECT_TRUE(keepSavedScript(folder, "/tours/a", "1", 1).ok());
    test::writeFile(folder + "/" + folderNameFor("/tours/a") + "/notes.txt", "mine");
    EXPECT_THAT(contents(savedScriptsOfAllTours(folder)), ElementsAre("1"));
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
