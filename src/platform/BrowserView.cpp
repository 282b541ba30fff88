#include "platform/BrowserView.h"

#include "platform/BrowserPage.h"

#include <QDir>
#include <QVBoxLayout>
#include <QWebEngineDownloadRequest>
#include <QWebEngineProfile>
#include <QWebEngineView>

namespace wendmark {

namespace {

constexpr int mostRevivals = 3;

} // namespace

QWebEngineProfile* makeBrowserProfile(QObject* parent) {
    auto* const profile = new QWebEngineProfile(parent); // Without a name it is off the record.
    QObject::connect(profile, &QWebEngineProfile::downloadRequested, profile,
                     [](QWebEngineDownloadRequest* download) { download->cancel(); });
    return profile;
}

BrowserView::BrowserView(QWebEngineProfile& profile, QWidget* parent)
    : QWidget(parent), m_view(new QWebEngineView(this)), m_page(new BrowserPage(profile, m_view)) {
    m_view->setPage(m_page);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_view);
    setFocusProxy(m_view);

    connect(m_page, &BrowserPage::statusTextSet, this, &BrowserView::statusTextChanged);
    connect(m_page, &QWebEnginePage::linkHovered, this, &BrowserView::linkHovered);
    connect(m_page, &QWebEnginePage::titleChanged, this, &BrowserView::locationNameChanged);
    connect(m_page, &QWebEnginePage::loadStarted, this, [this] { emit busyChanged(true); });
    connect(m_page, &QWebEnginePage::loadFinished, this, [this](bool ok) {
        emit busyChanged(false);
        emit navigationCompleted(ok);
    });
    // Queued: a reload from inside the engine's own message would be lost.
    connect(m_page, &QWebEnginePage::renderProcessTerminated, this, &BrowserView::reviveRenderer,
            Qt::QueuedConnection);
}

BrowserView::~BrowserView() = default;

void BrowserView::setAllowedFolders(const QStringList& folders) {
    m_page->confinement().setAllowedFolders(folders);
}

void BrowserView::setLookOnly() {
    m_page->setLookOnly();
    m_view->setContextMenuPolicy(Qt::NoContextMenu);
    m_view->setAcceptDrops(false);
}

void BrowserView::showPage(const QByteArray& html, const QString& folder) {
    m_rendererDeaths = 0;
    m_page->setContent(html, QStringLiteral("text/html"), QUrl::fromLocalFile(folder + QLatin1Char('/')));
}

void BrowserView::navigate(const QString& addressOrPath) {
    m_rendererDeaths = 0;
    m_page->setUrl(addressFromText(addressOrPath));
}

void BrowserView::goBack() {
    m_page->triggerAction(QWebEnginePage::Back);
}

void BrowserView::goForward() {
    m_page->triggerAction(QWebEnginePage::Forward);
}

void BrowserView::reload() {
    m_page->triggerAction(QWebEnginePage::Reload);
}

void BrowserView::stop() {
    m_page->triggerAction(QWebEnginePage::Stop);
}

bool BrowserView::isBusy() const {
    return m_page->isLoading();
}

QString BrowserView::locationURL() const {
    return m_page->url().toString();
}

QString BrowserView::locationName() const {
    return m_page->title();
}

void BrowserView::reviveRenderer() {
    const bool comesBack = ++m_rendererDeaths <= mostRevivals;
    emit rendererDied(comesBack);
    if (comesBack)
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
