#pragma once

#include <string>
#include <string_view>
#include <vector>

/// File names of tours, which come from systems that ignore the case of names. All texts are UTF-8.
namespace wendmark {

#ifdef _WIN32
inline constexpr char pathSeparator = '\\';
#else
inline constexpr char pathSeparator = '/';
#endif

/// Lower-cases the letters that Windows-1252 has; every other character stays.
std::string lowerCase(std::string_view name);

bool equalIgnoringCase(std::string_view left, std::string_view right);

/// Whether `path` begins with `prefix`, ignoring case.
bool beginsIgnoringCase(std::string_view path, std::string_view prefix);

/// Directory-search match, ignoring case: "*" stands for any run of characters, "?" for any one, "*.*" for
/// every name, with a dot or without.
bool matchesWildcard(std::string_view name, std::string_view pattern);

/// Moves names that match a pattern behind those that match none, in the order of the patterns; otherwise the
/// order stays.
void sortByPatterns(std::vector<std::string>& names, const std::vector<std::string>& patterns);

/// The text without the blanks at both ends. Only the space character counts as a blank.
std::string_view trimBlanks(std::string_view text);

/// The part after the last `separator`, in lower case; the whole text in lower case when there is none.
std::string lastPathPart(std::string_view text, char separator);

} // namespace wendmark
