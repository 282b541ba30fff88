#include "platform/Strings.h"
#include "recovery/SavedScripts.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/main/FileCommands.h"
#include "ui/main/SidePanels.h"
#include "ui/main/UnsavedWork.h"
#include "ui/main/frmMain.h"
#include "ui/narration/HtmlField.h"
#include "ui/narration/frmNarEdit.h"
#include "ui/support/UiFixture.h"

#include <QAction>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTest>
#include <filesystem>
#include <memory>

namespace wendmark {

using test::fireClocks;
using test::onNextDialog;
using test::press;
using test::UiFixture;
using test::waitUntil;

namespace {

constexpr int mostLost = 2000; // Milliseconds of work, when the machine leaves the program its time.

/// What a program that is started now would find of this one.
std::vector<RecoverySession> leftBy(UiFixture& program) {
    return RecoveryStore(program.scratch / "state/recovery", program.log).leftovers();
}

/// What the windows of a program work with that keeps its work in this keeper.
ProgramParts partsWith(UiFixture& program, RecoveryKeeper& recovery) {
    const ProgramParts parts = program.parts();
    return {parts.document, parts.gate,           parts.options,     parts.desktop,   parts.settings,
            parts.registry, parts.browserProfile, recovery,          parts.fileNames, parts.htmlEditor,
            parts.spelling, parts.check,          parts.savedScripts};
}

/// A run of the program with its window, on the folders of a fixture. It ends as a crash ends it: without a
/// word.
class Run final {
public:
    explicit Run(UiFixture& program, const QString& tour = QString())
        : m_store(program.scratch / "state/recovery", program.log), m_recovery(program.document, m_store) {
        m_window = std::make_unique<frmMain>(partsWith(program, m_recovery));
        m_window->load(tour);
        m_window->show();
    }

    frmMain& window() { return *m_window; }

private:
    RecoveryStore m_store;
    RecoveryKeeper m_recovery;
    std::unique_ptr<frmMain> m_window;
};

/// Waits until the program has looked for unsaved work once and, after that, once more.
bool isLookedAtTwice(const frmMain& window) {
    QSignalSpy looks(window.findChild<UnsavedWork*>(), &UnsavedWork::looking);
    return waitUntil([&] { return looks.count() == 2; });
}

} // namespace

class RecoveryTest final : public QObject {
    Q_OBJECT

private slots:
    void changeIsKeptWithinTwoSeconds() {
        UiFixture program;
        Run run(program, program.makeTour("walk", 3));
        QVERIFY(leftBy(program).empty());
        run.window().insertStop();
        fireClocks(run.window(), mostLost / 2);
        QCOMPARE(leftBy(program).size(), std::size_t(1));
        QCOMPARE(leftBy(program).front().record.model.stopCount(), std::int16_t(4));
    }

    void wordsTypedIntoTheStopPanelAreKeptWithinTwoSeconds() {
        UiFixture program;
        const QString tour = program.makeTour("walk", 3);
        {
            Run run(program, tour);
            run.window().sides().toggleStop();
            program.document.goToStop(2);
            auto& field = *run.window().findChild<HtmlField*>("txtPanelWords");
            QVERIFY(waitUntil([&] { return field.isEnabled(); }));
            QTest::keyClicks(&field, "half a sen");
            fireClocks(run.window(), mostLost / 2);
            const auto left = leftBy(program);
            QCOMPARE(left.size(), std::size_t(1));
            QVERIFY(left[0].record.model.stops.at(2).stopNarration.starts_with("half a sen"));
        }
        onNextDialog([](QDialog& dialog) { press(dialog, "btnRecover"); });
        Run next(program);
        QVERIFY(program.model.stops.at(2).stopNarration.starts_with("half a sen"));
    }

