#include "platform/ApplicationFolder.h"
#include "platform/FileLog.h"
#include "platform/Icons.h"
#include "platform/Registry.h"
#include "platform/SettingsStore.h"
#include "platform/SingleProgram.h"
#include "platform/Strings.h"
#include "support/ScratchFolder.h"
#include "ui/dialogs/FolderEntry.h"
#include "ui/dialogs/frmAbout.h"
#include "ui/dialogs/frmSplash.h"
#include "ui/support/LockFile.h"
#include "ui/support/Patience.h"
#include "ui/support/UiFixture.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QLocale>
#include <QLockFile>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <filesystem>
#include <vector>

namespace wendmark {

using test::leaveForeignLock;
using test::LockFile;
using test::lockIn;
using test::onNextDialog;
using test::patience;

namespace {

constexpr int mostProcesses = 1 << 22; // Linux counts its processes no further.

} // namespace

class PlatformTest final : public QObject {
    Q_OBJECT

private slots:
    void booleansAreReadInAnyUsualSpelling_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("value");
        for (const char* yes : {"True", "true", " YES ", "on", "-1", "1", "#TRUE#"})
            QTest::newRow(yes) << QString(yes) << true;
        for (const char* no : {"False", "FALSE", "no", "Off", "0"})
            QTest::newRow(no) << QString(no) << false;
    }

    void booleansAreReadInAnyUsualSpelling() {
        QFETCH(QString, text);
        QFETCH(bool, value);
        QCOMPARE(booleanFromText(text, !value), value);
    }

    void otherTextsAreNoBooleans() {
        for (const char* text : {"", "maybe", "tru"}) {
            QVERIFY(booleanFromText(text, true));
            QVERIFY(!booleanFromText(text, false));
        }
    }

    void beginningOfATextEndsBetweenCharacters() {
        QCOMPARE(beginningOf("", 3), QString());
        QCOMPARE(beginningOf("abc", 3), QStringLiteral("abc"));
        QCOMPARE(beginningOf("abcd", 3), QStringLiteral("abc"));
        for (const char* character : {"\xc3\xa4", "\xe2\x86\x92"}) {
            const std::string text = std::string(character) + character + character + character;
            QCOMPARE(beginningOf(text, 3), toQString(text).left(3));
            QCOMPARE(beginningOf(text, 4), toQString(text));
        }
        QCOMPARE(beginningOf("\xf0\x9f\x8c\x8d\xf0\x9f\x8c\x8d", 4).size(), qsizetype(4));
        QCOMPARE(beginningOf("\xff\xfe\xfd", 2).size(), qsizetype(2));
    }

    void settingsSurviveTheStore() {
        const test::ScratchFolder scratch;
        const QString path = toQString(scratch / "settings.ini");
        SettingsStore(path).store(Setting<float>{"MainLeft", 0}, 1234.5F);
        SettingsStore(path).store(Setting<QString>{"HTMLEditor", {}}, "/opt/ed\u00efteur 100%");
        QCOMPARE(SettingsStore(path).read(Setting<float>{"MainLeft", 0}), 1234.5F);
        QCOMPARE(SettingsStore(path).read(Setting<QString>{"HTMLEditor", {}}),
                 QString("/opt/ed\u00efteur 100%"));
        QVERIFY(test::readFile(toUtf8(path)).find("[Settings]") != std::string::npos);
    }

    void registryGivesTextsAndNumbers() {
        const test::ScratchFolder scratch;
        test::writeFile(scratch / "machine.ini",
                        "[SOFTWARE]\nTool\\PATH=/usr/bin/info\nTool\\Count=dword:0000002a\n"
                        "Tool\\Long=" +
                            std::string(1025, 'x') + "\n");
        const Registry registry(toQString(scratch / "machine.ini"));
        const auto value = [&](const char* name) {
            return registry.GetKeyValue(RegistryRoot::localMachine, "SOFTWARE\\Tool", name);
        };
        QCOMPARE(value("PATH"), std::optional<QString>("/usr/bin/info"));
        QCOMPARE(value("Count"), std::optional<QString>("&h0000002a"));
        QCOMPARE(value("Long"), std::nullopt);
        QCOMPARE(value("Missing"), std::nullopt);
    }

