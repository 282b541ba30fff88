#include "ui/support/RandomHands.h"

#include "base/Names.h"
#include "model/ReservedFolders.h"
#include "model/ScriptFile.h"
#include "model/TourFiles.h"
#include "platform/Strings.h"
#include "support/DocumentFixture.h"
#include "ui/dialogs/FolderPicker.h"
#include "ui/dialogs/frmSelectFolderOpen.h"
#include "ui/main/frmMain.h"
#include "ui/support/UiFixture.h"

#include <QAction>
#include <QDeadlineTimer>
#include <QDesktopServices>
#include <QDir>
#include <QLineEdit>
#include <QPrinterInfo>
#include <QTemporaryDir>
#include <QTest>
#include <filesystem>
#include <memory>

namespace wendmark {

using test::RandomHands;
using test::UiFixture;

namespace {

namespace fs = std::filesystem;

constexpr int usualEvents = 400;
constexpr int eventsOfRound = 200;
/// Milliseconds that a command may wait without asking anything; none waits half a minute.
constexpr int commandPatience = 180'000;

/// More than the hands can take between two comparisons of histories.
constexpr int mostSteps = 20'000;

constexpr const char* schemes[] = {"http", "https", "file", "mailto"};

using Contents = std::map<std::string, std::string>;

/// What the program writes anew between any two commands, or from where the author is.
bool changesByItself(const std::string& name) {
    return isScratchFile(name) || name == "brhist.txt" || name == "script.txt" || name == "link.txt" ||
           name == "nav3.htm";
}

Contents lastingFiles(const std::string& folder) {
    Contents found = test::folderContents(folder);
    std::erase_if(found, [](const auto& file) { return changesByItself(lowerCase(file.first)); });
    return found;
}

/// All that counts of a tour, as the lines of its script; placeholders and marks of paragraphs included. A
/// text that was read ends with a line break that the author did not type, and a title has lost the blanks
/// around it.
QStringList linesOf(TourModel model) {
    QStringList lines = toQString(composeScript(model)).split(QStringLiteral("\r\n"));
    for (QString& line : lines)
        line = line.trimmed();
    lines.removeAll(QString());
    return lines;
}

/// Without blanks; without the marks that a save puts for texts that are missing: unseen, they come into a
/// page when that is made next; and without the flag that only the saved form of a tour sets.
std::string seenOf(std::string bytes) {
    for (const std::string_view mark : {noNarration, noInstruction, std::string_view("bufFlag = true"),
                                        std::string_view("bufFlag = false")}) {
        for (std::size_t at = bytes.find(mark); at != std::string::npos; at = bytes.find(mark, at))
            bytes.erase(at, mark.size());
    }
    std::erase_if(bytes, [](char c) { return c == '\r' || c == '\n' || c == ' '; });
    return bytes;
}

/// The first line that differs; empty when the tours are the same.
QString difference(const TourModel& one, const TourModel& other) {
    const QStringList lines = linesOf(one);
    const QStringList others = linesOf(other);
    for (qsizetype i = 0; i < std::max(lines.size(), others.size()); ++i) {
        if (i >= lines.size() || i >= others.size() || lines.at(i) != others.at(i))
            return QStringLiteral("line %1: %2 -- %3")
                .arg(i)
                .arg(lines.mid(std::max<qsizetype>(i - 3, 0), 7).join(QLatin1Char('|')),
                     others.mid(std::max<qsizetype>(i - 3, 0), 7).join(QLatin1Char('|')));
    }
    return {};
}

/// Where the bytes begin to differ; empty when they are the same.
QString difference(const std::string& one, const std::string& other) {
    constexpr std::size_t around = 60;
    if (one == other)
        return {};
    const auto [here, there] = std::mismatch(one.begin(), one.end(), other.begin(), other.end());
    const auto at = static_cast<std::size_t>(here - one.begin());
    const std::size_t from = at < around ? 0 : at - around;
    return toQString(one.substr(from, 2 * around) + " -- " + other.substr(from, 2 * around));
}

/// The program opens what it keeps for itself as it opens any tour; what is saved then is none.
void leaveReservedFolders(const UiFixture& program) {
    const QWidget* const dialog = QApplication::activeModalWidget();
    auto* const picker = dialog == nullptr ? nullptr : dialog->findChild<FolderPicker*>();
    if (qobject_cast<const frmSelectFolderOpen*>(dialog) == nullptr || picker == nullptr)
        return;
    const WorkspaceFolders& folders = program.document.workspace().folders();
    if (!reservedTourMessage(folders, toUtf8(picker->folder())).empty())
        picker->setFolder(toQString(folders.myToursPath));
}

/// Pages that were made with an empty title keep it although a save calls the tour or the stop "Untitled".
void fillTitles(const QWidget& window) {
    for (const char* name : {"txtTourTitle", "txtTitle", "txtStopTitle"}) {
        for (QLineEdit* const field : window.findChildren<QLineEdit*>(QLatin1String(name))) {
            if (field->text().trimmed().isEmpty())
                field->setText(QStringLiteral("Title"));
        }
    }
}

unsigned numberFrom(const char* variable, unsigned usual) {
    const int given = qEnvironmentVariableIntValue(variable);
    return given > 0 ? static_cast<unsigned>(given) : usual;
}

} // namespace

class RandomHandsTest final : public QObject {
    Q_OBJECT

public slots:
    /// Pages are opened outside the program by other programs, which no test starts.
    void refuse(const QUrl&) { ++m_refused; }

private slots:
    void initTestCase() {
        for (const char* scheme : schemes)
            QDesktopServices::setUrlHandler(QLatin1String(scheme), this, "refuse");
        QVERIFY2(QPrinterInfo::defaultPrinter().isNull(), "the hands would print on paper");
    }

