#include "base/Numbers.h"

#include <gtest/gtest.h>

#include <limits>
#include <locale>
#include <string>
#include <string_view>

namespace wendmark {
namespace {

TEST(Numbers, longestNumberAtTheStartCounts) {
    struct Case {
        std::string_view text;
        double number;
    };
    for (const Case& given :
         {Case{"0", 0},       Case{"12", 12},     Case{"+12", 12},   Case{"-12", -12},  Case{"12.75", 12.75},
          Case{"12.", 12},    Case{".5", .5},     Case{"-.5", -.5},  Case{"1e3", 1000}, Case{"1E3", 1000},
          Case{"1e+3", 1000}, Case{"25e-2", .25}, Case{".5e1", 5},   Case{"007", 7},    Case{"12abc", 12},
          Case{"12,5", 12},   Case{"1.2.3", 1.2}, Case{"1-2", 1},    Case{"1e", 1},     Case{"1e+", 1},
          Case{"1ex", 1},     Case{"1e2e3", 100}, Case{"1e2.5", 100}}) {
        SCOPED_TRACE(given.text);
        EXPECT_EQ(leadingNumber(given.text), given.number);
    }
}

TEST(Numbers, blanksAndTabsAreSkippedWhereverTheyStand) {
    EXPECT_EQ(leadingNumber("  1 2\t.5 e 1 x 9"), 125);
    EXPECT_EQ(leadingNumber(" - 3"), -3);
    EXPECT_EQ(leadingNumber("1\u00A02"), 1);
    EXPECT_EQ(leadingNumber("1\r\n2"), 1);
}

TEST(Numbers, textWithoutDigitsGivesZero) {
    for (const std::string_view text :
         {"", " ", "abc", "-", "+", ".", "-.", "e5", ".e5", "--5", "+-5", "$5", "inf", "nan"})
        EXPECT_EQ(leadingNumber(text), 0) << text;
}

TEST(Numbers, onlyDecimalNumbersAreRead) {
    EXPECT_EQ(leadingNumber("0x10"), 0);
    EXPECT_EQ(leadingNumber("&H10"), 0);
    EXPECT_EQ(leadingNumber("1d2"), 1);
}

TEST(Numbers, numberBeyondTheRangeOfDoubleIsTheLargestOfItsSign) {
    EXPECT_EQ(leadingNumber("1e400"), std::numeric_limits<double>::max());
    EXPECT_EQ(leadingNumber("-1e400"), std::numeric_limits<double>::lowest());
    EXPECT_EQ(leadingNumber(std::string(1000, '9')), std::numeric_limits<double>::max());
    EXPECT_EQ(leadingNumber("1e99999999999999999999"), std::numeric_limits<double>::max());
    EXPECT_NEAR(leadingNumber("1e-400"), 0, 1e-300);
}

TEST(Numbers, languageOfTheSystemDoesNotChangeThePoint) {
    struct CommaPoint final : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    const std::locale former = std::locale::global(std::locale(std::locale::classic(), new CommaPoint));
    const double number = leadingNumber("1.5");
    const double large = leadingNumber("1234.5");
    std::locale::global(former);
    EXPECT_EQ(number, 1.5);
    EXPECT_EQ(large, 1234.5);
}

TEST(Numbers, numericTextIsANumberFromEndToEnd) {
    for (const char* text : {"0", "100", "-3", "+7", "2.5", ".5", "5.", "1e3", "1E-3", "  12\t"})
        EXPECT_TRUE(isNumeric(text)) << text;
    for (const char* text : {"", " ", "12a", "a12", "1 2", "1e", ".", "-", "1,5", "0x10", "\xd9\xa3"})
        EXPECT_FALSE(isNumeric(text)) << text;
}

TEST(Numbers, tiesAreRoundedToEven) {
    EXPECT_EQ(roundTo16Bits(0.5), 0);
    EXPECT_EQ(roundTo16Bits(1.5), 2);
    EXPECT_EQ(roundTo16Bits(2.5), 2);
    EXPECT_EQ(roundTo16Bits(-0.5), 0);
    EXPECT_EQ(roundTo16Bits(-1.5), -2);
    EXPECT_EQ(roundTo16Bits(2.4999), 2);
    EXPECT_EQ(roundTo16Bits(2.5001), 3);
    EXPECT_EQ(roundTo32Bits(12.5), 12);
    EXPECT_EQ(roundTo32Bits(13.5), 14);
}

TEST(Numbers, numberThatDoesNotFitGivesNothing) {
    EXPECT_EQ(roundTo16Bits(32767.49), 32767);
    EXPECT_EQ(roundTo16Bits(32767.5), std::nullopt);
    EXPECT_EQ(roundTo16Bits(-32768.5), -32768);
    EXPECT_EQ(roundTo16Bits(-32768.51), std::nullopt);
    EXPECT_EQ(roundTo32Bits(2147483647.49), 2147483647);
    EXPECT_EQ(roundTo32Bits(2147483647.5), std::nullopt);
    EXPECT_EQ(roundTo32Bits(-2147483648.5), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(roundTo32Bits(-2147483648.51), std::nullopt);
    EXPECT_EQ(roundTo32Bits(std::numeric_limits<double>::max()), std::nullopt);
    EXPECT_EQ(roundTo32Bits(std::numeric_limits<double>::infinity()), std::nullopt);
    EXPECT_EQ(roundTo32Bits(std::numeric_limits<double>::quiet_NaN()), std::nullopt);
}

} // namespace
} // namespace wendmark
