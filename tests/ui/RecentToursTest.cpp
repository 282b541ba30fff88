#include "platform/RecentTours.h"

#include "commands/TourDocument.h"
#include "platform/FolderLooks.h"
#include "platform/Settings.h"
#include "platform/Strings.h"
#include "support/ScratchFolder.h"
#include "ui/dialogs/RecentTourList.h"
#include "ui/main/frmMain.h"
#include "ui/support/Patience.h"
#include "ui/support/UiFixture.h"

#include <QAction>
#include <QDialog>
#include <QDir>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>
#include <filesystem>
#include <sys/stat.h>

namespace wendmark {

using test::onNextDialog;
using test::patience;
using test::press;
using test::UiFixture;

namespace {

namespace fs = std::filesystem;

const QDateTime noon(QDate(2026, 11, 22), QTime(12, 0));

QStringList foldersOf(const RecentTours& tours) {
    QStringList folders;
    for (const RecentTour& tour : tours.list())
        folders.append(tour.folder);
    return folders;
}

/// The program with the tours "one" and "two", the latter on screen.
struct Program {
    Program() : window(parts.parts()) {
        one = parts.makeTour(QStringLiteral("one"), 1);
        two = parts.makeTour(QStringLiteral("two"), 2);
        RecentTours(parts.settings).note(one, QStringLiteral("First"), noon);
        window.load(two);
        window.show();
    }

    /// As it is when the author opens it.
    QMenu& menu() const {
        QMenu* const menu = window.findChild<QAction*>(QStringLiteral("mnuFileRecent"))->menu();
        emit menu->aboutToShow();
        return *menu;
    }

    /// Without the time, which stands where other menus have the keys.
    static QString name(const QAction& item) { return item.text().section(QLatin1Char('\t'), 0, 0); }
    static QString time(const QAction& item) { return item.text().section(QLatin1Char('\t'), 1); }

    QAction& item(int number) const {
        return *menu().findChild<QAction*>(QStringLiteral("recentTour%1").arg(number));
    }

    UiFixture parts;
    QString one;
    QString two;
    frmMain window;
};

RecentTourList& listIn(const QDialog& wizard) {
    return *wizard.findChild<RecentTourList*>(QStringLiteral("lstLastTours"));
}

QRadioButton& option(const QDialog& wizard, const char* name) {
    return *wizard.findChild<QRadioButton*>(QLatin1String(name));
}

/// Starts the program with its wizard, in which `act` decides.
void startWithWizard(UiFixture& program, frmMain& window, const std::function<void(QDialog&)>& act) {
    const QString folder = program.makeTour(QStringLiteral("one"), 1);
    RecentTours(program.settings).note(program.path(QStringLiteral("gone")), QStringLiteral("Gone"), noon);
    RecentTours(program.settings).note(folder, QStringLiteral("First"), noon);
    onNextDialog(act);
    window.load();
    QCOMPARE(test::dialogsExpected(), 0);
}

void click(RecentTourList& list, int row, bool twice = false) {
    const QPoint place = list.visualItemRect(list.topLevelItem(row)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
    if (twice)
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place);
}

} // namespace

class RecentToursTest final : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { QCOMPARE(test::dialogsExpected(), 0); }

    // The list

    void latestTourComesFirstAndTenAreKept() {
        const test::ScratchFolder scratch;
        SettingsStore settings(toQString(scratch / "settings.ini"));
        const RecentTours empty(settings);
        QVERIFY(empty.list().isEmpty());
        for (int i = 1; i <= 12; ++i)
            RecentTours(settings).note(QStringLiteral("/tours/%1").arg(i), QStringLiteral("Tour"), noon);
        const RecentTours tours(settings);
        QCOMPARE(tours.list().size(), RecentTours::most);
        QCOMPARE(tours.list().first().folder, QString("/tours/12"));
        QCOMPARE(tours.list().last().folder, QString("/tours/3"));
        RecentTours(settings).clear();
        QVERIFY(tours.list().isEmpty());
    }

    void tourIsInTheListOnceHoweverItsPathIsWritten() {
        const test::ScratchFolder scratch;
        SettingsStore settings(toQString(scratch / "settings.ini"));
        RecentTours tours(settings);
        const QString folder = toQString(scratch / "tour");
        fs::create_directory(scratch / "tour");
        fs::create_directory_symlink(scratch / "tour", scratch / "link");
        const QString current = QDir::currentPath();
        QDir::setCurrent(toQString(scratch.path()));
        for (const QString& way : {folder, folder + "/", toQString(scratch.path()) + "/./x/..//tour",
                                   toQString(scratch / "link"), QString("tour")})
            tours.note(way, "Title", noon);
        QDir::setCurrent(current);
        QCOMPARE(foldersOf(tours), QStringList{folder});
        fs::remove(scratch / "tour");
        tours.note(folder, "Title", noon);
        QCOMPARE(foldersOf(tours), QStringList{folder});
    }