    void cleanupTestCase() {
        for (const char* scheme : schemes)
            QDesktopServices::unsetUrlHandler(QLatin1String(scheme));
    }

    /// Random keys, clicks, closings and activations on the real clock, 400 of them or as many as
    /// WENDMARK_HANDS says. Every 200 events the hands rest: all commands must come back; the tour, saved,
    /// must be on the disk what it is on screen; nothing may be left over; undo and redo must lead there.
    void modelAndDiskAgreeWhateverTheHandsDo() {
        const unsigned seed = numberFrom("WENDMARK_SEED", 20261121U);
        const int events = static_cast<int>(numberFrom("WENDMARK_HANDS", usualEvents));
        qInfo("seed %u, %d events", seed, events);
        RandomHands hands(seed);
        m_hands = &hands;
        m_folder = std::make_shared<test::ScratchFolder>();
        int given = 0;
        while ((given < events || m_compared == 0) && !QTest::currentTestFailed()) {
            if (!m_window)
                beginProgram();
            const int now = given < events ? std::min(eventsOfRound, events - given) : eventsOfRound;
            hands.play(now);
            given += now;
            waitForHands();
            if (m_ended)
                endProgram();
            else
                checkTour(QStringLiteral("after %1 events").arg(given));
        }
        if (QTest::currentTestFailed()) {
            RandomHands::printLast();
            if (m_program) {
                for (const std::string& failure : m_program->log.failures)
                    qInfo("logged: %s", failure.c_str());
            }
        }
        endProgram();
        m_hands = nullptr;
        m_folder.reset();
        qInfo("%d programs, %d tours compared, %d steps undone and redone", m_programs, m_compared, m_undone);
        QVERIFY(m_compared > 0);
    }

private:
    /// As main() does, with a tour or with the wizard; the hands answer what load() asks.
    void beginProgram() {
        m_ended = false;
        ++m_programs;
        m_program = std::make_unique<UiFixture>(m_folder, UiFixture::Time::real);
        UiFixture& program = *m_program;
        prepareFiles();
        m_window = std::make_unique<frmMain>(program.parts());
        connect(m_window.get(), &frmMain::closed, this, [this] {
            m_ended = true;
            m_hands->stop();
        });
        m_hands->setGate(&program.gate);
        m_hands->beforeEvent = [this, &program] {
            // Neither is there, so that nothing is started.
            program.options.htmlEditorPath = program.scratch / "no-editor";
            leaveReservedFolders(program);
            fillTitles(*m_window);
        };
        m_hands->play(40);
        const bool asks = m_hands->pick(3) == 0;
        m_window->load(asks ? QString()
                            : program.path(QStringLiteral("MyTours/walk%1").arg(m_hands->pick(2))));
        m_window->show();
    }

