#pragma once

namespace wendmark {

class TemplateFiller;
struct TourContext;
struct TourModel;

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

/// Every page of the tour in the working copy: those of all stops, the frameset that the program shows, and
/// the pages above; with them what they say in the tour's language.
void makeEveryPage(TourContext& context);

/// What the generators above do with the texts of their templates.
void fillOpeningPageSimple(TemplateFiller& filler, const TourModel& model);
void fillOpeningPage(TemplateFiller& filler, const TourModel& model);
void fillIndexPage(TemplateFiller& filler, const TourModel& model);
void fillContentsPage(TemplateFiller& filler, const TourModel& model);
void fillTourGuide(TemplateFiller& filler, const TourModel& model);

} // namespace wendmark
