#include "platform/BrowserView.h"

#include "platform/FileConfinement.h"
#include "platform/Strings.h"
#include "support/ScratchFolder.h"
#include "ui/support/LoopbackServer.h"
#include "ui/support/Patience.h"
#include "ui/support/UiFixture.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineView>
#include <csignal>
#include <memory>
#include <sys/types.h>

namespace wendmark {

using test::patience;

namespace {

/// A view on a folder of pages that the test writes.
struct Browser {
    Browser() : profile(makeBrowserProfile(nullptr)), view(*profile) {
        view.setAllowedFolders({toQString(inside)});
        view.show();
    }

    void write(const std::string& name, std::string_view page) const {
        test::writeFile(inside + "/" + name, page);
    }

    /// A page with a frame, and its address.
    QUrl frameset(const QString& framed) const {
        write("frames.htm", "<frameset rows='*,50'><frame src='" + toUtf8(framed) + "'><frame></frameset>");
        return QUrl::fromLocalFile(toQString(inside + "/frames.htm"));
    }

    bool open(const std::string& name) {
        QSignalSpy completed(&view, &BrowserView::navigationCompleted);
        view.navigate(toQString(inside + "/" + name));
        return test::waitUntil([&] { return !completed.isEmpty(); }, patience) &&
               completed.last().first().toBool();
    }

    /// The text of the page, or of a frame of it.
    QVariant evaluate(const QString& script) {
        QVariant result;
        bool done = false;
        test::engineOf(view).page()->runJavaScript(script, [&](const QVariant& value) {
            result = value;
            done = true;
        });
        [[maybe_unused]] const bool answered = test::waitUntil([&] { return done; }, patience);
        return result;
    }

    void killRenderer() {
        const auto renderer = static_cast<pid_t>(test::engineOf(view).page()->renderProcessPid());
        QVERIFY(renderer > 0 && kill(renderer, SIGKILL) == 0);
    }

    void killWhileItLoads(const QUrl& address) {
        QSignalSpy died(&view, &BrowserView::rendererDied);
        view.navigate(address);
        QVERIFY(test::waitUntil(
            [&] {
                return view.isBusy() && test::engineOf(view).page()->url() == address &&
                       test::engineOf(view).page()->renderProcessPid() > 0;
            },
            patience));
        killRenderer();
        QVERIFY(test::waitUntil([&] { return !died.isEmpty(); }, patience));
    }

    test::ScratchFolder scratch;
    std::string inside = scratch / "tour";
    std::unique_ptr<QWebEngineProfile> profile;
    BrowserView view;
};

} // namespace

class BrowserViewTest final : public QObject {
    Q_OBJECT

private slots:
    void addressesAndPathsAreToldApart() {
        QCOMPARE(addressFromText("/a b/100%#1.htm"), QUrl::fromLocalFile("/a b/100%#1.htm"));
        QCOMPARE(addressFromText("file:///a b/NewTour/fv1.htm"), QUrl::fromLocalFile("/a b/NewTour/fv1.htm"));
        QCOMPARE(addressFromText("https://www.brenholt.example/"), QUrl("https://www.brenholt.example/"));
    }

    void statusTextOfAnyFrameIsReportedEachTimeItIsSet() {
        Browser browser;
        browser.write("frames.htm",
                      "<frameset cols='*,*'><frame name=a src='a.htm'><frame name=b src='b.htm'></frameset>");
        browser.write("a.htm", "<script>status = 'one';</script>");
        browser.write("b.htm", "<p>b</p>");
        QSignalSpy status(&browser.view, &BrowserView::statusTextChanged);
        QVERIFY(browser.open("frames.htm"));
        QTRY_COMPARE_WITH_TIMEOUT(status.count(), 1, patience);
        QCOMPARE(status[0][0].toString(), QString("one"));
        QCOMPARE(status[0][1].toUrl(), QUrl::fromLocalFile(toQString(browser.inside + "/a.htm")));
        browser.evaluate("frames['b'].status = 'line 1\\nline 2'; frames['b'].status = 'line 1\\nline 2';");
        QTRY_COMPARE_WITH_TIMEOUT(status.count(), 3, patience);
        QCOMPARE(status[2][0].toString(), QString("line 1\nline 2"));
        QCOMPARE(browser.evaluate("frames['b'].status").toString(), QString("line 1\nline 2"));
    }

    void consoleMessagesAreNoStatusTexts() {
        Browser browser;
        browser.write("page.htm",
                      "<script>console.debug('>*>*>vosktourstop->1'); console.log('x');</script>");
        QSignalSpy status(&browser.view, &BrowserView::statusTextChanged);
        QVERIFY(browser.open("page.htm"));
        QCOMPARE(status.count(), 0);
    }

