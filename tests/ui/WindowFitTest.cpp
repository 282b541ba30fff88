// Opens every window and dialog with long texts on the screen that the platform was given, with the scale and
// the size of text that the environment asks for.

#include "model/Workspace.h"
#include "platform/RecentTours.h"
#include "platform/Settings.h"
#include "platform/SingleProgram.h"
#include "platform/Strings.h"
#include "platform/Twips.h"
#include "recovery/SavedScripts.h"
#include "ui/Messages.h"
#include "ui/WindowPlace.h"
#include "ui/check/frmCheck.h"
#include "ui/controls/ElidedLabel.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/dialogs/FileChooser.h"
#include "ui/dialogs/FolderEntry.h"
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
#include "ui/looks/Looks.h"
#include "ui/main/Editors.h"
#include "ui/main/frmMain.h"
#include "ui/narration/frmNarEdit.h"
#include "ui/site/frmBrowser.h"
#include "ui/site/frmTestFrame.h"
#include "ui/site/frmWarnURL.h"
#include "ui/stops/SideDock.h"
#include "ui/support/LockFile.h"
#include "ui/support/PageWithParts.h"
#include "ui/support/Patience.h"
#include "ui/support/UiFixture.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QLockFile>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <algorithm>

namespace wendmark {

using test::onNextDialog;
using test::patience;
using test::press;
using test::UiFixture;

namespace {

const QString longAddress = QStringLiteral("https://www.brenholt.example/") + QString(317, QLatin1Char('a'));
const QString longTitle = QStringLiteral("The rivers of Europe, from their springs to the sea, ").repeated(8);
const QString longName = QString(180, QLatin1Char('n')) + QStringLiteral(".htm");
const QString longPath =
    QStringLiteral("/tours/") + QString(120, QLatin1Char('p')) + QLatin1Char('/') + longName;

constexpr int roomForPanels = 1500; ///< Pixels of a main window that has the panels at its sides unasked.

struct DialogCase {
    const char* name;
    void (*run)(UiFixture& program);
};

void runProperties(UiFixture& program, int tab) {
    frmPropTab dialog(program.document, {}, program.desktop);
    dialog.findChild<QTabWidget*>(QStringLiteral("TabStrip1"))->setCurrentIndex(tab);
    runDialog(dialog);
}

/// An application folder that lies deep down.
std::string longFolderIn(const UiFixture& program) {
    const QString folder = program.path(longPath.mid(1));
    QDir().mkpath(folder);
    return toUtf8(folder);
}

/// Every modal dialog and each kind of message box.
constexpr DialogCase dialogs[] = {
    {"frmSplash",
     [](UiFixture&) {
         frmSplash dialog;
         runDialog(dialog);
     }},
    {"frmWizard1",
     [](UiFixture&) {
         WizardState state;
         frmWizard1 page(state, {{longPath, longTitle, QDateTime::currentDateTime()}},
                         QStringLiteral("/tours/sample"));
         runDialog(page);
     }},
    {"frmWizard2",
     [](UiFixture&) {
         WizardState state;
         frmWizard2 page(state, true);
         runDialog(page);
     }},
    {"frmWizard3",
     [](UiFixture& program) {
         WizardState state;
         state.wizardTourName = toUtf8(longName);
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
         frmWarnURL dialog(program.options, longAddress, longAddress);
         runDialog(dialog);
     }},
    {"frmOptions",
     [](UiFixture& program) {
         program.options.htmlEditorPath = toUtf8(longPath);
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
         runDialog(dialog);
     }},
    {"frmPageFiles",
     [](UiFixture&) {
         frmPageFiles dialog(test::pageWithParts());
         runDialog(dialog);
     }},
    {"frmRecover",
     [](UiFixture& program) {
         frmRecover dialog({1700000000, toUtf8(longPath), program.model, {}});
         runDialog(dialog);
     }},
    {"frmEarlierSaves",
     [](UiFixture& program) {
         const std::string saves = program.scratch / "state/scripts";
         keepSavedScript(saves, toUtf8(longPath), test::scriptOfStops(2), 100).ok();
         frmEarlierSaves dialog(saves, toUtf8(longPath));
         runDialog(dialog);
     }},
    {"frmRenameFile",
     [](UiFixture&) {
         frmRenameFile dialog(toUtf8(longName), "which is essential for correct operation of the tour, and "
                                                "cannot be overwritten or replaced.");
         runDialog(dialog);
     }},
    {"frmMessage",
     [](UiFixture&) {
         frmMessage dialog(QStringLiteral("Wendmark - HTML Editor not specified"), longAddress);
         dialog.addReason(longPath);
         dialog.addOffer(QStringLiteral("&Make a Card"), {});
         runDialog(dialog);
     }},
    {"message",
     [](UiFixture&) {
         showMessage(nullptr, QStringLiteral("Not opened: ") + longPath,
                     QStringLiteral("Wendmark : A rather long title"));
     }},
    {"question",
     [](UiFixture&) {
         askYesNo(nullptr,
                  QStringLiteral(
                      "This is a save of the tour in %1. Do you want to put it in the place of the tour in "
                      "%2?")
                      .arg(longPath, longPath),
                  QStringLiteral("Wendmark : Abandon changes"), QMessageBox::Critical);
     }},
    {"question whether to save",
     [](UiFixture&) { askToSave(nullptr, "Save it first?", "&Save and Play", "Play from &Disk"); }},
    {"line error",
     [](UiFixture& program) { program.desktop.showLineError("Premature end of file in line 12"); }},
    {"name of a new folder",
     [](UiFixture& program) {
         WizardState state;
         frmWizard3 page(state, program.workspace.folders(), program.desktop);
         press(page, QStringLiteral("btnCreate"));
     }},
    {"folder that another machine has locked",
     [](UiFixture& program) {
         const std::string folder = longFolderIn(program);
         test::leaveForeignLock(folder);
         SingleProgram start(toQString(folder));
         enterFolder(start);
     }},
    {"program that does not answer",
     [](UiFixture& program) {
         const std::string folder = longFolderIn(program);
         QLockFile busy(toQString(test::lockIn(folder)));
         busy.tryLock(0);
         SingleProgram start(toQString(folder));
         start.patience = 1;
         enterFolder(start, {longPath});
     }},
    {"folder that cannot be written",
     [](UiFixture& program) {
         const std::string folder = longFolderIn(program) + "/missing";
         SingleProgram start(toQString(folder));
         start.patience = 1;
         enterFolder(start);
     }},
    {"file",
     [](UiFixture&) { chooseFile(nullptr, QStringLiteral("Select a page"), QStringLiteral("*.htm"), {}); }},
};

QString describe(const QWidget& widget, const QString& text) {
    return QStringLiteral("%1 %2 %3x%4 \"%5\"")
        .arg(QLatin1String(widget.metaObject()->className()), widget.objectName())
        .arg(widget.width())
        .arg(widget.height())
        .arg(text.left(40));
}

/// What the label needs to show all of its text.
bool showsItsText(const QLabel& label) {
    if (qobject_cast<const ElidedLabel*>(&label) != nullptr)
        return label.fontMetrics().horizontalAdvance(label.text()) <= label.contentsRect().width() ||
               label.toolTip() == label.text();
    if (label.wordWrap())
        return label.heightForWidth(label.width()) <= label.height() &&
               label.minimumSizeHint().width() <= label.width();
    const QSize needed = label.minimumSizeHint();
    return needed.width() <= label.width() && needed.height() <= label.height();
}

bool showsItsCaption(const QAbstractButton& button) {
    const QSize needed = button.sizeHint();
    const QSize smallest = button.minimumSizeHint();
    return (smallest.isValid() ? smallest : needed).width() <= button.width() &&
           std::min(needed.height(), smallest.isValid() ? smallest.height() : needed.height()) <=
               button.height();
}

QStringList cutTabs(const QTabBar& tabs) {
    QStringList cut;
    for (int tab = 0; tab < tabs.count(); ++tab) {
        const int needed = tabs.fontMetrics().size(Qt::TextShowMnemonic, tabs.tabText(tab)).width();
        if (tabs.tabRect(tab).width() < needed)
            cut.append(describe(tabs, tabs.tabText(tab)));
    }
    return cut;
}

bool isInside(const QWidget& widget, const QWidget& window) {
    const QWidget* const parent = widget.parentWidget();
    if (parent == nullptr || &widget == &window)
        return true;
    const auto* const area = qobject_cast<const QAbstractScrollArea*>(parent->parentWidget());
    if (area != nullptr && area->viewport() == parent)
        return true; // It scrolls.
    return parent->rect().contains(widget.geometry());
}

/// Of the labels, buttons, boxes and groups of a window, those whose text is cut off.
QStringList cutTexts(const QWidget& window) {
    QStringList cut;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible() || widget->window() != &window)
            continue;
        const auto* const label = qobject_cast<const QLabel*>(widget);
        const auto* const button = qobject_cast<const QAbstractButton*>(widget);
        const auto* const group = qobject_cast<const QGroupBox*>(widget);
        const auto* const tabs = qobject_cast<const QTabBar*>(widget);
        if (label != nullptr && !label->text().isEmpty() &&
            (!showsItsText(*label) || !isInside(*label, window)))
            cut.append(describe(*widget, label->text()));
        if (button != nullptr && !button->text().isEmpty() &&
            (!showsItsCaption(*button) || !isInside(*button, window)))
            cut.append(describe(*widget, button->text()));
        if (group != nullptr && group->minimumSizeHint().width() > group->width())
            cut.append(describe(*widget, group->title()));
        if (tabs != nullptr)
            cut.append(cutTabs(*tabs));
    }
    return cut;
}