    void textsOfAnyKindComeBack() {
        const test::ScratchFolder scratch;
        const QString path = toQString(scratch / "settings.ini");
        const QString folder = "/t\u00f6urs/a, b;\"c\" %20\n\u2192 & \\d";
        {
            SettingsStore settings(path);
            RecentTours(settings).note(folder, "<B>D\u00fcne</B>,\r\n &amp; \"See\" \u2192", noon);
        }
        SettingsStore settings(path);
        const RecentTour tour = RecentTours(settings).list().value(0);
        QCOMPARE(tour.folder, folder);
        QCOMPARE(tour.title, QString("D\u00fcne, & \"See\" \u2192"));
        QCOMPARE(tour.time, noon);
    }

    void whatOtherProgramsNoteIsInTheList() {
        const test::ScratchFolder scratch;
        SettingsStore here(toQString(scratch / "settings.ini"));
        SettingsStore there(toQString(scratch / "settings.ini"));
        RecentTours(here).note("/tours/a", "A", noon);
        RecentTours(there).note("/tours/b", "B", noon);
        RecentTours(here).note("/tours/c", "C", noon);
        QCOMPARE(foldersOf(RecentTours(there)), (QStringList{"/tours/c", "/tours/b", "/tours/a"}));
    }

    void settingsThatMakeNoSenseAreLeftOut() {
        const test::ScratchFolder scratch;
        SettingsStore settings(toQString(scratch / "settings.ini"));
        const QString time = noon.toString(Qt::ISODate);
        settings.store(recentSettings::tours,
                       {"yesterday", "/tours/a", "/tours/a", "A", time, "tours/b", "tours/b", "B", time,
                        "/tours/c", "/tours/c", "C", time, "/d"});
        QCOMPARE(foldersOf(RecentTours(settings)), QStringList{"/tours/c"});
    }

    void endlessTitleIsCutBeforeItIsStored() {
        const test::ScratchFolder scratch;
        SettingsStore settings(toQString(scratch / "settings.ini"));
        RecentTours(settings).note("/tours/a", QString(1'000'000, 'x'), noon);
        QCOMPARE(RecentTours(settings).list().first().title.size(), qsizetype(500));
    }

    // Looking at folders

    void foldersAreLookedAtInTheBackground() {
        const test::ScratchFolder scratch;
        test::writeFile(scratch / "tour/script.txt", "My tour\r\n");
        fs::create_directory(scratch / "pipe");
        QCOMPARE(mkfifo((scratch / "pipe/script.txt").c_str(), 0600), 0);
        FolderLooks looks;
        QSignalSpy looked(&looks, &FolderLooks::looked);
        const QStringList folders = {toQString(scratch / "pipe"), toQString(scratch / "tour")};
        for (const QString& folder : folders)
            QVERIFY(!looks.at(folder));
        QTRY_COMPARE_WITH_TIMEOUT(looked.count(), 2, patience);
        QVERIFY(!looks.at(folders[0])->isTour);
        QVERIFY(looks.at(folders[1])->isTour);
        QCOMPARE(looks.at(folders[1])->title, std::string("My tour"));
        looks.forget();
        QVERIFY(!looks.at(folders[1]));
        QTRY_COMPARE_WITH_TIMEOUT(looked.count(), 3, patience);
    }

    void ofManyFoldersTheLastOnesAreLookedAt() {
        const test::ScratchFolder scratch;
        const auto folder = [&](qsizetype i) { return toQString(scratch / std::to_string(i)); };
        FolderLooks looks;
        const qsizetype many = 50 * FolderLooks::mostWaiting;
        for (qsizetype i = 0; i < many; ++i)
            looks.at(folder(i));
        for (qsizetype i = many - FolderLooks::mostWaiting; i < many; ++i)
            QTRY_VERIFY_WITH_TIMEOUT(looks.at(folder(i)).has_value(), patience);
        QTRY_VERIFY_WITH_TIMEOUT(looks.at(folder(0)).has_value(), patience); // Asked for again.
    }

    // The menu

    void menuListsTheToursAndOpensOne() {
        Program program;
        QCOMPARE(Program::name(program.item(1)), QString("&1 Test tour \u2013 ") + program.two);
        QCOMPARE(Program::name(program.item(2)), QString("&2 First \u2013 ") + program.one);
        QCOMPARE(Program::time(program.item(2)), QLocale().toString(noon, QLocale::ShortFormat));
        program.item(2).trigger();
        QCOMPARE(program.parts.workspace.tourPath(), toUtf8(program.one));
        QCOMPARE(program.parts.document.undoName().value_or(""), std::string("Open Tour"));
        QVERIFY(Program::name(program.item(1)).endsWith(program.one));
        QVERIFY(program.item(1).text().startsWith("&1 Test tour"));
        program.parts.document.undo();
        QCOMPARE(program.parts.workspace.tourPath(), toUtf8(program.two));
    }

