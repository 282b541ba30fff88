#pragma once

#include "commands/DocumentListeners.h"
#include "commands/StepRunner.h"
#include "commands/StopCommands.h"
#include "commands/StopListCommands.h"
#include "commands/TourProperties.h"
#include "commands/TourTimeline.h"
#include "model/Options.h"
#include "model/TourContext.h"
#include "model/TourModel.h"
#include "model/Workspace.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace wendmark {

/// What opening a tour has come to.
struct Opening {
    bool complete = true; ///< False: something of the tour could not be read; saves leave that alone.
    bool hasTitle = true; ///< False: its script is empty or ends before a title. The tour on screen is what
                          ///< was there before; see TourDocument::mayOverwrite().
};

/// The tour that is being edited, and the one door through which it changes. Each command regenerates the
/// pages that it touches, is one step of the history, and tells the listeners. Windows and engine are none of
/// its business.
class TourDocument final {
public:
    /// `historyFolder` is for contents of files that undo needs; nobody else uses it. Desktop and log must
    /// outlive the document.
    TourDocument(WorkspaceFolders folders, Desktop& desktop, Log& log, std::string historyFolder);
    TourDocument(const TourDocument&) = delete;
    TourDocument& operator=(const TourDocument&) = delete;

    const TourModel& model() const { return m_model; }
    const Workspace& workspace() const { return m_workspace; }
    Desktop& desktop() const { return m_desktop; }
    Log& log() const { return m_log; }

    /// The listener must be taken out before it goes.
    void addListener(DocumentListener& listener) { m_listeners.add(listener); }
    void removeListener(DocumentListener& listener) { m_listeners.remove(listener); }

    // The program's beginning and end.

    /// Makes the working copy's folder if it is missing, and sets what a program starts with.
    void startProgram(Options& options);

    /// Fills working copy and model from the templates. No page is made yet.
    void showTemplateTour();

    /// Takes over a tour of a former run: `restoreFiles` puts the author's files into the working copy.
    void recover(const TourModel& tour, const std::string& tourPath,
                 const std::function<void()>& restoreFiles);

    /// Brings the working copy into the form of a saved tour, as a program that ends does.
    void makeFinalForm();

    /// Leaves nothing of the tour in the working copy. Waits a moment in between.
    void leaveWorkingCopy() { m_workspace.leaveOnlyTemplateScript(); }

    // Other tours. What begins with begin...() ends with finish...() or cancel...().

    /// Resets the tour's properties to what a tour starts with.
    void beginOpening();
    Opening finishOpening(const std::string& folder);
    /// The tour stays, its properties stay reset; one step of the history.
    void cancelOpening();

    /// Refills the working copy from the templates, while the model stays.
    void beginNew();
    /// Makes the new tour and saves it into `folder`, which exists. False when something of it was not saved.
    bool finishNew(const std::string& title, const std::string& folder);
    /// The tour stays. Its files come back before anything is generated or saved next.
    void cancelNew() { m_opening.reset(); }
    /// False between beginNew() and that moment, and while another tour is being opened: what there is then
    /// is no tour of the author's.
    bool filesAreThere() const { return m_timeline.filesAreThere() && !m_opening; }

    /// Puts what a script says in the place of the tour: one step of the history, on the opening page. Folder
    /// and files of the author's stay, and the tour counts as changed. False, and nothing changes, when the
    /// script holds no title.
    bool openScript(std::string_view script);

    // Saving.

    /// Saves into the tour's folder, which must be set. False when something of it was not saved.
    bool save();
    /// Same, into a folder that was just made for it; the launch list stays as it is.
    bool saveAs(const std::string& folder);
    /// What a dialog was refused stays visible as the tour's folder; nothing is ever saved there.
    void showRefusedFolder(const std::string& folder) { m_refusedFolder = folder; }
    /// Folder of the tour as windows and sheets show it.
    const std::string& shownTourPath() const;
    /// Whether the tour has a folder that a save may write into: none was refused since it was opened.
    bool hasFolder() const { return m_refusedFolder.empty() && !m_workspace.tourPath().empty(); }
    /// Whether the folder holds a script that did not open as a tour, so that saving would lose it.
    bool mayOverwrite() const { return !m_openedWithoutTitle; }
    /// The author wants the folder to become this tour.
    void agreeToOverwrite() { m_openedWithoutTitle = false; }

    // Stops. They work on the current one.

    StopCommandResult insertStop() { return m_runner.insertStop(); }
    StopCommandResult deleteStop() { return m_runner.deleteStop(); }
    StopCommandResult moveStopForward() { return m_runner.moveStopForward(); }
    StopCommandResult moveStopBack() { return m_runner.moveStopBack(); }
    /// Of a page that has passed the frame test.
    void setAddress(std::int16_t stop, const std::string& address);
    /// Stop 0, the opening page, has no texts: nothing is stored, but the tour counts as changed.
    void setTexts(std::int16_t stop, const StopTexts& texts) { m_runner.setTexts(stop, texts); }

