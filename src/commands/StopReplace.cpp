#include "commands/StopReplace.h"

#include "commands/StopEdit.h"
#include "model/Desktop.h"
#include "model/TourContext.h"
#include "model/TourModel.h"
#include "publish/Framesets.h"
#include "publish/StopPages.h"
#include "publish/TourPages.h"

#include <algorithm>
#include <utility>

namespace wendmark {

namespace {

bool isIn(const StopNumbers& stops, std::int16_t stop) {
    return std::find(stops.begin(), stops.end(), stop) != stops.end();
}

bool isConcerned(const WordReplacement& replacement, std::int16_t stop) {
    return !isIn(replacement.spared, stop) && (!replacement.only || replacement.only->stop == stop);
}

/// The pages of the stops, and those that show something of all stops.
void makePagesOf(TourContext& context, const StopNumbers& stops, bool titles) {
    for (const std::int16_t stop : stops)
        makeStopPages(context, stop, stop);
    if (titles)
        makeContentsPage(context);
    makeTourGuide(context);
    if (isIn(stops, context.model.currentStop))
        makePreviewFrameset(context);
}

} // namespace

WordReplacementResult replaceWords(TourContext& context, const WordReplacement& replacement) {
    const BusyPointer busy(context.desktop);
    TourModel& model = context.model;
    WordReplacementResult result;
    bool titles = false;
    for (std::int16_t stop = 1; stop <= model.stops.held(); ++stop) {
        if (!isConcerned(replacement, stop))
            continue;
        ReplacedStop replaced = replaceInStop(model, stop, replacement.query, replacement.words,
                                              replacement.only ? &*replacement.only : nullptr);
        const StopFields fields = differingFields(model, stop, replaced.stop);
        if (fields.none())
            continue;
        if (fields.address)
            result.addresses.push_back(replaced.stop.stopURL);
        titles = titles || fields.title;
        result.places += replaced.places;
        result.stops.push_back(stop);
        model.stops.at(stop) = std::move(replaced.stop);
    }
    if (!result.stops.empty())
        makePagesOf(context, result.stops, titles);
    return result;
}

} // namespace wendmark
