#include "model/ReadableText.h"

#include "model/HtmlText.h"

#include <gtest/gtest.h>

namespace wendmark {
namespace {

/// What is stored for the first of these words in what people read; "-" for none.
std::string storedFor(const std::string& html, const std::string& words) {
    const ReadableText readable = ReadableText::ofHtml(html);
    const std::size_t begin = readable.text().find(words);
    if (begin == std::string::npos)
        return "not there: " + readable.text();
    const std::optional<TextRange> range = readable.stored({begin, begin + words.size()});
    return range ? html.substr(range->begin, range->end - range->begin) : "-";
}

/// The HTML with `by` in the place of the first of these words.
std::string replaced(const std::string& html, const std::string& words, const std::string& by) {
    const ReadableText readable = ReadableText::ofHtml(html);
    const std::size_t begin = readable.text().find(words);
    HtmlReplacer replacer(html);
    replacer.replace(readable.stored({begin, begin + words.size()}).value(), by);
    return replacer.take();
}

} // namespace

TEST(ReadableTextTest, isWhatVisitorsRead) {
    const char* const texts[] = {"",
                                 "plain",
                                 "The <B>old</B> <!-- hidden <b> -->town",
                                 "H<SUB>2</SUB>O<BR>and<p>more</p>\r\n",
                                 "<script>var a = '<b>';</SCRIPT>a<style>b{}</style>c",
                                 "I <3 you, a < b <",
                                 "1 &lt; 2 &amp; 3 &unknown; &#228;&#xE4;",
                                 "\r\n a \t b\x01\r\n<p>c</p> ",
                                 "a <b title=\"c> d",
                                 "a <!-- b",
                                 "<!--narration-->"};
    for (const char* const text : texts)
        EXPECT_EQ(ReadableText::ofHtml(text).text(), visibleText(text));
}

TEST(ReadableTextTest, hardBlanksAreBlanksAndSoftHyphensAreNothing) {
    EXPECT_EQ(ReadableText::ofHtml("a&nbsp;\xC2\xA0 b&#160;").text(), "a b");
    EXPECT_EQ(ReadableText::ofHtml("mu&shy;se\xC2\xADum&#173;").text(), "museum");
}

TEST(ReadableTextTest, leadsBackToWhatIsStored) {
    EXPECT_EQ(storedFor("one two three", "two"), "two");
    EXPECT_EQ(storedFor("a wo<b>rd</b> b", "word"), "wo<b>rd");
    EXPECT_EQ(storedFor("<b>wo</b>rd", "word"), "wo</b>rd");
    EXPECT_EQ(storedFor("caf&eacute;s", "caf\xC3\xA9"), "caf&eacute;");
    EXPECT_EQ(storedFor("caf\xC3\xA9s", "caf\xC3\xA9"), "caf\xC3\xA9");
    EXPECT_EQ(storedFor("&Eacute;t&eacute;", "\xC3\x89t\xC3\xA9"), "&Eacute;t&eacute;");
    EXPECT_EQ(storedFor("old&nbsp; \r\ntown", "old town"), "old&nbsp; \r\ntown");
    EXPECT_EQ(storedFor("old <b> town</b>", "old town"), "old <b> town");
    EXPECT_EQ(storedFor("old<br>town", "old town"), "old<br>town");
    EXPECT_EQ(storedFor("a<!-- word -->word", "word"), "word");
    EXPECT_EQ(storedFor("mu&shy;seum", "museum"), "mu&shy;seum");
}

TEST(ReadableTextTest, blankOfATagAloneHasNoEnds) {
    EXPECT_EQ(storedFor("old<br>town", " "), "-");
    EXPECT_EQ(storedFor("old<br>town", "old "), "-");
    EXPECT_EQ(storedFor("old<br>town", " town"), "-");
    EXPECT_EQ(storedFor("old<br>\r\ntown", " town"), "\r\ntown");
}

TEST(ReadableTextTest, plainTextIsReadAsItStands) {
    const ReadableText readable = ReadableText::ofPlain("http://a.example/?b=1&amp;c <x>");
    EXPECT_EQ(readable.text(), "http://a.example/?b=1&amp;c <x>");
    EXPECT_EQ(readable.stored({7, 16}), (TextRange{7, 16}));
    EXPECT_EQ(ReadableText::ofPlain("").text(), "");
}

TEST(ReadableTextTest, bytesThatAreNoCharactersStay) {
    EXPECT_EQ(ReadableText::ofHtml("a\xFF\xC3 b").text(), "a\xFF\xC3 b");
    EXPECT_EQ(storedFor("a\xFF\xC3 b", "\xFF\xC3"), "\xFF\xC3");
}

TEST(HtmlReplacerTest, wordsStandWhereTheOldOnesBegan) {
    EXPECT_EQ(replaced("a word b", "word", "phrase"), "a phrase b");
    EXPECT_EQ(replaced("a wo<b>rd</b> b", "word", "phrase"), "a phrase<b></b> b");
    EXPECT_EQ(replaced("<b>wo</b>rd", "word", "phrase"), "<b>phrase</b>");
    EXPECT_EQ(replaced("w<i>o<b>r</i>d</b>s", "words", "x"), "x<i><b></i></b>");
    EXPECT_EQ(replaced("old<br>town", "old town", "city"), "city<br>");
    EXPECT_EQ(replaced("w<!-- or -->ord", "word", "x"), "x<!-- or -->");
    EXPECT_EQ(replaced("w<script>o</script>ord", "word", "x"), "x<script>o</script>");
    EXPECT_EQ(replaced("caf&eacute;", "caf\xC3\xA9", "bar"), "bar");
    EXPECT_EQ(replaced("word", "word", ""), "");
}

TEST(HtmlReplacerTest, wordsAreEscaped) {
    EXPECT_EQ(replaced("a word", "word", "<b> & \"c\""), "a &lt;b&gt; &amp; &quot;c&quot;");
    EXPECT_EQ(replaced("a word", "word", "&eacute;"), "a &amp;eacute;");
}

TEST(HtmlReplacerTest, whatIsJoinedBecomesNoTagAndNoEntity) {
    EXPECT_EQ(replaced("1 < b> 2", "< ", "<"), "1 &lt;b> 2");
    EXPECT_EQ(replaced("<5 apples", "5", "five"), "&lt;five apples");
    EXPECT_EQ(replaced("a <9!-- b", "9", ""), "a &lt;!-- b");
    EXPECT_EQ(replaced("a <9/b>", "9", ""), "a &lt;/b>");
    EXPECT_EQ(replaced("&xlt;", "x", ""), "&amp;lt;");
    EXPECT_EQ(replaced("&xp;", "x", "am"), "&amp;amp;");
    EXPECT_EQ(replaced("& #228;", " ", ""), "&amp;#228;");
    EXPECT_EQ(replaced("&copy 2024", "2024", "2025"), "&copy 2025");
    EXPECT_EQ(replaced("a <9 b", "9", "8"), "a <8 b");
    EXPECT_EQ(replaced("<<b>9</b>a", "9", ""), "<<b></b>a");
}

TEST(HtmlReplacerTest, severalRangesInTheirOrder) {
    const std::string html = "a-b-<i>c</i>&amp;";
    HtmlReplacer replacer(html);
    replacer.replace({0, 1}, "1");
    replacer.replace({2, 3}, "");
    replacer.replace({7, 8}, "3");
    EXPECT_EQ(replacer.take(), "1--<i>3</i>&amp;");
}

TEST(HtmlReplacerTest, rangesThatTouchDoNotMakeAnEntity) {
    const std::string html = "&xlxt;";
    HtmlReplacer replacer(html);
    replacer.replace({1, 2}, "");
    replacer.replace({3, 4}, "");
    EXPECT_EQ(replacer.take(), "&amp;lt;");
}

} // namespace wendmark
