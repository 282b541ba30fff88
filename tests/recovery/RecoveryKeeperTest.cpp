#include "recovery/RecoveryKeeper.h"

#include "commands/TourCommands.h"
#include "commands/TourSave.h"
#include "support/DocumentFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace wendmark {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// A tour with access to all of it.
struct EditedTour {
    test::DocumentFixture program;
    TourDocument& document = program.document;
    TourModel& model = TourDocumentAccess::model(document);
    Workspace& workspace = TourDocumentAccess::workspace(document);
    TourContext& context = TourDocumentAccess::context(document);
    test::RecordingLog& log = program.log;

    void writeWorking(const std::string& name, std::string_view bytes) const {
        test::writeFile(workspace.workingFile(name), bytes);
    }
    std::string working(const std::string& name) const { return test::readFile(workspace.workingFile(name)); }
};

/// A program that is editing a tour of three stops.
class Program final {
public:
    explicit Program(std::string stateFolder)
        : store(std::move(stateFolder), tour.log), keeper(tour.document, store) {
        tour.document.showTemplateTour();
    }

    void openTour(const std::string& folder) {
        tour.program.openTour(folder);
        keeper.noteSaved();
    }

    EditedTour tour;
    RecoveryStore store;
    RecoveryKeeper keeper;
};

class RecoveryKeeperTest : public testing::Test {
protected:
    RecoveryKeeperTest() {
        std::string script = "\r\nRivers\r\n\r\n";
        for (const std::string number : {"1", "2", "3"})
            script += "<<<VoskInfo>>> Stop" + number + "\r\nStop " + number +
                      "\r\nown.htm\r\n\r\nWords.\r\n\r\nDo.\r\n\r\n";
        test::writeFile(folder + "/script.txt", script);
        test::writeFile(folder + "/own.htm", "<p>own</p>");
    }

    std::vector<RecoverySession> found() { return RecoveryStore(state, log).leftovers(); }

    test::ScratchFolder scratch;
    test::RecordingLog log;
    std::string state = scratch / "state";
    std::string folder = scratch / "rivers";
};

TEST_F(RecoveryKeeperTest, tourThatIsAsItWasSavedIsNotKept) {
    Program program(state);
    program.openTour(folder);
    program.tour.model.currentStop = 2;
    program.keeper.check(1);
    EXPECT_THAT(found(), IsEmpty());
}

TEST_F(RecoveryKeeperTest, everyKindOfChangeIsKept) {
    const std::vector<std::function<void(EditedTour&)>> changes = {
        [](auto& tour) { tour.model.tourTitle += "!"; },
        [](auto& tour) { tour.model.stops.setCount(2); },
        [](auto& tour) {
            std::swap(tour.model.stops.at(1).stopURL, tour.model.stops.at(2).stopURL),
                tour.model.stops.at(1).stopURL += "x";
        },
        [](auto& tour) { tour.model.stops.at(3).stopNarration += "more"; },
        [](auto& tour) { tour.model.navWidth = 1; },
        [](auto& tour) { tour.writeWorking("own.htm", "<p>changed</p>"); },
        [](auto& tour) { tour.writeWorking("picture.png", "png"); },
        [](auto& tour) { fs::remove(tour.workspace.workingFile("own.htm")); }};
    for (const auto& change : changes) {
        Program program(state);
        program.openTour(folder);
        change(program.tour);
        program.keeper.check(1);
        EXPECT_THAT(found(), SizeIs(1));
        program.keeper.forget();
        EXPECT_THAT(found(), IsEmpty());
    }
}

TEST_F(RecoveryKeeperTest, templatesThatAWizardFillsInAnewAreNoChange) {
    Program program(state);
    program.keeper.noteSaved();
    program.tour.workspace.resetWorkingCopy();
    program.keeper.check(1);
    EXPECT_THAT(found(), IsEmpty());
    program.tour.writeWorking("fr-logo.gif", "the author's");
    program.keeper.check(2);
    EXPECT_THAT(found(), SizeIs(1));
}

TEST_F(RecoveryKeeperTest, templateInPlaceOfATourOwnFileIsAChange) {
    test::writeFile(folder + "/fr-logo.gif", "the author's");
    Program program(state);
    program.openTour(folder);
    program.tour.writeWorking("fr-logo.gif", "the author's"); // Written anew, with the same contents.
    program.keeper.check(1);
    EXPECT_THAT(found(), IsEmpty());
    program.tour.writeWorking("fr-logo.gif",
                              test::readFile(program.tour.workspace.templateFile("fr-logo.gif")));
    program.keeper.check(2);
    EXPECT_THAT(found(), SizeIs(1));
}