    void unsavedChangesAreAskedAboutAsOpenDoes() {
        Program program;
        program.parts.document.markChanged();
        for (const char* answer : {"No", "Yes"}) {
            QCOMPARE(program.parts.workspace.tourPath(), toUtf8(program.two));
            onNextDialog([answer](QDialog& question) {
                QCOMPARE(test::textOf(question),
                         QString("Wendmark|Do you really want to open a new tour without saving this "
                                 "one?\r\nAll changes to the current Tour will be lost."));
                press(question, answer);
            });
            program.item(2).trigger();
        }
        QCOMPARE(program.parts.workspace.tourPath(), toUtf8(program.one));
    }

    void tourWhoseFolderIsGoneCannotBeChosen() {
        Program program;
        fs::remove_all(toUtf8(program.one));
        const QMenu& menu = program.menu();
        const auto& gone = *menu.findChild<QAction*>("recentTour2");
        QTRY_VERIFY_WITH_TIMEOUT(!gone.isEnabled(), patience);
        QVERIFY(Program::name(gone).endsWith("(not there)"));
        QVERIFY(menu.findChild<QAction*>("recentTour1")->isEnabled());
        program.parts.makeTour("one", 1);
        QVERIFY(program.item(2).isEnabled());
    }

    void folderThatGoesWhileTheMenuIsOpenIsTold() {
        Program program;
        QAction& item = program.item(2);
        fs::remove_all(toUtf8(program.one));
        onNextDialog([](QDialog& message) {
            QVERIFY(test::textOf(message).startsWith("Wendmark: Defective Tour Folder|"));
            press(message, "OK");
        });
        item.trigger();
        QCOMPARE(program.parts.workspace.tourPath(), toUtf8(program.two));
    }

    void textsOfAnyKindAreShownAsTheyAre() {
        Program program;
        RecentTours tours(program.parts.settings);
        const QString folder = "/tours/a&b\n" + QString(QChar(0x202E)) + QString(300, 'x') + "/end";
        tours.note(folder, "Sand &amp; &lt;i&gt;sea" + QString(300, 'y') + " \u2192", noon);
        const QAction& item = program.item(1);
        QVERIFY(item.text().startsWith("&1 Sand && <i>sea"));
        QVERIFY(item.text().contains("\u2192 \u2013 /tours/a&&b\uFFFD\uFFFDx"));
        QVERIFY(item.text().contains(QChar(0x2026)));
        QVERIFY(Program::name(item).endsWith("/end"));
        QVERIFY(item.text().size() < 200);
        QVERIFY(item.toolTip().contains("Sand &amp; &lt;i&gt;sea" + QString(300, 'y')));
        QVERIFY(item.toolTip().contains(QString(300, 'x') + "/end"));
    }

    void tenthTourHasTheKeyNought() {
        Program program;
        for (int i = 1; i <= 9; ++i)
            RecentTours(program.parts.settings).note(QStringLiteral("/tours/%1").arg(i), "Tour", noon);
        QVERIFY(program.item(9).text().startsWith("&9 Tour"));
        QVERIFY(program.item(10).text().startsWith("1&0 Test tour"));
    }

    void clearListForgetsTheTours() {
        Program program;
        program.menu().findChild<QAction*>("recentClear")->trigger();
        const QMenu& menu = program.menu();
        QVERIFY(menu.findChild<QAction*>("recentTour1") == nullptr);
        QVERIFY(!menu.findChild<QAction*>("recentClear")->isEnabled());
        QCOMPARE(menu.actions().first()->text(), QString("No tours so far"));
        QVERIFY(!menu.actions().first()->isEnabled());
        program.window.save();
        QVERIFY(Program::name(program.item(1)).endsWith(program.two)); // Saving notes it, too.
    }

    void scriptThatHoldsNoTourIsNotNoted() {
        Program program;
        test::writeFile(toUtf8(program.parts.path("MyTours/blank/script.txt")), "");
        onNextDialog([](QDialog& message) { press(message, "OK"); });
        RecentTours(program.parts.settings).note(program.parts.path("MyTours/blank"), "Blank", noon);
        program.item(1).trigger();
        QVERIFY(!program.parts.document.mayOverwrite());
        QCOMPARE(RecentTours(program.parts.settings).list().first().time, noon);
    }

    // The wizard

