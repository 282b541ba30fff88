#include "check_tour/CheckedTour.h"

#include "check_tour/CheckReport.h"
#include "model/HtmlText.h"
#include "tour_cli/Folders.h"
#include "tour_cli/TourRun.h"

#include <algorithm>
#include <ostream>
#include <sstream>

namespace wendmark::cli {

namespace {

/// A script's own words are part of what is said of its lines.
void tell(const std::string& lines, std::ostream& errors) {
    std::istringstream stream(lines);
    for (std::string line; std::getline(stream, line);)
        errors << harmless(line) << '\n';
}

} // namespace

Outcome readCheckedTour(const std::string& folder, std::optional<Posting> posting, CheckedTour& tour,
                        std::ostream& errors) {
    const WorkspaceFolders folders = foldersForReading(folder);
    std::ostringstream said;
    TourRun run(folders, said);
    Outcome outcome = checkTour(folder, folders);
    if (outcome.ok())
        outcome = run.readInPlace(folder);
    if (outcome.ok())
        run.printWarnings();
    tell(said.str(), errors);
    if (!outcome.ok())
        return outcome;
    const TourModel& model = run.model();
    tour.title = visibleText(model.tourTitle);
    tour.audience = audienceOf(model, posting.value_or(usualPosting(model)));
    tour.stops = stopsToCheck(model, run.workspace());
    return outcome;
}

bool isAllShown(const CheckedTour& tour) {
    return std::ranges::all_of(tour.stops,
                               [](const StopToCheck& stop) { return isShown(stop.known.verdict); });
}

} // namespace wendmark::cli