    void typedTextIsKeptWithinTwoSecondsAndComesBackInTheEditor() {
        UiFixture program;
        const QString tour = program.makeTour("walk", 3);
        {
            Run run(program, tour);
            run.window().next();
            run.window().next();
            QVERIFY(waitUntil([&] { return program.model.currentStop == 2; }));
            run.window().editNarrationFrame();
            auto& editor = *run.window().findChild<frmNarEdit*>();
            QTest::keyClicks(editor.findChild<QLineEdit*>("txtStopTitle"), "!");
            auto& field = *editor.findChild<HtmlField*>("txtText");
            QTest::keyClicks(&field, "half a sen");
            fireClocks(run.window(), mostLost / 2);
            const auto left = leftBy(program);
            QCOMPARE(left.size(), std::size_t(1));
            QVERIFY(left[0].record.unapplied);
            QVERIFY(left[0].record.unapplied->narration.find("half a sen") != std::string::npos);
        }
        onNextDialog([](QDialog& dialog) { press(dialog, "btnRecover"); });
        Run next(program);
        QVERIFY(waitUntil([&] { return next.window().findChild<frmNarEdit*>() != nullptr; }));
        auto& editor = *next.window().findChild<frmNarEdit*>();
        QVERIFY(waitUntil([&] { return editor.isVisible(); }));
        QVERIFY(editor.findChild<HtmlField*>("txtText")->shownText().contains("half a sen"));
        QVERIFY(editor.findChild<QLineEdit*>("txtStopTitle")->text().contains('!'));
        QCOMPARE(program.model.stops.at(2).stopNarration, std::string("Words of stop 2.\r\n"));
        QVERIFY(waitUntil([&] { return program.model.currentStop == 2; }));
        QVERIFY(leftBy(program).size() == 1); // It is kept until it is applied and saved.
        QVERIFY(leftBy(program)[0].record.unapplied.has_value());
    }

    void offerTellsTheTourAndRecoverGoesOnWithIt() {
        UiFixture program;
        const QString tour = program.makeTour("walk", 3);
        {
            Run run(program, tour);
            program.model.tourTitle = "W\xc3\xbcste & <b>Oase</b>";
            test::writeFile(toUtf8(program.working("own page.htm")), "own");
            run.window().next();
            run.window().insertStop();
            QVERIFY(waitUntil([&] { return !leftBy(program).empty(); }));
        }
        onNextDialog([](QDialog& dialog) {
            QCOMPARE(dialog.objectName(), QStringLiteral("frmRecover"));
            QCOMPARE(dialog.findChild<QLabel*>("lblTitle")->text(), QStringLiteral("Wüste & <b>Oase</b>"));
            QCOMPARE(dialog.findChild<QLabel*>("lblStops")->text(), QStringLiteral("4"));
            QVERIFY(dialog.findChild<QLabel*>("lblTime")->text().contains(
                QString::number(QDate::currentDate().year())));
            QVERIFY(dialog.findChild<QLabel*>("lblFolder")->text().endsWith("MyTours/walk"));
            press(dialog, "btnRecover");
        });
        const QString other = program.makeTour("other", 1);
        Run next(program, other); // No wizard comes: the test would wait for it for ever.
        QCOMPARE(test::noticeOf(next.window()), "One tour is open at a time. Not opened: " + other);
        QCOMPARE(program.model.stopCount(), std::int16_t(4));
        QVERIFY(program.model.tourChanged);
        QCOMPARE(toQString(program.workspace.tourPath()), tour);
        QCOMPARE(test::readFile(toUtf8(program.working("own page.htm"))), std::string("own"));
        const std::int16_t stop = program.model.currentStop;
        next.window().next();
        QVERIFY(waitUntil([&] { return program.model.currentStop == stop + 1; }));
        next.window().save();
        QVERIFY(!program.model.tourChanged);
        QVERIFY(waitUntil([&] { return leftBy(program).empty(); }));
        QVERIFY(test::readFile(toUtf8(tour) + "/script.txt").find("Stop4") != std::string::npos);
        QVERIFY(test::exists(toUtf8(tour) + "/own page.htm"));
    }

    void hugeTitleIsOfferedShortened() {
        UiFixture program;
        const QString tour = program.makeTour("walk", 3);
        {
            Run run(program, tour);
            program.model.tourTitle = std::string(1'000'000, 't');
            QVERIFY(waitUntil([&] { return !leftBy(program).empty(); }));
        }
        onNextDialog([](QDialog& dialog) {
            QCOMPARE(dialog.findChild<QLabel*>("lblTitle")->text(), QString(200, 't') + QChar(0x2026));
            press(dialog, "btnRecover");
        });
        Run next(program);
        QCOMPARE(program.model.tourTitle.size(), std::size_t{1'000'000});
    }

