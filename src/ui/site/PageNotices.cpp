#include "ui/site/PageNotices.h"

#include "platform/BrowserView.h"

#include <QCoreApplication>

namespace wendmark {

namespace {

QString say(const char* text) {
    return QCoreApplication::translate("PageNotices", text);
}

} // namespace

void connectNotices(BrowserView& browser, QObject& context, const std::function<void(const QString&)>& show) {
    QObject::connect(&browser, &BrowserView::downloadRefused, &context, [show](const QUrl& address) {
        show(say("%1 is a file to be saved, not a page: no stop can show it.").arg(address.toString()));
    });
    QObject::connect(&browser, &BrowserView::certificateRefused, &context, [show](const QUrl& address) {
        show(say("The certificate of %1 is not valid. Visitors would see a warning instead of the page.")
                 .arg(address.host()));
    });
    QObject::connect(&browser, &BrowserView::serverRefused, &context, [show](int status) {
        show(say("The server answers %1: it has no such page.").arg(status));
    });
    QObject::connect(&browser, &BrowserView::navigationRefused, &context, [show](const QUrl& address) {
        show(say("%1 is not shown here: it is no page of the web or of the tour.").arg(address.toString()));
    });
    QObject::connect(&browser, &BrowserView::rendererDied, &context, [show](bool comesBack) {
        show(comesBack ? say("The page has crashed and is loaded again.")
                       : say("The page keeps crashing. Choose Refresh, or another page."));
    });
}

} // namespace wendmark
