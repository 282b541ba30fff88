#pragma once

#include <string>
#include <string_view>

namespace wendmark {

class Outcome;

/// Takes what the author is not told but whoever looks for the cause must find: one line for each event.
/// Control characters, line separators and bytes that are no UTF-8 are written as "\xHH", so that a file name
/// can neither forge a line nor steer a terminal.
class Log {
public:
    enum class Level {
        note,    ///< Expected, and without consequence for the tour.
        warning, ///< Something of the tour was left out on purpose.
        failure, ///< Something that should have happened did not.
    };

    virtual ~Log() = default;

    /// How many failures were written so far.
    int failureCount() const { return m_failureCount; }

    void note(std::string_view text) { writeLine(Level::note, text); }
    void warn(std::string_view text) { writeLine(Level::warning, text); }
    void fail(std::string_view text) { writeLine(Level::failure, text); }

    /// Goes on after a failure that is not shown to the author: writes its message, if there is one.
    void skip(const Outcome& outcome);

    /// Same, for a step that is known to fail in an ordinary run.
    void skipAsNote(const Outcome& outcome);

private:
    virtual void write(Level level, const std::string& line) = 0;

    void writeLine(Level level, std::string_view text);

    int m_failureCount = 0;
};

} // namespace wendmark
