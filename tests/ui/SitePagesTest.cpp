#include "platform/BrowserView.h"
#include "platform/Strings.h"
#include "ui/support/Patience.h"
#include "ui/support/SiteEditor.h"

#include <QApplication>
#include <QClipboard>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWebEnginePage>
#include <QWebEngineView>

namespace wendmark {

using test::patience;
using test::SiteEditor;
using test::waitUntil;

namespace {

/// One page of paper, all of it blue.
QByteArray bluePdf() {
    const QByteArray paint = "0 0 1 rg 0 0 600 600 re f";
    const QByteArray objects[] = {
        "<< /Type /Catalog /Pages 2 0 R >>", "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
        "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 600 600] /Contents 4 0 R /Resources << >> >>",
        "<< /Length " + QByteArray::number(paint.size()) + " >>\nstream\n" + paint + "\nendstream"};
    QByteArray file = "%PDF-1.4\n";
    QByteArray table = "0000000000 65535 f \n";
    int number = 0;
    for (const QByteArray& object : objects) {
        table += QByteArray::number(file.size()).rightJustified(10, '0') + " 00000 n \n";
        file += QByteArray::number(++number) + " 0 obj\n" + object + "\nendobj\n";
    }
    const QByteArray start = QByteArray::number(file.size());
    return file + "xref\n0 5\n" + table + "trailer\n<< /Size 5 /Root 1 0 R >>\nstartxref\n" + start +
           "\n%%EOF\n";
}

void enter(const SiteEditor& open, const QString& address) {
    open.address().lineEdit()->setText(address);
    QTest::keyClick(open.address().lineEdit(), Qt::Key_Return);
}

/// Whether much of what the view shows is blue.
bool isBlue(const BrowserView& browser) {
    const QImage picture = test::engineOf(browser).grab().toImage();
    int blue = 0;
    for (int y = 0; y < picture.height(); y += 8) {
        for (int x = 0; x < picture.width(); x += 8)
            blue += picture.pixelColor(x, y) == QColor(Qt::blue) ? 1 : 0;
    }
    return blue > 50;
}

/// Asks for a password like a server that knows "flora" with "desert".
class LockedPage final {
public:
    explicit LockedPage(SiteEditor& open) : m_open(open) {
        open.server.answer("/locked.htm",
                           {401, {{"WWW-Authenticate", "Basic realm=\"Herbarium\""}}, "<title>No</title>no"});
    }

    void unlock() { m_open.server.page("/locked.htm", "<title>Herbarium</title>plants"); }

    /// What came with the last request.
    QByteArray credentials() const {
        QByteArray sent;
        for (const auto& request : m_open.server.requests()) {
            if (request.path == "/locked.htm")
                sent = request.headers.value("authorization");
        }
        return sent;
    }

private:
    SiteEditor& m_open;
};

QAction* actionOf(const SiteEditor& open, QWebEnginePage::WebAction action) {
    return test::engineOf(open.browser()).page()->action(action);
}

} // namespace

class SitePagesTest final : public QObject {
    Q_OBJECT

private slots:
    void windowSaysWhichStopItServesAndWhatHasBeenDone() {
        SiteEditor open;
        const auto line = [&] { return open.control<QLabel>("lblStop").text(); };
        QCOMPARE(line(), QString("This is the page of stop 2 of 3, \"Stop 2\""));
        open.visit(open.served("/plain.htm"));
        QCOMPARE(line(), QString("For stop 2 of 3, \"Stop 2\""));
        open.click("Yes");
        QVERIFY(open.shows("/plain.htm"));
        QCOMPARE(line(), QString("Done: this page is now that of stop 2 of 3, \"Stop 2\""));
        open.program.document.goToStop(3);
        QCOMPARE(line(), QString("For stop 3 of 3, \"Stop 3\""));
        open.program.document.goToStop(0);
        QVERIFY(line().contains("opening page"));
        QVERIFY(open.control<QLabel>("lblStop").isVisible());
    }

