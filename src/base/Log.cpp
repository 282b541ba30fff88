#include "base/Log.h"

#include "base/Outcome.h"

namespace wendmark {

namespace {

bool isControl(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7f;
}

void appendEscaped(std::string& line, char c) {
    static constexpr char hexDigits[] = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    line.append("\\x");
    line.push_back(hexDigits[byte >> 4]);
    line.push_back(hexDigits[byte & 0xf]);
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
    std::string line;
    line.reserve(text.size());
    for (const char c : text) {
        if (isControl(c))
            appendEscaped(line, c);
        else
            line.push_back(c);
    }
    write(level, line);
}

} // namespace wendmark
