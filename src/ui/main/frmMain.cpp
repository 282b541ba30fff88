#include "ui/main/frmMain.h"

#include "base/Files.h"
#include "base/Log.h"
#include "base/Numbers.h"
#include "maker.h"
#include "ui/HandOver.h"
#include "model/Options.h"
#include "model/TourContext.h"
#include "model/TourModel.h"
#include "model/Workspace.h"
#include "platform/BrowserView.h"
#include "platform/Icons.h"
#include "platform/QtDesktop.h"
#include "platform/Settings.h"
#include "platform/Strings.h"
#include "platform/Twips.h"
#include "publish/Framesets.h"
#include "commands/StopCommands.h"
#include "commands/TourCommands.h"
#include "commands/TourSave.h"
#include "recovery/RecoveryKeeper.h"
#include "recovery/SavedScripts.h"
#include "ui/Messages.h"
#include "ui/controls/CommandBar.h"
#include "ui/controls/LoadingIndicator.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/dialogs/frmAbout.h"
#include "ui/dialogs/frmHelp.h"
#include "ui/dialogs/frmLaunch.h"
#include "ui/dialogs/frmOptions.h"
#include "ui/dialogs/frmPrint.h"
#include "ui/dialogs/frmPropTab.h"
#include "ui/dialogs/frmRecover.h"
#include "ui/dialogs/frmSelectFolderOpen.h"
#include "ui/dialogs/frmSelectFolderSave.h"
#include "ui/dialogs/frmWizard1.h"
#include "ui/dialogs/frmWizard2.h"
#include "ui/dialogs/frmWizard3.h"
#include "ui/narration/frmNarEdit.h"
#include "ui/site/frmBrowser.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QDateTime>
#include <QFrame>
#include <QLabel>
#include <QLocale>
#include <QMenuBar>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>
#include <utility>