QString rectText(const QRect& rect) {
    return QStringLiteral("%1,%2 %3x%4")
        .arg(rect.left())
        .arg(rect.top())
        .arg(rect.width())
        .arg(rect.height());
}

/// What is wrong with a window that is on screen: nothing.
QStringList findingsNow(const QWidget& window) {
    QStringList found;
    const QRect screen = window.screen()->availableGeometry();
    if (!screen.contains(window.frameGeometry()))
        found.append(
            QStringLiteral("frame %1 outside %2").arg(rectText(window.frameGeometry()), rectText(screen)));
    return found + cutTexts(window);
}

/// Same, of a window that has just been opened.
QStringList findings(QWidget& window) {
    if (!QTest::qWaitForWindowExposed(&window))
        return {QStringLiteral("not shown")};
    QCoreApplication::processEvents();
    return findingsNow(window);
}

/// Looks at the notice that pages are being made, each time it paints its text: it comes and goes by itself.
class NoticeLook final : public QObject {
public:
    NoticeLook() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        const auto* const text = qobject_cast<const QLabel*>(watched);
        if (event->type() == QEvent::Paint && text != nullptr &&
            text->objectName() == QLatin1String("lblMaking")) {
            ++looks;
            found += findingsNow(*text->window());
        }
        return false;
    }

    int looks = 0;
    QStringList found;
};