    void logFileStaysBoundedWhileTheProgramRuns() {
        const test::ScratchFolder scratch;
        const std::string path = scratch / "wendmark.log";
        FileLog log(toQString(path));
        const std::string line(1000, 'x');
        const std::size_t linesOfThreeFiles = 3 * FileLog::longestFile / line.size();
        for (std::size_t n = 0; n < linesOfThreeFiles; ++n) {
            log.note(line);
            QVERIFY(std::filesystem::file_size(path) <= FileLog::longestFile);
        }
        log.note("the last one");
        QVERIFY(test::readFile(path).ends_with(" note: the last one\n"));
        QVERIFY(std::filesystem::file_size(path + ".1") <= FileLog::longestFile);
        QVERIFY(std::filesystem::file_size(path + ".1") > FileLog::longestFile - 2 * line.size());
        QCOMPARE(test::folderContents(scratch.path()).size(), std::size_t(2));
    }

    void logFileIsEmptiedWhenItCannotBeRenamed() {
        const test::ScratchFolder scratch;
        const std::string path = scratch / "wendmark.log";
        test::writeFile(path + ".1/in the way", "");
        test::writeFile(path, std::string(FileLog::longestFile, 'x'));
        FileLog(toQString(path)).note("fresh");
        QVERIFY(test::readFile(path).ends_with(" note: fresh\n"));
        QVERIFY(test::readFile(path).size() < 100);
    }

    void longLineOfTheLogIsCut() {
        const test::ScratchFolder scratch;
        FileLog log(toQString(scratch / "wendmark.log"));
        log.note(std::string(3 * FileLog::longestFile, 'x'));
        log.note("next");
        const std::string text = test::readFile(scratch / "wendmark.log");
        QVERIFY(text.size() < FileLog::longestLine + 200);
        QVERIFY(text.ends_with(" note: next\n"));
    }

    void logFileTakesEveryLineAndStartsAnewWhenLong() {
        const test::ScratchFolder scratch;
        const QString path = toQString(scratch / "wendmark.log");
        {
            FileLog log(path);
            log.note("a note");
            log.fail("a failure\nin two lines");
        }
        const std::string text = test::readFile(toUtf8(path));
        QVERIFY(text.find(" note: a note\n") != std::string::npos);
        QVERIFY(text.find(" failure: a failure\\x0Ain two lines\n") != std::string::npos);
        test::writeFile(toUtf8(path), std::string(2 << 20, 'x'));
        FileLog(path).note("fresh");
        QVERIFY(test::readFile(toUtf8(path)).size() < 1000);
        QVERIFY(test::exists(toUtf8(path) + ".1"));
    }

    void writableProgramFolderIsTheApplicationFolder() {
        const test::ScratchFolder scratch;
        const ApplicationFolder found =
            findApplicationFolder(toQString(scratch.path()), toQString(scratch / "data"));
        QCOMPARE(found.path, toQString(scratch.path()));
        QVERIFY(!test::exists(scratch / "data"));
    }

    void programFolderThatCannotBeWrittenIsCopiedForTheUser() {
        const test::ScratchFolder scratch;
        // /proc takes no files, whoever asks, so it stands for a folder that a package installed.
        const ApplicationFolder nowhere = findApplicationFolder("/proc", toQString(scratch / "data"));
        QCOMPARE(nowhere.path, toQString(scratch / "data/Wendmark"));
        QVERIFY(!nowhere.outcome.ok());
        QVERIFY(QDir(nowhere.path).exists());
    }

    void userFolderCanBeWrittenHoweverTheInstalledOneIsProtected() {
        namespace fs = std::filesystem;
        const test::ScratchFolder scratch;
        const std::string installed = scratch / "installed";
        for (const std::string file : {"Template/page.htm", "Help/index.htm", "MyTours/Sample/script.txt"}) {
            test::writeFile(installed + "/" + file, "installed");
            fs::permissions(installed + "/" + file, fs::perms(0444));
        }
        for (const std::string folder : {"Template", "MyTours/Sample", "MyTours"})
            fs::permissions(installed + "/" + folder, fs::perms(0555));
        const ApplicationFolder own = fillUserFolder(toQString(installed), toQString(scratch / "data"));
        QVERIFY2(own.outcome.ok(), own.outcome.message().c_str());
        for (const fs::directory_entry& copy : fs::recursive_directory_iterator(toUtf8(own.path)))
            QVERIFY2((copy.status().permissions() & fs::perms::owner_write) != fs::perms::none,
                     copy.path().c_str());
        QCOMPARE(test::readFile(toUtf8(own.path) + "/MyTours/Sample/script.txt"), std::string("installed"));
    }