namespace wendmark {

namespace {

constexpr QLatin1String stopTag(">*>*>vosktourstop->");
constexpr int tickInterval = 100; // Milliseconds.

// Twips.
constexpr float smallestWidth = 6000;
constexpr float smallestHeight = 5000;
constexpr float besidePanel = 400;
constexpr float aboveAndBelowPanel = 1000;
constexpr float besideBrowser = 60;

struct ToolBarButton {
    const char* key;
    const char* toolTip;
    const char* action;
    void (frmMain::*command)();
    bool changesTour; ///< Started from the toolbar, the command marks the tour as changed.
};

constexpr int recoveryInterval = 500; // Milliseconds.

constexpr ToolBarButton toolBarButtons[] = {
    {"New", "New Tour", "mnuFileNew", &frmMain::newTour, false},
    {"Open", "Open Tour", "mnuFileOpen", &frmMain::openTour, false},
    {"Save", "Save Tour", "mnuFileSave", &frmMain::save, false},
    {"Print", "Print Tour Script", "mnuFilePrint", &frmMain::printTourScript, false},
    {"Properties", "Edit Tour Properties", "mnuEditProperties", &frmMain::editTourProperties, false},
    {"EdBro", "Edit Site Frame", "mnuEditSite", &frmMain::editSiteFrame, false},
    {"EdNar", "Edit Narration Frame", "mnuEditNarration", &frmMain::editNarrationFrame, false},
    {"Insert", "Insert Stop (after this stop)", "mnuStopsInsert", &frmMain::insertStop, true},
    {"Delete", "Delete Stop", "mnuStopsDelete", &frmMain::deleteStop, true},
    {"Forward", "Push Stop Forward", "mnuStopsForward", &frmMain::moveForward, true},
    {"Back", "Push Stop Backward", "mnuStopsBack", &frmMain::moveBack, true},
    {"Prev", "Go to Previous Stop", "mnuNavigatePrev", &frmMain::previous, false},
    {"Next", "Go to Next Stop", "mnuNavigateNext", &frmMain::next, false},
    {"Stop", "Stop Loading", "mnuNavigateStop", &frmMain::stopLoading, false},
    {"Help", "Wendmark Help", "mnuHelpContents", &frmMain::showHelp, false},
};

/// Buttons after which the toolbar leaves a gap.
bool endsGroup(const QString& key) {
    static const QStringList ends = {QStringLiteral("Print"), QStringLiteral("EdNar"), QStringLiteral("Back"),
                                     QStringLiteral("Stop")};
    return ends.contains(key);
}

QString lines(const QString& first, const QString& second) {
    return first + QStringLiteral("\r\n") + second;
}

} // namespace

frmMain::frmMain(ProgramParts parts) : m_parts(std::move(parts)) {
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(programTitle());
    setMinimumSize(pixelsFromTwips(smallestWidth), pixelsFromTwips(smallestHeight));
    setupActions();
    setupToolBar();
    setupCentralWidget();
    setupStatusBar();
    setupConnections();
}

frmMain::~frmMain() {
    m_parts.recovery.unappliedTexts = nullptr;
}

void frmMain::load(const QString& tourFolder) {
    readSettings();
    loadTemplateTour(m_parts.tour);
    showOpeningPage();
    m_parts.recovery.noteSaved();
    m_recoveryTimer->start();
    m_parts.handOver.wizardFirstRun = true;
    if (offerRecovery())
        m_parts.handOver.wizardFirstRun = false;
    else if (tourFolder.isEmpty())
        newTour();
    else
        openTourIn(tourFolder);
}

void frmMain::newTour() {
    const bool changed = m_parts.tour.model.tourChanged;
    if (changed && !askYesNo(this, tr("Are you sure you want to overwrite the current tour?"),
                             QStringLiteral("Wendmark : Abandon changes"), QMessageBox::Critical))
        return;
    closeSiteEditor();
    m_parts.tour.workspace.resetWorkingCopy();
    m_parts.handOver.wizardTourTitle.clear();
    m_parts.handOver.wizardTourName.clear();
    runWizard();
}

void frmMain::openTour() {
    TourContext& tour = m_parts.tour;
    if (tour.model.tourChanged &&
        !askYesNo(this, lines(tr("Do you really want to open a new tour without saving this one?"),
                              tr("All changes to the current Tour will be lost."))))
        return;
    tour.workspace.initTourDefaults();
    frmSelectFolderOpen dialog(m_parts.handOver, tour.workspace, this);
    runDialog(dialog);
    if (m_parts.handOver.openFolderChosen) {
        closeSiteEditor();
        wendmark::openTour(tour);
        m_parts.recovery.noteSaved();
        tellWhetherOpenIsComplete();
    }
    tour.model.tourChanged = false;
    tellNarrationEditor();
}

void frmMain::save() {
    TourContext& tour = m_parts.tour;
    if (tour.workspace.tourPath().empty()) {
        saveAs();
        return;
    }
    const BusyPointer busy(tour.desktop);
    takeOverSave(saveTour(tour));
}

void frmMain::saveAs() {
    frmSelectFolderSave dialog(m_parts.handOver, m_parts.tour.workspace, this);
    runDialog(dialog);
    m_saveInProgress = true;
    {
        const BusyPointer busy(m_parts.tour.desktop);
        if (m_parts.handOver.saveFolderChosen)
            takeOverSave(saveTourAs(m_parts.tour));
    }
    m_saveInProgress = false;
    if (m_closeAfterSave) {
        m_closeAfterSave = false;
        close();
    }
}

void frmMain::printTourScript() {
    frmPrint dialog(m_parts.tour, m_parts.handOver, m_parts.desktop, this);
    connect(&dialog, &frmPrint::printedToFile, this,
            [this](const QString& path) { showStatus(tr("Printed to %1").arg(path)); });
    runDialog(dialog);
}

void frmMain::insertStop() {
    finish(wendmark::insertStop(m_parts.tour));
}

void frmMain::deleteStop() {
    if (!refuseOnOpeningPage(tr("The opening page of the tour cannot be deleted")))
        finish(wendmark::deleteStop(m_parts.tour));
}

void frmMain::moveForward() {
    finish(moveStopForward(m_parts.tour));
}

void frmMain::moveBack() {
    finish(moveStopBack(m_parts.tour));
}

void frmMain::editSiteFrame() {
    if (refuseOnOpeningPage(tr("The opening page of the tour is not editable")))
        return;
    prepareSiteEdit();
    if (m_siteEditor.isNull() || m_siteEditor->isHidden()) {
        m_siteEditor = new frmBrowser(m_parts, this);
        m_siteEditor->load();
        m_siteEditor->show();
    } else {
        m_siteEditor->showStop();
    }
}

void frmMain::prepareSiteEdit() {
    const TourContext& tour = m_parts.tour;
    HandOver& handOver = m_parts.handOver;
    handOver.siteEditURL = tour.model.stops.at(tour.model.currentStop).stopURL;
    if (!isRemoteAddress(handOver.siteEditURL))
        handOver.siteEditURL.insert(0, tour.workspace.folders().newTourPath);
    handOver.siteEditResult.clear();
    handOver.mainWindowBounds = {twipsFromPixels(x()), twipsFromPixels(y()), twipsFromPixels(width()),
                                 twipsFromPixels(height())};
}

/// The site editor's lists belong to the tour that is in the working copy. False when it cannot close yet.
bool frmMain::closeSiteEditor() {
    return m_siteEditor.isNull() || m_siteEditor->isHidden() || m_siteEditor->close();
}

void frmMain::editNarrationFrame() {
    if (refuseOnOpeningPage(tr("The opening page of the tour is not editable")))
        return;
    if (m_narrationEditor.isNull())
        m_narrationEditor = new frmNarEdit(m_parts, this);
    m_narrationEditor->editCurrentStop();
}

void frmMain::editTourProperties() {
    frmPropTab dialog(m_parts.tour, m_parts.handOver, m_parts.desktop, this);
    runDialog(dialog);
    makePreviewFrameset(m_parts.tour);
}

void frmMain::editOptions() {
    frmOptions dialog(m_parts.options, this);
    runDialog(dialog);
}

void frmMain::showLaunchingInformation() {
    frmLaunch dialog(m_parts.tour, m_parts.desktop, this);
    connect(&dialog, &frmLaunch::printedToFile, this,
            [this](const QString& path) { showStatus(tr("Printed to %1").arg(path)); });
    runDialog(dialog);
}

void frmMain::previous() {
    finish(showPreviousStop(m_parts.tour));
}

void frmMain::next() {
    finish(showNextStop(m_parts.tour));
}

void frmMain::stopLoading() {
    m_browser->stop();
}

void frmMain::refresh() {
    makePreviewFrameset(m_parts.tour);
}

void frmMain::showHelp() {
    const QString helpFolder = toQString(m_parts.tour.workspace.folders().appPath) + QStringLiteral("/Help");
    if (m_help.isNull())
        m_help = new frmHelp(m_parts.browserProfile, helpFolder, this);
    m_help->showPage(helpFolder + QStringLiteral("/index.htm"));
}

void frmMain::showWebSite() {
    showHelp();
    m_help->showPage(QLatin1String(makerSiteURL));
}

void frmMain::showAbout() {
    frmAbout dialog(m_parts.registry, this);
    runDialog(dialog);
}

void frmMain::runToolBarCommand(const QString& key) {
    for (const ToolBarButton& button : toolBarButtons) {
        if (key != QLatin1String(button.key))
            continue;
        if (button.changesTour)
            m_parts.tour.model.tourChanged = true;
        (this->*button.command)();
        return;
    }
}

void frmMain::bringToFront() {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    QWidget* const dialog = QApplication::activeModalWidget();
    QWidget* const front = dialog == nullptr ? this : dialog;
    front->raise();
    front->activateWindow();
}

void frmMain::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (!mayQuit())
        return;
    m_mayQuit = true;
    if (!closeSiteEditor()) {
        connect(m_siteEditor, &frmBrowser::closed, this, &QWidget::close, Qt::QueuedConnection);
        return;
    }
    if (m_saveInProgress) {
        // Save As waits further up the stack and could never finish below a wait from here.
        m_closeAfterSave = true;
        return;
    }
    m_recoveryTimer->stop();
    leaveWorkingCopy();
    m_parts.recovery.forget();
    event->accept();
    emit closed();
}

