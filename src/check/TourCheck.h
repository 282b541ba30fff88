#pragma once

#include "check/PageVerdict.h"

#include <cstdint>
#include <string>
#include <vector>

namespace wendmark {

class Workspace;
struct TourModel;

/// A stop before the web is asked about its page.
struct StopToCheck {
    std::int16_t stop = 0;   ///< From 1.
    std::string title;       ///< As visitors read it.
    std::string address;     ///< As the stop has it.
    bool asksTheWeb = false; ///< What becomes of its page is not known yet.
    std::string original;    ///< Page of the web that its page is a card for; empty: it is none.
    PageVerdict known;       ///< Without `asksTheWeb`.
    std::int16_t sameAs = 0; ///< The first stop that shows the same page; 0: none before this one does.
    std::vector<std::string>
        missingParts; ///< Files that its page of the tour's own names, and that are not there.

    /// The page of the web that it is about, shown or stood for; empty when there is none.
    const std::string& webPage() const { return asksTheWeb ? address : original; }

    friend bool operator==(const StopToCheck&, const StopToCheck&) = default;
};

/// All stops that are held, in their order. Looks at the files of the working copy.
std::vector<StopToCheck> stopsToCheck(const TourModel& tour, const Workspace& workspace);

/// The same for all addresses that lead to one page: without what stands behind "#".
std::string pageOf(const std::string& address);

/// Where visitors play the tour as far as its launching points say: on http when all of the web are there,
/// else on https.
Posting usualPosting(const TourModel& tour);

/// Visitors on https, http or disk, who start the tour from its launching points.
Audience audienceOf(const TourModel& tour, Posting posting);

} // namespace wendmark
