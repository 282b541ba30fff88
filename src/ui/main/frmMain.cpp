#include "ui/main/frmMain.h"

#include "commands/TourDocument.h"
#include "platform/Gate.h"
#include "platform/QtDesktop.h"
#include "platform/Strings.h"
#include "platform/Twips.h"
#include "ui/Messages.h"
#include "ui/controls/CommandBar.h"
#include "ui/controls/LoadingIndicator.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/main/Editors.h"
#include "ui/main/FileCommands.h"
#include "ui/main/MainDialogs.h"
#include "ui/main/MainStatusBar.h"
#include "ui/main/MakingNotice.h"
#include "ui/main/PlayCommands.h"
#include "ui/main/SidePanels.h"
#include "ui/main/TourPreview.h"
#include "ui/main/UnsavedWork.h"
#include "ui/main/WindowSettings.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QMenuBar>
#include <QTimer>
#include <QVBoxLayout>
#include <utility>

namespace wendmark {

namespace {

constexpr int tickInterval = 100; // Milliseconds.

// Twips.
constexpr float smallestWidth = 6000;
constexpr float smallestHeight = 5000;
constexpr float besidePanel = 400;
constexpr float aboveAndBelowPanel = 1000;
constexpr float besideBrowser = 60;

} // namespace

frmMain::frmMain(ProgramParts parts)
    : m_parts(std::move(parts))
    , m_document(m_parts.document)
    , m_statusBar(new MainStatusBar(this))
    , m_unsaved(new UnsavedWork(m_document, m_parts.recovery, m_parts.gate, m_parts.savedScripts, this))
    , m_files(new FileCommands(m_parts, *m_unsaved, *this, [this] { return m_editors->mayLeave(); }))
    , m_play(new PlayCommands(m_parts, *m_files, *this))
    , m_editors(new Editors(m_parts, *this))
    , m_dialogs(new MainDialogs(m_parts, *m_statusBar, *this)) {
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(programTitle());
    setMinimumSize(pixelsFromTwips(smallestWidth), pixelsFromTwips(smallestHeight));
    m_actions = fillMenus(*this, *menuBar());
    m_files->offerLastTours(*m_actions[QStringLiteral("mnuFileRecent")]);
    setupToolBar();
    setupCentralWidget();
    setStatusBar(m_statusBar);
    setupConnections();
    m_document.addListener(*this);
    showHistory();
}

frmMain::~frmMain() {
    m_document.removeListener(*this);
}

void frmMain::load(const QString& tourFolder) {
    m_making = std::make_unique<MakingNotice>(m_document, m_parts.gate, m_parts.desktop);
    placeWindow(*this, m_parts.settings);
    loadOptions(m_parts.options, m_parts.settings);
    m_document.showTemplateTour();
    m_preview->showOpeningPage();
    m_unsaved->start();
    m_files->wizardFirstRun = true;
    bool recovered = false;
    run([this, &recovered] { recovered = m_unsaved->offerRecovery(*this); });
    if (recovered)
        m_files->skipWizard(tourFolder);
    else if (tourFolder.isEmpty() && m_parts.gate.isOpen()) // Else a tour was handed over meanwhile.
        newTour();
    else if (!tourFolder.isEmpty())
        run([this, tourFolder] { m_files->openTourIn(tourFolder); });
    showHistory();
}

void frmMain::run(std::function<void()> command) {
    m_parts.gate.run(*this, [this, command = std::move(command)] {
        m_statusBar->showNotice({}); // Of the command before.
        command();
    });
}

void frmMain::look(std::function<void()> command) {
    m_parts.gate.run(*this, std::move(command), Gate::Kind::look);
}

void frmMain::newTour() {
    run([this] { m_files->newTour(); });
}

void frmMain::openTour() {
    run([this] { m_files->openTour(); });
}

void frmMain::save() {
    m_parts.gate.runOnce(*this, "save", [this] { m_files->save(); });
}

void frmMain::saveAs() {
    run([this] { m_files->saveAs(); });
}

void frmMain::openEarlierSave() {
    run([this] { m_files->openEarlierSave(); });
}

void frmMain::undo() {
    run([this] {
        if (!m_document.undoOpensTour() || m_editors->leave())
            m_document.undo();
    });
}

void frmMain::redo() {
    run([this] {
        if (!m_document.redoOpensTour() || m_editors->leave())
            m_document.redo();
    });
}

bool frmMain::runStopCommand(StopCommandResult (TourDocument::*command)()) {
    const bool isRefused = (m_document.*command)() == StopCommandResult::refused;
    if (isRefused)
        m_parts.desktop.beep();
    return !isRefused;
}

void frmMain::insertStop() {
    run([this] { m_sides->beginStop(runStopCommand(&TourDocument::insertStop)); });
    m_sides->awaitStop();
}

void frmMain::deleteStop() {
    run([this] {
        if (!refuseOnOpeningPage(tr("The opening page of the tour cannot be deleted")))
            runStopCommand(&TourDocument::deleteStop);
    });
}

void frmMain::moveForward() {
    run([this] { runStopCommand(&TourDocument::moveStopForward); });
}

void frmMain::moveBack() {
    run([this] { runStopCommand(&TourDocument::moveStopBack); });
}

void frmMain::editSiteFrame() {
    run([this] {
        if (!refuseOnOpeningPage(tr("The opening page of the tour is not editable")))
            m_editors->editSite();
    });
}

void frmMain::editNarrationFrame() {
    run([this] {
        if (!refuseOnOpeningPage(tr("The opening page of the tour is not editable")))
            m_editors->editNarration();
    });
}

void frmMain::previous() {
    look([this] { runStopCommand(&TourDocument::showPreviousStop); });
}

void frmMain::next() {
    look([this] { runStopCommand(&TourDocument::showNextStop); });
}

void frmMain::stopLoading() {
    m_preview->stop();
}

void frmMain::refresh() {
    look([this] { m_document.showCurrentStop(); });
}

void frmMain::showHelp() {
    look([this] { m_editors->showHelp(); });
}

void frmMain::showWebSite() {
    look([this] { m_editors->showWebSite(); });
}

void frmMain::give(const MainCommand& command) {
    if (command.changesTour)
        run([this] { m_document.markChanged(); });
    command.command(*this);
}

void frmMain::runToolBarCommand(const QString& key) {
    if (const MainCommand* const command = commandOfButton(key))
        give(*command);
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
    if (!m_ended) {
        m_parts.gate.abandon();
        m_parts.gate.runOnce(*this, "quit", [this] {
            if (!m_ended && mayQuit())
                end();
        });
    }
    if (!m_ended)
        return;
    event->accept();
    if (!m_timer->isActive())
        return; // That it is closed was told before.
    m_timer->stop();
    emit closed();
}

void frmMain::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    if (!isMinimized())
        layOutBrowser();
}

