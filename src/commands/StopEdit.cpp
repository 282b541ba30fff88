#include "commands/StopEdit.h"

#include "model/Desktop.h"
#include "model/TourContext.h"
#include "model/TourModel.h"
#include "publish/StopPages.h"
#include "publish/TourPages.h"

namespace wendmark {

std::int16_t numberOf(const TourModel& model, const Stop& stop, std::int16_t number,
                      const StopFields& fields) {
    const auto isIt = [&](int n) {
        if (n < 1 || n > model.stops.held())
            return false;
        const Stop& other = model.stops.at(n);
        return (!fields.title || other.stopTitle == stop.stopTitle) &&
               (!fields.address || other.stopURL == stop.stopURL) &&
               (!fields.narration || other.stopNarration == stop.stopNarration) &&
               (!fields.instruction || other.stopInstruction == stop.stopInstruction);
    };
    for (int distance = 0; distance <= tourCapacity; ++distance) {
        for (const int n : {number - distance, number + distance}) {
            if (isIt(n))
                return static_cast<std::int16_t>(n);
        }
    }
    return 0;
}

StopFields differingFields(const TourModel& model, std::int16_t stop, const Stop& wanted) {
    const Stop& present = model.stops.at(stop);
    return {present.stopTitle != wanted.stopTitle, present.stopURL != wanted.stopURL,
            present.stopNarration != wanted.stopNarration,
            !model.autoInstruction && present.stopInstruction != wanted.stopInstruction};
}

void storeFields(TourContext& context, std::int16_t stop, const Stop& wanted, const StopFields& fields) {
    const BusyPointer busy(context.desktop);
    Stop& changed = context.model.stops.at(stop);
    if (fields.title)
        changed.stopTitle = wanted.stopTitle;
    if (fields.address)
        changed.stopURL = wanted.stopURL;
    if (fields.narration)
        changed.stopNarration = wanted.stopNarration;
    if (fields.instruction)
        changed.stopInstruction = wanted.stopInstruction;
    if (context.model.autoInstruction)
        changed.stopInstruction = automaticInstruction;
    makeStopPages(context, stop, stop);
    if (fields.title)
        makeContentsPage(context);
    if (fields.title || fields.address || fields.narration)
        makeTourGuide(context);
}

std::string nameOfEdit(const StopFields& fields) {
    if (fields == StopFields{.title = true})
        return "Edit Title";
    if (fields == StopFields{.address = true})
        return "Edit Page";
    if (fields == StopFields{.narration = true})
        return "Edit Words";
    if (fields == StopFields{.instruction = true})
        return "Edit Instruction";
    return "Edit Stop";
}

} // namespace wendmark
