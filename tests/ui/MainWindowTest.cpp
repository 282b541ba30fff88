#include "platform/BrowserView.h"
#include "platform/Settings.h"
#include "platform/Strings.h"
#include "platform/Twips.h"
#include "ui/controls/LoadingIndicator.h"
#include "ui/dialogs/frmHelp.h"
#include "ui/main/frmMain.h"
#include "ui/support/Patience.h"
#include "ui/support/UiFixture.h"

#include <QAction>
#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTest>
#include <QToolButton>
#include <QWebEnginePage>
#include <QWebEngineView>
#include <csignal>
#include <sys/types.h>

namespace wendmark {

using test::onNextDialog;
using test::patience;
using test::press;
using test::textOf;
using test::UiFixture;

namespace {

/// Lets the wizard of a start-up come and closes it.
void loadAndCloseWizard(frmMain& window) {
    onNextDialog([](QDialog& wizard) { wizard.close(); });
    window.load();
}

/// Captions of a menu, "-" for a separator.
QStringList captionsOf(const QMenu& menu) {
    QStringList captions;
    for (const QAction* action : menu.actions())
        captions.append(action->isSeparator() ? QStringLiteral("-") : action->text());
    return captions;
}

QRect screenOf(const QWidget& window) {
    return window.screen()->availableGeometry();
}

} // namespace

class MainWindowTest final : public QObject {
    Q_OBJECT

private slots:
    void menusHaveTheirCaptionsAndSeparators() {
        UiFixture program;
        const frmMain window(program.parts());
        QList<QStringList> menus;
        QStringList titles;
        for (const QAction* action : window.menuBar()->actions()) {
            titles.append(action->text());
            menus.append(captionsOf(*action->menu()));
        }
        QCOMPARE(titles, (QStringList{"&File", "&Edit", "&Stops", "&Navigate", "&View", "&Help"}));
        QCOMPARE(menus[0], (QStringList{"&New", "&Open...", "-", "&Save", "Save &As...", "-", "&Print...",
                                        "-", "Play in &Browser", "Open Tour &Folder", "-", "Open &Recent",
                                        "&Earlier Saves...", "E&xit"}));
        for (const QMenu* const menu : window.findChildren<QMenu*>()) {
            if (menu->title() == "Play in &Browser")
                QCOMPARE(captionsOf(*menu), (QStringList{"From a &Web Server", "From &Disk"}));
        }
        QCOMPARE(menus[1], (QStringList{"&Undo", "&Redo", "-", "Tour &Properties", "&Site Frame",
                                        "&Narration Frame", "-", "&Find in Tour...", "Find Ne&xt"}));
        QCOMPARE(menus[2], (QStringList{"&Insert", "&Delete", "-", "Move &Forward", "Move &Back", "-",
                                        "&Check All Stops"}));
        QCOMPARE(menus[3], (QStringList{"&Prev", "&Next", "&Stop"}));
        QCOMPARE(menus[4], (QStringList{"&Refresh", "&Options...", "&Launching Information", "-",
                                        "&Stop List", "Stop &Panel"}));
        QCOMPARE(menus[5], (QStringList{"Wendmark &Help", "Wendmark &Web-site", "-", "&About"}));
    }

    void toolBarHasItsKeysWithTheirToolTips() {
        UiFixture program;
        const frmMain window(program.parts());
        const auto* const toolBar = window.findChild<QWidget*>("tbToolBar");
        QStringList buttons;
        for (const QToolButton* button : toolBar->findChildren<QToolButton*>())
            buttons.append(button->objectName() + "=" + button->toolTip());
        QCOMPARE(buttons,
                 (QStringList{"New=New Tour", "Open=Open Tour", "Save=Save Tour", "Print=Print Tour Script",
                              "Properties=Edit Tour Properties", "EdBro=Edit Site Frame",
                              "EdNar=Edit Narration Frame", "Insert=Insert Stop (after this stop)",
                              "Delete=Delete Stop", "Forward=Push Stop Forward", "Back=Push Stop Backward",
                              "Prev=Go to Previous Stop", "Next=Go to Next Stop", "Stop=Stop Loading",
                              "Help=Wendmark Help"}));
        QCOMPARE(window.findChild<QWidget*>("picStopNum")->toolTip(), QString("Current Stop Number"));
        QCOMPARE(window.findChild<QWidget*>("picBusy")->toolTip(), QString("Loading Status"));
        QCOMPARE(window.findChild<QCheckBox*>("chkOffline")->text(), QString("Work Offline"));
    }

