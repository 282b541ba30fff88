#include "platform/BrowserView.h"

#include "platform/BrowserPage.h"
#include "platform/FrameScripts.h"
#include "platform/PageMenu.h"

#include <QChildEvent>
#include <QDir>
#include <QVBoxLayout>
#include <QWebEngineDownloadRequest>
#include <QWebEngineLoadingInfo>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineSettings>
#include <QWebEngineView>
#include <utility>

namespace wendmark {

namespace {

constexpr int mostRevivals = 3;

/// A worker that pages share belongs to none of them, so nothing confines the files that it reads. There are
/// none, therefore. Has effect until the engine starts, which it does with the first profile.
void doWithoutSharedWorkers() {
    constexpr auto variable = "QTWEBENGINE_CHROMIUM_FLAGS";
    const QByteArray flag = "--disable-shared-workers";
    const QByteArray flags = qgetenv(variable);
    if (!flags.contains(flag))
        qputenv(variable, flags + ' ' + flag);
}

} // namespace

QWebEngineProfile* makeBrowserProfile(QObject* parent) {
    doWithoutSharedWorkers();
    auto* const profile = new QWebEngineProfile(parent); // Without a name it is off the record.
    QObject::connect(profile, &QWebEngineProfile::downloadRequested, profile,
                     [](QWebEngineDownloadRequest* download) {
                         download->cancel();
                         if (auto* const page = qobject_cast<BrowserPage*>(download->page()); page != nullptr)
                             emit page->downloadRefused(download->url());
                     });
    return profile;
}

BrowserView::BrowserView(QWebEngineProfile& profile, QWidget* parent)
    : QWidget(parent), m_view(new QWebEngineView(this)), m_page(new BrowserPage(profile, m_view)) {
    m_view->setPage(m_page);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_view);
    setFocusProxy(m_view);
    m_view->installEventFilter(this);
    m_keyboardKeeper.setSingleShot(true);
    m_keyboardKeeper.callOnTimeout(this, &BrowserView::keepKeyboard);

    connectPage();
}

BrowserView::~BrowserView() = default;

void BrowserView::setAllowedFolders(const QStringList& folders, const QString& closedFolder) {
    m_page->confinement().setAllowedFolders(folders, closedFolder);
}

void BrowserView::setLookOnly() {
    m_page->setLookOnly();
    m_view->setContextMenuPolicy(Qt::NoContextMenu);
    m_view->setAcceptDrops(false);
}

void BrowserView::setNewWindowsHere() {
    m_page->setNewWindowsHere();
}

void BrowserView::setFocusStays() {
    m_page->settings()->setAttribute(QWebEngineSettings::FocusOnNavigationEnabled, false);
}

void BrowserView::setContextActions(const QList<QAction*>& actions) {
    new PageMenu(*m_view, actions, this);
}

void BrowserView::showPage(const QByteArray& html, const QString& folder) {
    m_rendererDeaths = 0;
    m_next.clear();
    m_page->setContent(html, QStringLiteral("text/html"), QUrl::fromLocalFile(folder + QLatin1Char('/')));
}

void BrowserView::navigate(const QString& addressOrPath) {
    navigate(addressFromText(addressOrPath));
}

void BrowserView::navigate(const QUrl& address) {
    m_rendererDeaths = 0;
    if (!m_page->mayShow(address)) {
        emit navigationRefused(address);
        if (!address.isLocalFile())
            return; // It is another program's.
    }
    m_next = address;
    emit locationChanged();
    if (m_page->isLoading())
        m_page->triggerAction(QWebEnginePage::Stop);
    else
        goToNext();
}

void BrowserView::goBack() {
    m_next.clear();
    m_page->triggerAction(QWebEnginePage::Back);
}

void BrowserView::goForward() {
    m_next.clear();
    m_page->triggerAction(QWebEnginePage::Forward);
}

void BrowserView::reload() {
    m_next.clear();
    m_page->triggerAction(QWebEnginePage::Reload);
}

