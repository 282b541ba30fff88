#include "ui/main/MainCommands.h"

#include "platform/Icons.h"
#include "platform/Strings.h"
#include "ui/controls/CommandBar.h"
#include "ui/main/Editors.h"
#include "ui/main/MainDialogs.h"
#include "ui/main/PlayCommands.h"
#include "ui/main/SidePanels.h"
#include "ui/main/frmMain.h"

#include <QEvent>
#include <QMenu>
#include <QMenuBar>
#include <algorithm>
#include <iterator>

namespace wendmark {

namespace {

template <auto command>
void inWindow(frmMain& window) {
    (window.*command)();
}

template <auto part, auto command>
void inPart(frmMain& window) {
    ((window.*part)().*command)();
}

constexpr MainCommand commands[] = {
    {"&File", "mnuFileNew", "&New", "Ctrl+N", inWindow<&frmMain::newTour>, "New", "New Tour", false, false,
     1},
    {"&File", "mnuFileOpen", "&Open...", "Ctrl+O", inWindow<&frmMain::openTour>, "Open", "Open Tour", false,
     true, 2},
    {"&File", "mnuFileSave", "&Save", "Ctrl+S", inWindow<&frmMain::save>, "Save", "Save Tour", false, false,
     3},
    {"&File", "mnuFileSaveAs", "Save &As...", "Ctrl+Shift+S", inWindow<&frmMain::saveAs>, nullptr, nullptr,
     false, true},
    {"&File", "mnuFilePrint", "&Print...", "Ctrl+P", inPart<&frmMain::dialogs, &MainDialogs::printTourScript>,
     "Print", "Print Tour Script", false, true, 4, true},
    {"&File|Play in &Browser", "mnuFilePlayServed", "From a &Web Server", "",
     inPart<&frmMain::play, &PlayCommands::playServed>},
    {"&File|Play in &Browser", "mnuFilePlayFromDisk", "From &Disk", "",
     inPart<&frmMain::play, &PlayCommands::playFromDisk>},
    {"&File", "mnuFileFolder", "Open Tour &Folder", "", inPart<&frmMain::play, &PlayCommands::openTourFolder>,
     nullptr, nullptr, false, true},
    {"&File", "mnuFileRecent", "Open &Recent", "", nullptr},
    {"&File", "mnuFileEarlier", "&Earlier Saves...", "", inWindow<&frmMain::openEarlierSave>},
    {"&File", "mnuFileExit", "E&xit", "Ctrl+Q", inWindow<&frmMain::quit>},
    {"&Edit", "mnuEditUndo", "&Undo", "Ctrl+Z", inWindow<&frmMain::undo>},
    {"&Edit", "mnuEditRedo", "&Redo", "Ctrl+Shift+Z", inWindow<&frmMain::redo>, nullptr, nullptr, false,
     true},
    {"&Edit", "mnuEditProperties", "Tour &Properties", "F3",
     inPart<&frmMain::dialogs, &MainDialogs::editTourProperties>, "Properties", "Edit Tour Properties", false,
     false, 5},
    {"&Edit", "mnuEditSite", "&Site Frame", "F2", inWindow<&frmMain::editSiteFrame>, "EdBro",
     "Edit Site Frame", false, false, 6},
    {"&Edit", "mnuEditNarration", "&Narration Frame", "F4", inWindow<&frmMain::editNarrationFrame>, "EdNar",
     "Edit Narration Frame", false, true, 7, true},
    {"&Edit", "mnuEditFind", "&Find in Tour...", "Ctrl+F", inPart<&frmMain::editors, &Editors::findInTour>},
    {"&Edit", "mnuEditFindNext", "Find Ne&xt", "Ctrl+G", inPart<&frmMain::editors, &Editors::findNext>},
    {"&Stops", "mnuStopsInsert", "&Insert", "Ctrl+Ins", inWindow<&frmMain::insertStop>, "Insert",
     "Insert Stop (after this stop)", true, false, 8},
    {"&Stops", "mnuStopsDelete", "&Delete", "Ctrl+Del", inWindow<&frmMain::deleteStop>, "Delete",
     "Delete Stop", true, true, 9},
    {"&Stops", "mnuStopsForward", "Move &Forward", "Ctrl+Shift+PgDown", inWindow<&frmMain::moveForward>,
     "Forward", "Push Stop Forward", true, false, 10},
    {"&Stops", "mnuStopsBack", "Move &Back", "Ctrl+Shift+PgUp", inWindow<&frmMain::moveBack>, "Back",
     "Push Stop Backward", true, true, 11, true},
    {"&Stops", "mnuStopsCheck", "&Check All Stops", "F9", inPart<&frmMain::editors, &Editors::checkStops>},
    {"&Navigate", "mnuNavigatePrev", "&Prev", "Ctrl+PgUp", inWindow<&frmMain::previous>, "Prev",
     "Go to Previous Stop", false, false, 12},
    {"&Navigate", "mnuNavigateNext", "&Next", "Ctrl+PgDown", inWindow<&frmMain::next>, "Next",
     "Go to Next Stop", false, false, 13},
    {"&Navigate", "mnuNavigateStop", "&Stop", "Shift+Esc", inWindow<&frmMain::stopLoading>, "Stop",
     "Stop Loading", false, false, 14, true},
    {"&View", "mnuViewRefresh", "&Refresh", "F5", inWindow<&frmMain::refresh>},
    {"&View", "mnuViewOptions", "&Options...", "Ctrl+,",
     inPart<&frmMain::dialogs, &MainDialogs::editOptions>},
    {"&View", "mnuViewLaunch", "&Launching Information", "",
     inPart<&frmMain::dialogs, &MainDialogs::showLaunchingInformation>, nullptr, nullptr, false, true},
    {"&View", "mnuViewStopList", "&Stop List", "F7", inPart<&frmMain::sides, &SidePanels::toggleList>},
    {"&View", "mnuViewStopPanel", "Stop &Panel", "F8", inPart<&frmMain::sides, &SidePanels::toggleStop>},
    {"&Help", "mnuHelpContents", "Wendmark &Help", "F1", inWindow<&frmMain::showHelp>, "Help",
     "Wendmark Help", false, false, 15},
    {"&Help", "mnuHelpWeb", "Wendmark &Web-site", "", inWindow<&frmMain::showWebSite>, nullptr, nullptr,
     false, true},
    {"&Help", "mnuHelpAbout", "&About", "", inPart<&frmMain::dialogs, &MainDialogs::showAbout>},
};

/// The last menu in `parent`, a menu or their bar, if it has this caption; else a new one.
template <typename Parent>
QMenu& lastMenu(Parent& parent, const QString& caption) {
    const QList<QAction*> actions = parent.actions();
    QMenu* const last = actions.isEmpty() ? nullptr : actions.last()->menu();
    return last != nullptr && last->title() == caption ? *last : *parent.addMenu(caption);
}

QAction* addCommand(frmMain& window, QMenu& menu, const MainCommand& command) {
    const QString name = QLatin1String(command.name);
    auto* const action = new CommandAction(themedIcon(name), frmMain::tr(command.caption), &window);
    action->setObjectName(name);
    action->setShortcut(QKeySequence(QLatin1String(command.shortcut), QKeySequence::PortableText));
    menu.addAction(action);
    if (command.endsMenuGroup)
        menu.addSeparator();
    if (command.command == nullptr)
        return action; // It opens a menu of its own.
    QObject::connect(action, &QAction::triggered, &window, [&window, &command] { command.command(window); });
    // The keys do what the toolbar does.
    QObject::connect(action, &CommandAction::keyPressed, &window,
                     [&window, &command] { window.give(command); });
    return action;
}

} // namespace

bool CommandAction::event(QEvent* event) {
    if (event->type() != QEvent::Shortcut || !isEnabled())
        return QAction::event(event);
    emit keyPressed();
    return true;
}

ActionsByName fillMenus(frmMain& window, QMenuBar& menus) {
    ActionsByName actions;
    for (const MainCommand& command : commands) {
        const QStringList captions = frmMain::tr(command.menu).split(QLatin1Char('|'));
        QMenu* menu = &lastMenu(menus, captions.first());
        if (captions.size() > 1)
            menu = &lastMenu(*menu, captions.last());
        actions.insert(QLatin1String(command.name), addCommand(window, *menu, command));
    }
    return actions;
}

void fillToolBar(CommandBar& bar, const ActionsByName& actions) {
    for (int place = 1;; ++place) {
        const auto* const command = std::find_if(std::begin(commands), std::end(commands),
                                                 [&](const auto& one) { return one.place == place; });
        if (command == std::end(commands))
            return;
        bar.addButton(QLatin1String(command->key), frmMain::tr(command->toolTip),
                      *actions.value(QLatin1String(command->name)));
        if (command->endsBarGroup)
            bar.addGap();
    }
}

void showSteps(const ActionsByName& actions, const std::optional<std::string>& undo,
               const std::optional<std::string>& redo) {
    const auto show = [&](const char* name, const QString& caption, const std::optional<std::string>& step) {
        QAction& action = *actions.value(QLatin1String(name));
        action.setEnabled(step.has_value());
        action.setText(step ? caption + QLatin1Char(' ') + toQString(*step) : caption);
    };
    show("mnuEditUndo", frmMain::tr("&Undo"), undo);
    show("mnuEditRedo", frmMain::tr("&Redo"), redo);
}

const MainCommand* commandOfButton(const QString& key) {
    const auto* const command = std::find_if(std::begin(commands), std::end(commands), [&](const auto& one) {
        return one.key != nullptr && key == QLatin1String(one.key);
    });
    return command == std::end(commands) ? nullptr : command;
}

} // namespace wendmark
