#include "model/StopAddress.h"

#include "base/Names.h"
#include "base/Utf8.h"

#include <algorithm>
#include <charconv>

namespace wendmark {

namespace {

constexpr std::string_view newPage = "newpage.htm";
constexpr std::string_view encodedBlank = "%20";

/// What stands between the scheme and a query or a part of the page, without who asks.
std::string_view placeIn(std::string_view address) {
    const std::size_t scheme = address.find("//");
    address.remove_prefix(scheme == std::string_view::npos ? 0 : scheme + 2);
    address = address.substr(0, address.find_first_of("?#"));
    const std::size_t host = std::min(address.find('/'), address.size());
    const std::size_t user = address.substr(0, host).rfind('@');
    address.remove_prefix(user == std::string_view::npos ? 0 : user + 1);
    return address;
}

} // namespace

std::string stopAddressFor(std::string_view location) {
    const bool onDisk = beginsIgnoringCase(trimBlanks(location), "file");
    return onDisk ? lastPathPart(location, '/') : std::string(location);
}

bool isNewPage(std::string_view address) {
    return trimBlanks(address).ends_with(newPage);
}

std::string editableFile(std::string_view location) {
    constexpr std::string_view beforePath = "///";
    const std::string_view trimmed = trimBlanks(location);
    const std::size_t path = location.find(beforePath);
    if (!beginsIgnoringCase(trimmed, "file:") || lowerCase(trimmed).ends_with(newPage) ||
        path == std::string_view::npos)
        return {};
    return std::string(location.substr(path + beforePath.size()));
}

std::string percentDecoded(std::string_view text) {
    std::string decoded;
    decoded.reserve(text.size());
    for (std::size_t position = 0; position < text.size(); ++position) {
        const std::string_view digits = text.substr(position + 1, 2);
        unsigned char byte = 0;
        const char* const end = digits.data() + digits.size();
        const bool encoded = text[position] == '%' && digits.size() == 2 &&
                             std::from_chars(digits.data(), end, byte, 16).ptr == end;
        decoded += encoded ? static_cast<char>(byte) : text[position];
        position += encoded ? 2 : 0;
    }
    return decoded;
}

std::string localFileName(std::string_view address) {
    return percentDecoded(trimBlanks(address.substr(0, address.find_first_of("?#"))));
}

std::string hostAndPath(std::string_view address) {
    std::string_view place = placeIn(address);
    if (place.ends_with('/'))
        place.remove_suffix(1);
    std::string readable = percentDecoded(place);
    const bool control = std::any_of(readable.begin(), readable.end(),
                                     [](char c) { return static_cast<unsigned char>(c) < ' '; });
    return control || !isUtf8(readable) ? std::string(place) : readable;
}

std::string hostOf(std::string_view address) {
    const std::string_view place = placeIn(address);
    return std::string(place.substr(0, place.find('/')));
}

std::string AddSpaces(std::string_view text) {
    std::string spaced(trimBlanks(text));
    for (std::size_t at = spaced.find(encodedBlank); at != std::string::npos;
         at = spaced.find(encodedBlank, at))
        spaced.replace(at, encodedBlank.size(), " ");
    return spaced;
}

std::string withoutDelimiters(std::string_view address) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string encoded;
    for (const char character : address) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte <= ' ' || byte == 0x7f ||
            std::string_view("\"'<>\\").find(character) != std::string_view::npos)
            encoded.append(1, '%').append(1, digits[byte / 16]).append(1, digits[byte % 16]);
        else
            encoded += character;
    }
    return encoded;
}

} // namespace wendmark
