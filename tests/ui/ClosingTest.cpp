#include "model/SiteLists.h"
#include "platform/BrowserView.h"
#include "ui/support/SiteEditor.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <QWebEngineView>
#include <functional>

namespace wendmark {

using test::onNextDialog;
using test::press;
using test::SiteEditor;
using test::waitUntil;

namespace {

/// Asks for the menu of the page that the site editor shows, and hands it over as soon as it is there.
/// Returns when that has been done and the menu is gone.
void withMenuOfPage(const SiteEditor& open, const std::function<void(QMenu&)>& act) {
    bool done = false;
    QTimer watch;
    watch.callOnTimeout([&] {
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (menu == nullptr || std::exchange(done, true))
            return;
        watch.stop();
        act(*menu);
    });
    watch.start(1);
    emit test::engineOf(open.browser()).customContextMenuRequested({}); // As the engine does after a click.
    QVERIFY(waitUntil([&] { return done && QApplication::activePopupWidget() == nullptr; }));
}

void choose(QMenu& menu, const QString& item) {
    for (QAction* const action : menu.actions()) {
        if (action->text() == item) {
            QTest::mouseClick(menu.windowHandle(), Qt::LeftButton, Qt::NoModifier,
                              menu.actionGeometry(action).center());
            QCoreApplication::processEvents(); // What comes next comes before the menu has ended.
            return;
        }
    }
    QFAIL(qPrintable("no item " + item));
}

/// Until no command is under way and what was to be deleted is gone.
void rest(const SiteEditor& open) {
    QVERIFY(waitUntil([&] {
        return open.program.gate.isOpen() && !open.isOpen() &&
               open.window.findChild<frmBrowser*>("frmBrowser") == nullptr;
    }));
}

} // namespace

/// Windows that are closed while something of theirs waits for the author, a page, or a command.
class ClosingTest final : public QObject {
    Q_OBJECT

private slots:
    void siteEditorClosesDuringATestThatItsMenuBegan() {
        SiteEditor open;
        open.visit(open.served("/plain.htm"));
        open.server.answer("/plain.htm", {200, {}, "x", 0, test::LoopbackServer::Answer::Kind::withoutEnd});
        bool tested = false;
        QTimer watch;
        watch.callOnTimeout([&] {
            if (!open.program.gate.isLookedThrough())
                return;
            watch.stop();
            tested = true;
            open.editor().close();
            open.window.newTour();
        });
        watch.start(50);
        onNextDialog([](QDialog& question) { press(question, "No"); });
        withMenuOfPage(open, [](QMenu& menu) { choose(menu, "Use this Site"); });
        rest(open);
        QVERIFY(tested);
        QCOMPARE(test::dialogsExpected(), 0);
    }

    void siteEditorClosesUnderTheMenuOfItsPage() {
        SiteEditor open;
        open.visit(open.served("/plain.htm"));
        withMenuOfPage(open, [&](const QMenu&) { open.editor().close(); });
        rest(open);
    }

    void siteEditorClosesUnderTheMessageThatItsListIsFull() {
        SiteEditor open;
        open.editor().close();
        rest(open);
        QByteArray bookmarks;
        for (int n = 1; n <= bookmarkCapacity; ++n)
            bookmarks += "http://127.0.0.1:1/" + QByteArray::number(n) + "\r\n\r\n16777215\r\n";
        open.write("goodlist.txt", bookmarks);
        open.edit();
        bool closed = false;
        onNextDialog([&](QDialog& message) {
            open.editor().close();
            message.close();
            QCoreApplication::processEvents();
            closed = true;
        });
        open.click("btnSave");
        QVERIFY(closed);
        rest(open);
    }

    /// As at the end of a session, which no modal dialog keeps back.
    void siteEditorClosesUnderAMessageOfItsPage() {
        SiteEditor open;
        open.server.page("/talks.htm", "<title>Talks</title><script>alert('one');</script>");
        bool closed = false;
        onNextDialog([&](QDialog& message) {
            open.editor().close();
            message.close();
            QCoreApplication::processEvents();
            closed = true;
        });
        QLineEdit& field = *open.address().lineEdit();
        field.setText(open.served("/talks.htm"));
        QTest::keyClick(&field, Qt::Key_Return);
        QVERIFY(waitUntil([&] { return closed; }));
        rest(open);
    }
};

} // namespace wendmark

QTEST_MAIN(wendmark::ClosingTest)
#include "ClosingTest.moc"
