#pragma once

#include "model/ReadableText.h"

#include <functional>
#include <string_view>
#include <vector>

namespace wendmark {

struct SearchOptions {
    bool matchCase = false;
    bool wholeWords = false; ///< No letter, digit or accent next to what is found, where it has one there.

    friend bool operator==(const SearchOptions&, const SearchOptions&) = default;
};

/// Finds words in a text, in UTF-8, with work in proportion to both. White space of any kind and length in
/// the words stands for one blank; soft hyphens do not count. An accent that is a character of its own is not
/// the same as a letter that has one.
class TextSearch final {
public:
    TextSearch(std::string_view words, const SearchOptions& options);

    /// Whether there is nothing to look for.
    bool isEmpty() const { return m_words.empty(); }

    /// Calls with each place, in the order of the text; they do not overlap. A place for which the call
    /// returns false does not count, and others may begin inside it.
    void find(std::string_view text, const std::function<bool(TextRange)>& found) const;

private:
    char32_t compared(char32_t character) const;

    SearchOptions m_options;
    std::vector<char32_t> m_words; ///< As they are compared.
    std::vector<std::size_t>
        m_fallback; ///< How many characters still fit when the one behind n + 1 does not.
};

} // namespace wendmark
