#pragma once

#include <cmath>

/// Lengths of windows are kept in twips, 15 to the pixel.
namespace wendmark {

inline constexpr float twipsPerPixel = 15;

inline int pixelsFromTwips(float twips) {
    return static_cast<int>(std::lround(twips / twipsPerPixel));
}

inline float twipsFromPixels(int pixels) {
    return static_cast<float>(pixels) * twipsPerPixel;
}

} // namespace wendmark
