#include "base/TextLines.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace wendmark {
namespace {

std::vector<std::string> linesOf(std::string_view text) {
    std::vector<std::string> lines;
    TextLines walk(text);
    while (const auto line = walk.next())
        lines.emplace_back(*line);
    return lines;
}

using Lines = std::vector<std::string>;

TEST(TextLines, everyKindOfLineEndEndsALine) {
    EXPECT_EQ(linesOf("a\r\nb\nc\rd"), (Lines{"a", "b", "c", "d"}));
}

TEST(TextLines, emptyLinesCount) {
    EXPECT_EQ(linesOf("\r\n\r\na\r\n"), (Lines{"", "", "a"}));
    EXPECT_EQ(linesOf("a\n\r\nb"), (Lines{"a", "", "b"}));
    EXPECT_EQ(linesOf("a\r\rb"), (Lines{"a", "", "b"}));
}

TEST(TextLines, endsOfDifferentKindsMayFollowEachOther) {
    EXPECT_EQ(linesOf("\n\r"), (Lines{"", ""}));
    EXPECT_EQ(linesOf("a\r\r\nb"), (Lines{"a", "", "b"}));
    EXPECT_EQ(linesOf("a\rb\rc\nd\re\r\nf"), (Lines{"a", "b", "c", "d", "e", "f"}));
    EXPECT_EQ(linesOf("a\nb\rc"), (Lines{"a", "b", "c"}));
}

TEST(TextLines, lastLineEndMayBeMissing) {
    for (const std::string_view end : {"", "\r\n", "\n", "\r"})
        EXPECT_EQ(linesOf(std::string("a").append(end)), Lines{"a"});
}

TEST(TextLines, emptyTextHasNoLine) {
    EXPECT_EQ(linesOf(""), Lines{});
}

TEST(TextLines, restIsWhatHasNotBeenPassed) {
    TextLines walk("a\r\nb\n\nc");
    EXPECT_EQ(walk.rest(), "a\r\nb\n\nc");
    walk.next();
    EXPECT_EQ(walk.rest(), "b\n\nc");
    walk.next();
    EXPECT_EQ(walk.rest(), "\nc");
    walk.next();
    EXPECT_EQ(walk.rest(), "c");
    walk.next();
    EXPECT_EQ(walk.rest(), "");
}

TEST(TextLines, endIsReportedAgainAndAgain) {
    TextLines walk("a");
    EXPECT_FALSE(walk.atEnd());
    EXPECT_TRUE(walk.next());
    EXPECT_TRUE(walk.atEnd());
    EXPECT_FALSE(walk.next());
    EXPECT_FALSE(walk.next());
}

} // namespace
} // namespace wendmark