    /// A page that knew the mark of a status text could pass its own off as that of a page of the tour.
    void pagesCannotLearnTheMarkOfAStatusText() {
        Browser browser;
        browser.write("page.htm", R"(<script>
            const accessor = Object.getOwnPropertyDescriptor(window, 'status');
            let seen = accessor.set.toString() + accessor.get.toString();
            const look = function () {
                seen += (look.caller || '') + [...arguments].filter((a) => typeof a === 'string').join();
                return 'x';
            };
            console.debug = console.log = look;
            window.String = look;
            String.prototype.concat = look;
            window.status = {toString: function () { return look(this); }};
            const marks = seen.match(/[0-9a-f]{8}-[0-9a-f-]{27}/g) || [];
            for (const mark of marks) console.info(mark + 'file:///tour/page1.htm\n>*>*>vosktourstop->1');
            document.title = 'marks: ' + marks.length;</script>)");
        QSignalSpy status(&browser.view, &BrowserView::statusTextChanged);
        QVERIFY(browser.open("page.htm"));
        QTRY_COMPARE_WITH_TIMEOUT(browser.view.locationName(), "marks: 0", patience);
        QVERIFY(test::waitUntil([&] { return status.count() == 1; }));
        QVERIFY(!status.first().first().toString().contains("vosktourstop"));
    }

    void saysWhatItDoesNotShow_data() {
        QTest::addColumn<QString>("address");
        QTest::newRow("unknown kind") << "unknown:address";
        QTest::newRow("the engine's own pages") << "chrome://version/";
        QTest::newRow("program") << "mailto:somebody@brenholt.example";
        QTest::newRow("file outside the folders") << "file:///etc/hostname";
    }

    void saysWhatItDoesNotShow() {
        QFETCH(QString, address);
        Browser browser;
        browser.write("page.htm", "<p>page</p>");
        QVERIFY(browser.open("page.htm"));
        QSignalSpy refused(&browser.view, &BrowserView::navigationRefused);
        browser.view.navigate(QUrl(address));
        QVERIFY(!refused.isEmpty());
        QCOMPARE(refused[0][0].toUrl(), QUrl(address));
        QCOMPARE(browser.evaluate("document.body.innerText").toString(), QString("page"));
    }

    void locationIsPercentEncodedAndLeadsBack() {
        Browser browser;
        browser.write("My Page 100%23 ä.HTM", "<title>My page</title>");
        QVERIFY(browser.open("My Page 100%23 ä.HTM"));
        QVERIFY(browser.view.locationURL().endsWith("/My%20Page%20100%2523%20%C3%A4.HTM"));
        const QUrl location = browser.view.location();
        browser.view.navigate(QUrl("about:blank"));
        QTRY_VERIFY_WITH_TIMEOUT(!browser.view.isBusy(), patience);
        browser.view.navigate(location);
        QTRY_COMPARE_WITH_TIMEOUT(browser.view.locationName(), QString("My page"), patience);
    }

    void framedPageTakesOverTheTopWindowOnlyWhereItIsGranted() {
        Browser browser;
        test::LoopbackServer server;
        const QUrl frames = browser.frameset(server.address("/busting.htm"));
        QVERIFY(browser.open("frames.htm"));
        QCOMPARE(browser.view.location(), frames);

        browser.view.grantTakeOverOf(QUrl::fromLocalFile("/elsewhere.htm"));
        QVERIFY(browser.open("frames.htm"));
        QVERIFY(!test::waitUntil([&] { return browser.view.location() != frames; }, 300));

        browser.view.grantTakeOverOf(frames);
        browser.view.navigate(frames);
        QTRY_COMPARE_WITH_TIMEOUT(browser.view.locationURL(), server.address("/busting.htm"), patience);
        QTRY_COMPARE_WITH_TIMEOUT(browser.view.locationName(), QString("Busting"), patience);

        browser.view.grantTakeOverOf({});
        QVERIFY(browser.open("frames.htm"));
        QCOMPARE(browser.view.location(), frames);
    }

    void printedTextIsNoAttemptToTakeOver_data() {
        QTest::addColumn<QString>("call");
        QTest::addColumn<QString>("target");
        QTest::newRow("log with the address of the frameset") << "console.log"
                                                              << "%1";
        QTest::newRow("warning with the address of the frameset") << "console.warn"
                                                                  << "%1";
        QTest::newRow("error with what a page can know") << "console.error"
                                                         << "file:///";
        QTest::newRow("error with an empty address") << "console.error"
                                                     << "";
        QTest::newRow("uncaught error") << "setTimeout(m => { throw m; }, 0, "
                                        << "%1";
    }

