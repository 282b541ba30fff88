#include "publish/StopPages.h"

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

const std::string nextInstruction = "Click the <strong>Next button</strong> to go to the next stop.";
const std::string exitInstruction = "Click the <strong>Exit button</strong> to quit this Tour.";

/// With lines that look like markers and are none, text behind markers, and lines behind the end.
std::string pageTemplate() {
    return crlfLines({"<html>",
                      " //variable",
                      "//variable: this stop",
                      "old script",
                      "//variable: end",
                      "if (parent === self)",
                      "//variable",
                      "old script",
                      "//variable",
                      "</script><h5><font>",
                      " <!--variable-->",
                      "<!--variable: words",
                      "old words",
                      "<!--variable: end of words-->",
                      "<p>",
                      "<!--variable-->",
                      "old address",
                      "<!--variable-->",
                      "</p>",
                      " </html>",
                      "</html> end",
                      "behind the end"});
}

/// Names of the stop pages in the working copy.
std::vector<std::string> pagesOf(const TestTour& tour) {
    std::vector<std::string> names;
    for (const auto& [name, bytes] : test::folderContents(tour.workspace.folders().newTourPath))
        names.push_back(name);
    return names;
}

class StopPages : public testing::Test {
protected:
    StopPages() {
        tour.writeTemplate("page.htm", pageTemplate());
        tour.model.autoInstruction = false;
        tour.model.homeSiteURL = "https://home.example/";
    }

    std::vector<std::string> linesOf(std::string_view name) const { return tour.workingLines(name); }

    void addStops(int count) {
        for (int n = 1; n <= count; ++n)
            tour.addStop("Stop of number " + std::to_string(n), "http://host/" + std::to_string(n));
    }

    TestTour tour;
};

TEST_F(StopPages, templateIsFilledRegionByRegionUpToItsHtmlEnd) {
    tour.addStop("Cactus", "http://host/a.htm", "Cacti store water.<BR>\r\nLook.\r\n", "Go on.\r\n");
    makeStopPages(tour.context, 1, 1);
    EXPECT_EQ(tour.working("page1.htm"), crlfLines({"<html>",
                                                    " //variable",
                                                    "//variable: this stop",
                                                    "linkURL = 'http://host/a.htm';",
                                                    "linkPage = 1;",
                                                    "parent.nav.status = '>*>*>vosktourstop->1';",
                                                    "//variable",
                                                    "if (parent === self)",
                                                    "//variable",
                                                    "         self.location.href = 'https://home.example/';",
                                                    "//variable",
                                                    "</script><h5><font>",
                                                    " <!--variable-->",
                                                    "<!--variable: words",
                                                    " 1&#151;Cactus</font></h5>",
                                                    "Cacti store water.<BR>",
                                                    "Look.",
                                                    "",
                                                    "<br><br>",
                                                    "Go on.",
                                                    "",
                                                    "<!--variable-->",
                                                    "<p>",
                                                    "<!--variable-->",
                                                    "http://host/a.htm",
                                                    "<!--variable-->",
                                                    "</p>",
                                                    " </html>",
                                                    "</html> end"}));
}

TEST_F(StopPages, secondStopWithAWebAddressNamesItAndItsNumber) {
    addStops(1);
    tour.addStop("Second", "http://host/a.htm");
    makeStopPages(tour.context, 2, 2);
    EXPECT_THAT(linesOf("page2.htm"), Contains("linkURL = 'http://host/a.htm';"));
    EXPECT_THAT(linesOf("page2.htm"), Contains("linkPage = 2;"));
    EXPECT_THAT(linesOf("page2.htm"), Contains("parent.nav.status = '>*>*>vosktourstop->2';"));
}

TEST_F(StopPages, localFileIsReachedFromTheToursHome) {
    addStops(2);
    tour.addStop("Third", "notes.htm");
    makeStopPages(tour.context, 3, 3);
    EXPECT_THAT(linesOf("page3.htm"), Contains("linkURL = parent.homePath + 'notes.htm';"));
    EXPECT_THAT(linesOf("page3.htm"), Contains("notes.htm"));
}