void frmMain::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    if (!isMinimized())
        layOutBrowser();
}

void frmMain::setupActions() {
    setupFileMenu();
    setupEditMenu();
    setupStopsMenu();
    setupNavigateMenu();
    setupViewMenu();
    setupHelpMenu();
}

void frmMain::setupFileMenu() {
    QMenu& menu = *menuBar()->addMenu(tr("&File"));
    addAction(menu, "mnuFileNew", tr("&New"), QKeySequence::New, &frmMain::newTour);
    addAction(menu, "mnuFileOpen", tr("&Open..."), QKeySequence::Open, &frmMain::openTour);
    menu.addSeparator();
    addAction(menu, "mnuFileSave", tr("&Save"), QKeySequence::Save, &frmMain::save);
    addAction(menu, "mnuFileSaveAs", tr("Save &As..."), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S),
              &frmMain::saveAs);
    menu.addSeparator();
    addAction(menu, "mnuFilePrint", tr("&Print..."), QKeySequence::Print, &frmMain::printTourScript);
    menu.addSeparator();
    QAction* const quit =
        menu.addAction(tr("E&xit"), QKeySequence(Qt::CTRL | Qt::Key_Q), this, &QWidget::close);
    quit->setObjectName(QStringLiteral("mnuFileExit"));
}

