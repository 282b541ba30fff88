#pragma once

#include <cstdint>
#include <string>

namespace wendmark {

struct Stop;
struct TourContext;
struct TourModel;

/// Some of the four things that a stop consists of.
struct StopFields {
    bool title = false;
    bool address = false;
    bool narration = false;
    bool instruction = false;

    bool none() const { return *this == StopFields(); }
    friend bool operator==(const StopFields&, const StopFields&) = default;
};

/// What the narration editor holds of a stop.
inline constexpr StopFields textFields{.title = true, .narration = true, .instruction = true};

/// Number of the stop that has these fields in common with `stop`, which was number `number` when it was
/// looked at: that one if it still has, else the nearest; 0: none. So a stop is found again that other
/// commands have moved.
std::int16_t numberOf(const TourModel& model, const Stop& stop, std::int16_t number,
                      const StopFields& fields = {
                          .title = true, .address = true, .narration = true, .instruction = true});

/// In what stop `stop`, which must be held, differs from `wanted`. An instruction that the program writes
/// never does.
StopFields differingFields(const TourModel& model, std::int16_t stop, const Stop& wanted);

/// Makes these fields of stop `stop` what they are in `wanted`, as storeTexts() and storeAddress() do, and
/// makes the pages that show them, each once. The main browser is sent nowhere.
void storeFields(TourContext& context, std::int16_t stop, const Stop& wanted, const StopFields& fields);

/// Name of the step for such an edit.
std::string nameOfEdit(const StopFields& fields);

/// What is typed in one go: as long as it goes on, it is one step of the history.
struct Typing {
    std::int16_t stop = 0;
    StopFields fields;
    std::uint64_t burst = 0; ///< Whoever offers the fields gives each burst of typing a number of its own.

    friend bool operator==(const Typing&, const Typing&) = default;
};

} // namespace wendmark