    void failedTestSaysWhy_data() {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("reason");
        QTest::newRow("header") << "/deny.htm"
                                << "Its server refuses frames of other sites: X-Frame-Options: deny";
        QTest::newRow("script") << "/busting.htm"
                                << "The page has left its frame and taken over the whole window.";
        QTest::newRow("no page") << "/broken.htm"
                                 << "The page has not come: the frame shows an error of the browser.";
    }
    void failedTestSaysWhy() {
        QFETCH(QString, path);
        QFETCH(QString, reason);
        SiteEditor open;
        enter(open, open.served(path));
        QVERIFY(waitUntil([&] {
            return open.browser().locationURL() == open.served(path) && !open.browser().isBusy() &&
                   (open.history().value(0) == open.served(path) || !open.notice().isEmpty());
        }));
        test::onNextDialog([&](QDialog& message) {
            QCOMPARE(message.findChild<QLabel*>("lblReason")->text(), reason);
            test::press(message, "OKButton");
        });
        open.click("Test");
        QCOMPARE(test::dialogsExpected(), 0);
    }

    void pageThatFailsGetsACard_data() {
        QTest::addColumn<QString>("command");
        QTest::newRow("test") << "Test";
        QTest::newRow("use") << "Yes";
    }
    void pageThatFailsGetsACard() {
        QFETCH(QString, command);
        SiteEditor open;
        open.visit(open.served("/deny.htm"));
        test::onNextDialog([&](QDialog& message) { test::press(message, "btnOffer"); });
        open.click(command.toUtf8().constData());
        QCOMPARE(test::dialogsExpected(), 0);
        QCOMPARE(open.stopURL(2), std::string("card1.htm"));
        QCOMPARE(open.notice(), QString("Stop 2 shows a card of this page now."));
        const std::string card = test::readFile(toUtf8(open.program.working("card1.htm")));
        QVERIFY2(card.find("content=\"" + toUtf8(open.served("/deny.htm")) + '"') != std::string::npos,
                 card.c_str());
        QVERIFY(open.shows("/deny.htm"));
        QCOMPARE(QString::fromStdString(open.program.document.undoName().value_or("")),
                 QString("Make a Card"));
        open.program.document.undo();
        QCOMPARE(open.stopURL(2), std::string("newpage.htm"));
    }

    void cardIsGivenUp_data() {
        QTest::addColumn<bool>("closes");
        QTest::newRow("by Esc") << false;
        QTest::newRow("by closing the window") << true;
    }
    void cardIsGivenUp() {
        QFETCH(bool, closes);
        SiteEditor open;
        open.visit(open.served("/deny.htm"));
        test::onNextDialog([&](QDialog& message) { test::press(message, "btnOffer"); });
        QTimer watch;
        watch.callOnTimeout([&] {
            if (!open.notice().startsWith("A card of this page is being made"))
                return;
            open.editor().activateWindow(); // As window managers do when a dialog is gone.
            if (closes)
                open.editor().close();
            else if (open.editor().isActiveWindow())
                QTest::keyClick(open.editor().windowHandle(), Qt::Key_Escape);
        });
        watch.start(5);
        open.click("Test");
        watch.stop();
        QVERIFY(waitUntil([&] { return open.isOpen() != closes; }));
        QCOMPARE(open.stopURL(2), std::string("newpage.htm"));
        QVERIFY(!QFileInfo::exists(open.program.working("card1.htm")));
        if (!closes)
            QCOMPARE(open.notice(), QString("No card has been made."));
    }

    void cardIsOfferedForPagesOfTheWebAndForStopsOnly() {
        SiteEditor open;
        open.program.document.goToStop(0);
        open.visit(open.served("/deny.htm"));
        test::onNextDialog([&](QDialog& message) {
            QVERIFY(message.findChild<QPushButton*>("btnOffer") == nullptr);
            test::press(message, "OKButton");
        });
        open.click("Test");
        QCOMPARE(test::dialogsExpected(), 0);
    }