    void printedTextIsNoAttemptToTakeOver() {
        QFETCH(QString, call);
        QFETCH(QString, target);
        Browser browser;
        test::LoopbackServer server;
        const QUrl frames = browser.frameset(server.address("/printing.htm"));
        const QString text = "Unsafe attempt to initiate navigation for frame with URL '" +
                             (target.contains("%1") ? target.arg(frames.toString()) : target) +
                             "' from frame with URL '" + server.address("/printing.htm") +
                             "'. The frame attempting navigation is targeting its top-level window, but is "
                             "neither same-origin with its target nor has it received a user gesture.\\n";
        const QString open = call.contains('(') ? call : call + "(";
        server.page("/printing.htm", ("<script>" + open + "\"" + text + "\");</script>").toUtf8());
        browser.view.grantTakeOverOf(frames);
        QVERIFY(browser.open("frames.htm"));
        QVERIFY(!test::waitUntil([&] { return browser.view.location() != frames; }, 300));
    }

    /// The text sends the window nowhere: at worst a page fails that plays an intruder.
    void forgedAttemptLeadsToTheFramedPageItself() {
        Browser browser;
        test::LoopbackServer server;
        const QUrl frames = browser.frameset(server.address("/forging.htm"));
        server.page("/forging.htm",
                    ("<script>console.error(\"Unsafe attempt to initiate navigation for frame with URL '" +
                     frames.toString() +
                     "' from frame with URL 'file:///etc/passwd'. The frame attempting navigation is "
                     "targeting its top-level window\");</script>")
                        .toUtf8());
        browser.view.grantTakeOverOf(frames);
        browser.view.navigate(frames);
        QTRY_COMPARE_WITH_TIMEOUT(browser.view.locationURL(), server.address("/forging.htm"), patience);
    }

    void errorPageInTheFirstFrameIsSeen_data() {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("error");
        QTest::newRow("plain page") << "/plain.htm" << false;
        QTest::newRow("missing page") << "/missing.htm" << false;
        QTest::newRow("page that refuses") << "/deny.htm" << true;
        QTest::newRow("connection that breaks") << "/broken.htm" << true;
        QTest::newRow("page that goes on to another") << "/moving.htm" << false;
    }

    void errorPageInTheFirstFrameIsSeen() {
        QFETCH(QString, path);
        QFETCH(bool, error);
        Browser browser;
        test::LoopbackServer server;
        browser.view.grantTakeOverOf(browser.frameset(server.address(path)));
        QVERIFY(browser.open("frames.htm"));
        QTRY_COMPARE_WITH_TIMEOUT(browser.view.firstFrameShowsError(), error, patience);
    }

    void pagesReadFilesOfTheirFolderOnly() {
        Browser browser;
        test::writeFile(browser.scratch / "secret.txt", "secret");
        QVERIFY(
            QFile::link(toQString(browser.scratch / "secret.txt"), toQString(browser.scratch / "link.txt")));
        browser.write("ours.txt", "ours");
        QVERIFY(
            QFile::link(toQString(browser.scratch / "secret.txt"), toQString(browser.inside + "/link.txt")));
        browser.write("page.htm",
                      "<iframe name=f src='ours.txt'></iframe><iframe name=g src='../secret.txt'></iframe>"
                      "<iframe name=h src='link.txt'></iframe>");
        browser.open("page.htm");
        const QString textIn = "(() => { try { return frames['%1'].document.body.textContent.trim(); }"
                               " catch (e) { return 'unreadable'; } })()";
        QCOMPARE(browser.evaluate(textIn.arg("f")).toString(), QString("ours"));
        QVERIFY(browser.evaluate(textIn.arg("g")).toString() != QString("secret"));
        QVERIFY(browser.evaluate(textIn.arg("h")).toString() != QString("secret"));
    }

    void confinementFollowsLinksAndDots_data() {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("allowed");
        QTest::newRow("inside") << "/tour/page.htm" << true;
        QTest::newRow("missing inside") << "/tour/missing.htm" << true;
        QTest::newRow("folder beside with the same beginning") << "/tour2/page.htm" << false;
        QTest::newRow("dots") << "/tour/../outside.htm" << false;
        QTest::newRow("link out") << "/tour/link.htm" << false;
        QTest::newRow("folder itself") << "/outside.htm" << false;
        QTest::newRow("nowhere") << "/nowhere/at/all.htm" << false;
    }

