// Tests that fail while dialogs are open. DialogWatchTest runs them one by one and looks at how they end.
#include "ui/support/UiFixture.h"

#include <QMessageBox>
#include <QTest>
#include <QTimer>

namespace wendmark {

using test::onNextDialog;

namespace {

/// Asks a question before it goes away, and stays when the answer is no.
class StubbornDialog final : public QDialog {
public:
    void reject() override {
        if (QMessageBox::question(this, QStringLiteral("Question"), QStringLiteral("Really?")) ==
            QMessageBox::Yes)
            QDialog::reject();
    }
};

void showMessage(const QString& text) {
    QMessageBox box(QMessageBox::Warning, QStringLiteral("Wendmark"), text, QMessageBox::Ok);
    box.exec();
}

} // namespace

class UnansweredDialogs final : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { test::watchDialogs(); }
    void cleanup() { test::expectNoDialogs(); }

    void failedComparison() {
        onNextDialog([](QDialog& dialog) {
            QCOMPARE(test::textOf(dialog), QString("Wendmark|other words"));
            dialog.accept();
        });
        showMessage("words");
    }

    void failedComparisonInADialogOfADialog() {
        onNextDialog([](QDialog&) { showMessage("inner"); });
        onNextDialog([](QDialog& dialog) {
            QCOMPARE(test::textOf(dialog), QString("Wendmark|other words"));
            dialog.accept();
        });
        showMessage("outer");
    }

    void missingButton() {
        onNextDialog([](QDialog& dialog) { test::press(dialog, "Perhaps"); });
        showMessage("words");
    }

    void dialogThatComesAfterTheFailure() {
        onNextDialog([](QDialog& dialog) { QCOMPARE(test::textOf(dialog), QString("other words")); });
        showMessage("first");
        showMessage("second");
    }

    void dialogThatRefusesToClose() {
        onNextDialog([](QDialog& dialog) { QCOMPARE(dialog.windowTitle(), QString("other words")); });
        StubbornDialog dialog;
        dialog.exec();
    }

    void expectedDialogDoesNotCome() {
        test::setDialogPatience(5);
        onNextDialog([](QDialog&) {});
        onNextDialog([](QDialog& dialog) { dialog.accept(); });
        showMessage("the only one");
    }

    void dialogThatNobodyExpects() {
        test::setDialogPatience(5);
        showMessage("words");
    }

    void nothingFails() {
        onNextDialog([](QDialog& dialog) { dialog.accept(); });
        showMessage("words");
    }
};

} // namespace wendmark

QTEST_MAIN(wendmark::UnansweredDialogs)
#include "unanswered_dialogs.moc"
