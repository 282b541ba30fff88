#include "ui/site/frmBrowser.h"

#include "commands/TourDocument.h"
#include "model/Options.h"
#include "platform/BrowserView.h"
#include "platform/Gate.h"
#include "platform/Icons.h"
#include "platform/QtDesktop.h"
#include "platform/Settings.h"
#include "platform/SettingsStore.h"
#include "platform/Strings.h"
#include "platform/Twips.h"
#include "ui/WindowPlace.h"
#include "ui/controls/CommandBar.h"
#include "ui/controls/ElidedLabel.h"
#include "ui/controls/LoadingIndicator.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/site/AddressBox.h"
#include "ui/site/BookmarkPanel.h"
#include "ui/site/HtmlEditor.h"
#include "ui/site/LocalPage.h"
#include "ui/site/NoticeBar.h"
#include "ui/site/PageNotices.h"
#include "ui/site/SiteAddress.h"
#include "ui/site/SiteEntry.h"
#include "ui/site/SitePanes.h"
#include "ui/site/SiteTest.h"
#include "ui/site/SiteUse.h"
#include "ui/site/StopLine.h"
#include "ui/site/frmSignIn.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

namespace wendmark {

namespace {

constexpr int tickInterval = 20;        // Milliseconds.
constexpr float besideMainWindow = 400; // Twips.

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
    {"Test", "Test Frame-friendliness", "siteTest", "F7", true},
};

QString caption(const QString& state) {
    return QStringLiteral("Wendmark - URL Editor - ") + state;
}

QAction* addCommand(QWidget& window, const QString& text, const QList<QKeySequence>& keys) {
    auto* const action = new QAction(text, &window);
    action->setShortcuts(keys);
    window.addAction(action);
    return action;
}

void addKeys(QWidget& window, AddressBox& address) {
    QAction* const edit = addCommand(window, frmBrowser::tr("Address"),
                                     {QKeySequence(Qt::CTRL | Qt::Key_L), QKeySequence(Qt::Key_F6)});
    QObject::connect(edit, &QAction::triggered, &address, &AddressBox::edit);
    // Not every desktop has a key of its own for that.
    QAction* const close =
        addCommand(window, frmBrowser::tr("Close"), QKeySequence::keyBindings(QKeySequence::Close));
    QObject::connect(close, &QAction::triggered, &window, &QWidget::close);
}

/// A stop holds the name of a local page as it stands in a link, percent-encoded.
QUrl addressOfStop(const QString& text, const QString& folder) {
    if (!text.startsWith(folder))
        return QUrl::fromUserInput(text);
    return QUrl::fromLocalFile(folder).resolved(QUrl(text.mid(folder.size())));
}

QLayout* makeAddressRow(AddressBox& address, QPushButton& fileButton) {
    auto* const label = new QLabel(frmBrowser::tr("&Address"));
    label->setBuddy(&address);
    fileButton.setToolTip(frmBrowser::tr("Copy a page of your own into the tour and show it"));
    auto* const row = new QHBoxLayout;
    row->setSpacing(dialogGap);
    row->addWidget(label);
    row->addWidget(&address, 1);
    row->addWidget(&fileButton);
    return row;
}

} // namespace

frmBrowser::frmBrowser(const ProgramParts& parts, QWidget* parent)
    : QWidget(parent, editorFlags)
    , m_parts(parts)
    , m_document(parts.document)
    , m_toolBar(new CommandBar(this))
    , m_busy(new LoadingIndicator)
    , m_address(new AddressBox(parts.document, this))
    , m_fileButton(makeButton("btnSelectFile", tr("Select &Local File"), this))
    , m_panes(new SitePanes(this))
    , m_browser(new BrowserView(parts.browserProfile, m_panes))
    , m_bookmarks(new BookmarkPanel(parts.document, parts.gate, parts.desktop, m_panes))
    , m_notice(new NoticeBar(*m_browser, *this))
    , m_stopLine(new StopLine(parts.document, this))
    , m_timer(new QTimer(this))
    , m_test(new SiteTest(m_parts, *m_browser, *this))
    , m_entry(new SiteEntry(m_parts, *m_address, *m_notice, this))
    , m_use(new SiteUse(m_parts, *m_browser, *m_test, *this)) {
    setObjectName(QStringLiteral("frmBrowser"));
    setWindowTitle(QStringLiteral("Wendmark - Site Editor"));
    setupActions();
    setupToolBar();
    setupBrowser();
    m_timer->setObjectName(QStringLiteral("timTimer"));
    m_timer->setInterval(tickInterval);

    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(dialogGap, 0, dialogGap, dialogGap);
    layout->setSpacing(dialogGap / 2);
    layout->addWidget(m_toolBar);
    layout->addLayout(makeAddressRow(*m_address, *m_fileButton));
    m_panes->setPanes(m_browser, m_bookmarks, m_parts.settings);
    layout->addWidget(m_panes, 1);
    layout->addWidget(m_stopLine->label());
    setupConnections();
}