void frmMain::setupEditMenu() {
    QMenu& menu = *menuBar()->addMenu(tr("&Edit"));
    addAction(menu, "mnuEditProperties", tr("Tour &Properties"), QKeySequence(Qt::Key_F3),
              &frmMain::editTourProperties);
    addAction(menu, "mnuEditSite", tr("&Site Frame"), QKeySequence(Qt::Key_F2), &frmMain::editSiteFrame);
    addAction(menu, "mnuEditNarration", tr("&Narration Frame"), QKeySequence(Qt::Key_F4),
              &frmMain::editNarrationFrame);
}

void frmMain::setupStopsMenu() {
    QMenu& menu = *menuBar()->addMenu(tr("&Stops"));
    addAction(menu, "mnuStopsInsert", tr("&Insert"), QKeySequence(Qt::CTRL | Qt::Key_Insert),
              &frmMain::insertStop);
    addAction(menu, "mnuStopsDelete", tr("&Delete"), QKeySequence(Qt::CTRL | Qt::Key_Delete),
              &frmMain::deleteStop);
    menu.addSeparator();
    addAction(menu, "mnuStopsForward", tr("Move &Forward"),
              QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_PageDown), &frmMain::moveForward);
    addAction(menu, "mnuStopsBack", tr("Move &Back"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_PageUp),
              &frmMain::moveBack);
}

void frmMain::setupNavigateMenu() {
    QMenu& menu = *menuBar()->addMenu(tr("&Navigate"));
    addAction(menu, "mnuNavigatePrev", tr("&Prev"), QKeySequence(Qt::CTRL | Qt::Key_PageUp),
              &frmMain::previous);
    addAction(menu, "mnuNavigateNext", tr("&Next"), QKeySequence(Qt::CTRL | Qt::Key_PageDown),
              &frmMain::next);
    addAction(menu, "mnuNavigateStop", tr("&Stop"), QKeySequence(Qt::SHIFT | Qt::Key_Escape),
              &frmMain::stopLoading);
}

void frmMain::setupViewMenu() {
    QMenu& menu = *menuBar()->addMenu(tr("&View"));
    addAction(menu, "mnuViewRefresh", tr("&Refresh"), QKeySequence(Qt::Key_F5), &frmMain::refresh);
    addAction(menu, "mnuViewOptions", tr("&Options..."), QKeySequence(Qt::CTRL | Qt::Key_Comma),
              &frmMain::editOptions);
    addAction(menu, "mnuViewLaunch", tr("&Launching Information"), {}, &frmMain::showLaunchingInformation);
}

