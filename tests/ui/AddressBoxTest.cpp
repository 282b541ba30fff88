#include "platform/BrowserView.h"
#include "platform/Strings.h"
#include "ui/support/Patience.h"
#include "ui/support/SiteEditor.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCompleter>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

namespace wendmark {

using test::hasKeys;
using test::patience;
using test::SiteEditor;
using test::waitUntil;

namespace {

using Kind = test::LoopbackServer::Answer::Kind;

/// A site editor that has the keys.
class Author final {
public:
    Author() { takeKeys(); }

    /// Offscreen, the list of completions may keep them when it has gone already.
    void takeKeys() const {
        open.editor().activateWindow();
        waitUntil([this] { return hasKeys(open.editor()); });
    }

    QLineEdit& field() const { return *open.address().lineEdit(); }

    /// Whatever has the keyboard gets these keys.
    void type(const QString& text) const { QTest::keyClicks(QApplication::focusWidget(), text); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }

    bool pageHasFocus() const { return open.browser().isAncestorOf(QApplication::focusWidget()); }

    SiteEditor open;
};

/// A page whose title tells the keys that it was given.
const QByteArray listening = "<title>Keys:</title><body onkeydown=\"document.title += event.key\">words";

} // namespace

class AddressBoxTest final : public QObject {
    Q_OBJECT

private slots:
    void openingSelectsTheAddress() {
        Author author;
        QVERIFY(author.field().hasFocus());
        QCOMPARE(author.field().selectedText(), author.open.local("newpage.htm"));
        author.type("w");
        QCOMPARE(author.field().text(), QString("w"));
        author.open.window.runToolBarCommand("EdBro");
        QVERIFY(author.field().hasFocus());
        QVERIFY(waitUntil([&] { return author.field().selectedText() == author.field().text(); }));
        QVERIFY(waitUntil([&] { return author.field().text() == author.open.local("newpage.htm"); }));
    }

    void keysLeadToTheAddressAndSelectIt_data() {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::newRow("F6") << Qt::Key_F6 << Qt::KeyboardModifiers();
        QTest::newRow("Ctrl+L") << Qt::Key_L << Qt::KeyboardModifiers(Qt::ControlModifier);
    }
    void keysLeadToTheAddressAndSelectIt() {
        QFETCH(Qt::Key, key);
        QFETCH(Qt::KeyboardModifiers, modifiers);
        Author author;
        author.open.visit(author.open.served("/plain.htm"));
        author.open.grid().setFocus();
        author.press(key, modifiers);
        QVERIFY(author.field().hasFocus());
        QCOMPARE(author.field().selectedText(), author.open.served("/plain.htm"));
    }

    void whatIsTypedStaysWhateverIsLoaded() {
        Author author;
        author.open.server.page("/again.htm", "<title>Again</title><script>setTimeout(() => location = "
                                              "'/plain.htm', 300);</script>");
        author.open.visit(author.open.served("/again.htm"));
        author.press(Qt::Key_F6);
        author.type("brenholt.examle");
        author.press(Qt::Key_Left);
        author.press(Qt::Key_Left);
        author.press(Qt::Key_Left, Qt::ShiftModifier);
        QVERIFY(waitUntil([&] { return author.open.history().value(0).endsWith("/plain.htm"); }));
        QCOMPARE(author.open.address().currentIndex(), 0);
        QCOMPARE(author.field().text(), QString("brenholt.examle"));
        QCOMPARE(author.field().selectedText(), QString("m"));
        author.type("mp");
        QCOMPARE(author.field().text(), QString("brenholt.example"));
    }

    void whatIsTypedStaysWhileAnotherWindowHasTheKeys() {
        Author author;
        author.open.visit(author.open.served("/plain.htm"));
        author.press(Qt::Key_F6);
        author.type("brenholt.ex");
        author.open.window.activateWindow();
        QVERIFY(waitUntil([&] { return hasKeys(author.open.window); }));
        author.open.click("Refresh");
        QVERIFY(waitUntil([&] { return author.open.server.requestsFor("/plain.htm") == 2; }));
        QVERIFY(author.open.shows("/plain.htm"));
        QCOMPARE(author.field().text(), QString("brenholt.ex"));
    }

    void stopGivesTheAddressOfThePageBack() {
        Author author;
        author.open.visit(author.open.served("/plain.htm"));
        author.press(Qt::Key_F6);
        author.type("brenholt.ex");
        author.press(Qt::Key_Escape); // Completion's list.
        author.press(Qt::Key_Escape);
        QCOMPARE(author.field().text(), author.open.served("/plain.htm"));
    }

    void returnGivesTheKeyboardToThePageAlsoInAnotherProcess() {
        Author author;
        author.open.server.page("/keys.htm", listening);
        // The engine draws each of these sites with another process.
        for (const char* const host : {"127.0.0.1", "localhost", "127.0.0.1"}) {
            author.press(Qt::Key_F6);
            author.open.visit(author.open.served("/keys.htm").replace("127.0.0.1", host));
            QVERIFY(waitUntil([&] { return author.pageHasFocus(); }));
            QVERIFY(waitUntil([&] {
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_A);
                return author.open.browser().locationName().startsWith("Keys:a");
            }));
            QVERIFY(author.pageHasFocus());
        }
    }

