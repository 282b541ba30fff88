#include "commands/TourDocument.h"
#include "platform/Gate.h"
#include "platform/SingleProgram.h"
#include "platform/Strings.h"
#include "platform/TourArguments.h"
#include "support/ScratchFolder.h"
#include "ui/dialogs/FolderEntry.h"
#include "ui/main/FileCommands.h"
#include "ui/main/frmMain.h"
#include "ui/support/Patience.h"
#include "ui/support/UiFixture.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QLocalServer>
#include <QLocalSocket>
#include <QLockFile>
#include <QSignalSpy>
#include <QTest>
#include <QUrl>
#include <filesystem>
#include <memory>

namespace wendmark {

using test::onNextDialog;
using test::patience;
using test::press;
using test::UiFixture;

namespace {

namespace fs = std::filesystem;

/// The program with the tour "one" on screen, and a tour "two" beside it.
struct Program {
    Program() : window(parts.parts()) {
        one = parts.makeTour(QStringLiteral("one"), 1);
        two = parts.makeTour(QStringLiteral("D\u00fcne & 2"), 2);
        window.load(one);
        window.show();
    }

    void handOver(const QStringList& tours) { window.files().takeTours(tours); }
    QString openTour() const { return toQString(parts.workspace.tourPath()); }

    UiFixture parts;
    QString one;
    QString two;
    frmMain window;
};

/// The current folder, for as long as this lives.
class CurrentFolder final {
public:
    explicit CurrentFolder(const std::string& path) { QDir::setCurrent(toQString(path)); }
    ~CurrentFolder() { QDir::setCurrent(m_former); }
    Q_DISABLE_COPY_MOVE(CurrentFolder)

private:
    QString m_former = QDir::currentPath();
};

} // namespace

class HandOverTest final : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { QCOMPARE(test::dialogsExpected(), 0); }

    // What a command line names

    void toursAreNamedInManyWays_data() {
        QTest::addColumn<QString>("argument");
        QTest::newRow("folder") << "%1/D\u00fcne & 2";
        QTest::newRow("separators at the end") << "%1/D\u00fcne & 2//";
        QTest::newRow("dots") << "%1/./x/../D\u00fcne & 2/.";
        QTest::newRow("script") << "%1/D\u00fcne & 2/script.txt";
        QTest::newRow("relative") << "D\u00fcne & 2";
        QTest::newRow("relative script") << "./D\u00fcne & 2/script.txt";
        QTest::newRow("address") << "file://%1/D%C3%BCne%20&%202";
        QTest::newRow("address with a separator at the end") << "file://%1/D%C3%BCne%20%26%202/";
        QTest::newRow("address of the script") << "FILE://localhost%1/D%C3%BCne%20&%202/script.txt";
        QTest::newRow("address with one separator") << "file:%1/D\u00fcne & 2";
    }
    void toursAreNamedInManyWays() {
        QFETCH(QString, argument);
        const test::ScratchFolder scratch;
        const std::string tour = scratch / "D\u00fcne & 2";
        test::writeFile(tour + "/script.txt", "");
        const CurrentFolder current(scratch.path());
        QCOMPARE(toursFrom({argument.replace("%1", toQString(scratch.path()))}),
                 QStringList{toQString(tour)});
    }

    void whatIsNoTourIsNamedAllTheSame() {
        const test::ScratchFolder scratch;
        const CurrentFolder current(scratch.path());
        const QString here = toQString(scratch.path());
        QCOMPARE(toursFrom({}), QStringList());
        QCOMPARE(toursFrom({""}), QStringList());
        QCOMPARE(toursFrom({"missing", "/", "."}), (QStringList{here + "/missing", "/", here}));
        QCOMPARE(toursFrom({"file://elsewhere.example/tours/a"}).size(), qsizetype(1));
        fs::create_directories(scratch / "file:a");
        QCOMPARE(toursFrom({"file:a"}), QStringList{here + "/file:a"});
    }

    // Two programs

    void toursGoToTheFirstProgram_data() {
        QTest::addColumn<bool>("inFolder");
        QTest::newRow("in the user's folder") << true;
        QTest::newRow("in a folder that takes no socket") << false;
    }
    void toursGoToTheFirstProgram() {
        QFETCH(bool, inFolder);
        const test::ScratchFolder scratch;
        const QString sockets = toQString(scratch / (inFolder ? "" : "missing"));
        SingleProgram first(toQString(scratch.path()), sockets);
        QVERIFY(enterFolder(first));
        QCOMPARE(QDir(sockets).entryList({"wendmark-*"}, QDir::System).size(), qsizetype(inFolder ? 1 : 0));
        const QSignalSpy woken(&first, &SingleProgram::activationRequested);
        const QStringList tours = {"/tours/D\u00fcne & 2", "/with\nline %20", "/\u2192"};
        SingleProgram second(toQString(scratch.path()), sockets);
        QVERIFY(!enterFolder(second, tours));
        QVERIFY(!enterFolder(second));
        QCOMPARE(woken.count(), 2);
        QCOMPARE(first.takeTours(), tours);
        QCOMPARE(first.takeTours(), QStringList());
    }

