#pragma once

class QCheckBox;

namespace wendmark {

class CommandBar;
class LoadingIndicator;
class StopNumber;

/// What stands on the main window's toolbar beside its buttons.
struct ToolBarPanels {
    StopNumber* stopNumber = nullptr; ///< picStopNum
    LoadingIndicator* busy = nullptr; ///< picBusy
    QCheckBox* offline = nullptr;     ///< chkOffline
};

/// Adds them behind the buttons; they belong to the toolbar.
ToolBarPanels addPanels(CommandBar& bar);

} // namespace wendmark
