#include "base/Names.h"

#include "base/Utf8.h"

#include <algorithm>

namespace wendmark {

namespace {

char32_t lowerLetter(char32_t letter) {
    constexpr char32_t multiplicationSign = 0xd7;
    const bool ascii = letter >= 'A' && letter <= 'Z';
    const bool latin = letter >= 0xc0 && letter <= 0xde && letter != multiplicationSign;
    if (ascii || latin)
        return letter + 0x20;
    switch (letter) {
    case 0x0160: // S with caron
    case 0x0152: // OE ligature
    case 0x017d: // Z with caron
        return letter + 1;
    case 0x0178: // Y with diaeresis
        return 0xff;
    default:
        return letter;
    }
}

/// Greedy match with one backtracking point, so that its time is bounded by name length times pattern length.
bool matchesLowerCase(std::string_view name, std::string_view pattern) {
    std::size_t inName = 0;
    std::size_t inPattern = 0;
    std::size_t star = std::string_view::npos;
    std::size_t nameAtStar = 0;
    while (inName < name.size()) {
        if (inPattern < pattern.size() && pattern[inPattern] == '*') {
            star = inPattern++;
            nameAtStar = inName;
        } else if (inPattern < pattern.size() && pattern[inPattern] == '?') {
            inName += decodeUtf8(name, inName).length;
            ++inPattern;
        } else if (inPattern < pattern.size() && pattern[inPattern] == name[inName]) {
            ++inName;
            ++inPattern;
        } else if (star != std::string_view::npos) {
            // Whole characters, lest "?" count the bytes of one as several.
            nameAtStar += decodeUtf8(name, nameAtStar).length;
            inName = nameAtStar;
            inPattern = star + 1;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', inPattern) == std::string_view::npos;
}

} // namespace

std::string lowerCase(std::string_view name) {
    std::string lowered;
    lowered.reserve(name.size());
    for (std::size_t position = 0; position < name.size();) {
        const Utf8Unit unit = decodeUtf8(name, position);
        if (unit.valid)
            appendUtf8(lowered, lowerLetter(unit.codePoint));
        else
            lowered.push_back(name[position]);
        position += unit.length;
    }
    return lowered;
}

bool equalIgnoringCase(std::string_view left, std::string_view right) {
    return lowerCase(left) == lowerCase(right);
}

bool beginsIgnoringCase(std::string_view path, std::string_view prefix) {
    return lowerCase(path).starts_with(lowerCase(prefix));
}

bool matchesWildcard(std::string_view name, std::string_view pattern) {
    return pattern == "*.*" || matchesLowerCase(lowerCase(name), lowerCase(pattern));
}

std::string_view trimBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string lastPathPart(std::string_view text, char separator) {
    // Without a separator this is 0: npos is one less than nothing.
    return lowerCase(text.substr(text.find_last_of(separator) + 1));
}

void sortByPatterns(std::vector<std::string>& names, const std::vector<std::string>& patterns) {
    const auto rank = [&](const std::string& name) {
        for (std::size_t i = 0; i < patterns.size(); ++i) {
            if (matchesWildcard(name, patterns[i]))
                return i + 1;
        }
        return std::size_t(0);
    };
    std::stable_sort(names.begin(), names.end(), [&](const std::string& left, const std::string& right) {
        return rank(left) < rank(right);
    });
}

} // namespace wendmark
