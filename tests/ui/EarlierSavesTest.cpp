#include "platform/Strings.h"
#include "recovery/SavedScripts.h"
#include "ui/dialogs/frmEarlierSaves.h"
#include "ui/main/frmMain.h"
#include "ui/support/Patience.h"
#include "ui/support/UiFixture.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

namespace wendmark {

using test::onNextDialog;
using test::patience;
using test::UiFixture;

namespace {

QTreeWidget& listOf(const QDialog& dialog) {
    return *dialog.findChild<QTreeWidget*>(QStringLiteral("lstSaves"));
}

/// What the rows of the list say, but for the times.
QStringList rowsOf(const QDialog& dialog) {
    QStringList rows;
    for (int i = 0; i < listOf(dialog).topLevelItemCount(); ++i) {
        const QTreeWidgetItem& row = *listOf(dialog).topLevelItem(i);
        rows.append(row.text(1) + QLatin1Char('|') + row.text(2));
    }
    return rows;
}

} // namespace

class EarlierSavesTest final : public QObject {
    Q_OBJECT

private slots:
    void listsTheSavesOfTheTourAndOfAllTours() {
        const test::ScratchFolder scratch;
        keep(scratch, "/tours/a", test::scriptOfStops(1), 100);
        keep(scratch, "/tours/a", test::scriptOfStops(3), 300);
        keep(scratch, "/tours/b", test::scriptOfStops(2), 200);
        keep(scratch, "/tours/a", "", 400); // Holds no tour.
        frmEarlierSaves dialog(scratch.path(), "/tours/a");
        QCOMPARE(rowsOf(dialog), (QStringList{"Test tour|3", "Test tour|1"}));
        QVERIFY(listOf(dialog).isColumnHidden(3));
        dialog.findChild<QCheckBox*>("chkAllTours")->click();
        QCOMPARE(rowsOf(dialog), (QStringList{"Test tour|3", "Test tour|2", "Test tour|1"}));
        QVERIFY(!listOf(dialog).isColumnHidden(3));
        QCOMPARE(listOf(dialog).topLevelItem(1)->text(3), QString("/tours/b"));
    }

    void returnOpensWhatIsSelectedAndEscapeNothing() {
        const test::ScratchFolder scratch;
        keep(scratch, "/tours/a", test::scriptOfStops(1), 100);
        keep(scratch, "/tours/a", test::scriptOfStops(3), 300);
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
            frmEarlierSaves dialog(scratch.path(), "/tours/a");
            dialog.show();
            QCOMPARE(dialog.focusWidget(), &listOf(dialog));
            QTest::keyClick(&listOf(dialog), Qt::Key_Down);
            QTest::keyClick(&listOf(dialog), key);
            QVERIFY(!dialog.isVisible());
            QCOMPARE(dialog.chosen().isEmpty(), key == Qt::Key_Escape);
            if (key == Qt::Key_Return)
                QCOMPARE(test::readFile(toUtf8(dialog.chosen())), test::scriptOfStops(1));
        }
    }

    void emptyListSaysSo() {
        const test::ScratchFolder scratch;
        frmEarlierSaves dialog(scratch.path(), "/tours/a");
        dialog.show();
        const auto* const empty = dialog.findChild<QLabel*>("lblEmpty");
        QVERIFY(empty->isVisible() && !listOf(dialog).isVisible());
        QCOMPARE(empty->text(), QString("No saves of this tour are kept so far."));
        QVERIFY(!dialog.findChild<QPushButton*>("btnOpen")->isEnabled());
        dialog.findChild<QCheckBox*>("chkAllTours")->click();
        QCOMPARE(empty->text(), QString("No tour was saved so far."));
    }

    void earlierSaveIsOpenedAndUndone() {
        UiFixture program;
        frmMain window(program.parts());
        window.load(program.makeTour(QStringLiteral("walk"), 2));
        window.show();
        window.save();
        QTRY_COMPARE_WITH_TIMEOUT(savesOf(program), 1, patience);
        window.insertStop();
        window.save();
        QTRY_COMPARE_WITH_TIMEOUT(savesOf(program), 2, patience);
        QCOMPARE(program.model.stopCount(), std::int16_t{3});

        onNextDialog([](QDialog& dialog) {
            QCOMPARE(rowsOf(dialog), (QStringList{"Test tour|3", "Test tour|2"}));
            QTest::keyClick(&listOf(dialog), Qt::Key_Down);
            QTest::keyClick(&listOf(dialog), Qt::Key_Return);
        });
        window.findChild<QAction*>("mnuFileEarlier")->trigger();
        QCOMPARE(test::dialogsExpected(), 0);
        QCOMPARE(program.model.stopCount(), std::int16_t{2});
        QVERIFY(program.model.tourChanged);
        QCOMPARE(program.document.undoName(), std::optional<std::string>("Open Earlier Save"));
        window.undo();
        QCOMPARE(program.model.stopCount(), std::int16_t{3});
    }

    void saveOfAnotherTourTakesThePlaceOfThisOneOnlyWhenAsked() {
        UiFixture program;
        const QString other = program.makeTour(QStringLiteral("other"), 5);
        QVERIFY(keepSavedScript(program.scratch / "state/scripts", toUtf8(other), test::scriptOfStops(5), 100)
                    .ok());
        frmMain window(program.parts());
        window.load(program.makeTour(QStringLiteral("walk"), 2));
        for (const char* answer : {"No", "Yes"}) {
            QCOMPARE(program.model.stopCount(), std::int16_t{2});
            onNextDialog([](QDialog& dialog) {
                dialog.findChild<QCheckBox*>("chkAllTours")->click();
                QTest::keyClick(&listOf(dialog), Qt::Key_Return);
            });
            onNextDialog([&](QDialog& question) {
                QVERIFY(test::textOf(question).contains(other));
                test::press(question, answer);
            });
            window.openEarlierSave();
        }
        QCOMPARE(test::dialogsExpected(), 0);
        QCOMPARE(program.model.stopCount(), std::int16_t{5});
        QCOMPARE(program.workspace.tourPath(), toUtf8(program.path("MyTours/walk")));
    }

private:
    static void keep(const test::ScratchFolder& folder, const std::string& tour, const std::string& script,
                     std::int64_t time) {
        QVERIFY(keepSavedScript(folder.path(), tour, script, time).ok());
    }

    static int savesOf(const UiFixture& program) {
        return static_cast<int>(
            savedScriptsOf(program.scratch / "state/scripts", program.workspace.tourPath()).size());
    }
};

} // namespace wendmark

QTEST_MAIN(wendmark::EarlierSavesTest)

#include "EarlierSavesTest.moc"
