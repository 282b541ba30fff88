#include "model/ScriptFile.h"
#include "platform/BrowserView.h"
#include "platform/Strings.h"
#include "ui/main/frmMain.h"
#include "ui/narration/HtmlField.h"
#include "ui/narration/HtmlHighlighter.h"
#include "ui/narration/frmNarEdit.h"
#include "ui/support/Dictionaries.h"
#include "ui/support/OpenEditor.h"
#include "ui/support/Patience.h"
#include "ui/support/UiFixture.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTextBlock>
#include <QTextLayout>
#include <QTimer>
#include <QToolButton>
#include <QWebEnginePage>
#include <QWebEngineScript>
#include <QWebEngineView>
#include <cmath>

namespace wendmark {

using test::Dictionaries;
using test::hasKeys;
using test::onNextDialog;
using test::OpenEditor;
using test::patience;
using test::press;
using test::shownText;
using test::textOf;
using test::UiFixture;

namespace {

constexpr const char* automaticMode = "Automatic Instruction Mode [selected in Tour Properties]";

void compareEdit(const OpenEditor& open, const QString& text, int caret) {
    QCOMPARE(open.text().toPlainText(), text);
    QCOMPARE(open.text().textCursor().position(), caret);
    QVERIFY(!open.text().textCursor().hasSelection());
    QVERIFY(open.editor().focusWidget() == &open.text());
}

void expectMessage(const QString& titleAndText) {
    onNextDialog([=](QDialog& message) {
        QCOMPARE(textOf(message), titleAndText);
        press(message, "OK");
    });
}

/// Answers the file dialog of "Add Image".
void onImageDialog(const QString& path) {
    onNextDialog([=](QDialog& dialog) {
        QCOMPARE(dialog.objectName(), QString("CDialog"));
        auto& files = *qobject_cast<QFileDialog*>(&dialog);
        QCOMPARE(files.findChild<QLineEdit*>("fileNameEdit")->text(), QString());
        files.selectFile(path);
        QMetaObject::invokeMethod(&files, "accept");
    });
}

void onRename(const QString& clash, const QString& answer, const QString& reason = QString()) {
    onNextDialog([=](QDialog& dialog) {
        QCOMPARE(dialog.objectName(), QString("frmRenameFile"));
        QCOMPARE(dialog.findChild<QLabel*>("lblFile")->text(), clash);
        QCOMPARE(dialog.findChild<QLabel*>("Label2")->text(), reason);
        dialog.findChild<QLineEdit*>("txtFile")->setText(answer);
        press(dialog, "OKButton");
    });
}

void expectOverwrite(const QString& name, const QString& answer) {
    onNextDialog([=](QDialog& question) {
        QCOMPARE(textOf(question), "Wendmark - File overwrite|There is already a file called " + name +
                                       " in the tour folder. Do you want to overwrite this file?");
        press(question, answer);
    });
}

/// Answers the question whether the words that are not applied may go with their tour.
void expectLeaving(const QString& answer) {
    onNextDialog([=](QDialog& question) {
        QCOMPARE(textOf(question), QString("Wendmark|The narration editor holds words that were not applied "
                                           "to any stop. Do you want to leave the tour without them?"));
        press(question, answer);
    });
}

/// Opens the tour in this folder.
void openOther(OpenEditor& open, const QString& folder) {
    onNextDialog([=](QDialog& dialog) {
        test::selectFolder(dialog, folder);
        press(dialog, "btnOK");
    });
    open.window.openTour();
    QCOMPARE(test::dialogsExpected(), 0);
}

/// Has the rename dialog say why a page cannot have a template's name; returns what it said.
QString tellReasonForAPage(UiFixture& program) {
    onNextDialog([](QDialog& dialog) { press(dialog, "CancelButton"); });
    program.fileNames.nameForPage(QStringLiteral("page.htm"), nullptr);
    return toQString(program.fileNames.renameReason());
}

/// A file to choose, outside of the tour.
QString imageFile(const UiFixture& program, const QString& name) {
    QString path = program.path("Pictures/" + name);
    test::writeFile(toUtf8(path), "GIF of " + toUtf8(name));
    return path;
}

/// A text of lines as the model has them, longer than so many characters when each line end counts once.
std::string repeatedLine(qsizetype characters) {
    std::string text;
    for (qsizetype i = 0; i <= characters / 10; ++i)
        text += "word word\r\n";
    return text;
}

/// Format that the highlighter gives to the character at this place of the field's text.
QTextCharFormat formatAt(const HtmlField& field, int position) {
    const QTextBlock block = field.document()->findBlock(position);
    for (const QTextLayout::FormatRange& range : block.layout()->formats()) {
        const int inBlock = position - block.position();
        if (inBlock >= range.start && inBlock < range.start + range.length)
            return range.format;
    }
    return {};
}

QString misspelledIn(const HtmlField& field) {
    QString words;
    for (int i = 0; i < field.document()->characterCount(); ++i) {
        const bool wrong = formatAt(field, i).underlineStyle() == QTextCharFormat::SpellCheckUnderline;
        words += wrong ? field.document()->characterAt(i) : QLatin1Char(' ');
    }
    return words.simplified();
}

/// The menu that a right click on this place of the field opens.
QMenu* menuAt(HtmlField& field, int position) {
    QTextCursor cursor(field.document());
    cursor.setPosition(position);
    const QRect place = field.cursorRect(cursor);
    const QPoint point(place.center().x() + 2, place.center().y());
    QContextMenuEvent event(QContextMenuEvent::Mouse, point, field.viewport()->mapToGlobal(point));
    QApplication::sendEvent(field.viewport(), &event);
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
}

QAction* itemOf(const QMenu& menu, const QString& caption) {
    for (QAction* action : menu.actions()) {
        if (action->text().remove('&') == caption)
            return action;
    }
    return nullptr;
}

/// WCAG's contrast of two colours, 1 to 21.
double contrast(const QColor& one, const QColor& other) {
    const auto luminance = [](const QColor& colour) {
        const auto linear = [](double part) {
            return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
               0.0722 * linear(colour.blueF());
    };
    const double first = luminance(one) + 0.05;
    const double second = luminance(other) + 0.05;
    return first > second ? first / second : second / first;
}

} // namespace

class NarrationEditorTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { m_dictionaries = std::make_unique<Dictionaries>(); }
    void cleanup() {
        m_dictionaries.reset();
        QCOMPARE(test::dialogsExpected(), 0);
    }

    // Opening and closing

    void openingPageIsNotEditable() {
        OpenEditor open;
        open.editor().close();
        open.program.model.currentStop = 0;
        expectMessage("Wendmark|The opening page of the tour is not editable");
        open.edit();
        QCOMPARE(open.program.beeps, 1);
        QTRY_VERIFY_WITH_TIMEOUT(open.window.findChild<frmNarEdit*>() == nullptr, patience);
    }

    void commandIsThereOnStops() {
        OpenEditor open;
        QVERIFY(open.window.findChild<QAction*>("mnuEditNarration")->isEnabled());
        QVERIFY(open.window.findChild<QToolButton*>("EdNar")->isEnabled());
    }

