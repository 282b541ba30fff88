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

struct MarkerCase {
    std::string_view line;
    std::string_view marker;
    bool isMarker;
};

class MarkerLines : public testing::TestWithParam<MarkerCase> {};

TEST_P(MarkerLines, areThoseThatBeginWithTheMarker) {
    TemplateFiller filler(GetParam().line);
    filler.copyThrough(GetParam().marker);
    EXPECT_EQ(!filler.stopped(), GetParam().isMarker);
}

INSTANTIATE_TEST_SUITE_P(TemplateFiller, MarkerLines,
                         testing::Values(MarkerCase{"<!--variable-->", pageMarker, true},
                                         MarkerCase{"<!--variable--> and more", pageMarker, true},
                                         MarkerCase{"<!--variable-", pageMarker, false},
                                         MarkerCase{"<!--variable title-->", pageMarker, false},
                                         MarkerCase{"<!--Variable-->", pageMarker, false},
                                         MarkerCase{" <!--variable-->", pageMarker, false},
                                         MarkerCase{"\t<!--variable-->", pageMarker, false},
                                         MarkerCase{"<p><!--variable-->", pageMarker, false},
                                         MarkerCase{"<!--variable-->", loosePageMarker, true},
                                         MarkerCase{"<!--variable title-->", loosePageMarker, true},
                                         MarkerCase{"<!--variables", loosePageMarker, true},
                                         MarkerCase{"<!--variabl", loosePageMarker, false},
                                         MarkerCase{"//variable", scriptBlockMarker, true},
                                         MarkerCase{"//variables = 1", scriptBlockMarker, true},
                                         MarkerCase{"// variable", scriptBlockMarker, false},
                                         MarkerCase{"//VARIABLE", scriptBlockMarker, false},
                                         MarkerCase{"    //variable", scriptBlockMarker, false}));

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
