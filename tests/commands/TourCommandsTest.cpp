#include "commands/TourCommands.h"

#include "commands/TourSave.h"
#include "support/SystemLimits.h"
#include "support/TestTour.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace wendmark {
namespace {

namespace fs = std::filesystem;

using test::crlfLines;
using test::TestTour;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const std::string makerSite = "https://www.brenholt.example/";

class TourCommands : public testing::Test {
protected:
    TourCommands() { tour.useGoldenTemplates(); }

    TestTour tour;
};

TEST_F(TourCommands, startMakesAMissingWorkingCopy) {
    fs::remove_all(tour.workspace.folders().newTourPath);
    startProgram(tour.context, tour.options);
    EXPECT_TRUE(fs::is_directory(tour.workspace.folders().newTourPath));
    EXPECT_THAT(tour.log.failures, IsEmpty());
}

TEST_F(TourCommands, startKeepsTheFilesOfAnExistingWorkingCopy) {
    tour.writeWorking("page1.htm", "of the last run");
    startProgram(tour.context, tour.options);
    EXPECT_EQ(tour.working("page1.htm"), "of the last run");
    EXPECT_THAT(tour.log.failures, IsEmpty());
}

TEST_F(TourCommands, startSetsWhatAProgramStartsWith) {
    tour.workspace.setTourPath("/somewhere");
    tour.options.htmlEditorPath = "/an/editor";
    tour.model.editingMode = false;
    tour.model.autoInstruction = false;
    startProgram(tour.context, tour.options);
    EXPECT_EQ(tour.workspace.tourPath(), "");
    EXPECT_EQ(tour.options.htmlEditorPath, "");
    EXPECT_TRUE(tour.model.editingMode);
    EXPECT_TRUE(tour.model.autoInstruction);
    EXPECT_EQ(tour.model.homeSiteURL, makerSite);
    EXPECT_THAT(tour.desktop.calls, IsEmpty());
}

TEST_F(TourCommands, templateTourFillsTheWorkingCopyAndTheModel) {
    tour.writeWorking("page7.htm", "of the last run");
    tour.model.currentStop = 7;
    tour.model.tourChanged = true;
    loadTemplateTour(tour.context);
    EXPECT_FALSE(test::exists(tour.workspace.workingFile("page7.htm")));
    EXPECT_TRUE(test::exists(tour.workspace.workingFile("style.css")));
    EXPECT_EQ(tour.model.tourTitle, "Tour of the Templates");
    EXPECT_EQ(tour.model.stopCount(), 1);
    EXPECT_EQ(tour.model.bufferDelay, 20);
    EXPECT_EQ(tour.model.currentStop, 0);
    EXPECT_FALSE(tour.model.tourChanged);
    EXPECT_EQ(tour.working("nav3.htm"), test::readFile(tour.workspace.templateFile("navtemp.htm")));
    EXPECT_THAT(tour.desktop.calls, IsEmpty());
    EXPECT_THAT(tour.log.failures, IsEmpty());
}

TEST_F(TourCommands, templateTourIsNotGeneratedBeforeItIsOpened) {
    loadTemplateTour(tour.context);
    EXPECT_EQ(tour.working("toc.htm"), test::readFile(tour.workspace.templateFile("toc.htm")));
    EXPECT_FALSE(test::exists(tour.workspace.workingFile("page1.htm")));
}

class OpenTour : public TourCommands {
protected:
    OpenTour() {
        startProgram(tour.context, tour.options);
        loadTemplateTour(tour.context);
        tour.workspace.setTourPath(tour.scratch / "tour");
        writeTourFile("script.txt", script);
    }

    void writeTourFile(std::string_view name, std::string_view bytes) {
        test::writeFile(tour.workspace.tourFile(name), bytes);
    }

