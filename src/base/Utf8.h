#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace wendmark {

/// One character of a UTF-8 text, or one byte that is part of no valid character.
struct Utf8Unit {
    char32_t codePoint = 0; ///< The byte's own value (0x80 to 0xFF) when !valid.
    std::size_t length = 1; ///< Bytes taken, 1 to 4.
    bool valid = false;
};

/// Decodes the unit that starts at `position`, which must be less than utf8.size(). Overlong forms,
/// surrogates and values above U+10FFFF are not valid.
Utf8Unit decodeUtf8(std::string_view utf8, std::size_t position);

/// How many of the bytes from `position` on are ASCII, up to the first that is not. Texts are mostly ASCII,
/// and such a run needs no decoding.
std::size_t asciiRunLength(std::string_view text, std::size_t position);

/// Appends `codePoint` (a Unicode scalar value) as UTF-8.
void appendUtf8(std::string& utf8, char32_t codePoint);

/// Whether all of the text is valid UTF-8.
bool isUtf8(std::string_view text);

/// Length in UTF-16 code units; a byte that is part of no valid character counts as one.
std::size_t utf16Length(std::string_view utf8);

/// Position after `units` UTF-16 units from `position` on, at most the end of the text. From the middle of a
/// character the position after it.
std::size_t skipUtf16(std::string_view utf8, std::size_t position, std::size_t units);

} // namespace wendmark