    void wizardListsTheLastTours() {
        UiFixture program;
        frmMain window(program.parts());
        startWithWizard(program, window, [&](QDialog& wizard) {
            const RecentTourList& list = listIn(wizard);
            QCOMPARE(list.topLevelItemCount(), 2);
            const QTreeWidgetItem& row = *list.topLevelItem(0);
            QCOMPARE(row.text(0), QString("First"));
            QCOMPARE(row.text(1), program.path("MyTours/one"));
            QCOMPARE(row.text(2), QLocale().toString(noon, QLocale::ShortFormat));
            QVERIFY(list.selectedItems().isEmpty());
            QVERIFY(option(wizard, "optNewTour").isChecked());
            QTRY_VERIFY_WITH_TIMEOUT(list.topLevelItem(1)->isDisabled(), patience);
            QVERIFY(list.topLevelItem(1)->text(1).endsWith("(not there)"));
            wizard.reject();
        });
        QVERIFY(program.workspace.tourPath().empty());
    }

    void tourOfTheListIsOpened_data() {
        QTest::addColumn<std::function<void(QDialog&)>>("choose");
        QTest::newRow("double click")
            << std::function([](QDialog& wizard) { click(listIn(wizard), 0, true); });
        QTest::newRow("click and the default button") << std::function([](QDialog& wizard) {
            click(listIn(wizard), 0);
            QVERIFY(option(wizard, "optOldTour").isChecked());
            press(wizard, "btnNext");
        });
        QTest::newRow("keyboard") << std::function([](QDialog& wizard) {
            QTRY_VERIFY_WITH_TIMEOUT(test::hasKeys(wizard), patience);
            QTest::keyClick(&wizard, Qt::Key_L, Qt::AltModifier);
            QVERIFY(listIn(wizard).hasFocus());
            QVERIFY(option(wizard, "optNewTour").isChecked());
            QTest::keyClick(&listIn(wizard), Qt::Key_Down);
            QVERIFY(listIn(wizard).topLevelItem(0)->isSelected());
            QTest::keyClick(&listIn(wizard), Qt::Key_Return);
        });
    }
    void tourOfTheListIsOpened() {
        QFETCH(std::function<void(QDialog&)>, choose);
        UiFixture program;
        frmMain window(program.parts());
        startWithWizard(program, window, choose);
        QCOMPARE(program.workspace.tourPath(), toUtf8(program.path("MyTours/one")));
        QCOMPARE(program.model.stopCount(), 1);
    }

    void sampleIsOneClickAway() {
        UiFixture program;
        frmMain window(program.parts());
        startWithWizard(program, window, [](QDialog& wizard) { press(wizard, "btnSample"); });
        QCOMPARE(program.workspace.tourPath(), toUtf8(program.path("MyTours/Sample")));
        QVERIFY(program.model.stopCount() > 1);
    }

    void optionThatIsChosenAfterwardsCounts_data() {
        QTest::addColumn<QString>("choice");
        QTest::addColumn<QString>("next");
        QTest::newRow("new") << "optNewTour"
                             << "frmWizard2";
        QTest::newRow("existing") << "optOldTour"
                                  << "frmSelectFolderOpen";
    }
    void optionThatIsChosenAfterwardsCounts() {
        QFETCH(QString, choice);
        QFETCH(QString, next);
        UiFixture program;
        frmMain window(program.parts());
        startWithWizard(program, window, [&](QDialog& wizard) {
            click(listIn(wizard), 0);
            option(wizard, choice.toLatin1()).click();
            QVERIFY(listIn(wizard).selectedItems().isEmpty());
            onNextDialog([next](QDialog& dialog) {
                QCOMPARE(dialog.objectName(), next);
                dialog.reject();
            });
            press(wizard, "btnNext");
        });
        QVERIFY(program.workspace.tourPath().empty());
    }

    void tourThatGoesMeanwhileKeepsTheWizardOpen() {
        UiFixture program;
        frmMain window(program.parts());
        startWithWizard(program, window, [&](QDialog& wizard) {
            click(listIn(wizard), 0);
            fs::remove_all(toUtf8(program.path("MyTours/one")));
            onNextDialog([](QDialog& message) {
                QCOMPARE(test::textOf(message), QString("Wendmark: Defective Tour Folder|The selected folder "
                                                        "does not contain all necessary tour files"));
                press(message, "OK");
            });
            press(wizard, "btnNext");
            QVERIFY(wizard.isVisible());
            wizard.reject();
        });
    }

    void wizardWithoutLastToursShowsNoList() {
        UiFixture program;
        fs::remove_all(program.scratch / "MyTours/Sample");
        frmMain window(program.parts());
        onNextDialog([](QDialog& wizard) {
            QVERIFY(!listIn(wizard).isVisible());
            QVERIFY(!wizard.findChild<QPushButton*>("btnSample")->isVisible());
            wizard.reject();
        });
        window.load();
    }
};

} // namespace wendmark

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    wendmark::RecentToursTest tests;
    return QTest::qExec(&tests, argc, argv);
}

#include "RecentToursTest.moc"
