#include "ui/site/frmBrowser.h"

#include "base/Files.h"
#include "base/Log.h"
#include "base/Names.h"
#include "ui/HandOver.h"
#include "model/Options.h"
#include "model/SiteLists.h"
#include "model/StopAddress.h"
#include "model/TourContext.h"
#include "model/TourModel.h"
#include "model/Workspace.h"
#include "platform/BrowserView.h"
#include "platform/Icons.h"
#include "platform/QtDesktop.h"
#include "platform/Settings.h"
#include "platform/Strings.h"
#include "platform/Tasks.h"
#include "platform/Twips.h"
#include "publish/Framesets.h"
#include "publish/StopPages.h"
#include "publish/TourPages.h"
#include "ui/Messages.h"
#include "ui/controls/CommandBar.h"
#include "ui/controls/LoadingIndicator.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/dialogs/FileChooser.h"
#include "ui/dialogs/frmMessage.h"
#include "ui/dialogs/frmRenameFile.h"
#include "ui/site/BookmarkPanel.h"
#include "ui/site/frmTestFrame.h"
#include "ui/site/frmWarnURL.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QCompleter>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSplitter>
#include <QStringListModel>
#include <QTimer>
#include <QWebEngineProfile>

namespace wendmark {

namespace {

constexpr std::string_view historyFileName = "brhist.txt";
constexpr std::string_view reservedName =
    "which is essential for correct operation of the tour, and cannot be overwritten or replaced.";

constexpr int longestAddress = 2 * 1024 * 1024; // The engine shows nothing that is longer.
constexpr int tickInterval = 20;                // Milliseconds.
constexpr float besideMainWindow = 400;         // Twips.
constexpr float testPeriod = 30;                // Seconds.
const QList<int> shares = {65, 35};             ///< Of the height: browser, bookmarks.
constexpr int smallestBrowser = 56;             // Pixels.

struct ToolBarButton {
    const char* key;
    const char* toolTip;
    const char* icon;
    const char* shortcut; ///< Keys that do not fight the page.
    bool endsGroup;
};

constexpr ToolBarButton toolBarButtons[] = {
    {"Back", "Back", "siteBack", "Alt+Left", false},
    {"Forward", "Forward", "siteForward", "Alt+Right", false},
    {"Stop", "Stop", "mnuNavigateStop", "Esc", false},
    {"Refresh", "Refresh", "mnuViewRefresh", "F5", false},
    {"Home", "Home", "siteHome", "Alt+Home", false},
    {"Search", "Search", "siteSearch", "Ctrl+E", true},
    {"Yes", "Use this Site", "siteYes", "Ctrl+Return", false},
    {"Edit", "Launch HTML Editor", "siteEdit", "F4", false},
    {"Test", "Test Frame-friendliness", "siteTest", "F6", true},
};

/// The box sends keys that the field has left over back to it: without this, Return counts twice.
class AddressField final : public QLineEdit {
protected:
    void keyPressEvent(QKeyEvent* event) override {
        QLineEdit::keyPressEvent(event);
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
            event->accept();
    }
};

QString caption(const QString& state) {
    return QStringLiteral("Wendmark - URL Editor - ") + state;
}

QString joined(std::initializer_list<QString> lines) {
    return QStringList(lines).join(QStringLiteral("\r\n"));
}

} // namespace

frmBrowser::frmBrowser(const ProgramParts& parts, QWidget* parent)
    : QWidget(parent, Qt::Window)
    , m_parts(parts)
    , m_toolBar(new CommandBar(this))
    , m_busy(new LoadingIndicator)
    , m_address(new QComboBox(this))
    , m_history(new QStringListModel(this))
    , m_fileButton(makeButton("btnSelectFile", tr("Select &Local File"), this))
    , m_panes(new QSplitter(Qt::Vertical, this))
    , m_browser(new BrowserView(parts.browserProfile, m_panes))
    , m_bookmarks(new BookmarkPanel(parts.tour, parts.desktop, m_panes))
    , m_notice(makeTextLabel("lblNotice", QString(), this))
    , m_timer(new QTimer(this)) {
    setObjectName(QStringLiteral("frmBrowser"));
    setWindowTitle(QStringLiteral("Wendmark - Site Editor"));
    setAttribute(Qt::WA_DeleteOnClose);
    setupActions();
    setupToolBar();
    setupBrowser();
    m_timer->setObjectName(QStringLiteral("timTimer"));
    m_timer->setInterval(tickInterval);
    m_notice->hide();

    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(dialogGap, 0, dialogGap, dialogGap);
    layout->setSpacing(dialogGap / 2);
    layout->addWidget(m_toolBar);
    layout->addLayout(makeAddressRow());
    m_panes->setChildrenCollapsible(false);
    m_panes->setHandleWidth(dialogGap);
    m_panes->setStretchFactor(0, 1);
    m_panes->setStretchFactor(1, 0);
    m_panes->setSizes(shares);
    layout->addWidget(m_panes, 1);
    layout->addWidget(m_notice);
    setupConnections();
}

frmBrowser::~frmBrowser() = default;

void frmBrowser::load() {
    const Bounds& main = m_parts.handOver.mainWindowBounds;
    move(pixelsFromTwips(main.left + besideMainWindow), pixelsFromTwips(main.top + besideMainWindow));
    resize(pixelsFromTwips(main.width), pixelsFromTwips(main.height));
    LoadHistory();
    goTo(siteEditAddress());
    m_bookmarks->LoadGoodList();
}

void frmBrowser::showStop() {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
    if (!m_testing)
        goTo(siteEditAddress());
}

void frmBrowser::runToolBarCommand(const QString& key) {
    if (!m_actions.contains(key))
        return;
    showNotice({});
    m_timer->start();
    if (key == QLatin1String("Back"))
        m_browser->goBack();
    else if (key == QLatin1String("Forward"))
        m_browser->goForward();
    else if (key == QLatin1String("Refresh"))
        m_browser->reload();
    else if (key == QLatin1String("Home"))
        goToText(m_parts.settings.read(siteSettings::homePage));
    else if (key == QLatin1String("Search"))
        m_browser->navigate(QStringLiteral("file://") + workingFolder() + QStringLiteral("search.htm"));
    else if (key == QLatin1String("Stop"))
        stop();
    else if (key == QLatin1String("Yes"))
        useSite();
    else if (key == QLatin1String("Edit"))
        launchHtmlEditor();
    else if (key == QLatin1String("Test"))
        reportFrameTest();
}

void frmBrowser::closeEvent(QCloseEvent* event) {
    if (m_testing) {
        // The test waits further up the stack and ends when it sees this.
        m_closeAfterTest = true;
        event->ignore();
        return;
    }
    m_bookmarks->SaveGoodList();
    SaveHistory();
    event->accept();
    emit closed();
}

bool frmBrowser::event(QEvent* event) {
    // While the window closes, its lists are written already. Its own dialogs are part of its work.
    if (event->type() == QEvent::WindowDeactivate && isVisible() &&
        QApplication::activeModalWidget() == nullptr)
        saveLists();
    return QWidget::event(event);
}

void frmBrowser::setupActions() {
    for (const ToolBarButton& button : toolBarButtons) {
        const QString key = QLatin1String(button.key);
        auto* const action = new QAction(themedIcon(QLatin1String(button.icon)), tr(button.toolTip), this);
        action->setShortcut(QKeySequence(QLatin1String(button.shortcut)));
        connect(action, &QAction::triggered, this, [this, key] { runToolBarCommand(key); });
        addAction(action);
        m_actions.insert(key, action);
    }
    m_testInWindow = new QAction(tr("Test in a &Window..."), this);
    m_testInWindow->setObjectName(QStringLiteral("mnuTestFrame"));
    m_testInWindow->setShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F6));
    connect(m_testInWindow, &QAction::triggered, this, &frmBrowser::showFrameTestDialog);
    addAction(m_testInWindow);
    auto* const toAddress = new QAction(tr("Address"), this);
    toAddress->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_L), QKeySequence(Qt::Key_F7)});
    connect(toAddress, &QAction::triggered, this, [this] {
        m_address->setFocus();
        m_address->lineEdit()->selectAll();
    });
    addAction(toAddress);
}

