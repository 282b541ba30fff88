#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace wendmark::test {

/// How a program ended and what it said.
struct ProgramResult {
    int status = 0; ///< Exit status; 128 + n when signal n ended it.
    std::string output;
    std::string errors;
};

/// Starts a program as a process of its own, without a shell, and waits for its end. Set what the run needs,
/// then call run(). Whatever fails before the program has started ends the run with status 127.
class ProgramRun final {
public:
    explicit ProgramRun(std::string program) : m_program(std::move(program)) {}

    /// Default: the test's own.
    ProgramRun& in(std::string currentFolder);

    ProgramRun& with(const std::string& variable, const std::string& value);

    /// Without the rights of root. When the test does not have them either, nothing changes.
    ProgramRun& asOrdinaryUser();

    /// No file that the program writes may become longer.
    ProgramRun& withFileSizeLimit(std::size_t bytes);

    /// The file becomes the standard output; ProgramResult::output then stays empty.
    ProgramRun& withOutputTo(std::string path);

    /// The standard output is a pipe that nobody reads.
    ProgramRun& withOutputUnread();

    /// Same for the standard error stream.
    ProgramRun& withErrorsUnread();

    /// A signal that is held back when the program starts, and has already come.
    ProgramRun& withWaitingSignal(int signal);

    ProgramResult run(const std::vector<std::string>& arguments) const;

private:
    [[noreturn]] void become(const std::vector<std::string>& arguments, int output, int errors) const;
    void arrange() const;

    std::string m_program;
    std::string m_currentFolder;
    std::map<std::string, std::string> m_environment;
    std::string m_outputPath;
    std::optional<std::size_t> m_fileSizeLimit;
    int m_waitingSignal = 0;
    bool m_asOrdinaryUser = false;
    bool m_outputUnread = false;
    bool m_errorsUnread = false;
};

} // namespace wendmark::test
