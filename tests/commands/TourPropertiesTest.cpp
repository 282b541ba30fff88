#include "commands/TourProperties.h"

#include "commands/TourCommands.h"
#include "support/TestTour.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace wendmark {
namespace {

using test::TestTour;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class TourPropertiesTest : public testing::Test {
protected:
    TourPropertiesTest() {
        tour.useGoldenTemplates();
        startProgram(tour.context, tour.options);
        loadTemplateTour(tour.context);
        properties.tourTitle = tour.model.tourTitle;
        properties.cachePeriod = "30";
        properties.narHeight = "100";
        properties.advWidth = "110";
        properties.navWidth = "94";
    }

    void change() {
        changeTourProperties(tour.context, properties, [this] { ++refused; });
    }

    TestTour tour;
    TourProperties properties;
    int refused = 0;
};

TEST_F(TourPropertiesTest, allOfThemGoIntoTheModel) {
    properties.tourTitle = "  Rivers ";
    properties.tourAuthor = " Ann ";
    properties.autoInstruction = false;
    properties.cachePeriod = "45";
    properties.autoBuffer = true;
    properties.launchURLs = {"http://one/", "http://two/"};
    properties.narHeight = "120.4";
    properties.advWidth = " 80 ";
    properties.navWidth = "1e2";
    change();
    EXPECT_EQ(tour.model.tourTitle, "  Rivers ");
    EXPECT_EQ(tour.model.tourAuthor, " Ann ");
    EXPECT_FALSE(tour.model.autoInstruction);
    EXPECT_EQ(tour.model.bufferDelay, 45);
    EXPECT_TRUE(tour.model.autoBuffer);
    EXPECT_EQ(tour.model.launchURLCount, 2);
    EXPECT_EQ(tour.model.launchURL[1], "http://two/");
    EXPECT_EQ(tour.model.narHeight, 120);
    EXPECT_EQ(tour.model.advWidth, 80);
    EXPECT_EQ(tour.model.navWidth, 100);
    EXPECT_TRUE(tour.model.tourChanged);
    EXPECT_EQ(refused, 0);
    EXPECT_THAT(tour.desktop.calls, ElementsAre("pointer: 11", "pointer: 0"));
}

/// In the script it would be an empty line, and the title of the first stop would be read in its place.
TEST_F(TourPropertiesTest, titleOfBlanksIsNone) {
    properties.tourTitle = "  ";
    change();
    EXPECT_EQ(tour.model.tourTitle, "");
}

TEST_F(TourPropertiesTest, cachingPeriodIsItsLeadingNumber) {
    properties.cachePeriod = "25 seconds";
    change();
    EXPECT_EQ(tour.model.bufferDelay, 25);
    properties.cachePeriod = "soon";
    change();
    EXPECT_EQ(tour.model.bufferDelay, 0);
    properties.cachePeriod = "1e300";
    change();
    EXPECT_EQ(tour.model.bufferDelay, 0);
}

TEST_F(TourPropertiesTest, eachDimensionThatIsNotNumericIsRefusedAndTheRestIsStored) {
    properties.narHeight = "tall";
    properties.advWidth = "";
    properties.navWidth = "50";
    properties.tourAuthor = "Ann";
    change();
    EXPECT_EQ(refused, 2);
    EXPECT_EQ(tour.model.narHeight, 100);
    EXPECT_EQ(tour.model.advWidth, 110);
    EXPECT_EQ(tour.model.navWidth, 50);
    EXPECT_EQ(tour.model.tourAuthor, "Ann");
}

TEST_F(TourPropertiesTest, dimensionBeyondSixteenBitsStays) {
    properties.narHeight = "40000";
    change();
    EXPECT_EQ(tour.model.narHeight, 100);
    EXPECT_EQ(refused, 0);
}

TEST_F(TourPropertiesTest, hundredAndFirstLaunchingPointIsLeftOut) {
    for (int i = 1; i <= 101; ++i)
        properties.launchURLs.push_back("http://host/" + std::to_string(i));
    change();
    EXPECT_EQ(tour.model.launchURLCount, 100);
    EXPECT_EQ(tour.model.launchURL[99], "http://host/100");
    EXPECT_THAT(tour.log.failures, IsEmpty());
}

TEST_F(TourPropertiesTest, everyPageIsGeneratedAgain) {
    for (const char* page :
         {"page1.htm", "framever.htm", "openhelp.htm", "index.htm", "toc.htm", "tguide.htm", "link.txt"})
        std::filesystem::remove(tour.workspace.workingFile(page));
    properties.tourTitle = "Rivers";
    change();
    for (const char* page :
         {"page1.htm", "framever.htm", "openhelp.htm", "index.htm", "toc.htm", "tguide.htm", "link.txt"})
        EXPECT_TRUE(test::exists(tour.workspace.workingFile(page))) << page;
    EXPECT_THAT(tour.working("index.htm"), HasSubstr("Rivers"));
}

TEST_F(TourPropertiesTest, chosenLogoTakesTheLogosName) {
    test::writeFile(tour.scratch / "Own Logo.jpg", "picture");
    properties.logoFile = tour.scratch / "Own Logo.jpg";
    change();
    EXPECT_EQ(tour.working("fr-logo.gif"), "picture");
}

TEST_F(TourPropertiesTest, withoutAChosenLogoTheLogoStays) {
    tour.writeWorking("fr-logo.gif", "of the tour");
    change();
    EXPECT_EQ(tour.working("fr-logo.gif"), "of the tour");
    EXPECT_THAT(tour.log.failures, IsEmpty());
}

TEST_F(TourPropertiesTest, logoThatCannotBeReadLeavesTheOldOneAndALineInTheLog) {
    tour.writeWorking("fr-logo.gif", "of the tour");
    properties.logoFile = tour.scratch / "gone.gif";
    change();
    EXPECT_EQ(tour.working("fr-logo.gif"), "of the tour");
    EXPECT_THAT(tour.log.failures, Contains(HasSubstr("gone.gif")));
    EXPECT_TRUE(tour.model.tourChanged);
}

} // namespace
} // namespace wendmark
