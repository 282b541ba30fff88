#include "base/TextLines.h"

#include <algorithm>

namespace wendmark {

std::optional<std::string_view> TextLines::next() {
    if (atEnd())
        return std::nullopt;
    if (m_lineFeed < m_position)
        m_lineFeed = lineFeedFrom(m_position);
    const std::string_view rest = m_text.substr(m_position, m_lineFeed - m_position);
    const std::size_t end = m_position + std::min(rest.find('\r'), rest.size());
    const std::string_view line = m_text.substr(m_position, end - m_position);
    const bool pair = m_text.substr(end).starts_with(lineBreak);
    m_position = end + (pair ? lineBreak.size() : 1);
    return line;
}

std::size_t TextLines::lineFeedFrom(std::size_t position) const {
    return std::min(m_text.find('\n', position), m_text.size());
}

} // namespace wendmark
