#include "ui/site/PageNotices.h"

#include "platform/BrowserView.h"
#include "platform/Strings.h"
#include "publish/FramingPolicy.h"

#include <QCoreApplication>

namespace wendmark {

namespace {

QString say(const char* text) {
    return QCoreApplication::translate("PageNotices", text);
}

QString ofOtherPrograms(const QUrl& address) {
    const QString shown = address.toString();
    if (address.isLocalFile())
        return say("%1 is not shown here: it is not in the tour's folder, nor beside the page of your own.")
            .arg(shown);
    return say("%1 is not shown here: it is no page, and belongs to another program.").arg(shown);
}

QString ofCertificate(const QUrl& address) {
    return say("The certificate of %1 is not valid. Visitors would see a warning instead of the page.")
        .arg(address.host());
}

QString ofStatus(int status) {
    constexpr int serverErrors = 500;
    const QString answer = say("The server answers %1: ").arg(status);
    switch (status) {
    case 401:
    case 407:
        return answer + say("it shows this page only to those who sign in.");
    case 403:
        return answer + say("it does not show this page to everybody.");
    case 404:
    case 410:
        return answer + say("it has no such page.");
    case 429:
        return answer + say("it was asked too often.");
    default:
        return answer + (status >= serverErrors ? say("it has failed, maybe only for now.")
                                                : say("it does not take what was asked."));
    }
}

/// Why the page at this address could not be loaded.
QString reasonOf(LoadFailure failure, const QUrl& address) {
    switch (failure) {
    case LoadFailure::noSuchHost:
        return say("no server called %1 is known. Is there a network?").arg(address.host());
    case LoadFailure::noServer:
        return say("nothing takes connections there.");
    case LoadFailure::noAnswer:
        return say("the server has not answered in time.");
    case LoadFailure::notReachable:
        return say("there is no way to it. Is there a network?");
    case LoadFailure::cutOff:
        return say("the server broke the connection off.");
    case LoadFailure::goesRound:
        return say("the server leads from one address to the next without end.");
    case LoadFailure::noSuchFile:
        return say("there is no such file.");
    default:
        return say("the browser gives no reason.");
    }
}

QString ofFailure(LoadFailure failure, const QUrl& address, bool isShown) {
    switch (failure) {
    case LoadFailure::otherProgram:
        return ofOtherPrograms(address);
    case LoadFailure::untrusted:
        return ofCertificate(address);
    case LoadFailure::stopped:
        return (isShown ? say("Loading was stopped: parts of %1 may be missing.")
                        : say("Loading %1 was stopped."))
            .arg(address.toString());
    case LoadFailure::nothingSent:
        return say("%1 has brought no page: what was shown before stays.").arg(address.toString());
    default:
        return say("%1 could not be loaded: %2").arg(address.toString(), reasonOf(failure, address));
    }
}

} // namespace

void connectNotices(BrowserView& browser, QObject& context, const ShowNotice& show) {
    const auto ofLoading = [show](const QString& text) { show(text, true); };
    QObject::connect(&browser, &BrowserView::loadFailed, &context,
                     [&browser, ofLoading](LoadFailure failure, const QUrl& address) {
                         ofLoading(ofFailure(failure, address, browser.location() == address));
                     });
    QObject::connect(&browser, &BrowserView::downloadRefused, &context, [ofLoading](const QUrl& address) {
        ofLoading(say("%1 is a file to be saved, not a page: no stop can show it.").arg(address.toString()));
    });
    QObject::connect(&browser, &BrowserView::certificateRefused, &context,
                     [ofLoading](const QUrl& address) { ofLoading(ofCertificate(address)); });
    QObject::connect(&browser, &BrowserView::serverRefused, &context,
                     [ofLoading](int status) { ofLoading(ofStatus(status)); });
    QObject::connect(&browser, &BrowserView::navigationRefused, &context,
                     [ofLoading](const QUrl& address) { ofLoading(ofOtherPrograms(address)); });
    QObject::connect(&browser, &BrowserView::rendererDied, &context, [show](bool comesBack) {
        show(comesBack ? say("The page has crashed and is loaded again.")
                       : say("The page keeps crashing. Choose Refresh, or another page."),
             false);
    });
}

QString noticeOfSecureTours(const QString& address) {
    if (!isInsecure(toUtf8(address)))
        return {};
    return say(
        "Browsers leave this page out of a tour on a server with https, because its address begins with "
        "http.");
}

} // namespace wendmark