void frmBrowser::setupToolBar() {
    m_toolBar->setObjectName(QStringLiteral("tbToolBar"));
    for (const ToolBarButton& button : toolBarButtons) {
        const QString key = QLatin1String(button.key);
        m_toolBar->addButton(key, tr(button.toolTip), *m_actions.value(key));
        if (button.endsGroup)
            m_toolBar->addGap();
    }
    m_busy->setObjectName(QStringLiteral("picBusy"));
    m_busy->setAccessibleName(tr("Loading"));
    m_toolBar->addPlaceholder(QStringLiteral("picBusy"), m_busy);
}

QLayout* frmBrowser::makeAddressRow() {
    m_address->setObjectName(QStringLiteral("cboAddress"));
    m_address->setModel(m_history); // Unlike the usual one it takes millions of lines at once.
    m_address->setAccessibleName(tr("Address"));
    m_address->setLineEdit(new AddressField);
    m_address->lineEdit()->setAccessibleName(tr("Address"));
    m_address->setInsertPolicy(QComboBox::NoInsert);
    // The box takes typed text for the item that differs from it in case only. Addresses do differ by that.
    for (const auto signal : {&QLineEdit::returnPressed, &QLineEdit::editingFinished})
        disconnect(m_address->lineEdit(), signal, m_address, nullptr);
    m_address->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_address->setMinimumContentsLength(12);
    m_address->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    // Completing in the field itself would change what the author types.
    m_address->completer()->setCompletionMode(QCompleter::PopupCompletion);
    m_address->completer()->setFilterMode(Qt::MatchContains);
    auto* const list = new QListView(m_address);
    list->setUniformItemSizes(true); // A history may be long.
    m_address->setView(list);
    auto* const label = new QLabel(tr("&Address"), this);
    label->setBuddy(m_address);
    m_fileButton->setToolTip(tr("Copy a page of your own into the tour and show it"));
    connect(m_fileButton, &QPushButton::clicked, this, &frmBrowser::selectLocalFile);
    auto* const row = new QHBoxLayout;
    row->setSpacing(dialogGap);
    row->addWidget(label);
    row->addWidget(m_address, 1);
    row->addWidget(m_fileButton);
    return row;
}

