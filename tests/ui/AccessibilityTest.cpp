#include "model/Workspace.h"
#include "platform/BrowserView.h"
#include "platform/RecentTours.h"
#include "recovery/SavedScripts.h"
#include "ui/Messages.h"
#include "ui/check/frmCheck.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/dialogs/Spinner.h"
#include "ui/dialogs/WizardState.h"
#include "ui/dialogs/frmAbout.h"
#include "ui/dialogs/frmEarlierSaves.h"
#include "ui/dialogs/frmHelp.h"
#include "ui/dialogs/frmLaunch.h"
#include "ui/dialogs/frmMessage.h"
#include "ui/dialogs/frmOptions.h"
#include "ui/dialogs/frmPageFiles.h"
#include "ui/dialogs/frmPrint.h"
#include "ui/dialogs/frmPropTab.h"
#include "ui/dialogs/frmRecover.h"
#include "ui/dialogs/frmRenameFile.h"
#include "ui/dialogs/frmSelectFolderOpen.h"
#include "ui/dialogs/frmSelectFolderSave.h"
#include "ui/dialogs/frmSplash.h"
#include "ui/dialogs/frmWizard1.h"
#include "ui/dialogs/frmWizard2.h"
#include "ui/dialogs/frmWizard3.h"
#include "ui/find/frmFind.h"
#include "ui/main/Editors.h"
#include "ui/main/frmMain.h"
#include "ui/narration/frmNarEdit.h"
#include "ui/site/frmBrowser.h"
#include "ui/site/frmWarnURL.h"
#include "ui/support/PageWithParts.h"
#include "ui/support/Patience.h"
#include "ui/support/UiFixture.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QDeadlineTimer>
#include <QDialog>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSet>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QWebEngineView>
#include <QWindow>