    void untouchedTourIsNotKeptWhileTheFirstDialogsAreOpen() {
        UiFixture program;
        RecoveryKeeper recovery(program.document, program.recoveryStore);
        frmMain window(partsWith(program, recovery));
        onNextDialog([&](QDialog& wizard) {
            QCOMPARE(wizard.objectName(), QStringLiteral("frmWizard1"));
            QVERIFY(isLookedAtTwice(window));
            QVERIFY(leftBy(program).empty());
            wizard.findChild<QRadioButton*>("optOldTour")->setChecked(true);
            press(wizard, "btnNext");
        });
        onNextDialog([&](QDialog& open) {
            QCOMPARE(open.objectName(), QStringLiteral("frmSelectFolderOpen"));
            QVERIFY(isLookedAtTwice(window));
            QVERIFY(leftBy(program).empty());
            open.reject();
        });
        window.load(QString());
        QVERIFY(isLookedAtTwice(window));
        QVERIFY(leftBy(program).empty());
        QCOMPARE(test::dialogsExpected(), 0);
    }

    void untouchedTourIsNotKeptAfterTheWizardWasClosed() {
        UiFixture program;
        RecoveryKeeper recovery(program.document, program.recoveryStore);
        frmMain window(partsWith(program, recovery));
        onNextDialog([&](QDialog& wizard) { wizard.reject(); });
        window.load(QString());
        QVERIFY(isLookedAtTwice(window));
        QVERIFY(leftBy(program).empty());
        QVERIFY(window.close());
        QVERIFY(leftBy(program).empty());
    }

    void discardForgetsAndTheWizardComes() {
        UiFixture program;
        {
            Run run(program, program.makeTour("walk", 3));
            run.window().insertStop();
            QVERIFY(waitUntil([&] { return !leftBy(program).empty(); }));
        }
        onNextDialog([](QDialog& dialog) { press(dialog, "btnDiscard"); });
        bool wizardCame = false;
        onNextDialog([&](QDialog& dialog) {
            wizardCame = dialog.objectName() == "frmWizard1";
            dialog.reject();
        });
        Run next(program);
        QVERIFY(wizardCame);
        QVERIFY(leftBy(program).empty());
    }

    void tourHandedOverDuringTheQuestionWaitsAndReplacesTheWizard() {
        UiFixture program;
        {
            Run run(program, program.makeTour("walk", 3));
            run.window().insertStop();
            QVERIFY(waitUntil([&] { return !leftBy(program).empty(); }));
        }
        const QString other = program.makeTour("other", 1);
        onNextDialog([&](QDialog& dialog) {
            qobject_cast<frmMain*>(dialog.parentWidget())->files().takeTours({other});
            QVERIFY(dialog.isVisible());
            QVERIFY(program.workspace.tourPath() != toUtf8(other));
            press(dialog, "btnNotNow");
        });
        Run next(program); // No wizard comes: the test would wait for it for ever.
        QVERIFY(waitUntil([&] { return program.workspace.tourPath() == toUtf8(other); }));
        QVERIFY(!next.window().findChild<QDialog*>());
    }

    void notNowAsksAgainAtTheNextStart() {
        UiFixture program;
        const QString tour = program.makeTour("walk", 3);
        {
            Run run(program, tour);
            run.window().insertStop();
            QVERIFY(waitUntil([&] { return !leftBy(program).empty(); }));
        }
        for (const bool byEscape : {true, false}) {
            onNextDialog([&](QDialog& dialog) {
                if (byEscape)
                    QTest::keyClick(&dialog, Qt::Key_Escape);
                else
                    press(dialog, "btnNotNow");
            });
            Run next(program, tour); // A tour named on the command line comes after that.
            QCOMPARE(program.model.stopCount(), std::int16_t(3));
            QCOMPARE(leftBy(program).size(), std::size_t(1));
        }
    }