    void updateBringsItsHelpAndLeavesTheAuthorsOwnFiles() {
        const test::ScratchFolder scratch;
        const std::string installed = scratch / "installed";
        const std::vector<std::string> names = {"Template/page.htm", "Help/index.htm",
                                                "MyTours/a/script.txt"};
        const auto install = [&](const std::string& version) {
            for (const std::string& name : names)
                test::writeFile(installed + "/" + name, version);
            return toUtf8(fillUserFolder(toQString(installed), toQString(scratch / "data")).path);
        };
        const std::string own = install("first");
        test::writeFile(own + "/Help/gone.htm", "of the first version");
        install("first");
        QVERIFY(test::exists(own + "/Help/gone.htm"));
        install("second");
        QCOMPARE(test::readFile(own + "/Help/index.htm"), std::string("second"));
        QVERIFY(!test::exists(own + "/Help/gone.htm"));
        QCOMPARE(test::readFile(own + "/Template/page.htm"), std::string("first"));
        QCOMPARE(test::readFile(own + "/MyTours/a/script.txt"), std::string("first"));
    }

    void secondProgramWakesTheFirst() {
        const test::ScratchFolder scratch;
        SingleProgram first(toQString(scratch.path()));
        QVERIFY(enterFolder(first));
        QSignalSpy woken(&first, &SingleProgram::activationRequested);
        SingleProgram second(toQString(scratch.path()));
        QVERIFY(!enterFolder(second));
        QCOMPARE(woken.count(), 1);
        QCOMPARE(second.enter(), SingleProgram::Entry::answered);
        QCOMPARE(woken.count(), 2);
        const test::ScratchFolder elsewhere;
        SingleProgram other(toQString(elsewhere.path()));
        QVERIFY(enterFolder(other));
    }

    void lockOfACrashedProgramIsTakenOverWithoutAWord_data() {
        QTest::addColumn<QByteArray>("lock");
        LockFile ended;
        ended.lines[0] = QByteArray::number(mostProcesses + 1);
        QTest::newRow("no such process") << ended.text();
        LockFile earlier;
        earlier.lines[4] = "11111111-2222-3333-4444-555555555555";
        QTest::newRow("before the machine was started anew") << earlier.text();
        QTest::newRow("copied with its folder while its program works elsewhere") << LockFile().text();
        QTest::newRow("cut short by a full disk") << QByteArray();
    }
    void lockOfACrashedProgramIsTakenOverWithoutAWord() {
        QFETCH(QByteArray, lock);
        const test::ScratchFolder scratch;
        test::writeFile(lockIn(scratch.path()), lock.toStdString());
        SingleProgram program(toQString(scratch.path()));
        program.patience = 1;
        QVERIFY(enterFolder(program));
        QVERIFY(QByteArray::fromStdString(test::readFile(lockIn(scratch.path()))) == LockFile().text());
        SingleProgram second(toQString(scratch.path()));
        QCOMPARE(second.enter(), SingleProgram::Entry::answered);
    }

    void lockOfAnotherMachineIsToldAndTakenOver() {
        const test::ScratchFolder scratch;
        leaveForeignLock(scratch.path());
        const QDateTime since = QFileInfo(toQString(lockIn(scratch.path()))).lastModified();
        SingleProgram program(toQString(scratch.path()));
        onNextDialog([&](QDialog& message) {
            const QString text = test::textOf(message);
            QVERIFY(text.contains("the computer \"attic\""));
            QVERIFY(text.contains(QLocale().toString(since, QLocale::ShortFormat)));
            QVERIFY(text.contains(toQString(scratch.path())));
            QCOMPARE(qobject_cast<QMessageBox*>(&message)->defaultButton()->text(), QString("&Quit"));
            test::press(message, "Go On Here");
        });
        QVERIFY(enterFolder(program));
        QCOMPARE(test::dialogsExpected(), 0);
        SingleProgram second(toQString(scratch.path()));
        QCOMPARE(second.enter(), SingleProgram::Entry::answered);
    }

