#include "probe/PageProbe.h"

#include "platform/BrowserPage.h"
#include "platform/Strings.h"
#include "probe/FramePages.h"

#include <QWebEngineProfile>
#include <utility>

namespace wendmark {

namespace {

// Of what a page makes the browser say.
constexpr std::size_t mostMessages = 10;
constexpr qsizetype longestMessage = 4000;

} // namespace

PageProbe::PageProbe(QWebEngineProfile& profile, FramePages& pages, const std::string& address, QUrl framing,
                     Patience patience, QObject* parent)
    : QObject(parent)
    , m_pages(pages)
    , m_patience(patience)
    , m_framing(std::move(framing))
    , m_page(new BrowserPage(profile, this))
    , m_request(QUrl(toQString(address)), profile.httpUserAgent(), patience.page) {
    m_findings.address = address;
    m_findings.framedBy = originOf(toUtf8(m_framing.toString(QUrl::FullyEncoded))).value_or(WebOrigin());
    m_page->setUnattended();
    m_page->watchFramesOf(m_framing);
    for (QTimer* const timer : {&m_limit, &m_late}) {
        timer->setSingleShot(true);
        timer->callOnTimeout(this, &PageProbe::settle);
    }
    connectPage();
    m_clock.start();
    m_limit.start(m_patience.page);
    m_page->setUrl(m_framing);
}

PageProbe::~PageProbe() {
    m_pages.remove(m_framing);
}

void PageProbe::connectPage() {
    connect(m_page, &BrowserPage::firstFrameFilled, this, &PageProbe::noteFrame);
    connect(m_page, &BrowserPage::frameRefused, this, [this](const QString& message) {
        if (m_findings.console.size() < mostMessages)
            m_findings.console.push_back(toUtf8(message.left(longestMessage)));
    });
    connect(m_page, &BrowserPage::takeOverTried, this, [this] { m_findings.triedToTakeOver = true; });
    connect(m_page, &BrowserPage::downloadRefused, this, [this] {
        m_findings.isDownload = m_findings.frame != PageFindings::Frame::page;
        m_isFrameDone = m_isFrameDone || m_findings.isDownload;
        finish();
    });
    connect(m_page, &QWebEnginePage::loadFinished, this, &PageProbe::noteEnd);
    connect(m_page, &QWebEnginePage::renderProcessTerminated, this, &PageProbe::settle);
    connect(m_page, &QWebEnginePage::urlChanged, this, [this](const QUrl& address) {
        if (address.matches(m_framing, QUrl::RemoveFragment) || address.isEmpty())
            return;
        m_findings.triedToTakeOver = true; // And has succeeded.
        settle();
    });
    // Queued: what finishes deletes the request.
    connect(&m_request, &HeaderRequest::done, this, &PageProbe::finish, Qt::QueuedConnection);
}

void PageProbe::noteFrame(const QUrl& shown) {
    if (shown.scheme() == QLatin1String("about"))
        return;
    const bool isError = shown.scheme() == QLatin1String("chrome-error");
    if (m_findings.frame == PageFindings::Frame::nothing)
        m_findings.milliseconds = m_clock.elapsed();
    m_findings.frame = isError ? PageFindings::Frame::error : PageFindings::Frame::page;
    if (!m_isFrameDone)
        m_limit.start(m_patience.rest);
}

/// Of everything in the page around the frame. What browsers save leaves the frame empty.
void PageProbe::noteEnd() {
    if (m_findings.frame != PageFindings::Frame::nothing)
        m_late.start(m_patience.late);
}

void PageProbe::settle() {
    m_isFrameDone = true;
    m_limit.stop();
    m_late.stop();
    finish();
}

void PageProbe::finish() {
    if (!m_isFrameDone || !m_request.isDone() || std::exchange(m_isFinished, true))
        return;
    m_findings.answers = m_request.answers();
    m_findings.failure = m_request.failure();
    emit done();
}

} // namespace wendmark
