#pragma once

#include <QObject>
#include <QStringList>
#include <functional>
#include <string>

class QAction;
class QWidget;

namespace wendmark {

class TourDocument;
class UnsavedWork;
struct ProgramParts;

/// New, Open, Save and Save As, with their dialogs and questions. They run as commands of the gate: whoever
/// calls them sees to that.
class FileCommands final : public QObject {
    Q_OBJECT

public:
    /// All must outlive it; dialogs stand over `window`. `mayLeaveWords` asks the author about words that
    /// stand in an editor only; false: the tour stays.
    FileCommands(const ProgramParts& parts, UnsavedWork& unsaved, QWidget& window,
                 std::function<bool()> mayLeaveWords);

    void newTour();
    void openTour();
    void save();
    void saveAs();

    /// No question about unsaved changes: undo brings back what was on screen.
    void openEarlierSave();

    /// Opens the tour in this folder as openTour() does, or says why not.
    void openTourIn(const QString& folder);

    /// Gives the item a menu of the tours that the author has worked on last. One that is chosen there goes
    /// through the gate.
    void offerLastTours(QAction& item);

    /// Opens the first of these tours, which another start of the program has handed over, when its turn has
    /// come; names the others. A tour that is open already stays as it is.
    void takeTours(const QStringList& tours);

    /// Says which tours are not opened because another one is.
    void nameLeftOut(const QStringList& tours);

    /// The program goes on with recovered work, and leaves out the tour that it was started with, if any.
    void skipWizard(const QString& tour);

    /// The program has just started: the wizard begins with its first page.
    bool wizardFirstRun = false;

signals:
    /// The tour's files are about to go: what works on them is to be put away.
    void filesLeaving();

    /// Another tour is about to come: whatever belongs to the present one is to be put away.
    void tourLeaving();

    /// The tour's properties were reset, and with them what is not stored in any tour.
    void defaultsSet();

    void newTourMade();
    void noticeShown(const QString& text);

private:
    void openHandedOver(const QString& folder);
    bool mayLeaveTour();
    void noteTour();
    bool mayOpenSaveOf(const QString& tour);
    void askWizard();
    void openFolder(const QString& folder);
    void saveInto(const std::string& folder);
    bool mayOverwrite();

    const ProgramParts& m_parts;
    TourDocument& m_document;
    UnsavedWork& m_unsaved;
    QWidget& m_window;
    std::function<bool()> m_mayLeaveWords;
};

} // namespace wendmark
