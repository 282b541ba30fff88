#pragma once

#include <string>

class QWebEngineProfile;

namespace wendmark {

class QtDesktop;
class RecoveryKeeper;
class Registry;
class SettingsStore;
struct HandOver;
struct Options;
struct TourContext;

/// What the windows work with. Made in main(), outlives every window.
struct ProgramParts {
    TourContext& tour;
    HandOver& handOver;
    Options& options;
    QtDesktop& desktop;
    SettingsStore& settings;
    const Registry& registry;
    QWebEngineProfile& browserProfile;
    RecoveryKeeper& recovery;
    std::string savedScripts; ///< Folder for the scripts of saved tours; made when it is needed.
};

} // namespace wendmark
