#pragma once

#include "commands/DocumentListener.h"
#include "ui/ProgramParts.h"
#include "ui/main/MainCommands.h"
#include "ui/main/ToolBarPanels.h"

#include <QMainWindow>
#include <functional>
#include <memory>

class QTimer;

namespace wendmark {

class CommandBar;
class Editors;
class FileCommands;
class MainDialogs;
class MainStatusBar;
class MakingNotice;
class PlayCommands;
class SidePanels;
class TourPreview;
class UnsavedWork;
enum class StopCommandResult;

/// The main window: shows the tour as visitors will see it, and starts every command.
class frmMain final : public QMainWindow, private DocumentListener {
    Q_OBJECT

public:
    explicit frmMain(ProgramParts parts);
    ~frmMain() override;

    /// Reads the settings, fills the working copy and shows its opening page; then offers what a former run
    /// has left unsaved, and if the author does not want it, runs the wizard, or opens the tour in
    /// `tourFolder` if that is not empty. Call once, before the window is shown.
    void load(const QString& tourFolder = QString());

    // The commands, by the names of their menu items. Given while another one is under way, they wait.
    void newTour();
    void openTour();
    void save();
    void saveAs();
    void openEarlierSave();
    void quit() { close(); }
    void undo();
    void redo();
    void insertStop();
    void deleteStop();
    void moveForward();
    void moveBack();
    void editSiteFrame();
    void editNarrationFrame();
    void previous();
    void next();
    void stopLoading();
    void refresh();
    void showHelp();
    void showWebSite();

    // Further commands.
    Editors& editors() { return *m_editors; }
    MainDialogs& dialogs() { return *m_dialogs; }
    PlayCommands& play() { return *m_play; }
    SidePanels& sides() { return *m_sides; }

    /// Gives the command as its toolbar button and its keys do.
    void give(const MainCommand& command);

    /// What the author has chosen in the box of this name.
    bool isWorkingOffline() const { return m_workOffline; }

    /// Does what the toolbar button with this key does. Unknown keys do nothing.
    void runToolBarCommand(const QString& key);

    /// Takes tours from outside; the program's other commands come through the window.
    FileCommands& files() { return *m_files; }

    /// Comes to the front, restored if it was minimised; with an open dialog, that one. A window that is not
    /// shown yet stays hidden.
    void bringToFront();

signals:
    /// The window has closed and the program is to end.
    void closed();

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void setupToolBar();
    void setupCentralWidget();
    void setupConnections();

    void run(std::function<void()> command);
    void look(std::function<void()> command);
    bool runStopCommand(StopCommandResult (TourDocument::*command)());
    void runTicks();
    bool refuseOnOpeningPage(const QString& message);
    void reopenNarrationEditor();
    bool mayQuit();
    void end();
    void layOutBrowser();
    void showHistory();

    void tourChangedNow() override;
    void currentStopChanged() override;
    void tourSaved(bool complete) override;

    bool m_workOffline = false; ///< The author's choice; nothing else reads it.
    ProgramParts m_parts;
    TourDocument& m_document;
    ActionsByName m_actions;
    CommandBar* m_toolBar = nullptr; ///< tbToolBar
    ToolBarPanels m_toolBarPanels;
    TourPreview* m_preview = nullptr; ///< picBrowser
    MainStatusBar* m_statusBar;       ///< sbStatusBar
    UnsavedWork* m_unsaved;
    FileCommands* m_files;
    PlayCommands* m_play;
    Editors* m_editors;
    MainDialogs* m_dialogs;
    SidePanels* m_sides = nullptr;
    std::unique_ptr<MakingNotice> m_making; ///< In this window's place while it is not there yet.
    QTimer* m_timer = nullptr;              ///< timTimer
    bool m_ended = false;                   ///< The working copy is left; the window may close.
};

} // namespace wendmark
