#include "ui/narration/PictureRow.h"

#include "ui/support/OpenEditor.h"

#include <QImage>
#include <QSpinBox>

namespace wendmark {

using test::hasKeys;
using test::OpenEditor;
using test::patience;

namespace {

/// The narration editor on a stop with a picture of 1600 x 1200 pixels, the caret behind its name.
struct OpenPicture : OpenEditor {
    explicit OpenPicture(const QString& tag = QStringLiteral("<IMG SRC=\"eel.png\">")) {
        QImage image(1600, 1200, QImage::Format_RGB32);
        image.fill(Qt::darkGreen);
        image.save(program.working("eel.png"));
        fill("Eels: " + tag + " Look.", 0, 0);
        enter();
    }

    void enter() const { select(9, 0); }
    void leave() const { select(0, 0); }

    PictureRow& row() const { return *editor().findChild<PictureRow*>(); }
    QLineEdit& description() const { return *editor().findChild<QLineEdit*>("txtPictureDescription"); }
    QCheckBox& decoration() const { return *editor().findChild<QCheckBox*>("chkDecoration"); }
    QSpinBox& width() const { return *editor().findChild<QSpinBox*>("spnPictureWidth"); }
    QString words() const { return text().toPlainText(); }

    void awaitKeys() const { QTRY_VERIFY_WITH_TIMEOUT(hasKeys(editor()), patience); }
};

} // namespace

/// The row that asks for a picture's description and width.
class PictureRowTest final : public QObject {
    Q_OBJECT

private slots:
    void rowComesWithTheCaretAndGoesWithIt() {
        const OpenPicture open("<IMG SRC=\"eel.png\" ALT=\"An &quot;eel&quot;\" WIDTH=\"200\">");
        QVERIFY(open.row().isVisible());
        QCOMPARE(open.description().text(), QString("An \"eel\""));
        QCOMPARE(open.width().value(), 200);
        QVERIFY(!open.decoration().isChecked());
        open.leave();
        QVERIFY(!open.row().isVisible());
        open.enter();
        QVERIFY(open.row().isVisible());
        open.text().setPlainText("No picture.");
        QVERIFY(!open.row().isVisible());
    }

    void rowTakesNoRoomFromTheButtons() {
        const OpenPicture open;
        for (const QSize size : {open.editor().minimumSize(), QSize(1200, 800)}) {
            open.editor().resize(size);
            QTRY_COMPARE_WITH_TIMEOUT(open.editor().size(), size, patience);
            for (const QWidget* const part : std::initializer_list<const QWidget*>{
                     &open.description(), &open.decoration(), &open.width(), &open.button("btnFitPicture"),
                     &open.button("btnOK")}) {
                const QRect place(part->mapTo(&open.editor(), QPoint()), part->size());
                QVERIFY2(open.editor().rect().contains(place), qPrintable(part->objectName()));
                QVERIFY2(part->width() >= part->minimumSizeHint().width(), qPrintable(part->objectName()));
            }
        }
        QVERIFY(open.description().width() > 400);
    }

    void lettersGoIntoTheTagAndAreOneStep() {
        const OpenPicture open;
        open.awaitKeys();
        QTest::keyClick(&open.editor(), Qt::Key_D, Qt::AltModifier);
        QVERIFY(open.description().hasFocus());
        QTest::keyClicks(&open.description(), "A 3\" eel ");
        QCOMPARE(open.description().text(), QString("A 3\" eel "));
        QCOMPARE(open.words(), QString("Eels: <IMG SRC=\"eel.png\" ALT=\"A 3&quot; eel \"> Look."));
        QTest::keyClick(&open.description(), Qt::Key_Return);
        QVERIFY(open.text().hasFocus());
        QVERIFY(open.editor().isVisible());
        open.text().undo();
        QCOMPARE(open.words(), QString("Eels: <IMG SRC=\"eel.png\"> Look."));
        QVERIFY(open.description().text().isEmpty());
    }

