#pragma once

#include "model/TourModel.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace wendmark {

/// A tour as it was at one moment. Moments share whatever did not change between them, so that a thousand of
/// them are hardly larger than one.
struct TourSnapshot {
    std::shared_ptr<const TourModel> head; ///< Everything but the stops, which it has none of.
    std::vector<std::shared_ptr<const Stop>> stops;
    std::int16_t stopCount = 0; ///< Also counts those that are not held.
};

using TourMoment = std::shared_ptr<const TourSnapshot>;

/// The moment of `model`, which is as before afterwards. What equals a part of `former`, which may be null,
/// is shared with it; when everything does, the result is `former` itself. Neither the place where the author
/// is in the tour nor marks of the program count.
TourMoment momentOf(TourModel& model, const TourMoment& former);

/// Puts the moment into `model`; where the author is in the tour, and the program's marks, stay.
void restoreMoment(const TourSnapshot& moment, TourModel& model);

/// The tour that the moment holds.
TourModel modelOf(const TourSnapshot& moment);

/// Bytes of texts that `moment` holds and `former`, which may be null, does not share.
std::size_t bytesBeyond(const TourSnapshot& moment, const TourSnapshot* former);

} // namespace wendmark
