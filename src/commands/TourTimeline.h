#pragma once

#include "commands/ContentStore.h"
#include "commands/StepHistory.h"
#include "commands/StopEdit.h"
#include "commands/WorkingFiles.h"
#include "model/TourContext.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace wendmark {

/// What a tour was before each command, is, and became again: takes the steps of the history from the model
/// and the files, and leads back and forth along them. Knows also which of these states is the one on the
/// disk.
class TourTimeline final {
public:
    using Made = WorkingFiles::Made;

    /// A tour with its files at one moment.
    struct Before {
        TourState state;
        FileStates files;
        std::optional<Typing> typing; ///< What the step before was, as long as it can go on.
    };

    /// The context must outlive it; `folder` is for contents of files.
    TourTimeline(TourContext& context, std::string folder);

    /// The tour as it is before a command that may replace these files.
    Before begin(const std::vector<std::string>& replacedFiles = {});

    /// Same before a command that leads to another tour, for which no pages need to be made.
    Before beginOtherTour();

    /// The command has ended: if it changed anything, it becomes a step, which redo leads to `placeAfter`.
    void end(const Before& before, const std::string& name, Made made, std::int16_t placeAfter);

    /// Same for one that was about a stop, wherever the author is.
    void endAt(std::int16_t stop, Before before, const std::string& name);

    /// Same for typing at a stop. If it goes on where the last step was, and nothing has begun in between,
    /// that step goes on; it then leads from before the first of the typing to after the last.
    void endTyping(const Typing& typing, Before before, const std::string& name);

    /// Same for one that has opened another tour, with every file of its own.
    void endOpening(const Before& before, const std::string& name);

    /// Files were written that belong to the step before, as a save's framesets do.
    void extend(const FileStates& before, Made made);

    /// Files were written that belong to the command under way.
    void look(Made made);

    /// The files are other ones, and no step leads to them.
    void startAnew(Made made, bool pagesMade);

    /// All files are about to go. `before`, taken at that moment, then knows their contents.
    void keepAll(Before& before);

    /// The working copy is only refilled: the files come back before anything is generated or saved, which
    /// makeReady() sees to.
    void putFilesAway(const FileStates& files) { m_absent = files; }
    bool filesAreThere() const { return !m_absent; }
    void makeReady();

    /// The working copy holds the files of another tour, with its pages.
    void forgetAbsentFiles();

    const Step* lastDone() const { return m_history.lastDone(); }
    const Step* nextUndone() const { return m_history.nextUndone(); }
    std::optional<std::string> undoName() const { return nameOf(lastDone()); }
    std::optional<std::string> redoName() const { return nameOf(nextUndone()); }
    bool undoOpensTour() const { return lastDone() != nullptr && lastDone()->opensTour; }
    bool redoOpensTour() const { return nextUndone() != nullptr && nextUndone()->opensTour; }

    /// One step back or forth; there must be one. The preview is to be shown anew.
    void undo();
    void redo();

    bool isAsSaved() const;
    void noteSaved();

    const BookmarkList& bookmarks() const { return *m_bookmarks; }
    void setBookmarks(BookmarkList list);

    /// Reads them from the working copy.
    const BookmarkList& loadBookmarks();

    /// Writes them there, which belongs to the step before as what a save writes does.
    void saveBookmarks();

    int dropped() const { return m_history.dropped(); }
    std::size_t bytes() const { return m_history.bytes(); }

    /// Grows with each step that was ever taken.
    std::uint64_t lastNumber() const { return m_lastNumber; }

private:
    static std::optional<std::string> nameOf(const Step* step) {
        return step == nullptr ? std::nullopt : std::optional(step->name);
    }
    void bringFilesBack();
    TourState state();
    void addStep(const Before& before, const std::string& name, std::int16_t placeAfter, bool opensTour);
    void go(Step& step, bool back);
    void openFolder(const OpenedTour& open);
    void applyState(const TourState& wanted);
    void limitContents();

    TourContext& m_context;
    ContentStore m_contents;
    WorkingFiles m_files;
    StepHistory m_history;
    SharedBookmarks m_bookmarks;
    TourMoment m_moment; ///< The latest one; parts of the next are shared with it.
    std::uint64_t m_number = 0;
    std::uint64_t m_lastNumber = 0;
    std::map<std::string, std::uint64_t> m_savedNumbers; ///< By tour folder.
    std::optional<FileStates> m_absent; ///< The files of the tour while the working copy was only refilled.
    std::optional<Typing> m_typing;     ///< What the last step was, until anything else begins.
    bool m_pagesMade = false;           ///< The tour's pages are in the working copy.
};

} // namespace wendmark
