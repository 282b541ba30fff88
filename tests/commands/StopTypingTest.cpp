#include "commands/SeenTour.h"
#include "commands/StepHistory.h"
#include "support/DocumentFixture.h"

#include <gmock/gmock.h>

namespace wendmark {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using Answer = StopListResult::Answer;
using test::differences;
using test::Seen;
using test::seen;

class StopTypingTest : public testing::Test {
protected:
    StopTypingTest() { program.openTour(program.makeTour("first", 3)); }

    StopListResult type(std::int16_t stop, std::string Stop::*field, const std::string& text,
                        std::uint64_t burst) {
        Stop fields = document.model().stops.at(stop);
        fields.*field = text;
        return document.setStop(stop, fields, burst);
    }

    void typeWord(const std::string& word, std::uint64_t burst) {
        for (std::size_t length = 1; length <= word.size(); ++length)
            type(2, &Stop::stopTitle, word.substr(0, length), burst);
    }

    const std::string& title() const { return document.model().stops.at(2).stopTitle; }

    test::DocumentFixture program;
    TourDocument& document = program.document;
};

TEST_F(StopTypingTest, burstIsOneStep) {
    const Seen before = seen(program);
    typeWord("Temple", 1);
    const Seen after = seen(program);
    EXPECT_EQ(document.undoName(), "Edit Title");
    EXPECT_THAT(test::readFile(program.working("page2.htm")), HasSubstr("Temple"));
    document.undo();
    EXPECT_THAT(differences(seen(program), before), IsEmpty());
    EXPECT_EQ(document.undoName(), "Open Tour");
    EXPECT_TRUE(document.isAsSaved());
    document.redo();
    EXPECT_THAT(differences(seen(program), after), IsEmpty());
}

TEST_F(StopTypingTest, anotherBurstFieldOrStopIsAnotherStep) {
    typeWord("Tem", 1);
    const Seen first = seen(program);
    typeWord("Temple", 2);
    const Seen second = seen(program);
    type(2, &Stop::stopNarration, "W", 2);
    type(2, &Stop::stopNarration, "Words", 2);
    EXPECT_EQ(document.undoName(), "Edit Words");
    type(3, &Stop::stopNarration, "Wo", 2);
    document.undo();
    document.undo();
    EXPECT_THAT(differences(seen(program), second), IsEmpty());
    document.undo();
    EXPECT_THAT(differences(seen(program), first), IsEmpty());
    document.undo();
    EXPECT_EQ(document.undoName(), "Open Tour");
}

TEST_F(StopTypingTest, saveEndsABurst) {
    typeWord("Tem", 1);
    EXPECT_TRUE(document.save());
    typeWord("Temple", 1);
    EXPECT_FALSE(document.isAsSaved());
    document.undo();
    EXPECT_EQ(title(), "Tem");
    EXPECT_TRUE(document.isAsSaved());
    document.undo();
    EXPECT_EQ(title(), "Stop 2");
    EXPECT_FALSE(document.isAsSaved());
}

TEST_F(StopTypingTest, otherCommandsEndABurst) {
    typeWord("Tem", 1);
    document.moveStops({1}, 4);
    document.moveStops({3}, 1);
    typeWord("Temple", 1);
    document.undo();
    EXPECT_EQ(title(), "Tem");
    EXPECT_EQ(document.undoName(), "Move Stops");
    document.redo();
    document.addFile(program.working("toc.htm"), "own.htm", "Add File");
    typeWord("Tower", 1);
    document.undo();
    EXPECT_EQ(title(), "Temple");
}

TEST_F(StopTypingTest, undoEndsABurstAndTypingThenTakesWhatWasUndoneAway) {
    typeWord("Tem", 1);
    document.undo();
    EXPECT_EQ(document.redoName(), "Edit Title");
    typeWord("Tower", 1);
    EXPECT_EQ(document.redoName(), std::nullopt);
    document.undo();
    EXPECT_EQ(title(), "Stop 2");
    document.redo();
    EXPECT_EQ(title(), "Tower");
    typeWord("Towers", 1);
    document.undo();
    EXPECT_EQ(title(), "Tower");
}

TEST_F(StopTypingTest, goingToAnotherStopAndLookingDoNotEndABurst) {
    typeWord("Tem", 1);
    document.goToStop(3);
    document.showNextStop();
    document.markChanged();
    typeWord("Temple", 1);
    document.undo();
    EXPECT_EQ(title(), "Stop 2");
    EXPECT_EQ(document.model().currentStop, 2);
}

TEST_F(StopTypingTest, bookmarksThatWereReadMeanwhileSurviveTheUndo) {
    test::writeFile(program.working("goodlist.txt"), "http://a.example/\r\nfirst\r\n65535\r\n");
    typeWord("Tem", 1);
    document.loadBookmarks();
    typeWord("Temple", 1);
    document.undo();
    EXPECT_EQ(title(), "Tem");
    EXPECT_EQ(document.bookmarks().bookmarks.size(), 1U);
}

TEST_F(StopTypingTest, whatChangesNothingIsNoStepAndTellsNobody) {
    struct Ear final : DocumentListener {
        void tourChangedNow() override { ++heard; }
        void filesChanged() override { ++heard; }
        int heard = 0;
    } ear;
    document.addListener(ear);
    Stop same = document.model().stops.at(2);
    same.stopInstruction = "The program writes it.";
    EXPECT_EQ(document.setStop(2, same, 1).answer, Answer::unchanged);
    EXPECT_EQ(document.setStop(0, same, 1).answer, Answer::noSuchStop);
    EXPECT_EQ(document.setStop(4, same, 1).answer, Answer::noSuchStop);
    EXPECT_EQ(ear.heard, 0);
    EXPECT_EQ(document.undoName(), "Open Tour");
    EXPECT_FALSE(document.model().tourChanged);
    document.removeListener(ear);
}

TEST_F(StopTypingTest, listenersHearWhichStopAndTheMainBrowserStaysWhereItIs) {
    struct Ear final : DocumentListener {
        void stopContentChanged(std::int16_t stop) override { stops.push_back(stop); }
        void tourChangedNow() override { ++changes; }
        void currentStopChanged() override { ++places; }
        std::vector<int> stops;
        int changes = 0;
        int places = 0;
    } ear;
    document.goToStop(1);
    document.addListener(ear);
    const std::size_t navigations = program.desktop.addresses.size();
    type(3, &Stop::stopURL, "http://host/", 1);
    EXPECT_THAT(ear.stops, ElementsAre(3));
    EXPECT_EQ(ear.changes, 1);
    EXPECT_EQ(ear.places, 0);
    EXPECT_TRUE(document.model().tourChanged);
    EXPECT_EQ(document.model().currentStop, 1);
    EXPECT_EQ(program.desktop.addresses.size(), navigations);
    document.removeListener(ear);
}

TEST_F(StopTypingTest, pagesAreThoseThatTheEditorsMake) {
    program.change([](TourModel& model) { model.autoInstruction = false; });
    document.setStop(2, {"Temple", "http://host/t", "Words.", "Do it."}, 1);
    EXPECT_EQ(document.undoName(), "Edit Stop");
    const Seen typed = seen(program);
    document.undo();
    document.setTexts(2, {"Temple", "Words.", "Do it."});
    document.setAddress(2, "http://host/t");
    EXPECT_THAT(differences(seen(program), typed), IsEmpty());
}

TEST_F(StopTypingTest, automaticInstructionStaysThePrograms) {
    const std::string written = document.model().stops.at(2).stopInstruction;
    document.setStop(2, {"Temple", "http://host/t", "Words.", "Mine."}, 1);
    EXPECT_EQ(document.model().stops.at(2).stopInstruction, written);
    program.change([](TourModel& model) { model.autoInstruction = false; });
    type(2, &Stop::stopInstruction, "Mine.", 1);
    EXPECT_EQ(document.undoName(), "Edit Instruction");
    EXPECT_THAT(test::readFile(program.working("page2.htm")), HasSubstr("Mine."));
}

TEST_F(StopTypingTest, longBurstStaysSmallAndEachEditHasItsState) {
    const std::uint64_t steps = program.steps();
    for (std::size_t length = 1; length <= 300; ++length)
        type(2, &Stop::stopNarration, std::string(10 * length, 'a'), 1);
    EXPECT_EQ(program.steps(), steps + 300) << "Numbers of states.";
    EXPECT_LT(document.historyBytes(), 50'000U);
    document.undo();
    EXPECT_EQ(document.undoName(), "Open Tour");
}

TEST_F(StopTypingTest, stepThatGrowsPushesOldOnesOut) {
    for (int k = 0; k < 3; ++k)
        document.insertStop();
    for (std::size_t megabytes = 1; megabytes <= 2; ++megabytes)
        type(1, &Stop::stopNarration, std::string(megabytes * 30'000'000, 'a'), 1);
    EXPECT_GT(document.droppedSteps(), 0);
    EXPECT_EQ(document.undoName(), "Edit Words");
    document.undo();
    EXPECT_EQ(document.undoName(), std::nullopt);
}

} // namespace
} // namespace wendmark
