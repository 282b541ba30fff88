#include "platform/BrowserView.h"
#include "platform/Strings.h"
#include "support/FramingCases.h"
#include "ui/site/frmTestFrame.h"
#include "ui/support/SiteEditor.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <memory>

namespace wendmark {

using test::onMessageWindow;
using test::onNextDialog;
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
    }
    void pagesPassOrFail() {
        QFETCH(QString, path);
        QFETCH(QString, message);
        const SiteEditor open;
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
        QTRY_VERIFY(open.browser().locationURL().endsWith("/plain.htm"));
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
        QVERIFY(!open.isOpen());
        QCOMPARE(open.stopURL(2), std::string("newpage.htm"));
        QVERIFY(QApplication::overrideCursor() == nullptr);
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
        QTRY_VERIFY(open.browser().locationURL().endsWith("/plain.htm"));
    }

private:
    std::unique_ptr<SiteEditor> m_open; ///< For the many cases of the table.
};

} // namespace wendmark

QTEST_MAIN(wendmark::FrameTestTest)
#include "FrameTestTest.moc"
