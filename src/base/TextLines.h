#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace wendmark {

inline constexpr std::string_view lineBreak = "\r\n";

/// Walks through the lines of a text, which may end in CR LF, LF or CR. A last line without an end counts;
/// what follows the last line end does not when it is empty. The text must outlive the walk.
class TextLines final {
public:
    explicit TextLines(std::string_view text) : m_text(text), m_lineFeed(lineFeedFrom(0)) {}

    /// The next line without its end; nothing at the end of the text, again and again.
    std::optional<std::string_view> next();

    bool atEnd() const { return m_position >= m_text.size(); }

    /// What next() has not passed yet.
    std::string_view rest() const { return atEnd() ? std::string_view() : m_text.substr(m_position); }

private:
    /// The end of the text when there is none.
    std::size_t lineFeedFrom(std::size_t position) const;

    std::string_view m_text;
    std::size_t m_position = 0;
    std::size_t m_lineFeed; ///< The first one at or after m_position, unless it lies before that.
};

} // namespace wendmark
