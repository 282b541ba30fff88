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

/// The parts are bytes of the file.
void appendBookmark(std::string& file, std::string_view address, std::string_view note, Colour colour) {
    appendLine(file, address);
    appendLine(file, note.empty() ? " " : note);
    appendLine(file, std::to_string(colour));
}

/// What is left of an older file, in today's form.
std::string withColours(TextLines& lines) {
    std::string file;
    while (const auto address = lines.next())
        appendBookmark(file, *address, lines.next().value_or(""), white);
    return file;
}

} // namespace

BookmarkList readBookmarks(std::string_view bytes) {
    const bool coloured = hasColours(bytes);
    BookmarkList list;
    TextLines lines(bytes);
    while (list.bookmarks.size() < bookmarkCapacity) {
        const auto address = lines.next();
        if (!address)
            break;
        Bookmark bookmark;
        bookmark.address = windows1252::decode(*address);
        bookmark.note = windows1252::decodeHtml(lines.next().value_or(""));
        if (coloured)
            bookmark.colour = colourFromText(lines.next().value_or(""));
        list.bookmarks.push_back(std::move(bookmark));
    }
    list.further = coloured ? std::string(lines.rest()) : withColours(lines);
    return list;
}

std::string bookmarksFile(const BookmarkList& list) {
    std::string file;
    for (const Bookmark& bookmark : list.bookmarks)
        appendBookmark(file, windows1252::encodeAddress(bookmark.address),
                       windows1252::encodeHtml(bookmark.note), bookmark.colour);
    return file.append(list.further);
}

History readHistory(std::string_view bytes) {
    History history;
    TextLines lines(bytes);
    while (history.addresses.size() < historyCapacity) {
        const auto line = lines.next();
        if (!line)
            break;
        history.addresses.push_back(windows1252::decode(*line));
    }
    history.further = lines.rest();
    return history;
}

std::string historyFile(const History& history) {
    std::string file;
    for (const std::string& address : history.addresses) {
        const std::string_view trimmed = trimBlanks(address);
        // Only an address that is nothing but "ft.htm" is left out; that of the test page in its folder
        // stays.
        if (!trimmed.ends_with("newpage.htm") && trimmed != "ft.htm")
            appendLine(file, windows1252::encodeAddress(trimmed));
    }
    return file.append(history.further);
}

} // namespace wendmark