void frmMain::setupHelpMenu() {
    QMenu& menu = *menuBar()->addMenu(tr("&Help"));
    addAction(menu, "mnuHelpContents", tr("Wendmark &Help"), QKeySequence(Qt::Key_F1), &frmMain::showHelp);
    addAction(menu, "mnuHelpWeb", tr("Wendmark &Web-site"), {}, &frmMain::showWebSite);
    menu.addSeparator();
    addAction(menu, "mnuHelpAbout", tr("&About"), {}, &frmMain::showAbout);
}

void frmMain::setupToolBar() {
    m_toolBar = new CommandBar(this);
    m_toolBar->setObjectName(QStringLiteral("tbToolBar"));
    for (const ToolBarButton& button : toolBarButtons) {
        const QString key = QLatin1String(button.key);
        m_toolBar->addButton(key, tr(button.toolTip), *m_actions.value(QLatin1String(button.action)));
        if (endsGroup(key))
            m_toolBar->addGap();
    }

    auto* const stopPanel = new QFrame;
    stopPanel->setObjectName(QStringLiteral("picStopNum"));
    stopPanel->setToolTip(tr("Current Stop Number"));
    stopPanel->setFrameShape(QFrame::StyledPanel);
    m_stopNumber = new QLabel(stopPanel);
    m_stopNumber->setObjectName(QStringLiteral("lblStopNum"));
    m_stopNumber->setAccessibleName(tr("Current Stop Number"));
    m_stopNumber->setAlignment(Qt::AlignCenter);
    m_stopNumber->setTextFormat(Qt::PlainText);
    m_stopNumber->setFixedWidth(m_stopNumber->fontMetrics().horizontalAdvance(QStringLiteral("000")));
    auto* const stopLayout = new QVBoxLayout(stopPanel);
    stopLayout->setContentsMargins(dialogGap / 2, dialogGap / 4, dialogGap / 2, dialogGap / 4);
    stopLayout->addWidget(m_stopNumber);

    m_busy = new LoadingIndicator;
    m_busy->setObjectName(QStringLiteral("picBusy"));
    m_busy->setToolTip(tr("Loading Status"));
    m_busy->setAccessibleName(tr("Loading Status"));
    m_offline = new QCheckBox(tr("Work Offline"));
    m_offline->setObjectName(QStringLiteral("chkOffline"));

    m_toolBar->addPlaceholder(QStringLiteral("picStopNum"), stopPanel);
    m_toolBar->addPlaceholder(QStringLiteral("picBusy"), m_busy);
    m_toolBar->addPlaceholder(QStringLiteral("chkOffline"), m_offline);
}

void frmMain::setupCentralWidget() {
    auto* const central = new QWidget(this);
    m_browserPanel = new QFrame(central);
    m_browserPanel->setObjectName(QStringLiteral("picBrowser"));
    m_browserPanel->setFrameShape(QFrame::StyledPanel);
    m_browser = new BrowserView(m_parts.browserProfile, m_browserPanel);
    m_browser->setObjectName(QStringLiteral("broMain"));
    m_browser->setAccessibleName(tr("The tour as visitors see it"));
    m_browser->setAllowedFolders({toQString(m_parts.tour.workspace.folders().newTourPath)});
    auto* const panelLayout = new QVBoxLayout(m_browserPanel);
    panelLayout->setContentsMargins({});
    panelLayout->addWidget(m_browser);

    auto* const layout = new QVBoxLayout(central);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addWidget(m_toolBar);
    layout->addWidget(m_browserPanel, 1);
    setCentralWidget(central);
    m_browser->setFocus(); // Not the first button of the toolbar, where a blank would start a new tour.
}

void frmMain::setupStatusBar() {
    statusBar()->setObjectName(QStringLiteral("sbStatusBar"));
    m_statusText = new QLabel(this);
    m_statusText->setObjectName(QStringLiteral("Status"));
    m_statusText->setAccessibleName(tr("Status"));
    m_statusText->setTextFormat(Qt::PlainText);
    m_statusText->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_statusDate = new QLabel(this);
    m_statusDate->setObjectName(QStringLiteral("Date"));
    m_statusTime = new QLabel(this);
    m_statusTime->setObjectName(QStringLiteral("Time"));
    statusBar()->addWidget(m_statusText, 1);
    statusBar()->addPermanentWidget(m_statusDate);
    statusBar()->addPermanentWidget(m_statusTime);
}

