#include "platform/BrowserView.h"
#include "platform/LoadFailure.h"
#include "platform/Strings.h"
#include "ui/support/Patience.h"
#include "ui/support/SiteEditor.h"

#include <QHostAddress>
#include <QLineEdit>
#include <QTcpServer>
#include <QTest>
#include <QWebEnginePage>
#include <QWebEngineView>

namespace wendmark {

using test::SiteEditor;
using test::waitUntil;

namespace {

using Answer = test::LoopbackServer::Answer;
using Kind = Answer::Kind;

void enter(const SiteEditor& open, const QString& address) {
    open.address().lineEdit()->setText(address);
    QTest::keyClick(open.address().lineEdit(), Qt::Key_Return);
}

/// What the window says of the page on show, and that nothing in it has moved.
class Window final {
public:
    explicit Window(const SiteEditor& open) : m_open(open), m_page(open.browser().geometry()) {}

    /// Waits for the words, and that box and page agree then.
    void verifySays(const QString& notice, const QString& page) const {
        QVERIFY2(waitUntil([&] { return m_open.notice() == notice && !m_open.browser().isBusy(); }),
                 qPrintable("said: " + m_open.notice() + ", wanted: " + notice));
        QCOMPARE(m_open.browser().locationURL(), page);
        QCOMPARE(m_open.address().currentText(), page);
        QCOMPARE(m_open.browser().geometry(), m_page);
    }

private:
    const SiteEditor& m_open;
    QRect m_page;
};

} // namespace

class SiteMessagesTest final : public QObject {
    Q_OBJECT

private slots:
    void answersThatBringNoPageAreToldAsTheyAre_data() {
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("told");
        QTest::newRow("no content") << 204 << "%1 has brought no page: what was shown before stays.";
        QTest::newRow("not found") << 404 << "The server answers 404: it has no such page.";
        QTest::newRow("forbidden") << 403
                                   << "The server answers 403: it does not show this page to everybody.";
        QTest::newRow("too many") << 429 << "The server answers 429: it was asked too often.";
        QTest::newRow("failed") << 500 << "The server answers 500: it has failed, maybe only for now.";
        QTest::newRow("teapot") << 418 << "The server answers 418: it does not take what was asked.";
    }
    void answersThatBringNoPageAreToldAsTheyAre() {
        QFETCH(int, status);
        QFETCH(QString, told);
        SiteEditor open;
        open.visit(open.served("/plain.htm"));
        const Window window(open);
        open.server.answer("/answer", {status, {}, status == 204 ? "" : "<title>Words</title>words"});
        enter(open, open.served("/answer"));
        const bool shown = status != 204;
        window.verifySays(told.contains("%1") ? told.arg(open.served("/answer")) : told,
                          open.served(shown ? "/answer" : "/plain.htm"));
        QCOMPARE(open.history().contains(open.served("/answer")), shown);
        open.visit(open.served("/anybody.htm"));
        QCOMPARE(open.notice(), QString());
    }

    void stopIsToldAsStop() {
        SiteEditor open;
        open.visit(open.served("/plain.htm"));
        const Window window(open);
        enter(open, open.served("/silent.htm"));
        QVERIFY(waitUntil([&] { return open.server.requestsFor("/silent.htm") > 0; }));
        open.click("Stop");
        window.verifySays("Loading " + open.served("/silent.htm") + " was stopped.",
                          open.served("/plain.htm"));
        enter(open, open.served("/never.htm"));
        QVERIFY(waitUntil([&] {
            return test::engineOf(open.browser()).page()->title() != "Plain" &&
                   open.server.requestsFor("/never.htm") > 0;
        }));
        open.click("Stop");
        QVERIFY(waitUntil([&] { return open.notice().contains("stopped"); }));
        QCOMPARE(open.address().currentText(), open.browser().locationURL());
        QVERIFY(!open.history().contains(open.served("/never.htm")));
    }

    void addressesOfOtherProgramsAreNotCalledFailures() {
        SiteEditor open;
        open.server.page("/links.htm", "<title>Links</title><a id=a href='mailto:x@brenholt.example'>x</a>");
        open.visit(open.served("/links.htm"));
        const Window window(open);
        const QString told = "mailto:x@brenholt.example is not shown here: it is no page, and belongs to "
                             "another program.";
        enter(open, "mailto:x@brenholt.example");
        window.verifySays(told, open.served("/links.htm"));
        open.visit(open.served("/plain.htm"));
        open.visit(open.served("/links.htm"));
        test::engineOf(open.browser()).page()->runJavaScript("document.getElementById('a').click()");
        window.verifySays(told, open.served("/links.htm"));
    }

    void serversThatAreNotThereAreTold() {
        SiteEditor open;
        QTcpServer closed;
        QVERIFY(closed.listen(QHostAddress::LocalHost));
        const QString address = QString("http://127.0.0.1:%1/").arg(closed.serverPort());
        closed.close();
        const Window window(open);
        enter(open, address);
        window.verifySays(address + " could not be loaded: nothing takes connections there.", address);
        enter(open, "http://nowhere.example/");
        window.verifySays("http://nowhere.example/ could not be loaded: no server called nowhere.example is "
                          "known. Is there a network?",
                          "http://nowhere.example/");
        enter(open, open.served("/broken.htm"));
        window.verifySays(open.served("/broken.htm") +
                              " could not be loaded: the server broke the connection off.",
                          open.served("/broken.htm"));
    }

    void redirectsWithoutEndAreTold() {
        SiteEditor open;
        open.server.redirect("/round.htm", "/round.htm");
        enter(open, open.served("/round.htm"));
        Window(open).verifySays(
            open.served("/round.htm") +
                " could not be loaded: the server leads from one address to the next without end.",
            open.served("/round.htm"));
    }

    void downloadsAreTold() {
        SiteEditor open;
        open.visit(open.served("/plain.htm"));
        enter(open, open.served("/download.zip"));
        Window(open).verifySays(open.served("/download.zip") +
                                    " is a file to be saved, not a page: no stop can show it.",
                                open.served("/plain.htm"));
    }

    void whatIsSaidOfOnePageGoesWithALinkToAnother() {
        SiteEditor open;
        open.server.answer("/lost.htm", {404, {}, "<title>Lost</title><a id=a href='/plain.htm'>x</a>"});
        enter(open, open.served("/lost.htm"));
        QVERIFY(waitUntil([&] { return open.notice().contains("404") && !open.browser().isBusy(); }));
        test::engineOf(open.browser()).page()->runJavaScript("document.getElementById('a').click()");
        QVERIFY(open.shows("/plain.htm"));
        QCOMPARE(open.notice(), QString());
    }

    void engineCodesHaveTheirMeanings() {
        QCOMPARE(loadFailureFrom(-118), LoadFailure::noAnswer);
        QCOMPARE(loadFailureFrom(-7), LoadFailure::noAnswer);
        QCOMPARE(loadFailureFrom(-106), LoadFailure::notReachable);
        QCOMPARE(loadFailureFrom(-201), LoadFailure::untrusted);
        QCOMPARE(loadFailureFrom(-6), LoadFailure::noSuchFile);
        QCOMPARE(loadFailureFrom(-9), LoadFailure::other);
    }
};

} // namespace wendmark

QTEST_MAIN(wendmark::SiteMessagesTest)
#include "SiteMessagesTest.moc"
