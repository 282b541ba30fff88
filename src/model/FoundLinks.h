#pragma once

#include "model/StopList.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Finds pages for new stops in what is pasted or dropped. Whatever the bytes are, the work is in proportion
/// to them. A byte that is no UTF-8 counts as one of Windows-1252.
namespace wendmark {

/// Most pages that are taken from one text; further ones are only counted.
inline constexpr std::size_t mostFoundLinks = 500;

/// Most bytes of an address, or of a line of plain text.
inline constexpr std::size_t longestFoundAddress = 8'000;

/// Most characters of a title; a longer one is cut.
inline constexpr std::size_t longestFoundTitle = 250;

/// A file on this computer that is to come into the tour.
struct FoundFile {
    std::string path;
    std::string title;          ///< HTML.
    std::size_t stopsAhead = 0; ///< How many of the found stops stand before it.

    friend bool operator==(const FoundFile&, const FoundFile&) = default;
};

struct FoundLinks {
    std::vector<Stop> stops; ///< As new stops, with their titles (HTML) and the addresses of web pages.
    std::vector<FoundFile> files;
    std::size_t leftOut = 0; ///< Lines or links that are no such addresses, are too long, or too many.
};

/// Whether it is the whole address of a page that a tour can show from the web.
bool isWebAddress(std::string_view address);

/// text/uri-list: one address on each line. Titles are made of them.
FoundLinks linksInUriList(std::string_view text);

/// One address on each line, with a title before or behind it where a tab separates them. Empty lines do not
/// count.
FoundLinks linksInPlainText(std::string_view text);

/// Links with their texts as titles.
FoundLinks linksInHtml(std::string_view html);

} // namespace wendmark
