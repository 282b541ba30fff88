#pragma once

#include <string>
#include <vector>

namespace wendmark {

class Workspace;
struct Stop;
struct TourModel;

/// What a list of stops shows of one.
struct StopLook {
    std::string title;        ///< Plain text, as visitors read it; may be empty.
    std::string page;         ///< Host of a web page or name of a file; empty with `noPage`.
    bool noPage = false;      ///< It still shows the page that new stops show.
    bool fileMissing = false; ///< Its file is not in the working copy.
    bool noWords = false;     ///< It has no narration.

    friend bool operator==(const StopLook&, const StopLook&) = default;
};

StopLook lookAtStop(const Stop& stop, const Workspace& workspace);

/// Same for all stops that are held, in their order; looks at the folder only once.
std::vector<StopLook> lookAtStops(const TourModel& model, const Workspace& workspace);

} // namespace wendmark
