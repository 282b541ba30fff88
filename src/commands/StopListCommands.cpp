#include "commands/StopListCommands.h"

#include "model/Desktop.h"
#include "model/StopTexts.h"
#include "model/TourContext.h"
#include "model/TourModel.h"
#include "model/Workspace.h"
#include "publish/Framesets.h"
#include "publish/StopPages.h"
#include "publish/TourPages.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

namespace wendmark {

namespace {

using Answer = StopListResult::Answer;
using NumberSet = std::set<std::int16_t>;

StopListResult answer(Answer answer, const TourModel& model) {
    return {answer, std::max(0, tourCapacity - model.stopCount()), {}};
}

/// What speaks against a command for these stops before it has begun; `done` when nothing does.
Answer objectionTo(const NumberSet& stops, const TourModel& model) {
    if (stops.empty())
        return Answer::unchanged;
    const bool all = *stops.begin() >= 1 && *stops.rbegin() <= model.stops.held();
    return all ? Answer::done : Answer::noSuchStop;
}

/// The stops' present numbers in the order that they are to have.
std::vector<std::int16_t> orderAfterMove(const NumberSet& moved, std::int16_t target, std::int16_t held) {
    std::vector<std::int16_t> order;
    const auto addOthers = [&](int first, int last) {
        for (int n = first; n <= last; ++n) {
            if (!moved.contains(static_cast<std::int16_t>(n)))
                order.push_back(static_cast<std::int16_t>(n));
        }
    };
    addOthers(1, target - 1);
    order.insert(order.end(), moved.begin(), moved.end());
    addOthers(target, held);
    return order;
}

/// Numbers of the first and the last stop that are to have another number; (0, 0) when there are none.
std::pair<std::int16_t, std::int16_t> changedRange(const std::vector<std::int16_t>& order) {
    std::int16_t first = 0;
    std::int16_t last = 0;
    std::int16_t number = 0;
    for (const std::int16_t former : order) {
        if (former == ++number)
            continue;
        first = first == 0 ? number : first;
        last = number;
    }
    return {first, last};
}

void reorder(TourModel& model, const std::vector<std::int16_t>& order) {
    std::vector<Stop> former(model.stops.begin(), model.stops.end());
    std::int16_t number = 0;
    for (const std::int16_t n : order)
        model.stops.at(++number) = std::move(former.at(static_cast<std::size_t>(n - 1)));
    const auto current = std::find(order.begin(), order.end(), model.currentStop);
    if (current != order.end())
        model.currentStop = static_cast<std::int16_t>(current - order.begin() + 1);
}

void makeListPages(TourContext& context) {
    makeContentsPage(context);
    makeTourGuide(context);
    makePreviewFrameset(context);
}

/// The tour has another number of stops from `first` on. The one before is made anew, too: it may have been
/// the last, or be it now.
void makePagesFrom(TourContext& context, int first) {
    const std::int16_t count = context.model.stopCount();
    if (count > 0)
        makeStopPages(context, static_cast<std::int16_t>(std::max(1, first - 1)), count);
    makeWorkingFrameset(context);
    makeListPages(context);
}

StopListResult putBehind(TourContext& context, std::int16_t position, std::vector<Stop> stops) {
    const BusyPointer busy(context.desktop);
    TourModel& model = context.model;
    StopListResult result = answer(Answer::done, model);
    int number = position;
    for (Stop& stop : stops)
        model.stops.insert(++number, std::move(stop));
    model.currentStop = static_cast<std::int16_t>(position + 1);
    makePagesFrom(context, position + 1);
    return result;
}

bool hasRoom(const TourModel& model, std::size_t stops) {
    return model.stopCount() <= tourCapacity &&
           stops <= static_cast<std::size_t>(tourCapacity - model.stopCount());
}

Stop storable(const Stop& stop) {
    return {storableTitle(stop.stopTitle), storableTitle(stop.stopURL),
            storableText(stop.stopNarration, noNarration), storableText(stop.stopInstruction, noInstruction)};
}

} // namespace

std::string refusalOf(const StopListResult& result) {
    switch (result.answer) {
    case Answer::done:
    case Answer::unchanged:
        break;
    case Answer::noSuchStop:
        return "The tour has no such stop.";
    case Answer::noSuchPlace:
        return "The tour has no such place for a stop.";
    case Answer::noRoom:
        if (result.room == 0)
            return "The tour has no room for more stops.";
        return "The tour has room for " + std::to_string(result.room) +
               (result.room == 1 ? " more stop." : " more stops.");
    }
    return {};
}

StopListResult moveStops(TourContext& context, const StopNumbers& stops, std::int16_t target) {
    TourModel& model = context.model;
    const NumberSet moved(stops.begin(), stops.end());
    if (const Answer objection = objectionTo(moved, model); objection != Answer::done)
        return answer(objection, model);
    if (target < 1 || target > model.stops.held() + 1)
        return answer(Answer::noSuchPlace, model);
    const std::vector<std::int16_t> order = orderAfterMove(moved, target, model.stops.held());
    const auto [first, last] = changedRange(order);
    if (first == 0)
        return answer(Answer::unchanged, model);
    const BusyPointer busy(context.desktop);
    reorder(model, order);
    makeStopPages(context, first, last);
    makeListPages(context);
    return answer(Answer::done, model);
}

StopListResult removeStops(TourContext& context, const StopNumbers& stops) {
    TourModel& model = context.model;
    const NumberSet removed(stops.begin(), stops.end());
    StopListResult result = answer(objectionTo(removed, model), model);
    if (!result.done())
        return result;
    const BusyPointer busy(context.desktop);
    const auto before = std::distance(removed.begin(), removed.lower_bound(model.currentStop));
    for (const std::int16_t stop : StopNumbers(removed.rbegin(), removed.rend()))
        model.stops.erase(stop);
    model.currentStop = std::min(static_cast<std::int16_t>(model.currentStop - before), model.stops.held());
    makePagesFrom(context, std::min<int>(*removed.begin(), model.stopCount() + 1));
    return result;
}

StopListResult duplicateStops(TourContext& context, const StopNumbers& stops) {
    const TourModel& model = context.model;
    const NumberSet copied(stops.begin(), stops.end());
    if (const Answer objection = objectionTo(copied, model); objection != Answer::done)
        return answer(objection, model);
    if (!hasRoom(model, copied.size()))
        return answer(Answer::noRoom, model);
    std::vector<Stop> copies;
    for (const std::int16_t stop : copied)
        copies.push_back(model.stops.at(stop));
    return putBehind(context, *copied.rbegin(), std::move(copies));
}

StopListResult changeAddresses(TourContext& context, const std::map<std::int16_t, std::string>& addresses,
                               const std::vector<AddedFile>& files) {
    TourModel& model = context.model;
    NumberSet changed;
    for (const auto& [stop, address] : addresses) {
        if (stop < 1 || stop > model.stops.held())
            return answer(Answer::noSuchStop, model);
        if (model.stops.at(stop).stopURL != address)
            changed.insert(stop);
    }
    if (changed.empty() && files.empty())
        return answer(Answer::unchanged, model);
    const BusyPointer busy(context.desktop);
    std::vector<std::string> notCopied = addFilesOfAuthor(context, files);
    for (const std::int16_t stop : changed) {
        if (std::ranges::find(notCopied, addresses.at(stop)) != notCopied.end())
            continue;
        model.stops.at(stop).stopURL = addresses.at(stop);
        makeStopPages(context, stop, stop);
    }
    makeTourGuide(context);
    if (changed.contains(model.currentStop))
        makePreviewFrameset(context);
    StopListResult result = answer(Answer::done, model);
    result.notCopied = std::move(notCopied);
    return result;
}

StopListResult insertStops(TourContext& context, std::int16_t position, const std::vector<Stop>& stops,
                           const std::vector<AddedFile>& files) {
    const TourModel& model = context.model;
    if (position < 0 || position > model.stops.held())
        return answer(Answer::noSuchPlace, model);
    if (stops.empty())
        return answer(Answer::unchanged, model);
    if (!hasRoom(model, stops.size()))
        return answer(Answer::noRoom, model);
    std::vector<Stop> inserted;
    std::transform(stops.begin(), stops.end(), std::back_inserter(inserted), storable);
    std::vector<std::string> notCopied = addFilesOfAuthor(context, files);
    StopListResult result = putBehind(context, position, std::move(inserted));
    result.notCopied = std::move(notCopied);
    return result;
}

} // namespace wendmark
