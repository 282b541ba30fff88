#include "publish/TourChoicesFile.h"

#include "support/TestTour.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace wendmark {
namespace {

using test::crlfLines;
using test::TestTour;
using testing::IsEmpty;
using testing::SizeIs;

class TourChoicesFile : public testing::Test {
protected:
    TourChoicesFile() {
        tour.writeTemplate("tourwords.js",
                           crlfLines({"begin", "//variable", "old", "//variable", "//language en", "en words",
                                      "//language de", "de words", "//languages end", "end"}));
    }

    bool has(std::string_view name) const { return test::exists(tour.workspace.workingFile(name)); }

    TestTour tour;
};

TEST_F(TourChoicesFile, wordsOfAllLanguagesAreThereWhileATourIsEdited) {
    tour.model.language = "de";
    EXPECT_TRUE(makeWordsAndChoices(tour.context));
    EXPECT_EQ(tour.working("tourwords.js"),
              crlfLines({"begin", "//variable", "tourHasChoices = true", "//variable", "//language en",
                         "en words", "//language de", "de words", "//languages end", "end"}));
}

TEST_F(TourChoicesFile, finalFormHasTheWordsOfTheToursLanguage) {
    tour.model.editingMode = false;
    tour.model.language = "de";
    makeWordsAndChoices(tour.context);
    EXPECT_EQ(tour.working("tourwords.js"),
              crlfLines({"begin", "//variable", "tourHasChoices = true", "//variable", "//language de",
                         "de words", "//languages end", "end"}));
    tour.model.language.clear();
    makeWordsAndChoices(tour.context);
    EXPECT_EQ(tour.working("tourwords.js"),
              crlfLines({"begin", "//variable", "tourHasChoices = false", "//variable", "//language en",
                         "en words", "//languages end", "end"}));
}

TEST_F(TourChoicesFile, languageWithoutWordsLeavesAllThatThereAre) {
    tour.model.editingMode = false;
    tour.model.language = "d";
    makeTourWords(tour.context);
    EXPECT_THAT(tour.workingLines("tourwords.js"), SizeIs(10));
}

TEST_F(TourChoicesFile, choicesAreThereWhenSomethingIsChosen) {
    EXPECT_TRUE(makeTourChoices(tour.context));
    EXPECT_FALSE(has("tourchoices.js"));
    tour.model.language = "de";
    tour.model.wordsBesidePage = true;
    EXPECT_TRUE(makeTourChoices(tour.context));
    EXPECT_EQ(tour.working("tourchoices.js"),
              crlfLines({"'use strict';", "", "// What the author of this tour has chosen for it.",
                         "tourChoices.language = 'de';", "tourChoices.layout = 'side';"}));
    tour.model.language.clear();
    tour.model.wordsBesidePage = false;
    EXPECT_TRUE(makeTourChoices(tour.context));
    EXPECT_FALSE(has("tourchoices.js"));
    EXPECT_THAT(tour.log.failures, IsEmpty());
}

TEST_F(TourChoicesFile, choicesThatCannotBeWrittenAreAFailure) {
    std::filesystem::create_directory(tour.workspace.workingFile("tourchoices.js"));
    tour.model.language = "de";
    EXPECT_FALSE(makeTourChoices(tour.context));
    EXPECT_THAT(tour.log.failures, SizeIs(1));
}

TEST_F(TourChoicesFile, templatesWithoutWordsGetNone) {
    std::filesystem::remove(tour.workspace.templateFile("tourwords.js"));
    EXPECT_TRUE(makeTourWords(tour.context));
    EXPECT_FALSE(has("tourwords.js"));
    EXPECT_THAT(tour.log.failures, IsEmpty());
}

} // namespace
} // namespace wendmark
