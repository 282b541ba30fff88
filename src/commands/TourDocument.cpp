#include "commands/TourDocument.h"

#include "base/Files.h"
#include "base/Log.h"
#include "commands/TourCommands.h"
#include "commands/TourSave.h"
#include "model/Desktop.h"
#include "model/ScriptFile.h"
#include "publish/Framesets.h"
#include "publish/StopPages.h"
#include "publish/TourPages.h"

#include <algorithm>
#include <utility>

namespace wendmark {

namespace {

constexpr std::string_view bookmarksName = "goodlist.txt";
constexpr const char* logoName = "fr-logo.gif";

} // namespace

TourDocument::TourDocument(WorkspaceFolders folders, Desktop& desktop, Log& log, std::string historyFolder)
    : m_desktop(desktop)
    , m_log(log)
    , m_workspace(std::move(folders), m_model, desktop, log)
    , m_context{m_model, m_workspace, desktop, log}
    , m_contents(std::move(historyFolder), log)
    , m_files(m_context, m_contents)
    , m_bookmarks(std::make_shared<const BookmarkList>()) {}

void TourDocument::addListener(DocumentListener& listener) {
    m_listeners.push_back(&listener);
}

void TourDocument::removeListener(DocumentListener& listener) {
    std::erase(m_listeners, &listener);
}

void TourDocument::startProgram(Options& options) {
    wendmark::startProgram(m_context, options);
}

void TourDocument::showTemplateTour() {
    loadTemplateTour(m_context);
    m_pagesMade = false;
    m_files.look(Made::nothing, state().tour);
    noteSaved();
}

void TourDocument::recover(const TourModel& tour, const std::string& tourPath,
                           const std::function<void()>& restoreFiles) {
    m_workspace.setTourPath(tourPath);
    restoreFiles();
    m_model = tour;
    generateRecoveredTour(m_context);
    m_pagesMade = true;
    m_files.look(Made::pages, state().tour);
    m_number = ++m_lastNumber;
    tellChange();
}

void TourDocument::makeFinalForm() {
    useFinalNavigator(m_context);
    m_model.editingMode = false;
    makeWorkingFrameset(m_context);
    makeTourFramesets(m_context);
}

void TourDocument::leaveWorkingCopy() {
    m_workspace.leaveOnlyTemplateScript();
}

void TourDocument::beginOpening() {
    m_opening = begin();
    m_workspace.initTourDefaults();
}

Opening TourDocument::finishOpening(const std::string& folder) {
    m_files.keepAll();
    m_opening->files = m_files.states();
    m_workspace.setTourPath(folder);
    const ScriptReading reading = openTour(m_context);
    m_pagesMade = true;
    m_refusedFolder.clear();
    m_openedWithoutTitle = reading.couldBeRead && !reading.hasTitle;
    const Before before = std::move(*m_opening);
    m_opening.reset();
    m_files.look(Made::pages, state().tour);
    m_bookmarks = std::make_shared<const BookmarkList>();
    addStep(before, "Open Tour", 0, true);
    noteSaved();
    tellChange();
    return {!m_workspace.isIncomplete(), !m_openedWithoutTitle};
}

void TourDocument::cancelOpening() {
    const Before before = std::move(*m_opening);
    m_opening.reset();
    end(before, "Cancelled Open", Made::nothing);
    m_model.tourChanged = false;
    tellChange();
}

void TourDocument::beginNew() {
    bringFilesBack();
    m_files.look(Made::nothing, nullptr);
    m_files.keepAll();
    m_opening = begin();
    m_absent = m_files.states();
    m_workspace.resetWorkingCopy();
}

bool TourDocument::finishNew(const std::string& title, const std::string& folder) {
    const BusyPointer busy(m_desktop);
    m_workspace.setTourPath(folder);
    m_absent.reset();
    generateNewTour(m_context, title);
    m_pagesMade = true;
    m_refusedFolder.clear();
    m_openedWithoutTitle = false;
    m_files.look(Made::pages, state().tour);
    const bool complete = saveTour(m_context);
    m_files.look(Made::everyForm, state().tour);
    m_bookmarks = std::make_shared<const BookmarkList>();
    const Before before = std::move(*m_opening);
    m_opening.reset();
    addStep(before, "New Tour", 0, true);
    if (complete)
        noteSaved();
    tell([complete](DocumentListener& listener) { listener.tourSaved(complete); });
    tellChange();
    return complete;
}

void TourDocument::cancelNew() {
    m_opening.reset();
}

bool TourDocument::save() {
    const FileStates before = begin().files;
    const bool complete = saveTour(m_context);
    return endSave(complete, before);
}

bool TourDocument::saveAs(const std::string& folder) {
    const FileStates before = begin().files;
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
    const TourState now = state();
    m_files.look(Made::everyForm, now.tour);
    m_history.extendLast(now, changesBetween(before, m_files.states()));
    if (complete)
        noteSaved();
    tell([complete](DocumentListener& listener) { listener.tourSaved(complete); });
    return complete;
}

StopCommandResult TourDocument::insertStop() {
    return runStopCommand(wendmark::insertStop, "Insert Stop");
}

StopCommandResult TourDocument::deleteStop() {
    return runStopCommand(wendmark::deleteStop, "Delete Stop");
}

StopCommandResult TourDocument::moveStopForward() {
    return runStopCommand(wendmark::moveStopForward, "Move Stop Forward");
}

StopCommandResult TourDocument::moveStopBack() {
    return runStopCommand(wendmark::moveStopBack, "Move Stop Back");
}

void TourDocument::setAddress(std::int16_t stop, const std::string& address) {
    const BusyPointer busy(m_desktop);
    Before before = begin();
    m_model.stops.at(stop).stopURL = address;
    makeStopPages(m_context, stop, stop);
    makeTourGuide(m_context);
    makePreviewFrameset(m_context);
    endAt(stop, before, "Use this Site");
}

void TourDocument::setTexts(std::int16_t stop, const StopTexts& texts) {
    const BusyPointer busy(m_desktop);
    m_model.tourChanged = true;
    if (stop < 1 || stop > m_model.stops.held()) {
        tellChange();
        return;
    }
    Before before = begin();
    Stop& changed = m_model.stops.at(stop);
    changed.stopNarration = texts.narration;
    changed.stopTitle = texts.title;
    changed.stopInstruction = m_model.autoInstruction ? std::string(automaticInstruction) : texts.instruction;
    makeStopPages(m_context, stop, stop);
    makeContentsPage(m_context);
    makeTourGuide(m_context);
    makePreviewFrameset(m_context);
    endAt(stop, before, "Narration");
}

StopCommandResult TourDocument::showNextStop() {
    return show(wendmark::showNextStop);
}

StopCommandResult TourDocument::showPreviousStop() {
    return show(wendmark::showPreviousStop);
}

void TourDocument::showCurrentStop() {
    bringFilesBack();
    makePreviewFrameset(m_context);
}

void TourDocument::goToStop(std::int16_t stop) {
    m_model.currentStop = std::clamp<std::int16_t>(stop, 0, m_model.stopCount());
    showCurrentStop();
    tell([](DocumentListener& listener) { listener.currentStopChanged(); });
}

void TourDocument::takeAnnouncedStop(std::int16_t stop) {
    m_model.currentStop = stop;
    tell([](DocumentListener& listener) { listener.currentStopChanged(); });
}

void TourDocument::setProperties(const TourProperties& properties,
                                 const std::function<void()>& refuseDimension) {
    const Before before = begin(properties.logoFile.empty() ? std::string() : logoName);
    changeTourProperties(m_context, properties, refuseDimension);
    end(before, "Tour Properties", Made::pages);
}

Outcome TourDocument::addFile(const std::string& source, const std::string& name,
                              const std::string& stepName) {
    const Before before = begin(name);
    Outcome copied = Outcome::success();
    if (!files::same(source, m_workspace.workingFile(name)))
        copied = m_workspace.copyToWorkingFile(source, name);
    m_log.skip(copied);
    end(before, stepName, Made::nothing);
    return copied;
}

void TourDocument::markChanged() {
    m_model.tourChanged = true;
    tellChange();
}

const BookmarkList& TourDocument::loadBookmarks() {
    const files::Contents file = files::read(m_workspace.workingFile(bookmarksName));
    m_log.skipAsNote(file.outcome);
    m_bookmarks = std::make_shared<const BookmarkList>(readBookmarks(file.bytes));
    return *m_bookmarks;
}

void TourDocument::setBookmarks(BookmarkList list, const std::string& stepName) {
    m_model.tourChanged = true;
    const Before before = begin();
    m_bookmarks = std::make_shared<const BookmarkList>(std::move(list));
    end(before, stepName, Made::nothing);
}

/// Belongs to the step before it, as what a save writes does.
void TourDocument::saveBookmarks() {
    const FileStates before = begin(std::string(bookmarksName)).files;
    m_log.skip(m_workspace.writeWorkingFile(bookmarksName, bookmarksFile(*m_bookmarks)));
    const TourState now = state();
    m_files.look(Made::nothing, now.tour);
    m_history.extendLast(now, changesBetween(before, m_files.states()));
}

std::optional<std::string> TourDocument::undoName() const {
    const Step* const step = m_history.lastDone();
    return step == nullptr ? std::nullopt : std::optional(step->name);
}

std::optional<std::string> TourDocument::redoName() const {
    const Step* const step = m_history.nextUndone();
    return step == nullptr ? std::nullopt : std::optional(step->name);
}

void TourDocument::undo() {
    if (m_history.lastDone() == nullptr)
        return;
    Step step = m_history.takeDone();
    go(step, true);
    m_history.putUndone(std::move(step));
    tellChange();
}

void TourDocument::redo() {
    if (m_history.nextUndone() == nullptr)
        return;
    Step step = m_history.takeUndone();
    go(step, false);
    m_history.putDone(std::move(step));
    tellChange();
}

bool TourDocument::isAsSaved() const {
    const auto saved = m_savedNumbers.find(m_workspace.tourPath());
    return saved != m_savedNumbers.end() && saved->second == m_number;
}

/// The tour as it is before a command that may replace this file.
TourDocument::Before TourDocument::begin(const std::string& replacedFile) {
    bringFilesBack();
    m_files.look(Made::nothing, nullptr);
    m_files.keepGenerated();
    if (!replacedFile.empty())
        m_files.keep(replacedFile);
    return {state(), m_files.states()};
}

void TourDocument::end(const Before& before, const std::string& name, Made made) {
    m_files.look(made, state().tour);
    addStep(before, name, m_model.currentStop, false);
    tellChange();
}

/// Same for a command that was about one stop, wherever the author is.
void TourDocument::endAt(std::int16_t stop, Before& before, const std::string& name) {
    before.state.stop = stop;
    m_files.look(Made::pages, state().tour);
    addStep(before, name, stop, false);
    tellChange();
}

void TourDocument::addStep(const Before& before, const std::string& name, std::int16_t placeAfter,
                           bool opensTour) {
    Step step{name, before.state, state(), changesBetween(before.files, m_files.states()), opensTour, 0};
    const bool differs = opensTour || step.before.tour != step.after.tour || !step.files.empty() ||
                         step.before.bookmarks != step.after.bookmarks;
    if (!differs)
        return;
    m_number = ++m_lastNumber;
    step.after.number = m_number;
    step.after.stop = placeAfter;
    m_history.add(std::move(step));
    limitContents();
}

StopCommandResult TourDocument::runStopCommand(StopCommandResult (*command)(TourContext&),
                                               const std::string& name) {
    const Before before = begin();
    const StopCommandResult result = command(m_context);
    if (result == StopCommandResult::done)
        end(before, name, Made::pages);
    return result;
}

StopCommandResult TourDocument::show(StopCommandResult (*command)(TourContext&)) {
    bringFilesBack();
    const StopCommandResult result = command(m_context);
    tell([](DocumentListener& listener) { listener.currentStopChanged(); });
    return result;
}

TourState TourDocument::state() {
    m_moment = momentOf(m_model, m_moment);
    return {
        m_moment, m_bookmarks, {m_workspace.tourPath(), m_workspace.spared()}, m_model.currentStop, m_number};
}

/// After a cancelled New the working copy holds the templates, and before the first command of all no pages:
/// nothing may be generated or saved from that.
void TourDocument::bringFilesBack() {
    if (m_absent) {
        const FileStates wanted = std::move(*m_absent);
        m_absent.reset();
        m_files.look(Made::nothing, nullptr);
        FileStates all = wanted;
        for (const auto& [name, present] : m_files.states())
            all.try_emplace(name);
        m_files.restore(all);
        useEditingNavigator(m_context);
    }
    if (m_pagesMade)
        return;
    m_pagesMade = true;
    makeEveryPage(m_context);
    m_files.look(Made::pages, state().tour);
}

/// Leads from one side of the step to the other. What redo, or the next undo, is to bring back is what the
/// files hold now.
void TourDocument::go(Step& step, bool back) {
    const BusyPointer busy(m_desktop);
    const TourState now = begin().state;
    TourState& left = back ? step.after : step.before;
    left.open = now.open;
    FileStates wanted;
    for (auto& [name, change] : step.files) {
        m_files.keep(name);
        const auto present = m_files.states().find(name);
        (back ? change.after : change.before) =
            present == m_files.states().end() ? FileState() : present->second;
        wanted[name] = back ? change.before : change.after;
    }
    m_files.restore(wanted);
    const TourState& target = back ? step.before : step.after;
    if (step.opensTour)
        openFolder(target.open);
    applyState(target);
}

void TourDocument::openFolder(const OpenTour& open) {
    m_workspace.setTourPath(open.tourPath);
    m_workspace.setSpared(open.spared);
    m_refusedFolder.clear();
    m_openedWithoutTitle = false;
    useEditingNavigator(m_context);
}

void TourDocument::applyState(const TourState& wanted) {
    restoreMoment(*wanted.tour, m_model);
    m_moment = wanted.tour;
    m_bookmarks = wanted.bookmarks;
    m_number = wanted.number;
    m_model.currentStop = std::clamp<std::int16_t>(wanted.stop, 0, m_model.stopCount());
    m_model.tourChanged = !isAsSaved();
    makePreviewFrameset(m_context);
    tell([](DocumentListener& listener) { listener.currentStopChanged(); });
}

void TourDocument::noteSaved() {
    m_savedNumbers[m_workspace.tourPath()] = m_number;
}

void TourDocument::limitContents() {
    while (m_contents.bytes() > ContentStore::mostBytes && m_history.dropOldest())
        m_contents.keepOnly(m_history.digests());
}

template <typename Tell>
void TourDocument::tell(Tell tell) {
    for (DocumentListener* const listener : std::vector(m_listeners))
        tell(*listener);
}

void TourDocument::tellChange() {
    tell([](DocumentListener& listener) {
        listener.tourChangedNow();
        listener.filesChanged();
    });
}

} // namespace wendmark
