#include "commands/StopListCommands.h"

#include "base/Files.h"
#include "commands/SeenTour.h"
#include "publish/TourPages.h"
#include "support/DocumentFixture.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace wendmark {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Key;
using testing::Not;
using testing::Pair;
using testing::UnorderedElementsAre;

using Answer = StopListResult::Answer;
using test::differences;
using test::Seen;
using test::seen;

/// Counts how often each file of the working copy is written: generators call stayResponsive() before and
/// after each.
class WriteCounter final : public Desktop {
public:
    void showLineError(const std::string&) override {}
    void processPendingEvents() override {}
    float timeOfDay() override { return 0; }
    void navigateMainBrowser(const std::string&) override { ++navigations; }
    void setBusyPointer(Pointer) override {}
    void stayResponsive() override {
        for (const std::string& name : files::list(folder, files::Links::anywhere).names) {
            const std::string stamp = files::stampOf(files::join(folder, name));
            if (std::exchange(m_stamps[name], stamp) != stamp)
                ++writes[name];
        }
    }
    void forget() {
        stayResponsive();
        writes.clear();
        navigations = 0;
    }

    std::string folder;
    std::map<std::string, int> writes;
    int navigations = 0;

private:
    std::map<std::string, std::string> m_stamps;
};

struct Ear final : DocumentListener {
    explicit Ear(TourDocument& heard) : document(heard) { document.addListener(*this); }
    ~Ear() override { document.removeListener(*this); }
    void tourChangedNow() override { ++changes; }
    void currentStopChanged() override { ++places; }
    void filesChanged() override { ++files; }
    void stopContentChanged(std::int16_t) override { ++contents; }

    TourDocument& document;
    int changes = 0;
    int places = 0;
    int files = 0;
    int contents = 0;
};

class StopListCommandsTest : public testing::Test {
protected:
    StopListCommandsTest() { program.openTour(program.makeTour("first", 6)); }

    /// The numbers that the stops had when the tour was opened; "T" is a stop that is called otherwise.
    std::string order() const {
        std::string all;
        for (const Stop& stop : document.model().stops)
            all += stop.stopTitle.starts_with("Stop ") ? stop.stopTitle.substr(5) : std::string("T");
        return all;
    }

    std::string fullTourOf(int stops) { return program.makeTour("of" + std::to_string(stops), stops); }

    /// Undo brings everything back, and redo leads forth again.
    void expectUndoOf(const std::string& name, const Seen& before) {
        const Seen after = seen(program);
        const std::string newOrder = order();
        EXPECT_EQ(document.undoName(), name);
        document.undo();
        EXPECT_THAT(differences(seen(program), before), IsEmpty());
        document.redo();
        EXPECT_THAT(differences(seen(program), after), IsEmpty());
        EXPECT_EQ(order(), newOrder);
    }

    test::DocumentFixture program;
    TourDocument& document = program.document;
};

TEST_F(StopListCommandsTest, movedStopsStandTogetherInTheirOrderBeforeTheTarget) {
    struct Case {
        StopNumbers stops;
        std::int16_t target;
        const char* order;
    };
    const std::vector<Case> cases = {{{5, 2}, 4, "132546"}, {{6, 1, 6}, 3, "216345"}, {{1, 2}, 7, "345612"},
                                     {{4, 6}, 1, "461235"}, {{1, 3, 5}, 4, "213546"}, {{2}, 7, "134562"}};
    for (const Case& moved : cases) {
        SCOPED_TRACE(moved.order);
        const Seen before = seen(program);
        EXPECT_TRUE(document.moveStops(moved.stops, moved.target).done());
        EXPECT_EQ(order(), moved.order);
        expectUndoOf("Move Stops", before);
        document.undo();
    }
}

TEST_F(StopListCommandsTest, moveThatLeavesTheOrderIsNoStepAndTellsNobody) {
    const Seen before = seen(program);
    const std::uint64_t steps = program.steps();
    const Ear ear(document);
    const std::size_t navigations = program.desktop.addresses.size();
    EXPECT_EQ(document.moveStops({2, 3}, 2).answer, Answer::unchanged);
    EXPECT_EQ(document.moveStops({3, 2}, 3).answer, Answer::unchanged);
    EXPECT_EQ(document.moveStops({2, 3}, 4).answer, Answer::unchanged);
    EXPECT_EQ(document.moveStops({}, 4).answer, Answer::unchanged);
    EXPECT_EQ(program.steps(), steps);
    EXPECT_EQ(ear.changes + ear.files + ear.places, 0);
    EXPECT_EQ(program.desktop.addresses.size(), navigations);
    EXPECT_FALSE(document.model().tourChanged);
    EXPECT_THAT(differences(seen(program), before), IsEmpty());
}

