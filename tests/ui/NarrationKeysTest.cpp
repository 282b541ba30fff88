#include "model/StopTexts.h"
#include "ui/dialogs/frmHelp.h"
#include "ui/support/OpenEditor.h"

#include <QClipboard>
#include <QLabel>
#include <QMenu>
#include <QSignalSpy>

namespace wendmark {

using test::hasKeys;
using test::OpenEditor;
using test::patience;
using test::shownText;

namespace {

const std::string tooLong(static_cast<std::size_t>(HtmlField::longestEdited) + 100, 'n');

QLabel& label(const OpenEditor& open, const char* name) {
    return *open.editor().findChild<QLabel*>(QLatin1String(name));
}

/// What tells that a new line in the HTML is none for visitors.
QLabel& newLineNotice(const HtmlField& field) {
    return *field.findChild<QLabel*>("lblNewLine");
}

} // namespace

/// What keys do in the fields of the narration editor.
class NarrationKeysTest final : public QObject {
    Q_OBJECT

private slots:
    // Tags

    void keysOfTagsActOnTheFieldThatHasTheFocus_data() {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<QString>("wrapped");
        QTest::newRow("bold") << Qt::Key_B << "<B>Look</B> there";
        QTest::newRow("italic") << Qt::Key_I << "<I>Look</I> there";
        QTest::newRow("underline") << Qt::Key_U << "<U>Look</U> there";
    }
    void keysOfTagsActOnTheFieldThatHasTheFocus() {
        QFETCH(Qt::Key, key);
        QFETCH(QString, wrapped);
        OpenEditor open;
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.editor()), patience);
        const QString narration = open.text().toPlainText();
        open.instruction().setPlainText("Look there");
        open.instruction().setFocus();
        QTextCursor cursor = open.instruction().textCursor();
        cursor.setPosition(4, QTextCursor::KeepAnchor);
        open.instruction().setTextCursor(cursor);
        QTest::keyClick(&open.instruction(), key, Qt::ControlModifier);
        QCOMPARE(open.instruction().toPlainText(), wrapped);
        QVERIFY(open.instruction().hasFocus());
        QCOMPARE(open.text().toPlainText(), narration);
        open.instruction().undo();
        QCOMPARE(open.instruction().toPlainText(), QString("Look there"));

        open.title().setText("Look there");
        open.title().setFocus();
        open.title().setSelection(0, 4);
        QTest::keyClick(&open.title(), key, Qt::ControlModifier);
        QCOMPARE(open.title().text(), wrapped);
        QCOMPARE(open.title().cursorPosition(), 7);
        QCOMPARE(open.text().toPlainText(), narration);

