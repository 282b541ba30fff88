#include "model/StopTexts.h"

#include "base/Names.h"
#include "base/TextLines.h"
#include "base/Utf8.h"
#include "model/ScriptFile.h"

#include <algorithm>

namespace wendmark {

namespace {

constexpr int behindOpeningTag = 3;
constexpr std::string_view paragraphMark = "<BR>";

std::size_t unitsFrom(int number) {
    return static_cast<std::size_t>(std::max(0, number));
}

EditedText replaceSelection(const SplitText& parts, std::string_view replacement, int caret) {
    return {parts.before + std::string(replacement) + parts.after, caret};
}

bool isBlank(std::string_view line) {
    return trimBlanks(line).empty();
}

/// The name of a tour's file inside an address and an attribute.
std::string asAddress(std::string_view name) {
    std::string address;
    for (const char character : name) {
        switch (character) {
        case '"':
            address += "%22";
            break;
        case '#':
            address += "%23";
            break;
        case '%':
            address += "%25";
            break;
        case '?':
            address += "%3F";
            break;
        default:
            address += character;
        }
    }
    return address;
}

/// The line, no longer taken for one of the script's own.
std::string withoutMarker(std::string_view line) {
    std::string text(line);
    if (trimBlanks(line).starts_with(scriptMarker))
        text.replace(text.find('<'), 1, "&lt;");
    return text;
}

std::string withoutMarkers(std::string_view text) {
    std::string stored;
    TextLines lines(text);
    while (const auto line = lines.next()) {
        stored += withoutMarker(*line);
        const bool hasBreak = !lines.atEnd() || text.ends_with('\n') || text.ends_with('\r');
        stored.append(hasBreak ? lineBreak : "");
    }
    return stored;
}

/// Whether the script's reader finds the whole text again: it ends a text at the first blank line after its
/// beginning.
bool isReadAsAWhole(std::string written) {
    markParagraphs(written);
    bool begun = false;
    bool ended = false;
    TextLines lines(written);
    while (const auto line = lines.next()) {
        if (isBlank(*line))
            ended = begun;
        else if (ended)
            return false;
        else
            begun = true;
    }
    return true;
}

/// Marks blank lines as the script's writer marks paragraphs: "<BR>" at the end of the line before.
std::string withoutBlankLines(std::string_view text) {
    std::string stored;
    std::size_t blankLines = 0;
    TextLines lines(text);
    while (const auto line = lines.next()) {
        if (isBlank(*line)) {
            ++blankLines;
            continue;
        }
        const bool begins = stored.empty();
        for (; blankLines > 0; --blankLines)
            stored.append(paragraphMark).append(begins || blankLines > 1 ? lineBreak : "");
        stored.append(begins ? "" : lineBreak).append(*line);
    }
    return stored.append(lineBreak);
}

} // namespace

SplitText SplitString(std::string_view text, int selStart, int selLength) {
    const std::size_t start = skipUtf16(text, 0, unitsFrom(selStart));
    const std::size_t end = skipUtf16(text, start, unitsFrom(selLength));
    return {std::string(text.substr(0, start)), std::string(text.substr(start, end - start)),
            std::string(text.substr(end))};
}

EditedText wrapSelection(std::string_view text, Selection selection, const Tag& tag) {
    const SplitText parts = SplitString(text, selection.start, selection.length);
    return replaceSelection(parts, std::string(tag.opening) + parts.selected + std::string(tag.closing),
                            selection.start + behindOpeningTag);
}

EditedText linkSelection(std::string_view text, Selection selection, std::string_view address) {
    const std::string opening = "<a HREF=\"javascript:loadSubStop('" + std::string(address) + "');\">";
    return wrapSelection(text, selection, {opening, "</A>"});
}

EditedText insertLineBreak(std::string_view text, int caret) {
    return replaceSelection(SplitString(text, caret, 0), paragraphMark,
                            caret + static_cast<int>(paragraphMark.size()));
}

EditedText insertImage(std::string_view text, int caret, std::string_view name) {
    return replaceSelection(SplitString(text, caret, 0), "<IMG SRC=\"" + asAddress(name) + "\">",
                            caret + behindOpeningTag);
}

std::string storableTitle(std::string_view title) {
    std::string line(title);
    std::replace_if(
        line.begin(), line.end(), [](char character) { return character == '\n' || character == '\r'; }, ' ');
    return isBlank(line) ? std::string() : withoutMarker(line);
}

std::string storableText(std::string_view text, std::string_view placeholder) {
    // joinLines() alone leaves every other one of several line breaks in a row.
    if (text.find_first_not_of(" \r\n") == std::string_view::npos)
        return std::string(placeholder);
    const std::string stored = withoutMarkers(text);
    return isReadAsAWhole(stored) ? stored : withoutBlankLines(stored);
}

} // namespace wendmark