    static const inline std::string script =
        crlfLines({"<<<VoskInfo>>>#AutoBuffer", "Harbour", "", "Quay", "quay.htm", "", "Words.", "",
                   "My own instruction.", "", "Mole", "mole.htm", "", "Words.", "", "Another one.", ""});
};

TEST_F(OpenTour, showsTheHourglassAndThenPointsTheBrowserAtTheOpeningPage) {
    openTour(tour.context);
    EXPECT_THAT(tour.desktop.calls,
                ElementsAre("pointer: 11", "navigate: file://" + tour.scratch.path() + "/NewTour/fv1.htm",
                            "pointer: 0"));
    EXPECT_THAT(tour.log.failures, IsEmpty());
}

TEST_F(OpenTour, beginsAtTheOpeningPageWithoutChanges) {
    tour.model.currentStop = 5;
    tour.model.tourChanged = true;
    openTour(tour.context);
    EXPECT_EQ(tour.model.currentStop, 0);
    EXPECT_FALSE(tour.model.tourChanged);
    EXPECT_EQ(tour.model.tourTitle, "Harbour");
    EXPECT_EQ(tour.model.stopCount(), 2);
}

TEST_F(OpenTour, generatesEveryPageButTheFramesetsOfTheSavedTour) {
    writeTourFile("playtour.htm", "of the last save");
    openTour(tour.context);
    for (const std::string_view name :
         {"framever.htm", "page1.htm", "page2.htm", "toc.htm", "openhelp.htm", "index.htm", "tguide.htm"}) {
        EXPECT_NE(tour.working(name), "") << name;
        EXPECT_THAT(tour.working(name), Not(HasSubstr("old "))) << name;
    }
    EXPECT_FALSE(test::exists(tour.workspace.workingFile("page3.htm")));
    EXPECT_FALSE(test::exists(tour.workspace.workingFile("fv1.htm")));
    EXPECT_EQ(tour.working("playtour.htm"), "of the last save");
    EXPECT_EQ(tour.working("nav3.htm"), test::readFile(tour.workspace.templateFile("navtemp.htm")));
}

TEST_F(OpenTour, framesetIsThatOfTheEditor) {
    openTour(tour.context);
    EXPECT_TRUE(tour.model.autoBuffer);
    EXPECT_THAT(tour.workingLines("framever.htm"), Contains("bufFlag = false"));
    EXPECT_THAT(tour.workingLines("framever.htm"), Contains("numStops = 2"));
}

TEST_F(OpenTour, lastWritingOfTheOpeningPageIsTheOneThatStays) {
    openTour(tour.context);
    EXPECT_THAT(tour.workingLines("openhelp.htm"), Contains("<b> Harbour </b> </font><br>"));
    EXPECT_THAT(tour.workingLines("openhelp.htm"), Not(Contains("dropped between five and six")));
}

TEST_F(OpenTour, scriptIsWrittenBackBeforeTheInstructionsBecomeStandard) {
    openTour(tour.context);
    EXPECT_THAT(tour.workingLines("script.txt"), Contains("My own instruction."));
    EXPECT_THAT(tour.workingLines("page1.htm"), Contains(HasSubstr("Next button")));
    EXPECT_THAT(tour.workingLines("page2.htm"), Contains(HasSubstr("Exit button")));
    EXPECT_EQ(test::readFile(tour.workspace.tourFile("script.txt")), script);
}

TEST_F(OpenTour, placeholdersAreFilledInBeforeThePagesAreMade) {
    writeTourFile("script.txt", crlfLines({"Harbour", "", "Quay"}));
    openTour(tour.context);
    EXPECT_THAT(tour.workingLines("script.txt"), Contains("NoURL"));
    EXPECT_THAT(tour.workingLines("page1.htm"), Contains("linkURL = parent.homePath + 'NoURL';"));
    EXPECT_THAT(tour.workingLines("page1.htm"), Contains("<!--narration-->"));
}

TEST_F(OpenTour, errorsInTheScriptAreShownWithTheirLines) {
    writeTourFile("script.txt",
                  crlfLines({"<<<VoskInfo>>>#NarHeight", "<<<VoskInfo>>>#Author =", "Harbour"}));
    openTour(tour.context);
    EXPECT_THAT(tour.desktop.lineErrors, ElementsAre("Command Syntax Error - '=' sign not found in line 1",
                                                     "Command Syntax Error - null author name in line 2"));
    EXPECT_THAT(tour.workingLines("framever.htm"), Contains("<title>Harbour </title>"));
}

TEST_F(OpenTour, tourWithoutStopsHasAnEmptyContentsPage) {
    writeTourFile("script.txt", "Harbour\r\n");
    openTour(tour.context);
    EXPECT_EQ(tour.model.stopCount(), 0);
    EXPECT_FALSE(test::exists(tour.workspace.workingFile("page1.htm")));
    EXPECT_THAT(tour.workingLines("toc.htm"), Not(Contains(HasSubstr("page"))));
    EXPECT_THAT(tour.log.failures, IsEmpty());
}

TEST_F(OpenTour, missingTemplateCostsItsPageOnly) {
    fs::remove(tour.workspace.templateFile("toc.htm"));
    openTour(tour.context);
    EXPECT_FALSE(test::exists(tour.workspace.workingFile("toc.htm")));
    EXPECT_THAT(tour.workingLines("tguide.htm"), Contains(HasSubstr("Harbour")));
    EXPECT_THAT(tour.desktop.lineErrors, IsEmpty());
    EXPECT_THAT(tour.log.failures, ElementsAre(HasSubstr("toc.htm")));
}

TEST_F(OpenTour, valuesThatTheScriptDoesNotNameAreThoseOfTheTemplates) {
    openTour(tour.context);
    EXPECT_EQ(tour.model.bufferDelay, 20);
    EXPECT_THAT(tour.workingLines("framever.htm"), Contains("bufDelay = 20000"));
}

TEST_F(OpenTour, neverTouchesTheToursFolder) {
    writeTourFile("Notes.HTM", "notes");
    const auto before = test::folderContents(tour.workspace.tourPath());
    openTour(tour.context);
    EXPECT_EQ(test::folderContents(tour.workspace.tourPath()), before);
}

TEST_F(OpenTour, fileThatDidNotArriveIsLeftAloneBySaving) {
    writeTourFile("photo.gif", "a photo");
    tour.writeTemplate("photo.gif", "the templates' photo");
    fs::permissions(tour.scratch / "tour/photo.gif", fs::perms::none);
    fs::permissions(tour.workspace.folders().newTourPath, fs::perms::all);
    {
        const test::UnprivilegedUser nobody;
        openTour(tour.context);
    }
    fs::permissions(tour.scratch / "tour/photo.gif", fs::perms::owner_all);
    EXPECT_TRUE(tour.workspace.isIncomplete());
    EXPECT_EQ(tour.workspace.tourPath(), tour.scratch / "tour");
    EXPECT_THAT(tour.desktop.lineErrors, IsEmpty());
    EXPECT_EQ(tour.working("photo.gif"), "the templates' photo");
    EXPECT_FALSE(saveTour(tour.context));
    EXPECT_EQ(test::readFile(tour.scratch / "tour/photo.gif"), "a photo");
    EXPECT_THAT(test::readFile(tour.scratch / "tour/script.txt"), HasSubstr("Harbour"));
    fs::create_directory(tour.scratch / "elsewhere");
    tour.workspace.setTourPath(tour.scratch / "elsewhere");
    EXPECT_TRUE(saveTourAs(tour.context));
    tour.workspace.setTourPath(tour.scratch / "tour");
    openTour(tour.context);
    EXPECT_FALSE(tour.workspace.isIncomplete());
}

TEST_F(OpenTour, tourThatOpensKeepsItsFolder) {
    writeTourFile("photo.gif", "a photo");
    openTour(tour.context);
    EXPECT_EQ(tour.workspace.tourPath(), tour.scratch / "tour");
    EXPECT_THAT(tour.desktop.lineErrors, IsEmpty());
}

class NewTour : public TourCommands {
protected:
    NewTour() {
        startProgram(tour.context, tour.options);
        tour.workspace.resetWorkingCopy();
        tour.workspace.setTourPath(tour.scratch / "tour");
        fs::create_directory(tour.workspace.tourPath());
    }

