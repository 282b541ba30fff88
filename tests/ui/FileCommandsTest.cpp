#include "commands/TourSave.h"
#include "platform/BrowserView.h"
#include "platform/Strings.h"
#include "ui/dialogs/TourFolderModel.h"
#include "ui/dialogs/frmSelectFolderOpen.h"
#include "ui/main/frmMain.h"
#include "ui/support/Patience.h"
#include "ui/support/UiFixture.h"

#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <filesystem>

namespace wendmark {

using test::onNextDialog;
using test::patience;
using test::press;
using test::selectFolder;
using test::textOf;
using test::UiFixture;

namespace {

QLineEdit& field(QDialog& dialog, const char* name) {
    return *dialog.findChild<QLineEdit*>(QLatin1String(name));
}

QString labelText(QDialog& dialog, const char* name) {
    return dialog.findChild<QLabel*>(QLatin1String(name))->text();
}

/// Fills the wizard's second page and goes on.
void fillNameAndTitle(QDialog& page, const QString& name, const QString& title) {
    field(page, "txtTourName").setText(name);
    field(page, "txtTitle").setText(title);
    press(page, "btnNext");
}

/// Answers the wizard from its second page to the end.
void onWizardFromSecondPage(const QString& name, const QString& title) {
    onNextDialog([=](QDialog& page) { fillNameAndTitle(page, name, title); });
    onNextDialog([](QDialog& page) { press(page, "btnNext"); });
}

void onWizard(const QString& name, const QString& title) {
    onNextDialog([](QDialog& page) { press(page, "btnNext"); });
    onWizardFromSecondPage(name, title);
}

void expectMessage(const QString& titleAndText) {
    onNextDialog([=](QDialog& message) {
        QCOMPARE(textOf(message), titleAndText);
        press(message, "OK");
    });
}

/// Save, which has to ask for the folder.
void saveIntoAnotherFolder(UiFixture& program, frmMain& window) {
    onNextDialog([](QDialog& dialog) {
        QCOMPARE(dialog.objectName(), QString("frmSelectFolderSave"));
        field(dialog, "txtTourName").setText("another");
        press(dialog, "btnOK");
    });
    window.save();
    QCOMPARE(test::dialogsExpected(), 0);
    const QString another = program.path("MyTours/another");
    QVERIFY(QFile::exists(another + "/playtour.htm"));
    QCOMPARE(program.document.shownTourPath(), toUtf8(another));
}

void closeWizardAtStart(frmMain& window) {
    onNextDialog([](QDialog& page) { page.close(); });
    window.load();
}

} // namespace

class FileCommandsTest final : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { QCOMPARE(test::dialogsExpected(), 0); }

    // The wizard

    void startBeginsWithTheFirstPage() {
        UiFixture program;
        frmMain window(program.parts());
        onNextDialog([](QDialog& page) {
            QCOMPARE(page.objectName(), QString("frmWizard1"));
            QCOMPARE(page.windowTitle(), QString("Wendmark Wizard"));
            QCOMPARE(labelText(page, "lblInstruction1"), QString("Do you want to:"));
            QVERIFY(page.findChild<QRadioButton*>("optNewTour")->isChecked());
            QVERIFY(page.findChild<QPushButton*>("btnNext")->isDefault());
            QTest::keyClick(&page, Qt::Key_Escape);
        });
        window.load();
        QVERIFY(program.workspace.tourPath().empty());
    }

