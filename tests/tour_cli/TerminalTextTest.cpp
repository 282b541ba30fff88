#include "tour_cli/TerminalText.h"

#include <gtest/gtest.h>

namespace wendmark::cli {
namespace {

TEST(TerminalText, whatPeopleReadStays) {
    for (const std::string text : {"", "Plants & \\x1b", "Wüste →", "שלום", "日本 🌵",
                                   "a\xe2\x80\x8d"
                                   "b"})
        EXPECT_EQ(printable(text), text);
}

TEST(TerminalText, controlCharactersAreNamed) {
    EXPECT_EQ(printable("a\x1b[31mb"), "a\\x1B[31mb");
    EXPECT_EQ(printable(std::string_view("\0\a\b\n\r\t\x7f", 7)), "\\x00\\x07\\x08\\n\\r\\t\\x7F");
    EXPECT_EQ(printable("\xc2\x80|\xc2\x9b|\xc2\x9f|\xc2\xa0"), "\\x80|\\x9B|\\x9F|\xc2\xa0");
}

TEST(TerminalText, whatTurnsTheOrderOfReadingIsNamed) {
    EXPECT_EQ(printable("\xd8\x9c|\xe2\x80\x8e|\xe2\x80\x8f"), "\\u061C|\\u200E|\\u200F");
    // In pieces: it would turn this line, too.
    const std::string turning =
        std::string("\xe2\x80\xa8|\xe2\x80\xa9|\xe2\x80") + "\xaa|\xe2\x80" + "\xae|\xe2\x80\xaf";
    EXPECT_EQ(printable(turning), "\\u2028|\\u2029|\\u202A|\\u202E|\xe2\x80\xaf");
    EXPECT_EQ(printable("\xe2\x81\xa6|\xe2\x81\xa9"), "\\u2066|\\u2069");
}

TEST(TerminalText, bytesThatAreNoCharacterAreNamed) {
    EXPECT_EQ(printable("\x9b"
                        "2J\xff\xc3"),
              "\\x9B2J\\xFF\\xC3");
}

} // namespace
} // namespace wendmark::cli