    void onlyTheUserFindsTheFirstProgram() {
        const test::ScratchFolder scratch;
        SingleProgram first(toQString(scratch.path()), toQString(scratch.path()));
        QVERIFY(enterFolder(first));
        const QFileInfoList sockets =
            QDir(toQString(scratch.path())).entryInfoList({"wendmark-*"}, QDir::System);
        QCOMPARE(sockets.size(), qsizetype(1));
        const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
        QVERIFY(!(sockets.first().permissions() & others));
    }

    void requestInPiecesIsUnderstoodAndNonsenseIsNot() {
        const test::ScratchFolder scratch;
        SingleProgram first(toQString(scratch.path()), toQString(scratch.path()));
        QVERIFY(enterFolder(first));
        const QString name =
            QDir(toQString(scratch.path())).entryInfoList({"wendmark-*"}, QDir::System).first().filePath();
        QLocalSocket slow;
        slow.connectToServer(name);
        slow.write("open /tou");
        slow.flush();
        QLocalSocket silent; // Which holds nobody up.
        silent.connectToServer(name);
        for (const QByteArray& nonsense : {QByteArray("GET / HTTP/1.0\n"), QByteArray(3 << 20, 'o')}) {
            QLocalSocket wrong;
            wrong.connectToServer(name);
            wrong.write(nonsense);
            QVERIFY(test::waitUntil([&] { return wrong.state() == QLocalSocket::UnconnectedState; }));
            QCOMPARE(wrong.readAll(), QByteArray());
        }
        QCOMPARE(first.takeTours(), QStringList());
        slow.write("rs/a%20b\n");
        QVERIFY(test::waitUntil([&] { return slow.bytesAvailable() > 0; }));
        QCOMPARE(first.takeTours(), QStringList{"/tours/a b"});
    }

    void whoHasGivenUpIsNotObeyed() {
        const test::ScratchFolder scratch;
        SingleProgram first(toQString(scratch.path()), toQString(scratch.path()));
        QVERIFY(enterFolder(first));
        const QSignalSpy woken(&first, &SingleProgram::activationRequested);
        {
            QLocalSocket impatient;
            impatient.connectToServer(QDir(toQString(scratch.path()))
                                          .entryInfoList({"wendmark-*"}, QDir::System)
                                          .first()
                                          .filePath());
            impatient.write("open /tours/a\n");
            impatient.flush();
        }
        SingleProgram second(toQString(scratch.path()), toQString(scratch.path()));
        QVERIFY(!enterFolder(second, {"/tours/b"})); // Is answered after the other one.
        QCOMPARE(first.takeTours(), QStringList{"/tours/b"});
        QCOMPARE(woken.count(), 1);
    }

    void programThatHangsIsToldWithTheTour() {
        const test::ScratchFolder scratch;
        QLockFile hanging(toQString(scratch / ".wendmark.lock"));
        QVERIFY(hanging.tryLock(0));
        QLocalServer neverAnswers; // The system accepts connections for it.
        SingleProgram second(toQString(scratch.path()), toQString(scratch.path()));
        QString name;
        {
            const test::ScratchFolder other;
            fs::create_directory_symlink(scratch.path(), other / "link");
            SingleProgram probe(toQString(other / "link"), toQString(other.path()));
            probe.goOnWithoutLock(); // Finds out the name.
            name = QDir(toQString(other.path())).entryList({"wendmark-*"}, QDir::System).first();
        }
        QVERIFY(neverAnswers.listen(toQString(scratch.path()) + "/" + name));
        second.patience = 100;
        onNextDialog([](QDialog& message) {
            QVERIFY(test::textOf(message).contains("does not answer"));
            QVERIFY(test::textOf(message).endsWith("Not opened: /tours/a"));
            press(message, "Quit");
        });
        QVERIFY(!enterFolder(second, {"/tours/a", "/tours/b"}));
    }

    void programThatEndsIsWaitedForAndReplaced() {
        const test::ScratchFolder scratch;
        auto first = std::make_unique<SingleProgram>(toQString(scratch.path()), toQString(scratch.path()));
        QVERIFY(enterFolder(*first));
        Gate gate;
        connect(&gate, &Gate::closedForGood, first.get(), &SingleProgram::leave);
        gate.shut(gate);
        SingleProgram second(toQString(scratch.path()), toQString(scratch.path()));
        second.patience = patience;
        QTimer::singleShot(0, first.get(), [&] { first.reset(); });
        QCOMPARE(second.enter({"/tours/a"}), SingleProgram::Entry::first);
    }