    void wizardMakesASavedTour() {
        UiFixture program;
        frmMain window(program.parts());
        onWizard("  Garden  ", " My \u2192 garden ");
        window.load();
        QCOMPARE(program.workspace.tourPath(), toUtf8(program.path("MyTours/Garden")));
        QCOMPARE(program.model.tourTitle, toUtf8("My \u2192 garden"));
        QVERIFY(!program.model.tourChanged);
        QVERIFY(program.document.hasFolder());
        QVERIFY(QFile::exists(program.path("MyTours/Garden/playtour.htm")));
        QVERIFY(
            test::readFile(toUtf8(program.path("MyTours/Garden/script.txt"))).find("My &#8594; garden\r\n") !=
            std::string::npos);
        // A following Save goes to the same folder, without asking.
        program.model.tourTitle = "Renamed";
        window.save();
        QVERIFY(test::readFile(toUtf8(program.path("MyTours/Garden/script.txt"))).find("Renamed\r\n") !=
                std::string::npos);
    }

    void blankNameAndBlankTitleAreRefused() {
        UiFixture program;
        frmMain window(program.parts());
        onNextDialog([](QDialog& page) { press(page, "btnNext"); });
        onNextDialog([](QDialog& page) {
            expectMessage("Wendmark: Tour Name Missing|Tour Name cannot be blank");
            fillNameAndTitle(page, "   ", "Title");
            expectMessage("Wendmark: Tour Name Missing|Tour Title cannot be blank");
            fillNameAndTitle(page, "Name", "  ");
            QVERIFY(page.isVisible());
            page.close();
        });
        window.load();
        QVERIFY(program.workspace.tourPath().empty());
    }

    void goingBackKeepsWhatWasTyped() {
        UiFixture program;
        frmMain window(program.parts());
        onNextDialog([](QDialog& page) { press(page, "btnNext"); });
        onNextDialog([](QDialog& page) { fillNameAndTitle(page, "Name", "Title"); });
        onNextDialog([](QDialog& page) {
            QVERIFY(labelText(page, "lblInst").endsWith("    [Name]"));
            QCOMPARE(page.focusWidget(), page.findChild<QTreeView*>("Dir1"));
            press(page, "btnPrevious");
        });
        onNextDialog([](QDialog& page) {
            QCOMPARE(field(page, "txtTourName").text(), QString("Name"));
            QCOMPARE(field(page, "txtTitle").text(), QString("Title"));
            press(page, "btnPrevious");
        });
        onNextDialog([](QDialog& page) {
            QCOMPARE(page.objectName(), QString("frmWizard1"));
            page.close();
        });
        window.load();
    }

    void folderThatExistsIsRefusedStaysOnShowAndIsNeverSavedInto() {
        UiFixture program;
        frmMain window(program.parts());
        window.load(program.makeTour("first", 1));
        const QString taken = program.makeTour("taken", 1);
        onNextDialog([](QDialog& page) { fillNameAndTitle(page, "taken", "Title"); });
        onNextDialog([](QDialog& page) {
            expectMessage(
                "Wendmark: Tour Name in use|Tour Folder already exists - please select a different path "
                "or name");
            press(page, "btnNext");
            page.close();
        });
        window.newTour();
        QCOMPARE(program.document.shownTourPath(), toUtf8(taken));
        QCOMPARE(program.workspace.tourPath(), toUtf8(program.path("MyTours/first")));
        saveIntoAnotherFolder(program, window);
        QCOMPARE(QDir(taken).entryList(QDir::Files), QStringList{"script.txt"});
    }

    void namesThatLookLikeTheSampleAreRefusedInTheDefaultFolderOnly() {
        UiFixture program;
        QVERIFY(QDir().mkpath(program.path("MyTours/elsewhere")));
        frmMain window(program.parts());
        onNextDialog([](QDialog& page) { press(page, "btnNext"); });
        onNextDialog([](QDialog& page) { fillNameAndTitle(page, "SampleX", "Title"); });
        onNextDialog([&program](QDialog& page) {
            expectMessage(
                "Wendmark|The 'Sample' tour folder is used for training purposes, and cannot be used to "
                "store or retrieve user tours.");
            press(page, "btnNext");
            selectFolder(page, program.path("MyTours/elsewhere"));
            press(page, "btnNext");
        });
        window.load();
        QVERIFY(QFile::exists(program.path("MyTours/elsewhere/SampleX/script.txt")));
    }

