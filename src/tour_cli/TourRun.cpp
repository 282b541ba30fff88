#include "tour_cli/TourRun.h"

#include "base/Files.h"
#include "commands/TourCommands.h"
#include "model/ScriptFile.h"
#include "tour_cli/Folders.h"
#include "tour_cli/TerminalText.h"

#include <ostream>

namespace wendmark::cli {

void StreamDesktop::showLineError(const std::string& text) {
    if (m_log.outcome().ok())
        m_errors << printable(text) << '\n';
}

float StreamDesktop::timeOfDay() {
    constexpr float longerThanAnyPause = 60;
    return m_seconds += longerThanAnyPause;
}

void FirstFailureLog::write(Level level, const std::string& line) {
    if (level == Level::warning)
        m_warnings.push_back(line);
    else if (level == Level::failure && m_outcome.ok())
        m_outcome = Outcome::failure(line);
}

TourRun::TourRun(const WorkspaceFolders& folders, std::ostream& errors)
    : m_errors(errors)
    , m_desktop(errors, m_log)
    , m_workspace(folders, m_model, m_desktop, m_log)
    , m_context{m_model, m_workspace, m_desktop, m_log} {}

void TourRun::start() {
    startProgram(m_context, m_options);
    readScriptFile(m_context, m_workspace.templateFile("script.txt"));
}

Outcome TourRun::readInPlace(const std::string& tour) {
    Outcome usable = checkTitle(tour);
    if (!usable.ok())
        return usable;
    start();
    m_workspace.initTourDefaults();
    m_workspace.setTourPath(tour);
    readScriptFile(m_context, files::join(tour, "script.txt"));
    // An opened tour has its placeholders and the marks of its paragraphs.
    static_cast<void>(composeScript(m_model));
    return m_log.outcome();
}

void TourRun::printWarnings() {
    for (const std::string& warning : m_log.warnings())
        m_errors << "wendmark-tour: warning: " << printable(warning) << '\n';
}

} // namespace wendmark::cli
