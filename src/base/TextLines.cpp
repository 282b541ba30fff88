#include "base/TextLines.h"

#include <algorithm>

namespace wendmark {

std::optional<std::string_view> TextLines::next() {
    if (atEnd())
        return std::nullopt;
    const std::size_t end = std::min(m_text.find_first_of(lineBreak, m_position), m_text.size());
    const std::string_view line = m_text.substr(m_position, end - m_position);
    const bool pair = m_text.substr(end).starts_with(lineBreak);
    m_position = end + (pair ? lineBreak.size() : 1);
    return line;
}

} // namespace wendmark
