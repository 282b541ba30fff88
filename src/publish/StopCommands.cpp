#include "publish/StopCommands.h"

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

/// A stop is one entry in each of four lists.
template <typename Change>
void forEachStopList(TourModel& model, Change change) {
    for (TourTexts* list : {&model.stopTitle, &model.stopURL, &model.stopNarration, &model.stopInstruction})
        change(*list);
}

void copyStop(TourModel& model, std::int16_t from, std::int16_t to) {
    forEachStopList(model, [&](TourTexts& list) {
        list.at(static_cast<std::size_t>(to - 1)) = list.at(static_cast<std::size_t>(from - 1));
    });
}

void swapStops(TourModel& model, std::int16_t left, std::int16_t right) {
    forEachStopList(model, [&](TourTexts& list) {
        std::swap(list.at(static_cast<std::size_t>(left - 1)), list.at(static_cast<std::size_t>(right - 1)));
    });
}

void setNewStop(TourModel& model, std::int16_t n) {
    const auto i = static_cast<std::size_t>(n - 1);
    model.stopURL.at(i) = "newpage.htm";
    model.stopNarration.at(i) = noNarration;
    model.stopTitle.at(i) = "Title";
    model.stopInstruction.at(i).clear();
}

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
    swapStops(model, model.currentStop, to);
    makeStopPages(context, std::min(model.currentStop, to), std::max(model.currentStop, to));
    makeListPages(context);
    return show(context, to);
}

} // namespace

StopCommandResult insertStop(TourContext& context) {
    const BusyPointer busy(context.desktop);
    TourModel& model = context.model;
    const std::int16_t current = model.currentStop;
    if (current < 0 || current > model.stopCount || model.stopCount >= tourCapacity)
        return StopCommandResult::refused;
    ++model.stopCount;
    for (auto i = static_cast<std::int16_t>(model.stopCount - 1); i > current; --i)
        copyStop(model, i, static_cast<std::int16_t>(i + 1));
    setNewStop(model, static_cast<std::int16_t>(current + 1));
    makeStopPages(context, std::max<std::int16_t>(1, static_cast<std::int16_t>(current - 1)),
                  model.stopCount);
    makeListPages(context);
    makeWorkingFrameset(context);
    return show(context, current + 1);
}

StopCommandResult deleteStop(TourContext& context) {
    const BusyPointer busy(context.desktop);
    TourModel& model = context.model;
    if (model.currentStop < 1 || model.currentStop > model.stopCount)
        return StopCommandResult::refused;
    for (std::int16_t i = model.currentStop; i < model.stopCount; ++i)
        copyStop(model, static_cast<std::int16_t>(i + 1), i);
    --model.stopCount;
    model.currentStop = std::min(model.currentStop, model.stopCount);
    const std::int16_t first =
        model.currentStop != 1 ? static_cast<std::int16_t>(model.currentStop - 1) : model.currentStop;
    makeStopPages(context, first, model.stopCount);
    makeListPages(context);
    makeWorkingFrameset(context);
    return show(context, model.currentStop);
}

StopCommandResult moveStopBack(TourContext& context) {
    const BusyPointer busy(context.desktop);
    const TourModel& model = context.model;
    if (model.currentStop <= 1 || model.currentStop > model.stopCount)
        return StopCommandResult::refused;
    return moveStop(context, model.currentStop - 1);
}

StopCommandResult moveStopForward(TourContext& context) {
    const BusyPointer busy(context.desktop);
    const TourModel& model = context.model;
    if (model.currentStop < 1 || model.currentStop >= model.stopCount)
        return StopCommandResult::refused;
    return moveStop(context, model.currentStop + 1);
}

StopCommandResult showNextStop(TourContext& context) {
    if (context.model.currentStop >= context.model.stopCount)
        return StopCommandResult::refused;
    return show(context, context.model.currentStop + 1);
}

StopCommandResult showPreviousStop(TourContext& context) {
    if (context.model.currentStop < 1)
        return StopCommandResult::refused;
    return show(context, context.model.currentStop - 1);
}

} // namespace wendmark
