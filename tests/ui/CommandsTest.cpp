#include "platform/BrowserView.h"
#include "platform/Strings.h"
#include "ui/check/frmCheck.h"
#include "ui/dialogs/frmHelp.h"
#include "ui/find/frmFind.h"
#include "ui/main/Editors.h"
#include "ui/main/frmMain.h"
#include "ui/narration/frmNarEdit.h"
#include "ui/site/frmBrowser.h"
#include "ui/support/OutsidePrograms.h"
#include "ui/support/Patience.h"
#include "ui/support/UiFixture.h"

#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTest>
#include <QToolButton>
#include <functional>

namespace wendmark {

using test::hasKeys;
using test::onNextDialog;
using test::patience;
using test::UiFixture;

namespace {

/// The program with a tour of four stops, the second one on screen.
struct Program {
    Program() : window(parts.parts()) {
        window.load(parts.makeTour(QStringLiteral("walk"), 4));
        window.show();
        parts.model.currentStop = 2;
        window.refresh();
        QVERIFY(test::waitUntil([this] {
            return window.findChild<QLabel*>(QStringLiteral("lblStopNum"))->text() == QLatin1String("2") &&
                   !browser().isBusy();
        }));
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(window), patience);
    }

    BrowserView& browser() const { return *window.findChild<BrowserView*>(QStringLiteral("broMain")); }

    QString order() const {
        QString titles;
        for (std::int16_t i = 0; i < parts.model.stopCount(); ++i)
            titles += toQString(parts.model.stops.at(i + 1).stopTitle).right(1);
        return titles + QLatin1Char('@') + QString::number(parts.model.currentStop);
    }

