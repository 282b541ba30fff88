#pragma once

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

/// All bookmarks of a file, which may hold more than bookmarkCapacity. A file cut short gives what it holds:
/// missing lines are empty. What is no colour becomes white.
std::vector<Bookmark> readBookmarks(std::string_view bytes);

std::string bookmarksFile(const std::vector<Bookmark>& bookmarks);

/// Addresses, in the order of the file.
std::vector<std::string> readHistory(std::string_view bytes);

/// Leaves out what is never worth a visit again: the page of new stops.
std::string historyFile(const std::vector<std::string>& addresses);

} // namespace wendmark