    void prepareFiles() {
        UiFixture& program = *m_program;
        if (m_programs == 1) {
            program.makeTour(QStringLiteral("walk0"), 4);
            program.makeTour(QStringLiteral("walk1"), 7);
            test::writeFile(*m_folder / "MyTours/empty/script.txt", "");
            test::writeFile(*m_folder / "files/own page.htm", "<html><body>Own page</body></html>");
            test::writeFile(*m_folder / "files/page1.htm", "<html><body>Taken name</body></html>");
            test::writeFile(*m_folder / "files/image.gif", "GIF89a");
            test::writeFile(*m_folder / "files/fr-logo.gif", "GIF89a logo");
        }
        QStringList files;
        for (const QString& name : program.filesOf(QStringLiteral("files")))
            files.append(program.path(QStringLiteral("files/") + name));
        m_hands->setFiles(files + QStringList(program.path(QStringLiteral("files/missing.htm"))));
        m_hands->setFolders(
            {program.path(QStringLiteral("MyTours")), program.path(QStringLiteral("MyTours/walk0")),
             program.path(QStringLiteral("MyTours/walk1")), program.path(QStringLiteral("MyTours/Sample")),
             program.path(QStringLiteral("MyTours/empty")), program.path(QStringLiteral("NewTour")),
             program.path(QStringLiteral("Template"))});
    }

    /// Until the hands have given their events and all that they began has ended. What still asks then is
    /// closed; a command that does not come back although nothing is asked fails the test.
    void waitForHands() {
        QDeadlineTimer patience(commandPatience);
        int dismissed = m_hands->dismissed();
        const bool ended = test::waitUntil(
            [&] {
                const bool goesOn = m_hands->isPlaying() || dismissed != m_hands->dismissed();
                dismissed = m_hands->dismissed();
                if (goesOn)
                    patience.setRemainingTime(commandPatience);
                return patience.hasExpired() || (!m_hands->isPlaying() && m_hands->isIdle() && isAtRest());
            },
            std::numeric_limits<int>::max());
        QVERIFY2(ended && !patience.hasExpired(), "a command never comes back");
    }

    /// A program that is to end takes no command any more, and tells so a little later.
    bool isAtRest() const {
        bool taken = false;
        if (m_program->gate.isOpen() && QApplication::activeModalWidget() == nullptr)
            m_program->gate.run(*m_window, [&] { taken = true; });
        return m_ended || taken;
    }

    void endProgram() {
        m_hands->setGate(nullptr);
        m_hands->beforeEvent = nullptr;
        if (m_window)
            checkLog();
        m_window.reset();
        m_program.reset();
    }

    /// What cannot be started is no failure of the program.
    void checkLog() {
        for (const std::string& failure : m_program->log.failures)
            QVERIFY2(failure.starts_with("cannot start the HTML editor"), failure.c_str());
    }

    void give(const char* menuItem) {
        m_window->findChild<QAction*>(QLatin1String(menuItem))->trigger();
        waitForHands();
    }

    void checkTour(const QString& when) {
        qInfo("%s: %s, %d stops", qPrintable(when), m_program->document.workspace().tourPath().c_str(),
              m_program->document.model().stopCount());
        checkSavedTour(when);
        if (!QTest::currentTestFailed())
            checkHistory(when);
        if (!QTest::currentTestFailed())
            checkNothingIsLeftOver(when);
        if (!QTest::currentTestFailed())
            checkLog();
    }

