#include "base/Utf8.h"

#include <cstdint>
#include <cstring>

namespace wendmark {

namespace {

unsigned char byteAt(std::string_view text, std::size_t position) {
    return static_cast<unsigned char>(text[position]);
}

/// 0 for a byte that cannot begin a character.
std::size_t sequenceLength(unsigned char lead) {
    if (lead < 0x80)
        return 1;
    if (lead >= 0xc2 && lead <= 0xdf)
        return 2;
    if (lead >= 0xe0 && lead <= 0xef)
        return 3;
    if (lead >= 0xf0 && lead <= 0xf4)
        return 4;
    return 0;
}

bool isScalarOfLength(char32_t codePoint, std::size_t length) {
    static constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = codePoint >= 0xd800 && codePoint <= 0xdfff;
    return codePoint >= smallest[length] && codePoint <= 0x10ffff && !surrogate;
}

} // namespace

Utf8Unit decodeUtf8(std::string_view utf8, std::size_t position) {
    const unsigned char lead = byteAt(utf8, position);
    const Utf8Unit loneByte{lead, 1, false};
    const std::size_t length = sequenceLength(lead);
    if (length == 1)
        return {lead, 1, true};
    if (length == 0 || length > utf8.size() - position)
        return loneByte;

    char32_t codePoint = lead & (0xffU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        const unsigned char next = byteAt(utf8, position + i);
        if ((next & 0xc0) != 0x80)
            return loneByte;
        codePoint = (codePoint << 6) | (next & 0x3f);
    }
    if (!isScalarOfLength(codePoint, length))
        return loneByte;
    return {codePoint, length, true};
}

std::size_t asciiRunLength(std::string_view text, std::size_t position) {
    constexpr std::uint64_t highBits = 0x8080808080808080;
    std::size_t end = position;
    for (std::uint64_t eightBytes = 0; end + sizeof eightBytes <= text.size(); end += sizeof eightBytes) {
        std::memcpy(&eightBytes, text.data() + end, sizeof eightBytes);
        if ((eightBytes & highBits) != 0)
            break;
    }
    while (end < text.size() && byteAt(text, end) < 0x80)
        ++end;
    return end - position;
}

void appendUtf8(std::string& utf8, char32_t codePoint) {
    const auto append = [&utf8](char32_t byte) { utf8.push_back(static_cast<char>(byte)); };
    const auto appendContinuation = [&](int shift) { append(0x80 | ((codePoint >> shift) & 0x3f)); };
    if (codePoint < 0x80) {
        append(codePoint);
    } else if (codePoint < 0x800) {
        append(0xc0 | (codePoint >> 6));
        appendContinuation(0);
    } else if (codePoint < 0x10000) {
        append(0xe0 | (codePoint >> 12));
        appendContinuation(6);
        appendContinuation(0);
    } else {
        append(0xf0 | (codePoint >> 18));
        appendContinuation(12);
        appendContinuation(6);
        appendContinuation(0);
    }
}

bool isUtf8(std::string_view text) {
    for (std::size_t position = 0; position < text.size();) {
        const std::size_t ascii = asciiRunLength(text, position);
        position += ascii;
        if (position == text.size())
            break;
        const Utf8Unit unit = decodeUtf8(text, position);
        if (!unit.valid)
            return false;
        position += unit.length;
    }
    return true;
}

std::size_t utf16Length(std::string_view utf8) {
    std::size_t units = 0;
    for (std::size_t position = 0; position < utf8.size();) {
        const std::size_t ascii = asciiRunLength(utf8, position);
        units += ascii;
        position += ascii;
        if (position == utf8.size())
            break;
        const Utf8Unit unit = decodeUtf8(utf8, position);
        units += unit.codePoint > 0xffff ? 2 : 1;
        position += unit.length;
    }
    return units;
}

std::size_t skipUtf16(std::string_view utf8, std::size_t position, std::size_t units) {
    for (std::size_t passed = 0; passed < units && position < utf8.size();) {
        const Utf8Unit unit = decodeUtf8(utf8, position);
        passed += unit.codePoint > 0xffff ? 2 : 1;
        position += unit.length;
    }
    return position;
}

} // namespace wendmark
