#pragma once

#include "model/StopList.h"
#include "model/TextSearch.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Words in the stops of a tour: where they stand, and others in their place.
namespace wendmark {

struct TourModel;

/// What is looked for.
struct TourQuery {
    std::string words; ///< Plain text, UTF-8; empty: nothing is found.
    SearchOptions options;
    bool addresses = false; ///< Also in the stops' addresses, as they are stored.

    friend bool operator==(const TourQuery&, const TourQuery&) = default;
};

/// The texts of a stop, in the order in which they are searched.
enum class StopPart { title, words, instruction, address };

const std::string& textOf(const Stop& stop, StopPart part);

/// One place where the words stand.
struct FoundPlace {
    std::int16_t stop = 0; ///< From 1.
    StopPart part = StopPart::title;
    TextRange stored; ///< In that text of the stop.
    std::string
        before;        ///< Some of what people read before it, plain text; with an ellipsis if it is not all.
    std::string words; ///< What was found, as it stands there.
    std::string behind;

    friend bool operator==(const FoundPlace&, const FoundPlace&) = default;
};

struct FoundPlaces {
    std::vector<FoundPlace> listed; ///< The first of them, in the order of the tour.
    std::size_t count = 0;          ///< All of them.
    int stops = 0;                  ///< In so many stops.
};

/// Looks through what visitors read of all stops that are held. Instructions that the program writes are left
/// alone. At most `mostListed` places are told one by one.
FoundPlaces findInTour(const TourModel& model, const TourQuery& query, std::size_t mostListed);

/// A stop after replacing.
struct ReplacedStop {
    Stop stop;
    std::size_t places = 0; ///< How many were replaced; a text that stays the same has none.
};

/// Stop `stop`, which must be held, with `words` in the place of what the query finds there. They are plain
/// text; what they become can be given back by a script. `only`: at this place of the stop and no other one;
/// without the words there, nothing is replaced.
ReplacedStop replaceInStop(const TourModel& model, std::int16_t stop, const TourQuery& query,
                           std::string_view words, const FoundPlace* only = nullptr);

} // namespace wendmark
