#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/// Numbers as scripts and fields hold them.
namespace wendmark {

/// The number at the start of `text`: blanks and tabs are skipped wherever they stand, and reading stops at
/// the first character that cannot continue a decimal number (sign, point, exponent). 0 without digits. A
/// number beyond the range of double gives the largest one of its sign.
double leadingNumber(std::string_view text);

/// Whether `text` is one decimal number as leadingNumber() reads it and nothing else; blanks and tabs may
/// stand at both ends.
bool isNumeric(std::string_view text);

/// Rounds to the nearest integer, ties to even. Nothing when the result does not fit.
std::optional<std::int16_t> roundTo16Bits(double number);
std::optional<std::int32_t> roundTo32Bits(double number);

} // namespace wendmark