void frmMain::setupToolBar() {
    m_toolBar = new CommandBar(this);
    m_toolBar->setObjectName(QStringLiteral("tbToolBar"));
    fillToolBar(*m_toolBar, m_actions);
    m_toolBarPanels = addPanels(*m_toolBar);
}

void frmMain::setupCentralWidget() {
    auto* const central = new QWidget(this);
    m_preview = new TourPreview(m_document, m_parts.gate, m_parts.desktop, m_parts.browserProfile,
                                *m_toolBarPanels.stopNumber, central);
    auto* const layout = new QVBoxLayout(central);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addWidget(m_toolBar);
    layout->addWidget(m_preview, 1);
    setCentralWidget(central);
    m_sides = new SidePanels(m_parts, *m_editors, *this);
    m_preview->setFocus(); // Not the first button of the toolbar, where a blank would start a new tour.
}

void frmMain::setupConnections() {
    m_timer = new QTimer(this);
    m_timer->setObjectName(QStringLiteral("timTimer"));
    connect(m_timer, &QTimer::timeout, this, &frmMain::runTicks);
    m_timer->start(tickInterval);
    m_unsaved->setUnappliedTexts([this] { return m_sides->unappliedTexts(); });
    connect(m_unsaved, &UnsavedWork::looking, this, &frmMain::reopenNarrationEditor);
    connect(m_files, &FileCommands::filesLeaving, m_editors, &Editors::closeSite);
    connect(m_files, &FileCommands::tourLeaving, m_editors, &Editors::close);
    connect(m_editors, &Editors::saveWanted, this, &frmMain::save);
    connect(m_files, &FileCommands::tourLeaving, m_statusBar, &MainStatusBar::forgetSaved);
    connect(m_files, &FileCommands::defaultsSet, this, [this] { m_workOffline = false; });
    connect(m_files, &FileCommands::newTourMade, m_preview, &TourPreview::showOpeningPage);
    connect(m_files, &FileCommands::noticeShown, m_statusBar, &MainStatusBar::showNotice);
    connect(m_toolBar, &CommandBar::buttonClicked, this, &frmMain::runToolBarCommand);
    connect(m_toolBarPanels.offline, &QCheckBox::toggled, this,
            [this](bool checked) { m_workOffline = checked; });
    connect(m_sides, &SidePanels::noticeShown, m_statusBar, &MainStatusBar::showNotice);
    connect(m_sides, &SidePanels::siteEditorWanted, this, &frmMain::editSiteFrame);
    connect(m_sides, &SidePanels::pageChanged, m_preview, &TourPreview::showPage);
    connect(m_sides, &SidePanels::left, m_preview, qOverload<>(&QWidget::setFocus));
    connect(m_preview, &TourPreview::statusShown, m_statusBar, &MainStatusBar::showStatus);
}

