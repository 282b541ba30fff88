#pragma once

#include <string>

namespace wendmark {

/// What can be seen of a folder without opening it.
struct TourLook {
    bool isTour = false; ///< As folderHoldsTour() says.
    std::string title; ///< As visitors read it, on one line; empty when its script begins with too much else.
};

/// Looks at a folder. However large its script is, only the first lines are read.
TourLook lookAtTour(const std::string& folder);

} // namespace wendmark
