#include "tour_cli/TerminalText.h"

#include "base/Utf8.h"

#include <algorithm>
#include <array>

namespace wendmark::cli {

namespace {

struct CodeRange {
    char32_t first;
    char32_t last;
};

/// Control characters, the marks and overrides of writing direction, and the separators of lines.
constexpr std::array<CodeRange, 6> steering = {
    {{0x00, 0x1F}, {0x7F, 0x9F}, {0x061C, 0x061C}, {0x200E, 0x200F}, {0x2028, 0x202E}, {0x2066, 0x2069}}};

bool steers(char32_t character) {
    return std::ranges::any_of(
        steering, [&](CodeRange range) { return range.first <= character && character <= range.last; });
}

std::string hexadecimal(char32_t value, int digits) {
    std::string text;
    for (int digit = digits - 1; digit >= 0; --digit)
        text += "0123456789ABCDEF"[(value >> (4 * digit)) & 0xF];
    return text;
}

std::string named(char32_t character) {
    if (character == '\n')
        return "\\n";
    if (character == '\r')
        return "\\r";
    if (character == '\t')
        return "\\t";
    return character <= 0xFF ? "\\x" + hexadecimal(character, 2) : "\\u" + hexadecimal(character, 4);
}

} // namespace

std::string printable(std::string_view text) {
    std::string shown;
    for (std::size_t at = 0; at < text.size();) {
        const Utf8Unit unit = decodeUtf8(text, at);
        if (unit.valid && !steers(unit.codePoint))
            shown += text.substr(at, unit.length);
        else
            shown += named(unit.codePoint);
        at += unit.length;
    }
    return shown;
}

} // namespace wendmark::cli
