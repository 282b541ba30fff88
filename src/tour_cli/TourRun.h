#pragma once

#include "base/Log.h"
#include "base/Outcome.h"
#include "model/Desktop.h"
#include "model/Options.h"
#include "model/TourContext.h"
#include "model/TourModel.h"
#include "model/Workspace.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace wendmark::cli {

/// Keeps the warnings and the first failure.
class FirstFailureLog final : public Log {
public:
    /// Success as long as nothing failed.
    const Outcome& outcome() const { return m_outcome; }
    const std::vector<std::string>& warnings() const { return m_warnings; }

private:
    void write(Level level, const std::string& line) override;

    std::vector<std::string> m_warnings;
    Outcome m_outcome = Outcome::success();
};

/// A desktop without a screen: errors of lines go to a stream, and waiting takes no time. Once the run has
/// failed, which is told in a sentence of its own, what follows from that is not shown.
class StreamDesktop final : public Desktop {
public:
    StreamDesktop(std::ostream& errors, const FirstFailureLog& log) : m_errors(errors), m_log(log) {}

    void showLineError(const std::string& text) override;
    void processPendingEvents() override {}
    float timeOfDay() override;
    void navigateMainBrowser(const std::string&) override {}
    void setBusyPointer(Pointer) override {}

private:
    std::ostream& m_errors;
    const FirstFailureLog& m_log;
    float m_seconds = 0;
};

/// One run of the program without its windows, from start-up on, on the given folders.
class TourRun final {
public:
    TourRun(const WorkspaceFolders& folders, std::ostream& errors);
    TourRun(const TourRun&) = delete;
    TourRun& operator=(const TourRun&) = delete;

    /// Sets what a program that has just started has: its own defaults and what the templates' script says.
    /// The working copy stays as it is, since Open and New fill it themselves.
    void start();

    /// Reads a tour as the window program opens it, where it lies: the working copy, which is the tour's own
    /// folder for this, is not touched.
    Outcome readInPlace(const std::string& tour);

    /// What was left out on purpose, one line each, on the error stream.
    void printWarnings();

    TourModel& model() { return m_model; }
    Workspace& workspace() { return m_workspace; }
    TourContext& context() { return m_context; }
    const Outcome& outcome() const { return m_log.outcome(); }

private:
    std::ostream& m_errors;
    FirstFailureLog m_log;
    StreamDesktop m_desktop;
    TourModel m_model;
    Options m_options;
    Workspace m_workspace;
    TourContext m_context;
};

} // namespace wendmark::cli