void frmBrowser::setupBrowser() {
    m_browser->setObjectName(QStringLiteral("brwWebBrowser"));
    m_browser->setMinimumHeight(smallestBrowser);
    m_browser->setAllowedFolders({workingFolder()});
    m_browser->setNewWindowsHere();
    m_browser->setFocusStays();
    m_browser->setAccessibleName(tr("Page"));
    QList<QAction*> actions;
    for (const char* key : {"Back", "Forward", "Refresh", "Yes"})
        actions.append(m_actions.value(QLatin1String(key)));
    actions.append(m_testInWindow);
    m_browser->setContextActions(actions);
}

void frmBrowser::setupConnections() {
    connect(m_toolBar, &CommandBar::buttonClicked, this, &frmBrowser::runToolBarCommand);
    connect(m_timer, &QTimer::timeout, this, &frmBrowser::runTick);
    connect(m_address, &QComboBox::activated, this, [this] { goToText(m_address->currentText()); });
    connect(m_address->lineEdit(), &QLineEdit::returnPressed, this, [this] {
        m_browser->setFocus();
        goToText(m_address->currentText());
    });
    connect(m_bookmarks, &BookmarkPanel::pageWanted, this, &frmBrowser::goToText);
    connect(m_bookmarks, &BookmarkPanel::rememberWanted, this, [this] { m_bookmarks->remember(location()); });
    connect(m_browser, &BrowserView::navigationStarted, m_timer, qOverload<>(&QTimer::start));
    connect(m_browser, &BrowserView::navigationCompleted, this, &frmBrowser::takeOverNavigation);
    connect(m_browser, &BrowserView::locationNameChanged, this, &frmBrowser::showCaption);
    connect(m_browser, &BrowserView::downloadRefused, this, [this](const QUrl& address) {
        showCaption();
        showNotice(tr("%1 is a file to be saved, not a page: no stop can show it.").arg(address.toString()));
    });
    connect(m_browser, &BrowserView::certificateRefused, this, [this](const QUrl& address) {
        showNotice(tr("The certificate of %1 is not valid. Visitors would see a warning instead of the page.")
                       .arg(address.host()));
    });
    connect(m_browser, &BrowserView::serverRefused, this, [this](int status) {
        recordVisit(location());
        showNotice(tr("The server answers %1: it has no such page.").arg(status));
    });
    connect(m_browser, &BrowserView::navigationRefused, this, [this](const QUrl& address) {
        showNotice(
            tr("%1 is not shown here: it is no page of the web or of the tour.").arg(address.toString()));
    });
    connect(m_browser, &BrowserView::rendererDied, this, [this](bool comesBack) {
        showNotice(comesBack ? tr("The page has crashed and is loaded again.")
                             : tr("The page keeps crashing. Choose Refresh, or another page."));
    });
}

