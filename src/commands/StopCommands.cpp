#include "commands/StopCommands.h"

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

void makeListPages(TourContext& context) {
    makeContentsPage(context);
    makeTourGuide(context);
}

StopCommandResult show(TourContext& context, int stop) {
    context.model.currentStop = static_cast<std::int16_t>(stop);
    makePreviewFrameset(context);
    return StopCommandResult::done;
}

/// Moves the current stop one place, to `target`.
StopCommandResult moveStop(TourContext& context, int target) {
    TourModel& model = context.model;
    const auto to = static_cast<std::int16_t>(target);
    std::swap(model.stops.at(model.currentStop), model.stops.at(to));
    makeStopPages(context, std::min(model.currentStop, to), std::max(model.currentStop, to));
    makeListPages(context);
    return show(context, to);
}

} // namespace

Stop newStop() {
    return {"Title", "newpage.htm", std::string(noNarration), {}};
}

StopCommandResult insertStop(TourContext& context) {
    const BusyPointer busy(context.desktop);
    TourModel& model = context.model;
    const std::int16_t current = model.currentStop;
    if (current < 0 || current > model.stopCount() || model.stopCount() >= tourCapacity)
        return StopCommandResult::refused;
    model.stops.insert(current + 1, newStop());
    makeStopPages(context, std::max<std::int16_t>(1, static_cast<std::int16_t>(current - 1)),
                  model.stopCount());
    makeListPages(context);
    makeWorkingFrameset(context);
    return show(context, current + 1);
}

StopCommandResult deleteStop(TourContext& context) {
    const BusyPointer busy(context.desktop);
    TourModel& model = context.model;
    if (model.currentStop < 1 || model.currentStop > model.stops.held())
        return StopCommandResult::refused;
    model.stops.erase(model.currentStop);
    model.currentStop = std::min(model.currentStop, model.stopCount());
    const std::int16_t first =
        model.currentStop != 1 ? static_cast<std::int16_t>(model.currentStop - 1) : model.currentStop;
    makeStopPages(context, first, model.stopCount());
    makeListPages(context);
    makeWorkingFrameset(context);
    return show(context, model.currentStop);
}

StopCommandResult moveStopBack(TourContext& context) {
    const BusyPointer busy(context.desktop);
    const TourModel& model = context.model;
    if (model.currentStop <= 1 || model.currentStop > model.stops.held())
        return StopCommandResult::refused;
    return moveStop(context, model.currentStop - 1);
}

StopCommandResult moveStopForward(TourContext& context) {
    const BusyPointer busy(context.desktop);
    const TourModel& model = context.model;
    if (model.currentStop < 1 || model.currentStop >= model.stopCount())
        return StopCommandResult::refused;
    return moveStop(context, model.currentStop + 1);
}

void storeAddress(TourContext& context, std::int16_t stop, const std::string& address) {
    const BusyPointer busy(context.desktop);
    context.model.stops.at(stop).stopURL = address;
    makeStopPages(context, stop, stop);
    makeTourGuide(context);
    makePreviewFrameset(context);
}

void storeTexts(TourContext& context, std::int16_t stop, const StopTexts& texts) {
    const BusyPointer busy(context.desktop);
    Stop& changed = context.model.stops.at(stop);
    changed.stopNarration = texts.narration;
    changed.stopTitle = texts.title;
    changed.stopInstruction =
        context.model.autoInstruction ? std::string(automaticInstruction) : texts.instruction;
    makeStopPages(context, stop, stop);
    makeListPages(context);
    makePreviewFrameset(context);
}

StopCommandResult showNextStop(TourContext& context) {
    if (context.model.currentStop >= context.model.stopCount())
        return StopCommandResult::refused;
    return show(context, context.model.currentStop + 1);
}

StopCommandResult showPreviousStop(TourContext& context) {
    if (context.model.currentStop < 1)
        return StopCommandResult::refused;
    return show(context, context.model.currentStop - 1);
}

} // namespace wendmark
