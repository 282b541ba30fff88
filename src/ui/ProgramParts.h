#pragma once

class QWebEngineProfile;

namespace wendmark {

class QtDesktop;
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
};

} // namespace wendmark