frmBrowser::~frmBrowser() {
    m_document.removeListener(*this);
}

void frmBrowser::load(const Bounds& mainWindowBounds) {
    const Bounds& main = mainWindowBounds;
    move(pixelsFromTwips(main.left + besideMainWindow), pixelsFromTwips(main.top + besideMainWindow));
    resize(pixelsFromTwips(main.width), pixelsFromTwips(main.height));
    keepOnScreen(*this);
    if (m_parts.settings.read(siteSettings::maximised))
        setWindowState(windowState() | Qt::WindowMaximized);
    m_address->LoadHistory();
    takeStop();
    goTo(siteEditAddress());
    m_address->edit();
    m_bookmarks->LoadGoodList();
    m_document.addListener(*this);
}

void frmBrowser::showStop() {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
    takeStop();
    goTo(siteEditAddress());
    m_address->edit();
}

/// A stop's local page lies in the working copy.
void frmBrowser::takeStop() {
    m_siteEditURL = m_document.model().stops.at(m_document.model().currentStop).stopURL;
    if (!isRemoteAddress(m_siteEditURL))
        m_siteEditURL.insert(0, m_document.workspace().folders().newTourPath);
    m_use->clearResult();
}

const std::string& frmBrowser::siteEditResult() const {
    return m_use->siteEditResult();
}

bool frmBrowser::closeNow() {
    m_bookmarks->SaveGoodList();
    m_address->SaveHistory();
    m_panes->store(m_parts.settings);
    m_parts.settings.store(siteSettings::maximised, isMaximized());
    m_closing = true;
    m_parts.desktop.setBusyPointer(Desktop::Pointer::standard); // A test that was given up leaves its own.
    hide();
    m_browser->deleteWindowLater();
    emit closed();
    return true;
}

void frmBrowser::runToolBarCommand(const QString& key) {
    if (!m_actions.contains(key))
        return;
    m_notice->showText({});
    m_timer->start();
    Gate& gate = m_parts.gate;
    if (key == QLatin1String("Yes"))
        gate.run(*this, [this] { m_use->run(); });
    else if (key == QLatin1String("Edit"))
        gate.run(*this, [this] { launchHtmlEditor(); });
    else if (key == QLatin1String("Test"))
        gate.run(*this, [this] { m_test->report(); });
    else
        gate.run(
            *this, [this, key] { browse(key); }, Gate::Kind::look);
}

void frmBrowser::browse(const QString& key) {
    static const QHash<QString, void (BrowserView::*)()> steps = {
        {QStringLiteral("Back"), &BrowserView::goBack},
        {QStringLiteral("Forward"), &BrowserView::goForward},
        {QStringLiteral("Refresh"), &BrowserView::reload}};
    if (steps.contains(key))
        (m_browser->*steps.value(key))();
    else if (key == QLatin1String("Home"))
        m_entry->enter(m_parts.settings.read(siteSettings::homePage));
    else if (key == QLatin1String("Search"))
        m_browser->navigate(QStringLiteral("file://") + workingFolder() + QStringLiteral("search.htm"));
    if (key != QLatin1String("Stop"))
        return;
    m_timer->stop();
    m_browser->stop();
    m_address->replaceByAddress(m_browser->locationURL());
    showCaption();
}

void frmBrowser::closeEvent(QCloseEvent* event) {
    if (m_closing)
        return;
    event->ignore();
    m_test->abandon(true);
    m_parts.gate.run(*this, [this] {
        if (!m_closing)
            closeNow();
    });
    event->setAccepted(m_closing);
}

bool frmBrowser::event(QEvent* event) {
    // Its own dialogs are part of its work.
    if (event->type() == QEvent::WindowDeactivate && isVisible() && !m_closing &&
        QApplication::activeModalWidget() == nullptr)
        m_parts.gate.run(
            *this, [this] { saveLists(); }, Gate::Kind::look);
    return QWidget::event(event);
}

