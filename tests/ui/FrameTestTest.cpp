#include "platform/BrowserView.h"
#include "platform/Strings.h"
#include "support/FramingCases.h"
#include "ui/site/frmTestFrame.h"
#include "ui/support/Patience.h"
#include "ui/support/SiteEditor.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <functional>
#include <memory>

namespace wendmark {

using test::hasKeys;
using test::onMessageWindow;
using test::onNextDialog;
using test::patience;
using test::press;
using test::SiteEditor;
using test::waitUntil;

namespace {

const QString caption = QStringLiteral("Wendmark - Frame Test");
const QString passed = QStringLiteral("Test Passed.... You can use this site in a tour\r\n\r\n");
const QString failed =
    QStringLiteral("Test Failed.... You cannot use this site in a tour, because it cannot be "
                   "viewed inside a frame.\r\n\r\n");
const QString timedOut = QStringLiteral("Test Timed out.... try again later \r\n\r\n");
const QString question = QStringLiteral("Site testing is still incomplete - do you want to continue");

/// Smallest that the engine's viewer shows.
const QByteArray pdfPage = "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n"
                           "2 0 obj<</Type/Pages/Kids[3 0 R]/Count 1>>endobj\n"
                           "3 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 200]>>endobj\n"
                           "trailer<</Root 1 0 R>>\n%%EOF\n";

/// Pages of servers that look at who asks.
void serveOddPages(test::LoopbackServer& server) {
    using Answer = test::LoopbackServer::Answer;
    const QByteArray plain = "<title>Plain</title><p>plain</p>";
    const Answer forbidden{403, {{"X-Frame-Options", "DENY"}}, "<title>Forbidden</title>"};
    server.page("/left.htm",
                "<title>Left</title><script>if (top !== self) top.location = self.location;</script>");
    server.answer("/browsers.htm", forbidden);
    server.answerWhere("/browsers.htm", "sec-fetch-mode", "navigate", {200, {}, plain});
    server.page("/noframes.htm", plain);
    server.answerWhere("/noframes.htm", "sec-fetch-dest", "frame",
                       {200, {{"X-Frame-Options", "SAMEORIGIN"}}, plain});
    // What the program's own requests want, and browsers in other words.
    const QByteArray own = "text/html,application/xhtml+xml,application/xml;q=0.9,*/*;q=0.8";
    server.answer("/nobots.htm", {200, {}, plain});
    server.answerWhere("/nobots.htm", "accept", own, forbidden);
    server.answer("/silent-anybody.htm", {200, {{"Content-Security-Policy", "frame-ancestors *"}}, plain});
    server.answerWhere("/silent-anybody.htm", "accept", own, {200, {}, {}, 0, Answer::Kind::silence});
    server.answer("/guide.pdf", {200, {{"Content-Type", "application/pdf"}}, pdfPage});
}

/// Tests the page on show by the toolbar and returns what the message says.
QString verdict(const SiteEditor& open) {
    QString text;
    onNextDialog([&](QDialog& dialog) {
        text = dialog.findChild<QLabel*>("Label1")->text();
        press(dialog, "OKButton");
    });
    open.click("Test");
    return text;
}

/// Gives a command while "Use this Site" tests the page that is shown, whose server takes a second, and waits
/// until both have ended.
void useSiteAnd(SiteEditor& open, const std::function<void()>& command) {
    open.server.answer("/plain.htm", {200, {}, "<title>Plain</title>", 1000});
    bool given = false;
    QTimer::singleShot(300, &open.window, [&] {
        given = open.program.gate.isLookedThrough();
        command();
    });
    open.click("Yes");
    QVERIFY(given);
    QVERIFY(waitUntil([&] { return open.program.gate.isOpen(); }));
    QCOMPARE(test::dialogsExpected(), 0);
}

/// Answers the next question, and says that the stop had its address already when it came.
void onQuestionAfterTheTest(const SiteEditor& open, const QString& answer) {
    onNextDialog([&open, answer](QDialog& dialog) {
        QCOMPARE(open.stopURL(2), toUtf8(open.served("/plain.htm")));
        press(dialog, answer);
    });
}

} // namespace

class FrameTestTest final : public QObject {
    Q_OBJECT

private slots:
    void testPageIsWrittenAsItStands() {
        const SiteEditor open;
        open.visit(open.served("/plain.htm"));
        QCOMPARE(verdict(open), passed);
        QCOMPARE(
            test::readFile(toUtf8(open.program.working("ft.htm"))),
            toUtf8("<html>\r\n<head>\r\n<title>Frame Test </title>\r\n</head>\r\n<frameset rows=\"*,50\">\r\n"
                   "<frame src = \"" +
                   open.served("/plain.htm") +
                   "\"name=\"tw\">\r\n<frame src = \"lower.htm\" name=\"bw\">\r\n</frameset>\r\n"
                   "</html>\r\n"));
    }

