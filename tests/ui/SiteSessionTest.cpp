#include "platform/BrowserView.h"
#include "platform/Strings.h"
#include "ui/support/Patience.h"
#include "ui/support/SiteEditor.h"

#include <QLabel>
#include <QLineEdit>
#include <QTest>

namespace wendmark {

using test::SiteEditor;
using test::waitUntil;

namespace {

using Kind = test::LoopbackServer::Answer::Kind;

/// One author at the site editor, whose window must be true at every step.
class Session final {
public:
    Session() {
        m_open.server.answer("/first.htm", {200, {{"Cache-Control", "no-store"}}, "<title>First</title>"});
        m_open.server.answer("/slow.htm", {200, {}, "<title>Slow</title>slow", 300});
        m_open.server.answer("/empty", {204, {}, {}});
        m_open.server.answer("/failed", {500, {}, "<title>Failed</title>failed"});
        m_open.server.page("/again.htm", "<title>Again</title><script>if (!sessionStorage.n) {"
                                         "sessionStorage.n = 1; location.reload(); }</script>");
        m_history = m_open.history();
    }

    void enter(const QString& address) {
        m_open.address().lineEdit()->setText(address);
        QTest::keyClick(m_open.address().lineEdit(), Qt::Key_Return);
    }

    /// Goes to a page of the server that comes in the end.
    void visit(const QString& path, const QString& shownPath, const QString& notice = {}) {
        enter(m_open.served(path));
        record(m_open.served(shownPath));
        verify(m_open.served(shownPath), notice);
    }

    /// A completed page goes to the top.
    void record(const QString& address) {
        m_history.removeAll(address);
        m_history.prepend(address);
    }

    /// Waits for the page, the message and the history, and looks at everything else.
    void verify(const QString& page, const QString& notice) {
        const bool settled = waitUntil([&] {
            return m_open.browser().locationURL() == page && m_open.notice() == notice &&
                   m_open.history() == m_history && !m_open.browser().isBusy();
        });
        QVERIFY2(settled, qPrintable("at: " + m_open.browser().locationURL() + ", said: " + m_open.notice() +
                                     ", wanted: " + notice + ", history: " + m_open.history().join(' ')));
        QCOMPARE(m_open.address().currentText(), page);
        QCOMPARE(m_open.stopURL(2), m_stop);
    }

    const QStringList& history() const { return m_history; }
    void expectStop(const QString& address) { m_stop = toUtf8(address); }
    SiteEditor& open() { return m_open; }

private:
    SiteEditor m_open;
    QStringList m_history;
    std::string m_stop = "newpage.htm";
};

} // namespace

class SiteSessionTest final : public QObject {
    Q_OBJECT

private slots:
    void windowIsTrueAtEveryStep() {
        Session session;
        SiteEditor& open = session.open();
        session.visit("/first.htm", "/first.htm");
        session.visit("/redirect.htm", "/plain.htm");
        session.visit("/again.htm", "/again.htm");
        QCOMPARE(open.server.requestsFor("/again.htm"), 2);
        session.visit("/slow.htm", "/slow.htm");
        session.visit("/failed", "/failed", "The server answers 500: it has failed, maybe only for now.");
        session.enter(open.served("/empty"));
        session.verify(open.served("/failed"),
                       open.served("/empty") + " has brought no page: what was shown before stays.");
        session.enter(open.served("/silent.htm"));
        QVERIFY(waitUntil([&] { return open.server.requestsFor("/silent.htm") > 0; }));
        QCOMPARE(open.address().currentText(), open.served("/silent.htm"));
        QCOMPARE(open.notice(), QString());
        open.click("Stop");
        session.verify(open.served("/failed"), "Loading " + open.served("/silent.htm") + " was stopped.");
        session.enter("mailto:x@brenholt.example");
        session.verify(open.served("/failed"), "mailto:x@brenholt.example is not shown here: it is no page, "
                                               "and belongs to another program.");
        session.visit("/plain.htm", "/plain.htm");
        open.click("Yes"); // Through the test's page and back.
        session.record(open.local("ft.htm"));
        session.record(open.served("/plain.htm"));
        session.expectStop(open.served("/plain.htm"));
        session.verify(open.served("/plain.htm"), {});
        QVERIFY(open.control<QLabel>("lblStop").text().startsWith("Done:"));
    }

    void backToAPageThatFailsAndOnFromThere() {
        Session session;
        SiteEditor& open = session.open();
        session.visit("/first.htm", "/first.htm");
        session.visit("/plain.htm", "/plain.htm");
        open.server.answer("/first.htm", {200, {}, {}, 0, Kind::broken});
        open.click("Back");
        const QString told =
            open.served("/first.htm") + " could not be loaded: the server broke the connection off.";
        session.verify(open.served("/first.htm"), told);
        open.server.page("/first.htm", "<title>First</title>");
        open.click("Refresh");
        session.record(open.served("/first.htm"));
        session.verify(open.served("/first.htm"), {});
        open.click("Forward");
        session.record(open.served("/plain.htm"));
        session.verify(open.served("/plain.htm"), {});
    }

