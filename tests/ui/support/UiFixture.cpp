#include "ui/support/UiFixture.h"

#include "platform/BrowserView.h"
#include "platform/Strings.h"
#include "publish/TourCommands.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QDialog>
#include <QDir>
#include <QEventLoop>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <QWebEngineProfile>
#include <deque>
#include <filesystem>

namespace wendmark::test {

namespace {

namespace fs = std::filesystem;

std::deque<std::function<void(QDialog&)>>& expectedAnswers() {
    static std::deque<std::function<void(QDialog&)>> answers;
    return answers;
}

constexpr int pollInterval = 10;     // Milliseconds.
constexpr int dialogPatience = 1000; // Polls.

void answerWhenShown(int pollsLeft) {
    auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    static QPointer<QDialog> answered;
    if (dialog == nullptr || !dialog->isVisible() || dialog == answered) {
        if (pollsLeft == 0)
            QFAIL("the dialog that the test expects does not come");
        QTimer::singleShot(pollInterval, qApp, [pollsLeft] { answerWhenShown(pollsLeft - 1); });
        return;
    }
    answered = dialog;
    const std::function<void(QDialog&)> answer = std::move(expectedAnswers().front());
    expectedAnswers().pop_front();
    if (!expectedAnswers().empty())
        QTimer::singleShot(pollInterval, qApp, [] { answerWhenShown(dialogPatience); });
    answer(*dialog);
}

/// Builds script lines that readScript() understands.
std::string scriptOf(int stopCount) {
    std::string script = "<<<VoskInfo>>>#BufferDelay = 30\r\n\r\nTest tour\r\n\r\n";
    for (int n = 1; n <= stopCount; ++n) {
        const std::string number = std::to_string(n);
        script += "<<<VoskInfo>>> Stop" + number + "\r\nStop " + number +
                  "\r\nnewpage.htm\r\n\r\nWords of stop " + number + ".\r\n\r\n<!--instruction-->\r\n\r\n";
    }
    return script;
}

} // namespace

UiFixture::UiFixture()
    : desktop([this] { return m_seconds += clockStep; })
    , settings(path(QStringLiteral("settings.ini")))
    , registry(path(QStringLiteral("registry.ini")))
    , workspace(WorkspaceFolders::inside(scratch.path()), model, handOver, desktop, log)
    , tour{model, workspace, desktop, log}
    , profile(makeBrowserProfile(nullptr))
    , recoveryStore(scratch / "state/recovery", log)
    , recovery(tour, recoveryStore) {
    fs::copy(WENDMARK_ASSETS "/Template", scratch / "Template");
    fs::copy(WENDMARK_ASSETS "/MyTours", scratch / "MyTours", fs::copy_options::recursive);
    startProgram(tour, handOver, options);
    QObject::connect(&desktop, &QtDesktop::beeped, &desktop, [this] { ++beeps; });
}

UiFixture::~UiFixture() {
    expectedAnswers().clear();
}

ProgramParts UiFixture::parts() {
    return {
        tour, handOver, options, desktop, settings, registry, *profile, recovery, scratch / "state/scripts"};
}

QString UiFixture::makeTour(const QString& name, int stopCount) {
    const QString folder = path(QStringLiteral("MyTours/") + name);
    writeFile(toUtf8(folder) + "/script.txt", scriptOf(stopCount));
    return folder;
}

QString UiFixture::path(const QString& nameInApplicationFolder) const {
    return toQString(scratch.path()) + QLatin1Char('/') + nameInApplicationFolder;
}

QStringList UiFixture::filesOf(const QString& folder) const {
    return QDir(path(folder)).entryList(QDir::Files, QDir::Name);
}

bool waitUntil(const std::function<bool()>& condition, int patience) {
    const QDeadlineTimer deadline(patience);
    QEventLoop loop;
    QTimer poll;
    poll.callOnTimeout([&] {
        if (condition() || deadline.hasExpired())
            loop.quit();
    });
    poll.start(1);
    if (!condition())
        loop.exec();
    return condition();
}

void onNextDialog(std::function<void(QDialog&)> answer) {
    expectedAnswers().push_back(std::move(answer));
    if (expectedAnswers().size() == 1)
        QTimer::singleShot(0, qApp, [] { answerWhenShown(dialogPatience); });
}

int dialogsExpected() {
    return static_cast<int>(expectedAnswers().size());
}

void press(QDialog& dialog, const QString& button) {
    auto* found = dialog.findChild<QPushButton*>(button);
    for (QPushButton* candidate : dialog.findChildren<QPushButton*>()) {
        if (found == nullptr && candidate->text().remove(QLatin1Char('&')) == button)
            found = candidate;
    }
    QVERIFY2(found != nullptr, qPrintable(QStringLiteral("no button ") + button));
    QTest::mouseClick(found, Qt::LeftButton);
}

void selectFolder(QDialog& dialog, const QString& path) {
    auto* const tree = dialog.findChild<QTreeView*>(QStringLiteral("Dir1"));
    auto* const model = tree->model();
    QModelIndex index;
    QModelIndex parent = tree->rootIndex();
    const QString root = parent.data(Qt::UserRole + 1).toString(); // The file system model's path role.
    const QStringList steps = QDir(root).relativeFilePath(path).split(QLatin1Char('/'));
    for (const QString& step : steps) {
        QTRY_VERIFY_WITH_TIMEOUT(
            [&] {
                if (model->canFetchMore(parent))
                    model->fetchMore(parent);
                const QModelIndexList found = model->match(model->index(0, 0, parent), Qt::DisplayRole, step,
                                                           1, Qt::MatchExactly | Qt::MatchCaseSensitive);
                index = found.value(0);
                return index.isValid();
            }(),
            5000);
        parent = index;
    }
    tree->setCurrentIndex(index);
    QCOMPARE(dialog.findChild<QLabel*>(QStringLiteral("lblTourPath"))->text(), path);
}

QString textOf(QDialog& dialog) {
    auto* const box = qobject_cast<QMessageBox*>(&dialog);
    return box == nullptr ? dialog.windowTitle() : box->windowTitle() + QLatin1Char('|') + box->text();
}

} // namespace wendmark::test