    void pagesPassOrFail_data() {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("message");
        QTest::newRow("plain") << "/plain.htm" << passed;
        QTest::newRow("slow") << "/slow.htm" << passed;
        QTest::newRow("script takes the window over") << "/busting.htm" << failed;
        QTest::newRow("DENY") << "/deny.htm" << failed;
        QTest::newRow("SAMEORIGIN") << "/sameorigin.htm" << failed;
        QTest::newRow("frame-ancestors 'none'") << "/nobody.htm" << failed;
        QTest::newRow("frame-ancestors *, which refuses the disk only") << "/anybody.htm" << passed;
        QTest::newRow("pop-up") << "/popup.htm" << passed;
        QTest::newRow("goes on to another page") << "/moving.htm" << passed;
        QTest::newRow("redirects") << "/redirect.htm" << passed;
        QTest::newRow("big") << "/big.htm" << passed;
        QTest::newRow("missing") << "/missing.htm" << passed;
        QTest::newRow("takes over, with the test page's name in its own") << "/left.htm" << failed;
        QTest::newRow("for browsers only") << "/browsers.htm" << passed;
        QTest::newRow("refuses frames, and nothing else") << "/noframes.htm" << failed;
        QTest::newRow("refuses whatever is no browser") << "/nobots.htm" << passed;
        QTest::newRow("for web servers, and no answer but to browsers") << "/silent-anybody.htm" << passed;
        QTest::newRow("PDF") << "/guide.pdf" << passed;
    }
    void pagesPassOrFail() {
        QFETCH(QString, path);
        QFETCH(QString, message);
        SiteEditor open;
        serveOddPages(open.server);
        open.address().lineEdit()->setText(open.served(path));
        QTest::keyClick(open.address().lineEdit(), Qt::Key_Return);
        QVERIFY(waitUntil(
            [&] { return open.history().value(0).startsWith("http:") && !open.browser().isBusy(); }));
        const QString page = open.browser().locationURL();
        QCOMPARE(verdict(open), message);
        QVERIFY(open.shows(page));
        QVERIFY(open.control<QToolButton>("Test").isEnabled());
        QCOMPARE(open.stopURL(2), std::string("newpage.htm"));
    }

    void pageWithoutEncryptionPassesWithAWordOnToursThatHaveIt() {
        const SiteEditor open;
        const QString page = open.served("/plain.htm").replace("127.0.0.1", "museum.test");
        const QString notice = "Browsers leave this page out of a tour on a server with https, because its "
                               "address begins with http.";
        open.visit(page);
        onNextDialog([&](QDialog& dialog) {
            QCOMPARE(dialog.findChild<QLabel*>("Label1")->text(), passed);
            QCOMPARE(dialog.findChild<QLabel*>("lblReason")->text(), notice);
            press(dialog, "OKButton");
        });
        open.click("Test");
        QVERIFY(open.shows(page));
        open.click("Yes");
        QVERIFY(waitUntil([&] { return open.program.gate.isOpen(); }));
        QCOMPARE(open.stopURL(2), toUtf8(page));
        QCOMPARE(open.notice(), notice);
    }

    void localPagePasses() {
        const SiteEditor open;
        open.write("My Page.htm", "<title>Mine</title>");
        open.visit(open.local("My Page.htm"));
        QCOMPARE(verdict(open), passed);
    }

