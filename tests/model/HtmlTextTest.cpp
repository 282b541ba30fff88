#include "model/HtmlText.h"

#include <gtest/gtest.h>

namespace wendmark {

TEST(VisibleTextTest, hasNoTagsAndNoComments) {
    EXPECT_EQ(visibleText("The <B>old</B> <!-- hidden <b> -->town"), "The old town");
    EXPECT_EQ(visibleText("H<SUB>2</SUB>O<BR>and<p>more"), "H2O and more");
    EXPECT_EQ(visibleText("<script>var a = '<b>';</SCRIPT>a<style>b{}</style>c"), "ac");
    EXPECT_EQ(visibleText("<!DOCTYPE html><?xml?></ >a"), "a");
}

TEST(VisibleTextTest, bracketThatBeginsNoTagIsText) {
    EXPECT_EQ(visibleText("I <3 you, a < b <"), "I <3 you, a < b <");
    EXPECT_EQ(visibleText("1 < 2 & 3 > 2"), "1 < 2 & 3 > 2");
}

TEST(VisibleTextTest, quotedValueMayHoldABracketAndALooseApostropheEndsNothing) {
    EXPECT_EQ(visibleText("<a title='1 > 0' href=x>a</a>b"), "ab");
    EXPECT_EQ(visibleText("<a title=it's>a</a>b's"), "ab's");
    EXPECT_EQ(visibleText("<img alt=\"x>y\"/>z"), "z");
}

TEST(VisibleTextTest, isOneLineWithSingleBlanks) {
    EXPECT_EQ(visibleText("\r\n a \t b\x01\r\n<p>c</p> "), "a b c");
    EXPECT_EQ(visibleText(std::string_view("a\0b", 3)), "a b");
    EXPECT_EQ(visibleText(""), "");
}

TEST(VisibleTextTest, whatIsNotClosedReachesToTheEnd) {
    EXPECT_EQ(visibleText("a <b c"), "a");
    EXPECT_EQ(visibleText("a <b title=\"c> d"), "a");
    EXPECT_EQ(visibleText("a <!-- b"), "a");
    EXPECT_EQ(visibleText("a <script>b"), "a");
}

TEST(DecodeEntitiesTest, knowsNamesAndNumbers) {
    EXPECT_EQ(decodeEntities("&lt;&AMP;&amp;&quot;&apos;&gt;"), "<&AMP;&\"'>");
    EXPECT_EQ(decodeEntities("&Uuml;&uuml;&szlig;&yuml;&nbsp;&divide;"),
              "\xC3\x9C\xC3\xBC\xC3\x9F\xC3\xBF\xC2\xA0\xC3\xB7");
    EXPECT_EQ(decodeEntities("&mdash;&hellip;&rarr;"), "\xE2\x80\x94\xE2\x80\xA6\xE2\x86\x92");
    EXPECT_EQ(decodeEntities("&#228;&#xE4;&#X2192;&#8594;"), "\xC3\xA4\xC3\xA4\xE2\x86\x92\xE2\x86\x92");
}

TEST(DecodeEntitiesTest, numbersOfTheCodePageAreItsCharacters) {
    EXPECT_EQ(decodeEntities("&#128;&#151;"), "\xE2\x82\xAC\xE2\x80\x94");
}

TEST(DecodeEntitiesTest, impossibleNumbersBecomeTheReplacementCharacter) {
    EXPECT_EQ(decodeEntities("&#0;&#xD800;&#1114112;&#99999999999999999999;"),
              "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(DecodeEntitiesTest, whatIsNoEntityStays) {
    for (const char* text : {"Q&A", "&", "&;", "&#;", "&#x;", "&#12a;", "&unknown;", "&amp", "a && b;",
                             "&averyveryverylongnamethatisnoentity;"})
        EXPECT_EQ(decodeEntities(text), text);
}

TEST(HtmlShowingTest, givesTheTextBack) {
    const std::string text = "<b> & \"quoted\" it's &amp;";
    EXPECT_EQ(htmlShowing(text), "&lt;b&gt; &amp; &quot;quoted&quot; it's &amp;amp;");
    EXPECT_EQ(visibleText(htmlShowing(text)), text);
}

TEST(HtmlPieceTest, attributesAreFoundInAnyForm) {
    HtmlPieces pieces("<A class = 'x' data-href=no HREF=\"a&amp;b\" checked/>");
    const auto piece = pieces.next();
    ASSERT_TRUE(piece.has_value());
    EXPECT_TRUE(piece->isTag(HtmlPiece::Kind::openingTag, "a"));
    EXPECT_EQ(piece->attribute("class"), "x");
    EXPECT_EQ(piece->attribute("href"), "a&amp;b");
    EXPECT_EQ(piece->attribute("CHECKED"), "");
    EXPECT_EQ(piece->attribute("title"), std::nullopt);
    EXPECT_FALSE(pieces.next().has_value());
}

} // namespace wendmark