    void emptiedDescriptionIsNone() {
        const OpenPicture open("<IMG SRC=\"eel.png\" ALT=\"Eel\">");
        open.description().setFocus();
        open.description().selectAll();
        QTest::keyClick(&open.description(), Qt::Key_Delete);
        QCOMPARE(open.words(), QString("Eels: <IMG SRC=\"eel.png\"> Look."));
        QVERIFY(!open.decoration().isChecked());
        QVERIFY(open.description().isEnabled());
    }

    void decorationIsAnEmptyDescription() {
        const OpenPicture open;
        QTest::mouseClick(&open.decoration(), Qt::LeftButton, {}, {8, open.decoration().height() / 2});
        QCOMPARE(open.words(), QString("Eels: <IMG SRC=\"eel.png\" ALT=\"\"> Look."));
        QVERIFY(!open.description().isEnabled());
        open.leave();
        open.enter();
        QVERIFY(open.decoration().isChecked());
        QTest::mouseClick(&open.decoration(), Qt::LeftButton, {}, {8, open.decoration().height() / 2});
        QCOMPARE(open.words(), QString("Eels: <IMG SRC=\"eel.png\"> Look."));
        QVERIFY(open.description().isEnabled());
    }

    void largePictureGetsAWidthThatFits() {
        const OpenPicture open;
        QCOMPARE(open.width().text(), QString("its own"));
        QVERIFY(open.button("btnFitPicture").isEnabled());
        open.click("btnFitPicture");
        QCOMPARE(open.words(), QString("Eels: <IMG SRC=\"eel.png\" WIDTH=\"320\"> Look."));
        QVERIFY(!open.button("btnFitPicture").isEnabled());
        open.width().setValue(0);
        QCOMPARE(open.words(), QString("Eels: <IMG SRC=\"eel.png\"> Look."));
    }

    void pictureThatIsNotThereHasNoFittingWidth_data() {
        QTest::addColumn<QString>("address");
        QTest::newRow("missing") << "none.png";
        QTest::newRow("nothing") << "";
        QTest::newRow("elsewhere") << "http://127.0.0.1:9/eel.png";
        QTest::newRow("on another host") << "//127.0.0.1/eel.png";
        QTest::newRow("outside") << "../eel.png";
        QTest::newRow("no picture") << "script1.txt";
    }
    void pictureThatIsNotThereHasNoFittingWidth() {
        QFETCH(QString, address);
        const OpenPicture open("<IMG SRC=\"" + address + "\">");
        QFile::copy(open.program.working("eel.png"), open.program.path("eel.png"));
        open.leave();
        open.enter();
        QVERIFY(open.row().isVisible());
        QVERIFY(!open.button("btnFitPicture").isEnabled());
        open.width().setValue(90);
        QVERIFY(open.words().contains("WIDTH=\"90\""));
    }

    void applyFromTheDescriptionStoresIt() {
        const OpenPicture open;
        open.awaitKeys();
        open.description().setFocus();
        QTest::keyClicks(&open.description(), "An eel");
        QTest::keyClick(&open.description(), Qt::Key_Return, Qt::ControlModifier);
        QTRY_VERIFY_WITH_TIMEOUT(!open.editor().isVisible(), patience);
        QVERIFY(open.program.model.stops.at(2).stopNarration.find(
                    "Eels: <IMG SRC=\"eel.png\" ALT=\"An eel\"> Look.") == 0);
        QVERIFY(open.page(2).find("ALT=\"An eel\"") != std::string::npos);
    }

    void textThatIsTooLongHasNoRow() {
        const OpenPicture open;
        open.text().setTypedText("<IMG SRC=\"eel.png\">" + std::string(HtmlField::longestEdited, 'n'));
        open.select(3, 0);
        QVERIFY(open.text().isTooLong());
        QVERIFY(!open.row().isVisible());
    }
};

} // namespace wendmark

QTEST_MAIN(wendmark::PictureRowTest)
#include "PictureRowTest.moc"