    void pageThatTakesTheWindowOverALittleLaterFailsAsLongAsItLoads() {
        SiteEditor open;
        open.server.page("/late.htm", "<title>Late</title><script>setTimeout(() => { if (self !== top) "
                                      "top.location = self.location; }, 50);</script><img src='/slow.htm'>");
        open.visit(open.served("/late.htm"));
        QCOMPARE(verdict(open), failed);
    }

    void everyCaseOfTheHeaderTable_data() {
        QTest::addColumn<int>("number");
        int number = 0;
        for (const test::FramingCase& one : test::framingCases())
            QTest::newRow(one.name.c_str()) << number++;
    }
    void everyCaseOfTheHeaderTable() {
        QFETCH(int, number);
        if (m_open == nullptr)
            m_open = std::make_unique<SiteEditor>();
        const SiteEditor& open = *m_open;
        const test::FramingCase one = test::framingCases().at(static_cast<std::size_t>(number));
        const QString base = QString("/case%1/").arg(number);
        int step = 0;
        for (const auto& answer : one.answers) {
            const std::string page = "<title>Case</title>" + answer.page;
            test::LoopbackServer::Answer served{answer.status, {}, QByteArray::fromStdString(page)};
            for (const auto& header : answer.headers)
                served.headers.append(
                    {QByteArray::fromStdString(header.name), QByteArray::fromStdString(header.value)});
            if (answer.status / 100 == 3)
                served.headers.append({"Location", (base + QString::number(step + 1)).toUtf8()});
            m_open->server.answer(base + QString::number(step++), served);
        }
        const QString last = open.served(base + QString::number(step - 1));
        open.address().lineEdit()->setText(open.served(base + "0"));
        QTest::keyClick(open.address().lineEdit(), Qt::Key_Return);
        QVERIFY(open.shows(last));
        QCOMPARE(verdict(open), one.allowed ? passed : failed);
    }

    void cleanupTestCase() { m_open.reset(); }

    void redirectsAreFollowedToTheAnswerThatCounts_data() {
        QTest::addColumn<QString>("target");
        QTest::addColumn<QString>("message");
        QTest::newRow("refuses") << "/deny.htm" << failed;
        QTest::newRow("allows") << "/plain.htm" << passed;
        QTest::newRow("allows web servers only") << "/anybody.htm" << passed;
        QTest::newRow("breaks") << "/broken.htm" << failed;
        QTest::newRow("goes round in circles") << "/again.htm" << failed;
    }
    void redirectsAreFollowedToTheAnswerThatCounts() {
        QFETCH(QString, target);
        QFETCH(QString, message);
        SiteEditor open;
        open.server.page("/again.htm", "<title>Again</title>");
        open.visit(open.served("/again.htm"));
        open.server.redirect("/again.htm", "/further.htm");
        open.server.redirect("/further.htm", target);
        QCOMPARE(verdict(open), message);
    }

    void serverThatOnlyAnswersBrowsersIsJudgedByWhatTheBrowserShows() {
        SiteEditor open;
        open.visit(open.served("/plain.htm"));
        open.server.answer("/plain.htm", {200, {}, {}, 0, test::LoopbackServer::Answer::Kind::broken});
        QCOMPARE(verdict(open), failed);
    }

    void pageThatLoadsInTimeAsksNothingAndOneThatTakes31SecondsAsksOnce() {
        SiteEditor open;
        open.visit(open.served("/plain.htm"));
        test::LoopbackServer::Answer slow{200, {}, "<title>Plain</title>", 1500};
        open.server.answer("/plain.htm", slow);
        QTimer::singleShot(300, &open.window, [&] { open.program.letPass(29); });
        QCOMPARE(verdict(open), passed);
        QVERIFY(open.shows("/plain.htm"));

        int questions = 0;
        QTimer::singleShot(300, &open.window, [&] { open.program.letPass(31); });
        onNextDialog([&](QDialog& dialog) {
            ++questions;
            QCOMPARE(test::textOf(dialog), caption + "|" + question);
            press(dialog, "Yes");
        });
        QCOMPARE(verdict(open), passed);
        QCOMPARE(questions, 1);
        QCOMPARE(test::dialogsExpected(), 0);
    }