        open.fill("Look there", 0, 4);
        open.button("btnOK").setFocus();
        QTest::keyClick(&open.button("btnOK"), key, Qt::ControlModifier);
        QCOMPARE(open.text().toPlainText(), wrapped);
    }

    // Lines

    void shiftEnterBeginsALineForVisitors() {
        OpenEditor open;
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.editor()), patience);
        open.fill("one two", 3, 1);
        open.text().setFocus();
        QTest::keyClick(&open.text(), Qt::Key_Return, Qt::ShiftModifier);
        QCOMPARE(open.text().toPlainText(), QString("one<BR>\ntwo"));
        QVERIFY(!newLineNotice(open.text()).isVisible());
        QTRY_VERIFY_WITH_TIMEOUT(shownText(open.preview()).contains("one\ntwo"), patience);
    }

    void enterSaysWhatVisitorsWillSee() {
        OpenEditor open;
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.editor()), patience);
        for (HtmlField* const field : {&open.text(), &open.instruction()}) {
            field->setPlainText("one");
            field->moveCursor(QTextCursor::End);
            field->setFocus();
            QVERIFY(!newLineNotice(*field).isVisible());
            QTest::keyClick(field, Qt::Key_Return);
            QVERIFY(newLineNotice(*field).isVisible());
            QCOMPARE(newLineNotice(*field).text(),
                     QString("Visitors see no new line here. Shift+Enter begins one."));
            QTest::keyClick(field, Qt::Key_Enter, Qt::KeypadModifier);
            QCOMPARE(field->toPlainText(), QString("one\n\n"));
            QCOMPARE(newLineNotice(*field).text(), QString("Visitors see one new line for an empty line."));
            QVERIFY(field->rect().contains(newLineNotice(*field).geometry()));
            QTest::keyClick(field, Qt::Key_T);
            QVERIFY(!newLineNotice(*field).isVisible());
            QTest::keyClick(field, Qt::Key_Return);
            open.title().setFocus();
            QVERIFY(!newLineNotice(*field).isVisible());
        }
    }

    void blankLinesOfThePreviewAreThoseOfThePage() {
        OpenEditor open;
        open.text().setPlainText("one\n\n\ntwo<BR><BR>three<PRE>\n\nfour\n\n  five\n</PRE><P></P>end");
        QTRY_VERIFY_WITH_TIMEOUT(shownText(open.preview()).contains("end"), patience);
        const QString shown = shownText(open.preview());
        open.click("btnOK");
        open.window.save();
        QTRY_VERIFY_WITH_TIMEOUT(open.program.gate.isOpen(), patience);
        BrowserView page(open.program.parts().browserProfile);
        page.setAllowedFolders({open.program.working(".")});
        page.navigate(QUrl::fromLocalFile(open.program.working("page2.htm")));
        QTRY_VERIFY_WITH_TIMEOUT(shownText(page).contains("end"), patience);
        QCOMPARE(shown, shownText(page));
    }

    // Placeholders and notices

    void placeholdersAreSelectedWhenAStopOpens() {
        OpenEditor open;
        open.program.model.stops.at(3) = newStop();
        open.program.model.stops.at(3).stopInstruction = noInstruction;
        open.program.document.goToStop(3);
        open.edit();
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.editor()), patience);
        QCOMPARE(open.text().toPlainText(), QString("<!--narration-->"));
        QVERIFY(open.text().hasFocus());
        QTest::keyClicks(&open.text(), "Words");
        QCOMPARE(open.text().toPlainText(), QString("Words"));
        QTest::keyClick(&open.text(), Qt::Key_Tab);
        QVERIFY(open.instruction().hasFocus());
        QTest::keyClicks(&open.instruction(), "Go on");
        QCOMPARE(open.instruction().toPlainText(), QString("Go on"));
    }

    void buttonsTakeASelectedPlaceholderForNoSelection() {
        OpenEditor open;
        open.program.model.stops.at(2) = newStop();
        open.edit();
        open.click("btnBreak");
        QCOMPARE(open.text().toPlainText(), QString("<BR><!--narration-->"));
        open.fill("<!--narration-->", 0, 16);
        open.click("btnBold");
        QCOMPARE(open.text().toPlainText(), QString("<B></B><!--narration-->"));
        open.fill("<!--narration-->", 0, 16);
        test::onNextDialog([](QDialog& message) {
            QCOMPARE(test::textOf(message),
                     QString("Wendmark|Please highlight the phrase to be hyperlinked"));
            test::press(message, "OK");
        });
        open.click("btnHLink");
        QCOMPARE(test::dialogsExpected(), 0);
    }

    void textsOfTheAuthorAreNotSelected() {
        OpenEditor open;
        QVERIFY(!open.text().textCursor().hasSelection());
        QVERIFY(!open.instruction().textCursor().hasSelection());
    }

    void noticeOfAutomaticInstructionsIsNeverStored() {
        OpenEditor open(true);
        open.setAutomatic(false);
        const std::string own = open.program.model.stops.at(2).stopInstruction;
        QVERIFY(!open.instruction().isEnabled());
        open.text().setPlainText("Other words");
        open.click("btnOK");
        QCOMPARE(toQString(open.program.model.stops.at(2).stopNarration), QString("Other words"));
        QCOMPARE(toQString(open.program.model.stops.at(2).stopInstruction), toQString(own));
    }

    void openEditorTellsThatInstructionsWereSwitchedAndReloadsThem() {
        OpenEditor open;
        QVERIFY(!open.button("btnReload").isVisible());
        open.text().setPlainText("Not applied");
        open.setAutomatic(true);
        QVERIFY(open.button("btnReload").isVisible());
        QCOMPARE(label(open, "lblInstructionMode").text(),
                 QString("Tour Properties has switched automatic instructions on."));
        QVERIFY(open.instruction().isEnabled());
        open.click("btnReload");
        QVERIFY(!open.instruction().isEnabled());
        QCOMPARE(open.instruction().toPlainText(),
                 QString("Automatic Instruction Mode [selected in Tour Properties]"));
        QVERIFY(!open.button("btnReload").isVisible());

        open.setAutomatic(false);
        QCOMPARE(label(open, "lblInstructionMode").text(),
                 QString("Tour Properties has switched automatic instructions off."));
        open.click("btnReload");
        QVERIFY(open.instruction().isEnabled());
        QCOMPARE(open.instruction().toPlainText(), toQString(open.program.model.stops.at(2).stopInstruction));
        QVERIFY(open.editor().focusWidget() == &open.instruction());
        QCOMPARE(open.text().toPlainText(), QString("Not applied"));
        open.click("btnOK"); // The stop is found, so that nothing is asked.
        QCOMPARE(toQString(open.program.model.stops.at(2).stopNarration), QString("Not applied"));
    }

    void applyFindsItsStopWhenInstructionsWereSwitched() {
        for (const bool automatic : {true, false}) {
            OpenEditor open(!automatic);
            open.text().setPlainText("Words");
            open.setAutomatic(automatic);
            open.click("btnOK");
            QCOMPARE(toQString(open.program.model.stops.at(2).stopNarration), QString("Words"));
            QVERIFY(!open.editor().isVisible());
        }
    }

    // Texts that are too long

    void textThatIsTooLongIsReplacedWhenAllOfItIsSelected() {
        OpenEditor open;
        open.program.model.stops.at(2).stopNarration = tooLong;
        open.edit();
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.editor()), patience);
        open.text().setFocus();
        QTest::keyClicks(&open.text(), "x");
        QTest::keyClick(&open.text(), Qt::Key_Delete);
        QVERIFY(open.text().isTooLong());
        QTest::keyClick(&open.text(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&open.text(), Qt::Key_C, Qt::ControlModifier);
        QVERIFY(open.text().isTooLong());
        QTest::keyClicks(&open.text(), "New words");
        QCOMPARE(open.text().toPlainText(), QString("New words"));
        QVERIFY(!open.text().isReadOnly());
        QVERIFY(open.button("btnBold").isEnabled());
        QVERIFY(!label(open, "lblTarget").text().contains("50,000"));
        for (int i = 0; i < 20; ++i)
            open.text().undo();
        QVERIFY2(open.text().toPlainText().isEmpty(), "undo brings back a part of the text");
        QTest::keyClicks(&open.text(), "New words");
        open.click("btnOK");
        QCOMPARE(toQString(open.program.model.stops.at(2).stopNarration), QString("New words"));
        open.window.undo();
        QVERIFY(open.program.model.stops.at(2).stopNarration == tooLong);
    }

    void textThatIsTooLongIsClearedOrPastedOver_data() {
        QTest::addColumn<QString>("action");
        QTest::newRow("delete") << "delete";
        QTest::newRow("backspace") << "backspace";
        QTest::newRow("paste") << "paste";
        QTest::newRow("menu") << "menu";
    }
    void textThatIsTooLongIsClearedOrPastedOver() {
        QFETCH(QString, action);
        OpenEditor open;
        open.program.model.stops.at(2).stopInstruction = tooLong;
        open.edit();
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.editor()), patience);
        HtmlField& field = open.instruction();
        field.setFocus();
        field.selectAll();
        QApplication::clipboard()->setText("Pasted");
        if (action == "menu") {
            QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), field.mapToGlobal(QPoint()));
            QApplication::sendEvent(&field, &event);
            const auto* const menu = field.findChild<QMenu*>("mnuWord");
            QVERIFY(menu != nullptr);
            for (QAction* const item : menu->actions()) {
                if (item->text() == "Clear &Whole Text")
                    item->trigger();
            }
        } else {
            QTest::keyClick(&field,
                            action == "paste"    ? Qt::Key_V
                            : action == "delete" ? Qt::Key_Delete
                                                 : Qt::Key_Backspace,
                            action == "paste" ? Qt::ControlModifier : Qt::NoModifier);
        }
        QVERIFY(!field.isTooLong());
        QVERIFY(!field.isReadOnly());
        QCOMPARE(field.toPlainText(), action == "paste" ? QString("Pasted") : QString());
    }

    // Keys of the main window

    void ctrlSStoresTheWordsAndSavesTheTour() {
        OpenEditor open;
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.editor()), patience);
        open.text().setFocus();
        open.fill("One two", 7, 0);
        QTest::keyClick(&open.text(), Qt::Key_S, Qt::ControlModifier);
        QTRY_VERIFY_WITH_TIMEOUT(open.program.gate.isOpen(), patience);
        const std::string script = test::readFile(open.program.workspace.tourPath() + "/script.txt");
        QVERIFY(toQString(script).contains("One two"));
        QVERIFY(open.editor().isVisible());
        QVERIFY(!open.editor().unappliedTexts());
        QVERIFY(open.text().hasFocus());
        QCOMPARE(open.text().textCursor().position(), 7);
        QTest::keyClicks(&open.text(), " three");
        QVERIFY(open.editor().unappliedTexts());
        QTest::keyClick(&open.text(), Qt::Key_S, Qt::ControlModifier);
        QTRY_VERIFY_WITH_TIMEOUT(open.program.gate.isOpen(), patience);
        QCOMPARE(toQString(open.program.model.stops.at(2).stopNarration), QString("One two three"));
    }

    void ctrlSAsksBeforeItStoresIntoAnotherStop() {
        OpenEditor open;
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.editor()), patience);
        open.text().setFocus();
        open.text().setPlainText("Of the second");
        open.program.document.goToStop(3);
        const std::string third = open.program.model.stops.at(3).stopNarration;
        test::onNextDialog([](QDialog& question) { test::press(question, "No"); });
        QTest::keyClick(&open.text(), Qt::Key_S, Qt::ControlModifier);
        QTRY_VERIFY_WITH_TIMEOUT(open.program.gate.isOpen(), patience);
        QCOMPARE(test::dialogsExpected(), 0);
        QVERIFY(open.program.model.stops.at(3).stopNarration == third);
        QVERIFY(open.editor().unappliedTexts());
    }

    void f1ShowsTheHelpOfTheEditors() {
        OpenEditor open;
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.editor()), patience);
        open.text().setFocus();
        QTest::keyClick(&open.text(), Qt::Key_F1);
        auto* const help = open.window.findChild<frmHelp*>();
        QVERIFY(help != nullptr);
        auto& browser = *help->findChild<BrowserView*>();
        QTRY_COMPARE_WITH_TIMEOUT(browser.location().fileName(), QString("narration.htm"), patience);
        open.window.editSiteFrame();
        auto* const site = open.window.findChild<QWidget*>("frmBrowser");
        QVERIFY(site != nullptr);
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(*site), patience);
        QTest::keyClick(site, Qt::Key_F1);
        QTRY_COMPARE_WITH_TIMEOUT(browser.location().fileName(), QString("site.htm"), patience);
        const bool hadChanges = open.program.model.tourChanged;
        QTest::keyClick(site, Qt::Key_S, Qt::ControlModifier);
        QTRY_VERIFY_WITH_TIMEOUT(open.program.gate.isOpen(), patience);
        QVERIFY(!hadChanges || !open.program.model.tourChanged);
        QVERIFY(test::exists(open.program.workspace.tourPath() + "/script.txt"));
    }
};

} // namespace wendmark

QTEST_MAIN(wendmark::NarrationKeysTest)
#include "NarrationKeysTest.moc"
