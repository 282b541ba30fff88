#include "ui/support/UiFixture.h"

#include "platform/BrowserView.h"
#include "platform/Strings.h"
#include "ui/support/Patience.h"

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
#include <QWebEngineView>
#include <filesystem>
#include <utility>

namespace wendmark::test {

namespace {

namespace fs = std::filesystem;

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

UiFixture::UiFixture(std::shared_ptr<ScratchFolder> folder, Time time)
    : applicationFolder(std::move(folder))
    , scratch(*applicationFolder)
    , desktop(gate, time == Time::real ? realClock() : Clock([this] { return m_seconds += clockStep; }),
              [this] { return stepClock(); })
    , settings(path(QStringLiteral("settings.ini")))
    , registry(path(QStringLiteral("registry.ini")))
    , document(WorkspaceFolders::inside(scratch.path()), desktop, log, scratch / "state/undo")
    , model(TourDocumentAccess::model(document))
    , workspace(TourDocumentAccess::workspace(document))
    , tour(TourDocumentAccess::context(document))
    , profile(makeBrowserProfile(nullptr))
    , recoveryStore(scratch / "state/recovery", log)
    , recovery(document, recoveryStore)
    , fileNames(workspace)
    , htmlEditor(options, log)
    , spelling(log)
    , check(document, settings) {
    watchDialogs();
    if (!fs::exists(scratch / "Template")) {
        fs::copy(WENDMARK_ASSETS "/Template", scratch / "Template");
        fs::copy(WENDMARK_ASSETS "/MyTours", scratch / "MyTours", fs::copy_options::recursive);
    }
    document.startProgram(options);
    QObject::connect(&desktop, &QtDesktop::beeped, &desktop, [this] { ++beeps; });
}

UiFixture::~UiFixture() {
    expectNoDialogs();
}

ProgramParts UiFixture::parts() {
    return {document,
            gate,
            options,
            desktop,
            settings,
            registry,
            *profile,
            recovery,
            fileNames,
            htmlEditor,
            spelling,
            check,
            scratch / "state/scripts"};
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

bool waitUntil(const std::function<bool()>& condition, int milliseconds) {
    const QDeadlineTimer deadline(milliseconds);
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

void fireClocks(const QWidget& window, int longest) {
    for (QTimer* const timer : window.findChildren<QTimer*>()) {
        if (!timer->isActive() || timer->isSingleShot() || timer->interval() > longest)
            continue;
        QTimerEvent event(timer->timerId());
        QCoreApplication::sendEvent(timer, &event);
    }
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

QWebEngineView& engineOf(const BrowserView& browser) {
    return *browser.findChild<QWebEngineView*>();
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
            patience);
        parent = index;
    }
    tree->setCurrentIndex(index);
    QCOMPARE(dialog.findChild<QLabel*>(QStringLiteral("lblTourPath"))->text(), path);
}

QString noticeOf(const QWidget& window) {
    const auto* const notice = window.findChild<QLabel*>(QStringLiteral("Notice"));
    return notice->isVisible() ? notice->text() : QString();
}

QString textOf(QDialog& dialog) {
    auto* const box = qobject_cast<QMessageBox*>(&dialog);
    return box == nullptr ? dialog.windowTitle() : box->windowTitle() + QLatin1Char('|') + box->text();
}

} // namespace wendmark::test
