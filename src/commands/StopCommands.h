#pragma once

#include <cstdint>
#include <string>

namespace wendmark {

struct Stop;
struct TourContext;

/// The texts of a stop as an author leaves them.
struct StopTexts {
    std::string title;
    std::string narration;
    std::string instruction; ///< Counts for nothing while the program writes the instructions.
};

/// What the stop commands do to the tour: they change the stop list, regenerate the pages that the change
/// touches and point the main browser at the stop on screen. The hourglass shows while they run. They leave
/// tourChanged alone.
enum class StopCommandResult {
    done,
    refused ///< Nothing was changed; the caller beeps.
};

/// What an author finds in a stop that is new.
Stop newStop();

/// Puts a new stop after the current one and makes it the current one. Refused when the tour is full.
StopCommandResult insertStop(TourContext& context);

/// Takes the current stop out; its page file stays. Refused on the opening page.
StopCommandResult deleteStop(TourContext& context);

/// Swaps the current stop with the one before or after it and stays on it. Refused at the ends.
StopCommandResult moveStopBack(TourContext& context);
StopCommandResult moveStopForward(TourContext& context);

/// Makes this address, or these texts, those of stop `stop`, which must be held; shows the current stop anew.
void storeAddress(TourContext& context, std::int16_t stop, const std::string& address);
void storeTexts(TourContext& context, std::int16_t stop, const StopTexts& texts);

/// Shows the next or the previous stop; before the first comes the opening page. Refused at the ends.
StopCommandResult showNextStop(TourContext& context);
StopCommandResult showPreviousStop(TourContext& context);

} // namespace wendmark
