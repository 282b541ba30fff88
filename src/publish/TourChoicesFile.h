#pragma once

namespace wendmark {

class TemplateFiller;
struct TourContext;
struct TourModel;

/// "tourwords.js", the words of the templates: of all languages while the tour is edited, and of the tour's
/// language alone in its final form. It also says whether there is a "tourchoices.js". Templates without it
/// know nothing of languages, and get none. False when the file should be there and is not complete; why, is
/// in the log.
bool makeTourWords(TourContext& context);

/// "tourchoices.js": what the author has chosen for the tour. When that is nothing, the file is removed.
/// False when that fails; why, is in the log.
bool makeTourChoices(TourContext& context);

/// Both of them.
bool makeWordsAndChoices(TourContext& context);

/// What makeTourWords() does with the text of its template.
void fillTourWords(TemplateFiller& filler, const TourModel& model);

} // namespace wendmark