void frmBrowser::LoadHistory() {
    const files::Contents file = files::read(m_parts.tour.workspace.workingFile(historyFileName));
    m_parts.tour.log.skipAsNote(file.outcome);
    History history = readHistory(file.bytes);
    m_furtherHistory = std::move(history.further);
    QStringList addresses;
    for (const std::string& address : history.addresses)
        addresses.append(toQString(address));
    m_history->setStringList(addresses);
    m_address->setCurrentIndex(addresses.isEmpty() ? -1 : 0);
}

void frmBrowser::SaveHistory() {
    History history{{}, m_furtherHistory};
    history.addresses.reserve(static_cast<std::size_t>(m_address->count()));
    for (int i = 0; i < m_address->count(); ++i)
        history.addresses.push_back(toUtf8(m_address->itemText(i)));
    TourContext& tour = m_parts.tour;
    tour.log.skip(tour.workspace.writeWorkingFile(historyFileName, historyFile(history)));
}

void frmBrowser::saveLists() {
    SaveHistory();
    m_bookmarks->SaveGoodList();
}

void frmBrowser::goToText(const QString& text) {
    const QString typed = text.trimmed();
    if (typed.isEmpty())
        return;
    if (typed.size() > longestAddress) {
        refuseLongAddress();
        return;
    }
    const bool complete = typed.contains(QLatin1String("://"));
    const QUrl address = complete ? QUrl(typed) : QUrl::fromUserInput(typed, workingFolder());
    if (address.isValid() && (address.isLocalFile() || !complete || !address.host().isEmpty()))
        goTo(address);
    else
        refuseAddress(typed);
}

void frmBrowser::refuseAddress(const QString& typed) {
    showNotice(tr("\"%1\" is not an address.").arg(typed));
    m_address->setFocus();
}

void frmBrowser::refuseLongAddress() {
    showNotice(tr("An address of more than %L1 characters cannot be shown.").arg(longestAddress));
}

void frmBrowser::goTo(const QUrl& address) {
    if (address.isEmpty())
        return;
    showNotice({});
    m_address->setEditText(address.toString(QUrl::FullyEncoded));
    m_address->lineEdit()->setCursorPosition(0); // Addresses are told apart by their beginning.
    // A page of the author's own is read with what lies beside it, but not by the pages of the tour.
    const QString itsFolder =
        address.isLocalFile() ? QFileInfo(address.toLocalFile()).absolutePath() : QString();
    m_browser->setAllowedFolders({workingFolder()}, itsFolder);
    m_timer->start();
    m_browser->navigate(address);
}

