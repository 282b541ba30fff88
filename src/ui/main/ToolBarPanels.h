#pragma once

class QCheckBox;
class QLabel;

namespace wendmark {

class CommandBar;
class LoadingIndicator;

/// What stands on the main window's toolbar beside its buttons.
struct ToolBarPanels {
    QLabel* stopNumber = nullptr;     ///< lblStopNum
    LoadingIndicator* busy = nullptr; ///< picBusy
    QCheckBox* offline = nullptr;     ///< chkOffline
};

/// Adds them behind the buttons; they belong to the toolbar.
ToolBarPanels addPanels(CommandBar& bar);

} // namespace wendmark