    void programQuitsBeforeTheLockOfAnotherMachine_data() {
        QTest::addColumn<int>("key");
        QTest::newRow("Esc") << static_cast<int>(Qt::Key_Escape);
        QTest::newRow("Return") << static_cast<int>(Qt::Key_Return);
    }
    void programQuitsBeforeTheLockOfAnotherMachine() {
        QFETCH(int, key);
        const test::ScratchFolder scratch;
        leaveForeignLock(scratch.path());
        const std::string before = test::readFile(lockIn(scratch.path()));
        SingleProgram program(toQString(scratch.path()));
        onNextDialog([&](QDialog& message) { QTest::keyClick(&message, static_cast<Qt::Key>(key)); });
        QVERIFY(!enterFolder(program));
        QCOMPARE(test::dialogsExpected(), 0);
        QCOMPARE(test::readFile(lockIn(scratch.path())), before);
    }

    void sameNameIsNotTheSameMachine() {
        LockFile lock;
        if (lock.lines.value(3).isEmpty())
            QSKIP("this system gives machines no id");
        const test::ScratchFolder scratch;
        lock.lines[3] = "00000000000000000000000000000001";
        test::writeFile(lockIn(scratch.path()), lock.text().toStdString());
        SingleProgram program(toQString(scratch.path()));
        QCOMPARE(program.enter(), SingleProgram::Entry::elsewhere);
    }

    void programThatDoesNotAnswerIsToldAndTriedAgain() {
        const test::ScratchFolder scratch;
        auto busy = std::make_unique<QLockFile>(toQString(lockIn(scratch.path())));
        QVERIFY(busy->tryLock(0));
        SingleProgram program(toQString(scratch.path()));
        program.patience = 1;
        const auto tell = [&](QDialog& message) {
            const QString text = test::textOf(message);
            QVERIFY(text.contains("does not answer"));
            QVERIFY(text.contains(toQString(scratch.path())));
        };
        onNextDialog([&](QDialog& message) {
            tell(message);
            test::press(message, "Try Again");
        });
        onNextDialog([&](QDialog& message) {
            tell(message);
            QTest::keyClick(&message, Qt::Key_Escape);
        });
        QVERIFY(!enterFolder(program));
        onNextDialog([&](QDialog& message) {
            busy.reset();
            test::press(message, "Try Again");
        });
        QVERIFY(enterFolder(program));
        QCOMPARE(test::dialogsExpected(), 0);
    }

    void folderThatCannotBeWrittenIsToldAndDoneWithoutItsLock() {
        const test::ScratchFolder scratch;
        test::writeFile(scratch / "file", ""); // A file where a folder is needed takes no lock of anybody.
        const QString folder = toQString(scratch / "file");
        SingleProgram program(folder);
        onNextDialog([&](QDialog& message) {
            QVERIFY(test::textOf(message).contains("cannot write into its folder"));
            QVERIFY(test::textOf(message).contains(folder));
            QTest::keyClick(&message, Qt::Key_Escape);
        });
        QVERIFY(!enterFolder(program));
        onNextDialog([](QDialog& message) { test::press(message, "Go On Anyway"); });
        QVERIFY(enterFolder(program));
        QCOMPARE(test::dialogsExpected(), 0);
        SingleProgram second(folder); // The first is found without a lock.
        QSignalSpy woken(&program, &SingleProgram::activationRequested);
        QVERIFY(!enterFolder(second));
        QCOMPARE(woken.count(), 1);
    }

    void lockThatCannotBeTakenAwayIsTold() {
        const test::ScratchFolder scratch;
        QLockFile holder(toQString(lockIn(scratch.path())));
        QVERIFY(holder.tryLock(0));
        leaveForeignLock(
            scratch.path()); // Into the same file, as a shared disk shows the lock of another machine.
        SingleProgram program(toQString(scratch.path()));
        onNextDialog([](QDialog& message) { test::press(message, "Go On Here"); });
        onNextDialog([](QDialog& message) {
            QVERIFY(test::textOf(message).contains("cannot be taken away"));
            test::press(message, "Quit");
        });
        QVERIFY(!enterFolder(program));
        QCOMPARE(test::dialogsExpected(), 0);
    }