/// A stop holds the name of a local page as it stands in a link, percent-encoded.
QUrl frmBrowser::siteEditAddress() {
    if (m_parts.handOver.siteEditURL.size() > longestAddress) {
        refuseLongAddress();
        return {};
    }
    const QString text = toQString(m_parts.handOver.siteEditURL);
    const QString folder = workingFolder();
    if (!text.startsWith(folder))
        return QUrl::fromUserInput(text);
    return QUrl::fromLocalFile(folder).resolved(QUrl(text.mid(folder.size())));
}

void frmBrowser::takeOverNavigation(bool ok) {
    showCaption();
    if (ok)
        recordVisit(location());
    else if (m_notice->text().isEmpty() && !m_testing)
        showNotice(tr("%1 could not be loaded.").arg(location()));
}

void frmBrowser::recordVisit(const QString& location) {
    if (location.isEmpty())
        return;
    const int formerVisit = m_address->findText(location, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (formerVisit >= 0)
        m_address->removeItem(formerVisit);
    // Ten characters never equal six: the test page is recorded, too, unless it has no folder.
    if (location.trimmed().right(10) != QLatin1String("ft.htm")) {
        m_address->insertItem(0, location);
        m_address->setCurrentIndex(0);
        m_address->lineEdit()->setCursorPosition(0);
    }
}

void frmBrowser::runTick() {
    const bool busy = m_browser->isBusy();
    m_busy->tick(busy);
    if (!busy)
        m_timer->stop();
    showCaption();
}

void frmBrowser::showCaption() {
    const bool working = m_timer->isActive() && m_browser->isBusy();
    setWindowTitle(caption(working ? tr("Working...") : m_browser->locationName()));
}

void frmBrowser::showNotice(const QString& text) {
    m_notice->setText(text);
    m_notice->setVisible(!text.isEmpty());
}

QString frmBrowser::location() const {
    const QString address = m_browser->locationURL();
    return address == QLatin1String("about:blank") ? QString() : address;
}

QString frmBrowser::workingFolder() const {
    return toQString(m_parts.tour.workspace.folders().newTourPath);
}

void frmBrowser::stop() {
    m_timer->stop();
    m_browser->stop();
    showCaption();
}

void frmBrowser::useSite() {
    m_parts.tour.model.tourChanged = true;
    m_parts.handOver.siteEditResult = stopAddressFor(toUtf8(location()));
    const bool nothingToStore =
        m_parts.handOver.siteEditResult.empty() || m_parts.tour.model.currentStop == 0;
    if (nothingToStore || storeSite())
        finishUse();
    else if (m_closeAfterTest)
        close();
}

/// False when the stop keeps its address.
bool frmBrowser::storeSite() {
    TourContext& tour = m_parts.tour;
    tour.desktop.setBusyPointer(Desktop::Pointer::hourglass);
    const QUrl page = m_browser->location();
    const FrameTest::Result result = runFrameTest();
    if (result == FrameTest::Result::abandoned && !m_closeAfterTest)
        return false; // The pointer stays as it is.
    tour.desktop.setBusyPointer(Desktop::Pointer::standard);
    if (result == FrameTest::Result::abandoned || result == FrameTest::Result::notRun)
        return false;
    goTo(page);
    if (result == FrameTest::Result::failed) {
        showFrameTestMessage(tr("Test Failed.... You cannot use this site in a tour, because it cannot be "
                                "viewed inside a frame."));
        return false;
    }
    // The author may have turned to another stop during the test.
    const std::int16_t stop = tour.model.currentStop;
    if (stop < 1 || stop > tourCapacity)
        return true;
    std::string& address = tour.model.stops.at(stop).stopURL;
    if (!maySiteReplace(address, page))
        return false;
    const BusyPointer busy(tour.desktop);
    address = m_parts.handOver.siteEditResult;
    makeStopPages(tour, stop, stop);
    makeTourGuide(tour);
    makePreviewFrameset(tour);
    tellIfNotInTour();
    return true;
}

bool frmBrowser::maySiteReplace(const std::string& oldAddress, const QUrl& page) {
    HandOver& handOver = m_parts.handOver;
    if (!m_parts.options.warnURLChange || isNewPage(oldAddress) || handOver.siteEditResult == oldAddress)
        return true;
    frmWarnURL dialog(handOver, m_parts.options, toQString(oldAddress), toQString(handOver.siteEditResult),
                      this);
    runDialog(dialog);
    if (handOver.dialogAnswer != "0")
        return true;
    goTo(page);
    return false;
}

void frmBrowser::finishUse() {
    m_parts.desktop.setBusyPointer(Desktop::Pointer::standard);
    if (m_parts.options.autoCloseBrowser) {
        close();
        return;
    }
    m_bookmarks->SaveGoodList();
    SaveHistory();
}

/// A local page is stored by its name alone, which leads nowhere while the page lies elsewhere.
void frmBrowser::tellIfNotInTour() {
    const std::string& address = m_parts.handOver.siteEditResult;
    const QString name = QUrl::fromPercentEncoding(QByteArray::fromStdString(address));
    if (!isRemoteAddress(address) && !files::canBeRead(m_parts.tour.workspace.workingFile(toUtf8(name))))
        showNotice(tr("%1 is not in the tour's folder. Put it there with Select Local File.").arg(name));
}

FrameTest frmBrowser::frameTest() {
    return {*m_browser, m_parts.tour.workspace, m_parts.desktop, m_parts.tour.log,
            m_parts.browserProfile.httpUserAgent()};
}

FrameTest::Result frmBrowser::runFrameTest() {
    const QUrl page = m_browser->location();
    m_testStart = m_parts.desktop.timeOfDay();
    m_testing = true;
    enableToolBar(false);
    const FrameTest::Result result = frameTest().run(page, [&] { return goOnTesting(page); });
    enableToolBar(true);
    m_testing = false;
    if (result == FrameTest::Result::notRun)
        showNotice(tr("The test page cannot be written into the tour's folder. Is the disk full?"));
    return result;
}

bool frmBrowser::goOnTesting(const QUrl& page) {
    if (m_closeAfterTest)
        return false;
    if (m_parts.desktop.timeOfDay() - m_testStart <= testPeriod)
        return true;
    if (!askYesNo(this, tr("Site testing is still incomplete - do you want to continue"),
                  QStringLiteral("Wendmark - Frame Test"))) {
        StopTesting(page);
        return false;
    }
    m_testStart = m_parts.desktop.timeOfDay();
    return true;
}

void frmBrowser::StopTesting(const QUrl& page) {
    m_browser->stop();
    goTo(page);
    showFrameTestMessage(tr("Test Timed out.... try again later "));
}

void frmBrowser::enableToolBar(bool enabled) {
    m_toolBar->setEnabled(enabled);
    for (QAction* const action : std::as_const(m_actions))
        action->setEnabled(enabled);
    m_testInWindow->setEnabled(enabled);
}

void frmBrowser::reportFrameTest() {
    const QUrl page = m_browser->location();
    const FrameTest::Result result = runFrameTest();
    if (m_closeAfterTest) {
        close();
        return;
    }
    if (result == FrameTest::Result::abandoned || result == FrameTest::Result::notRun)
        return;
    goTo(page);
    showFrameTestMessage(result == FrameTest::Result::passed
                             ? tr("Test Passed.... You can use this site in a tour")
                             : tr("Test Failed.... You cannot use this site in a tour, because it cannot be "
                                  "viewed inside a frame."));
}

void frmBrowser::showFrameTestMessage(const QString& text) {
    const QString end = QStringLiteral("\r\n");
    frmMessage message(QStringLiteral("Wendmark - Frame Test"), text + end + end, this);
    runDialog(message);
}

void frmBrowser::showFrameTestDialog() {
    frmTestFrame dialog(frameTest(), *m_browser, this);
    runDialog(dialog);
}

void frmBrowser::selectLocalFile() {
    const QString path = chooseFile(this, QStringLiteral("Wendmark - Select Local File"),
                                    QStringLiteral("HTML (*.htm *.html);;All (*)"), QStringLiteral("htm"));
    if (path.isEmpty())
        return;
    const std::string name = freeLocalName(path);
    if (name.empty())
        return;
    TourContext& tour = m_parts.tour;
    const std::string source = toUtf8(path);
    // The page may lie in the working copy already.
    if (!files::same(source, tour.workspace.workingFile(name))) {
        const Outcome copied = tour.workspace.copyToWorkingFile(source, name);
        tour.log.skip(copied);
        if (!copied.ok())
            showNotice(tr("%1 could not be copied into the tour.").arg(path));
    }
    const QString notice = m_notice->text();
    tour.workspace.pause(1.0F);
    goTo(QUrl::fromLocalFile(toQString(tour.workspace.workingFile(name))));
    showNotice(notice);
}

/// The name under which a file is copied into the tour; empty when the author gives up.
std::string frmBrowser::freeLocalName(const QString& path) {
    HandOver& handOver = m_parts.handOver;
    const Workspace& workspace = m_parts.tour.workspace;
    std::string name = lastPathPart(toUtf8(path), pathSeparator);
    while (!name.empty() && files::canBeRead(workspace.workingFile(name))) {
        handOver.dialogAnswer = name;
        const bool reserved = workspace.isTemplateFile(name);
        if (!reserved && askYesNo(this,
                                  tr("There is already a file called %1 in the tour folder. Do you want to "
                                     "overwrite this file?")
                                      .arg(toQString(name)),
                                  QStringLiteral("Wendmark - File overwrite")))
            break;
        handOver.renameReason = reserved ? reservedName : std::string_view();
        frmRenameFile dialog(handOver, this);
        runDialog(dialog);
        // Files of a tour have lower-case names and lie in its own folder, whatever was typed.
        name = lastPathPart(handOver.dialogAnswer, pathSeparator);
    }
    return name;
}

void frmBrowser::launchHtmlEditor() {
    const QString editor = toQString(m_parts.options.htmlEditorPath);
    if (editor.isEmpty() || editor.compare(QLatin1String("NONE"), Qt::CaseInsensitive) == 0) {
        frmMessage message(
            QStringLiteral("Wendmark - HTML Editor not specified"),
            joined({tr("To use this feature you have to specify your favorite HTML editor:"),
                    tr("  Go to the Wendmark main window."), tr("  Select Options from the View menu."),
                    tr("  Specify the path to the editor's EXE file.")}),
            this);
        runDialog(message);
        return;
    }
    const std::string file = editableFile(toUtf8(location()));
    const QString text =
        file.empty()
            ? joined(
                  {tr("After creating your HTML document, save the file in any location you choose."),
                   QString(),
                   tr("Upon returning to the \"URL Editor\" window, use the \"Select Local File\" button to "
                      "load the newly created file")})
            : joined(
                  {tr("After editing the current HTML document, save the file in its current location (by "
                      "using the editor's \"Save\" button)."),
                   QString(),
                   tr("Upon returning to the \"URL Editor\" window, use the \"Refresh\" button to update the "
                      "display.")});
    frmMessage message(QStringLiteral("Wendmark - HTML Editor"), text, this);
    runDialog(message);
    const std::int64_t task = m_parts.handOver.editorTaskId;
    if (task == 0 || !activateTask(task))
        startHtmlEditor(toQString(file));
}

/// `file` is percent-encoded and lacks the separator that begins a path.
void frmBrowser::startHtmlEditor(const QString& file) {
    QString path = QUrl::fromPercentEncoding(toQString(AddSpaces(toUtf8(file))).toUtf8());
#ifndef _WIN32
    if (!path.isEmpty())
        path.prepend(QLatin1Char('/'));
#endif
    const QString editor = toQString(m_parts.options.htmlEditorPath);
    m_parts.handOver.editorTaskId = startTask(editor, {path});
    if (m_parts.handOver.editorTaskId == 0) {
        m_parts.tour.log.fail("cannot start the HTML editor " + m_parts.options.htmlEditorPath);
        showNotice(tr("%1 could not be started. Choose another editor in the options.").arg(editor));
    }
}

} // namespace wendmark