    void reservedFoldersAreRefusedWithTheirMessages_data() {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("name");
        QTest::newRow("Template") << "Template"
                                  << "Template";
        QTest::newRow("NewTour") << "NewTour"
                                 << "NewTour";
    }

    void reservedFoldersAreRefusedWithTheirMessages() {
        QFETCH(QString, folder);
        QFETCH(QString, name);
        UiFixture program;
        frmMain window(program.parts());
        onNextDialog([](QDialog& page) { press(page, "btnNext"); });
        onNextDialog([](QDialog& page) { fillNameAndTitle(page, "Mine", "Title"); });
        onNextDialog([&](QDialog& page) {
            selectFolder(page, program.path(folder));
            expectMessage(
                QString("Wendmark|The '%1' folder is used for internal operations, and cannot be used to "
                        "store or retrieve user tours.")
                    .arg(name));
            press(page, "btnNext");
            page.close();
        });
        window.load();
        QVERIFY(!QFile::exists(program.path(folder + "/Mine")));
    }

    void createNewFolderMakesItAndBeepsWhenItCannot() {
        UiFixture program;
        frmMain window(program.parts());
        const auto answerWith = [](const QString& name) {
            onNextDialog([name](QDialog& box) {
                auto& input = *qobject_cast<QInputDialog*>(&box);
                QCOMPARE(input.windowTitle(), QString("Wendmark - New Folder"));
                QCOMPARE(input.labelText(), QString("Please type in the folder name"));
                input.setTextValue(name);
                input.accept();
            });
        };
        onNextDialog([](QDialog& page) { press(page, "btnNext"); });
        onNextDialog([](QDialog& page) { fillNameAndTitle(page, "Mine", "Title"); });
        onNextDialog([&](QDialog& page) {
            answerWith("  ");
            press(page, "btnCreate");
            QCOMPARE(program.beeps, 0);
            answerWith(" fresh ");
            press(page, "btnCreate");
            QVERIFY(QDir(program.path("MyTours/fresh")).exists());
            QCOMPARE(labelText(page, "lblTourPath"), program.path("MyTours"));
            answerWith("fresh");
            press(page, "btnCreate");
            QCOMPARE(program.beeps, 1);
            page.close();
        });
        window.load();
    }

    void choosingAnExistingTourRunsOpen() {
        UiFixture program;
        program.makeTour("walk", 3);
        frmMain window(program.parts());
        onNextDialog([](QDialog& page) {
            page.findChild<QRadioButton*>("optOldTour")->setChecked(true);
            press(page, "btnNext");
        });
        onNextDialog([&](QDialog& dialog) {
            QCOMPARE(dialog.objectName(), QString("frmSelectFolderOpen"));
            selectFolder(dialog, program.path("MyTours/walk"));
            press(dialog, "btnOK");
        });
        window.load();
        QCOMPARE(program.model.stopCount(), std::int16_t{3});
    }

    void anExistingTourIsOpenedByTheKeyboardAlone() {
        UiFixture program;
        program.makeTour("walk", 3);
        frmMain window(program.parts());
        onNextDialog([](QDialog& page) {
            QTRY_VERIFY_WITH_TIMEOUT(page.isActiveWindow(), patience);
            QTest::keyClick(&page, Qt::Key_E, Qt::AltModifier);
            QTRY_VERIFY_WITH_TIMEOUT(page.findChild<QRadioButton*>("optOldTour")->isChecked(), patience);
            QTest::keyClick(page.focusWidget(), Qt::Key_Return);
        });
        onNextDialog([&](QDialog& dialog) {
            auto* const tree = dialog.findChild<QTreeView*>("Dir1");
            QCOMPARE(dialog.focusWidget(), tree);
            QTRY_COMPARE_WITH_TIMEOUT(tree->model()->rowCount(tree->currentIndex()), 2,
                                      patience); // The sample and the new one.
            QTest::keyClick(tree, Qt::Key_W);
            QCOMPARE(labelText(dialog, "lblTourPath"), program.path("MyTours/walk"));
            QTest::keyClick(tree, Qt::Key_Return);
        });
        window.load();
        QCOMPARE(program.model.stopCount(), std::int16_t{3});
    }