    void pageThatNeverEndsIsShownAndNotVisited() {
        Session session;
        SiteEditor& open = session.open();
        session.visit("/plain.htm", "/plain.htm");
        open.server.answer(
            "/endless.htm",
            {200, {}, "<title>Endless</title>" + QByteArray(20'000, ' '), 0, Kind::withoutEnd});
        session.enter(open.served("/endless.htm"));
        QVERIFY(waitUntil([&] { return open.browser().locationName() == "Endless"; }));
        QVERIFY(open.browser().isBusy());
        QCOMPARE(open.address().currentText(), open.served("/endless.htm"));
        open.click("Stop");
        session.verify(open.served("/endless.htm"),
                       "Loading was stopped: parts of " + open.served("/endless.htm") + " may be missing.");
    }

    void slowPageThatIsLeftForAnotherIsNotVisited() {
        Session session;
        SiteEditor& open = session.open();
        open.server.answer("/slow.htm", {200, {}, {}, 0, Kind::silence}); // Slower than any machine is busy.
        session.visit("/first.htm", "/first.htm");
        session.enter(open.served("/slow.htm"));
        QVERIFY(waitUntil([&] { return open.server.requestsFor("/slow.htm") > 0; }));
        QCOMPARE(open.address().currentText(), open.served("/slow.htm"));
        session.visit("/plain.htm", "/plain.htm");
        open.server.answer("/slow.htm", {200, {}, "<title>Slow</title>slow", 300});
        open.click("Back");
        session.record(open.served("/first.htm"));
        session.verify(open.served("/first.htm"), {});
        session.visit("/slow.htm", "/slow.htm");
        open.click("Yes");
        session.record(open.local("ft.htm"));
        session.record(open.served("/slow.htm"));
        session.expectStop(open.served("/slow.htm"));
        session.verify(open.served("/slow.htm"), {});
    }

    void pageThatNeverEndsIsLeftByBackAndByAnAddress() {
        Session session;
        SiteEditor& open = session.open();
        session.visit("/first.htm", "/first.htm");
        session.enter(open.served("/never.htm"));
        QVERIFY(waitUntil([&] { return open.browser().locationURL() == open.served("/never.htm"); }));
        open.click("Back");
        session.verify(open.served("/first.htm"), {});
        session.enter(open.served("/never.htm"));
        QVERIFY(waitUntil([&] { return open.browser().locationURL() == open.served("/never.htm"); }));
        session.visit("/redirect.htm", "/plain.htm");
    }

    void pageThatReloadsItselfForEverIsThereOnce() {
        Session session;
        SiteEditor& open = session.open();
        open.server.page("/restless.htm", "<title>Restless</title><script>onload = function () {"
                                          "setTimeout(function () { location.reload(); }, 1); };</script>");
        session.visit("/first.htm", "/first.htm");
        session.enter(open.served("/restless.htm"));
        session.record(open.served("/restless.htm"));
        for (const int reloads : {2, 4, 8}) {
            QVERIFY(waitUntil([&] { return open.server.requestsFor("/restless.htm") > reloads; }));
            QVERIFY(waitUntil([&] { return open.history() == session.history(); }));
            QCOMPARE(open.browser().locationURL(), open.served("/restless.htm"));
            QCOMPARE(open.address().currentText(), open.served("/restless.htm"));
            QCOMPARE(open.notice(), QString());
        }
        session.visit("/plain.htm", "/plain.htm");
        open.click("Back");
        QVERIFY(waitUntil([&] { return open.browser().locationURL() == open.served("/restless.htm"); }));
        QCOMPARE(open.address().currentText(), open.served("/restless.htm"));
        session.visit("/moving.htm", "/plain.htm");
    }

    void redirectToAPageThatFailsIsNotVisited() {
        Session session;
        SiteEditor& open = session.open();
        open.server.redirect("/lost.htm", "/broken.htm");
        open.server.redirect("/found.htm", "/slow.htm");
        session.visit("/first.htm", "/first.htm");
        session.enter(open.served("/lost.htm"));
        session.verify(open.served("/broken.htm"),
                       open.served("/broken.htm") +
                           " could not be loaded: the server broke the connection off.");
        session.visit("/found.htm", "/slow.htm");
        open.click("Back");
        session.verify(open.served("/broken.htm"),
                       open.served("/broken.htm") +
                           " could not be loaded: the server broke the connection off.");
    }
};

} // namespace wendmark

QTEST_MAIN(wendmark::SiteSessionTest)
#include "SiteSessionTest.moc"