namespace wendmark {

using test::hasKeys;
using test::onNextDialog;
using test::patience;
using test::press;
using test::UiFixture;

namespace {

constexpr int keyTime = 30; // Milliseconds between two keys while a page has the focus, which moves later.

struct DialogCase {
    const char* name;
    void (*run)(UiFixture& program);
};

void runProperties(UiFixture& program, int tab) {
    frmPropTab dialog(program.document, {}, program.desktop);
    dialog.findChild<QTabWidget*>(QStringLiteral("TabStrip1"))->setCurrentIndex(tab);
    runDialog(dialog);
}

/// Every modal dialog and each kind of message box, as the program shows it.
constexpr DialogCase dialogs[] = {
    {"frmWizard1",
     [](UiFixture&) {
         WizardState state;
         const RecentTour tour{QStringLiteral("/tours/a"), QStringLiteral("Rivers"),
                               QDateTime::currentDateTime()};
         frmWizard1 page(state, {tour}, QStringLiteral("/tours/sample"));
         runDialog(page);
     }},
    {"frmWizard2",
     [](UiFixture&) {
         WizardState state;
         frmWizard2 page(state, true);
         runDialog(page);
     }},
    {"frmWizard2 without a page before it",
     [](UiFixture&) {
         WizardState state;
         frmWizard2 page(state, false);
         runDialog(page);
     }},
    {"frmWizard3",
     [](UiFixture& program) {
         WizardState state;
         frmWizard3 page(state, program.workspace.folders(), program.desktop);
         runDialog(page);
     }},
    {"frmSelectFolderOpen",
     [](UiFixture& program) {
         frmSelectFolderOpen dialog(program.workspace.folders(), program.workspace.tourPath());
         runDialog(dialog);
     }},
    {"frmSelectFolderSave",
     [](UiFixture& program) {
         frmSelectFolderSave dialog(program.workspace.folders());
         runDialog(dialog);
     }},
    {"frmAbout",
     [](UiFixture& program) {
         frmAbout dialog(program.registry);
         runDialog(dialog);
     }},
    {"frmWarnURL",
     [](UiFixture& program) {
         frmWarnURL dialog(program.options, "http://old.example/", "http://new.example/");
         runDialog(dialog);
     }},
    {"frmOptions",
     [](UiFixture& program) {
         frmOptions dialog(program.options);
         runDialog(dialog);
     }},
    {"frmPropTab, General", [](UiFixture& program) { runProperties(program, 0); }},
    {"frmPropTab, Caching", [](UiFixture& program) { runProperties(program, 1); }},
    {"frmPropTab, Launching", [](UiFixture& program) { runProperties(program, 2); }},
    {"frmPropTab, Layout", [](UiFixture& program) { runProperties(program, 3); }},
    {"frmPropTab, Logo", [](UiFixture& program) { runProperties(program, 4); }},
    {"frmLaunch",
     [](UiFixture& program) {
         frmLaunch dialog(program.document, program.desktop);
         runDialog(dialog);
     }},
    {"frmPrint",
     [](UiFixture& program) {
         frmPrint dialog(program.document, {}, program.desktop);
         auto* const selected = dialog.findChild<QRadioButton*>(QStringLiteral("optSelStops"));
         selected->setChecked(true);
         selected->setFocus();
         runDialog(dialog);
     }},
    {"frmRecover",
     [](UiFixture&) {
         frmRecover dialog(RecoveryRecord{});
         runDialog(dialog);
     }},
    {"frmEarlierSaves",
     [](UiFixture& program) {
         const std::string saves = program.scratch / "state/scripts";
         keepSavedScript(saves, "/tours/a", test::scriptOfStops(2), 100).ok();
         frmEarlierSaves dialog(saves, "/tours/a");
         runDialog(dialog);
     }},
    {"frmEarlierSaves without a save",
     [](UiFixture& program) {
         frmEarlierSaves dialog(program.scratch / "state/scripts", "/tours/b");
         runDialog(dialog);
     }},
    {"frmPageFiles",
     [](UiFixture&) {
         frmPageFiles dialog(test::pageWithParts());
         runDialog(dialog);
     }},
    {"frmRenameFile",
     [](UiFixture&) {
         frmRenameFile dialog("page.htm", {});
         runDialog(dialog);
     }},
    {"frmMessage",
     [](UiFixture&) {
         frmMessage dialog(QStringLiteral("Wendmark - Frame Test"), QStringLiteral("The site can be shown."));
         runDialog(dialog);
     }},
    {"message", [](UiFixture&) { showMessage(nullptr, QStringLiteral("Tour Name cannot be blank")); }},
    {"question", [](UiFixture&) { askYesNo(nullptr, QStringLiteral("Are you sure?")); }},
    {"question whether to save", [](UiFixture&) { askToSave(nullptr, "Save it first?", "&Save", "&Play"); }},
    {"question whether to save at all", [](UiFixture&) { askToSave(nullptr, "Save it first?", "&Save"); }},
    {"line error", [](UiFixture& program) { program.desktop.showLineError("Premature end of file"); }},
    {"name of a new folder",
     [](UiFixture& program) {
         WizardState state;
         frmWizard3 page(state, program.workspace.folders(), program.desktop);
         press(page, QStringLiteral("btnCreate"));
     }},
};

QString describe(const QObject& object) {
    return QLatin1String(object.metaObject()->className()) + QLatin1Char(' ') + object.objectName();
}

QString accessibleNameOf(QObject* object) {
    const QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(object);
    return face == nullptr ? QString() : face->text(QAccessible::Name);
}

bool isInsideBrowser(const QWidget& widget) {
    for (const QWidget* parent = widget.parentWidget(); parent != nullptr; parent = parent->parentWidget()) {
        if (qobject_cast<const QWebEngineView*>(parent) != nullptr)
            return true;
    }
    return false;
}

/// Controls of a window that take the focus, by key or by mouse. A browser hands it on to its page.
QList<QWidget*> focusableControls(const QWidget& window) {
    QList<QWidget*> controls;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        const bool focusable = qobject_cast<BrowserView*>(widget) != nullptr ||
                               (widget->focusPolicy() != Qt::NoFocus && widget->focusProxy() == nullptr);
        if (focusable && widget->isVisible() && widget->window() == &window && !isInsideBrowser(*widget))
            controls.append(widget);
    }
    return controls;
}

/// Whether people work with this widget, whatever it says about the focus itself.
bool isOperated(const QWidget& widget) {
    return qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
           qobject_cast<const QLineEdit*>(&widget) != nullptr ||
           qobject_cast<const QComboBox*>(&widget) != nullptr ||
           qobject_cast<const QAbstractItemView*>(&widget) != nullptr ||
           qobject_cast<const QWebEngineView*>(&widget) != nullptr;
}

/// Of several option buttons only the chosen one is a station; the arrow keys lead to the others.
bool isLeftToArrowKeys(const QWidget& widget) {
    const auto* const option = qobject_cast<const QRadioButton*>(&widget);
    return option != nullptr && !option->isChecked();
}

/// The small buttons of a spinner do what the Up and Down keys of its field do.
bool isLeftToTheField(const QWidget& widget) {
    return qobject_cast<const Spinner*>(widget.parentWidget()) != nullptr;
}

/// The field of a combo box, and the headers of a table, which nobody clicks.
bool isPartOfAControl(const QWidget& widget) {
    return qobject_cast<const QComboBox*>(widget.parentWidget()) != nullptr ||
           qobject_cast<const QHeaderView*>(&widget) != nullptr;
}

QSet<QWidget*> controlsToReach(const QWidget& window) {
    QSet<QWidget*> controls;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (isOperated(*widget) && !isPartOfAControl(*widget) && widget->isVisible() && widget->isEnabled() &&
            widget->window() == &window && !isLeftToArrowKeys(*widget) && !isLeftToTheField(*widget) &&
            !isInsideBrowser(*widget))
            controls.insert(widget);
    }
    return controls;
}