    void newFromTheMenuBeginsWithTheSecondPageWithoutPrevious() {
        UiFixture program;
        frmMain window(program.parts());
        closeWizardAtStart(window);
        onNextDialog([](QDialog& page) {
            QCOMPARE(page.objectName(), QString("frmWizard2"));
            QVERIFY(!page.findChild<QPushButton*>("btnPrevious")->isEnabled());
            page.close();
        });
        window.findChild<QAction*>("mnuFileNew")->trigger();
    }

    // New with changes

    void newWithChangesAsksAndNoLeavesTheTour() {
        UiFixture program;
        frmMain window(program.parts());
        window.load(program.makeTour("walk", 2));
        program.model.tourChanged = true;
        onNextDialog([](QDialog& question) {
            QCOMPARE(
                textOf(question),
                QString("Wendmark : Abandon changes|Are you sure you want to overwrite the current tour?"));
            press(question, "No");
        });
        window.newTour();
        QVERIFY(program.model.tourChanged);
        QCOMPARE(program.model.tourTitle, std::string("Test tour"));
        QVERIFY(QFile::exists(program.working("page2.htm")));
    }

    void newCancelledInTheWizardHasRefilledTheWorkingCopyButKeepsTheModel() {
        UiFixture program;
        frmMain window(program.parts());
        window.load(program.makeTour("walk", 2));
        program.model.tourChanged = true;
        onNextDialog([](QDialog& question) { press(question, "Yes"); });
        onNextDialog([](QDialog& page) { page.close(); });
        window.newTour();
        QVERIFY(!QFile::exists(program.working("page2.htm")));
        QCOMPARE(program.model.tourTitle, std::string("Test tour"));
        QCOMPARE(program.model.stopCount(), std::int16_t{2});
    }

    // Open

    void openWithChangesAndNoChangesNothing() {
        UiFixture program;
        frmMain window(program.parts());
        window.load(program.makeTour("walk", 2));
        program.model.tourChanged = true;
        program.model.narHeight = 200;
        onNextDialog([](QDialog& question) {
            QCOMPARE(textOf(question),
                     QString("Wendmark|Do you really want to open a new tour without saving this "
                             "one?\r\nAll changes to the current Tour will be lost."));
            press(question, "No");
        });
        window.openTour();
        QVERIFY(program.model.tourChanged);
        QCOMPARE(program.model.narHeight, std::int16_t{200});
    }

    void openCancelledResetsTheDefaultsAndKeepsTheStops() {
        UiFixture program;
        frmMain window(program.parts());
        window.load(program.makeTour("walk", 2));
        program.model.tourChanged = true;
        program.model.narHeight = 200;
        onNextDialog([](QDialog& question) { press(question, "Yes"); });
        onNextDialog([](QDialog& dialog) { press(dialog, "btnCancel"); });
        window.openTour();
        QVERIFY(!program.model.tourChanged);
        QCOMPARE(program.model.narHeight, std::int16_t{100});
        QCOMPARE(program.model.stopCount(), std::int16_t{2});
        QCOMPARE(program.workspace.tourPath(), toUtf8(program.path("MyTours/walk")));
        window.undo();
        QCOMPARE(program.model.narHeight, std::int16_t{200});
    }

