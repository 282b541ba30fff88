#include "model/StopTexts.h"

#include "model/ScriptFile.h"
#include "model/TourModel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <string>

namespace wendmark {
namespace {

constexpr std::string_view none = "<!--none-->";

void expectEdited(const EditedText& edited, std::string_view text, int caret) {
    EXPECT_EQ(edited.text, text);
    EXPECT_EQ(edited.caret, caret);
}

TEST(StopTexts, textIsCutAtTheSelection) {
    const SplitText parts = SplitString("hello world", 6, 3);
    EXPECT_EQ(parts.before, "hello ");
    EXPECT_EQ(parts.selected, "wor");
    EXPECT_EQ(parts.after, "ld");
}

TEST(StopTexts, cutAtTheCaretSelectsNothing) {
    const SplitText begin = SplitString("abc", 0, 0);
    EXPECT_EQ(begin.before + "|" + begin.selected + "|" + begin.after, "||abc");
    const SplitText end = SplitString("abc", 3, 0);
    EXPECT_EQ(end.before + "|" + end.selected + "|" + end.after, "abc||");
    const SplitText all = SplitString("abc", 0, 3);
    EXPECT_EQ(all.before + "|" + all.selected + "|" + all.after, "|abc|");
}

TEST(StopTexts, positionsOutsideTheTextCountAsItsEnds) {
    const SplitText beyond = SplitString("abc", 2, 9);
    EXPECT_EQ(beyond.before + "|" + beyond.selected + "|" + beyond.after, "ab|c|");
    const SplitText before = SplitString("abc", -1, -1);
    EXPECT_EQ(before.before + "|" + before.selected + "|" + before.after, "||abc");
}

TEST(StopTexts, positionsCountUtf16Units) {
    const SplitText parts = SplitString("é→😀x😀!", 4, 3); // One, one, two; one, two.
    EXPECT_EQ(parts.before, "é→😀");
    EXPECT_EQ(parts.selected, "x😀");
    EXPECT_EQ(parts.after, "!");
}

TEST(StopTexts, selectionIsWrappedAndTheCaretStandsBehindTheTag) {
    expectEdited(wrapSelection("hello world", {6, 5}, boldTag), "hello <B>world</B>", 9);
    expectEdited(wrapSelection("abc", {0, 3}, italicTag), "<I>abc</I>", 3);
    expectEdited(wrapSelection("😀 über", {3, 4}, underlineTag), "😀 <U>über</U>", 6);
}

TEST(StopTexts, caretStandsInsideALongerTag) {
    expectEdited(wrapSelection("abc", {3, 0}, smallTag), "abc<SMALL></SMALL>", 6);
    expectEdited(wrapSelection("abc", {1, 1}, bigTag), "a<BIG>b</BIG>c", 4);
}

TEST(StopTexts, lineBreakIsInsertedBeforeTheCaret) {
    expectEdited(insertLineBreak("ab", 1), "a<BR>b", 5);
    expectEdited(insertLineBreak("", 0), "<BR>", 4);
}

TEST(StopTexts, linkTakesItsAddressAsItIs) {
    expectEdited(linkSelection("see this page", {4, 4}, "http://host/a b?c='d'"),
                 "see <a HREF=\"javascript:loadSubStop('http://host/a b?c='d'');\">this</A> page", 7);
    expectEdited(linkSelection("x", {0, 1}, ""), "<a HREF=\"javascript:loadSubStop('');\">x</A>", 3);
}

TEST(StopTexts, imageIsInsertedByItsName) {
    expectEdited(insertImage("ab", 1, "äpfel 1.gif"), "a<IMG SRC=\"äpfel 1.gif\">b", 4);
}

TEST(StopTexts, charactersThatWouldEndTheImagesNameAreEncoded) {
    expectEdited(insertImage("", 0, "50% \"a\"#1?.gif"), "<IMG SRC=\"50%25 %22a%22%231%3F.gif\">", 3);
}

TEST(StopTexts, titleIsStoredAsItStands) {
    for (const std::string_view title : {"Cactus", "", " a  b ", "a <b>&amp;</b>", "1 <<<VoskInfo>>>"})
        EXPECT_EQ(storableTitle(title), title);
}

TEST(StopTexts, titleOfBlanksIsNone) {
    EXPECT_EQ(storableTitle("   "), "");
    EXPECT_EQ(storableTitle(" \r\n"), "");
}

TEST(StopTexts, titleIsOneLine) {
    EXPECT_EQ(storableTitle("a\nb"), "a b");
}

TEST(StopTexts, titleCannotBeTakenForALineOfTheScriptsOwn) {
    EXPECT_EQ(storableTitle("<<<VoskInfo>>> Stop9"), "&lt;<<VoskInfo>>> Stop9");
    EXPECT_EQ(storableTitle("  <<<VoskInfo>>>"), "  &lt;<<VoskInfo>>>");
}

TEST(StopTexts, textOfBlanksAndLineBreaksBecomesThePlaceholder) {
    for (const std::string_view text :
         {"", " ", "\r\n", "\r\n\r\n", "\r\n\r\n\r\n", " \r\n \r\n  ", "\r\n \r\n\r\n\r\n \r\n"})
        EXPECT_EQ(storableText(text, none), none);
}

TEST(StopTexts, textIsStoredAsItStands) {
    for (const std::string_view text :
         {"a", " a ", "a\r\nb", "a\r\n", "a\r\n\r\nb", "\r\na", "a\r\n\r\n", "a\r\n\r\n\r\n", "\t", " \r\na",
          "see <<<VoskInfo>>>", "\r\n\r\na\r\n\r\nb\r\n"})
        EXPECT_EQ(storableText(text, none), text);
}

TEST(StopTexts, lineBreaksAreStoredAsCrLf) {
    EXPECT_EQ(storableText("a\nb\n", none), "a\r\nb\r\n");
}

TEST(StopTexts, blankLinesThatWouldEndTheTextAreMarked) {
    EXPECT_EQ(storableText("a\r\n\r\n\r\nb", none), "a<BR>\r\n<BR>\r\nb\r\n");
    EXPECT_EQ(storableText("a\r\n  \r\nb", none), "a<BR>\r\nb\r\n");
    EXPECT_EQ(storableText("\r\n\r\n\r\na", none), "<BR>\r\n<BR>\r\n<BR>\r\na\r\n");
}

TEST(StopTexts, linesCannotBeTakenForLinesOfTheScriptsOwn) {
    EXPECT_EQ(storableText("a\r\n <<<VoskInfo>>> b\r\n<<<VoskInfo>>>", none),
              "a\r\n &lt;<<VoskInfo>>> b\r\n&lt;<<VoskInfo>>>");
}

TEST(StopTexts, longTextWhoseParagraphsNobodyMarksHasNoBlankLine) {
    const std::string filling(longestMarkedText, 'x');
    EXPECT_EQ(storableText("a\r\n\r\nb" + filling, none), "a<BR>\r\nb" + filling + "\r\n");
}

/// Puts typed texts into the first of two stops, writes the script and reads it back.
TourModel readBack(std::string_view title, std::string_view narration, std::string_view instruction) {
    TourModel tour;
    tour.stops.setCount(2);
    tour.stops.at(1).stopTitle = storableTitle(title);
    tour.stops.at(1).stopNarration = storableText(narration, noNarration);
    tour.stops.at(1).stopInstruction = storableText(instruction, noInstruction);
    tour.stops.at(1).stopURL = "first.htm";
    tour.stops.at(2).stopTitle = "Second";
    tour.stops.at(2).stopURL = "second.htm";
    tour.stops.at(2).stopNarration = "Its narration";
    tour.stops.at(2).stopInstruction = "Its instruction";
    const std::string script = composeScript(tour);
    TourModel read;
    parseScript(script, read, [](int line, std::string_view error) { ADD_FAILURE() << line << error; });
    return read;
}

TEST(StopTexts, nothingThatCanBeTypedShiftsAScript) {
    const std::string_view pieces[] = {" ", "x", "\r\n", "\r\n", "\r\n", "<<<VoskInfo>>>"};
    std::minstd_rand random(1);
    const auto typed = [&] {
        std::string text;
        for (unsigned long length = random() % 10; length > 0; --length)
            text += pieces[random() % std::size(pieces)];
        return text;
    };
    for (int round = 0; round < 5000; ++round) {
        const std::string title = typed();
        const std::string narration = typed();
        const std::string instruction = typed();
        SCOPED_TRACE(title + "|" + narration + "|" + instruction);
        const TourModel read = readBack(title, narration, instruction);
        ASSERT_EQ(read.stopCount(), 2);
        ASSERT_EQ(read.stops.at(1).stopURL, "first.htm");
        ASSERT_EQ(read.stops.at(2).stopTitle, "Second");
        ASSERT_EQ(read.stops.at(2).stopURL, "second.htm");
        ASSERT_EQ(read.stops.at(2).stopNarration, "Its narration\r\n");
        ASSERT_EQ(read.stops.at(2).stopInstruction, "Its instruction\r\n");
        ASSERT_EQ(
            std::count(read.stops.at(1).stopNarration.begin(), read.stops.at(1).stopNarration.end(), 'x'),
            std::count(narration.begin(), narration.end(), 'x'));
    }
}

} // namespace
} // namespace wendmark