    std::vector<std::string> savedLines(std::string_view name) const {
        return test::splitCrlfLines(test::readFile(tour.workspace.tourFile(name)));
    }
};

TEST_F(NewTour, hasTheTemplatesStopsUnderTheTypedTitle) {
    finishNewTour(tour.context, "My Harbour");
    EXPECT_EQ(tour.model.tourTitle, "My Harbour");
    EXPECT_EQ(tour.model.stopCount(), 1);
    EXPECT_THAT(savedLines("script.txt"), Contains("My Harbour"));
    EXPECT_THAT(savedLines("script.txt"), Contains("Stop of the templates"));
    for (const std::string_view name : {"playtour.htm", "openhelp.htm", "index.htm", "toc.htm", "tguide.htm"})
        EXPECT_THAT(savedLines(name), Contains(HasSubstr("My Harbour"))) << name;
    EXPECT_THAT(savedLines("page1.htm"), Contains(" 1&#151;Stop of the templates</font></h5>"));
    EXPECT_THAT(tour.log.failures, IsEmpty());
}

TEST_F(NewTour, isSavedAtOnce) {
    finishNewTour(tour.context, "My Harbour");
    EXPECT_EQ(test::readFile(tour.workspace.tourFile("nav3.htm")),
              test::readFile(tour.workspace.templateFile("navfinal.htm")));
    EXPECT_EQ(tour.working("nav3.htm"), test::readFile(tour.workspace.templateFile("navtemp.htm")));
    EXPECT_EQ(tour.working("link.txt"), "Launching points not specified\r\n");
    EXPECT_FALSE(tour.model.tourChanged);
}

TEST_F(NewTour, showsTheHourglassAndLeavesTheBrowserToTheWindow) {
    finishNewTour(tour.context, "My Harbour");
    EXPECT_THAT(tour.desktop.calls, ElementsAre("pointer: 11", "pointer: 0"));
}

TEST_F(NewTour, forgetsWhatTheTourBeforeItHad) {
    tour.model.tourAuthor = "Ada Reed";
    tour.model.launchURLCount = 2;
    tour.model.currentStop = 4;
    tour.model.narHeight = 300;
    tour.model.autoInstruction = false;
    finishNewTour(tour.context, "My Harbour");
    EXPECT_EQ(tour.model.currentStop, 0);
    EXPECT_THAT(savedLines("openhelp.htm"), Contains("<font size=2>   </font>"));
    EXPECT_THAT(savedLines("playtour.htm"), Contains(HasSubstr("\"*,100,0\"")));
    EXPECT_FALSE(test::exists(tour.workspace.tourFile("_tourlaunch1.htm")));
    EXPECT_THAT(savedLines("page1.htm"), Contains(HasSubstr("Exit button")));
}

TEST_F(NewTour, withoutTitleIsUntitled) {
    finishNewTour(tour.context, "");
    EXPECT_THAT(savedLines("playtour.htm"), Contains("<title>Untitled Tour </title>"));
}

TEST_F(NewTour, withTitleOfBlanksIsUntitled) {
    finishNewTour(tour.context, "  ");
    EXPECT_THAT(savedLines("script.txt"), Contains("Untitled Tour"));
    EXPECT_THAT(savedLines("playtour.htm"), Contains("<title>Untitled Tour </title>"));
}

TEST_F(NewTour, isGeneratedWithoutBeingSaved) {
    generateNewTour(tour.context, "My Harbour");
    EXPECT_THAT(test::folderContents(tour.workspace.tourPath()), IsEmpty());
    EXPECT_THAT(tour.workingLines("toc.htm"), Contains("My Harbour</font></h5>"));
    EXPECT_THAT(tour.workingLines("framever.htm"), Contains("<title>My Harbour </title>"));
    EXPECT_THAT(tour.workingLines("openhelp.htm"), Not(Contains("dropped between five and six")));
}

} // namespace
} // namespace wendmark