    void openCancelledSaysWhatItResetUntilThatIsUndone() {
        UiFixture program;
        frmMain window(program.parts());
        window.load(program.makeTour("walk", 2));
        window.show();
        const auto cancelOpen = [&] {
            onNextDialog([](QDialog& dialog) { press(dialog, "btnCancel"); });
            window.openTour();
        };
        cancelOpen();
        QCOMPARE(test::noticeOf(window), QString()); // It had them from the start.
        program.model.tourAuthor = "Ann";
        window.save();
        cancelOpen();
        QVERIFY(program.model.tourAuthor.empty());
        QCOMPARE(test::noticeOf(window),
                 QString("Author, launching points and sizes were reset. Undo brings them back."));
        window.undo();
        QCOMPARE(program.model.tourAuthor, std::string("Ann"));
        QCOMPARE(test::noticeOf(window), QString());
    }

    void folderWithoutAScriptIsDefective() {
        UiFixture program;
        QVERIFY(QDir().mkpath(program.path("MyTours/empty")));
        QVERIFY(QDir().mkpath(program.path("MyTours/locked/script.txt")));
        program.makeTour("walk", 1);
        frmMain window(program.parts());
        closeWizardAtStart(window);
        onNextDialog([&](QDialog& dialog) {
            QCOMPARE(dialog.windowTitle(), QString("Select Tour-Folder"));
            for (const char* folder : {"MyTours/empty", "MyTours/locked"}) {
                selectFolder(dialog, program.path(folder));
                expectMessage(
                    "Wendmark: Defective Tour Folder|The selected folder does not contain all necessary "
                    "tour files");
                press(dialog, "btnOK");
            }
            selectFolder(dialog, program.path("MyTours/walk"));
            press(dialog, "btnOK");
        });
        window.openTour();
        QCOMPARE(program.workspace.tourPath(), toUtf8(program.path("MyTours/walk")));
    }

    void openShowsTheOpeningPageInItsEditingForm() {
        UiFixture program;
        frmMain window(program.parts());
        window.load(program.makeTour("walk", 2));
        window.show();
        const auto& browser = *window.findChild<BrowserView*>("broMain");
        QTRY_VERIFY_WITH_TIMEOUT(browser.locationURL().endsWith("/NewTour/fv1.htm"), 120000);
        QCOMPARE(test::readFile(toUtf8(program.working("nav3.htm"))),
                 test::readFile(toUtf8(program.path("Template/navtemp.htm"))));
    }

    void commandLineTourWithoutAScriptSaysSo() {
        UiFixture program;
        frmMain window(program.parts());
        expectMessage(
            "Wendmark: Defective Tour Folder|The selected folder does not contain all necessary tour files");
        window.load(program.path("MyTours/nowhere"));
    }

    void programsOwnFoldersAreNotOpenedFromTheCommandLine_data() {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("name");
        QTest::newRow("Template") << "Template"
                                  << "Template";
        QTest::newRow("NewTour") << "NewTour"
                                 << "NewTour";
        QTest::newRow("other case") << "newtour"
                                    << "NewTour";
        QTest::newRow("inside, through a link") << "MyTours/link/walk"
                                                << "NewTour";
    }
    void programsOwnFoldersAreNotOpenedFromTheCommandLine() {
        QFETCH(QString, folder);
        QFETCH(QString, name);
        UiFixture program;
        frmMain window(program.parts());
        std::filesystem::create_directory_symlink(program.scratch / "NewTour",
                                                  program.scratch / "MyTours/link");
        expectMessage("Wendmark|The '" + name +
                      "' folder is used for internal operations, and cannot be used to store or retrieve "
                      "user tours.");
        window.load(program.path(folder));
        QCOMPARE(test::dialogsExpected(), 0);
        QVERIFY(program.workspace.tourPath().empty());
        QVERIFY(QFile::exists(program.working("script.txt"))); // The templates' tour is still the open one.
    }

    // Save and Save As

    void saveWithoutAFolderIsSaveAs() {
        UiFixture program;
        frmMain window(program.parts());
        closeWizardAtStart(window);
        onNextDialog([](QDialog& dialog) {
            QCOMPARE(dialog.objectName(), QString("frmSelectFolderSave"));
            field(dialog, "txtTourName").setText("saved");
            press(dialog, "btnOK");
        });
        window.findChild<QAction*>("mnuFileSave")->trigger();
        QVERIFY(QFile::exists(program.path("MyTours/saved/playtour.htm")));
        QVERIFY(!QFile::exists(program.path("MyTours/saved/link.txt")));
        QVERIFY(!QFile::exists(program.working("link.txt")));
    }