void frmBrowser::setupActions() {
    for (const ToolBarButton& button : toolBarButtons) {
        const QString key = QLatin1String(button.key);
        QAction* const action =
            addCommand(*this, tr(button.toolTip), {QKeySequence(QLatin1String(button.shortcut))});
        action->setIcon(themedIcon(QLatin1String(button.icon)));
        connect(action, &QAction::triggered, this, [this, key] { runToolBarCommand(key); });
        m_actions.insert(key, action);
    }
    m_testInWindow = addCommand(*this, tr("Test in a &Window..."), {QKeySequence(Qt::SHIFT | Qt::Key_F7)});
    m_testInWindow->setObjectName(QStringLiteral("mnuTestFrame"));
    connect(m_testInWindow, &QAction::triggered, this,
            [this] { m_parts.gate.run(*this, [this] { m_test->showDialog(); }); });
    addKeys(*this, *m_address);
    // While a test runs, the toolbar's own Esc has no effect.
    m_abandonTest = addCommand(*this, tr("Give the Test Up"), {QKeySequence(Qt::Key_Escape)});
    m_abandonTest->setEnabled(false);
    connect(m_abandonTest, &QAction::triggered, this, [this] { m_test->abandon(false); });
}

void frmBrowser::setupToolBar() {
    m_toolBar->setObjectName(QStringLiteral("tbToolBar"));
    for (const ToolBarButton& button : toolBarButtons) {
        const QString key = QLatin1String(button.key);
        m_toolBar->addButton(key, tr(button.toolTip), *m_actions.value(key));
        if (button.endsGroup)
            m_toolBar->addGap();
    }
    m_toolBar->showText(QStringLiteral("Yes"));
    m_busy->setObjectName(QStringLiteral("picBusy"));
    m_toolBar->addPlaceholder(QStringLiteral("picBusy"), m_busy);
}

void frmBrowser::setupBrowser() {
    m_browser->setObjectName(QStringLiteral("brwWebBrowser"));
    m_browser->setAllowedFolders({workingFolder()});
    m_browser->setNewWindowsHere();
    m_browser->setFocusStays();
    m_browser->setAccessibleName(tr("Page"));
    const auto action = [this](const char* key) { return m_actions.value(QLatin1String(key)); };
    m_browser->setContextActions(
        {action("Back"), action("Forward"), action("Refresh"), action("Yes"), m_testInWindow});
    answerPasswordQuestions(*m_browser, *this);
    // Of the pages of a test the test itself says what there is to say.
    connectNotices(*m_browser, *this, [this](const QString& text, bool ofLoading) {
        if (!ofLoading || !m_test->isRunning())
            m_notice->showText(text, ofLoading);
    });
}

void frmBrowser::setupConnections() {
    connect(m_toolBar, &CommandBar::buttonClicked, this, &frmBrowser::runToolBarCommand);
    connect(m_timer, &QTimer::timeout, this, &frmBrowser::runTick);
    connect(m_address, &AddressBox::addressWanted, this, [this](const QString& text, bool typed) {
        if (typed)
            m_browser->setFocus();
        // While a frame test waits, too, but not while a command has the files in its hands.
        m_parts.gate.run(
            *this, [this, text] { m_entry->enter(text); }, Gate::Kind::look);
    });
    connect(m_fileButton, &QPushButton::clicked, this,
            [this] { m_parts.gate.run(*this, [this] { selectLocalFile(); }); });
    connect(m_bookmarks, &BookmarkPanel::pageWanted, m_entry, &SiteEntry::enter);
    connect(m_test, &SiteTest::runningChanged, this, [this](bool running) { enableToolBar(!running); });
    connect(m_test, &SiteTest::pageWanted, this, &frmBrowser::goTo);
    connect(m_use, &SiteUse::pageWanted, this, &frmBrowser::goTo);
    const auto say = [this](const QString& text) { m_notice->showText(text); };
    connect(m_use, &SiteUse::noticeWanted, m_notice, say);
    connect(m_test, &SiteTest::noticeWanted, m_notice, say);
    connect(m_use, &SiteUse::ended, this,
            [this] { m_parts.options.autoCloseBrowser ? static_cast<void>(closeNow()) : saveLists(); });
    connect(m_bookmarks, &BookmarkPanel::rememberWanted, this,
            [this] { m_bookmarks->remember(m_test->isRunning() ? m_test->testedPage() : location()); });
    connect(m_browser, &BrowserView::navigationStarted, m_timer, qOverload<>(&QTimer::start));
    connect(m_browser, &BrowserView::navigationStarted, m_notice, &NoticeBar::endLoadNotice);
    connect(m_browser, &BrowserView::navigationCompleted, this, &frmBrowser::takeOverNavigation);
    connect(m_browser, &BrowserView::locationNameChanged, this, &frmBrowser::showCaption);
    connect(m_browser, &BrowserView::downloadRefused, this, &frmBrowser::showCaption);
    connect(m_browser, &BrowserView::serverRefused, this, [this] { m_address->recordVisit(location()); });
    connect(m_browser, &BrowserView::locationChanged, this, &frmBrowser::showLocation);
    connect(m_use, &SiteUse::stored, m_stopLine, &StopLine::tellStored);
    connect(m_browser, &BrowserView::navigationRefused, this, &frmBrowser::showLocation);
    connect(m_notice, &NoticeBar::searchWanted, this, [this] {
        m_parts.gate.run(
            *this, [this] { m_entry->search(); }, Gate::Kind::look);
    });
    connect(m_entry, &SiteEntry::pageWanted, this, &frmBrowser::leaveFor);
}

