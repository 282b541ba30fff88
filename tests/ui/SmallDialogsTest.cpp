#include "ui/dialogs/DialogParts.h"
#include "ui/dialogs/frmMessage.h"
#include "ui/dialogs/frmRenameFile.h"
#include "ui/support/Patience.h"
#include "ui/support/UiFixture.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTest>

namespace wendmark {

using test::hasKeys;
using test::onNextDialog;
using test::patience;
using test::press;

namespace {

constexpr int windowFrame = 8; // Pixels by which a frame may move a window.
constexpr const char* essential =
    "which is essential for correct operation of the tour, and cannot be overwritten or replaced.";

QLabel& label(QDialog& dialog, const char* name) {
    return *dialog.findChild<QLabel*>(QLatin1String(name));
}

QLineEdit& nameField(QDialog& dialog) {
    return *dialog.findChild<QLineEdit*>("txtFile");
}

/// Shows the rename dialog for a name and returns what it leaves as its answer.
QString renamed(const std::string& name, std::function<void(QDialog&)> act, const std::string& reason = {}) {
    onNextDialog(std::move(act));
    frmRenameFile dialog(name, reason);
    runDialog(dialog);
    return QString::fromStdString(dialog.dialogAnswer());
}

} // namespace

class SmallDialogsTest final : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { QCOMPARE(test::dialogsExpected(), 0); }

    // The rename dialog

    void renameDialogShowsTheNameAndTheReason() {
        const auto look = [](QDialog& dialog) {
            QCOMPARE(dialog.objectName(), QString("frmRenameFile"));
            QCOMPARE(dialog.windowTitle(), QString("Wendmark - Rename Local File"));
            QVERIFY(dialog.isModal());
            QCOMPARE(label(dialog, "Label1").text(),
                     QString("Wendmark tried to copy the file you selected into the tour folder, but there "
                             "is already a file in that folder called:"));
            QCOMPARE(label(dialog, "lblFile").text(), QString("fr-logo.gif"));
            QCOMPARE(label(dialog, "Label2").text(), QString(essential));
            QVERIFY(label(dialog, "Label2").isVisible());
            QCOMPARE(label(dialog, "Label3").text(),
                     QString("Please type in a new name for the file, so that selected file can be saved "
                             "under this new name."));
            QCOMPARE(dialog.findChild<QPushButton*>("CancelButton")->text(), QString("Cancel"));
            QVERIFY(dialog.findChild<QPushButton*>("OKButton")->isDefault());
            QVERIFY(dynamic_cast<frmRenameFile&>(dialog).dialogAnswer().empty());
            dialog.close();
        };
        renamed("fr-logo.gif", look, essential);
    }

    void renameDialogTakesNoPlaceForAReasonThatThereIsNot() {
        renamed("notes.htm", [](QDialog& dialog) {
            QCOMPARE(label(dialog, "Label2").text(), QString());
            QVERIFY(!label(dialog, "Label2").isVisible());
            dialog.close();
        });
    }

    void renameDialogOpensInTheMiddleWithTheNameReadyToBeTypedOver() {
        const QString answer = renamed("notes.htm", [](QDialog& dialog) {
            QTRY_VERIFY_WITH_TIMEOUT(hasKeys(dialog), patience);
            const QPoint off = dialog.geometry().center() - dialog.screen()->availableGeometry().center();
            QVERIFY2(off.manhattanLength() <= windowFrame,
                     qPrintable(QString::number(off.manhattanLength())));
            QCOMPARE(nameField(dialog).text(), QString("notes.htm"));
            QVERIFY(nameField(dialog).hasFocus());
            QTest::keyClicks(&nameField(dialog), "Other.HTM");
            QTest::keyClick(&nameField(dialog), Qt::Key_Return);
        });
        QCOMPARE(answer, QString("Other.HTM"));
    }

    void renameDialogAnswersWhatWasTyped_data() {
        QTest::addColumn<QString>("typed");
        QTest::newRow("name") << "other.htm";
        QTest::newRow("blanks kept") << "  my notes.htm ";
        QTest::newRow("not ASCII") << QString::fromUtf8("Äpfel→😀.gif");
        QTest::newRow("nothing") << "";
    }
    void renameDialogAnswersWhatWasTyped() {
        QFETCH(QString, typed);
        const QString answer = renamed("notes.htm", [&](QDialog& dialog) {
            nameField(dialog).setText(typed);
            press(dialog, "OKButton");
        });
        QCOMPARE(answer, typed);
    }

    void renameDialogThatIsCancelledAnswersNothing_data() {
        QTest::addColumn<QString>("way");
        for (const char* way : {"CancelButton", "close box", "Esc"})
            QTest::newRow(way) << QString(way);
    }
    void renameDialogThatIsCancelledAnswersNothing() {
        QFETCH(QString, way);
        const QString answer = renamed("notes.htm", [&](QDialog& dialog) {
            nameField(dialog).setText("other.htm");
            if (way == "CancelButton")
                press(dialog, way);
            else if (way == "Esc")
                QTest::keyClick(&dialog, Qt::Key_Escape);
            else
                dialog.close();
        });
        QCOMPARE(answer, QString());
    }

    void renameDialogTakesNoMarkUpInNames() {
        renamed("<b>&amp;.gif", [](QDialog& dialog) {
            QCOMPARE(label(dialog, "lblFile").textFormat(), Qt::PlainText);
            QCOMPARE(nameField(dialog).text(), QString("<b>&amp;.gif"));
            dialog.close();
        });
    }

    // The message window

    void messageWindowShowsItsTextUntilOkIsPressed() {
        const QString text = "Test Timed out.... try again later \r\n\r\n";
        onNextDialog([&](QDialog& dialog) {
            QCOMPARE(dialog.objectName(), QString("frmMessage"));
            QCOMPARE(dialog.windowTitle(), QString("Wendmark - Frame Test"));
            QVERIFY(dialog.isModal());
            QCOMPARE(label(dialog, "Label1").text(), text);
            QCOMPARE(label(dialog, "Label1").textFormat(), Qt::PlainText);
            QCOMPARE(dialog.findChild<QPushButton*>("OKButton")->text(), QString("OK"));
            press(dialog, "OKButton");
            QVERIFY(!dialog.isVisible());
        });
        frmMessage message("Wendmark - Frame Test", text);
        runDialog(message);
    }

    void returnClosesTheMessageWindow() {
        onNextDialog([](QDialog& dialog) {
            QTRY_VERIFY_WITH_TIMEOUT(hasKeys(dialog), patience);
            QTest::keyClick(dialog.windowHandle(), Qt::Key_Return);
            QVERIFY(!dialog.isVisible());
        });
        frmMessage message("Caption", "Text");
        runDialog(message);
    }
};

} // namespace wendmark

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    wendmark::SmallDialogsTest tests;
    return QTest::qExec(&tests, argc, argv);
}

#include "SmallDialogsTest.moc"