TEST_F(RecoveryKeeperTest, folderThatCannotBeWrittenIsOneLineHoweverOftenItIsTried) {
    test::writeFile(state, "a file where a folder is needed");
    Program program(state);
    program.openTour(folder);
    program.tour.model.tourTitle = "Lakes";
    const auto failures = program.tour.log.failures.size();
    for (int look = 1; look <= 20; ++look)
        program.keeper.check(look);
    EXPECT_EQ(program.tour.log.failures.size(), failures + 1);
    fs::remove(state);
    program.keeper.check(21);
    program.keeper.check(22);
    EXPECT_THAT(found(), SizeIs(1));
    EXPECT_EQ(program.tour.log.failures.size(), failures + 1);
}

TEST_F(RecoveryKeeperTest, textThatIsNotAppliedIsKeptUntilItIsGone) {
    Program program(state);
    program.openTour(folder);
    std::optional<UnappliedTexts> texts = UnappliedTexts{"T", "half a sen", ""};
    program.keeper.unappliedTexts = [&] { return texts; };
    program.keeper.check(1);
    ASSERT_THAT(found(), SizeIs(1));
    ASSERT_TRUE(found()[0].record.unapplied);
    EXPECT_EQ(found()[0].record.unapplied->narration, "half a sen");
    texts.reset();
    program.keeper.check(2);
    EXPECT_THAT(found(), IsEmpty());
}

TEST_F(RecoveryKeeperTest, savingLeavesNothingToRecover) {
    Program program(state);
    program.openTour(folder);
    program.tour.model.tourTitle = "Lakes";
    program.keeper.check(1);
    ASSERT_THAT(found(), SizeIs(1));
    saveTour(program.tour.context);
    program.keeper.noteSaved();
    program.keeper.check(2);
    EXPECT_THAT(found(), IsEmpty());
}

TEST_F(RecoveryKeeperTest, unchangedTourIsNotWrittenAgain) {
    Program program(state);
    program.openTour(folder);
    program.tour.model.tourTitle = "Lakes";
    program.keeper.check(1);
    program.keeper.check(50);
    EXPECT_EQ(found()[0].record.time, 1);
}

TEST_F(RecoveryKeeperTest, recoveryBringsEverythingBack) {
    {
        Program program(state);
        program.openTour(folder);
        TourModel& model = program.tour.model;
        model.stops.at(2).stopTitle = "The second";
        model.stops.at(2).stopNarration = "New words.\r\n";
        model.tourAuthor = "Ann";
        model.currentStop = 2;
        program.tour.writeWorking("picture.png", "png");
        program.tour.writeWorking("goodlist.txt", "bookmarks");
        program.keeper.check(1);
    }
    Program next(state);
    ASSERT_THAT(next.keeper.leftovers(), SizeIs(1));
    next.keeper.recover(next.keeper.leftovers()[0], 2);
    const TourModel& model = next.tour.model;
    EXPECT_EQ(next.tour.workspace.tourPath(), folder);
    EXPECT_TRUE(model.tourChanged);
    EXPECT_TRUE(model.editingMode);
    EXPECT_EQ(model.tourTitle, "Rivers");
    EXPECT_EQ(model.tourAuthor, "Ann");
    EXPECT_EQ(model.stopCount(), 3);
    EXPECT_EQ(model.currentStop, 2);
    EXPECT_EQ(next.tour.working("own.htm"), "<p>own</p>");
    EXPECT_EQ(next.tour.working("picture.png"), "png");
    EXPECT_EQ(next.tour.working("goodlist.txt"), "bookmarks");
    EXPECT_THAT(next.tour.working("page2.htm"), HasSubstr("New words."));
    EXPECT_THAT(next.tour.working("toc.htm"), HasSubstr("The second"));
    EXPECT_THAT(next.tour.working("openhelp.htm"), HasSubstr("Ann"));
    EXPECT_THAT(next.tour.working("framever.htm"), HasSubstr("numStops = 3"));
    EXPECT_THAT(next.tour.working("tmpframe.htm"), HasSubstr("page2.htm"));
    EXPECT_EQ(next.tour.working("nav3.htm"), test::readFile(next.tour.workspace.templateFile("navtemp.htm")));
}

TEST_F(RecoveryKeeperTest, recoveredTourIsKeptFromTheFirstMoment) {
    {
        Program program(state);
        program.openTour(folder);
        program.tour.model.tourTitle = "Lakes";
        program.keeper.check(1);
    }
    Program next(state);
    next.keeper.recover(next.keeper.leftovers().at(0), 2);
    ASSERT_THAT(found(), SizeIs(1)); // The former session is gone, this run's is there.
    EXPECT_EQ(found()[0].record.model.tourTitle, "Lakes");
    saveTour(next.tour.context);
    next.keeper.noteSaved();
    next.keeper.check(4);
    EXPECT_THAT(found(), IsEmpty());
}

} // namespace
} // namespace wendmark
