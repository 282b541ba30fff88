#include "tour_cli/ProgramEnd.h"

#include "tour_cli/TerminalText.h"

#include <cerrno>
#include <csignal>
#include <iostream>

namespace wendmark::cli {

void handleSignalsAsFailures() {
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
}

Outcome flushOutput() {
    errno = 0;
    std::cout.flush();
    return std::cout ? Outcome::success()
                     : Outcome::failure("write to", "the standard output", {errno, std::generic_category()});
}

int exitStatusOf(const Outcome& outcome) {
    if (outcome.ok())
        return done;
    std::cerr << "wendmark-tour: " << printable(outcome.message()) << '\n';
    return couldNot;
}

int endAfterWork(const Outcome& outcome) {
    if (const Outcome flushed = flushOutput(); !flushed.ok())
        std::cerr << "wendmark-tour: warning: " << flushed.message() << '\n';
    return exitStatusOf(outcome);
}

} // namespace wendmark::cli
