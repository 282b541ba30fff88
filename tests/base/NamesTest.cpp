#include "base/Names.h"

#include <gtest/gtest.h>

#include <string_view>

namespace wendmark {
namespace {

TEST(Names, lettersOfTheCodePageAreLowered) {
    EXPECT_EQ(lowerCase("ABCXYZ"), "abcxyz");
    EXPECT_EQ(lowerCase("ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖØÙÚÛÜÝÞ"), "àáâãäåæçèéêëìíîïðñòóôõöøùúûüýþ");
    EXPECT_EQ(lowerCase("ŠŒŽŸ"), "šœžÿ");
}

TEST(Names, everythingElseStays) {
    for (const std::string_view name :
         {"", "abcxyz", "@[`{", "0-9_ .", "×", "÷", "ß", "ÿ", "šœžÿ", "Ж", "Ā", "→", "😀"})
        EXPECT_EQ(lowerCase(name), name);
    EXPECT_EQ(lowerCase("A\xFF\xC3Z"), "a\xFF\xC3z");
}

TEST(Names, comparisonIgnoresTheCaseOfTheCodePagesLettersOnly) {
    EXPECT_TRUE(equalIgnoringCase("Script.TXT", "sCRIPT.txt"));
    EXPECT_TRUE(equalIgnoringCase("ÄŠŒŽŸ", "äšœžÿ"));
    EXPECT_FALSE(equalIgnoringCase("Ж", "ж"));
    EXPECT_FALSE(equalIgnoringCase("×", "÷"));
    EXPECT_FALSE(equalIgnoringCase("a", "ab"));
    EXPECT_FALSE(equalIgnoringCase("@", "`"));
}

TEST(Names, prefixIsFoundInAnyCase) {
    EXPECT_TRUE(beginsIgnoringCase("/App/TEMPLATE/x", "/app/Template/"));
    EXPECT_TRUE(beginsIgnoringCase("x", ""));
    EXPECT_TRUE(beginsIgnoringCase("Äx", "ä"));
    EXPECT_FALSE(beginsIgnoringCase("/app/Template", "/app/Template/"));
    EXPECT_FALSE(beginsIgnoringCase("", "x"));
}

TEST(Names, lastPartOfAPathIsWhatFollowsTheLastSeparatorInLowerCase) {
    EXPECT_EQ(lastPathPart("C:\\My Pages\\Intro.HTM", '\\'), "intro.htm");
    EXPECT_EQ(lastPathPart("/home/Ann/Äpfel.GIF", '/'), "äpfel.gif");
    EXPECT_EQ(lastPathPart("file:///C:/Tours/NewTour/My%20Page.HTM", '/'), "my%20page.htm");
    EXPECT_EQ(lastPathPart("a/b\\C.gif", '/'), "b\\c.gif");
}

TEST(Names, textWithoutASeparatorIsItsOwnLastPart) {
    EXPECT_EQ(lastPathPart("Intro.HTM", '/'), "intro.htm");
    EXPECT_EQ(lastPathPart("", '/'), "");
}

TEST(Names, pathThatEndsWithASeparatorHasAnEmptyLastPart) {
    EXPECT_EQ(lastPathPart("/Home/Ann/", '/'), "");
    EXPECT_EQ(lastPathPart("/", '/'), "");
}

struct WildcardCase {
    std::string_view name;
    std::string_view pattern;
};

TEST(Names, wildcardsMatch) {
    for (const WildcardCase& given : {WildcardCase{"page.htm", "page.htm"},
                                      WildcardCase{"PAGE.htm", "page.HTM"},
                                      WildcardCase{"page.htm", "*.*"},
                                      WildcardCase{"readme", "*.*"},
                                      WildcardCase{"", "*.*"},
                                      WildcardCase{"", ""},
                                      WildcardCase{"", "*"},
                                      WildcardCase{"readme", "*"},
                                      WildcardCase{"page.htm", "*.htm"},
                                      WildcardCase{"a.b.htm", "*.htm"},
                                      WildcardCase{".htm", "*.htm"},
                                      WildcardCase{"page12.htm", "page*.htm"},
                                      WildcardCase{"page.htm", "page*.htm"},
                                      WildcardCase{"page1.htm", "page?.htm"},
                                      WildcardCase{"abc", "***"},
                                      WildcardCase{"abc", "*b*"},
                                      WildcardCase{"aab", "*ab"},
                                      WildcardCase{"abcabd", "*abd"},
                                      WildcardCase{"abc", "a*"},
                                      WildcardCase{"Äpfel.GIF", "ä*.gif"},
                                      WildcardCase{"é.htm", "?.htm"},
                                      WildcardCase{"→.htm", "?.htm"},
                                      WildcardCase{"😀é", "??"},
                                      WildcardCase{"a→b", "*?b"},
                                      WildcardCase{"a*b", "a*b"}}) {
        SCOPED_TRACE(std::string(given.name) + " ~ " + std::string(given.pattern));
        EXPECT_TRUE(matchesWildcard(given.name, given.pattern));
    }
}

TEST(Names, wildcardsDoNotMatchMoreThanTheySay) {
    for (const WildcardCase& given :
         {WildcardCase{"page.htm", "page"}, WildcardCase{"page", "page.htm"},
          WildcardCase{"page.html", "*.htm"}, WildcardCase{"page", "*.htm"},
          WildcardCase{"page.htm", "page?.htm"}, WildcardCase{"page12.htm", "page?.htm"},
          WildcardCase{"page", ""}, WildcardCase{"", "?"}, WildcardCase{"abc", "*b"},
          WildcardCase{"abc", "b*"}, WildcardCase{"é", "??"}, WildcardCase{"→xz", "*??xz"},
          WildcardCase{"😀xz", "*??xz"}, WildcardCase{"Ж", "ж"}}) {
        SCOPED_TRACE(std::string(given.name) + " ~ " + std::string(given.pattern));
        EXPECT_FALSE(matchesWildcard(given.name, given.pattern));
    }
}

TEST(Names, namesThatMatchPatternsGoLastInTheOrderOfThePatterns) {
    std::vector<std::string> names = {"script.txt", "b.htm", "_tourlaunch2.htm", "a.htm", "_tourlaunch1.htm"};
    sortByPatterns(names, {"_tour*.htm", "script.txt"});
    EXPECT_EQ(names, (std::vector<std::string>{"b.htm", "a.htm", "_tourlaunch2.htm", "_tourlaunch1.htm",
                                               "script.txt"}));
    sortByPatterns(names, {});
    EXPECT_EQ(names.front(), "b.htm");
}

TEST(Names, onlyTheSpaceCharacterIsABlank) {
    EXPECT_EQ(trimBlanks("  a b  "), "a b");
    EXPECT_EQ(trimBlanks("a"), "a");
    EXPECT_EQ(trimBlanks(" \ta\t "), "\ta\t");
    EXPECT_EQ(trimBlanks("\r\n a \u00A0"), "\r\n a \u00A0");
    EXPECT_EQ(trimBlanks("   "), "");
    EXPECT_EQ(trimBlanks(""), "");
}

} // namespace
} // namespace wendmark
