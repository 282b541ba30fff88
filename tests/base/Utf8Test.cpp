#include "base/Utf8.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace wendmark {
namespace {

bool isSurrogate(char32_t codePoint) {
    return codePoint >= 0xd800 && codePoint <= 0xdfff;
}

TEST(Utf8, everyCharacterIsEncodedAndDecoded) {
    for (char32_t codePoint = 0; codePoint <= 0x10ffff; ++codePoint) {
        if (isSurrogate(codePoint))
            continue;
        std::string utf8;
        appendUtf8(utf8, codePoint);
        const Utf8Unit unit = decodeUtf8(utf8, 0);
        ASSERT_TRUE(unit.valid) << testing::PrintToString(codePoint);
        ASSERT_EQ(unit.codePoint, codePoint);
        ASSERT_EQ(unit.length, utf8.size());
    }
}

TEST(Utf8, charactersAreEncodedAsTheStandardSays) {
    struct Case {
        char32_t codePoint;
        std::string_view utf8;
    };
    for (const Case& given :
         {Case{0x7f, "\x7F"}, Case{0x80, "\xC2\x80"}, Case{0x7ff, "\xDF\xBF"}, Case{0x800, "\xE0\xA0\x80"},
          Case{0xd7ff, "\xED\x9F\xBF"}, Case{0xe000, "\xEE\x80\x80"}, Case{0xffff, "\xEF\xBF\xBF"},
          Case{0x10000, "\xF0\x90\x80\x80"}, Case{0x10ffff, "\xF4\x8F\xBF\xBF"}}) {
        std::string utf8 = "x";
        appendUtf8(utf8, given.codePoint);
        EXPECT_EQ(utf8, std::string("x").append(given.utf8));
    }
}

TEST(Utf8, nulIsACharacter) {
    std::string utf8;
    appendUtf8(utf8, 0);
    EXPECT_EQ(utf8, std::string(1, '\0'));
    EXPECT_TRUE(decodeUtf8(utf8, 0).valid);
}

TEST(Utf8, bytesThatFormNoCharacterAreTakenOneByOne) {
    for (const std::string_view bytes :
         {"\x80", "\xBF", "\xC0\x80", "\xC1\xBF", "\xC3", "\xC3x", "\xE0\x9F\xBF", "\xE2\x82", "\xE2\x82x",
          "\xED\xA0\x80", "\xED\xBF\xBF", "\xF0\x8F\xBF\xBF", "\xF0\x9F\x98", "\xF4\x90\x80\x80",
          "\xF5\x80\x80\x80", "\xF8\x88\x80\x80\x80", "\xFE", "\xFF"}) {
        SCOPED_TRACE(testing::PrintToString(bytes));
        const Utf8Unit unit = decodeUtf8(bytes, 0);
        EXPECT_FALSE(unit.valid);
        EXPECT_EQ(unit.length, 1U);
        EXPECT_EQ(unit.codePoint, static_cast<unsigned char>(bytes[0]));
    }
}

TEST(Utf8, characterIsDecodedWhereItStands) {
    const std::string_view text = "a→b";
    EXPECT_EQ(decodeUtf8(text, 1).codePoint, 0x2192U);
    EXPECT_FALSE(decodeUtf8(text, 2).valid);
    EXPECT_EQ(decodeUtf8(text, 4).codePoint, static_cast<char32_t>('b'));
}

TEST(Utf8, runOfAsciiEndsAtTheFirstByteThatIsNone) {
    // Around the widths in which machines take bytes together.
    for (std::size_t length = 0; length <= 40; ++length) {
        for (std::size_t start = 0; start <= length; ++start) {
            const std::string run(length, '\x7F');
            EXPECT_EQ(asciiRunLength(run, start), length - start);
            EXPECT_EQ(asciiRunLength(run + "\x80", start), length - start);
            EXPECT_EQ(asciiRunLength(run + "\x80 and more ASCII", start), length - start);
        }
    }
}

TEST(Utf8, lengthCountsUtf16Units) {
    EXPECT_EQ(utf16Length(""), 0U);
    EXPECT_EQ(utf16Length("abc"), 3U);
    EXPECT_EQ(utf16Length("é→\uFFFF"), 3U);
    EXPECT_EQ(utf16Length("\U00010000😀"), 4U);
    EXPECT_EQ(utf16Length("\xE2\x82"), 2U);
    EXPECT_EQ(utf16Length("nine byteséand more→"), 20U);
}

TEST(Utf8, positionsAreFoundByUtf16Units) {
    const std::string_view text = "é😀x"; // 2, 4 and 1 bytes.
    EXPECT_EQ(skipUtf16(text, 0, 0), 0U);
    EXPECT_EQ(skipUtf16(text, 0, 1), 2U);
    EXPECT_EQ(skipUtf16(text, 0, 3), 6U);
    EXPECT_EQ(skipUtf16(text, 2, 3), 7U);
    EXPECT_EQ(skipUtf16(text, 0, 99), 7U);
}

TEST(Utf8, positionInsideACharacterCountsAsBehindIt) {
    EXPECT_EQ(skipUtf16("é😀x", 0, 2), 6U);
}

TEST(Utf8, everyByteOfAValidTextIsPartOfACharacter) {
    EXPECT_TRUE(isUtf8(""));
    EXPECT_TRUE(isUtf8("plain words, and more than eight"));
    EXPECT_TRUE(isUtf8("\xC3\xA4 \xE2\x86\x92 \xF0\x9F\x98\x80"));
    EXPECT_FALSE(isUtf8("plain words, then \xE4"));
    EXPECT_FALSE(isUtf8("\xE2\x86"));
    EXPECT_FALSE(isUtf8("\xC0\x80"));
}

} // namespace
} // namespace wendmark