    void windowShowsTheTextsOfTheStop() {
        OpenEditor open;
        frmNarEdit& editor = open.editor();
        QVERIFY(editor.isVisible());
        QVERIFY(!editor.isModal());
        QCOMPARE(editor.windowTitle(), QString("Wendmark - Narration Editor"));
        QCOMPARE(open.title().text(), QString("Stop 2"));
        QCOMPARE(open.text().toPlainText(), QString("Words of stop 2.\n"));
        QCOMPARE(open.instruction().toPlainText(), QString("Look at stop 2."));
        QVERIFY(open.instruction().isEnabled());
        const QPoint off = editor.geometry().center() - editor.screen()->availableGeometry().center();
        QVERIFY2(off.manhattanLength() <= 8, qPrintable(QString::number(off.manhattanLength())));
    }

    void everyControlHasItsCaption() {
        OpenEditor open;
        const std::pair<const char*, const char*> captions[] = {
            {"btnBreak", "Ln. Break"}, {"btnImage", "Add Image"},     {"btnSmall", "Sm. Font"},
            {"btnBig", "Bg. Font"},    {"btnUnderline", "Underline"}, {"btnItalic", "Italic"},
            {"btnBold", "Bold"},       {"btnHLink", "Add Hyperlink"}, {"btnOK", "Apply"},
            {"btnCancel", "Cancel"}};
        for (const auto& [name, caption] : captions)
            QCOMPARE(open.button(name).text().remove('&'), QString(caption));
        const std::pair<const char*, const char*> labels[] = {{"lblStopTitle", "Stop Title :"},
                                                              {"lblStopText", "Stop Text :"},
                                                              {"Label1", "Instruction Text :"}};
        for (const auto& [name, caption] : labels)
            QCOMPARE(open.editor().findChild<QLabel*>(name)->text().remove('&'), QString(caption));
    }

    void automaticInstructionsCannotBeEdited() {
        OpenEditor open(true);
        QVERIFY(!open.instruction().isEnabled());
        QCOMPARE(open.instruction().toPlainText(), QString(automaticMode));
    }

