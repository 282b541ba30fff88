#pragma once

#include <string>
#include <string_view>

namespace wendmark::cli {

/// The text on one line, for a terminal: what would steer it, or turn the order of what is read, is written
/// in ASCII, as \n, \x1B or \u202E. Bytes that are no UTF-8 come as \x and their value. Everything else, a
/// backslash too, stays.
std::string printable(std::string_view text);

} // namespace wendmark::cli