    void wheelOverTheBoxDoesNothing() {
        Author author;
        author.open.visit(author.open.served("/plain.htm"));
        author.open.visit(author.open.served("/anybody.htm"));
        for (const bool focused : {false, true}) {
            if (focused)
                author.press(Qt::Key_F6);
            QWheelEvent turn(QPointF(5, 5), author.open.address().mapToGlobal(QPointF(5, 5)), {},
                             QPoint(0, -120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(&author.open.address(), &turn);
            QCOMPARE(author.open.address().currentIndex(), 0);
            QCOMPARE(author.field().text(), author.open.served("/anybody.htm"));
            QCOMPARE(author.field().hasFocus(), focused);
        }
        QCOMPARE(author.open.server.requestsFor("/plain.htm"), 1);
    }

    void boxAgreesWithThePageAfterBackToOneThatFails() {
        Author author;
        author.open.server.answer("/plain.htm", {200, {{"Cache-Control", "no-store"}}, "once"});
        author.open.visit(author.open.served("/plain.htm"));
        author.open.visit(author.open.served("/anybody.htm"));
        author.open.server.answer("/plain.htm", {200, {}, {}, 0, Kind::broken});
        author.open.click("Back");
        QVERIFY(waitUntil([&] { return author.open.notice().contains("could not be loaded"); }));
        QCOMPARE(author.open.browser().locationURL(), author.open.served("/plain.htm"));
        QCOMPARE(author.field().text(), author.open.served("/plain.htm"));
        QCOMPARE(author.open.history().value(0), author.open.served("/anybody.htm"));
    }

    void testPagesEntrySaysWhatItIsAndLeadsToTheTestedPage() {
        Author author;
        author.open.visit(author.open.served("/plain.htm"));
        author.open.click("Yes");
        QVERIFY(author.open.shows("/plain.htm"));
        const QString testPage = author.open.local("ft.htm");
        const int entry = author.open.address().findText(testPage, Qt::MatchExactly);
        QVERIFY(entry > 0);
        const QVariant said = author.open.address().itemData(entry, Qt::AccessibleTextRole);
        QVERIFY(said.toString().contains("frame test"));
        QCOMPARE(author.open.address().itemData(0, Qt::AccessibleTextRole).toString(),
                 author.open.served("/plain.htm"));
        author.open.visit(author.open.served("/anybody.htm"));
        author.open.address().setCurrentIndex(author.open.address().findText(testPage));
        emit author.open.address().activated(author.open.address().currentIndex());
        QVERIFY(author.open.shows("/plain.htm"));
        QCOMPARE(author.field().text(), author.open.served("/plain.htm"));
        QVERIFY(author.open.history().contains(testPage));
    }

    void testPageIsNoStopUnasked() {
        Author author;
        author.open.visit(author.open.served("/plain.htm"));
        author.open.click("Yes");
        QVERIFY(author.open.shows("/plain.htm"));
        author.open.click("Back");
        QVERIFY(author.open.shows("ft.htm"));
        QCOMPARE(author.field().text(), author.open.local("ft.htm"));
        test::onNextDialog([&](QDialog& question) {
            QVERIFY(test::textOf(question).contains(author.open.served("/plain.htm")));
            test::press(question, "No");
        });
        author.open.click("Yes");
        QCOMPARE(test::dialogsExpected(), 0);
        QVERIFY(author.open.shows("/plain.htm"));
        QCOMPARE(author.open.stopURL(2), toUtf8(author.open.served("/plain.htm")));
    }

    void completionLeavesTheTestPageOut() {
        Author author;
        author.open.visit(author.open.served("/plain.htm"));
        author.open.click("Yes");
        QVERIFY(author.open.shows("/plain.htm"));
        QVERIFY(author.open.history().contains(author.open.local("ft.htm")));
        QCompleter& completer = *author.field().completer();
        completer.setCompletionPrefix("ft.htm");
        QCOMPARE(completer.completionCount(), 0);
        completer.setCompletionPrefix("plain.h");
        QCOMPARE(completer.completionCount(), 1);
    }

    void wordsOfferASearch() {
        Author author;
        author.open.program.settings.store(Setting<QString>{"SearchPage", {}},
                                           author.open.served("/search?q=%1"));
        author.open.server.page("/search?q=desert%20plants%20%26%20more", "<title>Found</title>");
        const QRect page = author.open.browser().geometry();
        author.press(Qt::Key_F6);
        author.type("desert plants & more");
        author.press(Qt::Key_Return);
        QVERIFY(author.open.notice().startsWith("\"desert plants & more\" is not an address."));
        QVERIFY(author.field().hasFocus());
        QCOMPARE(author.open.browser().geometry(), page);
        auto& offer = author.open.control<QPushButton>("btnNotice");
        QVERIFY(offer.isVisible());
        QTest::mouseClick(&offer, Qt::LeftButton);
        QTRY_COMPARE_WITH_TIMEOUT(author.open.browser().locationName(), QString("Found"), patience);
        QCOMPARE(author.open.notice(), QString());
        QVERIFY(!offer.isVisible());
    }

    void brokenAddressesOfferNoSearch() {
        Author author;
        author.press(Qt::Key_F6);
        author.type("http://");
        author.press(Qt::Key_Return);
        QVERIFY(author.open.notice().contains("name of a server is missing"));
        QVERIFY(!author.open.control<QPushButton>("btnNotice").isVisible());
    }

    void addressesNeedNoScheme() {
        Author author;
        const QString typed = author.open.served("/plain.htm").remove("http://");
        author.press(Qt::Key_F6);
        author.type(typed);
        author.press(Qt::Key_Return);
        QVERIFY(author.open.shows("/plain.htm"));
        const QSignalSpy starts(&author.open.browser(), &BrowserView::navigationStarted);
        author.takeKeys();
        author.press(Qt::Key_F6);
        author.type("brenholt.example/atlas");
        author.press(Qt::Key_Return);
        QTRY_VERIFY_WITH_TIMEOUT(!starts.isEmpty(), patience);
        QCOMPARE(starts.first().first().toUrl(), QUrl("https://brenholt.example/atlas"));
    }
};

} // namespace wendmark

QTEST_MAIN(wendmark::AddressBoxTest)
#include "AddressBoxTest.moc"