void frmMain::setupConnections() {
    m_timer = new QTimer(this);
    m_timer->setObjectName(QStringLiteral("timTimer"));
    connect(m_timer, &QTimer::timeout, this, &frmMain::runTicks);
    m_timer->start(tickInterval);
    m_recoveryTimer = new QTimer(this);
    m_recoveryTimer->setInterval(recoveryInterval);
    connect(m_recoveryTimer, &QTimer::timeout, this, &frmMain::keepUnsaved);
    m_parts.recovery.unappliedTexts = [this] { return unappliedTexts(); };
    connect(m_toolBar, &CommandBar::buttonClicked, this, &frmMain::runToolBarCommand);
    connect(m_offline, &QCheckBox::toggled, this,
            [this](bool checked) { m_parts.handOver.workOffline = checked; });
    connect(m_browser, &BrowserView::statusTextChanged, this, &frmMain::takeOverStatusText);
    connect(m_browser, &BrowserView::linkHovered, this,
            [this](const QString& address) { showStatus(address.isEmpty() ? m_lastStatus : address); });
    connect(&m_parts.desktop, &QtDesktop::mainBrowserNavigationRequested, this,
            [this](const QString& address) {
                m_previewComing = true;
                m_browser->navigate(address);
            });
    connect(m_browser, &BrowserView::rendererDied, this, &frmMain::reportDeadRenderer);
    connect(m_browser, &BrowserView::navigationCompleted, this,
            [this] { m_previewComing = m_previewComing && m_browser->isBusy(); });
}

QAction* frmMain::addAction(QMenu& menu, const char* name, const QString& caption, const QKeySequence& key,
                            void (frmMain::*command)()) {
    auto* const action = new QAction(themedIcon(QLatin1String(name)), caption, this);
    action->setObjectName(QLatin1String(name));
    action->setShortcut(key);
    menu.addAction(action);
    m_actions.insert(action->objectName(), action);
    connect(action, &QAction::triggered, this, command);
    return action;
}

void frmMain::readSettings() {
    SettingsStore& settings = m_parts.settings;
    move(pixelsFromTwips(settings.read(mainSettings::left)),
         pixelsFromTwips(settings.read(mainSettings::top)));
    resize(pixelsFromTwips(settings.read(mainSettings::width)),
           pixelsFromTwips(settings.read(mainSettings::height)));
    // Whatever place was stored: only the size counts.
    centreOnScreen(*this);
    m_parts.options.htmlEditorPath = toUtf8(settings.read(mainSettings::htmlEditor));
    m_parts.options.warnURLChange = settings.read(mainSettings::warnURLChange);
    m_parts.options.autoCloseBrowser = settings.read(mainSettings::autoCloseBrowser);
}

void frmMain::storeSettings() {
    SettingsStore& settings = m_parts.settings;
    if (!isMinimized()) {
        settings.store(mainSettings::left, twipsFromPixels(x()));
        settings.store(mainSettings::top, twipsFromPixels(y()));
        settings.store(mainSettings::width, twipsFromPixels(width()));
        settings.store(mainSettings::height, twipsFromPixels(height()));
    }
    settings.store(mainSettings::htmlEditor, toQString(m_parts.options.htmlEditorPath));
    settings.store(mainSettings::warnURLChange, m_parts.options.warnURLChange);
    settings.store(mainSettings::autoCloseBrowser, m_parts.options.autoCloseBrowser);
}

void frmMain::showOpeningPage() {
    m_browser->navigate(toQString(m_parts.tour.workspace.workingFile("fv1.htm")));
}