    void socketThatWasLeftBehindIsReplaced() {
        const test::ScratchFolder scratch;
        const QString folder = toQString(scratch.path());
        {
            SingleProgram crashed(folder, folder);
            QVERIFY(enterFolder(crashed));
            const QString name = QDir(folder).entryInfoList({"wendmark-*"}, QDir::System).first().filePath();
            fs::rename(toUtf8(name), toUtf8(name) + ".kept");
        }
        const QString kept = QDir(folder).entryInfoList({"*.kept"}, QDir::System).first().filePath();
        fs::rename(toUtf8(kept), toUtf8(kept.chopped(5)));
        SingleProgram first(folder, folder);
        QVERIFY(enterFolder(first));
        SingleProgram second(folder, folder);
        QVERIFY(!enterFolder(second, {"/tours/a"}));
        QCOMPARE(first.takeTours(), QStringList{"/tours/a"});
    }

    // In the running program

    void tourThatIsHandedOverOpensAsOneStep() {
        Program program;
        program.handOver({program.two});
        QCOMPARE(program.openTour(), program.two);
        QCOMPARE(program.parts.document.undoName().value_or(""), std::string("Open Tour"));
        QCOMPARE(test::noticeOf(program.window), QString());
        program.parts.document.undo();
        QCOMPARE(program.openTour(), program.one);
    }

    void unsavedChangesAreAskedAbout() {
        Program program;
        program.parts.document.markChanged();
        for (const char* answer : {"No", "Yes"}) {
            QCOMPARE(program.openTour(), program.one);
            onNextDialog([answer](QDialog& question) {
                QVERIFY(test::textOf(question).contains("Do you really want to open a new tour"));
                press(question, answer);
            });
            program.handOver({program.two});
            if (*answer == 'N')
                QCOMPARE(test::noticeOf(program.window), "Not opened: " + program.two);
        }
        QCOMPARE(program.openTour(), program.two);
    }

    void tourThatIsOpenAlreadyStaysAsItIs() {
        Program program;
        program.window.insertStop();
        program.parts.document.markChanged();
        program.handOver({program.one + "/../one"});
        QCOMPARE(program.parts.model.stopCount(), 2);
        QCOMPARE(test::noticeOf(program.window), QString("This tour is open already."));
    }

    void furtherToursAreNamed() {
        Program program;
        program.handOver({program.two, program.one, "/tours/\u202ec\nd"});
        QCOMPARE(program.openTour(), program.two);
        const QString text =
            "One tour is open at a time. Not opened: " + program.one + ", /tours/\uFFFDc\uFFFDd";
        QCOMPARE(test::noticeOf(program.window), text);
        QVERIFY(program.parts.log.notes.back().starts_with(
            toUtf8("One tour is open at a time. Not opened: " + program.one)));
    }

    void pathThatIsNoTourIsTold() {
        Program program;
        program.parts.document.markChanged();
        const QString missing = program.parts.path("MyTours/missing");
        onNextDialog([](QDialog& message) {
            QCOMPARE(test::textOf(message),
                     QString("Wendmark: Defective Tour Folder|The selected folder does "
                             "not contain all necessary tour files"));
            press(message, "OK");
        });
        program.handOver({missing});
        QCOMPARE(test::noticeOf(program.window), "Not opened: " + missing);
        onNextDialog([](QDialog& message) {
            QVERIFY(test::textOf(message).contains("The 'Template' folder is used for internal operations"));
            press(message, "OK");
        });
        program.handOver({program.parts.path("Template")});
        QCOMPARE(program.openTour(), program.one);
    }

    void tourWaitsForTheDialogThatIsOpen() {
        Program program;
        onNextDialog([&](QDialog& dialog) {
            program.handOver({program.two});
            QCOMPARE(program.openTour(), program.one);
            QCOMPARE(test::noticeOf(program.window),
                     program.two + " opens when the present command has ended.");
            dialog.reject();
        });
        program.window.findChild<QAction*>("mnuEditProperties")->trigger();
        QVERIFY(test::waitUntil([&] { return program.openTour() == program.two; }));
        QCOMPARE(test::noticeOf(program.window), QString());
    }

    void wizardGivesWayOnItsFirstPageOnly() {
        UiFixture parts;
        const QString tour = parts.makeTour("one", 1);
        frmMain window(parts.parts());
        onNextDialog([&](QDialog& wizard) { // Has nothing to lose.
            QCOMPARE(wizard.objectName(), QString("frmWizard1"));
            window.files().takeTours({tour});
        });
        window.load();
        window.show();
        QVERIFY(test::waitUntil([&] { return parts.workspace.tourPath() == toUtf8(tour); }));
        onNextDialog([&](QDialog& wizard) { // Here the author has begun to type.
            window.files().takeTours({parts.path("MyTours/Sample")});
            QVERIFY(wizard.isVisible());
            wizard.reject();
        });
        window.newTour();
        QVERIFY(test::waitUntil([&] { return parts.workspace.tourPath() != toUtf8(tour); }));
    }
};

} // namespace wendmark

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    wendmark::HandOverTest tests;
    return QTest::qExec(&tests, argc, argv);
}

#include "HandOverTest.moc"