    void severalAreOfferedOneByOneTheLatestFirst() {
        UiFixture program;
        for (const int stops : {2, 5}) {
            RecoveryStore store(program.scratch / "state/recovery", program.log);
            RecoveryRecord record;
            record.time = stops;
            record.model.stops.setCount(static_cast<std::int16_t>(stops));
            QVERIFY(store.keep(record, program.scratch / "NewTour"));
        }
        QStringList offered;
        for (const char* answer : {"btnDiscard", "btnRecover"}) {
            onNextDialog([&, answer](QDialog& dialog) {
                offered.append(dialog.findChild<QLabel*>("lblStops")->text());
                press(dialog, answer);
            });
        }
        Run next(program);
        QCOMPARE(offered, (QStringList{"5", "2"}));
        QCOMPARE(program.model.stopCount(), std::int16_t(2));
    }

    void quitLeavesNothingToRecoverOfWhatTheAuthorWasAskedAbout() {
        UiFixture program;
        Run run(program, program.makeTour("walk", 3));
        run.window().runToolBarCommand("Insert");
        QVERIFY(waitUntil([&] { return !leftBy(program).empty(); }));
        onNextDialog([](QDialog& question) { press(question, "Yes"); });
        QVERIFY(run.window().close());
        QCOMPARE(test::dialogsExpected(), 0);
        QVERIFY(leftBy(program).empty());
    }

    void quitKeepsForTheNextStartWhatTheAuthorWasNotAskedAbout() {
        UiFixture program;
        Run run(program, program.makeTour("walk", 3));
        run.window().insertStop(); // By the menu, which does not mark the tour as changed.
        QVERIFY(!program.model.tourChanged);
        QVERIFY(run.window().close());
        QCOMPARE(leftBy(program).size(), std::size_t(1));
        QCOMPARE(leftBy(program).front().record.model.stopCount(), std::int16_t(4));
    }

    void savedAndOpenedToursAreNotOffered() {
        UiFixture program;
        const QString tour = program.makeTour("walk", 3);
        Run run(program, tour);
        run.window().insertStop();
        QVERIFY(waitUntil([&] { return !leftBy(program).empty(); }));
        run.window().save();
        QVERIFY(waitUntil([&] { return leftBy(program).empty(); }));
        run.window().next();
        QVERIFY(waitUntil([&] { return program.model.currentStop > 0; }));
        fireClocks(run.window());
        fireClocks(run.window());
        QVERIFY(leftBy(program).empty());
    }

    void incompleteSaveIsToldUntilTheNextCommand() {
        UiFixture program;
        const QString tour = program.makeTour("walk", 3);
        Run run(program, tour);
        run.window().insertStop();
        QVERIFY(waitUntil([&] { return !leftBy(program).empty(); }));
        std::filesystem::remove_all(toUtf8(tour)); // The disk with the tour is gone.
        onNextDialog([](QDialog& message) { message.accept(); });
        run.window().save();
        QVERIFY(!program.model.tourChanged);
        const QString told = QStringLiteral("The tour was not saved completely. The log says what failed.");
        QCOMPARE(test::noticeOf(run.window()), told);
        QVERIFY(!program.log.failures.empty());
        fireClocks(run.window());
        fireClocks(run.window());
        QCOMPARE(leftBy(program).size(), std::size_t(1)); // It is still unsaved.
        run.window().next();
        QCOMPARE(test::noticeOf(run.window()), told); // Looking at other stops is no answer.
        run.window().insertStop();
        QCOMPARE(test::noticeOf(run.window()), QString());
    }

    void lastScriptsOfATourAreKept() {
        UiFixture program;
        const QString tour = program.makeTour("walk", 1);
        Run run(program, tour);
        for (int i = 0; i < savedScriptsKept + 2; ++i) {
            run.window().insertStop();
            run.window().save();
        }
        const auto kept = test::folderContents(program.scratch / "state/scripts");
        QCOMPARE(kept.size(), std::size_t{savedScriptsKept} + 1); // And the tour's name.
        QCOMPARE(std::prev(kept.end(), 2)->second, test::readFile(toUtf8(tour) + "/script.txt"));
    }
};

} // namespace wendmark

QTEST_MAIN(wendmark::RecoveryTest)

#include "RecoveryTest.moc"
