#include "publish/Framesets.h"

#include "publish/CutTemplate.h"
#include "support/TestTour.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <limits>

namespace wendmark {
namespace {

using test::crlfLines;
using test::TestTour;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// With lines that look like markers and are none, and text behind markers.
std::string framesetTemplate() {
    return crlfLines({"<html>", "<!--variable title-->", "<!--variable--> title", "old title",
                      "<!--variable--> end of title", "<script>", "  //variable", "//variable: four of them",
                      "old variables", "//variables end", "</script>",
                      "<!-- Frameset for frame-based design --> begins", "<!--variable-->", "<frameset old>",
                      "<!--variable-->", "<frame logo>", "<frame nar>", "<frame nav>", "</html>"});
}

class Framesets : public testing::Test {
protected:
    Framesets() { tour.writeTemplate("framever.htm", framesetTemplate()); }

    std::vector<std::string> linesOf(std::string_view name) const { return tour.workingLines(name); }

    TestTour tour;
};

TEST_F(Framesets, templateIsFilledRegionByRegion) {
    tour.model.tourTitle = "Plants";
    tour.model.stops.setCount(7);
    tour.model.bufferDelay = 30;
    fillFrameset(tour.context, "out.htm", "http://home.example/");
    EXPECT_EQ(tour.working("out.htm"),
              crlfLines({"<html>",
                         "<!--variable title-->",
                         "<!--variable--> title",
                         "<title>Plants </title>",
                         "<!--variable-->",
                         "<script>",
                         "  //variable",
                         "//variable: four of them",
                         "numStops = 7",
                         "bufDelay = 30000",
                         "bufFlag = false",
                         "homePage = \"http://home.example/\"",
                         "//variable",
                         "</script>",
                         "<!-- Frameset for frame-based design --> begins",
                         "<!--variable-->",
                         "<frameset rows=\"*,100,0\" onload=\"startTimers()\">",
                         "<frame src = \"openhelp.htm\" name=\"mw\" marginwidth=\"10\" marginheight=\"10\">",
                         "<frameset cols=\"110,*,94\">",
                         "<!--variable-->",
                         "<frame logo>",
                         "<frame nar>",
                         "<frame nav>",
                         "</html>"}));
}

TEST_F(Framesets, frameSizesAreTheToursOwn) {
    tour.model.narHeight = -1;
    tour.model.advWidth = 0;
    tour.model.navWidth = 32767;
    makeWorkingFrameset(tour.context);
    EXPECT_THAT(linesOf("framever.htm"), Contains("<frameset rows=\"*,-1,0\" onload=\"startTimers()\">"));
    EXPECT_THAT(linesOf("framever.htm"), Contains("<frameset cols=\"0,*,32767\">"));
}

TEST_F(Framesets, loadingTimeStaysWithin32Bits) {
    using Limits = std::numeric_limits<std::int32_t>;
    const std::pair<std::int32_t, std::string> values[] = {{10, "10000"},
                                                           {2147483, "2147483000"},
                                                           {2147484, "2147483647"},
                                                           {Limits::max(), "2147483647"},
                                                           {Limits::min(), "-2147483648"}};
    for (const auto& [seconds, milliseconds] : values) {
        tour.model.bufferDelay = seconds;
        makeWorkingFrameset(tour.context);
        EXPECT_THAT(linesOf("framever.htm"), Contains("bufDelay = " + milliseconds));
    }
}

TEST_F(Framesets, stopsAreLoadedAheadOnlyInTheSavedTourAndOnlyIfWanted) {
    for (const bool wanted : {false, true}) {
        for (const bool editing : {false, true}) {
            tour.model.autoBuffer = wanted;
            tour.model.editingMode = editing;
            makeWorkingFrameset(tour.context);
            const std::string flag = wanted && !editing ? "bufFlag = true" : "bufFlag = false";
            EXPECT_THAT(linesOf("framever.htm"), Contains(flag)) << wanted << editing;
        }
    }
}

TEST_F(Framesets, textsAreNotEscaped) {
    tour.model.tourTitle = "\"A\" & <B>";
    fillFrameset(tour.context, "out.htm", "a\"b'c");
    EXPECT_THAT(linesOf("out.htm"), Contains("<title>\"A\" & <B> </title>"));
    EXPECT_THAT(linesOf("out.htm"), Contains("homePage = \"a\"b'c\""));
}

TEST_F(Framesets, charactersBeyondTheCodePageSurvive) {
    tour.model.tourTitle = "Caf\u00e9 \u2192";
    fillFrameset(tour.context, "out.htm", "http://caf\u00e9.example/\u2192");
    EXPECT_THAT(linesOf("out.htm"), Contains("<title>Caf\xe9 &#8594; </title>"));
    EXPECT_THAT(linesOf("out.htm"), Contains("homePage = \"http://caf\xe9.example/%E2%86%92\""));
}

TEST_F(Framesets, workingFramesetLeavesTheHomePageToTheVisitor) {
    makeWorkingFrameset(tour.context);
    EXPECT_THAT(linesOf("framever.htm"), Contains("homePage = \"AUTO\""));
    EXPECT_THAT(test::folderContents(tour.workspace.folders().newTourPath),
                ElementsAre(testing::Key("framever.htm")));
}

TEST_F(Framesets, savedTourStartsWithPlaytourAndLeadsToTheMakerFromFv1) {
    makeTourFramesets(tour.context);
    EXPECT_THAT(linesOf("playtour.htm"), Contains("homePage = \"AUTO\""));
    EXPECT_THAT(linesOf("fv1.htm"), Contains("homePage = \"www.brenholt.example\""));
    EXPECT_THAT(test::folderContents(tour.workspace.folders().newTourPath),
                ElementsAre(testing::Key("fv1.htm"), testing::Key("playtour.htm")));
}

TEST_F(Framesets, eachLaunchingPointHasAFramesetThatLeadsBackToIt) {
    tour.model.launchURL[0] = "http://one.example/";
    tour.model.launchURL[1] = "two.htm";
    tour.model.launchURL[2] = "left over";
    tour.model.launchURLCount = 2;
    makeTourFramesets(tour.context);
    EXPECT_THAT(linesOf("_tourlaunch1.htm"), Contains("homePage = \"http://one.example/\""));
    EXPECT_THAT(linesOf("_tourlaunch2.htm"), Contains("homePage = \"two.htm\""));
    EXPECT_FALSE(test::exists(tour.workspace.workingFile("_tourlaunch3.htm")));
}

TEST_F(Framesets, tourInSeveralWindowsHasNoFramesetsForLaunchingPoints) {
    tour.model.launchURLCount = 1;
    tour.model.singleWindow = false;
    makeTourFramesets(tour.context);
    EXPECT_FALSE(test::exists(tour.workspace.workingFile("_tourlaunch1.htm")));
    EXPECT_TRUE(test::exists(tour.workspace.workingFile("fv1.htm")));
}

TEST_F(Framesets, hundredLaunchingPointsHaveAFramesetEach) {
    tour.model.launchURLCount = 100;
    tour.model.launchURL[99] = "last";
    makeTourFramesets(tour.context);
    EXPECT_THAT(linesOf("_tourlaunch100.htm"), Contains("homePage = \"last\""));
    EXPECT_FALSE(test::exists(tour.workspace.workingFile("_tourlaunch101.htm")));
}

TEST_F(Framesets, launchFileNameHoldsTheNumberWithoutBlanks) {
    EXPECT_EQ(launchFileName(1), "_tourlaunch1.htm");
    EXPECT_EQ(launchFileName(100), "_tourlaunch100.htm");
}

TEST_F(Framesets, framesetThatCannotBeWrittenDoesNotKeepTheNextOnesFromBeingMade) {
    tour.model.launchURLCount = 1;
    std::filesystem::create_directory(tour.workspace.workingFile("playtour.htm"));
    std::filesystem::create_directory(tour.workspace.workingFile("fv1.htm"));
    makeTourFramesets(tour.context);
    EXPECT_THAT(tour.log.failures, ElementsAre(HasSubstr("playtour.htm"), HasSubstr("fv1.htm")));
    EXPECT_TRUE(test::exists(tour.workspace.workingFile("_tourlaunch1.htm")));
    EXPECT_THAT(tour.desktop.calls, IsEmpty());
}

TEST_F(Framesets, missingTemplateLeavesTheOldFramesetAndSaysNothingToTheAuthor) {
    std::filesystem::remove(tour.workspace.templateFile("framever.htm"));
    tour.writeWorking("framever.htm", "old");
    makeWorkingFrameset(tour.context);
    EXPECT_EQ(tour.working("framever.htm"), "old");
    EXPECT_EQ(tour.log.failures.size(), 1U);
    EXPECT_THAT(tour.desktop.calls, IsEmpty());
}

TEST_F(Framesets, templateThatEndsEarlyLeavesWhatWasComposed) {
    test::expectCutTemplateGivesBeginning(tour, "framever.htm", "out.htm", 15,
                                          [&] { fillFrameset(tour.context, "out.htm", "AUTO"); });
    EXPECT_THAT(tour.desktop.calls, IsEmpty());
}

class PreviewFrameset : public Framesets {
protected:
    PreviewFrameset() { makeWorkingFrameset(tour.context); }
};

TEST_F(PreviewFrameset, showsTheCurrentStopInTheNarrationFrame) {
    tour.model.currentStop = 3;
    makePreviewFrameset(tour.context);
    std::vector<std::string> expected = linesOf("framever.htm");
    expected[17] = "<frame src = \"\" name=\"mw\" marginwidth=\"10\" marginheight=\"10\" >";
    expected[21] = "<frame src= \"page3.htm\" name=\"nar\" marginwidth=\"3\" >";
    EXPECT_EQ(linesOf("tmpframe.htm"), expected);
    EXPECT_THAT(tour.desktop.addresses, ElementsAre(tour.workspace.workingFile("tmpframe.htm")));
}

TEST_F(PreviewFrameset, opensTheWorkingFramesetOnTheOpeningPage) {
    tour.model.currentStop = 0;
    makePreviewFrameset(tour.context);
    EXPECT_THAT(tour.desktop.addresses, ElementsAre(tour.workspace.workingFile("framever.htm")));
    EXPECT_THAT(linesOf("tmpframe.htm"),
                Contains("<frame src= \"page0.htm\" name=\"nar\" marginwidth=\"3\" >"));
}

TEST_F(PreviewFrameset, isMadeFromTheWorkingCopyNotFromTheTemplate) {
    tour.model.currentStop = 1;
    tour.writeTemplate("framever.htm", "no template at all\r\n");
    tour.model.tourTitle = "title of later";
    makePreviewFrameset(tour.context);
    EXPECT_THAT(linesOf("tmpframe.htm"), Contains("<title> </title>"));
    EXPECT_THAT(tour.log.failures, IsEmpty());
}

TEST_F(PreviewFrameset, ignoresMarkersBeforeTheFramesBegin) {
    tour.model.currentStop = 1;
    tour.writeWorking("framever.htm",
                      crlfLines({"<!--variable-->", "kept", "kept", "<!--variable-->", "kept", "kept",
                                 "<!-- Frameset for frame-based design --", "<!--variable-->", "kept", "kept",
                                 "<!-- Frameset for frame-based design -->", "<!--variable-->", "rows",
                                 "site", "cols", "<!--variable-->", "logo", "nar", "nav"}));
    makePreviewFrameset(tour.context);
    const std::vector<std::string> lines = linesOf("tmpframe.htm");
    EXPECT_THAT(lines, Contains("kept").Times(6));
    EXPECT_THAT(lines, Contains("rows"));
    EXPECT_THAT(lines, Contains("cols"));
    EXPECT_THAT(lines, Contains("logo"));
    EXPECT_THAT(lines, Not(Contains("site")));
    EXPECT_THAT(lines, Not(Contains("nar")));
    EXPECT_EQ(lines.back(), "nav");
}

TEST_F(PreviewFrameset, navigatesAlsoWhenThereIsNoWorkingFrameset) {
    std::filesystem::remove(tour.workspace.workingFile("framever.htm"));
    tour.model.currentStop = 2;
    makePreviewFrameset(tour.context);
    EXPECT_THAT(tour.desktop.addresses, ElementsAre(tour.workspace.workingFile("tmpframe.htm")));
    EXPECT_FALSE(test::exists(tour.workspace.workingFile("tmpframe.htm")));
    EXPECT_EQ(tour.log.failures.size(), 1U);
}

TEST_F(PreviewFrameset, navigatesAlsoWhenTheWorkingFramesetIsIncomplete) {
    tour.writeWorking("framever.htm", crlfLines({"<!-- Frameset for frame-based design -->", "rest"}));
    tour.model.currentStop = 2;
    makePreviewFrameset(tour.context);
    EXPECT_THAT(tour.desktop.addresses, ElementsAre(tour.workspace.workingFile("tmpframe.htm")));
    EXPECT_THAT(linesOf("tmpframe.htm"), ElementsAre("<!-- Frameset for frame-based design -->", "rest"));
    EXPECT_EQ(tour.log.failures.size(), 1U);
}

} // namespace
} // namespace wendmark