void useLongTexts(UiFixture& program) {
    program.model.tourTitle = toUtf8(longTitle);
    program.model.launchURLCount = 2;
    program.model.launchURL = {toUtf8(longAddress), toUtf8(longAddress) + "2"};
    program.model.stops.setCount(std::max<std::int16_t>(program.model.stopCount(), 1));
    Stop& stop = program.model.stops.at(1);
    stop.stopTitle = toUtf8(longTitle);
    stop.stopURL = toUtf8(longAddress);
}

/// The main window on the first stop of the sample tour, whose texts are long; with the size of a window that
/// filled a larger screen.
struct OpenTour {
    OpenTour() : window(program.parts()) {
        program.settings.store(mainSettings::width, twipsFromPixels(2500));
        program.settings.store(mainSettings::height, twipsFromPixels(1400));
        window.load(program.path(QStringLiteral("MyTours/Sample")));
        useLongTexts(program);
        program.model.currentStop = 1;
        window.show();
    }

    UiFixture program;
    frmMain window;
};

/// Whether the smallest size of the main window has room on this screen.
bool isLargeEnough(const QWidget& window) {
    const QSize largest = largestSizeOf(window);
    return largest.width() >= window.minimumWidth() && largest.height() >= window.minimumHeight();
}

} // namespace

