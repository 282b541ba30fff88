#include "model/TextSearch.h"

#include "base/Letters.h"
#include "base/Utf8.h"

#include <algorithm>

namespace wendmark {

namespace {

constexpr char32_t noCharacter = 0x110000;

/// The character that ends at `end`, which must not be 0.
Utf8Unit unitBefore(std::string_view text, std::size_t end) {
    constexpr std::size_t longest = 4;
    for (std::size_t length = 2; length <= std::min(longest, end); ++length) {
        const Utf8Unit unit = decodeUtf8(text, end - length);
        if (unit.valid && unit.length == length)
            return unit;
    }
    return decodeUtf8(text, end - 1);
}

bool isInWord(const Utf8Unit& unit) {
    return unit.valid && belongsToWord(unit.codePoint);
}

/// How many characters of the beginning stand again at the end of each part of the words that begins there.
std::vector<std::size_t> fallbackOf(const std::vector<char32_t>& words) {
    std::vector<std::size_t> fallback(words.size(), 0);
    std::size_t fits = 0;
    for (std::size_t i = 1; i < words.size(); ++i) {
        while (fits > 0 && words[i] != words[fits])
            fits = fallback[fits - 1];
        if (words[i] == words[fits])
            ++fits;
        fallback[i] = fits;
    }
    return fallback;
}

/// No letter, digit or accent of a word goes on at its ends.
bool standsAlone(std::string_view text, TextRange range) {
    const bool joinedBefore =
        range.begin > 0 && isInWord(decodeUtf8(text, range.begin)) && isInWord(unitBefore(text, range.begin));
    const bool joinedBehind = range.end < text.size() && isInWord(unitBefore(text, range.end)) &&
                              isInWord(decodeUtf8(text, range.end));
    return !joinedBefore && !joinedBehind;
}

} // namespace

TextSearch::TextSearch(std::string_view words, const SearchOptions& options) : m_options(options) {
    for (std::size_t position = 0; position < words.size();) {
        const Utf8Unit unit = decodeUtf8(words, position);
        position += unit.length;
        if (unit.valid && isReadAsBlank(unit.codePoint)) {
            if (m_words.empty() || m_words.back() != ' ')
                m_words.push_back(' ');
        } else if (!unit.valid || !isReadAsNothing(unit.codePoint)) {
            m_words.push_back(unit.valid ? compared(unit.codePoint) : noCharacter + unit.codePoint);
        }
    }
    m_fallback = fallbackOf(m_words);
}

char32_t TextSearch::compared(char32_t character) const {
    return m_options.matchCase ? character : foldCase(character);
}

void TextSearch::find(std::string_view text, const std::function<bool(TextRange)>& found) const {
    if (isEmpty())
        return;
    std::vector<std::size_t> begins(m_words.size()); // Of as many characters as the words have.
    std::size_t fits = 0;
    std::size_t characters = 0;
    for (std::size_t position = 0; position < text.size();) {
        const Utf8Unit unit = decodeUtf8(text, position);
        begins[characters++ % begins.size()] = position;
        position += unit.length;
        const char32_t character = unit.valid ? compared(unit.codePoint) : noCharacter + unit.codePoint;
        while (fits > 0 && character != m_words[fits])
            fits = m_fallback[fits - 1];
        if (character == m_words[fits])
            ++fits;
        if (fits < m_words.size())
            continue;
        const TextRange range{begins[characters % begins.size()], position};
        const bool counts = (!m_options.wholeWords || standsAlone(text, range)) && found(range);
        fits = counts ? 0 : m_fallback[fits - 1];
    }
}

} // namespace wendmark
