#include "ui/site/SiteTest.h"

#include "commands/TourDocument.h"
#include "model/FoundLinks.h"
#include "model/HtmlText.h"
#include "platform/BrowserView.h"
#include "platform/Gate.h"
#include "platform/QtDesktop.h"
#include "platform/Strings.h"
#include "ui/Messages.h"
#include "ui/ProgramParts.h"
#include "ui/cards/CardsInTour.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/dialogs/frmMessage.h"
#include "ui/site/PageNotices.h"
#include "ui/site/frmTestFrame.h"

#include <QScopedValueRollback>
#include <QWebEngineProfile>
#include <QWidget>
#include <optional>

namespace wendmark {

namespace {

constexpr float testPeriod = 30; // Seconds.
const QString testCaption = QStringLiteral("Wendmark - Frame Test");
const QString textEnd = QStringLiteral("\r\n\r\n");

} // namespace

SiteTest::SiteTest(const ProgramParts& parts, BrowserView& browser, QWidget& window)
    : QObject(&window), m_parts(parts), m_browser(browser), m_window(window) {
    connect(&parts.gate, &Gate::abandonRequested, this, [this] { abandon(true); });
}

FrameTest SiteTest::frameTest() const {
    return {m_browser, m_parts.document.workspace(), m_parts.gate, m_parts.document.log(),
            m_parts.browserProfile.httpUserAgent()};
}

FrameTest::Result SiteTest::run() {
    const QUrl page = m_browser.location();
    m_testedPage = m_browser.locationURL();
    m_start = m_parts.desktop.timeOfDay();
    m_wish = Wish::goOn;
    FrameTest::Result result = FrameTest::Result::abandoned;
    {
        const QScopedValueRollback running(m_running, true);
        emit runningChanged(true);
        FrameTest test = frameTest();
        result = test.run(page, [&] { return goOn(page); });
        m_reason = test.reason();
    }
    emit runningChanged(false);
    if (result == FrameTest::Result::notRun)
        emit noticeWanted(tr("The test page cannot be written into the tour's folder. Is the disk full?"));
    return result;
}

void SiteTest::report() {
    const QUrl page = m_browser.location();
    const std::int16_t stop = m_parts.document.model().currentStop;
    const FrameTest::Result result = run();
    if (result == FrameTest::Result::abandoned || result == FrameTest::Result::notRun)
        return;
    emit pageWanted(page);
    if (result == FrameTest::Result::passed)
        show(tr("Test Passed.... You can use this site in a tour"), noticeOfSecureTours(page.toString()));
    else
        showFailed(stop);
}

void SiteTest::abandon(bool quietly) {
    if (m_dialog != nullptr)
        m_dialog->reject();
    if (m_running || m_makesCard)
        m_wish = quietly ? Wish::stopQuietly : Wish::stop;
}

void SiteTest::showFailed(std::int16_t stop) {
    frmMessage message(testCaption,
                       tr("Test Failed.... You cannot use this site in a tour, because it cannot be viewed "
                          "inside a frame.") +
                           textEnd,
                       &m_window);
    message.addReason(m_reason);
    if (canHaveCard(stop))
        message.addOffer(
            tr("&Make a Card"),
            tr("A page of the tour's own that shows what the page is and opens it in a tab of its own"));
    runDialog(message);
    if (message.isOfferTaken())
        makeCardFor(stop);
}

bool SiteTest::canHaveCard(std::int16_t stop) const {
    return stop >= 1 && stop <= m_parts.document.model().stopCount() && isWebAddress(toUtf8(m_testedPage));
}

/// Its page is looked at beside the one that the browser shows. To close the window gives it up.
void SiteTest::makeCardFor(std::int16_t stop) {
    const Stop& its = m_parts.document.model().stops.at(stop);
    m_wish = Wish::goOn;
    std::optional<CardsInTour> cards;
    {
        const QScopedValueRollback making(m_makesCard, true);
        emit runningChanged(true);
        emit noticeWanted(tr("A card of this page is being made. Esc gives it up."));
        cards = makeCard(m_parts, {stop, its.stopURL, toUtf8(m_testedPage), visibleText(its.stopTitle), {}},
                         m_window, [this] { return m_wish == Wish::goOn; });
    }
    emit runningChanged(false);
    QString told = cards ? failureOf(*cards) : tr("No card has been made.");
    if (told.isEmpty())
        told = tr("Stop %1 shows a card of this page now.").arg(stop);
    emit noticeWanted(told);
}

void SiteTest::showDialog() {
    frmTestFrame dialog(frameTest(), m_browser, &m_window);
    m_testedPage = m_browser.locationURL();
    const QScopedValueRollback<QDialog*> shown(m_dialog, &dialog);
    runDialog(dialog);
}

bool SiteTest::goOn(const QUrl& page) {
    if (m_wish == Wish::stopQuietly) {
        m_browser.stop();
        emit pageWanted(page);
        return false;
    }
    if (m_wish == Wish::goOn && m_parts.desktop.timeOfDay() - m_start <= testPeriod)
        return true;
    if (m_wish == Wish::stop ||
        !askYesNo(&m_window, tr("Site testing is still incomplete - do you want to continue"), testCaption)) {
        StopTesting(page);
        return false;
    }
    m_start = m_parts.desktop.timeOfDay();
    return true;
}

void SiteTest::StopTesting(const QUrl& page) {
    m_browser.stop();
    emit pageWanted(page);
    show(tr("Test Timed out.... try again later "));
}

void SiteTest::show(const QString& text, const QString& reason) {
    frmMessage message(testCaption, text + textEnd, &m_window);
    message.addReason(reason);
    runDialog(message);
}

} // namespace wendmark