void frmMain::openTourIn(const QString& folder) {
    TourContext& tour = m_parts.tour;
    if (!mayOpenTourIn(folder, tour.workspace.folders(), this))
        return;
    if (!folderHoldsTour(toUtf8(folder))) {
        showMessage(this, tr("The selected folder does not contain all necessary tour files"),
                    QStringLiteral("Wendmark: Defective Tour Folder"), QMessageBox::Warning);
        return;
    }
    tour.workspace.initTourDefaults();
    tour.workspace.setTourPath(toUtf8(folder));
    wendmark::openTour(tour);
    m_parts.recovery.noteSaved();
    tellWhetherOpenIsComplete();
    m_parts.handOver.wizardFirstRun = false;
    tellNarrationEditor();
}

void frmMain::tellWhetherOpenIsComplete() {
    if (!m_parts.tour.workspace.isIncomplete())
        return;
    m_lastStatus = tr("Something of the tour could not be read. The log says what; saving leaves it alone.");
    showStatus(m_lastStatus);
}

/// True when the author goes on with a tour of a former run.
bool frmMain::offerRecovery() {
    for (const RecoverySession& session : m_parts.recovery.leftovers()) {
        frmRecover dialog(session.record, this);
        runDialog(dialog);
        if (dialog.choice() == frmRecover::Choice::recover) {
            recover(session);
            return true;
        }
        if (dialog.choice() == frmRecover::Choice::notNow)
            return false;
        m_parts.recovery.discard(session);
    }
    return false;
}

void frmMain::recover(const RecoverySession& session) {
    m_recoveredTexts = session.record.unapplied;
    m_parts.recovery.recover(session, QDateTime::currentSecsSinceEpoch());
}

void frmMain::reopenNarrationEditor() {
    TourModel& model = m_parts.tour.model;
    if (model.currentStop < 1) {
        model.currentStop = 1;
        makePreviewFrameset(m_parts.tour);
    }
    editNarrationFrame();
    m_narrationEditor->takeUnappliedTexts(*m_recoveredTexts);
    m_recoveredTexts.reset();
}

std::optional<UnappliedTexts> frmMain::unappliedTexts() const {
    if (m_recoveredTexts || m_narrationEditor.isNull())
        return m_recoveredTexts;
    return m_narrationEditor->unappliedTexts();
}

void frmMain::keepUnsaved() {
    if (m_parts.desktop.isBetweenSteps())
        return; // Half of a change is nothing to recover.
    if (m_recoveredTexts && isVisible())
        reopenNarrationEditor();
    m_parts.recovery.check(QDateTime::currentSecsSinceEpoch());
}

void frmMain::takeOverSave(bool complete) {
    const TourContext& tour = m_parts.tour;
    if (complete) {
        m_parts.recovery.noteSaved();
    } else {
        m_lastStatus = tr("The tour was not saved completely. The log says what failed.");
        showStatus(m_lastStatus);
    }
    const files::Contents script = files::read(tour.workspace.tourFile("script.txt"));
    if (script.outcome.ok())
        tour.log.skip(keepSavedScript(m_parts.savedScripts, tour.workspace.tourPath(), script.bytes,
                                      QDateTime::currentSecsSinceEpoch()));
}

void frmMain::runWizard() {
    HandOver& handOver = m_parts.handOver;
    Workspace& workspace = m_parts.tour.workspace;
    const std::string formerTourPath = workspace.tourPath();
    const bool hasFirstPage = handOver.wizardFirstRun;
    int page = hasFirstPage ? 1 : 2;
    while (page <= 3) {
        handOver.wizardMove = WizardMove::none;
        if (page == 1) {
            handOver.wizardFirstRun = false;
            frmWizard1 dialog(handOver, this);
            runDialog(dialog);
        } else if (page == 2) {
            frmWizard2 dialog(handOver, hasFirstPage, this);
            runDialog(dialog);
        } else {
            frmWizard3 dialog(handOver, workspace, m_parts.desktop, this);
            runDialog(dialog);
        }
        if (handOver.wizardResult == WizardResult::closed) {
            // A folder that was refused must not become the place where the present tour is saved.
            workspace.setTourPath(formerTourPath);
            return;
        }
        if (page == 1 && !handOver.wizardNewTour) {
            openTour();
            return;
        }
        page += handOver.wizardMove == WizardMove::back ? -1 : 1;
    }
    finishWizard();
}