    void iconsTakeTheColourOfTheText() {
        const QImage icon = themedIcon("mnuFileNew").pixmap(48).toImage();
        QVERIFY(!icon.isNull());
        bool inked = false;
        for (int y = 0; y < icon.height(); ++y) {
            for (int x = 0; x < icon.width(); ++x)
                inked = inked || icon.pixelColor(x, y).alpha() > 200;
        }
        QVERIFY(inked);
        QVERIFY(themedIcon("nothing").isNull());
    }

    void splashClosesByItselfAtAKeyAndAtAClick() {
        frmSplash bySelf;
        auto* const timer = bySelf.findChild<QTimer*>("Timer1");
        QCOMPARE(timer->interval(), 6000);
        bySelf.show();
        timer->start(1); // The six seconds are over.
        QTRY_VERIFY_WITH_TIMEOUT(!bySelf.isVisible(), patience);

        frmSplash byKey;
        byKey.show();
        QTest::keyClick(&byKey, Qt::Key_A);
        QVERIFY(!byKey.isVisible());

        for (const char* name : {"fraMainFrame", "picLogo", "lblProductName", "lblVersion", "Label1"}) {
            frmSplash byClick;
            byClick.show();
            QVERIFY(QTest::qWaitForWindowExposed(&byClick));
            QTest::mouseClick(byClick.findChild<QWidget*>(name), Qt::LeftButton);
            QVERIFY2(!byClick.isVisible(), name);
        }
    }

    void splashAndAboutShowTheVersion() {
        const frmSplash splash;
        QCOMPARE(splash.findChild<QLabel*>("lblVersion")->text(), QString("Version 1.09"));
        QCOMPARE(splash.findChild<QLabel*>("lblPlatform")->text(), QString("for Windows"));
        QCOMPARE(splash.findChild<QLabel*>("Label1")->text(), QString("(Click anywhere to begin)"));
        const Registry registry;
        const frmAbout about(registry);
        QCOMPARE(about.findChild<QLabel*>("lblVersion")->text(), QString("Version 1.09"));
        QCOMPARE(about.findChild<QLabel*>("lblTitle")->text(), QString("Wendmark"));
        QCOMPARE(about.findChild<QLabel*>("lblDescription")->text(),
                 QString("An authoring system for creation of Brenholt Inc.'s virtual web tours."));
    }

    void systemInformationWithoutAToolSaysSo() {
        const test::ScratchFolder scratch;
        const Registry registry(toQString(scratch / "machine.ini"));
        frmAbout about(registry);
        about.show();
        onNextDialog([](QDialog& message) {
            QCOMPARE(test::textOf(message),
                     QString("Wendmark|System Information Is Unavailable At This Time"));
            test::press(message, "OK");
        });
        test::press(about, "cmdSysInfo");
        QVERIFY(about.isVisible());
        test::press(about, "cmdOK");
        QVERIFY(!about.isVisible());
    }

    void systemInformationStartsTheToolThatTheRegistryNames() {
        const test::ScratchFolder scratch;
        test::writeFile(scratch / "tool", "#!/bin/sh\necho ran > \"$0.ran\"\n");
        QFile::setPermissions(toQString(scratch / "tool"),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        test::writeFile(scratch / "machine.ini",
                        "[SOFTWARE]\nMicrosoft\\Shared%20Tools\\MSINFO\\PATH=" + (scratch / "tool") + "\n");
        const Registry registry(toQString(scratch / "machine.ini"));
        frmAbout about(registry);
        about.show();
        test::press(about, "cmdSysInfo");
        QTRY_VERIFY_WITH_TIMEOUT(test::exists(scratch / "tool.ran"), 120000);
        QVERIFY(about.isVisible());
    }
};

} // namespace wendmark

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    wendmark::PlatformTest tests;
    return QTest::qExec(&tests, argc, argv);
}

#include "PlatformTest.moc"
