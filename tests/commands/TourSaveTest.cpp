#include "commands/TourSave.h"

#include "base/Names.h"
#include "model/TourFiles.h"
#include "support/SystemLimits.h"
#include "support/TestTour.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>

namespace wendmark {
namespace {

namespace fs = std::filesystem;

using test::TestTour;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Key;
using testing::UnorderedElementsAre;

const std::string editingNavigator = "navigator of the editor";
const std::string finalNavigator = "navigator of the tour";

class TourSave : public testing::Test {
protected:
    TourSave() {
        tour.useGoldenTemplates();
        tour.writeTemplate("navtemp.htm", editingNavigator);
        tour.writeTemplate("navfinal.htm", finalNavigator);
        tour.model.tourTitle = "Harbour";
        tour.model.bufferDelay = 10;
        tour.workspace.setTourPath(tour.scratch / "tour");
        fs::create_directory(tour.workspace.tourPath());
    }

    std::string saved(std::string_view name) const { return test::readFile(tour.workspace.tourFile(name)); }

    std::vector<std::string> savedLines(std::string_view name) const {
        return test::splitCrlfLines(saved(name));
    }

    void blockWorkingFile(std::string_view name) { fs::create_directory(tour.workspace.workingFile(name)); }

    TestTour tour;
};

TEST_F(TourSave, editingNavigatorComesFromItsTemplate) {
    tour.writeWorking("nav3.htm", finalNavigator);
    useEditingNavigator(tour.context);
    EXPECT_EQ(tour.working("nav3.htm"), editingNavigator);
    EXPECT_FALSE(test::exists(tour.workspace.tourFile("nav3.htm")));
    EXPECT_THAT(tour.desktop.calls, IsEmpty());
}

TEST_F(TourSave, editingNavigatorThatCannotBeCopiedIsReported) {
    blockWorkingFile("nav3.htm");
    useEditingNavigator(tour.context);
    EXPECT_THAT(tour.desktop.lineErrors, ElementsAre("Error in copying NavTemp file in line 0"));
    EXPECT_THAT(tour.log.failures, ElementsAre(HasSubstr("nav3.htm")));
}

TEST_F(TourSave, editingNavigatorWithoutItsTemplateIsReportedAndTheOldOneStays) {
    tour.writeWorking("nav3.htm", "old");
    fs::remove(tour.workspace.templateFile("navtemp.htm"));
    useEditingNavigator(tour.context);
    EXPECT_THAT(tour.desktop.lineErrors, ElementsAre("Error in copying NavTemp file in line 0"));
    EXPECT_EQ(tour.working("nav3.htm"), "old");
}

TEST_F(TourSave, finalNavigatorGoesIntoTheWorkingCopyAndTheTour) {
    useFinalNavigator(tour.context);
    EXPECT_EQ(tour.working("nav3.htm"), finalNavigator);
    EXPECT_EQ(saved("nav3.htm"), finalNavigator);
    EXPECT_THAT(tour.desktop.calls, IsEmpty());
}

TEST_F(TourSave, finalNavigatorOfATourWithoutFolderGoesIntoTheWorkingCopyOnly) {
    tour.workspace.setTourPath({});
    fs::permissions(tour.workspace.folders().newTourPath, fs::perms::all);
    {
        const test::UnprivilegedUser nobody; // Could not write beside the root folder unnoticed.
        useFinalNavigator(tour.context);
    }
    EXPECT_EQ(tour.working("nav3.htm"), finalNavigator);
    EXPECT_THAT(tour.desktop.calls, IsEmpty());
    EXPECT_THAT(tour.log.failures, IsEmpty());
}

TEST_F(TourSave, finalNavigatorThatCannotReachTheWorkingCopyIsReportedAndNotTriedFurther) {
    blockWorkingFile("nav3.htm");
    useFinalNavigator(tour.context);
    EXPECT_THAT(tour.desktop.lineErrors, ElementsAre("Error in copying NavFinal file in line 0"));
    EXPECT_FALSE(test::exists(tour.workspace.tourFile("nav3.htm")));
}

TEST_F(TourSave, finalNavigatorThatCannotReachTheTourIsReported) {
    fs::create_directory(tour.workspace.tourFile("nav3.htm"));
    useFinalNavigator(tour.context);
    EXPECT_THAT(tour.desktop.lineErrors, ElementsAre("Error in copying NavFinal file in line 0"));
    EXPECT_EQ(tour.working("nav3.htm"), finalNavigator);
}

TEST_F(TourSave, finalNavigatorWithoutItsTemplateIsReportedOnce) {
    fs::remove(tour.workspace.templateFile("navfinal.htm"));
    useFinalNavigator(tour.context);
    EXPECT_THAT(tour.desktop.lineErrors, ElementsAre("Error in copying NavFinal file in line 0"));
    EXPECT_EQ(tour.log.failures.size(), 1U);
}

TEST_F(TourSave, launchListWithoutLaunchingPointsSaysSo) {
    tour.model.launchURL[0] = "left over";
    writeLaunchList(tour.context);
    EXPECT_EQ(tour.working("link.txt"), "Launching points not specified\r\n");
}

TEST_F(TourSave, launchListPairsEachPointWithItsFrameset) {
    tour.writeWorking("link.txt", "a longer list of the save before\r\nwith more lines\r\n\r\n\r\n\r\n");
    tour.model.launchURL[0] = "http://one.example/";
    tour.model.launchURL[1] = "caf\u00e9\u2192.htm";
    tour.model.launchURLCount = 2;
    writeLaunchList(tour.context);
    EXPECT_EQ(tour.working("link.txt"), " 1\t_tourlaunch1.htm\thttp://one.example/\r\n"
                                        " 2\t_tourlaunch2.htm\tcaf\xe9%E2%86%92.htm\r\n");
}

TEST_F(TourSave, launchListHoldsAHundredPoints) {
    tour.model.launchURLCount = 100;
    tour.model.launchURL[99] = "last.htm";
    writeLaunchList(tour.context);
    EXPECT_THAT(tour.workingLines("link.txt"), testing::SizeIs(100));
    EXPECT_EQ(tour.workingLines("link.txt").back(), " 100\t_tourlaunch100.htm\tlast.htm");
}

TEST_F(TourSave, launchListDoesNotDependOnTheNumberOfWindows) {
    tour.model.launchURLCount = 1;
    tour.model.singleWindow = false;
    writeLaunchList(tour.context);
    EXPECT_EQ(tour.working("link.txt"), " 1\t_tourlaunch1.htm\t\r\n");
}

TEST_F(TourSave, launchListThatCannotBeCreatedIsReported) {
    blockWorkingFile("link.txt");
    writeLaunchList(tour.context);
    EXPECT_THAT(tour.desktop.lineErrors, ElementsAre("Error in creating Link.txt file in line 0"));
    EXPECT_EQ(tour.log.failures.size(), 1U);
}

TEST_F(TourSave, savedTourIsInFinalFormAndTheWorkingCopyBackInEditingForm) {
    tour.model.autoBuffer = true;
    tour.model.tourChanged = true;
    saveTour(tour.context);
    EXPECT_EQ(saved("nav3.htm"), finalNavigator);
    EXPECT_EQ(tour.working("nav3.htm"), editingNavigator);
    for (const std::string_view name : {"playtour.htm", "fv1.htm", "framever.htm"}) {
        EXPECT_THAT(savedLines(name), Contains("bufFlag = true")) << name;
        EXPECT_THAT(tour.workingLines(name), Contains("bufFlag = false")) << name;
    }
    EXPECT_TRUE(tour.model.editingMode);
    EXPECT_FALSE(tour.model.tourChanged);
    EXPECT_THAT(tour.desktop.calls, IsEmpty());
    EXPECT_THAT(tour.log.failures, IsEmpty());
}

TEST_F(TourSave, framesetsOfLaunchingPointsAreSavedAndSwitchedBack) {
    tour.model.autoBuffer = true;
    tour.model.launchURL[0] = "http://one.example/";
    tour.model.launchURLCount = 1;
    saveTour(tour.context);
    EXPECT_THAT(savedLines("_tourlaunch1.htm"),
                IsSupersetOf({"bufFlag = true", "homePage = \"http://one.example/\""}));
    EXPECT_THAT(tour.workingLines("_tourlaunch1.htm"), Contains("bufFlag = false"));
}

TEST_F(TourSave, tourGetsTheLaunchListOfTheSaveBefore) {
    tour.model.launchURL[0] = "first.htm";
    tour.model.launchURLCount = 1;
    saveTour(tour.context);
    EXPECT_FALSE(test::exists(tour.workspace.tourFile("link.txt")));
    EXPECT_THAT(tour.workingLines("link.txt"), ElementsAre(HasSubstr("first.htm")));

    tour.model.launchURL[0] = "second.htm";
    saveTour(tour.context);
    EXPECT_THAT(savedLines("link.txt"), ElementsAre(HasSubstr("first.htm")));
    EXPECT_THAT(tour.workingLines("link.txt"), ElementsAre(HasSubstr("second.htm")));
}

TEST_F(TourSave, placeholdersOfTheScriptAreThereBeforeTheFramesets) {
    tour.model.tourTitle.clear();
    saveTour(tour.context);
    EXPECT_THAT(savedLines("script.txt"), Contains("Untitled Tour"));
    EXPECT_THAT(savedLines("playtour.htm"), Contains("<title>Untitled Tour </title>"));
}

TEST_F(TourSave, stopPagesAndOtherPagesAreSavedAsTheyStand) {
    tour.addStop("Stop", "a.htm");
    const std::string_view names[] = {"page1.htm", "openhelp.htm", "index.htm", "toc.htm", "tguide.htm"};
    for (const std::string_view name : names)
        tour.writeWorking(name, "as it stands");
    saveTour(tour.context);
    for (const std::string_view name : names) {
        EXPECT_EQ(saved(name), "as it stands");
        EXPECT_EQ(tour.working(name), "as it stands");
    }
}

TEST_F(TourSave, filesThatOnlyTheTourHasStay) {
    test::writeFile(tour.workspace.tourFile("picture.gif"), "picture");
    saveTour(tour.context);
    EXPECT_EQ(saved("picture.gif"), "picture");
}

/// What a save has done at the moment when window events are handled.
struct Moment {
    bool editingMode;
    bool tourChanged;
    std::map<std::string, std::string> working;
    std::map<std::string, std::string> tour;