    void confinementFollowsLinksAndDots() {
        QFETCH(QString, path);
        QFETCH(bool, allowed);
        const test::ScratchFolder scratch;
        for (const char* name : {"tour/page.htm", "tour2/page.htm", "outside.htm"})
            test::writeFile(scratch / name, "page");
        QVERIFY(QFile::link(toQString(scratch / "outside.htm"), toQString(scratch / "tour/link.htm")));
        FileConfinement confinement;
        confinement.setAllowedFolders({toQString(scratch / "tour")});
        QCOMPARE(confinement.allows(QUrl::fromLocalFile(toQString(scratch.path()) + path)), allowed);
        QVERIFY(confinement.allows(QUrl("https://www.brenholt.example/")));
    }

    void closedFolderHasNoDotNames_data() {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("allowed");
        QTest::newRow("page") << "page.htm" << true;
        QTest::newRow("subfolder") << "pictures/plant.png" << true;
        QTest::newRow("dot name") << ".secret.htm" << false;
        QTest::newRow("subfolder with a dot name") << ".keys/key.htm" << false;
        QTest::newRow("below one") << "pictures/.old/plant.png" << false;
        QTest::newRow("link to one") << "link.htm" << false;
        QTest::newRow("link with a dot name") << ".link.htm" << false;
        QTest::newRow("way through one") << ".keys/../page.htm" << true;
    }
    void closedFolderHasNoDotNames() {
        QFETCH(QString, path);
        QFETCH(bool, allowed);
        const test::ScratchFolder scratch;
        // The folder's own place does not count.
        const QString own = toQString(scratch / ".author/pages/");
        for (const char* name :
             {"page.htm", "pictures/plant.png", ".secret.htm", ".keys/key.htm", "pictures/.old/plant.png"})
            test::writeFile(toUtf8(own) + name, "page");
        QVERIFY(QFile::link(own + ".secret.htm", own + "link.htm"));
        QVERIFY(QFile::link(own + "page.htm", own + ".link.htm"));
        FileConfinement confinement;
        confinement.setAllowedFolders({}, own);
        QCOMPARE(confinement.allows(QUrl::fromLocalFile(own + path)), allowed);
    }

    void confinementSeesTheNameThatTheEngineWillLookFor_data() {
        QTest::addColumn<QByteArray>("address");
        QTest::addColumn<bool>("allowed");
        QTest::newRow("plain") << QByteArray("file://{folder}/page.htm") << true;
        QTest::newRow("encoded letters") << QByteArray("file://{folder}/%70age.htm") << true;
        QTest::newRow("letters beyond ASCII") << QByteArray("file://{folder}/%C3%A4.htm") << true;
        QTest::newRow("this machine by name") << QByteArray("file://localhost{folder}/page.htm") << true;
        QTest::newRow("another machine") << QByteArray("file://elsewhere{folder}/page.htm") << false;
        QTest::newRow("bytes that are no text") << QByteArray("file://{folder}/%ff.htm") << false;
        QTest::newRow("name with an end in it") << QByteArray("file://{folder}/page.htm%00.txt") << false;
    }

    void confinementSeesTheNameThatTheEngineWillLookFor() {
        QFETCH(QByteArray, address);
        QFETCH(bool, allowed);
        const test::ScratchFolder scratch;
        for (const char* name : {"tour/page.htm", "tour/ä.htm"})
            test::writeFile(scratch / name, "page");
        FileConfinement confinement;
        confinement.setAllowedFolders({toQString(scratch / "tour")});
        address.replace("{folder}", QByteArray::fromStdString(scratch / "tour"));
        QCOMPARE(confinement.allows(QUrl::fromEncoded(address)), allowed);
    }

    void pagesShowOneDialogAfterEachNavigation() {
        Browser browser;
        browser.write("page.htm",
                      "<script>alert('one'); confirm('two'); prompt('three'); alert('four');"
                      "if (!sessionStorage.again) { sessionStorage.again = 1; location.reload(); }"
                      "document.title = 'end';</script>");
        int dialogs = 0;
        QTimer answers;
        answers.callOnTimeout([&] {
            if (QWidget* const dialog = QApplication::activeModalWidget(); dialog != nullptr) {
                ++dialogs;
                dialog->close();
            }
        });
        answers.start(10);
        for (int navigation = 1; navigation <= 2; ++navigation) {
            QVERIFY(browser.open("page.htm"));
            QTRY_COMPARE_WITH_TIMEOUT(browser.view.locationName(), QString("end"), patience);
            QVERIFY(!test::waitUntil([&] { return dialogs > navigation; }, 300));
            QCOMPARE(dialogs, navigation);
        }
    }