/// The control that has the focus; inside a browser, its view.
QWidget* focusedControl() {
    QWidget* control = QApplication::focusWidget();
    while (control != nullptr && isInsideBrowser(*control))
        control = control->parentWidget();
    return control;
}

/// Presses Tab until every control of the window had the focus; those that are left never have it. How many
/// keys that takes nobody knows: some come to nothing while a page is slow to pass the focus on.
QStringList unreachableByTab(const QWidget& window) {
    QSet<QWidget*> left = controlsToReach(window);
    left.remove(focusedControl());
    const QDeadlineTimer end(patience);
    while (!end.hasExpired() && !left.isEmpty()) {
        QTest::keyClick(window.windowHandle(), Qt::Key_Tab);
        if (qobject_cast<QWebEngineView*>(focusedControl()) != nullptr)
            QTest::qWait(keyTime);
        left.remove(focusedControl());
    }
    QStringList names;
    for (const QWidget* control : left)
        names.append(describe(*control));
    return names;
}

QStringList withoutName(const QWidget& window) {
    QStringList nameless;
    for (QWidget* control : focusableControls(window)) {
        if (accessibleNameOf(control).trimmed().isEmpty())
            nameless.append(describe(*control));
    }
    return nameless;
}

/// That something is not there, in a menu: nobody can choose it.
bool isOnlyTold(const QAction& item) {
    return !item.isEnabled() && item.objectName().isEmpty();
}

/// Access keys of captions, those that occur more than once.
QStringList repeatedAccessKeys(const QStringList& captions) {
    QSet<QString> seen;
    QStringList repeated;
    for (const QString& caption : captions) {
        const QString key = QKeySequence::mnemonic(caption).toString();
        if (!key.isEmpty() && seen.contains(key))
            repeated.append(key);
        seen.insert(key);
    }
    return repeated;
}

QStringList captionsOf(const QWidget& dialog) {
    QStringList captions;
    for (const QAbstractButton* button : dialog.findChildren<QAbstractButton*>()) {
        if (button->isVisible())
            captions.append(button->text());
    }
    for (const QLabel* label : dialog.findChildren<QLabel*>()) {
        if (label->buddy() != nullptr && label->isVisible())
            captions.append(label->text());
    }
    return captions;
}

QStringList captionsOf(const QList<QAction*>& actions) {
    QStringList captions;
    for (const QAction* action : actions)
        captions.append(action->text());
    return captions;
}

/// Shows a dialog, lets the check look at it, and makes sure that it goes again.
void withDialog(const QString& name, const std::function<void(QDialog&)>& check) {
    UiFixture program;
    for (const DialogCase& dialog : dialogs) {
        if (name != QLatin1String(dialog.name))
            continue;
        onNextDialog([&](QDialog& shown) {
            check(shown);
            if (shown.isVisible())
                shown.reject();
        });
        dialog.run(program);
    }
    QCOMPARE(test::dialogsExpected(), 0);
}

/// The main window on a stop of the sample tour.
struct OpenTour {
    OpenTour() : window(program.parts()) {
        window.load(program.path(QStringLiteral("MyTours/Sample")));
        program.model.currentStop = 1;
        window.refresh();
        window.show();
        window.activateWindow();
    }

