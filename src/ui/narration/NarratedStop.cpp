#include "ui/narration/NarratedStop.h"

#include "model/TourModel.h"

#include <algorithm>

namespace wendmark {

NarratedStop::NarratedStop(const TourModel& tour)
    : m_number(tour.currentStop)
    , m_title(tour.stops.at(tour.currentStop).stopTitle)
    , m_narration(tour.stops.at(tour.currentStop).stopNarration) {}

std::int16_t NarratedStop::numberIn(const TourModel& tour) const {
    const auto hasItsWords = [this](const Stop& stop) {
        return stop.stopTitle == m_title && stop.stopNarration == m_narration;
    };
    const bool isThere = m_number >= 1 && m_number <= tour.stops.held();
    if (isThere && hasItsWords(tour.stops.at(m_number)))
        return m_number;
    const auto found = std::find_if(tour.stops.begin(), tour.stops.end(), hasItsWords);
    if (m_number >= 1 && found != tour.stops.end())
        return static_cast<std::int16_t>(found - tour.stops.begin() + 1);
    return isThere ? m_number : std::int16_t{0};
}

} // namespace wendmark
