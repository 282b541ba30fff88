#include "commands/StepHistory.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace wendmark {

namespace {

std::size_t bytesOf(const SharedBookmarks& bookmarks) {
    std::size_t bytes = 0;
    if (bookmarks) {
        bytes = bookmarks->further.size();
        for (const Bookmark& bookmark : bookmarks->bookmarks)
            bytes += sizeof(Bookmark) + bookmark.address.size() + bookmark.note.size();
    }
    return bytes;
}

std::size_t bytesOf(const Step& step) {
    // What a step shares with the one before it is that one's.
    std::size_t bytes = sizeof(Step) + bytesBeyond(*step.after.tour, step.before.tour.get());
    if (step.before.bookmarks != step.after.bookmarks)
        bytes += bytesOf(step.after.bookmarks);
    for (const auto& [name, change] : step.files)
        bytes += sizeof(change) + 2 * (name.size() + change.before.stamp.size());
    return bytes;
}

/// What a step has changed after it was thought to be complete.
void addLater(FileChanges& files, const FileChanges& changes) {
    for (const auto& [name, change] : changes) {
        const auto [known, isNew] = files.try_emplace(name, change);
        if (!isNew)
            known->second.after = change.after;
    }
}

} // namespace

void StepHistory::add(Step step) {
    m_undone.clear();
    step.bytes = bytesOf(step);
    m_done.push_back(std::move(step));
    limit();
}

void StepHistory::limit() {
    while (m_done.size() > mostSteps || (m_done.size() > 1 && bytes() > mostBytes))
        dropOldest();
}

bool StepHistory::dropOldest() {
    if (m_done.empty())
        return false;
    m_done.pop_front();
    ++m_dropped;
    return true;
}

void StepHistory::extendLast(const TourState& state, const FileChanges& changes) {
    if (!m_done.empty()) {
        Step& last = m_done.back();
        last.after.tour = state.tour;
        addLater(last.files, changes);
    }
    if (m_undone.empty())
        return;
    Step& next = m_undone.back();
    next.before.tour = state.tour;
    for (const auto& [name, change] : changes) {
        // Redoing the step leads to what it led to before.
        const auto [known, isNew] = next.files.try_emplace(name, FileChange{change.after, change.before});
        if (!isNew)
            known->second.before = change.after;
    }
}

void StepHistory::goOnWithLast(TourState after, const FileChanges& changes) {
    Step& last = m_done.back();
    last.after = std::move(after);
    addLater(last.files, changes);
    last.bytes = bytesOf(last);
    limit();
}

void StepHistory::replaceBookmarks(const SharedBookmarks& former, const SharedBookmarks& known) {
    for (auto* const steps : {&m_done, &m_undone}) {
        for (Step& step : *steps) {
            for (TourState* const state : {&step.before, &step.after})
                state->bookmarks = state->bookmarks == former ? known : state->bookmarks;
        }
    }
}

Step StepHistory::takeDone() {
    Step step = std::move(m_done.back());
    m_done.pop_back();
    return step;
}

Step StepHistory::takeUndone() {
    Step step = std::move(m_undone.back());
    m_undone.pop_back();
    return step;
}

std::size_t StepHistory::bytes() const {
    std::size_t bytes = 0;
    for (const auto* const steps : {&m_done, &m_undone}) {
        for (const Step& step : *steps)
            bytes += step.bytes;
    }
    return bytes;
}

std::set<std::string> StepHistory::digests() const {
    std::set<std::string> digests;
    for (const auto* const steps : {&m_done, &m_undone}) {
        for (const Step& step : *steps)
            collectDigests(step.files, digests);
    }
    return digests;
}

} // namespace wendmark