TEST_F(StopListCommandsTest, currentStopStaysTheSameStopWhereverItLands) {
    document.goToStop(3);
    document.moveStops({3, 4}, 1);
    EXPECT_EQ(document.model().currentStop, 1);
    document.moveStops({6}, 1);
    EXPECT_EQ(document.model().currentStop, 2);
    document.moveStops({2}, 7);
    EXPECT_EQ(document.model().currentStop, 6);
    document.goToStop(0);
    document.moveStops({2}, 7);
    EXPECT_EQ(document.model().currentStop, 0);
}

TEST_F(StopListCommandsTest, removedStopsComeBackAndTheirPageFilesStay) {
    const Seen before = seen(program);
    const std::string fifth = test::readFile(program.working("page5.htm"));
    EXPECT_TRUE(document.removeStops({6, 2, 2, 1}).done());
    EXPECT_EQ(order(), "345");
    EXPECT_EQ(test::readFile(program.working("page5.htm")), fifth);
    EXPECT_THAT(test::readFile(program.working("page3.htm")), HasSubstr("Exit button"));
    EXPECT_THAT(test::readFile(program.working("toc.htm")), Not(HasSubstr("page4.htm")));
    EXPECT_THAT(test::readFile(program.working("framever.htm")), HasSubstr("numStops = 3"));
    expectUndoOf("Delete Stops", before);
}

TEST_F(StopListCommandsTest, afterRemovingTheNextStopThatStaysIsTheCurrentOne) {
    struct Case {
        std::int16_t current;
        StopNumbers removed;
        std::int16_t after;
    };
    const std::vector<Case> cases = {{3, {1, 2}, 1}, {3, {3}, 3},    {3, {3, 4}, 3},
                                     {3, {1, 3}, 2}, {5, {5, 6}, 4}, {6, {1, 6}, 4},
                                     {0, {1, 2}, 0}, {4, {6}, 4},    {2, {1, 2, 3, 4, 5, 6}, 0}};
    for (const Case& one : cases) {
        document.goToStop(one.current);
        EXPECT_TRUE(document.removeStops(one.removed).done());
        EXPECT_EQ(document.model().currentStop, one.after) << one.current << " of " << one.removed.size();
        document.undo();
        EXPECT_EQ(document.model().currentStop, one.current);
    }
}

TEST_F(StopListCommandsTest, tourMayLoseAllItsStops) {
    const Seen before = seen(program);
    EXPECT_TRUE(document.removeStops({1, 2, 3, 4, 5, 6}).done());
    EXPECT_EQ(document.model().stopCount(), 0);
    EXPECT_THAT(program.desktop.addresses.back(), testing::EndsWith("framever.htm"));
    EXPECT_THAT(test::readFile(program.working("framever.htm")), HasSubstr("numStops = 0"));
    expectUndoOf("Delete Stops", before);
}

TEST_F(StopListCommandsTest, copiesStandBehindTheLastOfTheirOriginals) {
    const Seen before = seen(program);
    EXPECT_TRUE(document.duplicateStops({4, 1}).done());
    EXPECT_EQ(order(), "12341456");
    EXPECT_EQ(document.model().currentStop, 5);
    EXPECT_EQ(document.model().stops.at(5), document.model().stops.at(1));
    expectUndoOf("Duplicate Stops", before);
}

TEST_F(StopListCommandsTest, insertedStopsStandBehindThePositionAndTheFirstIsTheCurrentOne) {
    const std::vector<Stop> two = {{"Tower", "http://host/tower", "High.", ""},
                                   {"Temple", "http://host/temple", "", "Look."}};
    for (const auto& [position, expected] :
         std::map<std::int16_t, std::string>{{0, "TT123456"}, {3, "123TT456"}, {6, "123456TT"}}) {
        const Seen before = seen(program);
        EXPECT_TRUE(document.insertStops(position, two).done());
        EXPECT_EQ(order(), expected);
        EXPECT_EQ(document.model().currentStop, position + 1);
        expectUndoOf("Insert Stops", before);
        document.undo();
    }
}

