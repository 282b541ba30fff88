#pragma once

#include "ui/ProgramParts.h"

#include <QObject>
#include <functional>
#include <string>

class QWidget;

namespace wendmark {

class MainStatusBar;

/// The commands of the main window that show a modal dialog and have nothing else to do.
class MainDialogs final : public QObject {
    Q_OBJECT

public:
    /// What `parts` refers to, and the others, must outlive them; dialogs stand over `window`.
    MainDialogs(ProgramParts parts, MainStatusBar& statusBar, QWidget& window);

    void printTourScript();
    void editTourProperties();
    void editOptions();
    void showLaunchingInformation();
    void showAbout();

private:
    void run(std::function<void()> command);

    std::string m_logoFile; ///< Logo that the author chose; empty: none in this run of the program.
    ProgramParts m_parts;
    MainStatusBar& m_statusBar;
    QWidget& m_window;
};

} // namespace wendmark
