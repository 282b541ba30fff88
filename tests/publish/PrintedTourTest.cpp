#include "publish/PrintedTour.h"

#include "model/TourModel.h"

#include <gmock/gmock.h>

namespace wendmark {

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

TourModel tourOf(std::int16_t stops) {
    TourModel model;
    model.tourTitle = "Rivers";
    model.stops.setCount(stops);
    for (std::int16_t n = 1; n <= stops; ++n) {
        const auto i = static_cast<std::size_t>(n - 1);
        model.stops.at(i + 1).stopTitle = "Stop " + std::to_string(n);
        model.stops.at(i + 1).stopURL = "page" + std::to_string(n);
        model.stops.at(i + 1).stopNarration = "Words " + std::to_string(n);
        model.stops.at(i + 1).stopInstruction = "Do " + std::to_string(n);
    }
    return model;
}

void expectRange(StopRange wanted, std::int16_t stopCount, StopRange printed) {
    const StopRange range = printableRange(wanted, stopCount);
    EXPECT_EQ(range.first, printed.first);
    EXPECT_EQ(range.last, printed.last);
}

std::vector<std::string> headersOf(const TourModel& model, StopRange range, std::int32_t pageCount) {
    std::vector<std::string> headers;
    for (const StopSheet& sheet : stopSheets(model, range, pageCount))
        headers.push_back(sheet.header);
    return headers;
}

std::vector<std::string> titlesOf(const StopSheet& sheet) {
    std::vector<std::string> titles;
    for (const StopBlock& block : sheet.blocks)
        titles.push_back(block.title);
    return titles;
}

} // namespace

TEST(PrintedTourTest, rangesAreMovedIntoTheTour) {
    expectRange({1, 10}, 10, {1, 10});
    expectRange({5, 2}, 10, {5, 5});
    expectRange({0, 3}, 10, {1, 3});
    expectRange({-7, -3}, 10, {1, 1});
    expectRange({3, 99}, 10, {3, 10});
    expectRange({11, 12}, 10, {10, 10});
    expectRange({99, 1}, 10, {10, 10});
    expectRange({1, 100}, 100, {1, 100});
    expectRange({101, 101}, 101, {100, 100});
}

TEST(PrintedTourTest, tourWithoutStopsHasNoneToPrint) {
    EXPECT_EQ(stopPageCount(printableRange({1, 0}, 0)), 0);
    EXPECT_THAT(stopSheets(tourOf(0), printableRange({1, 0}, 0), 1), IsEmpty());
}

TEST(PrintedTourTest, threeStopsTakeAPage) {
    EXPECT_EQ(stopPageCount({1, 1}), 1);
    EXPECT_EQ(stopPageCount({1, 3}), 1);
    EXPECT_EQ(stopPageCount({1, 4}), 2);
    EXPECT_EQ(stopPageCount({4, 9}), 2);
    EXPECT_EQ(stopPageCount({1, 100}), 34);
}

TEST(PrintedTourTest, headersTellThePageAndAllPages) {
    EXPECT_THAT(headersOf(tourOf(4), {1, 4}, 2), ElementsAre("Rivers   [ 1 of 2 ]", "Rivers   [ 2 of 2 ]"));
    EXPECT_THAT(headersOf(tourOf(4), {1, 4}, 3), ElementsAre("Rivers   [ 1 of 3 ]", "Rivers   [ 2 of 3 ]"));
    EXPECT_EQ(propertySheet(tourOf(4), "", "", 3).header, "Rivers   [ 3 of 3 ]");
}

TEST(PrintedTourTest, blocksBeyondTheLastStopStayEmpty) {
    const std::vector<StopSheet> sheets = stopSheets(tourOf(10), {2, 5}, 2);
    ASSERT_EQ(sheets.size(), 2U);
    EXPECT_THAT(titlesOf(sheets[0]), ElementsAre("Stop 2", "Stop 3", "Stop 4"));
    EXPECT_THAT(titlesOf(sheets[1]), ElementsAre("Stop 5"));
}

TEST(PrintedTourTest, blockHoldsTheStopsTexts) {
    const StopBlock block = stopSheets(tourOf(3), {2, 2}, 1).at(0).blocks.at(0);
    EXPECT_EQ(block.title, "Stop 2");
    EXPECT_EQ(block.address, "page2");
    EXPECT_EQ(block.text, "Words 2\rDo 2");
}

TEST(PrintedTourTest, propertiesStandInTheirOrder) {
    TourModel model = tourOf(1);
    model.autoInstruction = true;
    model.bufferDelay = 30;
    model.autoBuffer = false;
    model.narHeight = 100;
    model.advWidth = 110;
    model.navWidth = 94;
    model.singleWindow = true;
    std::vector<std::string> lines;
    for (const auto& [caption, value] : propertySheet(model, "/tours/rivers", "/logos/a.gif", 1).rows)
        lines.push_back(caption + value);
    EXPECT_THAT(lines,
                ElementsAre("Title :Rivers", "Path :/tours/rivers", "Add Instructions Automatically :Yes",
                            "Caching Period :30", "Start Caching Automatically :No",
                            "Height of Narration Frame :100", "Width of Logo Frame :110",
                            "Width of Navigator Frame :94", "Logo File Name :/logos/a.gif",
                            "Launch Tour in New Window :No", "Launch Tour in same Window :Yes"));
}

TEST(PrintedTourTest, launchingPointsStandOnTheSheetOfASingleWindowTourOnly) {
    TourModel model = tourOf(1);
    model.launchURL[0] = "http://a.example/";
    model.launchURL[1] = "http://b.example/";
    model.launchURLCount = 2;
    model.singleWindow = true;
    EXPECT_THAT(propertySheet(model, "", "", 1).launchURLs,
                ElementsAre("http://a.example/", "http://b.example/"));
    EXPECT_THAT(propertySheet(model, "", "", 1).launchFileNames,
                ElementsAre("_tourlaunch1.htm", "_tourlaunch2.htm"));
    model.singleWindow = false;
    EXPECT_THAT(propertySheet(model, "", "", 1).launchURLs, IsEmpty());
    EXPECT_THAT(propertySheet(model, "", "", 1).launchFileNames, IsEmpty());
    EXPECT_EQ(propertySheet(model, "", "", 1).rows.at(9).value, "Yes");
}

} // namespace wendmark