    void cancelHidesTheWindowAndStoresNothing_data() {
        QTest::addColumn<QString>("way");
        QTest::newRow("button") << "btnCancel";
        QTest::newRow("Esc in a field") << "Esc";
    }
    void cancelHidesTheWindowAndStoresNothing() {
        QFETCH(QString, way);
        OpenEditor open;
        open.title().setText("Other");
        open.text().setPlainText("Other");
        if (way == "Esc") {
            QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.editor()), patience);
            QTest::keyClick(open.editor().windowHandle(), Qt::Key_Escape);
        } else {
            open.click("btnCancel");
        }
        QVERIFY(!open.editor().isVisible());
        QCOMPARE(open.program.model.stops.at(2).stopTitle, std::string("Stop 2"));
        QCOMPARE(open.program.model.stops.at(2).stopNarration, std::string("Words of stop 2.\r\n"));
        QVERIFY(!open.program.model.tourChanged);
    }

    void escapeInThePreviewCancels() {
        OpenEditor open;
        QTRY_VERIFY_WITH_TIMEOUT(!open.preview().isBusy(), patience);
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.editor()), patience);
        open.preview().setFocus();
        QTest::keyClick(open.editor().windowHandle(), Qt::Key_Escape);
        QTRY_VERIFY_WITH_TIMEOUT(!open.editor().isVisible(), patience);
    }

    void hiddenWindowKeepsTheStateOfItsInstructionField() {
        OpenEditor open(true);
        const QPointer<frmNarEdit> first = &open.editor();
        open.click("btnCancel");
        open.program.model.autoInstruction = false;
        open.edit();
        QVERIFY(first == &open.editor());
        QVERIFY(!open.instruction().isEnabled());
        QCOMPARE(open.instruction().toPlainText(), QString("Look at stop 2."));
    }

    void closeBoxDestroysTheWindowAndTheNextOneLoadsAnew() {
        OpenEditor open(true);
        const QPointer<frmNarEdit> first = &open.editor();
        open.editor().close();
        QTRY_VERIFY_WITH_TIMEOUT(first.isNull(), patience);
        QVERIFY(!open.program.model.tourChanged);
        open.program.model.autoInstruction = false;
        open.edit();
        QVERIFY(open.instruction().isEnabled());
    }

    void reopenedWindowShowsTheStopThatIsCurrentThen() {
        OpenEditor open;
        open.click("btnCancel");
        open.program.model.currentStop = 3;
        open.edit();
        QCOMPARE(open.title().text(), QString("Stop 3"));
        QCOMPARE(open.text().toPlainText(), QString("Words of stop 3.\n"));
    }

    void textsThatAreReplacedWhileTheWindowIsOpenCanBeBroughtBack() {
        OpenEditor open;
        open.title().setText("Mine");
        open.text().setPlainText("My words");
        open.program.model.currentStop = 3;
        open.edit();
        QCOMPARE(open.text().toPlainText(), QString("Words of stop 3.\n"));
        open.text().undo();
        open.title().undo();
        QCOMPARE(open.text().toPlainText(), QString("My words"));
        QCOMPARE(open.title().text(), QString("Mine"));
    }

    void wordsLeftByEscapeComeBackByUndo() {
        OpenEditor open;
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.editor()), patience);
        QTest::keyClicks(&open.title(), "!");
        QTest::keyClicks(&open.text(), "Many words. ");
        QTest::keyClicks(&open.instruction(), "Go. ");
        QTest::keyClick(open.editor().windowHandle(), Qt::Key_Escape);
        QVERIFY(!open.editor().isVisible());
        open.edit();
        QCOMPARE(open.title().text(), QString("Stop 2"));
        QCOMPARE(open.text().toPlainText(), QString("Words of stop 2.\n"));
        QCOMPARE(open.instruction().toPlainText(), QString("Look at stop 2."));
        for (QWidget* const field :
             {static_cast<QWidget*>(&open.title()), static_cast<QWidget*>(&open.text()),
              static_cast<QWidget*>(&open.instruction())})
            QTest::keyClick(field, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(open.title().text(), QString("!Stop 2"));
        QCOMPARE(open.text().toPlainText(), QString("Many words. Words of stop 2.\n"));
        QCOMPARE(open.instruction().toPlainText(), QString("Go. Look at stop 2."));
    }

    void textsOfTheStopAreWhereUndoEnds() {
        OpenEditor open;
        for (int i = 0; i < 3; ++i) {
            open.title().undo();
            open.text().undo();
            open.instruction().undo();
        }
        QCOMPARE(open.title().text(), QString("Stop 2"));
        QCOMPARE(open.text().toPlainText(), QString("Words of stop 2.\n"));
        QCOMPARE(open.instruction().toPlainText(), QString("Look at stop 2."));
    }

    // Another tour

    void anotherTourIsOpenedOnlyWhenTheWordsMayGo() {
        OpenEditor open;
        const QString other = open.program.makeTour("other", 1);
        QTest::keyClicks(&open.text(), "Many words. ");
        expectLeaving("No");
        open.window.openTour();
        QVERIFY(open.editor().isVisible());
        QVERIFY(open.text().toPlainText().startsWith("Many words. "));
        QCOMPARE(open.program.model.stopCount(), std::int16_t{3});

        expectLeaving("Yes");
        openOther(open, other);
        QCOMPARE(open.program.model.stopCount(), std::int16_t{1});
        QTRY_VERIFY_WITH_TIMEOUT(open.window.findChild<frmNarEdit*>() == nullptr, patience);
        open.program.model.currentStop = 1;
        open.edit();
        open.text().undo();
        QCOMPARE(open.text().toPlainText(), QString("Words of stop 1.\n"));
    }

    void editorWithNothingToApplyIsClosedByAnotherTourWithoutAQuestion() {
        OpenEditor open;
        openOther(open, open.program.makeTour("other", 1));
        QTRY_VERIFY_WITH_TIMEOUT(open.window.findChild<frmNarEdit*>() == nullptr, patience);
        QCOMPARE(open.program.model.stops.at(1).stopNarration, std::string("Words of stop 1.\r\n"));
    }

    void newTourIsBegunOnlyWhenTheWordsMayGo() {
        OpenEditor open;
        QTest::keyClicks(&open.text(), "Many words. ");
        const QStringList before = open.program.filesOf("NewTour");
        expectLeaving("No");
        open.window.newTour();
        QVERIFY(open.editor().isVisible());
        QCOMPARE(open.program.filesOf("NewTour"), before);
        expectLeaving("Yes");
        onNextDialog([](QDialog& wizard) {
            QCOMPARE(wizard.objectName(), QString("frmWizard2"));
            wizard.reject();
        });
        open.window.newTour();
        QVERIFY(open.editor().isVisible()); // No other tour has come.
        QVERIFY(open.text().toPlainText().startsWith("Many words. "));
    }

    void undoOfOpenIsDoneOnlyWhenTheWordsMayGo() {
        OpenEditor open;
        open.program.model.currentStop = 0;
        open.click("btnCancel");
        openOther(open, open.program.makeTour("other", 1));
        QTRY_VERIFY_WITH_TIMEOUT(open.window.findChild<frmNarEdit*>() == nullptr, patience);
        open.program.model.currentStop = 1;
        open.edit();
        QTest::keyClicks(&open.text(), "Many words. ");
        expectLeaving("No");
        open.window.undo();
        QCOMPARE(open.program.model.stopCount(), std::int16_t{1});
        QVERIFY(open.editor().isVisible());
        expectLeaving("Yes");
        open.window.undo();
        QCOMPARE(open.program.model.stopCount(), std::int16_t{3});
        QTRY_VERIFY_WITH_TIMEOUT(open.window.findChild<frmNarEdit*>() == nullptr, patience);
    }

    void windowTellsWhereApplyStores() {
        OpenEditor open;
        const QLabel& target = *open.editor().findChild<QLabel*>("lblTarget");
        QCOMPARE(target.text(), QString("Apply stores into stop 2."));
        open.window.next();
        QCOMPARE(target.text(), QString("Apply stores into stop 3."));
        open.program.model.currentStop = 1;
        open.window.previous();
        QCOMPARE(target.text(), QString("The opening page has no texts: Apply stores nothing."));
    }

    // Tag buttons

    void tagButtonsWrapTheSelection_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("wrapped");
        QTest::newRow("bold") << "btnBold"
                              << "hello <B>world</B>!";
        QTest::newRow("italic") << "btnItalic"
                                << "hello <I>world</I>!";
        QTest::newRow("underline") << "btnUnderline"
                                   << "hello <U>world</U>!";
        QTest::newRow("big") << "btnBig"
                             << "hello <BIG>world</BIG>!";
        QTest::newRow("small") << "btnSmall"
                               << "hello <SMALL>world</SMALL>!";
    }
    void tagButtonsWrapTheSelection() {
        QFETCH(QString, name);
        QFETCH(QString, wrapped);
        OpenEditor open;
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.editor()), patience);
        open.fill("hello world!", 6, 5);
        open.click(qPrintable(name));
        compareEdit(open, wrapped, 9);
        open.text().undo();
        QCOMPARE(open.text().toPlainText(), QString("hello world!"));
        open.text().redo();
        QCOMPARE(open.text().toPlainText(), wrapped);
    }

    void tagButtonsWithoutASelectionInsertAnEmptyPair() {
        OpenEditor open;
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.editor()), patience);
        open.fill("abc", 3, 0);
        open.click("btnSmall");
        compareEdit(open, "abc<SMALL></SMALL>", 6);
    }

    void selectionMadeBackwardsIsWrappedTheSame() {
        OpenEditor open;
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.editor()), patience);
        open.fill("hello world", 11, -5);
        open.click("btnBold");
        compareEdit(open, "hello <B>world</B>", 9);
    }

    void linesAndLettersOutsideAsciiCountAsTheFieldCountsThem() {
        OpenEditor open;
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.editor()), patience);
        open.fill(QString::fromUtf8("é\n😀 →\nx y"), 7, 1);
        open.click("btnItalic");
        compareEdit(open, QString::fromUtf8("é\n😀 →\n<I>x</I> y"), 10);
        open.select(2, 4);
        open.click("btnBold");
        compareEdit(open, QString::fromUtf8("é\n<B>😀 →</B>\n<I>x</I> y"), 5);
    }

    void tagButtonIsAnUndoStepOfItsOwn() {
        OpenEditor open;
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.editor()), patience);
        open.fill("", 0, 0);
        QTest::keyClicks(&open.text(), "abc");
        open.click("btnBold");
        QTest::keyClicks(&open.text(), "d");
        QCOMPARE(open.text().toPlainText(), QString("abc<B>d</B>"));
        QTest::keyClick(&open.text(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(open.text().toPlainText(), QString("abc<B></B>"));
        QTest::keyClick(&open.text(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(open.text().toPlainText(), QString("abc"));
        QTest::keyClick(&open.text(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(open.text().toPlainText(), QString("abc<B></B>"));
    }

    void buttonsWorkOnTheNarrationWhereverTheFocusIs() {
        OpenEditor open;
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.editor()), patience);
        open.fill("abc", 0, 1);
        open.instruction().selectAll();
        open.instruction().setFocus();
        open.click("btnBold");
        QCOMPARE(open.text().toPlainText(), QString("<B>a</B>bc"));
        QCOMPARE(open.instruction().toPlainText(), QString("Look at stop 2."));
        QVERIFY(open.text().hasFocus());
    }

    void keysDoWhatTheButtonsDo_data() {
        QTest::addColumn<int>("key");
        QTest::addColumn<bool>("access");
        QTest::addColumn<QString>("edited");
        QTest::newRow("Ctrl+B") << int(Qt::Key_B) << false << "<B>abc</B>";
        QTest::newRow("Ctrl+I") << int(Qt::Key_I) << false << "<I>abc</I>";
        QTest::newRow("Ctrl+U") << int(Qt::Key_U) << false << "<U>abc</U>";
        QTest::newRow("Alt+B") << int(Qt::Key_B) << true << "<B>abc</B>";
        QTest::newRow("Alt+O") << int(Qt::Key_O) << true << "<BIG>abc</BIG>";
        QTest::newRow("Alt+S") << int(Qt::Key_S) << true << "<SMALL>abc</SMALL>";
    }
    void keysDoWhatTheButtonsDo() {
        QFETCH(int, key);
        QFETCH(bool, access);
        QFETCH(QString, edited);
        OpenEditor open;
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.editor()), patience);
        open.fill("abc", 0, 3);
        open.text().setFocus();
        QTest::keyClick(open.editor().windowHandle(), static_cast<Qt::Key>(key),
                        access ? Qt::AltModifier : Qt::ControlModifier);
        QTRY_COMPARE_WITH_TIMEOUT(open.text().toPlainText(), edited, patience);
    }

    // Line break

    void lineBreakIsInsertedAtTheCaret() {
        OpenEditor open;
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.editor()), patience);
        open.fill("ab", 1, 0);
        open.click("btnBreak");
        compareEdit(open, "a<BR>b", 5);
        open.text().undo();
        QCOMPARE(open.text().toPlainText(), QString("ab"));
    }

    void lineBreakWithASelectionChangesNothing() {
        OpenEditor open;
        open.fill("abc", 1, 1);
        open.click("btnBreak");
        QCOMPARE(open.text().toPlainText(), QString("abc"));
        QCOMPARE(open.text().textCursor().selectedText(), QString("b"));
        QCOMPARE(open.program.beeps, 0);
    }

    // Hyperlink

    void linkNeedsASelection() {
        OpenEditor open;
        open.fill("abc", 1, 0);
        expectMessage("Wendmark|Please highlight the phrase to be hyperlinked");
        open.click("btnHLink");
        QCOMPARE(open.text().toPlainText(), QString("abc"));
    }

    void linkGoesToTheAddressThatIsTyped_data() {
        QTest::addColumn<QString>("address");
        QTest::addColumn<bool>("accepted");
        QTest::addColumn<QString>("linked");
        QTest::newRow("address") << "http://host/a?b=c&d" << true << "http://host/a?b=c&d";
        QTest::newRow("as it is") << " it's \"x\" " << true << " it's \"x\" ";
        QTest::newRow("empty") << "" << true << "";
        QTest::newRow("cancelled") << "http://host/" << false << "";
    }
    void linkGoesToTheAddressThatIsTyped() {
        QFETCH(QString, address);
        QFETCH(bool, accepted);
        QFETCH(QString, linked);
        OpenEditor open;
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.editor()), patience);
        open.fill("see this page", 4, 4);
        onNextDialog([&](QDialog& dialog) {
            auto& box = *qobject_cast<QInputDialog*>(&dialog);
            QCOMPARE(box.labelText(), QString("Please enter the URL of this hyperlink"));
            QCOMPARE(box.textValue(), QString());
            box.setTextValue(address);
            press(box, accepted ? "OK" : "Cancel");
        });
        open.click("btnHLink");
        compareEdit(open, "see <a HREF=\"javascript:loadSubStop('" + linked + "');\">this</A> page", 7);
        open.text().undo();
        QCOMPARE(open.text().toPlainText(), QString("see this page"));
    }

    // Image

    void imageIsCopiedAndInsertedByItsName() {
        OpenEditor open;
        open.fill("ab", 1, 0);
        onImageDialog(imageFile(open.program, QString::fromUtf8("My Cäctus.GIF")));
        open.click("btnImage");
        compareEdit(open, QString::fromUtf8("a<IMG SRC=\"my cäctus.gif\">b"), 4);
        QCOMPARE(test::readFile(toUtf8(open.program.working(QString::fromUtf8("my cäctus.gif")))),
                 std::string("GIF of My Cäctus.GIF"));
        open.text().undo();
        QCOMPARE(open.text().toPlainText(), QString("ab"));
    }

    void nextImageIsLookedForWhereTheLastOneWas() {
        OpenEditor open;
        open.fill("ab", 1, 0);
        const QString image = imageFile(open.program, QStringLiteral("eel.gif"));
        onImageDialog(image);
        open.click("btnImage");
        const Setting<QString> remembered{"PicturesFolder", {}};
        const QString folder = QFileInfo(image).absolutePath();
        QCOMPARE(open.program.settings.read(remembered), folder);
        QString begun;
        const auto look = [&](QDialog& dialog) {
            begun = qobject_cast<QFileDialog*>(&dialog)->directory().absolutePath();
            dialog.reject();
        };
        onNextDialog(look);
        open.click("btnImage");
        QCOMPARE(begun, folder);
        open.program.settings.store(remembered, open.program.path("NewTour"));
        onNextDialog(look);
        open.click("btnImage");
        QVERIFY(!begun.startsWith(open.program.path("NewTour")));
        open.program.settings.store(remembered, open.program.path("no such folder"));
        onNextDialog(look);
        open.click("btnImage");
        QVERIFY(QDir(begun).exists());
    }

    void imageWithASelectionOnlyBeeps() {
        OpenEditor open;
        open.fill("abc", 0, 1);
        open.click("btnImage");
        QCOMPARE(open.program.beeps, 1);
        QCOMPARE(open.text().toPlainText(), QString("abc"));
    }

    void imageThatIsNotChosenChangesNothing() {
        OpenEditor open;
        open.fill("abc", 0, 0);
        onNextDialog([](QDialog& dialog) { dialog.reject(); });
        open.click("btnImage");
        QCOMPARE(open.text().toPlainText(), QString("abc"));
        QCOMPARE(open.program.beeps, 0);
    }

    void imageOfATemplatesNameNeedsAnother() {
        OpenEditor open;
        open.fill("", 0, 0);
        const QString reason = tellReasonForAPage(open.program);
        onImageDialog(imageFile(open.program, "FR-Logo.gif"));
        onRename("fr-logo.gif", "GRBullet.gif", reason); // Reserved, too.
        onRename("grbullet.gif", "My-Logo.GIF", reason);
        open.click("btnImage");
        QCOMPARE(open.text().toPlainText(), QString("<IMG SRC=\"my-logo.gif\">"));
        QCOMPARE(test::readFile(toUtf8(open.program.working("my-logo.gif"))),
                 std::string("GIF of FR-Logo.gif"));
        QCOMPARE(test::readFile(toUtf8(open.program.working("fr-logo.gif"))),
                 test::readFile(toUtf8(open.program.path("Template/fr-logo.gif"))));
        QCOMPARE(toQString(open.program.fileNames.renameReason()), reason);
    }

    void imageOverAFileOfOtherContentsAsksFirst() {
        OpenEditor open;
        open.fill("", 0, 0);
        test::writeFile(toUtf8(open.program.working("mine.gif")), "old");
        onImageDialog(imageFile(open.program, "Mine.gif"));
        expectOverwrite("mine.gif", "No");
        onRename("mine.gif", "Other.gif");
        open.click("btnImage");
        QCOMPARE(test::readFile(toUtf8(open.program.working("mine.gif"))), std::string("old"));
        QCOMPARE(open.text().toPlainText(), QString("<IMG SRC=\"other.gif\">"));

        open.fill("", 0, 0);
        onImageDialog(imageFile(open.program, "Mine.gif"));
        expectOverwrite("mine.gif", "Yes");
        open.click("btnImage");
        QCOMPARE(test::readFile(toUtf8(open.program.working("mine.gif"))), std::string("GIF of Mine.gif"));
        QCOMPARE(open.text().toPlainText(), QString("<IMG SRC=\"mine.gif\">"));

        open.fill("", 0, 0);
        onImageDialog(imageFile(open.program, "Mine.gif")); // The same once more: nothing would be lost.
        open.click("btnImage");
        QCOMPARE(open.text().toPlainText(), QString("<IMG SRC=\"mine.gif\">"));
    }

    void imageOfAGeneratedNameNeedsAnother_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("reason");
        const QString writtenByUs = "which Wendmark writes itself, so that your file would be lost.";
        QTest::newRow("page of a stop") << "page1.htm" << writtenByUs;
        QTest::newRow("page that tests frames") << "ft.htm" << writtenByUs;
        QTest::newRow("contents, of which there is a template") << "toc.htm"
                                                                << "";
    }
    void imageOfAGeneratedNameNeedsAnother() {
        QFETCH(QString, name);
        QFETCH(QString, reason);
        OpenEditor open;
        open.fill("", 0, 0);
        test::writeFile(toUtf8(open.program.working(name)), "written by the program");
        onImageDialog(imageFile(open.program, name.toUpper()));
        onRename(name, "Mine.gif", reason);
        open.click("btnImage");
        QCOMPARE(open.text().toPlainText(), QString("<IMG SRC=\"mine.gif\">"));
        QCOMPARE(test::readFile(toUtf8(open.program.working(name))), std::string("written by the program"));
    }

    void closingTheWindowWhileAnImageIsWaitedForClosesItAfterwards() {
        OpenEditor open;
        const QPointer<frmNarEdit> editor = &open.editor();
        open.fill("", 0, 0);
        int rounds = 0;
        bool openMeanwhile = false;
        QTimer clock;
        clock.callOnTimeout([&] {
            if (!open.program.gate.isClosed() || rounds++ > 0)
                return;
            editor->close();
            openMeanwhile = editor->isVisible();
        });
        clock.start(0);
        onImageDialog(imageFile(open.program, "Mine.gif"));
        open.program.clockStep = 0.01F; // Copying waits for some rounds of events.
        open.click("btnImage");
        QVERIFY(rounds > 0);
        QVERIFY(openMeanwhile);
        QTRY_VERIFY_WITH_TIMEOUT(editor.isNull(), patience);
        QVERIFY(open.program.gate.isOpen());
        QVERIFY(QFile::exists(open.program.working("mine.gif")));
    }

    void imageWhoseNewNameIsNotGivenIsLeftOut_data() {
        QTest::addColumn<bool>("cancelled");
        QTest::newRow("cancelled") << true;
        QTest::newRow("empty") << false;
    }
    void imageWhoseNewNameIsNotGivenIsLeftOut() {
        QFETCH(bool, cancelled);
        OpenEditor open;
        open.fill("abc", 0, 0);
        const QStringList before = open.program.filesOf("NewTour");
        onImageDialog(imageFile(open.program, "fr-logo.gif"));
        if (cancelled)
            onNextDialog([](QDialog& dialog) { press(dialog, "CancelButton"); });
        else
            onRename("fr-logo.gif", "");
        open.click("btnImage");
        QCOMPARE(open.text().toPlainText(), QString("abc"));
        QCOMPARE(open.program.filesOf("NewTour"), before);
    }

    void newNameOfAnImageCannotLeadOutOfTheTour() {
        OpenEditor open;
        open.fill("", 0, 0);
        onImageDialog(imageFile(open.program, "fr-logo.gif"));
        onRename("fr-logo.gif", "../Outside.gif");
        open.click("btnImage");
        QCOMPARE(open.text().toPlainText(), QString("<IMG SRC=\"outside.gif\">"));
        QVERIFY(QFile::exists(open.program.working("outside.gif")));
        QVERIFY(!QFile::exists(open.program.path("Outside.gif")));
        QVERIFY(!QFile::exists(open.program.path("outside.gif")));
    }

    void imageThatCannotBeCopiedIsInsertedAndLogged() {
        OpenEditor open;
        open.fill("", 0, 0);
        QDir().mkpath(open.program.working("logo.gif")); // A folder in its place.
        onImageDialog(imageFile(open.program, "logo.gif"));
        open.click("btnImage");
        QCOMPARE(open.text().toPlainText(), QString("<IMG SRC=\"logo.gif\">"));
        QCOMPARE(open.program.log.failures.size(), std::size_t(1));
    }

    void imageOfTheTourItselfStays() {
        OpenEditor open;
        open.fill("", 0, 0);
        test::writeFile(toUtf8(open.program.working("own.gif")), "own");
        onImageDialog(open.program.working("own.gif"));
        open.click("btnImage");
        QCOMPARE(open.text().toPlainText(), QString("<IMG SRC=\"own.gif\">"));
        QCOMPARE(test::readFile(toUtf8(open.program.working("own.gif"))), std::string("own"));
        QVERIFY(open.program.log.failures.empty());
    }

    // Apply

    void applyStoresTheTextsAndMakesThePages() {
        OpenEditor open;
        open.title().setText("Cactus");
        open.text().setPlainText("Line 1\nLine 2");
        open.instruction().setPlainText("Go\non");
        open.click("btnOK");
        const TourModel& model = open.program.model;
        QVERIFY(!open.editor().isVisible());
        QVERIFY(model.tourChanged);
        QCOMPARE(model.stops.at(2).stopTitle, std::string("Cactus"));
        QCOMPARE(model.stops.at(2).stopNarration, std::string("Line 1\r\nLine 2"));
        QCOMPARE(model.stops.at(2).stopInstruction, std::string("Go\r\non"));
        QVERIFY(open.page(2).find("Line 1\r\nLine 2\r\n<br><br>\r\nGo\r\non\r\n") != std::string::npos);
        for (const char* list : {"toc.htm", "tguide.htm"})
            QVERIFY2(test::readFile(toUtf8(open.program.working(list))).find("Cactus") != std::string::npos,
                     list);
        QVERIFY(QFile::exists(open.program.working("tmpframe.htm")));
        QVERIFY(QApplication::overrideCursor() == nullptr);
    }

    void applyShowsTheStopInThePreviewOfTheMainWindow() {
        OpenEditor open;
        auto& main = *open.window.findChild<BrowserView*>("broMain");
        open.click("btnOK");
        QTRY_VERIFY_WITH_TIMEOUT(main.locationURL().endsWith("NewTour/tmpframe.htm"), patience);
    }

    void applyStoresIntoTheStopThatIsCurrentThen() {
        OpenEditor open;
        open.title().setText("Moved");
        open.program.model.currentStop = 3;
        onNextDialog([](QDialog& dialog) { press(dialog, "Yes"); });
        open.click("btnOK");
        QCOMPARE(open.program.model.stops.at(2).stopTitle, std::string("Stop 2"));
        QCOMPARE(open.program.model.stops.at(3).stopTitle, std::string("Moved"));
        QVERIFY(open.page(3).find("Moved") != std::string::npos);
    }

    void applyOnTheOpeningPageStoresNothingButMarksTheTourAsChanged() {
        OpenEditor open;
        const StopList before = open.program.model.stops;
        const std::string page = open.page(2);
        open.title().setText("Other");
        open.program.model.currentStop = 0;
        QFile::remove(open.program.working("tmpframe.htm"));
        open.click("btnOK");
        QVERIFY(open.program.model.tourChanged);
        QVERIFY(!open.editor().isVisible());
        QVERIFY(open.program.model.stops == before);
        QCOMPARE(open.page(2), page);
        QVERIFY(!QFile::exists(open.program.working("tmpframe.htm")));
    }

    void textsOfBlanksAreStoredAsThePlaceholders_data() {
        QTest::addColumn<QString>("typed");
        QTest::newRow("nothing") << "";
        QTest::newRow("blanks") << "   ";
        QTest::newRow("blanks and line breaks") << " \n\n  \n\n\n";
    }
    void textsOfBlanksAreStoredAsThePlaceholders() {
        QFETCH(QString, typed);
        OpenEditor open;
        open.text().setPlainText(typed);
        open.instruction().setPlainText(typed);
        open.click("btnOK");
        QCOMPARE(open.program.model.stops.at(2).stopNarration, std::string("<!--narration-->"));
        QCOMPARE(open.program.model.stops.at(2).stopInstruction, std::string("<!--instruction-->"));
        QCOMPARE(open.text().toPlainText(), QString("<!--narration-->"));
        QCOMPARE(open.instruction().toPlainText(), QString("<!--instruction-->"));
    }

    void automaticInstructionIsStoredWhateverTheFieldShows() {
        OpenEditor open(true);
        open.instruction().setPlainText("Own words");
        open.click("btnOK");
        QCOMPARE(open.program.model.stops.at(2).stopInstruction,
                 std::string("Click the <strong>Next button</strong> to go to the next stop."));
    }

    void pageOfAStopWithAutomaticInstructionsShowsThem() {
        OpenEditor open(true);
        open.click("btnOK");
        QVERIFY(open.page(2).find("Click the <strong>Next button</strong>") != std::string::npos);
        QVERIFY(open.page(2).find(automaticMode) == std::string::npos);
    }

    void textsThatNobodyChangedStayAsTheyAre() {
        OpenEditor open;
        const std::string text = "a\u00a0b \r\n<B>\u2192</B> 😀\r\n\r\nc\r\n";
        open.program.model.stops.at(2).stopNarration = text;
        open.program.model.stops.at(2).stopTitle = " T  x ";
        open.window.editNarrationFrame();
        open.click("btnOK");
        QCOMPARE(open.program.model.stops.at(2).stopNarration, text);
        QCOMPARE(open.program.model.stops.at(2).stopTitle, std::string(" T  x "));
    }

    void textOfTheLongestThatCanBeEditedIsEdited() {
        OpenEditor open;
        open.program.model.stops.at(2).stopNarration = std::string(HtmlField::longestEdited, 'n');
        open.edit();
        QVERIFY(!open.text().isReadOnly());
        QVERIFY(open.button("btnBold").isEnabled());
        QCOMPARE(open.text().toPlainText().size(), HtmlField::longestEdited);
    }

    void textThatIsTooLongIsShownInPartAndStaysWhole() {
        OpenEditor open;
        const std::string tooLong = repeatedLine(HtmlField::longestEdited);
        open.program.model.stops.at(2).stopNarration = tooLong;
        open.edit();
        QVERIFY(open.text().isReadOnly());
        QVERIFY(!open.button("btnBold").isEnabled());
        QCOMPARE(open.text().toPlainText().size(), HtmlField::longestEdited);
        QVERIFY(open.editor()
                    .findChild<QLabel*>("lblTarget")
                    ->text()
                    .contains("A text of more than 50,000 characters is shown in part. It stays as it is "
                              "until all of it is selected and replaced."));
        QVERIFY(!open.editor().unappliedTexts());
        open.title().setText("Another title");
        open.click("btnOK");
        QCOMPARE(open.program.model.stops.at(2).stopTitle, std::string("Another title"));
        QVERIFY(open.program.model.stops.at(2).stopNarration == tooLong);

        open.program.model.currentStop = 3;
        open.edit();
        QVERIFY(!open.text().isReadOnly());
        QVERIFY(open.button("btnBold").isEnabled());
        QVERIFY(!open.text().document()->isUndoAvailable());
        open.click("btnOK");
        QVERIFY(open.program.model.stops.at(3).stopNarration.size() < 1000);
    }

    void instructionThatIsTooLongStaysWhole() {
        OpenEditor open;
        const std::string tooLong = repeatedLine(HtmlField::longestEdited);
        open.program.model.stops.at(2).stopInstruction = tooLong;
        open.edit();
        QVERIFY(open.instruction().isReadOnly());
        QVERIFY(open.button("btnBold").isEnabled());
        open.click("btnOK");
        QVERIFY(open.program.model.stops.at(2).stopInstruction == tooLong);
    }

    void titleThatIsTooLongStaysWholeUntilItIsChanged() {
        OpenEditor open;
        const std::string tooLong(static_cast<std::size_t>(open.title().maxLength()) + 1, 't');
        open.program.model.stops.at(2).stopTitle = tooLong;
        open.edit();
        open.click("btnOK");
        QVERIFY(open.program.model.stops.at(2).stopTitle == tooLong);
        open.edit();
        open.title().selectAll();
        QTest::keyClicks(&open.title(), "Short");
        open.click("btnOK");
        QCOMPARE(open.program.model.stops.at(2).stopTitle, std::string("Short"));
    }

    void titleIsOneLineWhateverIsPasted() {
        OpenEditor open;
        QApplication::clipboard()->setText("two\nlines");
        open.title().selectAll();
        open.title().paste();
        open.click("btnOK");
        QCOMPARE(open.program.model.stops.at(2).stopTitle, std::string("two lines"));
    }

    void textsThatWouldShiftTheScriptAreStoredHarmless() {
        OpenEditor open;
        open.title().setText("<<<VoskInfo>>> Stop7");
        open.text().setPlainText("a\n\n\nb");
        open.click("btnOK");
        QCOMPARE(open.program.model.stops.at(2).stopTitle, std::string("&lt;<<VoskInfo>>> Stop7"));
        QCOMPARE(open.program.model.stops.at(2).stopNarration, std::string("a<BR>\r\n<BR>\r\nb\r\n"));
        open.window.save();
        TourModel read;
        parseScript(test::readFile(toUtf8(open.program.path("MyTours/walk/script.txt"))), read,
                    [](int, std::string_view error) { QFAIL(std::string(error).c_str()); });
        QCOMPARE(read.stopCount(), std::int16_t{3});
        QCOMPARE(read.stops.at(3).stopTitle, std::string("Stop 3"));
    }

    void returnInTheTitleAndCtrlReturnInATextApply() {
        OpenEditor open;
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.editor()), patience);
        open.title().setText("By Return");
        open.title().setFocus();
        QTest::keyClick(open.editor().windowHandle(), Qt::Key_Return);
        QCOMPARE(open.program.model.stops.at(2).stopTitle, std::string("By Return"));
        open.edit();
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.editor()), patience);
        open.fill("ab", 1, 0);
        open.text().setFocus();
        QTest::keyClick(open.editor().windowHandle(), Qt::Key_Return);
        QCOMPARE(open.text().toPlainText(), QString("a\nb"));
        QTest::keyClick(open.editor().windowHandle(), Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(open.program.model.stops.at(2).stopNarration, std::string("a\r\nb"));
    }

    // Colours and spelling

    void partsOfTheHtmlHaveColoursThatCanBeRead_data() {
        QTest::addColumn<QColor>("background");
        QTest::newRow("light") << QColor(Qt::white);
        QTest::newRow("dark") << QColor(0x1b, 0x1b, 0x1d);
    }
    void partsOfTheHtmlHaveColoursThatCanBeRead() {
        QFETCH(QColor, background);
        OpenEditor open;
        QPalette palette = open.text().palette();
        palette.setColor(QPalette::Base, background);
        open.text().setPalette(palette);
        open.text().setPlainText("<a b='c'>the&amp;<!-- d --></a>");
        QSet<QRgb> colours;
        for (const int position : {1, 6, 13, 20}) {
            const QColor colour = formatAt(open.text(), position).foreground().color();
            QVERIFY2(contrast(colour, background) >= 4.5, qPrintable(colour.name()));
            colours.insert(colour.rgb());
        }
        QCOMPARE(colours.size(), 4);
        QVERIFY(!formatAt(open.text(), 10).hasProperty(QTextFormat::ForegroundBrush)); // The visible word.
    }

    void commentThatGoesOnInTheNextLineIsColouredThere() {
        OpenEditor open;
        open.text().setPlainText("<!-- one\ntwo --> water");
        QCOMPARE(formatAt(open.text(), 10).foreground(), formatAt(open.text(), 2).foreground());
        QVERIFY(formatAt(open.text(), 20).foreground() != formatAt(open.text(), 2).foreground());
    }

    void wrongWordsAreUnderlinedInBothTexts() {
        OpenEditor open;
        open.text().setPlainText("The cactsu stores\nwatr and water");
        QCOMPARE(misspelledIn(open.text()), QString("cactsu watr"));
        open.instruction().setPlainText("wtaer");
        QCOMPARE(misspelledIn(open.instruction()), QString("wtaer"));
    }

    void onlyWordsThatVisitorsReadAreChecked_data() {
        QTest::addColumn<QString>("html");
        QTest::newRow("tags") << "<blockqote clas=xyzzy title='xyzzy'>water</blockqote>";
        QTest::newRow("tag over two lines") << "<img\nxyzzy='plugh\nxyzzy'>";
        QTest::newRow("entities") << "&xyzzy; &lsquo;water&rsquo; wat&eacute;r";
        QTest::newRow("comments") << "<!-- xyzzy\nplugh -->";
        QTest::newRow("addresses") << "http://xyzzy.example/plugh?foo www.xyzzy.example xyzzy@plugh.example";
        QTest::newRow("names of files and numbers") << "xyzzy.htm plugh2 x 1st";
        QTest::newRow("right words") << "The water, don't; WATER (caf\u00e9)";
    }
    void onlyWordsThatVisitorsReadAreChecked() {
        QFETCH(QString, html);
        OpenEditor open;
        open.text().setPlainText(html);
        QCOMPARE(misspelledIn(open.text()), QString());
        open.text().appendPlainText("plugh"); // The checker is at work.
        QCOMPARE(misspelledIn(open.text()), QString("plugh"));
    }

    void menuOfAWrongWordOffersTheRightOne() {
        OpenEditor open;
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.editor()), patience);
        open.text().setPlainText("The cactsu stores water");
        QMenu* const menu = menuAt(open.text(), 6);
        QVERIFY(menu != nullptr);
        QAction* const suggestion = itemOf(*menu, "cactus");
        QVERIFY(suggestion != nullptr);
        suggestion->trigger();
        menu->close();
        QCOMPARE(open.text().toPlainText(), QString("The cactus stores water"));
        QCOMPARE(misspelledIn(open.text()), QString());
        open.text().undo();
        QCOMPARE(open.text().toPlainText(), QString("The cactsu stores water"));
    }

    void menuOpenedByKeyIsThatOfTheWordAtTheCaret() {
        OpenEditor open;
        open.fill("The cactsu", 10, 0);
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), QPoint());
        QApplication::sendEvent(open.text().viewport(), &event);
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        QVERIFY(menu != nullptr);
        QVERIFY(itemOf(*menu, "cactus") != nullptr);
        menu->close();
    }

    void wordAddedFromTheMenuIsRightInBothTextsFromThenOn() {
        OpenEditor open;
        open.text().setPlainText("The Brenholt water");
        open.instruction().setPlainText("Brenholt");
        QMenu* const menu = menuAt(open.text(), 6);
        itemOf(*menu, "Add to Dictionary")->trigger();
        menu->close();
        QCOMPARE(misspelledIn(open.text()), QString());
        QCOMPARE(misspelledIn(open.instruction()), QString());
        QCOMPARE(test::readFile(m_dictionaries->configFolder() + "/Wendmark/words.txt"),
                 std::string("Brenholt\n"));
    }

    void wordWithoutSuggestionsSaysSo() {
        OpenEditor open;
        open.text().setPlainText("qqqqqqqqqqqqqqqqqqqq");
        QMenu* const menu = menuAt(open.text(), 6);
        QVERIFY(itemOf(*menu, "No Suggestions") != nullptr);
        QVERIFY(!itemOf(*menu, "No Suggestions")->isEnabled());
        menu->close();
    }

    void menuOfARightWordIsTheUsualOne() {
        OpenEditor open;
        open.text().setPlainText("The water");
        QMenu* const menu = menuAt(open.text(), 6);
        QVERIFY(itemOf(*menu, "Add to Dictionary") == nullptr);
        QVERIFY(!menu->actions().isEmpty());
        menu->close();
    }

    void languageIsChosenInTheMenuAndKept() {
        OpenEditor open;
        open.text().setPlainText(QString::fromUtf8("Wüste"));
        QCOMPARE(misspelledIn(open.text()), QString::fromUtf8("Wüste"));
        QMenu* menu = menuAt(open.text(), 2);
        itemOf(*itemOf(*menu, "Check Spelling")->menu(), "de_DE")->trigger();
        menu->close();
        QCOMPARE(misspelledIn(open.text()), QString());
        open.editor().close();
        QTRY_VERIFY_WITH_TIMEOUT(open.window.findChild<frmNarEdit*>() == nullptr, patience);
        open.edit();
        open.text().setPlainText("water");
        QCOMPARE(misspelledIn(open.text()), QString("water"));
        menu = menuAt(open.text(), 2);
        itemOf(*itemOf(*menu, "Check Spelling")->menu(), "Off")->trigger();
        menu->close();
        QCOMPARE(misspelledIn(open.text()), QString());
        open.editor().close();
        QTRY_VERIFY_WITH_TIMEOUT(open.window.findChild<frmNarEdit*>() == nullptr, patience);
        open.edit();
        open.text().setPlainText("xyzzy");
        QCOMPARE(misspelledIn(open.text()), QString());
    }

    void nothingIsCheckedWithoutADictionary() {
        m_dictionaries->removeAll();
        OpenEditor open;
        open.text().setPlainText("cactsu");
        QCOMPARE(misspelledIn(open.text()), QString());
        QMenu* const menu = menuAt(open.text(), 2);
        QVERIFY(itemOf(*menu, "Check Spelling") == nullptr);
        menu->close();
        QVERIFY(open.program.log.failures.empty());
    }

    // The preview

    void previewFollowsTheFieldsAndChangesNothing() {
        OpenEditor open;
        const std::string page = open.page(2);
        open.title().setText(QString::fromUtf8("Title → 1"));
        open.text().setPlainText(QString::fromUtf8("My <B>w\u00f6rds</B> 😀"));
        open.instruction().setPlainText("Go on.");
        open.text().moveCursor(QTextCursor::End);
        QTRY_VERIFY_WITH_TIMEOUT(shownText(open.preview()).contains("Go on."), patience);
        const QString shown = shownText(open.preview());
        QVERIFY2(shown.contains(QString::fromUtf8("2—Title → 1")), qPrintable(shown));
        QVERIFY2(shown.contains(QString::fromUtf8("My wörds 😀")), qPrintable(shown));
        QCOMPARE(open.text().toPlainText(), QString::fromUtf8("My <B>w\u00f6rds</B> 😀"));
        QVERIFY(open.text().textCursor().atEnd());
        QCOMPARE(open.page(2), page);
        QCOMPARE(open.program.model.stops.at(2).stopTitle, std::string("Stop 2"));
        QVERIFY(!open.program.model.tourChanged);
    }

    void previewShowsAutomaticInstructions() {
        OpenEditor open(true);
        QTRY_VERIFY_WITH_TIMEOUT(shownText(open.preview()).contains("Click the Next button"), patience);
        QCOMPARE(open.program.model.stops.at(2).stopInstruction, std::string("Look at stop 2."));
    }

    void previewLeavesTheFocusWhereItIs() {
        OpenEditor open;
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.editor()), patience);
        open.text().setFocus();
        open.text().setPlainText("typed");
        QTRY_VERIFY_WITH_TIMEOUT(shownText(open.preview()).contains("typed"), patience);
        QVERIFY(open.text().hasFocus());
    }

    void previewNeitherRunsScriptsNorMovesTheCurrentStop() {
        OpenEditor open;
        auto& main = *open.window.findChild<BrowserView*>("broMain");
        QTRY_VERIFY_WITH_TIMEOUT(!main.isBusy(), patience);
        open.program.document.goToStop(2);
        open.text().setPlainText(
            "<p id=a>before</p><script>document.getElementById('a').textContent = 'after';"
            "window.status = '>*>*>vosktourstop->3';"
            "parent.status = '>*>*>vosktourstop->3';</script>end"
            "<meta http-equiv=refresh content='0;url=page3.htm'>");
        QTRY_VERIFY_WITH_TIMEOUT(shownText(open.preview()).contains("end"), patience);
        QTest::qWait(500); // Time for what must not happen.
        QTRY_VERIFY_WITH_TIMEOUT(shownText(open.preview()).contains("before"), patience);
        QVERIFY(!shownText(open.preview()).contains("after"));
        QCOMPARE(open.program.model.currentStop, std::int16_t{2});
    }

    void previewShowsImagesOfTheWorkingCopyAndNoOtherFiles() {
        OpenEditor open;
        const QString outside = open.program.path("outside.gif");
        QFile::copy(open.program.path("Template/fr-logo.gif"), outside);
        QFile::copy(outside, open.program.working("inside.gif"));
        open.text().setPlainText("<IMG SRC=\"inside.gif\"><IMG SRC=\"file://" + outside + "\">ready");
        QTRY_VERIFY_WITH_TIMEOUT(shownText(open.preview()).contains("ready"), patience);
        QTRY_VERIFY_WITH_TIMEOUT(!open.preview().isBusy(), patience);
        const QString widths =
            resultOf(open.preview(), "Array.from(document.images, i => i.naturalWidth > 0).join()");
        QCOMPARE(widths, QString("true,false"));
    }

    void linksInThePreviewLeadNowhere() {
        OpenEditor open;
        open.text().setPlainText("<a href='page3.htm' style='display:block;height:400px'>A link</a>");
        QTRY_VERIFY_WITH_TIMEOUT(shownText(open.preview()).contains("A link"), patience);
        QTRY_VERIFY_WITH_TIMEOUT(!open.preview().isBusy(), patience);
        QWidget* const page = test::engineOf(open.preview()).focusProxy();
        QVERIFY(page != nullptr);
        QTest::mouseClick(page, Qt::LeftButton, {}, QPoint(page->width() / 2, page->height() - 10));
        QTest::qWait(500); // Time for what must not happen.
        QTRY_VERIFY_WITH_TIMEOUT(shownText(open.preview()).contains("A link"),
                                 patience); // It may be refreshed.
    }

    void previewStaysScrolledToItsPlace() {
        OpenEditor open;
        open.text().setPlainText(QString("line<BR>\n").repeated(200));
        QTRY_VERIFY_WITH_TIMEOUT(shownText(open.preview()).contains("line"), patience);
        QTRY_VERIFY_WITH_TIMEOUT(!open.preview().isBusy(), patience);
        resultOf(open.preview(), "window.scrollTo(0, 700)");
        const QWebEnginePage& page = *test::engineOf(open.preview()).page();
        QTRY_VERIFY_WITH_TIMEOUT(page.scrollPosition().y() > 600, patience);
        open.text().appendPlainText("another end");
        QTRY_VERIFY_WITH_TIMEOUT(shownText(open.preview()).contains("another end"), patience);
        QTRY_VERIFY_WITH_TIMEOUT(page.scrollPosition().y() > 600, patience);
    }

    void nothingOverlapsInTheSmallestWindow_data() {
        QTest::addColumn<bool>("withPreview");
        QTest::addColumn<bool>("otherMode");
        QTest::newRow("with preview") << true << false;
        QTest::newRow("without preview") << false << false;
        QTest::newRow("instructions that were switched") << true << true;
    }
    void nothingOverlapsInTheSmallestWindow() {
        QFETCH(bool, withPreview);
        QFETCH(bool, otherMode);
        OpenEditor open;
        if (otherMode)
            open.setAutomatic(true);
        QCOMPARE(open.button("btnReload").isVisible(), otherMode);
        if (!withPreview)
            open.click("btnPreview");
        open.editor().resize(0, 0);
        QTest::qWait(50); // Until the layout has followed.
        QList<QWidget*> controls;
        for (QPushButton* button : open.editor().findChildren<QPushButton*>()) {
            if (button->isVisible())
                controls.append(button);
        }
        controls.append({&open.title(), &open.text(), &open.instruction()});
        if (withPreview)
            controls.append(&open.preview());
        for (const char* label : {"lblStopTitle", "lblStopText", "Label1", "lblTarget"})
            controls.append(open.editor().findChild<QLabel*>(label));
        const auto placeOf = [&](const QWidget* control) {
            return QRect(control->mapTo(&open.editor(), QPoint()), control->size());
        };
        for (const QWidget* control : controls) {
            QVERIFY2(open.editor().rect().contains(placeOf(control)), qPrintable(control->objectName()));
            QVERIFY2(control->height() >= control->minimumSizeHint().height() ||
                         control->height() >= control->minimumHeight(),
                     qPrintable(control->objectName()));
            for (const QWidget* other : controls)
                QVERIFY2(other == control || !placeOf(other).intersects(placeOf(control)),
                         qPrintable(control->objectName() + " " + other->objectName()));
        }
    }

    void previewCanBeFoldedAwayAndStaysSo() {
        OpenEditor open;
        QVERIFY(open.button("btnPreview").isChecked());
        QVERIFY(open.preview().isVisible());
        QCOMPARE(open.button("btnPreview").text().remove('&'), QString("Hide Preview"));
        open.click("btnPreview");
        QVERIFY(!open.preview().isVisible());
        QCOMPARE(open.button("btnPreview").text().remove('&'), QString("Show Preview"));
        open.editor().close();
        QTRY_VERIFY_WITH_TIMEOUT(open.window.findChild<frmNarEdit*>() == nullptr, patience);
        open.edit();
        QVERIFY(!open.button("btnPreview").isChecked());
        QVERIFY(open.editor().findChild<BrowserView*>("broPreview") == nullptr);
        open.click("btnPreview");
        QTRY_VERIFY_WITH_TIMEOUT(shownText(open.preview()).contains("Words of stop 2."), patience);
    }

private:
    static QString resultOf(BrowserView& view, const QString& script) {
        QString result;
        bool there = false;
        test::engineOf(view).page()->runJavaScript(script, QWebEngineScript::ApplicationWorld,
                                                   [&](const QVariant& value) {
                                                       result = value.toString();
                                                       there = true;
                                                   });
        return QTest::qWaitFor([&] { return there; }, patience) ? result : QString();
    }

    std::unique_ptr<Dictionaries> m_dictionaries;
};

} // namespace wendmark

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    wendmark::NarrationEditorTest tests;
    return QTest::qExec(&tests, argc, argv);
}

#include "NarrationEditorTest.moc"