    void pdfPagesAreShown() {
        SiteEditor open;
        open.editor().resize(900, 800);
        open.server.answer("/paper.pdf", {200, {{"Content-Type", "application/pdf"}}, bluePdf()});
        open.visit(open.served("/paper.pdf"));
        QCOMPARE(open.notice(), QString());
        QVERIFY(waitUntil([&] { return isBlue(open.browser()); }));
        open.click("Yes");
        QCOMPARE(open.stopURL(2), toUtf8(open.served("/paper.pdf")));
    }

    void pagesThatNeedAPasswordAskForIt() {
        SiteEditor open;
        LockedPage page(open);
        test::onNextDialog([&](QDialog& dialog) {
            QCOMPARE(dialog.objectName(), QString("frmSignIn"));
            QVERIFY(dialog.findChild<QLabel*>("lblHost")->text().contains("127.0.0.1"));
            QVERIFY(dialog.findChild<QLabel*>("lblRealm")->text().contains("Herbarium"));
            auto* const user = dialog.findChild<QLineEdit*>("txtUser");
            auto* const password = dialog.findChild<QLineEdit*>("txtPassword");
            QCOMPARE(password->echoMode(), QLineEdit::Password);
            user->setText("flora");
            password->setText("desert");
            page.unlock();
            test::press(dialog, "OKButton");
        });
        open.visit(open.served("/locked.htm"));
        QCOMPARE(test::dialogsExpected(), 0);
        QCOMPARE(page.credentials(), "Basic " + QByteArray("flora:desert").toBase64());
        QCOMPARE(open.browser().locationName(), QString("Herbarium"));
    }

    void escGivesThePasswordUp() {
        SiteEditor open;
        const LockedPage page(open);
        test::onNextDialog([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
        enter(open, open.served("/locked.htm"));
        QVERIFY(waitUntil([&] { return open.notice().startsWith("The server answers 401"); }));
        QCOMPARE(test::dialogsExpected(), 0);
        QCOMPARE(page.credentials(), QByteArray());
        QCOMPARE(open.address().currentText(), open.served("/locked.htm"));
    }

    void fieldsOfPagesAreEditedWithKeysAndMenu() {
        SiteEditor open;
        open.server.page("/field.htm", "<title>-</title><body style='margin:0'><textarea id=f "
                                       "style='width:400px;height:200px' oninput='document.title = value' "
                                       "autofocus>some words</textarea>");
        open.editor().resize(900, 800);
        open.visit(open.served("/field.htm"));
        test::engineOf(open.browser()).page()->runJavaScript("document.getElementById('f').focus()");
        QWidget* const page = open.browser().focusProxy()->focusProxy();
        const auto press = [&](Qt::Key key) { QTest::keyClick(page, key, Qt::ControlModifier); };
        QApplication::clipboard()->clear();
        QVERIFY(waitUntil([&] {
            press(Qt::Key_A);
            press(Qt::Key_X);
            return QApplication::clipboard()->text() == "some words";
        }));
        QApplication::clipboard()->setText("other words");
        press(Qt::Key_V);
        QTRY_COMPARE_WITH_TIMEOUT(open.browser().locationName(), QString("other words"), patience);
        QTest::mouseClick(page, Qt::RightButton, {}, QPoint(100, 100));
        QVERIFY(waitUntil([&] { return actionOf(open, QWebEnginePage::Paste)->isEnabled(); }));
        auto* const menu = open.browser().findChild<QMenu*>();
        QVERIFY(waitUntil([&] { return menu->isVisible(); }));
        for (const auto action :
             {QWebEnginePage::Cut, QWebEnginePage::Copy, QWebEnginePage::Paste, QWebEnginePage::SelectAll})
            QVERIFY(menu->actions().contains(actionOf(open, action)));
        QVERIFY(!actionOf(open, QWebEnginePage::Cut)->isEnabled()); // Nothing is selected.
        menu->close();
        actionOf(open, QWebEnginePage::Paste)->trigger();
        QTRY_COMPARE_WITH_TIMEOUT(open.browser().locationName(), QString("other wordsother words"), patience);
    }
};

} // namespace wendmark

QTEST_MAIN(wendmark::SitePagesTest)
#include "SitePagesTest.moc"
