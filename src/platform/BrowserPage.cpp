#include "platform/BrowserPage.h"

#include <QAuthenticator>
#include <QDesktopServices>
#include <QUuid>
#include <QWebEngineCertificateError>
#include <QWebEngineNewWindowRequest>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>
#include <QWebEngineSettings>
#include <utility>

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

/// Runs beside the page's own scripts, out of their reach, and on the engine's error pages, too.
QString frameScript(const QString& mark) {
    return QStringLiteral(
               "if (window !== top && window === top.frames[0]) console.debug('%1' + location.href);")
        .arg(mark);
}

QWebEngineScript scriptForAllFrames(const QString& name, const QString& source,
                                    QWebEngineScript::ScriptWorldId world) {
    QWebEngineScript script;
    script.setName(name);
    script.setWorldId(world);
    script.setInjectionPoint(QWebEngineScript::DocumentCreation);
    script.setRunsOnSubFrames(true);
    script.setSourceCode(source);
    return script;
}

/// How the engine begins what it says of a page that may not be shown in a frame, among other things.
constexpr QLatin1String frameRefusal("Refused to ");

QString freshMark() {
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

/// For pages from disk only. The root element may not be there yet.
QString lookScript(bool dark) {
    return QStringLiteral(R"((function (look) {
  const tell = () => {
    const root = document.documentElement;
    if (root) root.dataset.look = look;
    return root;
  };
  if (location.protocol === 'file:' && !tell())
    new MutationObserver((changes, observer) => { if (tell()) observer.disconnect(); })
      .observe(document, {childList: true});
})('%1');)")
        .arg(dark ? QStringLiteral("dark") : QStringLiteral("light"));
}

const QString& lookScriptName() {
    static const QString name = QStringLiteral("look");
    return name;
}

const QString& frameScriptName() {
    static const QString name = QStringLiteral("first frame");
    return name;
}

bool isOfTheWeb(const QUrl& address) {
    return address.scheme() == QLatin1String("http") || address.scheme() == QLatin1String("https");
}

} // namespace

/// A dialog of the page, for as long as it lives.
class BrowserPage::ShownDialog final {
public:
    explicit ShownDialog(BrowserPage& page) : m_page(page) { ++m_page.m_dialogs; }
    ~ShownDialog() {
        --m_page.m_dialogs;
        emit m_page.dialogEnded();
    }
    ShownDialog(const ShownDialog&) = delete;
    ShownDialog& operator=(const ShownDialog&) = delete;

private:
    BrowserPage& m_page;
};

BrowserPage::BrowserPage(QWebEngineProfile& profile, QObject* parent)
    : QWebEnginePage(&profile, parent)
    , m_confinement(this)
    , m_statusMark(freshMark())
    , m_frameMark(freshMark())
    , m_paintMark(freshMark()) {
    setUrlRequestInterceptor(&m_confinement);
    restrictRights();
    watchStatusTexts();
}

void BrowserPage::setLookOnly() {
    m_lookOnly = true;
    settings()->setAttribute(QWebEngineSettings::JavascriptEnabled, false);
    settings()->setAttribute(QWebEngineSettings::PluginsEnabled, false);
    settings()->setAttribute(QWebEngineSettings::FocusOnNavigationEnabled, false);
}

void BrowserPage::setUnattended() {
    m_unattended = true;
    setAudioMuted(true);
}

bool BrowserPage::acceptNavigationRequest(const QUrl& address, NavigationType type, bool isMainFrame) {
    const bool byPage = type == NavigationTypeLinkClicked || type == NavigationTypeFormSubmitted ||
                        type == NavigationTypeRedirect;
    // The viewer of PDF pages stands in a frame of the page.
    const bool ofViewer = !isMainFrame && address.scheme() == QLatin1String("chrome-extension");
    const bool accepted = !(m_lookOnly && byPage) && (mayShow(address) || ofViewer);
    if (!accepted && isMainFrame)
        emit navigationRefused(address);
    if (accepted && isMainFrame)
        m_goesTo = address;
    if (isMainFrame && type == NavigationTypeTyped) // By the program; pages cannot pretend to that.
        m_hasShownDialog = m_passwordRefused = false;
    return accepted;
}