TEST_F(StopListCommandsTest, insertedTextsAreSuchAsAScriptGivesBack) {
    program.change([](TourModel& model) { model.autoInstruction = false; });
    document.insertStops(
        0, {{"Two\nlines", "http://host/\r\n<<<VoskInfo>>>", " \r\n", "<<<VoskInfo>>>#Author"}});
    const Stop& stop = document.model().stops.at(1);
    EXPECT_EQ(stop.stopTitle, "Two lines");
    EXPECT_EQ(stop.stopURL, "http://host/  <<<VoskInfo>>>");
    EXPECT_EQ(stop.stopNarration, noNarration);
    EXPECT_EQ(stop.stopInstruction, "&lt;<<VoskInfo>>>#Author");
}

TEST_F(StopListCommandsTest, filesComeWithTheirStopsInOneStep) {
    test::writeFile(program.scratch / "Tower.html", "<p>tower</p>");
    test::writeFile(program.scratch / "other.htm", "other");
    document.insertStops(6, {{"Old", "tower.htm", "", ""}}, {{program.scratch / "other.htm", "tower.htm"}});
    const Seen before = seen(program);
    const StopListResult result = document.insertStops(
        6, {{"Tower", "tower.htm", "", ""}, {"Lost", "lost.htm", "", ""}},
        {{program.scratch / "Tower.html", "tower.htm"}, {program.scratch / "lost.html", "lost.htm"}});
    EXPECT_TRUE(result.done());
    EXPECT_THAT(result.notCopied, ElementsAre("lost.htm"));
    EXPECT_EQ(test::readFile(program.working("tower.htm")), "<p>tower</p>");
    expectUndoOf("Insert Stops", before);
    document.undo();
    EXPECT_EQ(test::readFile(program.working("tower.htm")), "other");
}

TEST_F(StopListCommandsTest, moreStopsThanThereIsRoomForAreRefusedAsAWholeInWords) {
    program.openTour(fullTourOf(98));
    const Seen before = seen(program);
    const std::uint64_t steps = program.steps();
    const Ear ear(document);
    const std::vector<Stop> three(3, Stop{"T", "http://host/", "", ""});
    const StopListResult result = document.insertStops(4, three, {{program.working("toc.htm"), "new.htm"}});
    EXPECT_EQ(result.answer, Answer::noRoom);
    EXPECT_EQ(result.room, 2);
    EXPECT_EQ(refusalOf(result), "The tour has room for 2 more stops.");
    EXPECT_EQ(document.duplicateStops({1, 2, 98}).answer, Answer::noRoom);
    EXPECT_EQ(program.steps(), steps);
    EXPECT_EQ(ear.changes, 0);
    EXPECT_THAT(differences(seen(program), before), IsEmpty());

    document.duplicateStops({1});
    EXPECT_EQ(refusalOf(document.duplicateStops({1, 2})), "The tour has room for 1 more stop.");
    EXPECT_TRUE(document.insertStops(99, {three.front()}).done());
    EXPECT_EQ(refusalOf(document.insertStops(0, {three.front()})), "The tour has no room for more stops.");
    EXPECT_EQ(document.model().stopCount(), 100);
}

TEST_F(StopListCommandsTest, numbersThatAreNoStopsOrPlacesAreRefused) {
    const Seen before = seen(program);
    for (const StopNumbers& wrong : {StopNumbers{0}, StopNumbers{-1, 2}, StopNumbers{1, 7}}) {
        EXPECT_EQ(document.moveStops(wrong, 1).answer, Answer::noSuchStop);
        EXPECT_EQ(document.removeStops(wrong).answer, Answer::noSuchStop);
        EXPECT_EQ(document.duplicateStops(wrong).answer, Answer::noSuchStop);
    }
    EXPECT_EQ(refusalOf(document.removeStops({7})), "The tour has no such stop.");
    for (const std::int16_t place : StopNumbers{-1, 0, 8})
        EXPECT_EQ(document.moveStops({1}, place).answer, Answer::noSuchPlace);
    EXPECT_EQ(document.insertStops(-1, std::vector<Stop>(1)).answer, Answer::noSuchPlace);
    EXPECT_EQ(refusalOf(document.insertStops(7, std::vector<Stop>(1))),
              "The tour has no such place for a stop.");
    EXPECT_EQ(document.insertStops(7, {}).answer, Answer::noSuchPlace);
    EXPECT_EQ(refusalOf(document.insertStops(6, {})), "");
    EXPECT_THAT(differences(seen(program), before), IsEmpty());
    EXPECT_EQ(document.undoName(), "Open Tour");
    EXPECT_THAT(program.log.failures, IsEmpty());
}