    void yesGivesAnotherThirtySeconds() {
        SiteEditor open;
        open.visit(open.served("/plain.htm"));
        open.server.answer("/plain.htm", {200, {}, "x", 0, test::LoopbackServer::Answer::Kind::withoutEnd});
        int questions = 0;
        QTimer::singleShot(300, &open.window, [&] { open.program.letPass(31); });
        onNextDialog([&](QDialog& dialog) {
            ++questions;
            QTimer::singleShot(300, &open.window, [&] { open.program.letPass(29); });
            QTimer::singleShot(600, &open.window, [&] { open.program.letPass(2); });
            press(dialog, "Yes");
        });
        onNextDialog([&](QDialog& dialog) {
            ++questions;
            press(dialog, "No");
        });
        onMessageWindow(caption, timedOut);
        open.click("Test");
        QCOMPARE(questions, 2);
        QCOMPARE(test::dialogsExpected(), 0);
    }

    void noAtTheQuestionKeepsTheAddressAndThePointer() {
        SiteEditor open;
        open.visit(open.served("/plain.htm"));
        open.server.answer("/plain.htm", {200, {}, "x", 0, test::LoopbackServer::Answer::Kind::withoutEnd});
        QTimer::singleShot(300, &open.window, [&] { open.program.letPass(31); });
        onNextDialog([&](QDialog& dialog) { press(dialog, "No"); });
        onMessageWindow(caption, timedOut);
        open.click("Yes");
        QCOMPARE(test::dialogsExpected(), 0);
        QCOMPARE(open.stopURL(2), std::string("newpage.htm"));
        QVERIFY(open.program.model.tourChanged);
        QVERIFY(open.control<QToolButton>("Yes").isEnabled());
        QVERIFY(QApplication::overrideCursor() != nullptr); // Until the pointer changes next.
        QTRY_VERIFY_WITH_TIMEOUT(open.browser().locationURL().endsWith("/plain.htm"), patience);
        open.program.desktop.setBusyPointer(Desktop::Pointer::standard);
    }

    void toolBarAndItsKeysAreOffDuringTheTest() {
        SiteEditor open;
        open.visit(open.served("/plain.htm"));
        open.server.answer("/plain.htm", {200, {}, "<title>Plain</title>", 1000});
        bool enabled = true;
        QTimer::singleShot(300, &open.window, [&] {
            enabled = open.control<QToolButton>("Yes").isEnabled() ||
                      open.control<QWidget>("tbToolBar").isEnabled();
            QTest::keyClick(&open.editor(), Qt::Key_Return, Qt::ControlModifier);
        });
        QCOMPARE(verdict(open), passed);
        QVERIFY(!enabled);
        QCOMPARE(open.stopURL(2), std::string("newpage.htm"));
        QVERIFY(open.control<QToolButton>("Yes").isEnabled());
    }

    void windowClosesWhenItIsClosedDuringATest() {
        SiteEditor open;
        open.visit(open.served("/plain.htm"));
        open.server.answer("/plain.htm", {200, {}, "x", 0, test::LoopbackServer::Answer::Kind::withoutEnd});
        QTimer::singleShot(300, &open.window, [&] { open.editor().close(); });
        open.click("Yes");
        QVERIFY(waitUntil([&] { return !open.isOpen(); }));
        QCOMPARE(open.stopURL(2), std::string("newpage.htm"));
        QVERIFY(QApplication::overrideCursor() == nullptr);
    }