    void everyControlHasANameForAssistiveTools() {
        UiFixture program;
        const frmMain window(program.parts());
        for (const char* name : {"lblStopNum", "picBusy", "broMain", "Status"})
            QVERIFY2(!window.findChild<QWidget*>(name)->accessibleName().isEmpty(), name);
        for (const QToolButton* button :
             window.findChild<QWidget*>("tbToolBar")->findChildren<QToolButton*>())
            QVERIFY(!button->accessibleName().isEmpty() && !button->icon().isNull());
    }

    void narrowWindowWrapsTheToolBarAndHidesNothing() {
        UiFixture program;
        frmMain window(program.parts());
        window.resize(window.minimumSize());
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        auto* const toolBar = window.findChild<QWidget*>("tbToolBar");
        for (const QWidget* child : toolBar->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
            QVERIFY2(toolBar->rect().contains(child->geometry()), qPrintable(child->objectName()));
    }

    void firstRunOpensCentredAtTheDefaultSizeWithTheDefaultOptions() {
        UiFixture program;
        frmMain window(program.parts());
        loadAndCloseWizard(window);
        QCOMPARE(window.size(), QSize(pixelsFromTwips(6500), pixelsFromTwips(6500)));
        QCOMPARE(window.geometry().x(),
                 screenOf(window).left() + (screenOf(window).width() - window.width()) / 2);
        QCOMPARE(window.geometry().y(),
                 screenOf(window).top() + (screenOf(window).height() - window.height()) / 2);
        QCOMPARE(program.options.htmlEditorPath, std::string("NONE"));
        QVERIFY(program.options.warnURLChange);
        QVERIFY(!program.options.autoCloseBrowser);
    }

    void storedPlaceNeverShowsOnlyTheStoredSizeDoes() {
        UiFixture program;
        program.settings.store(mainSettings::left, 15);
        program.settings.store(mainSettings::top, 30);
        program.settings.store(mainSettings::width, 9000);
        program.settings.store(mainSettings::height, 7500);
        frmMain window(program.parts());
        loadAndCloseWizard(window);
        QCOMPARE(window.size(), QSize(600, 500));
        QCOMPARE(window.geometry().x(), screenOf(window).left() + (screenOf(window).width() - 600) / 2);
    }

    void settingsThatAreNoNumbersFallBack() {
        UiFixture program;
        program.settings.store(Setting<QString>{"MainWidth", {}}, QStringLiteral("wide"));
        program.settings.store(Setting<QString>{"WarnURLChange", {}}, QStringLiteral("perhaps"));
        frmMain window(program.parts());
        loadAndCloseWizard(window);
        QCOMPARE(window.width(), pixelsFromTwips(6500));
        QVERIFY(program.options.warnURLChange);
    }

    void loadFillsTheWorkingCopyAndShowsTheTemplatesTourWithItsPages() {
        UiFixture program;
        program.model.tourChanged = true;
        program.model.currentStop = 7;
        frmMain window(program.parts());
        loadAndCloseWizard(window);
        QVERIFY(!program.model.tourChanged);
        QCOMPARE(program.model.currentStop, std::int16_t{0});
        QCOMPARE(program.model.stopCount(), std::int16_t{2});
        QStringList made = program.filesOf("NewTour");
        for (const QString& name : program.filesOf("Template"))
            QVERIFY2(made.removeAll(name) == 1, qPrintable(name));
        QCOMPARE(made.join(' '), QString("page1.htm page2.htm tmpframe.htm"));
        QCOMPARE(test::dialogsExpected(), 0);
    }

    void missingTemplatesLeaveTheWindowUsable() {
        UiFixture program;
        QVERIFY(QDir(program.path("Template")).removeRecursively());
        frmMain window(program.parts());
        onNextDialog([](QDialog& error) {
            QCOMPARE(textOf(error), QString("Wendmark|Premature end of file in line 1"));
            error.close();
        });
        onNextDialog([](QDialog& error) {
            QCOMPARE(textOf(error), QString("Wendmark|Error in copying NavTemp file in line 0"));
            error.close();
        });
        loadAndCloseWizard(window);
        window.show();
        QVERIFY(window.isVisible());
        QVERIFY(!program.log.failures.empty());
    }

    void sizeBelowTheSmallestSnapsBack() {
        UiFixture program;
        frmMain window(program.parts());
        window.show();
        window.resize(10, 10);
        QCOMPARE(window.size(), QSize(pixelsFromTwips(6000), pixelsFromTwips(5000)));
    }

    void browserPanelLeavesTheGivenMargins() {
        UiFixture program;
        frmMain window(program.parts());
        window.resize(1000, 800);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const auto* const panel = window.findChild<QWidget*>("picBrowser");
        QVERIFY(std::abs(panel->width() - (1000 - pixelsFromTwips(400))) <= 1);
        QVERIFY(std::abs(window.findChild<QWidget*>("broMain")->width() -
                         (panel->width() - pixelsFromTwips(60))) <= 2);
    }

    void workOfflineBoxSetsItsFlag() {
        UiFixture program;
        const frmMain window(program.parts());
        auto* const box = window.findChild<QCheckBox*>("chkOffline");
        box->click();
        QVERIFY(window.isWorkingOffline());
        box->click();
        QVERIFY(!window.isWorkingOffline());
    }

    void loadingIndicatorCyclesWhileBusyAndRestsOtherwise() {
        LoadingIndicator moon;
        QList<int> frames;
        for (int tick = 0; tick < 10; ++tick) {
            moon.tick(true);
            frames.append(moon.shownFrame());
        }
        QCOMPARE(frames, (QList<int>{1, 2, 3, 4, 5, 6, 7, 8, 1, 2}));
        moon.tick(false);
        QCOMPARE(moon.shownFrame(), std::int16_t{1});
        moon.tick(true);
        QCOMPARE(moon.shownFrame(), std::int16_t{3});
    }

    void closingLeavesOnlyTheTemplatesScript() {
        UiFixture program;
        frmMain window(program.parts());
        window.load(program.makeTour("walk", 2));
        QSignalSpy closed(&window, &frmMain::closed);
        window.show();
        QVERIFY(window.close());
        QCoreApplication::processEvents();
        QCOMPARE(closed.count(), 1);
        QCOMPARE(program.filesOf("NewTour"), QStringList{"script1.txt"});
        QCOMPARE(test::readFile(toUtf8(program.working("script1.txt"))),
                 test::readFile(toUtf8(program.path("Template/script.txt"))));
        // The tour's own folder has got the final navigator on the way out.
        QCOMPARE(test::readFile(toUtf8(program.path("MyTours/walk/nav3.htm"))),
                 test::readFile(toUtf8(program.path("Template/navfinal.htm"))));
    }

    void closingStoresPlaceAndOptionsBeforeItEmptiesTheWorkingCopy() {
        UiFixture program;
        frmMain window(program.parts());
        loadAndCloseWizard(window);
        window.show();
        window.resize(600, 500);
        window.move(40, 50);
        program.options.htmlEditorPath = "/usr/bin/editor";
        program.options.warnURLChange = false;
        program.options.autoCloseBrowser = true;
        QVERIFY(window.close());
        QCOMPARE(program.settings.read(mainSettings::left), 600.0F);
        QCOMPARE(program.settings.read(mainSettings::top), 750.0F);
        QCOMPARE(program.settings.read(mainSettings::width), 9000.0F);
        QCOMPARE(program.settings.read(mainSettings::height), 7500.0F);
        QCOMPARE(program.settings.read(mainSettings::htmlEditor), QString("/usr/bin/editor"));
        QVERIFY(!program.settings.read(mainSettings::warnURLChange));
        QVERIFY(program.settings.read(mainSettings::autoCloseBrowser));
    }

    void closingWhileMinimisedStoresTheOptionsOnly() {
        UiFixture program;
        frmMain window(program.parts());
        loadAndCloseWizard(window);
        window.showMinimized();
        QVERIFY(window.isMinimized());
        program.options.htmlEditorPath = "/usr/bin/editor";
        QVERIFY(window.close());
        QCOMPARE(program.settings.read(Setting<QString>{"MainWidth", QStringLiteral("absent")}),
                 QString("absent"));
        QCOMPARE(program.settings.read(mainSettings::htmlEditor), QString("/usr/bin/editor"));
    }

    void closingWithChangesAndNoLeavesEverything() {
        UiFixture program;
        frmMain window(program.parts());
        loadAndCloseWizard(window);
        window.show();
        program.model.tourChanged = true;
        const QStringList before = program.filesOf("NewTour");
        onNextDialog([](QDialog& question) {
            QCOMPARE(textOf(question),
                     QString("Wendmark|Do you really want to quit the program without saving?\r\n"
                             "All changes to the Tour will be lost."));
            press(question, "No");
        });
        QVERIFY(!window.close());
        QVERIFY(window.isVisible());
        QCOMPARE(program.filesOf("NewTour"), before);
        QVERIFY(program.model.tourChanged);
        QCOMPARE(program.settings.read(Setting<QString>{"HTMLEditor", QStringLiteral("absent")}),
                 QString("absent"));
    }

    void closingWithChangesAndYesQuits() {
        UiFixture program;
        frmMain window(program.parts());
        loadAndCloseWizard(window);
        window.show();
        program.model.tourChanged = true;
        onNextDialog([](QDialog& question) { press(question, "Yes"); });
        QVERIFY(window.close());
        QCOMPARE(program.filesOf("NewTour"), QStringList{"script1.txt"});
    }

    void pageThatKeepsCrashingLeavesEveryCommandWorking() {
        UiFixture program;
        frmMain window(program.parts());
        window.load(program.makeTour("walk", 2));
        window.show();
        auto& browser = *window.findChild<BrowserView*>("broMain");
        const auto& status = *window.findChild<QLabel*>("Status");
        QSignalSpy died(&browser, &BrowserView::rendererDied);
        for (int death = 1; death <= 4; ++death) {
            qint64 renderer = 0;
            QVERIFY(test::waitUntil([&] {
                renderer = test::engineOf(browser).page()->renderProcessPid();
                return renderer > 0 && !browser.isBusy();
            }));
            QCOMPARE(kill(static_cast<pid_t>(renderer), SIGKILL), 0);
            QVERIFY(test::waitUntil([&] { return died.count() == death; }));
        }
        QVERIFY(status.text().startsWith("The page keeps crashing"));
        QCOMPARE(program.log.warnings.size(), std::size_t{4});
        window.next();
        QVERIFY(test::waitUntil([&] { return window.findChild<QLabel*>("lblStopNum")->text() == "1"; }));
    }

    void placeholderKeysAndUnknownKeysDoNothing() {
        UiFixture program;
        frmMain window(program.parts());
        loadAndCloseWizard(window);
        for (const char* key : {"picStopNum", "picBusy", "chkOffline", "nothing"})
            window.runToolBarCommand(QLatin1String(key));
        QVERIFY(!program.model.tourChanged);
        QCOMPARE(program.beeps, 0);
    }

    void helpShowsItsStartPageEvenWithoutAHelpFolder() {
        UiFixture program;
        frmMain window(program.parts());
        loadAndCloseWizard(window);
        window.show();
        window.showHelp();
        auto* const help = window.findChild<frmHelp*>();
        QVERIFY(help != nullptr && help->isVisible());
        QCOMPARE(help->windowTitle(), QString("Wendmark Help"));
        help->showMinimized();
        window.showHelp();
        QVERIFY(!help->isMinimized());
    }

    void secondStartBringsTheWindowToTheFront() {
        UiFixture program;
        frmMain window(program.parts());
        loadAndCloseWizard(window);
        window.showMinimized();
        window.bringToFront();
        QVERIFY(!window.isMinimized());
        QVERIFY(window.isVisible());
    }

    void secondStartDuringTheWizardBringsTheWizardToTheFront() {
        UiFixture program;
        frmMain window(program.parts());
        QWidget other;
        onNextDialog([&](QDialog& wizard) {
            other.show();
            other.activateWindow();
            QTRY_VERIFY_WITH_TIMEOUT(other.isActiveWindow(), patience);
            window.bringToFront();
            QTRY_VERIFY_WITH_TIMEOUT(wizard.isActiveWindow(), patience);
            QVERIFY(!window.isVisible());
            wizard.reject();
        });
        window.load();
    }
};

} // namespace wendmark

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    wendmark::MainWindowTest tests;
    return QTest::qExec(&tests, argc, argv);
}

#include "MainWindowTest.moc"
