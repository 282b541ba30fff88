#include "tour_cli/ProgramRun.h"

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace wendmark::test {

namespace {

constexpr uid_t ordinaryUser = 65534;

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using OpenFile = std::unique_ptr<std::FILE, CloseFile>;

/// Takes what a program writes. Unlike a pipe, it never makes the program wait.
OpenFile temporaryFile() {
    OpenFile file(std::tmpfile());
    if (!file)
        throw std::runtime_error("no temporary file");
    return file;
}

std::string contentsOf(std::FILE* file) {
    std::rewind(file);
    std::string text;
    std::array<char, 4096> block{};
    std::size_t count = 0;
    while ((count = std::fread(block.data(), 1, block.size(), file)) > 0)
        text.append(block.data(), count);
    return text;
}

/// Ends the child with the status of a program that could not be started.
void require(bool arranged) {
    if (!arranged)
        _exit(127);
}

int unreadPipe() {
    std::array<int, 2> ends{};
    require(pipe(ends.data()) == 0);
    close(ends[0]);
    return ends[1];
}

} // namespace

ProgramRun& ProgramRun::in(std::string currentFolder) {
    m_currentFolder = std::move(currentFolder);
    return *this;
}

ProgramRun& ProgramRun::with(const std::string& variable, const std::string& value) {
    m_environment[variable] = value;
    return *this;
}

ProgramRun& ProgramRun::asOrdinaryUser() {
    m_asOrdinaryUser = true;
    return *this;
}

ProgramRun& ProgramRun::withFileSizeLimit(std::size_t bytes) {
    m_fileSizeLimit = bytes;
    return *this;
}

ProgramRun& ProgramRun::withOutputTo(std::string path) {
    m_outputPath = std::move(path);
    return *this;
}

ProgramRun& ProgramRun::withOutputUnread() {
    m_outputUnread = true;
    return *this;
}

ProgramRun& ProgramRun::withErrorsUnread() {
    m_errorsUnread = true;
    return *this;
}

ProgramRun& ProgramRun::withWaitingSignal(int signal) {
    m_waitingSignal = signal;
    return *this;
}

ProgramResult ProgramRun::run(const std::vector<std::string>& arguments) const {
    const OpenFile output = temporaryFile();
    const OpenFile errors = temporaryFile();
    const pid_t child = fork();
    if (child == 0)
        become(arguments, fileno(output.get()), fileno(errors.get()));
    int state = 0;
    if (child < 0 || waitpid(child, &state, 0) != child)
        throw std::runtime_error("cannot start a process");
    const int status = WIFEXITED(state) ? WEXITSTATUS(state) : 128 + WTERMSIG(state);
    return {status, contentsOf(output.get()), contentsOf(errors.get())};
}

void ProgramRun::become(const std::vector<std::string>& arguments, int output, int errors) const {
    if (!m_outputPath.empty())
        require((output = open(m_outputPath.c_str(), O_WRONLY)) >= 0);
    require(dup2(m_outputUnread ? unreadPipe() : output, STDOUT_FILENO) >= 0);
    require(dup2(m_errorsUnread ? unreadPipe() : errors, STDERR_FILENO) >= 0);
    std::vector<std::string> words{m_program};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    arrange();
    execv(m_program.c_str(), pointers.data());
    _exit(127);
}

void ProgramRun::arrange() const {
    if (!m_currentFolder.empty())
        require(chdir(m_currentFolder.c_str()) == 0);
    for (const auto& [variable, value] : m_environment)
        require(setenv(variable.c_str(), value.c_str(), 1) == 0);
    if (m_fileSizeLimit) {
        const rlimit limit{*m_fileSizeLimit, *m_fileSizeLimit};
        require(setrlimit(RLIMIT_FSIZE, &limit) == 0);
    }
    if (m_waitingSignal != 0) {
        sigset_t held;
        sigemptyset(&held);
        sigaddset(&held, m_waitingSignal);
        require(sigprocmask(SIG_BLOCK, &held, nullptr) == 0 && raise(m_waitingSignal) == 0);
    }
    if (m_asOrdinaryUser && geteuid() == 0)
        require(setgid(ordinaryUser) == 0 && setuid(ordinaryUser) == 0);
}

} // namespace wendmark::test
