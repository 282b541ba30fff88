#pragma once

#include "commands/AddedFiles.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace wendmark {

struct Stop;
struct TourContext;

/// Numbers of stops, from 1, in any order; one that is named twice counts once.
using StopNumbers = std::vector<std::int16_t>;

/// What a command for several stops has come to.
struct StopListResult {
    enum class Answer {
        done,
        unchanged,   ///< There was nothing to do.
        noSuchStop,  ///< One of the numbers is no stop of the tour.
        noSuchPlace, ///< There is no such place between the stops.
        noRoom       ///< The tour would have more stops than it can hold.
    };

    Answer answer = Answer::done;
    int room = 0;                       ///< How many stops the tour had room for before the command.
    std::vector<std::string> notCopied; ///< Names of files that could not be taken into the tour.

    bool done() const { return answer == Answer::done; }
};

/// The sentence that tells the author why nothing was changed; empty when there is nothing to tell.
std::string refusalOf(const StopListResult& result);

/// Commands for several stops at once. Each changes the stop list, makes every page that the change touches
/// once, and points the main browser at the current stop; or it changes nothing and says why. They leave
/// tourChanged alone. Of a tour that counts more stops than it holds, those that it holds can be moved and
/// taken out.

/// Brings the stops together, in their order in the tour, before the stop that has the number `target` now; 1
/// to one more than the last stop's. The current stop stays the same one.
StopListResult moveStops(TourContext& context, const StopNumbers& stops, std::int16_t target);

/// Takes the stops out; the page files of the numbers that are no more stay. If the current stop is among
/// them, the next one that stays becomes the current one, else the last; in an empty tour the opening page.
StopListResult removeStops(TourContext& context, const StopNumbers& stops);

/// Puts copies of the stops, in their order in the tour, behind the last of them. The first copy becomes the
/// current stop.
StopListResult duplicateStops(TourContext& context, const StopNumbers& stops);

/// Puts stops that come from elsewhere behind stop `position`; 0 is the opening page. Their texts become such
/// as a script can give back. The first of them becomes the current stop. Copies these files into the working
/// copy beforehand; one that cannot be copied keeps no stop away.
StopListResult insertStops(TourContext& context, std::int16_t position, const std::vector<Stop>& stops,
                           const std::vector<AddedFile>& files = {});

/// Gives stops, by their numbers, other addresses. The main browser is sent to the current stop anew if that
/// is one of them. Copies these files into the working copy beforehand; a stop whose page is one that cannot
/// be copied keeps its address.
StopListResult changeAddresses(TourContext& context, const std::map<std::int16_t, std::string>& addresses,
                               const std::vector<AddedFile>& files = {});

} // namespace wendmark