bool BrowserPage::mayShowDialog() {
    return !m_unattended && !std::exchange(m_hasShownDialog, true);
}

void BrowserPage::javaScriptAlert(const QUrl& origin, const QString& text) {
    if (!mayShowDialog())
        return;
    const ShownDialog shown(*this);
    QWebEnginePage::javaScriptAlert(origin, text);
}

/// The engine asks here, too, whether a page may be left. No page must hold the view by that, so what nobody
/// is asked is agreed to.
bool BrowserPage::javaScriptConfirm(const QUrl& origin, const QString& text) {
    if (!mayShowDialog())
        return true;
    const ShownDialog shown(*this);
    return QWebEnginePage::javaScriptConfirm(origin, text);
}

bool BrowserPage::javaScriptPrompt(const QUrl& origin, const QString& text, const QString& proposal,
                                   QString* answer) {
    if (!mayShowDialog())
        return false;
    const ShownDialog shown(*this);
    return QWebEnginePage::javaScriptPrompt(origin, text, proposal, answer);
}

bool BrowserPage::mayShow(const QUrl& address) const {
    static const QStringList shown = {
        QStringLiteral("file"), QStringLiteral("http"), QStringLiteral("https"),     QStringLiteral("about"),
        QStringLiteral("data"), QStringLiteral("blob"), QStringLiteral("javascript")};
    return shown.contains(address.scheme()) && m_confinement.allows(address);
}

void BrowserPage::watchFramesOf(const QUrl& address) {
    m_watched = address;
    m_confinement.setFramingPage(address);
    for (const QWebEngineScript& script : scripts().find(frameScriptName()))
        scripts().remove(script);
    if (!address.isEmpty())
        scripts().insert(scriptForAllFrames(frameScriptName(), frameScript(m_frameMark),
                                            QWebEngineScript::ApplicationWorld));
}

void BrowserPage::setDark(bool dark) {
    for (const QWebEngineScript& script : scripts().find(lookScriptName()))
        scripts().remove(script);
    scripts().insert(
        scriptForAllFrames(lookScriptName(), lookScript(dark), QWebEngineScript::ApplicationWorld));
    runJavaScript(lookScript(dark), QWebEngineScript::ApplicationWorld);
}

void BrowserPage::watchPainting() {
    // What there is at the first of two pictures is on screen at the second.
    runJavaScript(
        QStringLiteral("requestAnimationFrame(() => requestAnimationFrame(() => console.debug('%1')));")
            .arg(m_paintMark),
        QWebEngineScript::ApplicationWorld);
}

void BrowserPage::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString& message, int,
                                           const QString&) {
    if (message.startsWith(m_statusMark)) {
        const qsizetype addressEnd = message.indexOf(QLatin1Char('\n'));
        const QString address = message.mid(m_statusMark.size(), addressEnd - m_statusMark.size());
        emit statusTextSet(message.mid(addressEnd + 1), QUrl(address));
    } else if (message == m_paintMark) {
        emit painted();
    } else if (watchesFrames() && message.startsWith(m_frameMark)) {
        emit firstFrameFilled(QUrl(message.mid(m_frameMark.size())));
    } else if (watchesFrames() && isTakeOver(level, message)) {
        emit takeOverTried();
    } else if (watchesFrames() && level == ErrorMessageLevel && message.startsWith(frameRefusal)) {
        emit frameRefused(message);
    }
}

bool BrowserPage::watchesFrames() const {
    return !m_watched.isEmpty() && url() == m_watched;
}

