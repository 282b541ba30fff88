#include "platform/BrowserPage.h"

#include <QDesktopServices>
#include <QUuid>
#include <QWebEngineCertificateError>
#include <QWebEngineNewWindowRequest>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>
#include <QWebEngineSettings>

namespace wendmark {

namespace {

/// Engines no longer show or report window.status. This puts an accessor in its place, in every frame, before
/// any script of the page runs. console.debug carries the text out, behind a mark that no page can learn.
QString statusScript(const QString& mark) {
    // A page can read the source of the accessor's functions, so the mark stands outside them.
    return QStringLiteral(R"((function () {
  'use strict';
  const mark = '%1';
  const report = console.debug.bind(console);
  let text = '';
  Object.defineProperty(window, 'status', {
    configurable: false,
    enumerable: true,
    get: function () { return text; },
    set: function (value) {
      text = `${value}`;
      report(`${mark}${window.location.href}\n${text}`);
    }
  });
})();)")
        .arg(mark);
}

void openInSystemBrowser(const QUrl& address, bool clicked) {
    const QString scheme = address.scheme();
    if (clicked && (scheme == QLatin1String("http") || scheme == QLatin1String("https")))
        QDesktopServices::openUrl(address);
}

} // namespace

BrowserPage::BrowserPage(QWebEngineProfile& profile, QObject* parent)
    : QWebEnginePage(&profile, parent)
    , m_confinement(this)
    , m_statusMark(QUuid::createUuid().toString(QUuid::WithoutBraces)) {
    setUrlRequestInterceptor(&m_confinement);
    restrictRights();
    watchStatusTexts();
}

void BrowserPage::setLookOnly() {
    m_lookOnly = true;
    settings()->setAttribute(QWebEngineSettings::JavascriptEnabled, false);
    settings()->setAttribute(QWebEngineSettings::FocusOnNavigationEnabled, false);
}

bool BrowserPage::acceptNavigationRequest(const QUrl& address, NavigationType type, bool) {
    const bool byPage = type == NavigationTypeLinkClicked || type == NavigationTypeFormSubmitted ||
                        type == NavigationTypeRedirect;
    if (m_lookOnly && byPage)
        return false;
    static const QStringList shown = {
        QStringLiteral("file"), QStringLiteral("http"), QStringLiteral("https"),     QStringLiteral("about"),
        QStringLiteral("data"), QStringLiteral("blob"), QStringLiteral("javascript")};
    return shown.contains(address.scheme()) && m_confinement.allows(address);
}

void BrowserPage::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString& message, int,
                                           const QString&) {
    if (!message.startsWith(m_statusMark))
        return;
    const qsizetype addressEnd = message.indexOf(QLatin1Char('\n'));
    const QString address = message.mid(m_statusMark.size(), addressEnd - m_statusMark.size());
    emit statusTextSet(message.mid(addressEnd + 1), QUrl(address));
}

void BrowserPage::restrictRights() {
    QWebEngineSettings* const rights = settings();
    // Stops are remote pages inside a frameset from disk.
    rights->setAttribute(QWebEngineSettings::LocalContentCanAccessRemoteUrls, true);
    rights->setAttribute(QWebEngineSettings::JavascriptCanAccessClipboard, false);
    rights->setAttribute(QWebEngineSettings::ScreenCaptureEnabled, false);
    rights->setAttribute(QWebEngineSettings::PluginsEnabled, false);
    rights->setUnknownUrlSchemePolicy(QWebEngineSettings::DisallowUnknownUrlSchemes);
    connect(this, &QWebEnginePage::featurePermissionRequested, this,
            [this](const QUrl& origin, Feature feature) {
                setFeaturePermission(origin, feature, PermissionDeniedByUser);
            });
    connect(this, &QWebEnginePage::newWindowRequested, this, [this](QWebEngineNewWindowRequest& request) {
        openInSystemBrowser(request.requestedUrl(), request.isUserInitiated() && !m_lookOnly);
    });
    connect(this, &QWebEnginePage::certificateError, this,
            [](QWebEngineCertificateError error) { error.rejectCertificate(); });
}

void BrowserPage::watchStatusTexts() {
    QWebEngineScript script;
    script.setName(QStringLiteral("status"));
    script.setWorldId(QWebEngineScript::MainWorld);
    script.setInjectionPoint(QWebEngineScript::DocumentCreation);
    script.setRunsOnSubFrames(true);
    script.setSourceCode(statusScript(m_statusMark));
    scripts().insert(script);
}

} // namespace wendmark
