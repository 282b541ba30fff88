#include "commands/TourSnapshot.h"

#include <algorithm>
#include <utility>

namespace wendmark {

namespace {

/// Everything but the stops, and without what is no part of the tour.
TourModel headOf(TourModel& model) {
    StopList stops = std::exchange(model.stops, {});
    TourModel head = model;
    model.stops = std::move(stops);
    head.currentStop = 0;
    head.tourChanged = false;
    head.editingMode = true;
    return head;
}

std::shared_ptr<const Stop> shared(const Stop& stop, const TourMoment& former, std::size_t i) {
    if (former) {
        // A stop that was moved, or stands behind one that was inserted, is not far away.
        for (const std::size_t place : {i, i + 1, i - 1}) {
            if (place < former->stops.size() && *former->stops[place] == stop)
                return former->stops[place];
        }
    }
    return std::make_shared<const Stop>(stop);
}

std::size_t bytesOf(const Stop& stop) {
    return sizeof(Stop) + stop.stopTitle.size() + stop.stopURL.size() + stop.stopNarration.size() +
           stop.stopInstruction.size();
}

std::size_t bytesOf(const TourModel& head) {
    std::size_t bytes = sizeof(TourModel) + head.tourTitle.size() + head.tourAuthor.size();
    for (const std::string& address : head.launchURL)
        bytes += address.size();
    return bytes;
}

} // namespace

TourMoment momentOf(TourModel& model, const TourMoment& former) {
    auto moment = std::make_shared<TourSnapshot>();
    TourModel head = headOf(model);
    moment->head =
        former && *former->head == head ? former->head : std::make_shared<const TourModel>(std::move(head));
    moment->stopCount = model.stopCount();
    for (std::int16_t n = 1; n <= model.stops.held(); ++n)
        moment->stops.push_back(shared(model.stops.at(n), former, static_cast<std::size_t>(n - 1)));
    const bool same = former && former->head == moment->head && former->stops == moment->stops &&
                      former->stopCount == moment->stopCount;
    return same ? former : moment;
}

void restoreMoment(const TourSnapshot& moment, TourModel& model) {
    TourModel restored = modelOf(moment);
    restored.currentStop = model.currentStop;
    restored.tourChanged = model.tourChanged;
    restored.editingMode = model.editingMode;
    model = std::move(restored);
}

TourModel modelOf(const TourSnapshot& moment) {
    TourModel model = *moment.head;
    for (const auto& stop : moment.stops)
        model.stops.insert(model.stops.held() + 1, *stop);
    if (moment.stopCount > model.stopCount())
        model.stops.setCount(moment.stopCount);
    return model;
}

std::size_t bytesBeyond(const TourSnapshot& moment, const TourSnapshot* former) {
    std::size_t bytes = sizeof(TourSnapshot) + moment.stops.size() * sizeof(moment.stops.front());
    if (former == nullptr || former->head != moment.head)
        bytes += bytesOf(*moment.head);
    for (const auto& stop : moment.stops) {
        const bool known = former != nullptr &&
                           std::find(former->stops.begin(), former->stops.end(), stop) != former->stops.end();
        if (!known)
            bytes += bytesOf(*stop);
    }
    return bytes;
}

} // namespace wendmark
