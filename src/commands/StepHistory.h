#pragma once

#include "commands/WorkingFiles.h"
#include "model/SiteLists.h"
#include "model/Workspace.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace wendmark {

using SharedBookmarks = std::shared_ptr<const BookmarkList>;

/// Which tour is open, for commands that change that.
struct OpenedTour {
    std::string tourPath;
    Workspace::Spared spared;
    bool pagesMade = false; ///< Its pages are in the working copy.
};

/// Everything of the tour but its files, at one moment.
struct TourState {
    TourMoment tour;
    SharedBookmarks bookmarks;
    OpenedTour open;
    std::int16_t stop = 0;    ///< Where the author is, or where the change was; 0 is the opening page.
    std::uint64_t number = 0; ///< Equal numbers mean equal states.
};

/// One command that changed the tour.
struct Step {
    std::string name; ///< As it stands behind "Undo".
    TourState before;
    TourState after;
    FileChanges files;
    bool opensTour = false; ///< Another tour was opened: undoing leads back to the former one.
    std::size_t bytes = 0;  ///< What it takes in memory, roughly; set by the history.
};

/// The steps that were done and those that were undone. Bounded in memory: the oldest steps go first.
class StepHistory final {
public:
    /// Bytes of all steps' texts and of what is kept about their files, roughly.
    static constexpr std::size_t mostBytes = 48'000'000;
    static constexpr std::size_t mostSteps = 1000;

    const Step* lastDone() const { return m_done.empty() ? nullptr : &m_done.back(); }
    const Step* nextUndone() const { return m_undone.empty() ? nullptr : &m_undone.back(); }

    /// A step was done: what was undone cannot be redone any more. Returns how many old steps had to go, all
    /// in all.
    void add(Step step);

    /// How many steps had to be dropped so far.
    int dropped() const { return m_dropped; }

    /// Something that is no step of its own has changed files or texts after the last step: undoing that step
    /// undoes this, too.
    void extendLast(const TourState& state, const FileChanges& changes);

    /// The last step, which there must be, goes on: it has led to this state and changed these files, too.
    void goOnWithLast(TourState after, const FileChanges& changes);

    /// The bookmarks of some states were not known until now.
    void replaceBookmarks(const SharedBookmarks& former, const SharedBookmarks& known);

    Step takeDone();
    Step takeUndone();
    void putDone(Step step) { m_done.push_back(std::move(step)); }
    void putUndone(Step step) { m_undone.push_back(std::move(step)); }

    /// Drops the oldest step that can be undone; false when there is none.
    bool dropOldest();

    std::size_t bytes() const;
    std::set<std::string> digests() const;
    std::size_t size() const { return m_done.size() + m_undone.size(); }

private:
    void limit();

    std::deque<Step> m_done;
    std::deque<Step> m_undone; ///< The next to redo last.
    int m_dropped = 0;
};

} // namespace wendmark
