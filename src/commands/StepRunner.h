#pragma once

#include "commands/DocumentListeners.h"
#include "commands/StopCommands.h"
#include "commands/StopListCommands.h"
#include "commands/StopReplace.h"
#include "commands/TourTimeline.h"
#include "model/TourContext.h"
#include "model/TourModel.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace wendmark {

/// Runs commands about stops as steps of the history and tells the listeners once they are done.
class StepRunner final {
public:
    /// All must outlive it.
    StepRunner(TourContext& context, TourTimeline& timeline, const DocumentListeners& listeners)
        : m_context(context), m_timeline(timeline), m_listeners(listeners) {}

    /// One for the current stop. The listeners are told in every case.
    StopCommandResult run(StopCommandResult (*command)(TourContext&), const std::string& name);

    // The commands of the menu "Stops".
    StopCommandResult insertStop() { return run(wendmark::insertStop, "Insert Stop"); }
    StopCommandResult deleteStop() { return run(wendmark::deleteStop, "Delete Stop"); }
    StopCommandResult moveStopForward() { return run(wendmark::moveStopForward, "Move Stop Forward"); }
    StopCommandResult moveStopBack() { return run(wendmark::moveStopBack, "Move Stop Back"); }

    /// One that only goes to another stop, which is no step.
    StopCommandResult show(StopCommandResult (*command)(TourContext&));

    // See TourDocument.
    void setAddress(std::int16_t stop, const std::string& address);
    void setTexts(std::int16_t stop, const StopTexts& texts);

    /// The commands of StopListCommands.h. Only what changes the tour marks it as changed and is told.
    StopListResult moveStops(const StopNumbers& stops, std::int16_t target);
    StopListResult removeStops(const StopNumbers& stops);
    StopListResult duplicateStops(const StopNumbers& stops);
    StopListResult insertStops(std::int16_t position, const std::vector<Stop>& stops,
                               const std::vector<AddedFile>& files);

    StopListResult changeAddresses(const std::map<std::int16_t, std::string>& addresses,
                                   const std::string& stepName, const std::vector<AddedFile>& files);

    /// The command of StopReplace.h; the same holds.
    WordReplacementResult replaceWords(const WordReplacement& replacement);

    /// Stores what was typed into the fields of a stop. It belongs to the step before as long as the burst
    /// goes on in the same fields of the same stop, and no other command came in between.
    StopListResult type(std::int16_t stop, const Stop& wanted, std::uint64_t burst);

private:
    template <typename Command>
    StopListResult runForSeveral(const std::string& name, const std::vector<std::string>& replacedFiles,
                                 Command command);

    TourContext& m_context;
    TourTimeline& m_timeline;
    const DocumentListeners& m_listeners;
};

} // namespace wendmark
