#include "base/Windows1252.h"

#include "base/Utf8.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <optional>

namespace wendmark::windows1252 {

namespace {

/// Characters of the bytes 0x80 to 0x9F; all other bytes are their own code point.
constexpr std::array<char32_t, 32> upperControls = {
    0x20ac, 0x0081, 0x201a, 0x0192, 0x201e, 0x2026, 0x2020, 0x2021, 0x02c6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008d, 0x017d, 0x008f, 0x0090, 0x2018, 0x2019, 0x201c, 0x201d, 0x2022,
    0x2013, 0x2014, 0x02dc, 0x2122, 0x0161, 0x203a, 0x0153, 0x009d, 0x017e, 0x0178};

constexpr char32_t characterOf(unsigned char byte) {
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

/// The reference that the bytes begin with, if encodeHtml() could have written it.
std::optional<Reference> leadingReference(std::string_view bytes) {
    constexpr std::size_t longest = std::string_view("&#1114111;").size();
    const std::string_view text = bytes.substr(0, longest);
    if (!text.starts_with("&#") || text.size() < 4 || text[2] == '0')
        return std::nullopt;
    std::uint32_t value = 0;
    const char* const end = text.data() + text.size();
    const auto [next, error] = std::from_chars(text.data() + 2, end, value);
    if (error != std::errc{} || next == end || *next != ';' || !isWrittenAsReference(value))
        return std::nullopt;
    return Reference{static_cast<char32_t>(value), static_cast<std::size_t>(next - text.data()) + 1};
}

/// What stands for a byte in UTF-8; of the three places the first `length` count.
struct Character {
    std::array<char, 3> utf8;
    std::uint8_t length;
};

constexpr std::array<Character, 256> characters = [] {
    std::array<Character, 256> all{};
    for (std::size_t byte = 0; byte < all.size(); ++byte) {
        const char32_t codePoint = characterOf(static_cast<unsigned char>(byte));
        const char last = static_cast<char>(0x80 | (codePoint & 0x3f));
        if (codePoint < 0x80)
            all[byte] = {{static_cast<char>(codePoint)}, 1};
        else if (codePoint < 0x800)
            all[byte] = {{static_cast<char>(0xc0 | (codePoint >> 6)), last}, 2};
        else
            all[byte] = {{static_cast<char>(0xe0 | (codePoint >> 12)),
                          static_cast<char>(0x80 | ((codePoint >> 6) & 0x3f)), last},
                         3};
    }
    return all;
}();

constexpr std::size_t decodedAtOnce = 64;

/// Appends the characters of at most so many bytes.
void appendCharacters(std::string& utf8, std::string_view bytes) {
    std::array<char, 3 * decodedAtOnce> decoded{};
    char* end = decoded.data();
    for (const char byte : bytes) {
        const Character& character = characters[static_cast<unsigned char>(byte)];
        std::memcpy(end, character.utf8.data(), character.utf8.size());
        end += character.length;
    }
    utf8.append(decoded.data(), end);
}

/// Appends bytes that hold no references: ASCII as it stands, and some bytes one by one from where it ends.
void appendDecoded(std::string& utf8, std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t ascii = asciiRunLength(bytes, 0);
        utf8.append(bytes, 0, ascii);
        bytes.remove_prefix(ascii);
        if (const std::string_view others = bytes.substr(0, decodedAtOnce); !others.empty()) {
            appendCharacters(utf8, others);
            bytes.remove_prefix(others.size());
        }
    }
}

} // namespace

std::string encodeHtml(std::string_view utf8) {
    return encode(utf8, appendReference);
}

std::string encodeAddress(std::string_view utf8) {
    return encode(utf8, appendPercentEncoded);
}

void appendDecodedHtml(std::string& utf8, std::string_view bytes) {
    utf8.reserve(utf8.size() + bytes.size());
    while (!bytes.empty()) {
        const std::size_t ampersand = std::min(bytes.find('&'), bytes.size());
        appendDecoded(utf8, bytes.substr(0, ampersand));
        bytes.remove_prefix(ampersand);
        if (bytes.empty())
            break;
        const std::optional<Reference> reference = leadingReference(bytes);
        if (reference)
            appendUtf8(utf8, reference->character);
        else
            utf8.push_back('&');
        bytes.remove_prefix(reference ? reference->length : 1);
    }
}

std::string decodeHtml(std::string_view bytes) {
    std::string utf8;
    appendDecodedHtml(utf8, bytes);
    return utf8;
}

std::string decode(std::string_view bytes) {
    std::string utf8;
    utf8.reserve(bytes.size());
    appendDecoded(utf8, bytes);
    return utf8;
}

} // namespace wendmark::windows1252