void BrowserView::stop() {
    m_intruder.clear();
    m_next.clear();
    m_stopped = m_page->isLoading();
    m_page->triggerAction(QWebEnginePage::Stop);
}

bool BrowserView::isBusy() const {
    return !m_intruder.isEmpty() || !m_next.isEmpty() || m_page->isLoading();
}

void BrowserView::deleteWindowLater() {
    if (m_page->showsDialog())
        connect(m_page, &BrowserPage::dialogEnded, window(), &QObject::deleteLater);
    else
        window()->deleteLater();
}

QUrl BrowserView::location() const {
    return m_next.isEmpty() ? m_page->url() : m_next;
}

QString BrowserView::locationURL() const {
    return location().toString(QUrl::FullyEncoded);
}

QString BrowserView::locationName() const {
    return m_page->title();
}

void BrowserView::grantTakeOverOf(const QUrl& address) {
    m_page->watchFramesOf(address);
    m_firstFrame.clear();
    m_frameRefusals.clear();
}

bool BrowserView::firstFrameShowsError() const {
    return m_firstFrame.scheme() == QLatin1String("chrome-error");
}

QPointF BrowserView::scrollPosition() const {
    return m_page->scrollPosition();
}

void BrowserView::scrollTo(const QPointF& place) {
    // The program's own scripts have a world to themselves.
    m_page->runJavaScript(QStringLiteral("window.scrollTo(%1, %2)").arg(place.x()).arg(place.y()),
                          QWebEngineScript::ApplicationWorld);
}

void BrowserView::replaceBody(const QString& frame, const QString& html) {
    m_page->runJavaScript(scriptToReplaceBody(frame, html), QWebEngineScript::ApplicationWorld);
}

void BrowserView::replaceFrame(const QString& frame, const QUrl& address) {
    m_page->runJavaScript(scriptToReplaceFrame(frame, address), QWebEngineScript::ApplicationWorld);
}

void BrowserView::setDark(bool dark) {
    m_page->setDark(dark);
}

void BrowserView::watchPainting() {
    m_page->watchPainting();
}

void BrowserView::setBackground(const QColor& colour) {
    m_page->setBackgroundColor(colour);
}

bool BrowserView::focusNextPrevChild(bool next) {
    if (m_changesWidget)
        return true;
    const auto neighbourOf = [&](const QWidget* widget) {
        return next ? widget->nextInFocusChain() : widget->previousInFocusChain();
    };
    for (QWidget* widget = neighbourOf(this); widget != this; widget = neighbourOf(widget)) {
        const bool takesTab = (widget->focusPolicy() & Qt::TabFocus) != 0 && widget->focusProxy() == nullptr;
        if (takesTab && widget->isVisibleTo(window()) && widget->isEnabled() && !isAncestorOf(widget)) {
            widget->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return true;
        }
    }
    return false;
}

/// For each process that draws its pages the engine puts another widget in the place of the one before. In
/// between it lets go of the keyboard, which stays with the page.
bool BrowserView::eventFilter(QObject* watched, QEvent* event) {
    if (watched != m_view)
        return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::ChildAdded) {
        const QWidget* const focus = window()->focusWidget();
        m_changesWidget = focus != nullptr && m_view->isAncestorOf(focus) && focus->isHidden();
    }
    const bool oneLess = event->type() == QEvent::ChildRemoved && std::exchange(m_changesWidget, false);
    if (m_changesWidget || oneLess)
        m_keyboardKeeper.start(0);
    return QWidget::eventFilter(watched, event);
}

void BrowserView::keepKeyboard() {
    const QWidget* const focus = window()->focusWidget();
    if (focus == nullptr || m_view->isAncestorOf(focus))
        m_view->setFocus();
}