    // Several stops at once; see StopListCommands.h. Each is one step, or changes nothing at all.

    StopListResult moveStops(const StopNumbers& stops, std::int16_t target) {
        return m_runner.moveStops(stops, target);
    }
    StopListResult removeStops(const StopNumbers& stops) { return m_runner.removeStops(stops); }
    StopListResult duplicateStops(const StopNumbers& stops) { return m_runner.duplicateStops(stops); }
    StopListResult insertStops(std::int16_t position, const std::vector<Stop>& stops,
                               const std::vector<AddedFile>& files = {}) {
        return m_runner.insertStops(position, stops, files);
    }

    /// Of pages that were found to be shown in frames, or that come into the tour as these files.
    StopListResult changeAddresses(const std::map<std::int16_t, std::string>& addresses,
                                   const std::string& stepName, const std::vector<AddedFile>& files = {}) {
        return m_runner.changeAddresses(addresses, stepName, files);
    }

    /// Replaces words in many stops as one step; see StopReplace.h. Addresses that this changes are untested.
    WordReplacementResult replaceWords(const WordReplacement& replacement);

    /// Stores what was typed into the fields of a stop, any of them; see StepRunner::type(). Listeners hear
    /// which stop it was, and the main browser is sent nowhere.
    StopListResult setStop(std::int16_t stop, const Stop& fields, std::uint64_t burst);

    /// Whether the page at this address came into the tour by typing, pasting or dropping, and no frame test
    /// has passed it since, in this run of the program.
    bool isUntested(const std::string& address) const { return m_untested.contains(address); }
    /// Says so of a page of the web; of other addresses there is nothing to say.
    void noteUntested(const std::string& address);

    // The place in the tour.

    StopCommandResult showNextStop();
    StopCommandResult showPreviousStop();
    /// Shows the current stop, or the opening page, anew.
    void showCurrentStop();
    /// Same for stop `stop`, 0 to the number of stops.
    void goToStop(std::int16_t stop);
    /// The page on screen has said that it is this stop's.
    void takeAnnouncedStop(std::int16_t stop);

    // The whole tour.

    /// See changeTourProperties().
    void setProperties(const TourProperties& properties, const std::function<void()>& refuseDimension);
    /// Copies files of the author's into the working copy, in place of those of their names that are there:
    /// one step. Names of those that could not be copied; why is in the log.
    std::vector<std::string> addFiles(const std::vector<AddedFile>& files, const std::string& stepName);
    /// Same for one file. False when it could not be copied.
    bool addFile(const std::string& source, const std::string& name, const std::string& stepName) {
        return addFiles({{source, name}}, stepName).empty();
    }
    /// The tour counts as changed from now on, whatever else happens.
    void markChanged();

    // Bookmarks of the site editor.

    const BookmarkList& loadBookmarks() { return m_timeline.loadBookmarks(); }
    const BookmarkList& bookmarks() const { return m_timeline.bookmarks(); }
    void setBookmarks(BookmarkList list, const std::string& stepName);
    void saveBookmarks() { m_timeline.saveBookmarks(); }

    // History.

    /// Names of the step that undo() or redo() would deal with; none when there is none.
    std::optional<std::string> undoName() const { return m_timeline.undoName(); }
    std::optional<std::string> redoName() const { return m_timeline.redoName(); }
    /// Whether that step leads to another tour, as undoing Open Tour does.
    bool undoOpensTour() const { return m_timeline.undoOpensTour(); }
    bool redoOpensTour() const { return m_timeline.redoOpensTour(); }
    void undo();
    void redo();
    /// How many of the oldest steps had to be dropped since the program began.
    int droppedSteps() const { return m_timeline.dropped(); }
    std::size_t historyBytes() const { return m_timeline.bytes(); }

    /// Whether the tour is what was saved, or opened, last in its folder. Where the author is does not count.
    bool isAsSaved() const { return m_timeline.isAsSaved(); }

private:
    friend struct TourDocumentAccess; ///< For tests that need a tour in a certain state.

    using Made = WorkingFiles::Made;

    TourTimeline::Before takeOpening();
    bool endSave(bool complete, const FileStates& before);
    void tellSave(bool complete);
    void showAfterStep();

    TourModel m_model;
    Desktop& m_desktop;
    Log& m_log;
    Workspace m_workspace;
    TourContext m_context;
    TourTimeline m_timeline;
    DocumentListeners m_listeners;
    StepRunner m_runner;
    std::optional<TourTimeline::Before> m_opening; ///< Before the command that is to open a tour.
    bool m_openedWithoutTitle = false;
    std::string m_refusedFolder;
    std::set<std::string> m_untested; ///< Addresses.
};

} // namespace wendmark
