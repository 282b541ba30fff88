#include "commands/TourCommands.h"
#include "commands/TourSave.h"
#include "publish/Framesets.h"
#include "support/TestTour.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace wendmark {
namespace {

using test::TestTour;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class ShippedTemplates : public testing::Test {
protected:
    ShippedTemplates() {
        tour.useShippedTemplates();
        startProgram(tour.context, tour.options);
        loadTemplateTour(tour.context);
        tour.workspace.initTourDefaults();
    }

    void open(const std::string& folder) {
        tour.workspace.setTourPath(folder);
        openTour(tour.context);
    }

    void expectNoComplaint() const {
        EXPECT_THAT(tour.desktop.lineErrors, IsEmpty());
        EXPECT_THAT(tour.log.failures, IsEmpty());
        EXPECT_THAT(tour.log.warnings, IsEmpty());
    }

    TestTour tour;
};

TEST_F(ShippedTemplates, makeANewTourWithoutAComplaint) {
    tour.workspace.resetWorkingCopy();
    tour.workspace.setTourPath(tour.scratch / "tour");
    std::filesystem::create_directory(tour.workspace.tourPath());
    finishNewTour(tour.context, "Harbour");
    expectNoComplaint();
    EXPECT_GT(tour.model.stopCount(), 0);
}

TEST_F(ShippedTemplates, holdEverythingThatATourOfManyPartsNeeds) {
    test::writeFile(
        tour.scratch / "tour/script.txt",
        test::crlfLines({"<<<VoskInfo>>>#AutoBuffer", "<<<VoskInfo>>>#LaunchURL = a.htm",
                         "<<<VoskInfo>>>#Author = Ada Reed", "Harbour", "", "Quay", "quay.htm", "",
                         "Narration of the quay.", "", "Go on.", "", "Mole", "http://host.example/mole.htm",
                         "", "Narration of the mole.", "", "Go home.", ""}));
    open(tour.scratch / "tour");
    saveTour(tour.context);
    tour.model.currentStop = 2;
    makePreviewFrameset(tour.context);
    expectNoComplaint();

    EXPECT_THAT(tour.workingLines("page1.htm"), Contains("linkURL = parent.homePath + 'quay.htm';"));
    EXPECT_THAT(tour.workingLines("page1.htm"), Contains("Narration of the quay."));
    EXPECT_THAT(tour.workingLines("page2.htm"), Contains(StartsWith("</html>")));
    EXPECT_THAT(tour.workingLines("toc.htm"), Contains("<a href=\"page2.htm\">Stop 2&#151;Mole</a><BR>"));
    EXPECT_THAT(tour.workingLines("tguide.htm"), Contains("Narration of the mole."));
    EXPECT_THAT(tour.workingLines("openhelp.htm"), Contains("<font size=2> Ada Reed </font>"));
    EXPECT_THAT(tour.workingLines("index.htm"), Contains("Harbour"));
    EXPECT_THAT(tour.workingLines("_tourlaunch1.htm"), Contains("homePage = \"a.htm\""));
}

TEST_F(ShippedTemplates, previewReplacesTheSiteAndNarrationFramesAndNoOther) {
    tour.model.currentStop = 1;
    makeWorkingFrameset(tour.context);
    makePreviewFrameset(tour.context);
    expectNoComplaint();
    const std::vector<std::string> lines = tour.workingLines("tmpframe.htm");
    for (const std::string name : {"name=\"mw\"", "name=\"nar\"", "name=\"nav\""})
        EXPECT_THAT(lines, Contains(HasSubstr(name)).Times(1)) << name;
    EXPECT_THAT(lines, Contains(testing::AllOf(HasSubstr("nav3.htm"), HasSubstr("name=\"nav\""))));
    EXPECT_EQ(lines.size(), tour.workingLines("framever.htm").size());
}

TEST_F(ShippedTemplates, publishTheSampleTourWithoutAComplaint) {
    const std::string copy = tour.scratch / "sample";
    std::filesystem::copy(WENDMARK_ASSETS "/MyTours/Sample", copy);
    open(copy);
    saveTour(tour.context);
    expectNoComplaint();
    EXPECT_GT(tour.model.stopCount(), 0);
}

} // namespace
} // namespace wendmark
