#include "ui/site/SiteTest.h"

#include "commands/TourDocument.h"
#include "platform/BrowserView.h"
#include "platform/Gate.h"
#include "platform/QtDesktop.h"
#include "ui/Messages.h"
#include "ui/ProgramParts.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/dialogs/frmMessage.h"
#include "ui/site/PageNotices.h"
#include "ui/site/frmTestFrame.h"

#include <QScopedValueRollback>
#include <QWebEngineProfile>
#include <QWidget>

namespace wendmark {

namespace {

constexpr float testPeriod = 30; // Seconds.

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
    const FrameTest::Result result = run();
    if (result == FrameTest::Result::abandoned || result == FrameTest::Result::notRun)
        return;
    emit pageWanted(page);
    if (result == FrameTest::Result::passed)
        show(tr("Test Passed.... You can use this site in a tour"), noticeOfSecureTours(page.toString()));
    else
        showFailed();
}

void SiteTest::abandon(bool quietly) {
    if (m_dialog != nullptr)
        m_dialog->reject();
    if (m_running)
        m_wish = quietly ? Wish::stopQuietly : Wish::stop;
}

void SiteTest::showFailed() {
    show(
        tr("Test Failed.... You cannot use this site in a tour, because it cannot be viewed inside a frame."),
        m_reason);
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
        !askYesNo(&m_window, tr("Site testing is still incomplete - do you want to continue"),
                  QStringLiteral("Wendmark - Frame Test"))) {
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
    const QString end = QStringLiteral("\r\n");
    frmMessage message(QStringLiteral("Wendmark - Frame Test"), text + end + end, &m_window);
    message.addReason(reason);
    runDialog(message);
}

} // namespace wendmark