class WindowFitTest final : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { QCOMPARE(test::dialogsExpected(), 0); }

    void dialogIsInsideTheScreenAndShowsItsTexts_data() {
        QTest::addColumn<QString>("name");
        for (const DialogCase& dialog : dialogs)
            QTest::newRow(dialog.name) << QString::fromLatin1(dialog.name);
    }
    void dialogIsInsideTheScreenAndShowsItsTexts() {
        QFETCH(QString, name);
        UiFixture program;
        useLongTexts(program);
        for (const DialogCase& dialog : dialogs) {
            if (name != QLatin1String(dialog.name))
                continue;
            onNextDialog([](QDialog& shown) {
                const QStringList found = findings(shown);
                shown.reject();
                QCOMPARE(found.join(QLatin1String("; ")), QString());
            });
            dialog.run(program);
        }
    }

    void mainWindowIsInsideTheScreenAndShowsItsTexts() {
        OpenTour open;
        if (!isLargeEnough(open.window))
            QSKIP("The smallest size of the main window is larger than this screen.");
        QTRY_COMPARE_WITH_TIMEOUT(findings(open.window).join(QLatin1String("; ")), QString(), patience);
    }

    void panelsAtTheSidesShowTheirTexts() {
        OpenTour open;
        if (!isLargeEnough(open.window))
            QSKIP("The smallest size of the main window is larger than this screen.");
        auto& list = *open.window.findChild<SideDock*>(QStringLiteral("stopList"));
        auto& stop = *open.window.findChild<SideDock*>(QStringLiteral("stopPanel"));
        const bool both = open.window.width() >= roomForPanels;
        list.setVisible(true);
        stop.setVisible(both);
        QTRY_COMPARE_WITH_TIMEOUT(findings(open.window).join(QLatin1String("; ")), QString(), patience);
        list.setVisible(both);
        stop.setVisible(true);
        for (const int width : {1, 400}) {
            open.window.resizeDocks({&list, &stop}, {width, width}, Qt::Horizontal);
            QTRY_COMPARE_WITH_TIMEOUT(findings(open.window).join(QLatin1String("; ")), QString(), patience);
        }
    }

    void noticeOfATourThatTakesLongFits() {
        UiFixture program;
        qint64 now = 0;
        program.stepClock = [&now] { return now += 1000; }; // Each step is a long one.
        NoticeLook look;
        frmMain window(program.parts());
        window.load(program.makeTour(longName, 3));
        QVERIFY(look.looks > 0);
        QCOMPARE(look.found.join(QLatin1String("; ")), QString());
    }

    void narrationEditorIsInsideTheScreenAndShowsItsTexts() {
        OpenTour open;
        open.program.settings.store(narrationSettings::width, twipsFromPixels(2500));
        open.program.settings.store(narrationSettings::height, twipsFromPixels(1400));
        open.window.editNarrationFrame();
        auto& editor = *open.window.findChild<frmNarEdit*>();
        QCOMPARE(findings(editor).join(QLatin1String("; ")), QString());
        press(editor, QStringLiteral("btnPreview"));
        press(editor, QStringLiteral("btnPreview"));
        QCOMPARE(findings(editor).join(QLatin1String("; ")), QString());
        auto* const words = editor.findChild<QPlainTextEdit*>(QStringLiteral("txtText"));
        words->setPlainText(QStringLiteral("<IMG SRC=\"fr-logo.gif\">"));
        words->moveCursor(QTextCursor::End);
        QTRY_VERIFY_WITH_TIMEOUT(
            editor.findChild<QWidget*>(QStringLiteral("txtPictureDescription"))->isVisible(), patience);
        QTRY_COMPARE_WITH_TIMEOUT(findings(editor).join(QLatin1String("; ")), QString(), patience);
    }

    void siteEditorIsInsideTheScreenAndShowsItsTexts() {
        OpenTour open;
        open.window.editSiteFrame();
        auto& editor = *open.window.findChild<frmBrowser*>();
        QCOMPARE(findings(editor).join(QLatin1String("; ")), QString());
        onNextDialog([](QDialog& shown) {
            QCOMPARE(shown.objectName(), QStringLiteral("frmTestFrame"));
            QTRY_VERIFY_WITH_TIMEOUT(dynamic_cast<frmTestFrame&>(shown).frameTestDone(), patience);
            const QStringList found = findings(shown);
            shown.reject();
            QCOMPARE(found.join(QLatin1String("; ")), QString());
        });
        editor.findChild<QAction*>(QStringLiteral("mnuTestFrame"))->trigger();
        QCOMPARE(test::dialogsExpected(), 0);
        editor.closeNow();
    }

    void findWindowIsInsideTheScreenAndShowsItsTexts() {
        OpenTour open;
        open.window.editors().findInTour();
        auto& find = *open.window.findChild<frmFind*>();
        find.findChild<QLineEdit*>(QStringLiteral("txtFind"))->setText(QStringLiteral("the"));
        QCOMPARE(findings(find).join(QLatin1String("; ")), QString());
    }

    void checkWindowIsInsideTheScreenAndShowsItsTexts() {
        OpenTour open;
        open.window.editors().checkStops();
        auto& check = *open.window.findChild<frmCheck*>();
        QTRY_VERIFY_WITH_TIMEOUT(!open.program.check.isRunning(), patience);
        QCOMPARE(findings(check).join(QLatin1String("; ")), QString());
    }

    void helpIsInsideTheScreen() {
        OpenTour open;
        open.window.showHelp();
        QCOMPARE(findings(*open.window.findChild<frmHelp*>()).join(QLatin1String("; ")), QString());
    }
};

} // namespace wendmark

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    wendmark::applyLooks(false); // As authors see it where the desktop brings no theme.
    if (const int points = qEnvironmentVariableIntValue("WENDMARK_TEXT_SIZE"); points > 0) {
        QFont font = QApplication::font();
        font.setPointSize(points);
        QApplication::setFont(font);
    }
    wendmark::WindowFitTest tests;
    return QTest::qExec(&tests, argc, argv);
}

#include "WindowFitTest.moc"
