#pragma once

#include "model/StopTexts.h"

#include <optional>
#include <string>
#include <string_view>

/// The tag that shows a picture in a stop's text, and what it says of the picture.
namespace wendmark {

struct PictureTag {
    Selection place;     ///< Of the whole tag in the text, in UTF-16 units.
    std::string tag;     ///< As it is written, "<IMG ...>".
    std::string address; ///< Entities as characters, "%" codes as they are; empty when it has none.
    std::optional<std::string> description; ///< Empty for a mere decoration; none when nothing is said.
    int width = 0;                          ///< Pixels, 1 to 9999; 0 when it has none or another.

    bool operator==(const PictureTag&) const = default;
};

inline constexpr int largestPictureWidth = 9999;

/// The picture whose tag the caret stands in or directly behind. A tag that is not closed is none, nor is one
/// in a comment, a script or a style sheet.
std::optional<PictureTag> pictureAt(std::string_view text, int caret);

/// The tag with this description; without one for none.
std::string describedTag(std::string_view tag, const std::optional<std::string>& description);

/// The tag with this width in pixels; without one for 0.
std::string sizedTag(std::string_view tag, int width);

/// Largest width, in pixels, at which a picture of this size leaves visitors room for words beside it and
/// below: its own where that is small enough, and at least 1.
int fittingWidth(int width, int height);

} // namespace wendmark
