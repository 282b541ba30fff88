#pragma once

#include <string>
#include <string_view>

/// Files hold Windows-1252, memory holds UTF-8. The five bytes that the code page leaves unassigned stand for
/// the control characters of the same value, so every byte survives reading and writing.
namespace wendmark::windows1252 {

/// For HTML text. A character that the code page lacks becomes a decimal character reference ("&#8594;").
/// A byte that is not valid UTF-8 is written as it stands.
std::string encodeHtml(std::string_view utf8);

/// For addresses. A character that the code page lacks becomes percent-encoded UTF-8 ("%E2%86%92").
std::string encodeAddress(std::string_view utf8);

/// Reads HTML text back: exactly the references that encodeHtml() writes become characters again. Others stay
/// as they stand, among them those with leading zeros, those that name a character of the code page, and
/// &#128; to &#159;, which browsers show as characters of the code page.
std::string decodeHtml(std::string_view bytes);

/// Same, at the end of a text.
void appendDecodedHtml(std::string& utf8, std::string_view bytes);

/// Reads addresses and other plain text back; references stay as they stand.
std::string decode(std::string_view bytes);

} // namespace wendmark::windows1252
