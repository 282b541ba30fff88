#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// What the site editor keeps with a tour: bookmarks in "goodlist.txt" and the history of visited addresses
/// in "brhist.txt". Texts in memory are UTF-8; `bytes` are those of the files.
namespace wendmark {

inline constexpr std::int16_t bookmarkCapacity = 255;

/// Red + 256 * green + 65536 * blue, each 0 to 255.
using Colour = std::int32_t;
inline constexpr Colour white = 16777215;

/// A page that could become a stop.
struct Bookmark {
    std::string address;
    std::string note; ///< One line.
    Colour colour = white;

    friend bool operator==(const Bookmark&, const Bookmark&) = default;
};

struct BookmarkList {
    std::vector<Bookmark> bookmarks; ///< At most bookmarkCapacity.
    std::string further; ///< What a file holds behind those, as it is written: nobody sees it or loses it.

    friend bool operator==(const BookmarkList&, const BookmarkList&) = default;
};

/// A file cut short gives what it holds: missing lines are empty. What is no colour becomes white.
BookmarkList readBookmarks(std::string_view bytes);

std::string bookmarksFile(const BookmarkList& list);

/// Addresses that the program holds in memory: more than anybody visits.
inline constexpr std::size_t historyCapacity = 1'000'000;

struct History {
    std::vector<std::string> addresses; ///< In the order of the file; at most historyCapacity.
    std::string further;                ///< What a file holds behind those, as it stands there.
};

History readHistory(std::string_view bytes);

/// Leaves out what is never worth a visit again: the page of new stops.
std::string historyFile(const History& history);

} // namespace wendmark
