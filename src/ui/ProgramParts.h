#pragma once

#include <string>

class QWebEngineProfile;

namespace wendmark {

class Gate;
class HtmlEditor;
class QtDesktop;
class RecoveryKeeper;
class Registry;
class SettingsStore;
class SpellChecker;
class StopCheck;
class TourDocument;
class TourFileNames;
struct Options;

/// What the windows work with. Made in main(), outlives every window.
struct ProgramParts {
    TourDocument& document;
    Gate& gate;
    Options& options;
    QtDesktop& desktop;
    SettingsStore& settings;
    const Registry& registry;
    QWebEngineProfile& browserProfile;
    RecoveryKeeper& recovery;
    TourFileNames& fileNames;
    HtmlEditor& htmlEditor;
    SpellChecker& spelling; ///< Of all windows.
    StopCheck& check;
    std::string savedScripts; ///< Folder for the scripts of saved tours; made when it is needed.
};

} // namespace wendmark
