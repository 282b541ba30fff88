#pragma once

#include <cstdint>
#include <string>

namespace wendmark {

struct TourModel;

/// Remembers a stop by its words, so that it is known again when stops have been inserted, deleted or moved.
class NarratedStop final {
public:
    /// No stop.
    NarratedStop() = default;

    /// The current stop of the tour, which must not be the opening page.
    explicit NarratedStop(const TourModel& tour);

    /// Its number now. If no stop has its words any more, the number that it had; 0 when there is no such
    /// stop.
    std::int16_t numberIn(const TourModel& tour) const;

private:
    std::int16_t m_number = 0;
    std::string m_title;
    std::string m_narration;
};

} // namespace wendmark