TEST_F(StopPages, anySlashMakesAnAddressRemote) {
    tour.addStop("Folder", "maps/town.htm");
    tour.addStop("Backslash", "maps\\town.htm");
    tour.addStop("Colon", "mailto:me");
    makeStopPages(tour.context, 1, 3);
    EXPECT_THAT(linesOf("page1.htm"), Contains("linkURL = 'maps/town.htm';"));
    EXPECT_THAT(linesOf("page2.htm"), Contains("linkURL = parent.homePath + 'maps\\town.htm';"));
    EXPECT_THAT(linesOf("page3.htm"), Contains("linkURL = parent.homePath + 'mailto:me';"));
}

TEST_F(StopPages, textsAreNotEscaped) {
    tour.addStop("<i>A</i> & \"B\"", "it's.htm", "</p><!-- x -->", "a < b");
    makeStopPages(tour.context, 1, 1);
    EXPECT_THAT(linesOf("page1.htm"), Contains("linkURL = parent.homePath + 'it's.htm';"));
    EXPECT_THAT(linesOf("page1.htm"), Contains(" 1&#151;<i>A</i> & \"B\"</font></h5>"));
    EXPECT_THAT(linesOf("page1.htm"), Contains("</p><!-- x -->"));
    EXPECT_THAT(linesOf("page1.htm"), Contains("a < b"));
}

TEST_F(StopPages, charactersBeyondTheCodePageSurvive) {
    tour.model.stopLabel = "\u00e9tape \u2192";
    tour.model.homeSiteURL = "http://h\u00f4me.example/\u2192";
    tour.addStop("Z\u00fcrich \u2192", "caf\u00e9\u2192.htm", "\u20ac \u2192", "\u0141");
    makeStopPages(tour.context, 1, 1);
    EXPECT_THAT(linesOf("page1.htm"), Contains("linkURL = parent.homePath + 'caf\xe9%E2%86%92.htm';"));
    EXPECT_THAT(linesOf("page1.htm"),
                Contains("         self.location.href = 'http://h\xf4me.example/%E2%86%92';"));
    EXPECT_THAT(linesOf("page1.htm"), Contains("\xe9tape &#8594; 1&#151;Z\xfcrich &#8594;</font></h5>"));
    EXPECT_THAT(linesOf("page1.htm"), Contains("\x80 &#8594;"));
    EXPECT_THAT(linesOf("page1.htm"), Contains("&#321;"));
    EXPECT_THAT(linesOf("page1.htm"), Contains("caf\xe9%E2%86%92.htm"));
}

TEST_F(StopPages, placeholderOfAnEmptyNarrationShowsNothing) {
    tour.addStop("Quiet", "a.htm", "<!--narration-->\r\n", "<!--instruction-->\r\n");
    makeStopPages(tour.context, 1, 1);
    EXPECT_THAT(linesOf("page1.htm"), Contains("<!--narration-->"));
    EXPECT_THAT(linesOf("page1.htm"), Contains("<!--instruction-->"));
}

TEST_F(StopPages, labelStandsBeforeTheNumberInTheHeading) {
    tour.model.stopLabel = "halt";
    tour.addStop("Cactus", "a.htm");
    makeStopPages(tour.context, 1, 1);
    EXPECT_THAT(linesOf("page1.htm"), Contains("halt 1&#151;Cactus</font></h5>"));
}

TEST_F(StopPages, standardInstructionsReplaceThoseOfAllStopsWhateverTheRange) {
    tour.model.autoInstruction = true;
    addStops(3);
    makeStopPages(tour.context, 1, 1);
    EXPECT_EQ(tour.model.stops.at(1).stopInstruction, nextInstruction);
    EXPECT_EQ(tour.model.stops.at(2).stopInstruction, nextInstruction);
    EXPECT_EQ(tour.model.stops.at(3).stopInstruction, exitInstruction);
    EXPECT_THAT(linesOf("page1.htm"), Contains(nextInstruction));
    EXPECT_THAT(pagesOf(tour), ElementsAre("page1.htm"));
}

