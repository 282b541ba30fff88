#include "platform/BrowserView.h"

#include "platform/FileConfinement.h"
#include "platform/Strings.h"
#include "support/ScratchFolder.h"
#include "ui/support/UiFixture.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTest>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineView>
#include <csignal>
#include <memory>
#include <sys/types.h>

namespace wendmark {

namespace {

constexpr int patience = 20000; // Milliseconds.

/// A view on a folder of pages that the test writes.
struct Browser {
    Browser() : profile(makeBrowserProfile(nullptr)), view(*profile) {
        view.setAllowedFolders({toQString(inside)});
        view.show();
    }

    void write(const std::string& name, std::string_view page) const {
        test::writeFile(inside + "/" + name, page);
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
        view.engineView().page()->runJavaScript(script, [&](const QVariant& value) {
            result = value;
            done = true;
        });
        [[maybe_unused]] const bool answered = test::waitUntil([&] { return done; }, patience);
        return result;
    }

    void killRenderer() {
        QCOMPARE(kill(static_cast<pid_t>(view.engineView().page()->renderProcessPid()), SIGKILL), 0);
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
        QTRY_COMPARE(browser.view.locationName(), "marks: 0");
        QVERIFY(test::waitUntil([&] { return status.count() == 1; }));
        QVERIFY(!status.first().first().toString().contains("vosktourstop"));
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

    void pagesOpenNoWindowsAndGetNoRights() {
        Browser browser;
        browser.write("page.htm", "<script>var opened = window.open('page.htm');</script>");
        QVERIFY(browser.open("page.htm"));
        QCOMPARE(QApplication::topLevelWidgets().size(), qsizetype{1});
        QVERIFY(browser.evaluate("opened === null || opened.closed").toBool());
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
