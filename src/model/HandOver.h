#pragma once

#include <string>

namespace wendmark {

/// What one window leaves for another.
struct HandOver {
    std::string siteEditURL;       ///< Address with which the site editor opens.
    bool workOffline = false;      ///< The author's choice in the main window; nothing else reads it.
    bool openFolderChosen = false; ///< The dialog that opens a tour was left with a folder.
    bool saveFolderChosen = false; ///< The dialog that saves a tour was left with a new folder.
    std::string wizardTourName;    ///< Folder name typed in the wizard.
    std::string wizardTourTitle;   ///< Title typed in the wizard.
};

} // namespace wendmark
