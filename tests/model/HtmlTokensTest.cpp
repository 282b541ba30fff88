#include "model/HtmlTokens.h"

#include <gtest/gtest.h>

#include <string>

namespace wendmark {
namespace {

/// One letter for each unit of the line: what it is part of.
std::string partsOf(std::u16string_view line, HtmlState state = HtmlState::text) {
    std::string parts;
    for (const HtmlToken& token : tokenizeHtml(line, state).tokens) {
        EXPECT_EQ(token.start, parts.size());
        EXPECT_GT(token.length, 0U);
        parts.append(token.length, ".taec"[static_cast<std::size_t>(token.part)]);
    }
    EXPECT_EQ(parts.size(), line.size());
    return parts;
}

HtmlState stateAfter(std::u16string_view line, HtmlState state = HtmlState::text) {
    return tokenizeHtml(line, state).state;
}

TEST(HtmlTokens, emptyLineHasNone) {
    EXPECT_EQ(partsOf(u""), "");
}

TEST(HtmlTokens, textAndTags) {
    EXPECT_EQ(partsOf(u"a <B>b</B>!"), "..ttt.tttt.");
    EXPECT_EQ(partsOf(u"<br/><!DOCTYPE>"), "ttttttttttttttt");
}

TEST(HtmlTokens, quotedValuesOfAttributes) {
    EXPECT_EQ(partsOf(u"<a b=\"c>d\" e='f'>g"), "tttttaaaaatttaaat.");
}

TEST(HtmlTokens, entities) {
    EXPECT_EQ(partsOf(u"a&amp;b&#8594;&lt;"), ".eeeee.eeeeeeeeeee");
}

TEST(HtmlTokens, comments) {
    EXPECT_EQ(partsOf(u"a<!-- <b> \" -->c"), ".cccccccccccccc.");
    EXPECT_EQ(partsOf(u"<!--narration-->"), "cccccccccccccccc");
}

TEST(HtmlTokens, signsThatBeginNothingAreText) {
    EXPECT_EQ(partsOf(u"1 < 2 & 3 &; <"), "..............");
    EXPECT_EQ(partsOf(u"<3 &# &amp"), "..........");
}

TEST(HtmlTokens, positionsCountUtf16Units) {
    EXPECT_EQ(partsOf(u"\U0001F600<b>\u2192"), "..ttt.");
}

TEST(HtmlTokens, whatIsOpenAtTheEndOfALineGoesOnInTheNext) {
    EXPECT_EQ(stateAfter(u"<a b"), HtmlState::tag);
    EXPECT_EQ(partsOf(u"c>d", HtmlState::tag), "tt.");
    EXPECT_EQ(stateAfter(u"<a b=\"x"), HtmlState::doubleQuoted);
    EXPECT_EQ(partsOf(u"y\">d", HtmlState::doubleQuoted), "aat.");
    EXPECT_EQ(stateAfter(u"<a b='x"), HtmlState::singleQuoted);
    EXPECT_EQ(partsOf(u"y\"'>d", HtmlState::singleQuoted), "aaat.");
    EXPECT_EQ(stateAfter(u"<!-- x"), HtmlState::comment);
    EXPECT_EQ(partsOf(u"x --> y", HtmlState::comment), "ccccc..");
    EXPECT_EQ(stateAfter(u"<b>x</b>"), HtmlState::text);
    EXPECT_EQ(stateAfter(u"", HtmlState::comment), HtmlState::comment);
}

} // namespace
} // namespace wendmark