void frmBrowser::saveLists() {
    if (m_closing)
        return; // They are written, and by now another tour may be in the working copy.
    m_address->SaveHistory();
    m_bookmarks->SaveGoodList();
}

/// Going elsewhere gives a frame test up, which returns to its page before it ends: a verdict on a page that
/// the author has left would be none.
void frmBrowser::leaveFor(const QUrl& address) {
    if (!m_test->isRunning()) {
        goTo(address);
        return;
    }
    m_test->abandon(true);
    m_parts.gate.run(*this, [this, address] {
        m_parts.desktop.setBusyPointer(Desktop::Pointer::standard);
        goTo(address);
    });
}

void frmBrowser::goTo(const QUrl& address) {
    if (address.isEmpty())
        return;
    m_notice->showText({});
    m_address->replaceByAddress(address.toString(QUrl::FullyEncoded));
    // A page of the author's own is read with what lies beside it, but not by the pages of the tour.
    const QString itsFolder =
        address.isLocalFile() ? QFileInfo(address.toLocalFile()).absolutePath() : QString();
    m_browser->setAllowedFolders({workingFolder()}, itsFolder);
    m_timer->start();
    m_browser->navigate(address);
}

QUrl frmBrowser::siteEditAddress() {
    if (m_siteEditURL.size() > longestAddress) {
        m_notice->showText(longAddressNotice());
        return {};
    }
    return addressOfStop(toQString(m_siteEditURL), workingFolder());
}

void frmBrowser::takeOverNavigation(bool ok) {
    showCaption();
    ok ? m_address->recordVisit(location()) : showLocation();
}

/// During a test the browser goes to pages of the test.
void frmBrowser::showLocation() {
    if (m_test->isRunning())
        return;
    m_address->showAddress(m_browser->locationURL());
    m_stopLine->showPage(location());
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

QString frmBrowser::location() const {
    const QString address = m_browser->locationURL();
    return address == QLatin1String("about:blank") ? QString() : address;
}

QString frmBrowser::workingFolder() const {
    return toQString(m_document.workspace().folders().newTourPath);
}

void frmBrowser::enableToolBar(bool enabled) {
    m_toolBar->setEnabled(enabled);
    for (QAction* const action : std::as_const(m_actions))
        action->setEnabled(enabled);
    m_testInWindow->setEnabled(enabled);
    m_abandonTest->setEnabled(!enabled);
}

void frmBrowser::selectLocalFile() {
    const LocalPage page = takeLocalPage(m_parts, *this);
    if (page.address.isEmpty())
        return;
    goTo(page.address);
    m_notice->showText(page.notice);
}

void frmBrowser::launchHtmlEditor() {
    if (!m_parts.htmlEditor.launch(toUtf8(location()), this))
        m_notice->showText(tr("%1 could not be started. Choose another editor in the options.")
                               .arg(toQString(m_parts.options.htmlEditorPath)));
}

/// Undo may have changed the bookmarks.
void frmBrowser::tourChangedNow() {
    if (m_bookmarks->list() != m_document.bookmarks())
        m_bookmarks->setList(m_document.bookmarks());
}

} // namespace wendmark