TEST_F(StopListCommandsTest, listenersAreToldOnceAndTheTourCountsAsChanged) {
    document.goToStop(2);
    const Ear ear(document);
    document.moveStops({2}, 1);
    EXPECT_EQ(ear.changes, 1);
    EXPECT_EQ(ear.files, 1);
    EXPECT_EQ(ear.places, 1);
    EXPECT_TRUE(document.model().tourChanged);
    document.removeStops({4, 5});
    EXPECT_EQ(ear.changes, 2);
    EXPECT_EQ(ear.places, 1);
    document.duplicateStops({1, 2});
    document.insertStops(1, std::vector<Stop>(2));
    EXPECT_EQ(ear.changes, 4);
    EXPECT_EQ(ear.contents, 0);
}

TEST_F(StopListCommandsTest, tourThatCountsMoreStopsThanItHoldsCanBeTidiedUp) {
    program.openTour(program.makeTour("over", 103));
    EXPECT_EQ(document.duplicateStops({1}).answer, Answer::noRoom);
    EXPECT_EQ(document.duplicateStops({1}).room, 0);
    EXPECT_EQ(document.removeStops({101}).answer, Answer::noSuchStop);
    EXPECT_TRUE(document.moveStops({100}, 1).done());
    EXPECT_EQ(document.model().stops.at(1).stopTitle, "Stop 100");
    EXPECT_TRUE(document.removeStops({1, 2}).done());
    EXPECT_EQ(document.model().stops.held(), 98);
    EXPECT_EQ(document.model().stopCount(), 101);
}

class PagesOfStopListsTest : public testing::Test {
protected:
    PagesOfStopListsTest() {
        tour.useShippedTemplates();
        for (int n = 1; n <= 6; ++n)
            tour.addStop("Stop " + std::to_string(n), "newpage.htm");
        desktop.folder = tour.scratch / "NewTour";
        makeEveryPage(context);
        desktop.forget();
    }

    test::TestTour tour;
    WriteCounter desktop;
    Workspace workspace{WorkspaceFolders::inside(tour.scratch.path()), tour.model, desktop, tour.log};
    TourContext context{tour.model, workspace, desktop, tour.log};
};

TEST_F(PagesOfStopListsTest, moveMakesThePagesBetweenOnceAndNoOthers) {
    moveStops(context, {2, 3}, 5);
    EXPECT_THAT(desktop.writes,
                UnorderedElementsAre(Pair("page2.htm", 1), Pair("page3.htm", 1), Pair("page4.htm", 1),
                                     Pair("toc.htm", 1), Pair("tguide.htm", 1), Pair("tmpframe.htm", 1)));
    EXPECT_EQ(desktop.navigations, 1);
}

TEST_F(PagesOfStopListsTest, removingMakesThePagesBehindOnce) {
    removeStops(context, {3, 6});
    EXPECT_THAT(desktop.writes,
                UnorderedElementsAre(Pair("page2.htm", 1), Pair("page3.htm", 1), Pair("page4.htm", 1),
                                     Pair("toc.htm", 1), Pair("tguide.htm", 1), Pair("tmpframe.htm", 1),
                                     Pair("framever.htm", 1)));
    EXPECT_EQ(desktop.navigations, 1);
    desktop.forget();
    removeStops(context, {4});
    EXPECT_THAT(desktop.writes, Contains(Key("page3.htm"))) << "It has become the last.";
}

TEST_F(PagesOfStopListsTest, insertingMakesThePagesBehindOnce) {
    insertStops(context, 6, std::vector<Stop>(3));
    EXPECT_THAT(desktop.writes, AllOf(Contains(Key("page6.htm")), Not(Contains(Key("page5.htm")))))
        << "The sixth was the last.";
    EXPECT_THAT(desktop.writes, Each(Pair(testing::_, 1)));
    desktop.forget();
    duplicateStops(context, {1, 2, 3});
    EXPECT_THAT(desktop.writes, testing::SizeIs(10 + 4)) << "Pages 3 to 12, lists, framesets.";
    EXPECT_THAT(desktop.writes, Each(Pair(testing::_, 1)));
    EXPECT_EQ(desktop.navigations, 1);
}

} // namespace
} // namespace wendmark
