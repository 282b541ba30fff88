#include "base/Windows1252.h"

#include "base/Utf8.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

namespace wendmark::windows1252 {

namespace {

/// Characters of the bytes 0x80 to 0x9F; all other bytes are their own code point.
constexpr std::array<char32_t, 32> upperControls = {
    0x20ac, 0x0081, 0x201a, 0x0192, 0x201e, 0x2026, 0x2020, 0x2021, 0x02c6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008d, 0x017d, 0x008f, 0x0090, 0x2018, 0x2019, 0x201c, 0x201d, 0x2022,
    0x2013, 0x2014, 0x02dc, 0x2122, 0x0161, 0x203a, 0x0153, 0x009d, 0x017e, 0x0178};

char32_t characterOf(unsigned char byte) {
    return byte >= 0x80 && byte <= 0x9f ? upperControls[byte - 0x80] : byte;
}

std::optional<char> byteOf(char32_t character) {
    if (character < 0x80 || (character >= 0xa0 && character <= 0xff))
        return static_cast<char>(character);
    const auto* const found = std::find(upperControls.begin(), upperControls.end(), character);
    if (found == upperControls.end())
        return std::nullopt;
    return static_cast<char>(0x80 + (found - upperControls.begin()));
}

/// Shared by both encoders, which differ only in what stands for a character that the code page lacks.
template <typename AppendMissing>
std::string encode(std::string_view utf8, AppendMissing appendMissing) {
    std::string bytes;
    bytes.reserve(utf8.size());
    for (std::size_t position = 0; position < utf8.size();) {
        if (const std::size_t ascii = asciiRunLength(utf8, position); ascii > 0) {
            bytes.append(utf8, position, ascii);
            position += ascii;
            continue;
        }
        const Utf8Unit unit = decodeUtf8(utf8, position);
        const std::string_view source = utf8.substr(position, unit.length);
        if (!unit.valid)
            bytes.append(source);
        else if (const std::optional<char> byte = byteOf(unit.codePoint))
            bytes.push_back(*byte);
        else
            appendMissing(bytes, unit.codePoint, source);
        position += unit.length;
    }
    return bytes;
}

void appendReference(std::string& bytes, char32_t character, std::string_view) {
    bytes.append("&#").append(std::to_string(static_cast<std::uint32_t>(character))).append(";");
}

void appendPercentEncoded(std::string& bytes, char32_t, std::string_view source) {
    static constexpr char hexDigits[] = "0123456789ABCDEF";
    for (const char c : source) {
        const auto byte = static_cast<unsigned char>(c);
        bytes.push_back('%');
        bytes.push_back(hexDigits[byte >> 4]);
        bytes.push_back(hexDigits[byte & 0xf]);
    }
}

struct Reference {
    char32_t character;
    std::size_t length; ///< Bytes from "&" to ";".
};

bool isWrittenAsReference(std::uint32_t value) {
    const bool surrogate = value >= 0xd800 && value <= 0xdfff;
    return value > 0x9f && value <= 0x10ffff && !surrogate && !byteOf(static_cast<char32_t>(value));
}

/// The reference that starts at `position`, if encodeHtml() could have written it.
std::optional<Reference> referenceAt(std::string_view bytes, std::size_t position) {
    constexpr std::size_t longest = std::string_view("&#1114111;").size();
    const std::string_view text = bytes.substr(position, longest);
    if (!text.starts_with("&#") || text.size() < 4 || text[2] == '0')
        return std::nullopt;
    std::uint32_t value = 0;
    const char* const end = text.data() + text.size();
    const auto [next, error] = std::from_chars(text.data() + 2, end, value);
    if (error != std::errc{} || next == end || *next != ';' || !isWrittenAsReference(value))
        return std::nullopt;
    return Reference{static_cast<char32_t>(value), static_cast<std::size_t>(next - text.data()) + 1};
}

bool isAscii(char byte) {
    return static_cast<unsigned char>(byte) < 0x80;
}

/// Appends the character of a byte that is not ASCII.
void appendCharacter(std::string& utf8, unsigned char byte) {
    if (byte < 0xa0) {
        appendUtf8(utf8, characterOf(byte));
    } else {
        const char lead = static_cast<char>(0xc0 | (byte >> 6));
        const char rest = static_cast<char>(0x80 | (byte & 0x3f));
        const char both[] = {lead, rest};
        utf8.append(both, 2);
    }
}

/// Appends bytes that hold no references.
void appendDecoded(std::string& utf8, std::string_view bytes) {
    for (std::size_t position = 0; position < bytes.size();) {
        const std::size_t ascii = asciiRunLength(bytes, position);
        utf8.append(bytes, position, ascii);
        position += ascii;
        for (; position < bytes.size() && !isAscii(bytes[position]); ++position)
            appendCharacter(utf8, static_cast<unsigned char>(bytes[position]));
    }
}

} // namespace

std::string encodeHtml(std::string_view utf8) {
    return encode(utf8, appendReference);
}

std::string encodeAddress(std::string_view utf8) {
    return encode(utf8, appendPercentEncoded);
}

std::string decodeHtml(std::string_view bytes) {
    std::string utf8;
    utf8.reserve(bytes.size());
    for (std::size_t position = 0; position < bytes.size();) {
        const std::size_t ampersand = std::min(bytes.find('&', position), bytes.size());
        appendDecoded(utf8, bytes.substr(position, ampersand - position));
        position = ampersand;
        if (position == bytes.size())
            break;
        const std::optional<Reference> reference = referenceAt(bytes, position);
        appendUtf8(utf8, reference ? reference->character : U'&');
        position += reference ? reference->length : 1;
    }
    return utf8;
}

std::string decode(std::string_view bytes) {
    std::string utf8;
    utf8.reserve(bytes.size());
    appendDecoded(utf8, bytes);
    return utf8;
}

} // namespace wendmark::windows1252
