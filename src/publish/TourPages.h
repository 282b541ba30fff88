#pragma once

namespace wendmark {

struct TourContext;

/// Each fills the template of its name into the working copy: the title and author of the opening page.
void makeOpeningPageSimple(TourContext& context);

/// Same, and drops what the template holds in its last region; runs after makeOpeningPageSimple() and
/// replaces its result.
void makeOpeningPage(TourContext& context);

/// "index.htm": the tour's title.
void makeIndexPage(TourContext& context);

/// "toc.htm": a link to each stop's page.
void makeContentsPage(TourContext& context);

/// "tguide.htm": title, narration and address of each stop, for printing.
void makeTourGuide(TourContext& context);

} // namespace wendmark
