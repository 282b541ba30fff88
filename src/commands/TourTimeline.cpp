#include "commands/TourTimeline.h"

#include "base/Files.h"
#include "base/Log.h"
#include "commands/TourSave.h"
#include "model/Desktop.h"
#include "model/TourModel.h"
#include "publish/TourPages.h"

#include <algorithm>
#include <utility>

namespace wendmark {

namespace {

constexpr std::string_view bookmarksName = "goodlist.txt";

} // namespace

TourTimeline::TourTimeline(TourContext& context, std::string folder)
    : m_context(context)
    , m_contents(std::move(folder), context.log)
    , m_files(context, m_contents)
    , m_bookmarks(std::make_shared<const BookmarkList>()) {}

TourTimeline::Before TourTimeline::begin(const std::vector<std::string>& replacedFiles) {
    makeReady();
    m_files.look(Made::nothing, nullptr);
    m_files.keepGenerated();
    for (const std::string& name : replacedFiles)
        m_files.keep(name);
    return {state(), m_files.states(), std::exchange(m_typing, std::nullopt)};
}

TourTimeline::Before TourTimeline::beginOtherTour() {
    bringFilesBack();
    m_files.look(Made::nothing, nullptr);
    m_files.keepGenerated();
    m_typing.reset();
    return {state(), m_files.states(), std::nullopt};
}

void TourTimeline::end(const Before& before, const std::string& name, Made made, std::int16_t placeAfter) {
    m_files.look(made, state().tour);
    addStep(before, name, placeAfter, false);
}

void TourTimeline::endAt(std::int16_t stop, Before before, const std::string& name) {
    before.state.stop = stop;
    end(before, name, Made::pages, stop);
}

void TourTimeline::endTyping(const Typing& typing, Before before, const std::string& name) {
    // The history may have let go of the step meanwhile.
    const std::uint64_t former = m_number;
    const bool goesOn =
        before.typing == typing && lastDone() != nullptr && lastDone()->after.number == before.state.number;
    if (goesOn) {
        m_files.look(Made::pages, state().tour);
        m_number = ++m_lastNumber;
        TourState after = state();
        after.stop = typing.stop;
        m_history.goOnWithLast(std::move(after), changesBetween(before.files, m_files.states()));
        limitContents();
    } else {
        endAt(typing.stop, std::move(before), name);
    }
    if (m_number != former)
        m_typing = typing;
}

void TourTimeline::endOpening(const Before& before, const std::string& name) {
    m_bookmarks = std::make_shared<const BookmarkList>();
    addStep(before, name, 0, true);
}

void TourTimeline::extend(const FileStates& before, Made made) {
    const TourState now = state();
    m_files.look(made, now.tour);
    m_history.extendLast(now, changesBetween(before, m_files.states()));
}

void TourTimeline::look(Made made) {
    m_files.look(made, state().tour);
}

void TourTimeline::startAnew(Made made, bool pagesMade) {
    m_pagesMade = pagesMade;
    m_files.look(made, state().tour);
    if (made != Made::nothing)
        m_number = ++m_lastNumber;
}

void TourTimeline::keepAll(Before& before) {
    m_files.keepAll();
    before.files = m_files.states();
}

/// After a cancelled New the working copy holds the templates, and before the first command of all no pages:
/// nothing may be generated or saved from that.
void TourTimeline::makeReady() {
    bringFilesBack();
    if (m_pagesMade)
        return;
    m_pagesMade = true;
    makeEveryPage(m_context);
    m_files.look(Made::pages, state().tour);
}

void TourTimeline::bringFilesBack() {
    if (!m_absent)
        return;
    FileStates wanted = std::move(*m_absent);
    m_absent.reset();
    m_files.look(Made::nothing, nullptr);
    for (const auto& [name, present] : m_files.states())
        wanted.try_emplace(name);
    m_files.restore(wanted);
    useEditingNavigator(m_context);
}

void TourTimeline::forgetAbsentFiles() {
    m_absent.reset();
    m_pagesMade = true;
    m_files.look(Made::pages, state().tour);
}

void TourTimeline::undo() {
    Step step = m_history.takeDone();
    go(step, true);
    m_history.putUndone(std::move(step));
}

void TourTimeline::redo() {
    Step step = m_history.takeUndone();
    go(step, false);
    m_history.putDone(std::move(step));
}

bool TourTimeline::isAsSaved() const {
    const auto saved = m_savedNumbers.find(m_context.workspace.tourPath());
    return saved != m_savedNumbers.end() && saved->second == m_number;
}

void TourTimeline::noteSaved() {
    m_savedNumbers[m_context.workspace.tourPath()] = m_number;
}

void TourTimeline::setBookmarks(BookmarkList list) {
    m_typing.reset();
    m_bookmarks = std::make_shared<const BookmarkList>(std::move(list));
}

const BookmarkList& TourTimeline::loadBookmarks() {
    const files::Contents file = files::read(m_context.workspace.workingFile(bookmarksName));
    m_context.log.skipAsNote(file.outcome);
    const SharedBookmarks former = m_bookmarks;
    setBookmarks(readBookmarks(file.bytes));
    m_history.replaceBookmarks(former, m_bookmarks);
    return *m_bookmarks;
}

void TourTimeline::saveBookmarks() {
    const FileStates before = begin({std::string(bookmarksName)}).files;
    const std::string bytes = bookmarksFile(*m_bookmarks);
    m_context.log.skip(m_context.workspace.writeWorkingFile(bookmarksName, bytes));
    extend(before, Made::nothing);
}

TourState TourTimeline::state() {
    m_moment = momentOf(m_context.model, m_moment);
    const Workspace& workspace = m_context.workspace;
    return {m_moment,
            m_bookmarks,
            {workspace.tourPath(), workspace.spared(), m_pagesMade},
            m_context.model.currentStop,
            m_number};
}

void TourTimeline::addStep(const Before& before, const std::string& name, std::int16_t placeAfter,
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

/// Leads from one side of the step to the other. What redo, or the next undo, is to bring back is what the
/// files hold now.
void TourTimeline::go(Step& step, bool back) {
    const BusyPointer busy(m_context.desktop);
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
    makeReady();
}

void TourTimeline::openFolder(const OpenedTour& open) {
    m_context.workspace.setTourPath(open.tourPath);
    m_context.workspace.setSpared(open.spared);
    m_pagesMade = open.pagesMade;
    useEditingNavigator(m_context);
}

void TourTimeline::applyState(const TourState& wanted) {
    TourModel& model = m_context.model;
    restoreMoment(*wanted.tour, model);
    m_moment = wanted.tour;
    m_bookmarks = wanted.bookmarks;
    m_number = wanted.number;
    model.currentStop = std::clamp<std::int16_t>(wanted.stop, 0, model.stopCount());
    model.tourChanged = !isAsSaved();
}

void TourTimeline::limitContents() {
    while (m_contents.bytes() > ContentStore::mostBytes && m_history.dropOldest())
        m_contents.keepOnly(m_history.digests());
}

} // namespace wendmark