    void escapeGivesTheTestUpAsNoDoes() {
        SiteEditor open;
        open.visit(open.served("/plain.htm"));
        open.server.answer("/plain.htm", {200, {}, "x", 0, test::LoopbackServer::Answer::Kind::withoutEnd});
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.editor()), patience);
        QTimer::singleShot(300, &open.window,
                           [&] { QTest::keyClick(open.editor().windowHandle(), Qt::Key_Escape); });
        onMessageWindow(caption, timedOut);
        open.click("Yes");
        QCOMPARE(test::dialogsExpected(), 0);
        QCOMPARE(open.stopURL(2), std::string("newpage.htm"));
        QVERIFY(open.isOpen());
        QVERIFY(open.control<QToolButton>("Yes").isEnabled());
        QTRY_VERIFY_WITH_TIMEOUT(open.browser().locationURL().endsWith("/plain.htm"), patience);
        open.program.desktop.setBusyPointer(Desktop::Pointer::standard);
    }

    void addressGivenDuringATestGivesItUpAndIsGoneTo() {
        SiteEditor open;
        open.visit(open.served("/plain.htm"));
        open.server.answer("/plain.htm", {200, {}, "x", 0, test::LoopbackServer::Answer::Kind::withoutEnd});
        QTimer::singleShot(300, &open.window, [&] {
            open.address().lineEdit()->setText(open.served("/big.htm"));
            QTest::keyClick(open.address().lineEdit(), Qt::Key_Return);
        });
        open.click("Yes"); // Without a message: there is no verdict.
        QVERIFY(waitUntil([&] { return open.shows("/big.htm"); }));
        QCOMPARE(open.stopURL(2), std::string("newpage.htm"));
        QVERIFY(open.isOpen());
        QVERIFY(open.control<QToolButton>("Yes").isEnabled());
        QVERIFY(QApplication::overrideCursor() == nullptr);
    }

    void siteFrameGivenDuringATestWaitsForItsEndAndStoresNothingElse() {
        SiteEditor open;
        open.visit(open.served("/plain.htm"));
        useSiteAnd(open, [&] { open.window.runToolBarCommand("EdBro"); });
        QCOMPARE(open.stopURL(2), toUtf8(open.served("/plain.htm")));
        QCOMPARE(open.editor().siteEditURL(), open.stopURL(2));
        QCOMPARE(open.editor().siteEditResult(), std::string());
        QVERIFY(open.shows("/plain.htm"));
        QCOMPARE(open.stopURL(1), std::string("newpage.htm"));
        QCOMPARE(open.stopURL(3), std::string("newpage.htm"));
    }

    void openGivenDuringATestWaitsForItsEndAndTheNewTourGetsNothingOfTheOld() {
        SiteEditor open;
        const QString other = open.program.makeTour("other", 3);
        const std::string bookmarks = "http://127.0.0.1:1/other\r\nnote\r\n16777215\r\n";
        test::writeFile(toUtf8(other) + "/goodlist.txt", bookmarks);
        open.visit(open.served("/plain.htm"));
        open.click("btnSave");
        onQuestionAfterTheTest(open, "Yes");
        onNextDialog([&](QDialog& dialog) {
            test::selectFolder(dialog, other);
            open.program.clockStep = 0.5F; // Opening waits a while.
            press(dialog, "btnOK");
        });
        useSiteAnd(open, [&] { open.window.openTour(); });
        QVERIFY(waitUntil([&] { return !open.isOpen(); }));
        QCOMPARE(toQString(open.program.workspace.tourPath()), other);
        for (int stop = 1; stop <= 3; ++stop)
            QCOMPARE(open.stopURL(stop), std::string("newpage.htm"));
        QCOMPARE(test::readFile(toUtf8(open.program.working("goodlist.txt"))), bookmarks);
        QVERIFY(!QFile::exists(open.program.working("brhist.txt")));
    }

    void newGivenDuringATestWaitsForItsEndAndTheNewTourGetsNothingOfTheOld() {
        SiteEditor open;
        open.visit(open.served("/plain.htm"));
        open.click("btnSave");
        onQuestionAfterTheTest(open, "Yes");
        onNextDialog([](QDialog& wizard) {
            wizard.findChild<QLineEdit*>("txtTourName")->setText("garden");
            wizard.findChild<QLineEdit*>("txtTitle")->setText("Garden");
            press(wizard, "btnNext");
        });
        onNextDialog([&](QDialog& wizard) {
            open.program.clockStep = 0.5F; // Saving waits a while.
            press(wizard, "btnNext");
        });
        useSiteAnd(open, [&] { open.window.newTour(); });
        QVERIFY(waitUntil([&] { return !open.isOpen(); }));
        QCOMPARE(open.program.model.tourTitle, std::string("Garden"));
        for (const Stop& stop : open.program.model.stops)
            QCOMPARE(stop.stopURL, std::string("newpage.htm"));
        QVERIFY(!QFile::exists(open.program.working("brhist.txt")));
        QVERIFY(!QFile::exists(open.program.working("goodlist.txt")));
    }

    void movingToAnotherStopDuringATestStoresWhereTheAuthorBegan() {
        SiteEditor open;
        open.visit(open.served("/plain.htm"));
        std::int16_t stopDuringTheTest = 0;
        useSiteAnd(open, [&] {
            open.window.next();
            stopDuringTheTest = open.program.model.currentStop;
        });
        QCOMPARE(stopDuringTheTest, std::int16_t{3});
        QCOMPARE(open.program.model.currentStop, std::int16_t{3});
        QCOMPARE(open.stopURL(2), toUtf8(open.served("/plain.htm")));
        QCOMPARE(open.stopURL(3), std::string("newpage.htm"));
        const auto page = test::readFile(toUtf8(open.program.working("page2.htm")));
        QVERIFY(page.find(open.stopURL(2)) != std::string::npos);
    }

    void insertedStopDuringATestWaitsForItsEnd() {
        SiteEditor open;
        open.visit(open.served("/plain.htm"));
        std::int16_t stopsDuringTheTest = 0;
        useSiteAnd(open, [&] {
            open.window.insertStop();
            stopsDuringTheTest = open.program.model.stopCount();
        });
        QCOMPARE(stopsDuringTheTest, std::int16_t{3});
        QCOMPARE(open.program.model.stopCount(), std::int16_t{4});
        QCOMPARE(open.stopURL(2), toUtf8(open.served("/plain.htm")));
        QCOMPARE(open.stopURL(3), std::string("newpage.htm"));
    }

    void dialogTellsTheVerdict_data() {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("message");
        QTest::newRow("passes") << "/plain.htm"
                                << "Passed . . . .";
        QTest::newRow("fails") << "/busting.htm"
                               << "Failed . . . .  You cannot use this site in your tour.";
        QTest::newRow("refuses") << "/deny.htm"
                                 << "Failed . . . .  You cannot use this site in your tour.";
    }
    void dialogTellsTheVerdict() {
        QFETCH(QString, path);
        QFETCH(QString, message);
        const SiteEditor open;
        open.visit(open.served(path));
        onNextDialog([&](QDialog& dialog) {
            auto& form = *qobject_cast<frmTestFrame*>(&dialog);
            QCOMPARE(form.windowTitle(), caption);
            const QLabel& label = *form.findChild<QLabel*>("lblMessage");
            QCOMPARE(label.text(),
                     QString("Testing if this Web page can be used  in a tour. . . . Please wait . . ."));
            QCOMPARE(
                form.findChild<QLabel*>("Label1")->text(),
                QString("Brenholt Tour can only work with sites that can be displayed inside a \"frame\". "
                        "Some sites are designed to deliberately avoid such usage."));
            QVERIFY(waitUntil([&] { return form.frameTestDone(); }));
            QCOMPARE(label.text(), message);
            press(dialog, "OKButton");
        });
        open.editor().findChild<QAction*>("mnuTestFrame")->trigger();
        QCOMPARE(test::dialogsExpected(), 0);
        QVERIFY(open.shows(path));
        QVERIFY(test::readFile(toUtf8(open.program.working("ft.htm"))).find("<frameset rows=\"*,10\">") !=
                std::string::npos);
    }

    void dialogCanBeLeftBeforeItsVerdict() {
        SiteEditor open;
        open.visit(open.served("/plain.htm"));
        open.server.answer("/plain.htm", {200, {}, "x", 0, test::LoopbackServer::Answer::Kind::withoutEnd});
        onNextDialog([&](QDialog& dialog) {
            QTimer::singleShot(300, &dialog, [&] { QTest::keyClick(&dialog, Qt::Key_Escape); });
        });
        open.editor().findChild<QAction*>("mnuTestFrame")->trigger();
        QTRY_VERIFY_WITH_TIMEOUT(open.browser().locationURL().endsWith("/plain.htm"), patience);
    }

private:
    std::unique_ptr<SiteEditor> m_open; ///< For the many cases of the table.
};

} // namespace wendmark

QTEST_MAIN(wendmark::FrameTestTest)
#include "FrameTestTest.moc"