    UiFixture parts;
    frmMain window;
};

using Give = std::function<void()>; ///< Gives the command.

void opens(const char* dialogName, const Give& give) {
    bool opened = false;
    onNextDialog([&](QDialog& dialog) {
        opened = true;
        QCOMPARE(dialog.objectName(), QString(dialogName));
        dialog.close();
    });
    give();
    QVERIFY(opened);
}

void writes(Program& program, const QString& file, const Give& give) {
    QVERIFY(QFile::remove(program.parts.path(file)));
    give();
    QVERIFY(QFile::exists(program.parts.path(file)));
}

void makes(Program& program, const char* order, const Give& give) {
    give();
    QCOMPARE(program.order(), QString(order));
}

void stopsLoading(Program& program, const Give& give) {
    QTcpServer silent;
    QVERIFY(silent.listen(QHostAddress::LocalHost));
    program.browser().navigate(QStringLiteral("http://127.0.0.1:%1/").arg(silent.serverPort()));
    QVERIFY(test::waitUntil([&] { return silent.hasPendingConnections(); }));
    QVERIFY(program.browser().isBusy());
    give();
    QVERIFY(test::waitUntil([&] { return !program.browser().isBusy(); }));
}

void showsHelp(Program& program, const QString& address, const Give& give) {
    give();
    auto* const help = program.window.findChild<frmHelp*>();
    QVERIFY(help != nullptr && help->isVisible());
    const auto& browser = *help->findChild<BrowserView*>();
    QVERIFY(test::waitUntil([&] { return browser.locationURL().endsWith(address); }));
}

void editsSite(Program& program, const Give& give) {
    give();
    const auto* const editor = program.window.findChild<frmBrowser*>();
    QVERIFY(editor != nullptr && editor->isVisible());
    QVERIFY(editor->findChild<QComboBox*>("cboAddress")->currentText().endsWith("NewTour/newpage.htm"));
}

void editsNarration(Program& program, const Give& give) {
    give();
    const auto* const editor = program.window.findChild<frmNarEdit*>();
    QVERIFY(editor != nullptr && editor->isVisible());
    QCOMPARE(editor->findChild<QLineEdit*>("txtStopTitle")->text(),
             toQString(program.parts.model.stops.at(2).stopTitle));
}

void opensOutside(Program& program, const QString& beginning, const QString& end, const Give& give) {
    program.window.save();
    test::OutsidePrograms outside;
    give();
    QCOMPARE(outside.opened.size(), 1);
    const QString address = outside.opened.constFirst().toString();
    QVERIFY2(address.startsWith(beginning) && address.endsWith(end), qPrintable(address));
}

void asksForWords(Program& program, const Give& give) {
    give();
    const auto* const window = program.window.findChild<frmFind*>();
    QVERIFY(window != nullptr && window->isVisible());
}

void checksStops(Program& program, const Give& give) {
    give();
    const auto* const window = program.window.findChild<frmCheck*>();
    QVERIFY(window != nullptr && window->isVisible());
}

void findsNext(Program& program, const Give& give) {
    program.window.editors().findInTour();
    auto& window = *program.window.findChild<frmFind*>();
    window.findChild<QLineEdit*>("txtFind")->setText("Stop 4");
    window.close();
    program.window.activateWindow();
    QTRY_VERIFY_WITH_TIMEOUT(hasKeys(program.window), patience);
    makes(program, "1234@4", give);
    QVERIFY(!window.isVisible());
}

struct Command {
    const char* menuItem;
    const char* key;      ///< Of its toolbar button, or nullptr.
    const char* shortcut; ///< Or nullptr.
    std::function<void(Program&, const Give&)> expect;
};

void toggles(Program& program, const char* dock, const Give& give) {
    const auto& panel = *program.window.findChild<QWidget*>(dock);
    QVERIFY(!panel.isVisible());
    give();
    QVERIFY(panel.isVisible());
    give();
    QVERIFY(!panel.isVisible());
}

/// It has a menu, which is filled whenever it opens.
void listsTheTour(Program& program, const Give& give) {
    give();
    QMenu& menu = *program.window.findChild<QAction*>("mnuFileRecent")->menu();
    menu.popup({});
    QVERIFY(menu.actions().first()->text().contains(program.parts.path("MyTours/walk")));
    menu.close();
}

QList<Command> commandsOfTheMenuFile() {
    return {
        {"mnuFileNew", "New", "Ctrl+N", [](Program&, const Give& give) { opens("frmWizard2", give); }},
        {"mnuFileOpen", "Open", "Ctrl+O",
         [](Program&, const Give& give) { opens("frmSelectFolderOpen", give); }},
        {"mnuFileSave", "Save", "Ctrl+S",
         [](Program& program, const Give& give) { writes(program, "MyTours/walk/script.txt", give); }},
        {"mnuFileSaveAs", nullptr, "Ctrl+Shift+S",
         [](Program&, const Give& give) { opens("frmSelectFolderSave", give); }},
        {"mnuFilePrint", "Print", "Ctrl+P", [](Program&, const Give& give) { opens("frmPrint", give); }},
        {"mnuFilePlayServed", nullptr, nullptr,
         [](Program& program, const Give& give) {
             opensOutside(program, "http://127.0.0.1:", "/playtour.htm", give);
         }},
        {"mnuFilePlayFromDisk", nullptr, nullptr,
         [](Program& program, const Give& give) {
             opensOutside(program, "file:///", "/MyTours/walk/playtour.htm", give);
         }},
        {"mnuFileFolder", nullptr, nullptr,
         [](Program& program, const Give& give) {
             opensOutside(program, "file:///", "/MyTours/walk", give);
         }},
        {"mnuFileEarlier", nullptr, nullptr,
         [](Program&, const Give& give) { opens("frmEarlierSaves", give); }},
        {"mnuFileRecent", nullptr, nullptr, listsTheTour},
        {"mnuFileExit", nullptr, "Ctrl+Q",
         [](Program& program, const Give& give) {
             const QSignalSpy closed(&program.window, &frmMain::closed);
             give();
             QCOMPARE(closed.count(), 1);
         }},
    };
}

QList<Command> commandsOfOtherMenus() {
    return {
        {"mnuEditUndo", nullptr, "Ctrl+Z",
         [](Program& program, const Give& give) {
             program.window.insertStop();
             makes(program, "1234@2", give);
         }},
        {"mnuEditRedo", nullptr, "Ctrl+Shift+Z",
         [](Program& program, const Give& give) {
             program.window.insertStop();
             program.window.undo();
             makes(program, "12e34@3", give);
         }},
        {"mnuEditProperties", "Properties", "F3",
         [](Program&, const Give& give) { opens("frmPropTab", give); }},
        {"mnuEditSite", "EdBro", "F2", editsSite},
        {"mnuEditNarration", "EdNar", "F4", editsNarration},
        {"mnuEditFind", nullptr, "Ctrl+F", asksForWords},
        {"mnuEditFindNext", nullptr, "Ctrl+G", findsNext},
        {"mnuStopsInsert", "Insert", "Ctrl+Ins",
         [](Program& program, const Give& give) { makes(program, "12e34@3", give); }},
        {"mnuStopsDelete", "Delete", "Ctrl+Del",
         [](Program& program, const Give& give) { makes(program, "134@2", give); }},
        {"mnuStopsForward", "Forward", "Ctrl+Shift+PgDown",
         [](Program& program, const Give& give) { makes(program, "1324@3", give); }},
        {"mnuStopsBack", "Back", "Ctrl+Shift+PgUp",
         [](Program& program, const Give& give) { makes(program, "2134@1", give); }},
        {"mnuStopsCheck", nullptr, "F9", checksStops},
        {"mnuNavigatePrev", "Prev", "Ctrl+PgUp",
         [](Program& program, const Give& give) { makes(program, "1234@1", give); }},
        {"mnuNavigateNext", "Next", "Ctrl+PgDown",
         [](Program& program, const Give& give) { makes(program, "1234@3", give); }},
        {"mnuNavigateStop", "Stop", "Shift+Esc", stopsLoading},
        {"mnuViewRefresh", nullptr, "F5",
         [](Program& program, const Give& give) { writes(program, "NewTour/tmpframe.htm", give); }},
        {"mnuViewOptions", nullptr, "Ctrl+,", [](Program&, const Give& give) { opens("frmOptions", give); }},
        {"mnuViewLaunch", nullptr, nullptr, [](Program&, const Give& give) { opens("frmLaunch", give); }},
        {"mnuViewStopList", nullptr, "F7",
         [](Program& program, const Give& give) { toggles(program, "stopList", give); }},
        {"mnuViewStopPanel", nullptr, "F8",
         [](Program& program, const Give& give) { toggles(program, "stopPanel", give); }},
        {"mnuHelpContents", "Help", "F1",
         [](Program& program, const Give& give) { showsHelp(program, "/Help/index.htm", give); }},
        {"mnuHelpWeb", nullptr, nullptr,
         [](Program& program, const Give& give) { showsHelp(program, "www.brenholt.example/", give); }},
        {"mnuHelpAbout", nullptr, nullptr, [](Program&, const Give& give) { opens("frmAbout", give); }},
    };
}

const QList<Command>& commands() {
    static const QList<Command> all = commandsOfTheMenuFile() + commandsOfOtherMenus();
    return all;
}

} // namespace

