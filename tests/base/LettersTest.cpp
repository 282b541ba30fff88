#include "base/Letters.h"

#include <gtest/gtest.h>

namespace wendmark {

TEST(FoldCaseTest, capitalsBecomeSmallLetters) {
    const std::pair<char32_t, char32_t> pairs[] = {
        {'A', 'a'},       {'Z', 'z'},     {0xc4, 0xe4},   {0xd8, 0xf8},   {0xde, 0xfe},     {0x100, 0x101},
        {0x141, 0x142},   {0x152, 0x153}, {0x160, 0x161}, {0x178, 0xff},  {0x17d, 0x17e},   {0x218, 0x219},
        {0x1ea0, 0x1ea1}, {0x391, 0x3b1}, {0x3a9, 0x3c9}, {0x386, 0x3ac}, {0x1f08, 0x1f00}, {0x400, 0x450},
        {0x410, 0x430},   {0x42f, 0x44f}, {0x490, 0x491}, {0x531, 0x561}, {0xff21, 0xff41}, {0x1e9e, 0xdf}};
    for (const auto& [capital, small] : pairs) {
        EXPECT_EQ(foldCase(capital), small) << std::hex << static_cast<unsigned>(capital);
        EXPECT_EQ(foldCase(small), small) << std::hex << static_cast<unsigned>(small);
    }
}

TEST(FoldCaseTest, lettersWrittenInTwoWaysAreOne) {
    EXPECT_EQ(foldCase(0x3c2), foldCase(0x3c3)); // Both small sigmas,
    EXPECT_EQ(foldCase(0x3a3), foldCase(0x3c3)); // and the capital.
    EXPECT_EQ(foldCase(0xb5), foldCase(0x3bc));  // Micro sign and mu.
    EXPECT_EQ(foldCase(0x1c4), foldCase(0x1c5));
}

TEST(FoldCaseTest, whatHasNoCaseStays) {
    for (const char32_t character :
         {U' ', U'0', U'@', U'[', U'\u00d7', U'\u00df', U'\u00f7', U'\u0130', U'\u0131', U'\u05d0', U'\u4e2d',
          U'\u2192', U'\U0001f600', U'\U0010ffff'})
        EXPECT_EQ(foldCase(character), character);
}

TEST(BelongsToWordTest, lettersDigitsAndAccentsDo) {
    for (const char32_t character :
         {U'a', U'Z', U'0', U'9', U'\u00aa', U'\u00b5', U'\u00c4', U'\u00df', U'\u0142', U'\u0301', U'\u03b1',
          U'\u0416', U'\u05d0', U'\u0628', U'\u0915', U'\u4e2d', U'\u3042', U'\uac00', U'\U00020000'})
        EXPECT_TRUE(belongsToWord(character)) << std::hex << static_cast<unsigned>(character);
}

TEST(BelongsToWordTest, signsAndBlanksDoNot) {
    for (const char32_t character :
         {U'\0',     U' ',      U'-',      U'_',      U'\'',     U'@',         U'[',
          U'{',      U'\x7f',   U'\u00a0', U'\u00ab', U'\u00d7', U'\u00f7',    U'\u2019',
          U'\u2014', U'\u20ac', U'\u2192', U'\u3001', U'\uff01', U'\U0001f600'})
        EXPECT_FALSE(belongsToWord(character)) << std::hex << static_cast<unsigned>(character);
}

} // namespace wendmark