    void saveWritesTheLaunchListAndSaveAsDoesNot() {
        UiFixture program;
        frmMain window(program.parts());
        window.load(program.makeTour("walk", 1));
        window.save();
        QVERIFY(QFile::exists(program.working("link.txt")));
    }

    void saveAsRefusesBlankTakenAndSampleNamesAndSaveThenAsks() {
        UiFixture program;
        frmMain window(program.parts());
        window.load(program.makeTour("walk", 1));
        onNextDialog([&](QDialog& dialog) {
            const auto tryName = [&dialog](const QString& name, const QString& message) {
                field(dialog, "txtTourName").setText(name);
                expectMessage(message);
                press(dialog, "btnOK");
            };
            tryName("  ", "Wendmark: Tour Name Missing|Tour Name cannot be blank");
            tryName(
                "walk",
                "Wendmark: Tour Name in use|Tour Folder already exists - Select a different path or name");
            tryName("Sample",
                    "Wendmark|The 'Sample' tour folder is used for training purposes, and cannot be used to "
                    "store or retrieve user tours.");
            press(dialog, "btnCancel");
        });
        window.saveAs();
        QCOMPARE(program.document.shownTourPath(), toUtf8(program.path("MyTours/Sample")));
        QCOMPARE(program.workspace.tourPath(), toUtf8(program.path("MyTours/walk")));
        const auto sample = test::folderContents(toUtf8(program.path("MyTours/Sample")));
        saveIntoAnotherFolder(program, window);
        QCOMPARE(test::folderContents(toUtf8(program.path("MyTours/Sample"))), sample);
    }

    void commandsGivenInTheWaitOfASaveRunAfterIt() {
        UiFixture program;
        frmMain window(program.parts());
        window.load(program.makeTour("walk", 2));
        bool waited = false;
        QTimer::singleShot(0, &window, [&] {
            waited = program.gate.isClosed();
            window.insertStop();
            window.save();
            window.close();
            QCOMPARE(program.model.stopCount(), std::int16_t{2});
            QCOMPARE(program.filesOf("NewTour").contains("script1.txt"), false);
        });
        QSignalSpy closed(&window, &frmMain::closed);
        window.save();
        QVERIFY(waited);
        QVERIFY(closed.isEmpty());
        QVERIFY(test::waitUntil([&] { return !closed.isEmpty(); }));
        QCOMPARE(program.filesOf("NewTour"), QStringList{"script1.txt"});
        QVERIFY(test::readFile(toUtf8(program.path("MyTours/walk/script.txt"))).find("Stop3") !=
                std::string::npos);
    }

    void commandsGivenWhileTheProgramEndsAreNotDone() {
        UiFixture program;
        frmMain window(program.parts());
        window.load(program.makeTour("walk", 2));
        bool waited = false;
        QTimer::singleShot(0, &window, [&] {
            waited = program.gate.isClosed();
            window.insertStop();
            window.save();
        });
        QVERIFY(window.close());
        QVERIFY(waited);
        QVERIFY(test::waitUntil([&] { return program.gate.isOpen(); }));
        QCOMPARE(program.filesOf("NewTour"), QStringList{"script1.txt"});
    }

    void openDialogHasTheSampleOneClickAway() {
        UiFixture program;
        frmMain window(program.parts());
        window.load(program.makeTour("walk", 1));
        onNextDialog([](QDialog& dialog) { press(dialog, "btnSample"); });
        window.openTour();
        QCOMPARE(program.workspace.tourPath(), toUtf8(program.path("MyTours/Sample")));
        std::filesystem::remove_all(program.scratch / "MyTours/Sample");
        onNextDialog([](QDialog& dialog) {
            QVERIFY(dialog.findChild<QPushButton*>("btnSample") == nullptr);
            dialog.reject();
        });
        window.openTour();
    }