/// With words that a former run has left, once the window is there.
void frmMain::reopenNarrationEditor() {
    if (!m_unsaved->hasRecoveredTexts() || !isVisible())
        return;
    run([this] {
        const auto texts = m_unsaved->takeRecoveredTexts();
        if (!texts || m_document.model().stopCount() < 1)
            return;
        if (m_document.model().currentStop < 1)
            m_document.goToStop(1);
        m_editors->editNarration(*texts);
    });
}

void frmMain::runTicks() {
    if (m_ended)
        close();
    m_preview->runTick();
    m_toolBarPanels.busy->tick(m_preview->isBusy());
    m_statusBar->runTick();
}

bool frmMain::refuseOnOpeningPage(const QString& message) {
    if (m_document.model().currentStop >= 1)
        return false;
    showMessage(this, message);
    m_parts.desktop.beep();
    return true;
}

bool frmMain::mayQuit() {
    if (m_document.model().tourChanged &&
        !askYesNo(this, tr("Do you really want to quit the program without saving?") +
                            QStringLiteral("\r\n") + tr("All changes to the Tour will be lost.")))
        return false;
    return m_editors->mayDropWords(
        tr("The narration editor holds words that were not applied to any stop. Do "
           "you want to quit without them?"));
}

/// What the author was asked about is given up; anything else that is not saved waits for the next start.
void frmMain::end() {
    const bool asked = m_document.model().tourChanged;
    m_parts.gate.shut(*this); // A Save that waits would save what is left of the working copy.
    m_editors->close();
    m_unsaved->end(asked);
    m_document.makeFinalForm();
    storePlacement(*this, m_parts.settings);
    m_sides->store();
    storeOptions(m_parts.options, m_parts.settings);
    m_document.leaveWorkingCopy();
    m_ended = true; // The next tick closes the window, unless a request to close it is under way.
}

void frmMain::layOutBrowser() {
    // The panel leaves 400 twips beside it, and what the rows above and below do not take of 1000 twips.
    const int beside = pixelsFromTwips(besidePanel) / 2;
    const int rows = menuBar()->height() + m_statusBar->height();
    const int below = std::max(0, pixelsFromTwips(aboveAndBelowPanel) - rows);
    m_preview->parentWidget()->layout()->setContentsMargins(beside, 0, beside, below);
    m_preview->setInnerMargins(pixelsFromTwips(besideBrowser) / 2);
}

void frmMain::showHistory() {
    showSteps(m_actions, m_document.undoName(), m_document.redoName());
    m_statusBar->showHistory(m_document);
}

void frmMain::tourChangedNow() {
    showHistory();
    m_editors->tellTarget();
}

void frmMain::currentStopChanged() {
    m_editors->tellTarget();
}

void frmMain::tourSaved(bool complete) {
    m_statusBar->noteSaved(complete);
    showHistory();
}

} // namespace wendmark