    void waitUntilLoaded() const {
        QTRY_COMPARE_WITH_TIMEOUT(window.findChild<QLabel*>("lblStopNum")->text(), QString("1"), patience);
        QTRY_VERIFY_WITH_TIMEOUT(!window.findChild<BrowserView*>("broMain")->isBusy(), patience);
    }

    UiFixture program;
    frmMain window;
};

/// Presses a key as soon as the window is being shown.
class HastyUser final : public QObject {
public:
    bool eventFilter(QObject* window, QEvent* event) override {
        if (event->type() == QEvent::Show)
            QApplication::postEvent(window, new QKeyEvent(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier));
        return false;
    }
};

} // namespace

class AccessibilityTest final : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { QCOMPARE(test::dialogsExpected(), 0); }

    void everyControlOfADialogHasAName_data() { addDialogs(); }
    void everyControlOfADialogHasAName() {
        QFETCH(QString, name);
        withDialog(name, [](QDialog& dialog) {
            QVERIFY(!focusableControls(dialog).isEmpty());
            QCOMPARE(withoutName(dialog), QStringList());
        });
    }

    void tabReachesEveryControlOfADialog_data() { addDialogs(); }
    void tabReachesEveryControlOfADialog() {
        QFETCH(QString, name);
        withDialog(name, [](QDialog& dialog) {
            QTRY_VERIFY_WITH_TIMEOUT(hasKeys(dialog), patience);
            QVERIFY(!controlsToReach(dialog).isEmpty());
            QCOMPARE(unreachableByTab(dialog), QStringList());
        });
    }

    void escapeCancelsADialog_data() { addDialogs(); }
    void escapeCancelsADialog() {
        QFETCH(QString, name);
        withDialog(name, [](QDialog& dialog) {
            QTRY_VERIFY_WITH_TIMEOUT(hasKeys(dialog), patience);
            QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape);
            QVERIFY(!dialog.isVisible());
            QVERIFY(dialog.result() != QDialog::Accepted);
        });
    }

    void escapeAnswersNo() {
        onNextDialog([](QDialog& question) { QTest::keyClick(question.windowHandle(), Qt::Key_Escape); });
        QVERIFY(!askYesNo(nullptr, QStringLiteral("Are you sure?")));
    }

    void dialogHasOneDefaultButton_data() { addDialogs(); }
    void dialogHasOneDefaultButton() {
        QFETCH(QString, name);
        withDialog(name, [](QDialog& dialog) {
            QTRY_VERIFY_WITH_TIMEOUT(hasKeys(dialog), patience);
            int defaults = 0;
            for (const QPushButton* button : dialog.findChildren<QPushButton*>())
                defaults += button->isDefault() ? 1 : 0;
            QCOMPARE(defaults, 1);
        });
    }

    void accessKeysOfADialogDiffer_data() { addDialogs(); }
    void accessKeysOfADialogDiffer() {
        QFETCH(QString, name);
        withDialog(name, [](QDialog& dialog) {
            QVERIFY(!captionsOf(dialog).isEmpty());
            QCOMPARE(repeatedAccessKeys(captionsOf(dialog)), QStringList());
        });
    }

    void accessKeysOfTheMenusDiffer() {
        UiFixture program;
        const frmMain window(program.parts());
        const QList<QAction*> titles = window.menuBar()->actions();
        QCOMPARE(repeatedAccessKeys(captionsOf(titles)), QStringList());
        for (const QAction* title : titles) {
            const QList<QAction*> items = title->menu()->actions();
            QCOMPARE(repeatedAccessKeys(captionsOf(items)), QStringList());
        }
        for (const QMenu* menu : window.findChildren<QMenu*>()) {
            QCOMPARE(repeatedAccessKeys(captionsOf(menu->actions())), QStringList());
            for (const QAction* item : menu->actions())
                QVERIFY2(item->isSeparator() || isOnlyTold(*item) ||
                             !QKeySequence::mnemonic(item->text()).isEmpty(),
                         qPrintable(item->text()));
        }
    }

    void shortcutsOfTheMainWindowDiffer() {
        UiFixture program;
        const frmMain window(program.parts());
        QSet<QString> seen;
        for (const QAction* action : window.findChildren<QAction*>()) {
            const QString shortcut = action->shortcut().toString();
            QVERIFY2(shortcut.isEmpty() || !seen.contains(shortcut), qPrintable(action->text()));
            seen.insert(shortcut);
        }
    }

    void everyControlOfTheMainWindowHasAName() {
        OpenTour tour;
        tour.waitUntilLoaded();
        QCOMPARE(withoutName(tour.window), QStringList());
    }

    void tabReachesEveryControlOfTheMainWindowAndLeavesThePage() {
        OpenTour tour;
        tour.waitUntilLoaded();
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(tour.window), patience);
        tour.window.findChild<BrowserView*>("broMain")->setFocus();
        QCOMPARE(unreachableByTab(tour.window), QStringList());
    }

    void everyControlOfTheHelpViewerHasANameAndEscapeClosesIt() {
        UiFixture program;
        test::writeFile(program.scratch / "Help/index.htm", "<title>Help</title><a href='#'>A link</a>");
        frmHelp help(*program.profile, program.path("Help"));
        help.showPage(program.path("Help/index.htm"));
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(help), patience);
        auto* const browser = help.findChild<BrowserView*>("brwHelp");
        QTRY_COMPARE_WITH_TIMEOUT(browser->locationName(), QString("Help"), patience);
        QTRY_VERIFY_WITH_TIMEOUT(!browser->isBusy(), patience);
        QCOMPARE(withoutName(help), QStringList());
        browser->setFocus();
        QTest::keyClick(help.windowHandle(), Qt::Key_Escape);
        QTRY_VERIFY_WITH_TIMEOUT(!help.isVisible(), patience);
    }

    void narrationEditorIsUsableFromTheKeyboardAndByName() {
        OpenTour tour;
        tour.waitUntilLoaded();
        tour.program.model.autoInstruction = false; // Else its field is disabled.
        tour.window.editNarrationFrame();
        auto& editor = *tour.window.findChild<frmNarEdit*>();
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(editor), patience);
        const auto& preview = *editor.findChild<BrowserView*>("broPreview");
        QTRY_VERIFY_WITH_TIMEOUT(!preview.isBusy(), patience);
        QCOMPARE(withoutName(editor), QStringList());
        QCOMPARE(repeatedAccessKeys(captionsOf(editor)), QStringList());
        for (const QAbstractButton* button : editor.findChildren<QAbstractButton*>())
            QVERIFY2(!QKeySequence::mnemonic(button->text()).isEmpty(), qPrintable(button->text()));
        QCOMPARE(unreachableByTab(editor), QStringList());
    }

    void findWindowIsUsableFromTheKeyboardAndByName() {
        OpenTour tour;
        tour.waitUntilLoaded();
        tour.window.editors().findInTour();
        auto& find = *tour.window.findChild<frmFind*>();
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(find), patience);
        QVERIFY(!focusableControls(find).isEmpty());
        QCOMPARE(withoutName(find), QStringList());
        QCOMPARE(repeatedAccessKeys(captionsOf(find)), QStringList());
        for (const QAbstractButton* button : find.findChildren<QAbstractButton*>())
            QVERIFY2(!button->isVisible() || !QKeySequence::mnemonic(button->text()).isEmpty(),
                     qPrintable(describe(*button)));
        QCOMPARE(unreachableByTab(find), QStringList());
        QTest::keyClick(find.windowHandle(), Qt::Key_Escape);
        QVERIFY(!find.isVisible());
    }

    void checkWindowIsUsableFromTheKeyboardAndByName() {
        OpenTour tour;
        tour.waitUntilLoaded();
        tour.window.editors().checkStops();
        auto& check = *tour.window.findChild<frmCheck*>();
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(check), patience);
        QTRY_VERIFY_WITH_TIMEOUT(!tour.program.check.isRunning(), patience);
        QVERIFY(!focusableControls(check).isEmpty());
        QCOMPARE(withoutName(check), QStringList());
        QCOMPARE(repeatedAccessKeys(captionsOf(check)), QStringList());
        for (const QAbstractButton* button : check.findChildren<QAbstractButton*>())
            QVERIFY2(!button->isVisible() || !QKeySequence::mnemonic(button->text()).isEmpty(),
                     qPrintable(describe(*button)));
        QCOMPARE(unreachableByTab(check), QStringList());
        QTest::keyClick(check.windowHandle(), Qt::Key_Escape);
        QVERIFY(!check.isVisible());
    }

    void tabGoesThroughTheFieldsOfTheNarrationEditorBeforeItsButtons() {
        OpenTour tour;
        tour.waitUntilLoaded();
        tour.program.model.autoInstruction = false;
        tour.window.editNarrationFrame();
        auto& editor = *tour.window.findChild<frmNarEdit*>();
        editor.findChild<QPushButton*>("btnPreview")->setChecked(false);
        auto& title = *editor.findChild<QLineEdit*>("txtStopTitle");
        title.setFocus();
        editor.activateWindow();
        QTRY_VERIFY_WITH_TIMEOUT(QApplication::focusWidget() == &title, patience);
        QStringList order;
        for (int i = 0; i < 14; ++i) {
            order.append(focusedControl()->objectName());
            QTest::keyClick(editor.windowHandle(), Qt::Key_Tab);
        }
        QCOMPARE(order, QStringList({"txtStopTitle", "txtText", "txtMoreText", "btnBold", "btnItalic",
                                     "btnUnderline", "btnBig", "btnSmall", "btnBreak", "btnImage", "btnHLink",
                                     "btnPreview", "btnOK", "btnCancel"}));
    }

    void siteEditorIsUsableFromTheKeyboardAndByName() {
        OpenTour tour;
        tour.waitUntilLoaded();
        tour.window.editSiteFrame();
        auto& editor = *tour.window.findChild<frmBrowser*>();
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(editor), patience);
        auto& browser = *editor.findChild<BrowserView*>("brwWebBrowser");
        QTRY_VERIFY_WITH_TIMEOUT(!browser.isBusy() && !browser.locationName().isEmpty(), patience);
        QCOMPARE(withoutName(editor).join(' '), QString());
        QCOMPARE(repeatedAccessKeys(captionsOf(editor)), QStringList());
        for (const QPushButton* button : editor.findChildren<QPushButton*>())
            QVERIFY2(!QKeySequence::mnemonic(button->text()).isEmpty() || !button->icon().isNull(),
                     qPrintable(button->objectName()));
        editor.findChild<QComboBox*>("cboAddress")->setFocus();
        QCOMPARE(unreachableByTab(editor).join(' '), QString());
    }

    void notesPanelOfTheSiteEditorIsUsableFromTheKeyboard() {
        OpenTour tour;
        tour.waitUntilLoaded();
        test::writeFile(tour.program.workspace.workingFile("goodlist.txt"), "newpage.htm\r\nx\r\n255\r\n");
        tour.window.editSiteFrame();
        auto& editor = *tour.window.findChild<frmBrowser*>();
        QTRY_VERIFY_WITH_TIMEOUT(editor.isActiveWindow(), patience);
        auto& grid = *editor.findChild<QTableView*>("grdResearch");
        grid.setFocus();
        QTest::keyClick(&grid, Qt::Key_Down);
        QCOMPARE(grid.selectionModel()->selection().size(), 1);
        QTest::keyClick(editor.windowHandle(), Qt::Key_N, Qt::AltModifier);
        QTRY_VERIFY_WITH_TIMEOUT(editor.findChild<QLineEdit*>("Text1")->hasFocus(), patience);
        QCOMPARE(withoutName(editor).join(' '), QString());
        QTest::keyClick(editor.windowHandle(), Qt::Key_B, Qt::AltModifier);
        QTRY_VERIFY_WITH_TIMEOUT(grid.hasFocus(), patience);
    }

    void escapeClosesTheSplash() {
        frmSplash splash;
        splash.show();
        QVERIFY(QTest::qWaitForWindowExposed(&splash));
        QTest::keyClick(splash.windowHandle(), Qt::Key_Escape);
        QVERIFY(!splash.isVisible());
    }

    void keyThatComesWhileTheSplashOpensClosesIt() {
        frmSplash splash;
        HastyUser user;
        splash.installEventFilter(&user);
        splash.findChild<QTimer*>(QStringLiteral("Timer1"))->stop(); // Nothing but the key closes it.
        QTimer::singleShot(patience, &splash, [] { qFatal("the splash window waits for ever"); });
        QCOMPARE(splash.exec(), int(QDialog::Accepted));
    }

private:
    static void addDialogs() {
        QTest::addColumn<QString>("name");
        for (const DialogCase& dialog : dialogs)
            QTest::newRow(dialog.name) << QString(dialog.name);
    }
};

} // namespace wendmark

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    wendmark::AccessibilityTest tests;
    return QTest::qExec(&tests, argc, argv);
}

#include "AccessibilityTest.moc"