void frmMain::finishWizard() {
    takeOverSave(finishNewTour(m_parts.tour, m_parts.handOver));
    showOpeningPage();
    tellNarrationEditor();
}

void frmMain::takeOverStatusText(const QString& text, const QUrl& source) {
    m_lastStatus = text;
    showStatus(text);
    // Only pages of the working copy tell which stop is on screen.
    if (text.startsWith(stopTag) && source.isLocalFile())
        takeOverStopNumber(text.mid(stopTag.size()));
}

void frmMain::takeOverStopNumber(const QString& text) {
    if (m_parts.desktop.isBetweenSteps()) {
        m_waitingStopNumber = text;
        return; // The command still needs its stop.
    }
    const std::int16_t stop = roundTo16Bits(leadingNumber(toUtf8(text))).value_or(0);
    const bool canBe = stop >= 0 && stop <= tourCapacity; // Pages of a tour may say anything.
    if (!canBe || isLateAnnouncement(stop))
        return;
    m_stopNumber->setText(text);
    m_parts.tour.model.currentStop = stop;
    tellNarrationEditor();
}

bool frmMain::isLateAnnouncement(std::int16_t stop) {
    // Until the stop that the browser was sent to is there, the page before it may still announce its own.
    if (m_previewComing && stop != m_parts.tour.model.currentStop)
        return true;
    m_previewComing = false;
    return false;
}

void frmMain::reportDeadRenderer(bool comesBack) {
    const QString what = comesBack ? tr("The page has crashed and is loaded again")
                                   : tr("The page keeps crashing and stays away until you choose Refresh");
    m_parts.tour.log.warn(toUtf8(what));
    m_lastStatus = what;
    showStatus(what);
}

void frmMain::showStatus(const QString& text) {
    m_statusText->setText(text);
}

void frmMain::runTicks() {
    if (!m_waitingStopNumber.isNull() && !m_parts.desktop.isBetweenSteps())
        takeOverStopNumber(std::exchange(m_waitingStopNumber, QString()));
    m_busy->tick(m_browser->isBusy());
    const QDateTime now = QDateTime::currentDateTime();
    m_statusDate->setText(QLocale().toString(now.date(), QLocale::ShortFormat));
    m_statusTime->setText(QLocale().toString(now.time(), QLocale::ShortFormat));
}

void frmMain::finish(StopCommandResult result) {
    if (result == StopCommandResult::refused)
        m_parts.desktop.beep();
    tellNarrationEditor();
}

bool frmMain::refuseOnOpeningPage(const QString& message) {
    if (m_parts.tour.model.currentStop >= 1)
        return false;
    showMessage(this, message);
    m_parts.desktop.beep();
    return true;
}

void frmMain::tellNarrationEditor() {
    if (!m_narrationEditor.isNull())
        m_narrationEditor->tellTarget();
}

bool frmMain::mayQuit() {
    return m_mayQuit || !m_parts.tour.model.tourChanged ||
           askYesNo(this, lines(tr("Do you really want to quit the program without saving?"),
                                tr("All changes to the Tour will be lost.")));
}

void frmMain::leaveWorkingCopy() {
    TourContext& tour = m_parts.tour;
    useFinalNavigator(tour);
    tour.model.editingMode = false;
    makeWorkingFrameset(tour);
    makeTourFramesets(tour);
    storeSettings();
    tour.workspace.leaveOnlyTemplateScript();
}

void frmMain::layOutBrowser() {
    // The panel leaves 400 twips beside it, and what the rows above and below do not take of 1000 twips.
    const int beside = pixelsFromTwips(besidePanel) / 2;
    const int rows = menuBar()->height() + statusBar()->height();
    const int below = std::max(0, pixelsFromTwips(aboveAndBelowPanel) - rows);
    m_browserPanel->parentWidget()->layout()->setContentsMargins(beside, 0, beside, below);
    const int besideInner = pixelsFromTwips(besideBrowser) / 2;
    m_browserPanel->layout()->setContentsMargins(besideInner, 0, besideInner, 0);
}

} // namespace wendmark
