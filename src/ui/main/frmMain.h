#pragma once

#include "recovery/RecoveryRecord.h"
#include "ui/ProgramParts.h"

#include <QHash>
#include <QMainWindow>
#include <QPointer>
#include <cstdint>
#include <optional>

class QAction;
class QCheckBox;
class QFrame;
class QLabel;
class QMenu;
class QTimer;

namespace wendmark {

class BrowserView;
class CommandBar;
class LoadingIndicator;
class frmBrowser;
class frmHelp;
struct RecoverySession;
class frmNarEdit;
enum class StopCommandResult;

/// The main window: shows the tour as visitors will see it, and starts every command.
class frmMain final : public QMainWindow {
    Q_OBJECT

public:
    explicit frmMain(ProgramParts parts);
    ~frmMain() override;

    /// Reads the settings, fills the working copy and shows its opening page; then offers what a former run
    /// has left unsaved, and if the author does not want it, runs the wizard, or opens the tour in
    /// `tourFolder` if that is not empty. Call once, before the window is shown.
    void load(const QString& tourFolder = QString());

    // The commands, by the names of their menu items.
    void newTour();
    void openTour();
    void save();
    void saveAs();
    void printTourScript();
    void insertStop();
    void deleteStop();
    void moveForward();
    void moveBack();
    void editSiteFrame();
    void editNarrationFrame();
    void editTourProperties();
    void editOptions();
    void showLaunchingInformation();
    void previous();
    void next();
    void stopLoading();
    void refresh();
    void showHelp();
    void showWebSite();
    void showAbout();

    /// Does what the toolbar button with this key does. Unknown keys do nothing.
    void runToolBarCommand(const QString& key);

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
    void setupActions();
    void setupFileMenu();
    void setupEditMenu();
    void setupStopsMenu();
    void setupNavigateMenu();
    void setupViewMenu();
    void setupHelpMenu();
    void setupToolBar();
    void setupCentralWidget();
    void setupStatusBar();
    void setupConnections();

    QAction* addAction(QMenu& menu, const char* name, const QString& caption, const QKeySequence& key,
                       void (frmMain::*command)());

    void readSettings();
    void storeSettings();
    void showOpeningPage();
    void openTourIn(const QString& folder);
    void tellWhetherOpenIsComplete();
    bool offerRecovery();
    void recover(const RecoverySession& session);
    void reopenNarrationEditor();
    std::optional<UnappliedTexts> unappliedTexts() const;
    void keepUnsaved();
    void takeOverSave(bool complete);
    void runWizard();
    void finishWizard();
    void takeOverStatusText(const QString& text, const QUrl& source);
    void takeOverStopNumber(const QString& text);
    bool isLateAnnouncement(std::int16_t stop);
    void reportDeadRenderer(bool comesBack);
    void showStatus(const QString& text);
    void runTicks();
    void finish(StopCommandResult result);
    bool refuseOnOpeningPage(const QString& message);
    void tellNarrationEditor();
    void prepareSiteEdit();
    bool closeSiteEditor();
    bool mayQuit();
    void leaveWorkingCopy();
    void layOutBrowser();

    ProgramParts m_parts;
    BrowserView* m_browser = nullptr;   ///< broMain
    QFrame* m_browserPanel = nullptr;   ///< picBrowser
    CommandBar* m_toolBar = nullptr;    ///< tbToolBar
    QLabel* m_stopNumber = nullptr;     ///< lblStopNum
    LoadingIndicator* m_busy = nullptr; ///< picBusy
    QCheckBox* m_offline = nullptr;     ///< chkOffline
    QLabel* m_statusText = nullptr;
    QLabel* m_statusDate = nullptr;
    QLabel* m_statusTime = nullptr;
    QTimer* m_timer = nullptr; ///< timTimer
    QTimer* m_recoveryTimer = nullptr;
    QHash<QString, QAction*> m_actions; ///< By the names of the menu items.
    QPointer<frmHelp> m_help;
    QPointer<frmBrowser> m_siteEditor;      ///< None while it is closed.
    QPointer<frmNarEdit> m_narrationEditor; ///< None until its first use, and after its close box.
    QString m_lastStatus;                   ///< Shown again when the pointer leaves a link.
    QString m_waitingStopNumber;            ///< Announced between the steps of a command; null: none was.
    bool m_previewComing = false; ///< The browser was sent to a stop that has not announced itself yet.
    std::optional<UnappliedTexts> m_recoveredTexts; ///< For the narration editor, once the window is there.
    bool m_saveInProgress = false;
    bool m_closeAfterSave = false;
    bool m_mayQuit = false; ///< The author was asked, and the window closes as soon as it can.
};

} // namespace wendmark