/// The engine refuses the top window to a page that nobody has clicked in, and says so in an error message
/// that names the page in the top window. Pages can print error messages, too; but a page from the web does
/// not know where on this disk the page around it lies. One that guesses it is taken for the intruder that it
/// plays.
bool BrowserPage::isTakeOver(JavaScriptConsoleMessageLevel level, const QString& message) const {
    static const QString beginning =
        QStringLiteral("Unsafe attempt to initiate navigation for frame with URL '");
    static const QString middle = QStringLiteral("' from frame with URL '");
    static const QString end =
        QStringLiteral("'. The frame attempting navigation is targeting its top-level window");
    const qsizetype middleAt = message.indexOf(middle);
    if (level != ErrorMessageLevel || !message.startsWith(beginning) || middleAt < 0 ||
        message.indexOf(end, middleAt) < 0)
        return false;
    return QUrl(message.mid(beginning.size(), middleAt - beginning.size())) == m_watched;
}

void BrowserPage::restrictRights() {
    QWebEngineSettings* const rights = settings();
    // Stops are remote pages inside a frameset from disk.
    rights->setAttribute(QWebEngineSettings::LocalContentCanAccessRemoteUrls, true);
    rights->setAttribute(QWebEngineSettings::JavascriptCanAccessClipboard, false);
    rights->setAttribute(QWebEngineSettings::ScreenCaptureEnabled, false);
    // The engine's own viewer of PDF pages, which browsers show in frames, too; there are no other plug-ins.
    rights->setAttribute(QWebEngineSettings::PluginsEnabled, true);
    rights->setAttribute(QWebEngineSettings::PdfViewerEnabled, true);
    rights->setUnknownUrlSchemePolicy(QWebEngineSettings::DisallowUnknownUrlSchemes);
    connect(this, &QWebEnginePage::featurePermissionRequested, this,
            [this](const QUrl& origin, Feature feature) {
                setFeaturePermission(origin, feature, PermissionDeniedByUser);
            });
    connect(this, &QWebEnginePage::authenticationRequired, this,
            [this](const QUrl& address, QAuthenticator* answer) {
                askForPassword({address.host(), answer->realm(), address.scheme(), false}, address, *answer);
            });
    connect(this, &QWebEnginePage::proxyAuthenticationRequired, this,
            [this](const QUrl&, QAuthenticator* answer, const QString& proxy) {
                askForPassword({proxy, answer->realm(), {}, true}, m_goesTo, *answer);
            });
    connect(this, &QWebEnginePage::newWindowRequested, this, &BrowserPage::openNewWindow);
    connect(this, &QWebEnginePage::certificateError, this, [this](QWebEngineCertificateError error) {
        error.rejectCertificate();
        // Not that of a picture or a frame, nor of a page that was left.
        if (error.url().authority() == m_goesTo.authority())
            emit certificateRefused(error.url());
    });
}

/// Only for the page itself: a picture or a frame that wants a password would get that of the page around it.
/// The author says no once for each page.
void BrowserPage::askForPassword(PasswordQuestion question, const QUrl& address, QAuthenticator& answer) {
    const bool ofPage = address.authority() == m_goesTo.authority();
    if (ofPage && !m_lookOnly && !m_passwordRefused) {
        const ShownDialog shown(*this);
        emit passwordWanted(question);
        m_passwordRefused = !question.answered;
    }
    if (!question.answered) {
        answer = QAuthenticator(); // Which the engine takes for a no.
        return;
    }
    answer.setUser(question.user);
    answer.setPassword(question.password);
}

void BrowserPage::openNewWindow(const QWebEngineNewWindowRequest& request) {
    const QUrl address = request.requestedUrl();
    if (!request.isUserInitiated() || m_lookOnly)
        return;
    if (m_newWindowsHere) {
        // Pages of the web must not lead to files, not even to those of the tour.
        if (mayShow(address) && (url().isLocalFile() || isOfTheWeb(address)))
            setUrl(address);
    } else if (isOfTheWeb(address)) {
        QDesktopServices::openUrl(address);
    }
}

void BrowserPage::watchStatusTexts() {
    scripts().insert(scriptForAllFrames(QStringLiteral("status"), statusScript(m_statusMark),
                                        QWebEngineScript::MainWorld));
}

} // namespace wendmark