TEST_F(StopPages, lastStopTellsHowToLeave) {
    tour.model.autoInstruction = true;
    addStops(3);
    makeStopPages(tour.context, 1, 3);
    EXPECT_THAT(linesOf("page1.htm"), Contains(nextInstruction));
    EXPECT_THAT(linesOf("page2.htm"), Contains(nextInstruction));
    EXPECT_THAT(linesOf("page3.htm"), Contains(exitInstruction));
}

TEST_F(StopPages, onlyStopTellsHowToLeave) {
    tour.model.autoInstruction = true;
    addStops(1);
    makeStopPages(tour.context, 1, 1);
    EXPECT_EQ(tour.model.stops.at(1).stopInstruction, exitInstruction);
}

TEST_F(StopPages, standardInstructionsAreGivenEvenForAnEmptyRange) {
    tour.model.autoInstruction = true;
    addStops(2);
    makeStopPages(tour.context, 2, 1);
    EXPECT_EQ(tour.model.stops.at(1).stopInstruction, nextInstruction);
    EXPECT_EQ(tour.model.stops.at(2).stopInstruction, exitInstruction);
    EXPECT_THAT(pagesOf(tour), IsEmpty());
}

TEST_F(StopPages, ownInstructionsSurviveWithoutAutoInstruction) {
    tour.addStop("One", "a.htm", "Words.\r\n", "My own.\r\n");
    makeStopPages(tour.context, 1, 1);
    EXPECT_EQ(tour.model.stops.at(1).stopInstruction, "My own.\r\n");
    EXPECT_THAT(linesOf("page1.htm"), Contains("My own."));
}

TEST_F(StopPages, tourWithoutStopsHasNoPages) {
    for (const bool autoInstruction : {false, true}) {
        tour.model.autoInstruction = autoInstruction;
        makeStopPages(tour.context, 1, tour.model.stopCount());
        EXPECT_THAT(pagesOf(tour), IsEmpty());
        EXPECT_THAT(tour.log.failures, IsEmpty());
        EXPECT_EQ(tour.log.notes.size(), autoInstruction ? 1U : 0U);
        EXPECT_THAT(tour.desktop.calls, IsEmpty());
    }
}

TEST_F(StopPages, withoutALastStopToInstructNoPageIsWrittenAtAll) {
    tour.model.autoInstruction = true;
    makeStopPages(tour.context, 1, 2);
    EXPECT_THAT(pagesOf(tour), IsEmpty());
    EXPECT_EQ(tour.model.stopCount(), 0);
}

TEST_F(StopPages, hundredStopsHaveAPageEach) {
    tour.model.autoInstruction = true;
    addStops(100);
    makeStopPages(tour.context, 1, 100);
    EXPECT_EQ(pagesOf(tour).size(), 100U);
    EXPECT_THAT(linesOf("page99.htm"), Contains(nextInstruction));
    EXPECT_THAT(linesOf("page100.htm"), Contains("parent.nav.status = '>*>*>vosktourstop->100';"));
    EXPECT_THAT(linesOf("page100.htm"), Contains(exitInstruction));
    EXPECT_THAT(tour.log.failures, IsEmpty());
}

TEST_F(StopPages, stopNumberAboveAHundredEndsTheCall) {
    addStops(100);
    tour.model.stops.setCount(101);
    makeStopPages(tour.context, 99, 101);
    EXPECT_THAT(pagesOf(tour), ElementsAre("page100.htm", "page99.htm"));
    EXPECT_THAT(tour.log.failures, ElementsAre(HasSubstr("stop 101")));
}

