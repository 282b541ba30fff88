#pragma once

#include <QAction>
#include <QHash>
#include <cstdint>
#include <optional>
#include <string>

class QMenuBar;

namespace wendmark {

class CommandBar;
class frmMain;

/// One command of the main window, in all the ways to give it.
struct MainCommand {
    const char* menu = nullptr;     ///< Caption of the menu that it stands in; behind a "|" of one inside it.
    const char* name = nullptr;     ///< Of its menu item, and of its icon.
    const char* caption = nullptr;  ///< Of the menu item.
    const char* shortcut = nullptr; ///< In the portable spelling; empty: none.
    void (*command)(frmMain&) = nullptr; ///< Null for an item that gets a menu of its own.
    const char* key = nullptr;           ///< Of its toolbar button; null: it has none.
    const char* toolTip = nullptr;       ///< Of the button.
    bool changesTour = false;   ///< Given by toolbar or keyboard, it marks the tour as changed first.
    bool endsMenuGroup = false; ///< A separator follows in the menu.
    std::int8_t place = 0;      ///< Of its button on the toolbar, from 1.
    bool endsBarGroup = false;  ///< A gap follows on the toolbar.
};

/// Tells a press of its keys from a choice in the menu.
class CommandAction final : public QAction {
    Q_OBJECT

public:
    using QAction::QAction;

signals:
    void keyPressed();

protected:
    bool event(QEvent* event) override;
};

using ActionsByName = QHash<QString, QAction*>;

/// Fills the menus with the commands and connects them. Returns the menu items by their names.
ActionsByName fillMenus(frmMain& window, QMenuBar& menus);

/// Adds the buttons of the commands that have one.
void fillToolBar(CommandBar& bar, const ActionsByName& actions);

/// Says in the items of Undo and Redo which step they deal with; without one they are disabled.
void showSteps(const ActionsByName& actions, const std::optional<std::string>& undo,
               const std::optional<std::string>& redo);

/// The command whose button has this key; null when there is none.
const MainCommand* commandOfButton(const QString& key);

} // namespace wendmark
