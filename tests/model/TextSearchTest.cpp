#include "model/TextSearch.h"

#include <gmock/gmock.h>

namespace wendmark {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr SearchOptions anyWay{};
constexpr SearchOptions exactly{.matchCase = true};
constexpr SearchOptions wholly{.wholeWords = true};

/// Where the words begin.
std::vector<std::size_t> begins(std::string_view text, std::string_view words,
                                const SearchOptions& options = anyWay) {
    std::vector<std::size_t> found;
    TextSearch(words, options).find(text, [&](TextRange range) {
        found.push_back(range.begin);
        return true;
    });
    return found;
}

} // namespace

TEST(TextSearchTest, findsEveryPlaceWithoutOverlapping) {
    EXPECT_THAT(begins("abcabcab", "abc"), ElementsAre(0, 3));
    EXPECT_THAT(begins("aaaaa", "aa"), ElementsAre(0, 2));
    EXPECT_THAT(begins("aabaaab", "aaab"), ElementsAre(3));
    EXPECT_THAT(begins("abc", "d"), IsEmpty());
}

TEST(TextSearchTest, nothingIsNotFound) {
    EXPECT_TRUE(TextSearch("", anyWay).isEmpty());
    EXPECT_THAT(begins("abc", ""), IsEmpty());
    EXPECT_THAT(begins("", "a"), IsEmpty());
    EXPECT_THAT(begins("ab", "abc"), IsEmpty());
}

TEST(TextSearchTest, rangesHaveWholeCharacters) {
    std::vector<TextRange> found;
    TextSearch("\xC3\xA9t", anyWay).find("l'\xC3\x89T\xC3\x89", [&](TextRange range) {
        found.push_back(range);
        return true;
    });
    EXPECT_THAT(found, ElementsAre(TextRange{2, 5}));
}

TEST(TextSearchTest, caseCountsWhenItIsToMatch) {
    EXPECT_THAT(begins("Word word WORD", "word"), ElementsAre(0, 5, 10));
    EXPECT_THAT(begins("Word word WORD", "word", exactly), ElementsAre(5));
    EXPECT_THAT(begins("\xC3\x9C"
                       "ber \xC3\xBC"
                       "ber",
                       "\xC3\xBC"
                       "BER"),
                ElementsAre(0, 6));                                                              // Latin
    EXPECT_THAT(begins("\xCE\xA3\xCE\x9F\xCE\xA3", "\xCF\x83\xCE\xBF\xCF\x82"), ElementsAre(0)); // Greek
    EXPECT_THAT(begins("\xD0\x9C\xD0\x98\xD0\xA0", "\xD0\xBC\xD0\xB8\xD1\x80"), ElementsAre(0)); // Cyrillic
    EXPECT_THAT(begins("\xD0\x9C\xD0\x98\xD0\xA0", "\xD0\xBC\xD0\xB8\xD1\x80", exactly), IsEmpty());
}

TEST(TextSearchTest, wholeWordsHaveNoLettersBesideThem) {
    EXPECT_THAT(begins("art cart arts art.", "art", wholly), ElementsAre(0, 14));
    EXPECT_THAT(begins("\xC3\xA9"
                       "art",
                       "art", wholly),
                IsEmpty());
    EXPECT_THAT(begins("art\xC3\xA9", "art", wholly), IsEmpty());
    EXPECT_THAT(begins("art\xCC\x81", "art", wholly), IsEmpty()); // An accent on its last letter.
    EXPECT_THAT(begins("art\xE2\x80\x99s (art)", "art", wholly), ElementsAre(0, 9));
    EXPECT_THAT(begins("5 15 5", "5", wholly), ElementsAre(0, 5));
}

TEST(TextSearchTest, signsAtTheEndsOfTheWordsNeedNoBlankBesideThem) {
    EXPECT_THAT(begins("a(art)b", "(art)", wholly), ElementsAre(1));
    EXPECT_THAT(begins("a-art", "-art", wholly), ElementsAre(1));
    EXPECT_THAT(begins("a-arts", "-art", wholly), IsEmpty());
}

TEST(TextSearchTest, placeThatDoesNotCountHidesNoOther) {
    EXPECT_THAT(begins("xa a a", "a a", wholly), ElementsAre(3));
    std::vector<std::size_t> found;
    TextSearch("aa", anyWay).find("aaaa", [&](TextRange range) {
        found.push_back(range.begin);
        return range.begin > 0;
    });
    EXPECT_THAT(found, ElementsAre(0, 1));
}

TEST(TextSearchTest, anyWhiteSpaceInTheWordsIsOneBlank) {
    EXPECT_THAT(begins("the old town", "old \t\xC2\xA0town"), ElementsAre(4));
    EXPECT_THAT(begins("a b", " "), ElementsAre(1));
    EXPECT_THAT(begins("museum", "mu\xC2\xADseum"), ElementsAre(0));
    EXPECT_TRUE(TextSearch("\xC2\xAD", anyWay).isEmpty());
}

TEST(TextSearchTest, bytesThatAreNoCharactersAreThemselves) {
    EXPECT_THAT(begins("a\xFF"
                       "b\xC3",
                       "\xFF"
                       "b"),
                ElementsAre(1));
    EXPECT_THAT(begins("\xC3\xBF", "\xFF"), IsEmpty());
}

TEST(TextSearchTest, wordsThatNearlyFitCostNoMore) {
    // Comparing anew at each character would never end.
    const std::string text(4'000'000, 'a');
    EXPECT_THAT(begins(text, std::string(20'000, 'a') + "b"), IsEmpty());
}

} // namespace wendmark