TEST_F(StopPages, standardInstructionsOfTooManyStopsFailBeforeAnyPage) {
    addStops(100);
    tour.model.autoInstruction = true;
    tour.model.stops.setCount(101);
    makeStopPages(tour.context, 1, 101);
    EXPECT_THAT(pagesOf(tour), IsEmpty());
    EXPECT_EQ(tour.model.stops.at(100).stopInstruction, nextInstruction);
    EXPECT_EQ(tour.log.failures.size(), 1U);
}

TEST_F(StopPages, rangeIsWrittenUpToTheFirstNumberThatIsNoStop) {
    struct Range {
        std::int16_t first;
        std::int16_t last;
        std::vector<std::string> pages;
        std::size_t failures;
    };
    constexpr std::int16_t lowest = std::numeric_limits<std::int16_t>::min();
    constexpr std::int16_t highest = std::numeric_limits<std::int16_t>::max();
    const Range ranges[] = {{1, 3, {"page1.htm", "page2.htm", "page3.htm"}, 0},
                            {2, 2, {"page2.htm"}, 0},
                            {3, 2, {}, 0},
                            {1, 0, {}, 0},
                            {0, 2, {}, 1},
                            {-1, 2, {}, 1},
                            {lowest, highest, {}, 1},
                            {highest, lowest, {}, 0},
                            {100, highest, {}, 1},
                            {3, 5, {"page3.htm"}, 1},
                            {101, 101, {}, 1},
                            {highest, highest, {}, 1}};
    addStops(3);
    for (const Range& range : ranges) {
        SCOPED_TRACE(testing::Message() << range.first << " to " << range.last);
        tour.log.failures.clear();
        makeStopPages(tour.context, range.first, range.last);
        EXPECT_EQ(pagesOf(tour), range.pages);
        EXPECT_EQ(tour.log.failures.size(), range.failures);
        EXPECT_THAT(tour.desktop.calls, IsEmpty());
        for (const std::string& name : pagesOf(tour))
            std::filesystem::remove(tour.workspace.workingFile(name));
    }
}

TEST_F(StopPages, templateThatEndsEarlyLeavesWhatWasComposed) {
    addStops(1);
    test::expectCutTemplateGivesBeginning(tour, "page.htm", "page1.htm", 21,
                                          [&] { makeStopPages(tour.context, 1, 1); });
}

TEST_F(StopPages, missingMarkerKeepsLaterPagesFromBeingWritten) {
    addStops(3);
    tour.writeTemplate("page.htm", crlfLines({"<html>", "//variable", "//variable", "</html>"}));
    makeStopPages(tour.context, 1, 3);
    EXPECT_THAT(pagesOf(tour), ElementsAre("page1.htm"));
    EXPECT_EQ(linesOf("page1.htm").back(), "</html>");
    EXPECT_EQ(tour.log.failures.size(), 1U);
    EXPECT_THAT(tour.desktop.calls, IsEmpty());
}

TEST_F(StopPages, pageThatCannotBeWrittenKeepsLaterPagesFromBeingWritten) {
    addStops(3);
    std::filesystem::create_directory(tour.workspace.workingFile("page2.htm"));
    makeStopPages(tour.context, 1, 3);
    EXPECT_THAT(pagesOf(tour), ElementsAre("page1.htm"));
    EXPECT_THAT(tour.log.failures, ElementsAre(HasSubstr("page2.htm")));
}

TEST_F(StopPages, missingTemplateLeavesThePagesAsTheyWere) {
    addStops(2);
    std::filesystem::remove(tour.workspace.templateFile("page.htm"));
    tour.writeWorking("page1.htm", "old");
    makeStopPages(tour.context, 1, 2);
    EXPECT_EQ(tour.working("page1.htm"), "old");
    EXPECT_THAT(pagesOf(tour), ElementsAre("page1.htm"));
    EXPECT_THAT(tour.log.failures, ElementsAre(HasSubstr("page.htm")));
}

} // namespace
} // namespace wendmark
