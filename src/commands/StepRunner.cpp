#include "commands/StepRunner.h"

#include "commands/StopEdit.h"

#include <utility>

namespace wendmark {

StopCommandResult StepRunner::run(StopCommandResult (*command)(TourContext&), const std::string& name) {
    const TourTimeline::Before before = m_timeline.begin();
    const StopCommandResult result = command(m_context);
    if (result == StopCommandResult::done)
        m_timeline.end(before, name, TourTimeline::Made::pages, m_context.model.currentStop);
    m_listeners.tellChange();
    return result;
}

StopCommandResult StepRunner::show(StopCommandResult (*command)(TourContext&)) {
    m_timeline.makeReady();
    const StopCommandResult result = command(m_context);
    m_listeners.tellPlace();
    return result;
}

void StepRunner::setAddress(std::int16_t stop, const std::string& address) {
    const TourTimeline::Before before = m_timeline.begin();
    storeAddress(m_context, stop, address);
    m_timeline.endAt(stop, before, "Use this Site");
    m_listeners.tellChange();
}

void StepRunner::setTexts(std::int16_t stop, const StopTexts& texts) {
    TourModel& model = m_context.model;
    model.tourChanged = true;
    if (stop < 1 || stop > model.stops.held()) {
        m_listeners.tellChange();
        return;
    }
    const TourTimeline::Before before = m_timeline.begin();
    storeTexts(m_context, stop, texts);
    m_timeline.endAt(stop, before, "Narration");
    m_listeners.tellChange();
}

StopListResult StepRunner::moveStops(const StopNumbers& stops, std::int16_t target) {
    return runForSeveral("Move Stops", {}, [&] { return wendmark::moveStops(m_context, stops, target); });
}

StopListResult StepRunner::removeStops(const StopNumbers& stops) {
    return runForSeveral("Delete Stops", {}, [&] { return wendmark::removeStops(m_context, stops); });
}

StopListResult StepRunner::duplicateStops(const StopNumbers& stops) {
    return runForSeveral("Duplicate Stops", {}, [&] { return wendmark::duplicateStops(m_context, stops); });
}

StopListResult StepRunner::insertStops(std::int16_t position, const std::vector<Stop>& stops,
                                       const std::vector<AddedFile>& files) {
    return runForSeveral("Insert Stops", namesOf(files),
                         [&] { return wendmark::insertStops(m_context, position, stops, files); });
}

StopListResult StepRunner::changeAddresses(const std::map<std::int16_t, std::string>& addresses,
                                           const std::string& stepName, const std::vector<AddedFile>& files) {
    return runForSeveral(stepName, namesOf(files),
                         [&] { return wendmark::changeAddresses(m_context, addresses, files); });
}

/// `command` may replace these files.
template <typename Command>
StopListResult StepRunner::runForSeveral(const std::string& name,
                                         const std::vector<std::string>& replacedFiles, Command command) {
    TourModel& model = m_context.model;
    const std::int16_t placeBefore = model.currentStop;
    const TourTimeline::Before before = m_timeline.begin(replacedFiles);
    StopListResult result = command();
    if (!result.done())
        return result;
    m_timeline.end(before, name, TourTimeline::Made::pages, model.currentStop);
    model.tourChanged = true;
    if (model.currentStop != placeBefore)
        m_listeners.tellPlace();
    m_listeners.tellChange();
    return result;
}

WordReplacementResult StepRunner::replaceWords(const WordReplacement& replacement) {
    TourModel& model = m_context.model;
    const TourTimeline::Before before = m_timeline.begin();
    WordReplacementResult result = wendmark::replaceWords(m_context, replacement);
    if (result.stops.empty())
        return result;
    if (result.stops.size() == 1)
        m_timeline.endAt(result.stops.front(), before, "Replace");
    else
        m_timeline.end(before, "Replace", TourTimeline::Made::pages, model.currentStop);
    model.tourChanged = true;
    m_listeners.tellChange();
    return result;
}

StopListResult StepRunner::type(std::int16_t stop, const Stop& wanted, std::uint64_t burst) {
    using Answer = StopListResult::Answer;
    TourModel& model = m_context.model;
    if (stop < 1 || stop > model.stops.held())
        return {Answer::noSuchStop, 0, {}};
    const StopFields fields = differingFields(model, stop, wanted);
    if (fields.none())
        return {Answer::unchanged, 0, {}};
    TourTimeline::Before before = m_timeline.begin();
    storeFields(m_context, stop, wanted, fields);
    m_timeline.endTyping({stop, fields, burst}, std::move(before), nameOfEdit(fields));
    model.tourChanged = true;
    m_listeners.tellStopContent(stop);
    m_listeners.tellChange();
    return {};
}

} // namespace wendmark
