#include "commands/TourDocument.h"

#include "base/Files.h"
#include "base/Log.h"
#include "commands/TourCommands.h"
#include "commands/TourSave.h"
#include "model/Desktop.h"
#include "model/FoundLinks.h"
#include "model/ScriptFile.h"
#include "publish/Framesets.h"
#include "publish/StopPages.h"
#include "publish/TourChoicesFile.h"
#include "publish/TourPages.h"

#include <algorithm>
#include <utility>

namespace wendmark {

namespace {

constexpr const char* logoName = "fr-logo.gif";

} // namespace

TourDocument::TourDocument(WorkspaceFolders folders, Desktop& desktop, Log& log, std::string historyFolder)
    : m_desktop(desktop)
    , m_log(log)
    , m_workspace(std::move(folders), m_model, desktop, log)
    , m_context{m_model, m_workspace, desktop, log}
    , m_timeline(m_context, std::move(historyFolder))
    , m_runner(m_context, m_timeline, m_listeners) {}

void TourDocument::startProgram(Options& options) {
    wendmark::startProgram(m_context, options);
}

void TourDocument::showTemplateTour() {
    const ScriptReading reading = loadTemplateTour(m_context);
    // Without templates there is nothing to make pages of.
    m_timeline.startAnew(Made::nothing, !reading.couldBeRead);
    m_timeline.noteSaved();
}

void TourDocument::recover(const TourModel& tour, const std::string& tourPath,
                           const std::function<void()>& restoreFiles) {
    m_workspace.setTourPath(tourPath);
    restoreFiles();
    m_model = tour;
    generateRecoveredTour(m_context);
    m_timeline.startAnew(Made::pages, true);
    m_listeners.tellChange();
}

void TourDocument::makeFinalForm() {
    useFinalNavigator(m_context);
    m_model.editingMode = false;
    makeWorkingFrameset(m_context);
    makeTourFramesets(m_context);
    makeWordsAndChoices(m_context);
}

void TourDocument::beginOpening() {
    m_opening = m_timeline.beginOtherTour();
    m_workspace.initTourDefaults();
}

Opening TourDocument::finishOpening(const std::string& folder) {
    m_timeline.keepAll(*m_opening);
    m_workspace.setTourPath(folder);
    const ScriptReading reading = openTour(m_context);
    m_timeline.forgetAbsentFiles();
    m_refusedFolder.clear();
    m_openedWithoutTitle = reading.couldBeRead && !reading.hasTitle;
    m_timeline.endOpening(takeOpening(), "Open Tour");
    m_timeline.noteSaved();
    m_listeners.tellChange();
    return {!m_workspace.isIncomplete(), !m_openedWithoutTitle};
}

void TourDocument::cancelOpening() {
    m_timeline.keepAll(*m_opening);
    makeEveryPage(m_context); // Or the tour, once saved, would not play as its script says.
    m_timeline.end(takeOpening(), "Cancelled Open", Made::pages, m_model.currentStop);
    m_model.tourChanged = false;
    m_listeners.tellChange();
}

void TourDocument::beginNew() {
    m_opening = m_timeline.beginOtherTour();
    m_timeline.keepAll(*m_opening);
    m_timeline.putFilesAway(m_opening->files);
    m_workspace.resetWorkingCopy();
}

bool TourDocument::finishNew(const std::string& title, const std::string& folder) {
    const BusyPointer busy(m_desktop);
    m_workspace.setTourPath(folder);
    generateNewTour(m_context, title);
    m_timeline.forgetAbsentFiles();
    m_refusedFolder.clear();
    m_openedWithoutTitle = false;
    const bool complete = saveTour(m_context);
    m_timeline.look(Made::everyForm);
    m_timeline.endOpening(takeOpening(), "New Tour");
    tellSave(complete);
    m_listeners.tellChange();
    return complete;
}

TourTimeline::Before TourDocument::takeOpening() {
    TourTimeline::Before before = std::move(*m_opening);
    m_opening.reset();
    return before;
}

bool TourDocument::openScript(std::string_view script) {
    if (TourModel other; !parseScript(script, other, [](int, std::string_view) {}).hasTitle)
        return false;
    const TourTimeline::Before before = m_timeline.begin();
    generateScriptedTour(m_context, script);
    m_timeline.end(before, "Open Earlier Save", Made::pages, 0);
    markChanged();
    m_listeners.tellPlace();
    return true;
}

bool TourDocument::save() {
    const FileStates before = m_timeline.begin().files;
    const bool complete = saveTour(m_context);
    return endSave(complete, before);
}

bool TourDocument::saveAs(const std::string& folder) {
    const FileStates before = m_timeline.begin().files;
    m_workspace.setTourPath(folder);
    m_refusedFolder.clear();
    m_openedWithoutTitle = false;
    const bool complete = saveTourAs(m_context);
    return endSave(complete, before);
}

const std::string& TourDocument::shownTourPath() const {
    return m_refusedFolder.empty() ? m_workspace.tourPath() : m_refusedFolder;
}

/// What a save changes in the working copy belongs to the step before it.
bool TourDocument::endSave(bool complete, const FileStates& before) {
    m_timeline.extend(before, Made::everyForm);
    tellSave(complete);
    return complete;
}

void TourDocument::tellSave(bool complete) {
    if (complete)
        m_timeline.noteSaved();
    m_listeners.tellSave(complete);
}

void TourDocument::setAddress(std::int16_t stop, const std::string& address) {
    m_untested.erase(address);
    m_runner.setAddress(stop, address);
}

StopListResult TourDocument::setStop(std::int16_t stop, const Stop& fields, std::uint64_t burst) {
    if (stop >= 1 && stop <= m_model.stops.held() && m_model.stops.at(stop).stopURL != fields.stopURL)
        noteUntested(fields.stopURL);
    return m_runner.type(stop, fields, burst);
}

WordReplacementResult TourDocument::replaceWords(const WordReplacement& replacement) {
    WordReplacementResult result = m_runner.replaceWords(replacement);
    for (const std::string& address : result.addresses)
        noteUntested(address);
    return result;
}

void TourDocument::noteUntested(const std::string& address) {
    if (isWebAddress(address))
        m_untested.insert(address);
}

StopCommandResult TourDocument::showNextStop() {
    return m_runner.show(wendmark::showNextStop);
}

StopCommandResult TourDocument::showPreviousStop() {
    return m_runner.show(wendmark::showPreviousStop);
}

void TourDocument::showCurrentStop() {
    m_timeline.makeReady();
    makePreviewFrameset(m_context);
}

void TourDocument::goToStop(std::int16_t stop) {
    m_model.currentStop = std::clamp<std::int16_t>(stop, 0, m_model.stopCount());
    showCurrentStop();
    m_listeners.tellPlace();
}

void TourDocument::takeAnnouncedStop(std::int16_t stop) {
    m_model.currentStop = stop;
    m_listeners.tellPlace();
}

void TourDocument::setProperties(const TourProperties& properties,
                                 const std::function<void()>& refuseDimension) {
    const TourTimeline::Before before =
        m_timeline.begin({properties.logoFile.empty() ? std::string() : logoName});
    changeTourProperties(m_context, properties, refuseDimension);
    m_timeline.end(before, "Tour Properties", Made::pages, m_model.currentStop);
    m_listeners.tellChange();
}

std::vector<std::string> TourDocument::addFiles(const std::vector<AddedFile>& files,
                                                const std::string& stepName) {
    const TourTimeline::Before before = m_timeline.begin(namesOf(files));
    std::vector<std::string> notCopied = addFilesOfAuthor(m_context, files);
    m_timeline.end(before, stepName, Made::nothing, m_model.currentStop);
    m_listeners.tellChange();
    return notCopied;
}

void TourDocument::markChanged() {
    m_model.tourChanged = true;
    m_listeners.tellChange();
}

void TourDocument::setBookmarks(BookmarkList list, const std::string& stepName) {
    m_model.tourChanged = true;
    const TourTimeline::Before before = m_timeline.begin();
    m_timeline.setBookmarks(std::move(list));
    m_timeline.end(before, stepName, Made::nothing, m_model.currentStop);
    m_listeners.tellChange();
}

void TourDocument::undo() {
    if (m_timeline.lastDone() == nullptr)
        return;
    m_timeline.undo();
    showAfterStep();
}

void TourDocument::redo() {
    if (m_timeline.nextUndone() == nullptr)
        return;
    m_timeline.redo();
    showAfterStep();
}

void TourDocument::showAfterStep() {
    m_refusedFolder.clear();
    m_openedWithoutTitle = false;
    makePreviewFrameset(m_context);
    m_listeners.tellPlace();
    m_listeners.tellChange();
}

} // namespace wendmark
