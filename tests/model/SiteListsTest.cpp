#include "model/SiteLists.h"

#include <gmock/gmock.h>

namespace wendmark {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(BookmarksTest, ofAnEmptyFileAreNone) {
    EXPECT_THAT(readBookmarks("").bookmarks, IsEmpty());
    EXPECT_EQ(bookmarksFile({}), "");
}

TEST(BookmarksTest, takeThreeLinesEach) {
    const std::vector<Bookmark> bookmarks = {{"http://a.example/", "first", 65535}, {"b.htm", "second", 0}};
    EXPECT_EQ(bookmarksFile({bookmarks, {}}),
              "http://a.example/\r\nfirst\r\n65535\r\nb.htm\r\nsecond\r\n0\r\n");
    EXPECT_EQ(readBookmarks(bookmarksFile({bookmarks, {}})).bookmarks, bookmarks);
}

TEST(BookmarksTest, emptyNoteIsWrittenAsABlankAndReadAsOne) {
    const std::string file = bookmarksFile({{{"http://a.example/", "", white}}, {}});
    EXPECT_EQ(file, "http://a.example/\r\n \r\n16777215\r\n");
    EXPECT_THAT(readBookmarks(file).bookmarks, ElementsAre(Bookmark{"http://a.example/", " ", white}));
}

TEST(BookmarksTest, fileWhoseThirdLineIsNoNumberHasTwoLinesEach) {
    EXPECT_THAT(
        readBookmarks("http://a.example/\r\nfirst\r\nhttp://b.example/\r\n12\r\n255\r\nlast\r\n").bookmarks,
        ElementsAre(Bookmark{"http://a.example/", "first", white}, Bookmark{"http://b.example/", "12", white},
                    Bookmark{"255", "last", white}));
}

TEST(BookmarksTest, singleEntryOfTheOlderFormIsRead) {
    EXPECT_THAT(readBookmarks("http://a.example/\r\nfirst\r\n").bookmarks,
                ElementsAre(Bookmark{"http://a.example/", "first", white}));
}

TEST(BookmarksTest, fileCutShortGivesWhatItHolds) {
    EXPECT_THAT(readBookmarks("a\r\nnote a\r\n255\r\nb\r\nnote b").bookmarks,
                ElementsAre(Bookmark{"a", "note a", 255}, Bookmark{"b", "note b", white}));
    EXPECT_THAT(readBookmarks("a\r\nnote a\r\n255\r\nb").bookmarks,
                ElementsAre(Bookmark{"a", "note a", 255}, Bookmark{"b", "", white}));
    EXPECT_THAT(readBookmarks("a").bookmarks, ElementsAre(Bookmark{"a", "", white}));
}

TEST(BookmarksTest, whatIsNoColourBecomesWhite) {
    for (const char* colour : {"blue", "", "-1", "16777216", "99999999999999999999"})
        EXPECT_EQ(
            readBookmarks("a\r\nx\r\n0\r\nb\r\nx\r\n" + std::string(colour) + "\r\n").bookmarks.at(1).colour,
            white)
            << colour;
    EXPECT_EQ(readBookmarks("a\r\nx\r\n16777215").bookmarks.at(0).colour, white);
    EXPECT_EQ(readBookmarks("a\r\nx\r\n 255 \r\n").bookmarks.at(0).colour, 255);
}

TEST(BookmarksTest, lettersThatFilesLackSurvive) {
    const std::vector<Bookmark> bookmarks = {{"http://a.example/\xC3\xA4", "\xE2\x86\x92 \xC3\xA4", white}};
    const std::string file = bookmarksFile({bookmarks, {}});
    EXPECT_EQ(file, "http://a.example/\xE4\r\n&#8594; \xE4\r\n16777215\r\n");
    EXPECT_EQ(readBookmarks(file).bookmarks, bookmarks);
}

std::string bookmarkLines(int from, int to, std::string_view colour) {
    std::string file;
    for (int n = from; n <= to; ++n)
        file.append("http://" + std::to_string(n) + ".example/\r\nnote\r\n").append(colour);
    return file;
}

TEST(BookmarksTest, upToTheCapacityAreRead) {
    const std::string file = bookmarkLines(1, bookmarkCapacity, "255\r\n");
    EXPECT_EQ(readBookmarks(file).bookmarks.size(), bookmarkCapacity);
    EXPECT_EQ(readBookmarks(file).further, "");
}

TEST(BookmarksTest, whatIsBeyondTheCapacityStaysAsItIs) {
    const std::string further = "http://256.example/\nno colour\r\nblue\r\ncut short";
    const std::string file = bookmarkLines(1, bookmarkCapacity, "255\r\n") + further;
    const BookmarkList list = readBookmarks(file);
    EXPECT_EQ(list.bookmarks.size(), bookmarkCapacity);
    EXPECT_EQ(list.further, further);
    EXPECT_EQ(bookmarksFile(list), file);
}

TEST(BookmarksTest, whatIsBeyondTheCapacityOfAnOlderFileGetsColours) {
    const std::string older = bookmarkLines(1, bookmarkCapacity + 2, "") + "last\r\n";
    EXPECT_EQ(bookmarksFile(readBookmarks(older)),
              bookmarkLines(1, bookmarkCapacity + 2, "16777215\r\n") + "last\r\n \r\n16777215\r\n");
}

TEST(HistoryTest, keepsOrderAndEveryLine) {
    EXPECT_THAT(readHistory("http://b.example/\r\nhttp://a.example/\nlast").addresses,
                ElementsAre("http://b.example/", "http://a.example/", "last"));
    EXPECT_THAT(readHistory("").addresses, IsEmpty());
}

TEST(HistoryTest, whatIsBeyondTheCapacityStaysAsItIs) {
    std::string file;
    for (std::size_t n = 0; n < historyCapacity; ++n)
        file += "a\r\n";
    EXPECT_EQ(readHistory(file).addresses.size(), historyCapacity);
    EXPECT_EQ(readHistory(file).further, "");
    const History history = readHistory(file + " b \nc");
    EXPECT_EQ(history.addresses.size(), historyCapacity);
    EXPECT_EQ(historyFile(history), file + " b \nc");
}

TEST(HistoryTest, isWrittenTrimmed) {
    EXPECT_EQ(historyFile({{" http://b.example/ ", "http://a.example/"}, {}}),
              "http://b.example/\r\nhttp://a.example/\r\n");
    EXPECT_EQ(historyFile({{}, {}}), "");
}

TEST(HistoryTest, leavesOutThePageOfNewStops) {
    EXPECT_EQ(historyFile({{"file:///t/NewTour/newpage.htm", "a", "newpage.htm "}, {}}), "a\r\n");
}

TEST(HistoryTest, leavesOutTheTestPageOnlyWithoutItsFolder) {
    EXPECT_EQ(historyFile({{"ft.htm", "file:///t/NewTour/ft.htm"}, {}}), "file:///t/NewTour/ft.htm\r\n");
}

} // namespace wendmark
