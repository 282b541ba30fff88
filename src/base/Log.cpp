#include "base/Log.h"

#include "base/Outcome.h"
#include "base/Utf8.h"

namespace wendmark {

namespace {

/// Whether the unit could end a line, steer a terminal, or is no character at all.
bool mustBeEscaped(const Utf8Unit& unit) {
    const char32_t c = unit.codePoint;
    const bool control = c < 0x20 || (c >= 0x7f && c <= 0x9f);
    const bool separator = c == 0x2028 || c == 0x2029; // Of lines and of paragraphs.
    return !unit.valid || control || separator;
}

void appendEscaped(std::string& line, std::string_view bytes) {
    static constexpr char hexDigits[] = "0123456789ABCDEF";
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        line.append("\\x");
        line.push_back(hexDigits[byte >> 4]);
        line.push_back(hexDigits[byte & 0xf]);
    }
}

} // namespace

void Log::skip(const Outcome& outcome) {
    if (!outcome.ok())
        writeLine(Level::failure, outcome.message());
}

void Log::skipAsNote(const Outcome& outcome) {
    if (!outcome.ok())
        writeLine(Level::note, outcome.message());
}

void Log::writeLine(Level level, std::string_view text) {
    if (level == Level::failure)
        ++m_failureCount;
    std::string line;
    line.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        const Utf8Unit unit = decodeUtf8(text, position);
        const std::string_view bytes = text.substr(position, unit.length);
        if (mustBeEscaped(unit))
            appendEscaped(line, bytes);
        else
            line.append(bytes);
        position += unit.length;
    }
    write(level, line);
}

} // namespace wendmark
