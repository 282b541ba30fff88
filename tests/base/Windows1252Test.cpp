#include "base/Windows1252.h"

#include "base/Utf8.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>

namespace wendmark::windows1252 {
namespace {

std::string everyByte() {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes.push_back(static_cast<char>(byte));
    return bytes;
}

std::string utf8Of(char32_t character) {
    std::string utf8;
    appendUtf8(utf8, character);
    return utf8;
}

TEST(Windows1252, everyByteSurvivesReadingAndWriting) {
    const std::string bytes = everyByte();
    EXPECT_EQ(encodeHtml(decodeHtml(bytes)), bytes);
    EXPECT_EQ(encodeAddress(decode(bytes)), bytes);
}

TEST(Windows1252, everyByteStandsForACharacterOfItsOwn) {
    const std::string decoded = decode(everyByte());
    EXPECT_EQ(decodeHtml(everyByte()), decoded);
    EXPECT_EQ(utf16Length(decoded), 256U);
}

TEST(Windows1252, bytesFrom80To9FStandForTheCharactersOfTheCodePage) {
    EXPECT_EQ(decode("\x80\x82\x83\x84\x85\x86\x87\x88\x89\x8A\x8B\x8C\x8E"), "€‚ƒ„…†‡ˆ‰Š‹ŒŽ");
    EXPECT_EQ(decode("\x91\x92\x93\x94\x95\x96\x97\x98\x99\x9A\x9B\x9C\x9E\x9F"), "‘’“”•–—˜™š›œžŸ");
}

TEST(Windows1252, otherBytesStandForTheCharacterOfTheirValue) {
    for (int byte = 0; byte < 256; ++byte) {
        if (byte >= 0x80 && byte <= 0x9f)
            continue;
        EXPECT_EQ(decode(std::string(1, static_cast<char>(byte))), utf8Of(static_cast<char32_t>(byte)));
    }
}

TEST(Windows1252, unassignedBytesStandForTheControlCharactersOfTheirValue) {
    EXPECT_EQ(decode("\x81\x8D\x8F\x90\x9D"), "\u0081\u008D\u008F\u0090\u009D");
    EXPECT_EQ(encodeHtml("\u0081\u008D\u008F\u0090\u009D"), "\x81\x8D\x8F\x90\x9D");
}

TEST(Windows1252, missingCharactersBecomeReferencesInHtml) {
    EXPECT_EQ(encodeHtml("a→b"), "a&#8594;b");
    EXPECT_EQ(encodeHtml("Ж😀\U0010FFFF"), "&#1046;&#128512;&#1114111;");
    EXPECT_EQ(encodeHtml("Ā"), "&#256;");
    EXPECT_EQ(encodeHtml("\u0080\u0099"), "&#128;&#153;");
}

TEST(Windows1252, missingCharactersBecomePercentEncodedUtf8InAddresses) {
    EXPECT_EQ(encodeAddress("http://h/é→?q=😀"), "http://h/\xE9%E2%86%92?q=%F0%9F%98%80");
    EXPECT_EQ(encodeAddress("Ж\u0080"), "%D0%96%C2%80");
    EXPECT_EQ(encodeAddress("100%&#8594;"), "100%&#8594;");
}

TEST(Windows1252, bytesThatFormNoCharacterAreWrittenAsTheyStand) {
    EXPECT_EQ(encodeHtml("a\xFF\xE2\x86z"), "a\xFF\xE2\x86z");
    EXPECT_EQ(encodeAddress("a\xFF\xE2\x86z"), "a\xFF\xE2\x86z");
}

TEST(Windows1252, markupIsNotTouched) {
    EXPECT_EQ(encodeHtml("<b title=\"x\">&amp; &eacute; &#233;</b>"),
              "<b title=\"x\">&amp; &eacute; &#233;</b>");
}

TEST(Windows1252, referencesOfMissingCharactersAreReadBack) {
    EXPECT_EQ(decodeHtml("a&#8594;b"), "a→b");
    EXPECT_EQ(decodeHtml("&#256;&#128512;&#1114111;"), "Ā😀\U0010FFFF");
    EXPECT_EQ(decodeHtml("&#55295;&#57344;"), "\uD7FF\uE000");
    EXPECT_EQ(decodeHtml("&&#8594;;"), "&→;");
    EXPECT_EQ(decodeHtml("&#&#8594;"), "&#→");
}

TEST(Windows1252, missingCharactersComeBackExceptForTheUpperControls) {
    constexpr char32_t stepBeyondTheFirstPlane = 61;
    std::string text;
    for (char32_t character = 0; character <= 0x10ffff;
         character += character < 0x10000 ? 1 : stepBeyondTheFirstPlane) {
        const bool surrogate = character >= 0xd800 && character <= 0xdfff;
        const bool upperControl = character >= 0x80 && character <= 0x9f;
        if (!surrogate && !upperControl)
            appendUtf8(text, character);
    }
    EXPECT_TRUE(decodeHtml(encodeHtml(text)) == text);
}

TEST(Windows1252, otherReferencesStayAsTheyStand) {
    for (const std::string_view text : {"&",
                                        "&#",
                                        "&#;",
                                        "&#8",
                                        "&#8594",
                                        "&#8594 ;",
                                        "&# 8594;",
                                        "&#8594x;",
                                        "&#08594;",
                                        "&#0;",
                                        "&#+8594;",
                                        "&#-8594;",
                                        "&#x2192;",
                                        "&#X2192;",
                                        "&rarr;",
                                        "&amp;",
                                        "&#65;",
                                        "&#127;",
                                        "&#128;",
                                        "&#129;",
                                        "&#153;",
                                        "&#159;",
                                        "&#160;",
                                        "&#233;",
                                        "&#255;",
                                        "&#338;",
                                        "&#8364;",
                                        "&#8482;",
                                        "&#55296;",
                                        "&#57343;",
                                        "&#1114112;",
                                        "&#4294975890;",
                                        "&#99999999999999999999;"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(decodeHtml(text), text);
    }
}

TEST(Windows1252, addressesKeepReferencesAsTheyStand) {
    EXPECT_EQ(decode("http://h/?a=1&#8594;"), "http://h/?a=1&#8594;");
    EXPECT_EQ(decode("%E2%86%92"), "%E2%86%92");
}

/// Bytes in which references, whole and broken, are frequent.
std::string randomBytes(std::mt19937& random) {
    constexpr std::string_view frequent = "&&##;;0123456789";
    std::string bytes;
    for (auto length = random() % 200; length > 0; --length) {
        if (random() % 20 == 0)
            bytes += "&#" + std::to_string(random() % 1'200'000) + ";";
        else if (random() % 4 == 0)
            bytes.push_back(static_cast<char>(random()));
        else
            bytes.push_back(frequent[random() % frequent.size()]);
    }
    return bytes;
}

TEST(Windows1252, anyBytesSurviveReadingAndWriting) {
    std::mt19937 random(1252);
    for (int round = 0; round < 5000; ++round) {
        const std::string bytes = randomBytes(random);
        ASSERT_EQ(encodeHtml(decodeHtml(bytes)), bytes) << "round " << round;
        ASSERT_EQ(encodeAddress(decode(bytes)), bytes) << "round " << round;
    }
}

} // namespace
} // namespace wendmark::windows1252
