#pragma once

#include "base/Outcome.h"
#include "check/TourCheck.h"

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace wendmark::cli {

/// What a check keeps of a tour: neither its words nor its pages.
struct CheckedTour {
    std::string name;  ///< As the command line has it.
    std::string title; ///< As visitors read it.
    Audience audience;
    std::vector<StopToCheck> stops; ///< `known` is complete when the check has ended.
};

/// Reads the tour in this folder, an absolute path, which stays as it is, and looks at the files of its
/// stops. Errors in lines of its script and warnings go to `errors`. The name is left alone. May change the
/// current folder.
Outcome readCheckedTour(const std::string& folder, std::optional<Posting> posting, CheckedTour& tour,
                        std::ostream& errors);

/// Whether visitors see all stops.
bool isAllShown(const CheckedTour& tour);

} // namespace wendmark::cli
