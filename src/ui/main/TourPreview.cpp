#include "ui/main/TourPreview.h"

#include "base/Files.h"
#include "base/Log.h"
#include "base/Numbers.h"
#include "base/Windows1252.h"
#include "commands/TourDocument.h"
#include "platform/BrowserView.h"
#include "platform/Gate.h"
#include "platform/QtDesktop.h"
#include "platform/Strings.h"
#include "ui/main/PreviewVeil.h"
#include "ui/main/StopNumber.h"

#include <QVBoxLayout>
#include <utility>

namespace wendmark {

namespace {

constexpr int typingDelay = 150; // Milliseconds that collect keys.
constexpr int siteDelay = 400;   // Milliseconds that the words of a stop wait for its site.
constexpr QLatin1String stopTag(">*>*>vosktourstop->");
constexpr QLatin1String siteTag(">*>*>site->");
constexpr QLatin1String narrationFrame("nar");
constexpr std::size_t longestInPlace = 500'000; // Bytes of a page.

} // namespace

TourPreview::TourPreview(TourDocument& document, Gate& gate, QtDesktop& desktop, QWebEngineProfile& profile,
                         StopNumber& stopNumber, QWidget* parent)
    : QFrame(parent)
    , m_document(document)
    , m_gate(gate)
    , m_stopNumber(stopNumber)
    , m_browser(new BrowserView(profile, this))
    , m_veil(new PreviewVeil(*m_browser)) {
    setObjectName(QStringLiteral("picBrowser"));
    setFrameShape(QFrame::StyledPanel);
    m_browser->setObjectName(QStringLiteral("broMain"));
    m_browser->setAccessibleName(tr("The tour as visitors see it"));
    m_browser->setAllowedFolders({toQString(document.workspace().folders().newTourPath)});
    auto* const panelLayout = new QVBoxLayout(this);
    panelLayout->setContentsMargins({});
    panelLayout->addWidget(m_browser);
    setFocusProxy(m_browser);

    connect(m_browser, &BrowserView::statusTextChanged, this, &TourPreview::takeOverStatusText);
    connect(m_browser, &BrowserView::linkHovered, this, &TourPreview::showLinkOrStatus);
    connect(m_browser, &BrowserView::rendererDied, this, &TourPreview::reportDeadRenderer);
    connect(m_browser, &BrowserView::navigationCompleted, this, [this] {
        m_previewComing = m_previewComing && m_browser->isBusy();
        if (std::exchange(m_typedMeanwhile, false))
            m_typing.start();
        m_browser->watchPainting();
    });
    connect(m_browser, &BrowserView::downloadRefused, this, [this] { m_siteComing = false; });
    connect(m_browser, &BrowserView::painted, this, &TourPreview::showPageCome);
    m_slowPage.setSingleShot(true);
    m_slowPage.setInterval(siteDelay);
    m_slowPage.callOnTimeout(m_browser, &BrowserView::watchPainting);
    connect(&desktop, &QtDesktop::mainBrowserNavigationRequested, this, &TourPreview::goTo);
    m_typing.setSingleShot(true);
    m_typing.setInterval(typingDelay);
    m_typing.callOnTimeout(this, &TourPreview::showTypedText);
    document.addListener(*this);
    tourChangedNow();
}

TourPreview::~TourPreview() {
    m_document.removeListener(*this);
}

void TourPreview::showOpeningPage() {
    goTo(toQString(m_document.workspace().workingFile("fv1.htm")));
}

void TourPreview::showPage() {
    m_typing.stop();
    const QString name = QStringLiteral("page%1.htm").arg(m_document.model().currentStop);
    m_browser->replaceFrame(narrationFrame,
                            QUrl::fromLocalFile(toQString(m_document.workspace().workingFile(toUtf8(name)))));
}

void TourPreview::stop() {
    m_siteComing = false;
    m_browser->stop();
}

bool TourPreview::isBusy() const {
    return m_browser->isBusy() || m_siteComing;
}

void TourPreview::runTick() {
    if (!m_waitingStopNumber.isNull() && !m_gate.isClosed())
        takeOverStopNumber(std::exchange(m_waitingStopNumber, QString()));
}

void TourPreview::setInnerMargins(int beside) {
    layout()->setContentsMargins(beside, 0, beside, 0);
}

void TourPreview::goTo(const QString& address) {
    m_previewComing = true;
    m_siteComing = false;
    m_waitingStopNumber = QString(); // Of the page that is going away.
    awaitPage();
    m_browser->navigate(address);
}

void TourPreview::awaitPage() {
    m_slowPage.stop();
    m_veil->cover();
    m_stopNumber.showLoading(true);
}

void TourPreview::showPageCome() {
    if (m_browser->isBusy() && m_previewComing)
        return; // It is the page before.
    m_slowPage.stop();
    m_veil->lift();
    m_stopNumber.showLoading(false);
}

void TourPreview::takeOverStatusText(const QString& text, const QUrl& source) {
    // Only pages of the working copy tell which stop is on screen, and whether its page is.
    if (text.startsWith(siteTag) && source.isLocalFile()) {
        m_siteComing = text.mid(siteTag.size()) == QLatin1String("coming");
        return;
    }
    m_lastStatus = text;
    emit statusShown(text);
    if (text.startsWith(stopTag) && source.isLocalFile())
        takeOverStopNumber(text.mid(stopTag.size()));
}

void TourPreview::takeOverStopNumber(const QString& text) {
    if (m_gate.isClosed()) {
        m_waitingStopNumber = text.isNull() ? QStringLiteral("") : text;
        return; // The command still needs its stop.
    }
    const std::int16_t stop = roundTo16Bits(leadingNumber(toUtf8(text))).value_or(0);
    const bool canBe = stop >= 0 && stop <= tourCapacity; // Pages of a tour may say anything.
    if (!canBe || isLateAnnouncement(stop))
        return;
    m_stopNumber.showStop(text);
    m_document.takeAnnouncedStop(stop);
}

bool TourPreview::isLateAnnouncement(std::int16_t stop) {
    // Until the stop that the browser was sent to is there, the page before it may still announce its own.
    if (m_previewComing && stop != m_document.model().currentStop)
        return true;
    m_previewComing = false;
    if (m_veil->isVisible())
        m_slowPage.start();
    return false;
}

void TourPreview::stopContentChanged(std::int16_t stop) {
    m_typedMeanwhile = true; // A page that is on its way may have been read before.
    if (stop == m_document.model().currentStop && !m_typing.isActive())
        m_typing.start();
}

void TourPreview::tourChangedNow() {
    m_stopNumber.showCount(m_document.model().stopCount());
}

/// The words of the stop, in place: nothing else of the tour is loaded again.
void TourPreview::showTypedText() {
    if (m_gate.isClosed()) {
        m_typing.start(); // The tour may be half done.
        return;
    }
    const std::int16_t stop = m_document.model().currentStop;
    if (stop < 1 || stop > m_document.model().stops.held() || !m_document.filesAreThere())
        return; // A command has come in between.
    const std::string name = "page" + std::to_string(stop) + ".htm";
    const files::Contents page = files::read(m_document.workspace().workingFile(name));
    m_document.log().skipAsNote(page.outcome); // The program may have left the tour.
    if (page.bytes.size() > longestInPlace)
        showPage();
    else if (page.outcome.ok())
        m_browser->replaceBody(narrationFrame, toQString(windows1252::decode(page.bytes)));
}

void TourPreview::showLinkOrStatus(const QString& address) {
    emit statusShown(address.isEmpty() ? m_lastStatus : address);
}

void TourPreview::reportDeadRenderer(bool comesBack) {
    m_siteComing = false;
    m_veil->lift();
    m_stopNumber.showLoading(false);
    m_lastStatus = comesBack ? tr("The page has crashed and is loaded again")
                             : tr("The page keeps crashing and stays away until you choose Refresh");
    m_document.log().warn(toUtf8(m_lastStatus));
    emit statusShown(m_lastStatus);
}

} // namespace wendmark