void BrowserView::connectPage() {
    connect(m_page, &BrowserPage::statusTextSet, this, &BrowserView::statusTextChanged);
    connect(m_page, &BrowserPage::firstFrameFilled, this,
            [this](const QUrl& address) { m_firstFrame = address; });
    connect(m_page, &BrowserPage::frameRefused, this,
            [this](const QString& message) { m_frameRefusals.append(message); });
    connect(m_page, &BrowserPage::takeOverTried, this, &BrowserView::noteIntruder);
    connect(m_page, &BrowserPage::navigationRefused, this, &BrowserView::navigationRefused);
    connect(m_page, &BrowserPage::downloadRefused, this, &BrowserView::downloadRefused);
    connect(m_page, &BrowserPage::certificateRefused, this, &BrowserView::certificateRefused);
    connect(m_page, &BrowserPage::passwordWanted, this, &BrowserView::passwordWanted);
    connect(m_page, &BrowserPage::painted, this, &BrowserView::painted);
    connect(m_page, &QWebEnginePage::linkHovered, this, &BrowserView::linkHovered);
    connect(m_page, &QWebEnginePage::titleChanged, this, &BrowserView::locationNameChanged);
    connect(m_page, &QWebEnginePage::urlChanged, this, &BrowserView::locationChanged);
    connect(m_page, &QWebEnginePage::loadingChanged, this, [this](const QWebEngineLoadingInfo& loading) {
        if (loading.status() == QWebEngineLoadingInfo::LoadStartedStatus)
            noteStart(loading.url());
        else
            noteFailure(loading);
    });
    connect(m_page, &QWebEnginePage::loadFinished, this, &BrowserView::noteEnd);
    // Queued: what is asked of the engine from inside its own message would be lost.
    connect(m_page, &BrowserPage::takeOverTried, this, &BrowserView::giveWayToIntruder, Qt::QueuedConnection);
    connect(m_page, &QWebEnginePage::loadFinished, this, &BrowserView::goToNext, Qt::QueuedConnection);
    connect(m_page, &QWebEnginePage::renderProcessTerminated, this, &BrowserView::reviveRenderer,
            Qt::QueuedConnection);
}

void BrowserView::noteStart(const QUrl& address) {
    m_firstFrame.clear();
    m_frameRefusals.clear();
    m_stopped = false;
    emit busyChanged(true);
    emit navigationStarted(address);
}

void BrowserView::noteEnd(bool ok) {
    if (!m_next.isEmpty())
        return; // goToNext() follows.
    emit busyChanged(isBusy());
    emit navigationCompleted(ok);
}

/// Follows noteEnd() at once.
void BrowserView::noteFailure(const QWebEngineLoadingInfo& loading) {
    if (!m_next.isEmpty() || loading.status() == QWebEngineLoadingInfo::LoadSucceededStatus)
        return;
    const QUrl address = loading.url();
    if (!m_page->mayShow(address))
        emit loadFailed(LoadFailure::otherProgram, address);
    else if (loading.errorDomain() == QWebEngineLoadingInfo::HttpStatusCodeDomain)
        emit serverRefused(loading.errorCode());
    else
        emit loadFailed(m_stopped ? LoadFailure::stopped : loadFailureFrom(loading.errorCode()), address);
}

/// One load at a time: the engine loses count when one gives way to another, and the second may come without
/// a word.
void BrowserView::goToNext() {
    if (!m_next.isEmpty() && !m_page->isLoading())
        m_page->setUrl(std::exchange(m_next, {}));
}

/// The address is not taken from what the page said but from the engine, so no page sends the window
/// elsewhere.
void BrowserView::noteIntruder() {
    m_intruder = m_firstFrame;
}

void BrowserView::giveWayToIntruder() {
    if (!m_intruder.isEmpty())
        navigate(std::exchange(m_intruder, {}));
}

void BrowserView::reviveRenderer() {
    const bool comesBack = ++m_rendererDeaths <= mostRevivals;
    emit rendererDied(comesBack);
    if (comesBack && m_next.isEmpty())
        reload();
}

QUrl addressFromText(const QString& addressOrPath) {
    const QString filePrefix = QStringLiteral("file://");
    if (addressOrPath.startsWith(filePrefix))
        return QUrl::fromLocalFile(addressOrPath.mid(filePrefix.size()));
    if (QDir::isAbsolutePath(addressOrPath))
        return QUrl::fromLocalFile(addressOrPath);
    return QUrl(addressOrPath);
}

} // namespace wendmark
