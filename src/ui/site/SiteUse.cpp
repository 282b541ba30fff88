#include "ui/site/SiteUse.h"

#include "base/Files.h"
#include "commands/TourDocument.h"
#include "model/Options.h"
#include "model/StopAddress.h"
#include "platform/BrowserView.h"
#include "platform/QtDesktop.h"
#include "platform/Strings.h"
#include "ui/Messages.h"
#include "ui/ProgramParts.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/site/FrameTest.h"
#include "ui/site/HistoryModel.h"
#include "ui/site/PageNotices.h"
#include "ui/site/SiteTest.h"
#include "ui/site/frmWarnURL.h"

#include <QUrl>
#include <QWidget>

namespace wendmark {

namespace {

constexpr qsizetype mostShown = 300; // Characters of an address.

} // namespace

SiteUse::SiteUse(const ProgramParts& parts, BrowserView& browser, SiteTest& test, QWidget& window)
    : QObject(&window)
    , m_parts(parts)
    , m_document(parts.document)
    , m_browser(browser)
    , m_test(test)
    , m_window(window) {}

void SiteUse::run() {
    m_document.markChanged();
    m_siteEditResult = stopAddressFor(location());
    const std::int16_t stop = m_document.model().currentStop;
    if (!m_siteEditResult.empty() && stop != 0 && !store(stop))
        return;
    m_parts.desktop.setBusyPointer(Desktop::Pointer::standard);
    emit ended();
}

/// The frame test's own page is a page of the tour's folder like others; but who looks at it has mostly come
/// there by Back, and means the page in its frame.
bool SiteUse::mayUse(const QUrl& page) {
    const QString address = page.toString(QUrl::FullyEncoded);
    if (!isTestPage(address))
        return true;
    const QUrl tested = testedPageOf(page);
    if (askYesNo(&m_window,
                 tr("This is the frame test's own page, not the one that was tested:\n%1\n\nDo you want "
                    "visitors to see the test's own page?")
                     .arg(shortened(tested.toString(), mostShown))))
        return true;
    emit pageWanted(tested);
    return false;
}

/// False when the stop keeps its address.
bool SiteUse::store(std::int16_t stop) {
    if (!mayUse(m_browser.location()))
        return false;
    m_parts.desktop.setBusyPointer(Desktop::Pointer::hourglass);
    const QUrl page = m_browser.location();
    const FrameTest::Result result = m_test.run();
    if (result == FrameTest::Result::abandoned)
        return false; // The pointer stays as it is.
    m_parts.desktop.setBusyPointer(Desktop::Pointer::standard);
    if (result == FrameTest::Result::notRun)
        return false;
    emit pageWanted(page);
    if (result == FrameTest::Result::failed) {
        m_test.showFailed(stop);
        return false;
    }
    if (stop > m_document.model().stops.held())
        return true; // A page has announced a stop that there is not.
    if (!mayReplace(m_document.model().stops.at(stop).stopURL, page))
        return false;
    m_document.setAddress(stop, m_siteEditResult);
    emit stored(stop);
    tellWhatVisitorsMiss();
    return true;
}

bool SiteUse::mayReplace(const std::string& oldAddress, const QUrl& page) {
    if (!m_parts.options.warnURLChange || isNewPage(oldAddress) || m_siteEditResult == oldAddress)
        return true;
    frmWarnURL dialog(m_parts.options, toQString(oldAddress), toQString(m_siteEditResult), &m_window);
    runDialog(dialog);
    if (dialog.dialogAnswer() != "0")
        return true;
    emit pageWanted(page);
    return false;
}

void SiteUse::tellWhatVisitorsMiss() {
    if (const QString notice = noticeOfSecureTours(toQString(m_siteEditResult)); !notice.isEmpty())
        emit noticeWanted(notice);
    // A local page is stored by its name alone, which leads nowhere while the page lies elsewhere.
    const QString name = QUrl::fromPercentEncoding(QByteArray::fromStdString(m_siteEditResult));
    const std::string file = m_document.workspace().workingFile(toUtf8(name));
    if (!isRemoteAddress(m_siteEditResult) && !files::canBeRead(file))
        emit noticeWanted(
            tr("%1 is not in the tour's folder. Put it there with Select Local File.").arg(name));
}

/// Empty while the browser has gone nowhere.
std::string SiteUse::location() const {
    const QString address = m_browser.locationURL();
    return address == QLatin1String("about:blank") ? std::string() : toUtf8(address);
}

} // namespace wendmark
