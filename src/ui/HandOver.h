#pragma once

#include <cstdint>
#include <string>

namespace wendmark {

/// Direction chosen on the wizard's second and third page.
enum class WizardMove : std::int16_t { none = 0, back = 1, forward = 2 };

/// How the wizard's last page was left.
enum class WizardResult : std::int16_t {
    closed = 0, ///< By its close box or Esc: the wizard ends and changes nothing.
    moved = 1,  ///< "Next" on the first page, "Previous" on the others.
    accepted = 2
};

/// Place of a window on the screen, in twips.
struct Bounds {
    float left = 0;
    float top = 0;
    float width = 0;
    float height = 0;
};

/// What one window leaves for another.
struct HandOver {
    std::string siteEditURL;       ///< Address with which the site editor opens.
    std::string siteEditResult;    ///< Address that the author accepted last in the site editor.
    Bounds mainWindowBounds;       ///< Where the main window was when it opened the site editor.
    std::string dialogAnswer;      ///< What a small dialog is asked about, and its answer.
    std::int64_t editorTaskId = 0; ///< The external HTML editor; 0 before it was started.
    std::string renameReason;      ///< Line of the rename dialog that says why a name is not free.
    std::string logoFile;          ///< Logo that the author chose; empty: none in this run of the program.
    bool workOffline = false;      ///< The author's choice in the main window; nothing else reads it.
    bool openFolderChosen = false; ///< The dialog that opens a tour was left with a folder.
    bool saveFolderChosen = false; ///< The dialog that saves a tour was left with a new folder.
    bool wizardNewTour = true;     ///< The wizard is to make a new tour, not to open one.
    WizardMove wizardMove = WizardMove::none;
    WizardResult wizardResult = WizardResult::closed;
    bool wizardFirstRun = false; ///< The program has just started: the wizard begins with its first page.
    std::string wizardTourName;  ///< Folder name typed in the wizard.
    std::string wizardTourTitle; ///< Title typed in the wizard.
};

} // namespace wendmark
