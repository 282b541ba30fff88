#pragma once

#include <QFontMetrics>
#include <algorithm>

namespace wendmark {

/// Pixels of the icons beside text of this size: 24 beside usual text, more beside larger.
inline int iconSideFor(const QFontMetrics& text) {
    constexpr int usual = 24;
    constexpr int step = 4; // Strokes stay even.
    return std::max(usual, text.height() * 3 / 2 / step * step);
}

} // namespace wendmark