    void pageCannotKeepTheViewByAQuestionOnLeaving() {
        Browser browser;
        browser.write("page.htm", "<script>alert('one');"
                                  "onbeforeunload = e => { e.preventDefault(); return 'stay'; };</script>"
                                  "<body style='height: 100%'>page");
        browser.write("next.htm", "<title>Next</title>");
        QTimer answers;
        answers.callOnTimeout([] {
            if (QWidget* const dialog = QApplication::activeModalWidget(); dialog != nullptr)
                dialog->close();
        });
        answers.start(10);
        QVERIFY(browser.open("page.htm"));
        QTest::mouseClick(browser.view.focusProxy()->focusProxy(), Qt::LeftButton);
        QVERIFY(browser.open("next.htm"));
        QTRY_COMPARE_WITH_TIMEOUT(browser.view.locationName(), QString("Next"), patience);
    }

    void pagesShareNoWorkers() {
        Browser browser;
        browser.write("page.htm", "<p>page</p>");
        QVERIFY(browser.open("page.htm"));
        QCOMPARE(browser.evaluate("typeof Worker + ', ' + typeof SharedWorker").toString(),
                 QString("function, undefined"));
    }

    void pagesOpenNoWindowsAndGetNoRights() {
        Browser browser;
        browser.write("page.htm", "<script>var opened = window.open('page.htm');</script>");
        QVERIFY(browser.open("page.htm"));
        QCOMPARE(QApplication::topLevelWidgets().size(), qsizetype{1});
        // The engine takes back the window that the script was given a little later.
        QVERIFY(
            test::waitUntil([&] { return browser.evaluate("opened === null || opened.closed").toBool(); }));
        QCOMPARE(QApplication::topLevelWidgets().size(), qsizetype{1});
    }

    void titleAndBusyStateAreReported() {
        Browser browser;
        browser.write("page.htm", "<title>A page</title>");
        QSignalSpy busy(&browser.view, &BrowserView::busyChanged);
        QVERIFY(browser.open("page.htm"));
        QTRY_COMPARE_WITH_TIMEOUT(browser.view.locationName(), QString("A page"), patience);
        QVERIFY(!browser.view.isBusy());
        QCOMPARE(busy.first().first().toBool(), true);
        QCOMPARE(busy.last().first().toBool(), false);
    }

    void rendererThatDiesInTheMiddleOfALoadHoldsNothingUp() {
        test::LoopbackServer server;
        server.answer("/endless.htm",
                      {200, {}, "<p>Some</p>", 0, test::LoopbackServer::Answer::Kind::withoutEnd});
        for (int death = 0; death <= 4; ++death) {
            Browser browser;
            browser.write("page.htm", "<title>A page</title>");
            for (int earlier = 0; earlier < death; ++earlier)
                browser.killWhileItLoads(QUrl(server.address("/endless.htm")));
            browser.view.navigate(toQString(browser.inside + "/page.htm"));
            QTRY_COMPARE_WITH_TIMEOUT(browser.view.locationName(), QString("A page"), patience);
            QTRY_VERIFY_WITH_TIMEOUT(!browser.view.isBusy(), patience);
        }
    }

    void deadRendererIsRevivedThreeTimesAtMost() {
        Browser browser;
        browser.write("page.htm", "<title>A page</title>");
        QVERIFY(browser.open("page.htm"));
        QSignalSpy died(&browser.view, &BrowserView::rendererDied);
        for (int death = 1; death <= 3; ++death) {
            QSignalSpy completed(&browser.view, &BrowserView::navigationCompleted);
            browser.killRenderer();
            QVERIFY(test::waitUntil([&] { return !completed.isEmpty(); }, patience));
            QVERIFY(completed.last().first().toBool());
            QCOMPARE(died.count(), death);
            QVERIFY(died.last().first().toBool());
        }
        QSignalSpy completed(&browser.view, &BrowserView::navigationCompleted);
        browser.killRenderer();
        QVERIFY(test::waitUntil([&] { return died.count() == 4; }, patience));
        QVERIFY(!died.last().first().toBool());
        QVERIFY(!test::waitUntil([&] { return !completed.isEmpty() || browser.view.isBusy(); }, 500));
        QVERIFY(browser.open("page.htm")); // The next page starts a renderer of its own.
    }
};

} // namespace wendmark

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    wendmark::BrowserViewTest tests;
    return QTest::qExec(&tests, argc, argv);
}

#include "BrowserViewTest.moc"