/// Every command in each of the ways to give it, and what it then does.
class CommandsTest final : public QObject {
    Q_OBJECT

private slots:
    void menuItemsDoTheirCommand_data() {
        addRows([](const Command&) { return true; });
    }
    void menuItemsDoTheirCommand() {
        Program program;
        const Command& command = fetched();
        command.expect(program, [&] { action(program, command)->trigger(); });
    }

    void toolBarButtonsDoTheirCommand_data() {
        addRows([](const Command& command) { return command.key != nullptr; });
    }
    void toolBarButtonsDoTheirCommand() {
        Program program;
        const Command& command = fetched();
        command.expect(program, [&] {
            QTest::mouseClick(program.window.findChild<QToolButton*>(command.key), Qt::LeftButton);
        });
    }

    void shortcutsDoTheirCommand_data() {
        addRows([](const Command& command) { return command.shortcut != nullptr; });
    }
    void shortcutsDoTheirCommand() {
        Program program;
        const Command& command = fetched();
        const QKeySequence shortcut(command.shortcut);
        command.expect(program, [&] { QTest::keySequence(&program.window, shortcut); });
        // The menu shows it.
        QCOMPARE(action(program, command)->shortcut(), shortcut);
    }

    void everyEnabledMenuItemIsAmongThem() {
        Program program;
        QStringList known;
        for (const Command& command : commands())
            known.append(command.menuItem);
        for (const QAction* item : program.window.findChildren<QAction*>()) {
            if (item->objectName().startsWith("mnu") && item->isEnabled())
                QVERIFY2(known.contains(item->objectName()), qPrintable(item->objectName()));
        }
    }

private:
    static void addRows(const std::function<bool(const Command&)>& belongs) {
        QTest::addColumn<qsizetype>("index");
        for (qsizetype i = 0; i < commands().size(); ++i) {
            if (belongs(commands().at(i)))
                QTest::newRow(commands().at(i).menuItem) << i;
        }
    }

    static const Command& fetched() {
        QFETCH(qsizetype, index);
        return commands().at(index);
    }

    static QAction* action(const Program& program, const Command& command) {
        return program.window.findChild<QAction*>(command.menuItem);
    }
};

} // namespace wendmark

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    wendmark::CommandsTest tests;
    return QTest::qExec(&tests, argc, argv);
}

#include "CommandsTest.moc"
