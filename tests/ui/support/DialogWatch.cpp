#include "ui/support/DialogWatch.h"

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <deque>
#include <utility>

namespace wendmark::test {

namespace {

constexpr int lookInterval = 10; // Milliseconds.
constexpr int usualPatience = 12'000;

int& patience() {
    static int looks = usualPatience;
    return looks;
}

std::deque<std::function<void(QDialog&)>>& expectedAnswers() {
    static std::deque<std::function<void(QDialog&)>> answers;
    return answers;
}

QDialog* openDialog() {
    auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    return dialog != nullptr && dialog->isVisible() ? dialog : nullptr;
}

void fail(const QString& message) {
    QTest::qFail(qPrintable(message), __FILE__, __LINE__);
}

/// Some dialogs refuse to be rejected, or ask before; none refuses to be done.
void reject(QDialog& dialog) {
    const QPointer<QDialog> rejected = &dialog;
    dialog.reject();
    if (!rejected.isNull() && rejected->isVisible())
        rejected->QDialog::done(QDialog::Rejected);
}

void look() {
    static QPointer<QDialog> watched;
    static int looks = 0;
    QDialog* const dialog = openDialog();
    looks = dialog != nullptr && dialog == watched ? looks + 1 : 0;
    watched = dialog;
    if (looks > patience() && !QTest::currentTestFailed())
        fail(QStringLiteral("the dialog \"%1\" is not closed").arg(dialog->windowTitle()));
    if (dialog != nullptr && QTest::currentTestFailed())
        reject(*dialog);
}

/// Not by a timer that repeats: such a one does not come while it is answered, and what is rejected may ask.
void lookAgainAndAgain() {
    QTimer::singleShot(lookInterval, qApp, lookAgainAndAgain);
    look();
}

void answerWhenShown(int looksLeft) {
    if (looksLeft == 0)
        fail(QStringLiteral("the dialog that the test expects does not come"));
    if (QTest::currentTestFailed())
        expectNoDialogs();
    if (expectedAnswers().empty())
        return;
    QDialog* const dialog = openDialog();
    static QPointer<QDialog> answered;
    if (dialog == nullptr || dialog == answered) {
        QTimer::singleShot(lookInterval, qApp, [looksLeft] { answerWhenShown(looksLeft - 1); });
        return;
    }
    answered = dialog;
    const std::function<void(QDialog&)> answer = std::move(expectedAnswers().front());
    expectedAnswers().pop_front();
    if (!expectedAnswers().empty())
        QTimer::singleShot(lookInterval, qApp, [] { answerWhenShown(patience()); });
    answer(*dialog);
}

} // namespace

void onNextDialog(std::function<void(QDialog&)> answer) {
    watchDialogs();
    expectedAnswers().push_back(std::move(answer));
    if (expectedAnswers().size() == 1)
        QTimer::singleShot(0, qApp, [] { answerWhenShown(patience()); });
}

int dialogsExpected() {
    return static_cast<int>(expectedAnswers().size());
}

void expectNoDialogs() {
    expectedAnswers().clear();
}

void watchDialogs() {
    static QPointer<QCoreApplication> watched;
    if (std::exchange(watched, qApp) != qApp)
        lookAgainAndAgain();
}

void setDialogPatience(int looks) {
    patience() = looks;
}

} // namespace wendmark::test
