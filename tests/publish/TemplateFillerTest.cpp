#include "publish/TemplateFiller.h"

#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

namespace wendmark {
namespace {

using test::crlfLines;

TEST(TemplateFiller, regionIsReplacedAndItsMarkersStay) {
    TemplateFiller filler("head\r\n<!--variable-->\r\nold\r\nolder\r\n<!--variable-->\r\ntail\r\n");
    filler.copyThrough(pageMarker);
    filler.write("new");
    filler.closeRegion(pageMarker);
    filler.copyRest();
    EXPECT_EQ(filler.output(), crlfLines({"head", "<!--variable-->", "new", "<!--variable-->", "tail"}));
    EXPECT_FALSE(filler.stopped());
}

TEST(TemplateFiller, lineIsMadeOfParts) {
    TemplateFiller filler("head\n");
    filler.write("<b>", std::string("text"), std::string_view("</b>"));
    filler.write("");
    filler.copyThrough(pageMarker);
    filler.write("not", " written");
    EXPECT_EQ(filler.output(), crlfLines({"<b>text</b>", "", "head"}));
}

TEST(TemplateFiller, outputServesAgainAsTemplate) {
    const auto fill = [](std::string_view source) {
        TemplateFiller filler(source);
        filler.copyThrough(scriptBlockMarker);
        filler.write("new");
        filler.closeRegion(scriptBlockMarker);
        filler.copyRest();
        return filler.output();
    };
    const std::string once = fill("//variable: here\nold\n//variable: to here\n");
    EXPECT_EQ(once, crlfLines({"//variable: here", "new", "//variable"}));
    EXPECT_EQ(fill(once), once);
}

TEST(TemplateFiller, markerLinesAreThoseThatBeginWithTheMarker) {
    struct Line {
        std::string_view line;
        std::string_view marker;
        bool isMarker;
    };
    const Line lines[] = {
        {"<!--variable-->", pageMarker, true},       {"<!--variable--> and more", pageMarker, true},
        {"<!--variable-", pageMarker, false},        {"<!--variable title-->", pageMarker, false},
        {"<!--Variable-->", pageMarker, false},      {" <!--variable-->", pageMarker, false},
        {"\t<!--variable-->", pageMarker, false},    {"<p><!--variable-->", pageMarker, false},
        {"<!--variable-->", loosePageMarker, true},  {"<!--variable title-->", loosePageMarker, true},
        {"<!--variables", loosePageMarker, true},    {"<!--variabl", loosePageMarker, false},
        {"//variable", scriptBlockMarker, true},     {"//variables = 1", scriptBlockMarker, true},
        {"// variable", scriptBlockMarker, false},   {"//VARIABLE", scriptBlockMarker, false},
        {"    //variable", scriptBlockMarker, false}};
    for (const Line& given : lines) {
        SCOPED_TRACE(testing::PrintToString(given.line));
        TemplateFiller filler(given.line);
        filler.copyThrough(given.marker);
        EXPECT_EQ(!filler.stopped(), given.isMarker);
    }
}

TEST(TemplateFiller, everyKindOfLineEndBecomesCrLf) {
    for (const std::string_view source : {"a\r\n\r\nb\r\n", "a\n\nb\n", "a\r\rb\r", "a\r\n\nb"}) {
        TemplateFiller filler(source);
        filler.copyRest();
        EXPECT_EQ(filler.output(), crlfLines({"a", "", "b"})) << testing::PrintToString(source);
    }
}

TEST(TemplateFiller, markerInTheLastLineNeedsNoLineEnd) {
    TemplateFiller filler("<!--variable-->\n<!--variable-->");
    filler.copyThrough(pageMarker);
    filler.write("new");
    filler.closeRegion(pageMarker);
    filler.copyRest();
    EXPECT_EQ(filler.output(), crlfLines({"<!--variable-->", "new", "<!--variable-->"}));
    EXPECT_FALSE(filler.stopped());
}

TEST(TemplateFiller, missingOpeningMarkerStopsAfterTheWholeTemplate) {
    TemplateFiller filler("a\r\nb\r\n");
    filler.copyThrough(pageMarker);
    filler.write("never written");
    EXPECT_TRUE(filler.stopped());
    EXPECT_EQ(filler.output(), crlfLines({"a", "b"}));
    EXPECT_EQ(filler.reason(), "it ends before \"<!--variable-->\"");
}

TEST(TemplateFiller, missingClosingMarkerKeepsWhatWasWritten) {
    TemplateFiller filler("<!--variable-->\r\nold\r\n");
    filler.copyThrough(pageMarker);
    filler.write("new");
    filler.closeRegion(pageMarker);
    filler.copyRest();
    EXPECT_TRUE(filler.stopped());
    EXPECT_EQ(filler.output(), crlfLines({"<!--variable-->", "new"}));
}

TEST(TemplateFiller, emptyTemplateStopsAtTheFirstMarker) {
    TemplateFiller filler("");
    filler.copyThrough(pageMarker);
    EXPECT_TRUE(filler.stopped());
    EXPECT_EQ(filler.output(), "");
}

TEST(TemplateFiller, emptyTemplateHasARestThatIsEmpty) {
    TemplateFiller filler("");
    filler.copyRest();
    EXPECT_FALSE(filler.stopped());
    EXPECT_EQ(filler.output(), "");
}

TEST(TemplateFiller, singleLinesAreCopiedAndDropped) {
    TemplateFiller filler("a\r\nb\r\nc\r\n");
    filler.dropLine();
    filler.copyLine();
    filler.write("new");
    filler.copyRest();
    EXPECT_EQ(filler.output(), crlfLines({"b", "new", "c"}));
}

TEST(TemplateFiller, singleLineThatIsNotThereStops) {
    TemplateFiller copying("");
    copying.copyLine();
    EXPECT_TRUE(copying.stopped());
    TemplateFiller dropping("");
    dropping.dropLine();
    EXPECT_TRUE(dropping.stopped());
}

TEST(TemplateFiller, stoppedFromOutsideTakesNoFurtherStep) {
    TemplateFiller filler("a\r\nb\r\n//variable\r\n");
    filler.copyLine();
    filler.stop("no more stops");
    filler.stop("too late");
    filler.write("never written");
    filler.copyLine();
    filler.dropLine();
    filler.closeRegion(scriptBlockMarker);
    filler.copyRest();
    EXPECT_EQ(filler.output(), crlfLines({"a"}));
    EXPECT_EQ(filler.reason(), "no more stops");
}

TEST(TemplateFiller, templateBytesAreCopiedWhateverTheyAre) {
    const std::string bytes("\0\x81\xff<\xe4>\t ", 8);
    TemplateFiller filler(bytes);
    filler.copyRest();
    EXPECT_EQ(filler.output(), bytes + "\r\n");
}

} // namespace
} // namespace wendmark