    /// Another program that opens the saved tour must show the same.
    void checkSavedTour(const QString& when) {
        const TourDocument& document = m_program->document;
        if (!document.hasFolder() || !document.mayOverwrite())
            return; // Save would ask.
        give("mnuFileSave");
        QVERIFY2(document.isAsSaved() && !document.model().tourChanged, qPrintable(when));
        test::DocumentFixture other;
        const Opening opening = other.openTour(document.workspace().tourPath());
        QVERIFY2(opening.complete && opening.hasTitle, qPrintable(when));
        for (const std::string& error : other.desktop.lineErrors)
            QFAIL(qPrintable(when + QLatin1String(": ") + toQString(error)));
        const QString differs = difference(document.model(), other.document.model());
        QVERIFY2(differs.isEmpty(), qPrintable(when + QLatin1String(", saved: ") + differs));
        compareFiles(lastingFiles(*m_folder / "NewTour"), lastingFiles(other.workingCopy()), when);
        ++m_compared;
    }

    /// Every file of `expected` is in `found` as it is there, but for blanks around texts; the
    /// folder of a tour may hold more than the tour.
    static void compareFiles(const Contents& expected, const Contents& found, const QString& when) {
        for (const auto& [name, bytes] : expected) {
            const auto file = found.find(name);
            QVERIFY2(file != found.end(), qPrintable(when + QLatin1String(": no ") + toQString(name)));
            const QString differs = difference(seenOf(bytes), seenOf(file->second));
            QVERIFY2(differs.isEmpty(),
                     qPrintable(when + QLatin1String(": ") + toQString(name) + QLatin1Char(' ') + differs));
        }
    }

    /// While it holds words of its own, the program asks before it leaves the tour, and what asks is closed.
    void closeNarrationEditor() {
        auto* const editor = m_window->findChild<QDialog*>(QStringLiteral("frmNarEdit"));
        if (editor != nullptr && editor->isVisible())
            editor->reject();
        waitForHands();
    }

    /// Everything undone and redone again is what was there.
    void checkHistory(const QString& when) {
        const TourDocument& document = m_program->document;
        if (!document.filesAreThere())
            return; // The next command brings them back, and so would undo.
        const TourModel model = document.model();
        const std::string folder = document.workspace().tourPath();
        const Contents files = lastingFiles(*m_folder / "NewTour");
        int undone = 0;
        for (; document.undoName(); ++undone) {
            QVERIFY2(undone < mostSteps, qPrintable(when + QLatin1String(": undo leads nowhere")));
            if (document.undoOpensTour())
                closeNarrationEditor();
            give("mnuEditUndo");
        }
        for (int left = undone; left > 0; --left)
            give("mnuEditRedo");
        m_undone += undone;
        const QString differs = difference(model, document.model());
        QVERIFY2(differs.isEmpty(), qPrintable(when + QLatin1String(", redone: ") + differs));
        QVERIFY2(document.workspace().tourPath() == folder, qPrintable(when + QLatin1String(": redone")));
        const Contents redone = lastingFiles(*m_folder / "NewTour");
        compareFiles(files, redone, when + QLatin1String(", redone"));
        compareFiles(redone, files, when + QLatin1String(", redone too much"));
    }

    void checkNothingIsLeftOver(const QString& when) {
        for (const auto& entry : fs::recursive_directory_iterator(m_folder->path())) {
            const std::string name = entry.path().filename().string();
            QVERIFY2(!name.starts_with(".wendmark"),
                     qPrintable(when + QLatin1String(": ") + toQString(name)));
        }
    }

    std::shared_ptr<test::ScratchFolder> m_folder;
    std::unique_ptr<UiFixture> m_program;
    std::unique_ptr<frmMain> m_window;
    RandomHands* m_hands = nullptr;
    bool m_ended = false; ///< The program is to end.
    int m_programs = 0;
    int m_compared = 0;
    int m_undone = 0;
    int m_refused = 0;
};

} // namespace wendmark

/// Its home and its temporary folder are its own: what the hands print, save and open stays there. No program
/// is found by its name alone, and no printer.
int main(int argc, char* argv[]) {
    const QTemporaryDir own;
    const QByteArray path = own.path().toUtf8();
    if (!own.isValid() || !qputenv("TMPDIR", path) || !qputenv("HOME", path) || !qputenv("PATH", "") ||
        !qputenv("CUPS_SERVER", "127.0.0.1:1"))
        return 1;
    for (const char* folder : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME"})
        qunsetenv(folder);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    wendmark::RandomHandsTest tests;
    return QTest::qExec(&tests, argc, argv);
}

#include "RandomHandsTest.moc"