    bool operator==(const Moment&) const = default;
};

class TourSaveSequence : public TourSave {
protected:
    TourSaveSequence() {
        tour.model.autoBuffer = true;
        tour.model.tourChanged = true;
        tour.writeWorking("link.txt", "old list");
        test::writeFile(tour.workspace.tourFile("script.txt"), "old script");
        tour.desktop.onPendingEvents = [this] { moments.push_back(now()); };
    }

    Moment now() const {
        return {tour.model.editingMode, tour.model.tourChanged,
                test::folderContents(tour.workspace.folders().newTourPath),
                test::folderContents(tour.workspace.tourPath())};
    }

    std::vector<Moment> moments;
};

TEST_F(TourSaveSequence, waitsTwiceASecondBeforeTheTourIsCopied) {
    const float start = tour.desktop.seconds;
    saveTour(tour.context);
    EXPECT_NEAR(tour.desktop.seconds - start, 2.0F, 0.25F);
    ASSERT_FALSE(moments.empty());
    // Nothing happens between the two pauses, nor while they last.
    EXPECT_THAT(moments, Each(moments.front()));
}

TEST_F(TourSaveSequence, hasEverythingInFinalFormBeforeItWaits) {
    saveTour(tour.context);
    ASSERT_FALSE(moments.empty());
    const Moment& moment = moments.front();
    EXPECT_FALSE(moment.editingMode);
    EXPECT_TRUE(moment.tourChanged);
    EXPECT_THAT(moment.working,
                UnorderedElementsAre(Key("script.txt"), Key("framever.htm"), Key("playtour.htm"),
                                     Key("fv1.htm"), Key("nav3.htm"), Key("link.txt")));
    EXPECT_THAT(moment.working.at("script.txt"), HasSubstr("Harbour"));
    for (const std::string name : {"framever.htm", "playtour.htm", "fv1.htm"})
        EXPECT_THAT(moment.working.at(name), HasSubstr("bufFlag = true")) << name;
    EXPECT_EQ(moment.working.at("nav3.htm"), finalNavigator);
    EXPECT_EQ(moment.working.at("link.txt"), "old list");
}

TEST_F(TourSaveSequence, hasOnlyTheFinalNavigatorInTheTourBeforeItCopies) {
    saveTour(tour.context);
    ASSERT_FALSE(moments.empty());
    EXPECT_THAT(moments.back().tour, UnorderedElementsAre(testing::Pair("script.txt", "old script"),
                                                          testing::Pair("nav3.htm", finalNavigator)));
    EXPECT_THAT(saved("script.txt"), HasSubstr("Harbour"));
    EXPECT_EQ(saved("link.txt"), "old list");
}

TEST_F(TourSave, goesOnAfterEachStepThatFails) {
    for (const std::string_view name : {"script.txt", "framever.htm", "nav3.htm", "link.txt"})
        blockWorkingFile(name);
    saveTour(tour.context);
    EXPECT_THAT(tour.desktop.lineErrors, ElementsAre("Error in copying NavFinal file in line 0",
                                                     "Error in copying NavTemp file in line 0",
                                                     "Error in creating Link.txt file in line 0"));
    EXPECT_THAT(savedLines("playtour.htm"), Contains("numStops = 0"));
    EXPECT_EQ(saved("nav3.htm"), finalNavigator);
    EXPECT_TRUE(tour.model.editingMode);
}

TEST_F(TourSave, missingTourFolderIsReportedForTheNavigatorAndOtherwiseSilent) {
    fs::remove_all(tour.workspace.tourPath());
    tour.model.tourChanged = true;
    saveTour(tour.context);
    EXPECT_THAT(tour.desktop.lineErrors, ElementsAre("Error in copying NavFinal file in line 0"));
    EXPECT_FALSE(tour.log.failures.empty());
    EXPECT_FALSE(tour.model.tourChanged);
    EXPECT_TRUE(tour.model.editingMode);
    EXPECT_EQ(tour.working("nav3.htm"), editingNavigator);
    EXPECT_TRUE(test::exists(tour.workspace.workingFile("link.txt")));
    EXPECT_FALSE(test::exists(tour.workspace.tourPath()));
}

TEST_F(TourSave, readOnlyTourFolderStaysAsItIsAndCountsAsSaved) {
    test::writeFile(tour.workspace.tourFile("script.txt"), "old script");
    fs::permissions(tour.workspace.folders().newTourPath, fs::perms::all);
    fs::permissions(tour.workspace.tourPath(),
                    fs::perms::all &
                        ~(fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write));
    tour.model.tourChanged = true;
    {
        const test::UnprivilegedUser nobody;
        saveTour(tour.context);
    }
    EXPECT_THAT(test::folderContents(tour.workspace.tourPath()),
                ElementsAre(testing::Pair("script.txt", "old script")));
    EXPECT_THAT(tour.desktop.lineErrors, ElementsAre("Error in copying NavFinal file in line 0"));
    EXPECT_FALSE(tour.log.failures.empty());
    EXPECT_FALSE(tour.model.tourChanged);
    EXPECT_EQ(tour.working("nav3.htm"), editingNavigator);
    EXPECT_TRUE(test::exists(tour.workspace.workingFile("link.txt")));
}

TEST_F(TourSave, saveTellsWhetherItWasComplete) {
    EXPECT_TRUE(saveTour(tour.context)) << ::testing::PrintToString(tour.log.failures);
    tour.writeWorking("blocked.htm", "new");
    fs::create_directory(tour.workspace.tourFile("blocked.htm"));
    EXPECT_FALSE(saveTour(tour.context));
    fs::remove(tour.workspace.tourFile("blocked.htm"));
    EXPECT_TRUE(saveTour(tour.context));
    fs::remove(tour.workspace.workingFile("playtour.htm"));
    blockWorkingFile("playtour.htm");
    EXPECT_FALSE(saveTourAs(tour.context));
}

TEST_F(TourSave, filesTakeTheirPlacesBeforeThoseThatLeadToThem) {
    std::vector<std::string> names = {"_tourlaunch1.htm", "framever.htm", "page2.htm",
                                      "playtour.htm",     "script.txt",   "toc.htm"};
    sortByPatterns(names, savedLast());
    EXPECT_THAT(names, ElementsAre("page2.htm", "toc.htm", "framever.htm", "_tourlaunch1.htm", "playtour.htm",
                                   "script.txt"));
}

TEST_F(TourSave, fullDiskLeavesTheSavedTourAsItWas) {
    test::writeFile(tour.workspace.tourFile("script.txt"), "old script");
    tour.writeWorking("big.htm", std::string(20000, 'x'));
    {
        const test::FileSizeLimit limit(10000);
        saveTour(tour.context);
    }
    EXPECT_THAT(test::folderContents(tour.workspace.tourPath()),
                UnorderedElementsAre(testing::Pair("script.txt", "old script"),
                                     testing::Pair("nav3.htm", finalNavigator)));
    EXPECT_THAT(tour.log.failures, ElementsAre(HasSubstr("big.htm")));
    EXPECT_EQ(tour.working("nav3.htm"), editingNavigator);
}

} // namespace
} // namespace wendmark