    void openJudgesTheFolderOfTheTourThatWasOpen() {
        UiFixture program;
        const WorkspaceFolders& folders = program.workspace.folders();
        const auto choiceAfter = [&](const std::string& tourPath) {
            frmSelectFolderOpen dialog(folders, tourPath);
            press(dialog, "btnSample");
            return dialog.folder();
        };
        expectMessage("Wendmark|The 'NewTour' folder is used for internal operations, and cannot be used to "
                      "store or retrieve user tours.");
        QCOMPARE(choiceAfter(folders.newTourPath + "walk"), QString());
        expectMessage("Wendmark|The 'Template' folder is used for internal operations, and cannot be used to "
                      "store or retrieve user tours.");
        QCOMPARE(choiceAfter(folders.templatePath + "walk"), QString());
        QCOMPARE(choiceAfter(folders.myToursPath + "walk"), program.path("MyTours/Sample"));
    }

    void openDialogBeginsWithTheToursInSight() {
        UiFixture program;
        frmMain window(program.parts());
        window.load(program.makeTour("walk", 1));
        onNextDialog([&](QDialog& dialog) {
            QCOMPARE(labelText(dialog, "lblTourPath"), program.path("MyTours"));
            const auto& tree = *dialog.findChild<QTreeView*>("Dir1");
            const auto sampleIsInSight = [&] {
                const QModelIndex sample = tree.model()->index(0, 0, tree.currentIndex());
                return sample.data(TourFolderModel::titleRole).toString() == "How a Tour Is Made" &&
                       tree.viewport()->rect().contains(tree.visualRect(sample).center());
            };
            QTRY_VERIFY_WITH_TIMEOUT(sampleIsInSight(), patience);
            dialog.reject();
        });
        window.openTour();
    }

    void saveOverAScriptThatHoldsNoTourAsksFirst() {
        UiFixture program;
        const std::string script = toUtf8(program.path("MyTours/blank/script.txt"));
        test::writeFile(script, "");
        frmMain window(program.parts());
        expectMessage("Wendmark|Premature end of file in line 1");
        window.load(program.path("MyTours/blank"));
        window.show();
        // The opening page announces itself in the first panel, and the notice stays.
        const auto& status = *window.findChild<QLabel*>("Status");
        QTRY_VERIFY_WITH_TIMEOUT(status.text().startsWith(">*>*>"), 120000);
        QVERIFY(test::noticeOf(window).startsWith("The script of this folder holds no tour."));
        for (const char* answer : {"No", "Yes"}) {
            QCOMPARE(test::readFile(script), std::string());
            onNextDialog([answer](QDialog& question) {
                QVERIFY(textOf(question).contains("holds no tour"));
                press(question, answer);
            });
            window.save();
        }
        QVERIFY(!test::readFile(script).empty());
        window.save(); // Agreed once and for all.
    }

    void closingDuringSaveAsWaitsForTheSave() {
        UiFixture program;
        frmMain window(program.parts());
        window.load(program.makeTour("walk", 1));
        window.show();
        program.model.tourChanged = false;
        onNextDialog([&](QDialog& dialog) {
            field(dialog, "txtTourName").setText("second");
            QTimer::singleShot(0, &window, [&window] { window.close(); });
            press(dialog, "btnOK");
        });
        window.saveAs();
        QVERIFY(QFile::exists(program.path("MyTours/second/playtour.htm")));
        QTRY_COMPARE_WITH_TIMEOUT(program.filesOf("NewTour"), QStringList{"script1.txt"}, patience);
    }
};

} // namespace wendmark

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    wendmark::FileCommandsTest tests;
    return QTest::qExec(&tests, argc, argv);
}

#include "FileCommandsTest.moc"
