#include "model/SiteLists.h"

#include "base/Names.h"
#include "base/Numbers.h"
#include "base/TextLines.h"
#include "base/Windows1252.h"

namespace wendmark {

namespace {

Colour colourFromText(std::string_view text) {
    const auto colour = roundTo32Bits(leadingNumber(text));
    return isNumeric(text) && colour && *colour >= 0 && *colour <= white ? *colour : white;
}

/// Older files have no colours, which the third line tells.
bool hasColours(std::string_view bytes) {
    TextLines lines(bytes);
    lines.next();
    lines.next();
    return isNumeric(lines.next().value_or(""));
}

void appendLine(std::string& file, std::string_view line) {
    file.append(line).append(lineBreak);
}

} // namespace

std::vector<Bookmark> readBookmarks(std::string_view bytes) {
    const bool coloured = hasColours(bytes);
    std::vector<Bookmark> bookmarks;
    TextLines lines(bytes);
    while (const auto address = lines.next()) {
        Bookmark bookmark;
        bookmark.address = windows1252::decode(*address);
        bookmark.note = windows1252::decodeHtml(lines.next().value_or(""));
        if (coloured)
            bookmark.colour = colourFromText(lines.next().value_or(""));
        bookmarks.push_back(std::move(bookmark));
    }
    return bookmarks;
}

std::string bookmarksFile(const std::vector<Bookmark>& bookmarks) {
    std::string file;
    for (const Bookmark& bookmark : bookmarks) {
        appendLine(file, windows1252::encodeAddress(bookmark.address));
        appendLine(file, bookmark.note.empty() ? " " : windows1252::encodeHtml(bookmark.note));
        appendLine(file, std::to_string(bookmark.colour));
    }
    return file;
}

std::vector<std::string> readHistory(std::string_view bytes) {
    std::vector<std::string> addresses;
    TextLines lines(bytes);
    while (const auto line = lines.next())
        addresses.push_back(windows1252::decode(*line));
    return addresses;
}

std::string historyFile(const std::vector<std::string>& addresses) {
    std::string file;
    for (const std::string& address : addresses) {
        const std::string_view trimmed = trimBlanks(address);
        // Only an address that is nothing but "ft.htm" is left out; that of the test page in its folder
        // stays.
        if (!trimmed.ends_with("newpage.htm") && trimmed != "ft.htm")
            appendLine(file, windows1252::encodeAddress(trimmed));
    }
    return file;
}

} // namespace wendmark
