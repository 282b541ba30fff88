#pragma once

#include "platform/Tasks.h"

#include <string>

class QString;
class QWidget;

namespace wendmark {

class Log;
struct Options;

/// The author's external HTML editor. It is started once and brought to the front after that; one for the
/// whole run of the program.
class HtmlEditor final {
public:
    /// Both must outlive it.
    HtmlEditor(const Options& options, Log& log) : m_options(options), m_log(log) {}

    /// Explains what comes and opens the page at `location`, percent-encoded as browsers give it, if it is
    /// one of the author's own; else the editor without a page. False when it could not be started.
    bool launch(const std::string& location, QWidget* parent);

    /// Its process; 0 before it was started first.
    TaskId editorTaskId() const { return m_editorTaskId; }

private:
    bool start(const QString& file);

    const Options& m_options;
    Log& m_log;
    TaskId m_editorTaskId = 0;
};

} // namespace wendmark
