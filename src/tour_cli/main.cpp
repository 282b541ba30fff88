#include "maker.h"
#include "tour_cli/CommandLine.h"
#include "tour_cli/Commands.h"

#include <cerrno>
#include <csignal>
#include <exception>
#include <iostream>

namespace {

using namespace wendmark;
using namespace wendmark::cli;

enum ExitStatus { done = 0, couldNot = 1, wrongUse = 2 };

/// Sends off what was printed.
Outcome flushOutput() {
    errno = 0;
    std::cout.flush();
    return std::cout ? Outcome::success()
                     : Outcome::failure("write to", "the standard output", {errno, std::generic_category()});
}

int exitStatusOf(const Outcome& outcome) {
    if (outcome.ok())
        return done;
    std::cerr << "wendmark-tour: " << outcome.message() << '\n';
    return couldNot;
}

/// Carries out each kind of request.
struct Runner {
    int operator()(const HelpRequest&) const {
        std::cout << helpText();
        return exitStatusOf(flushOutput());
    }
    int operator()(const VersionRequest&) const {
        std::cout << "wendmark-tour " << programVersion << '\n';
        return exitStatusOf(flushOutput());
    }
    int operator()(const PublishRequest& request) const {
        return afterWork(runPublish(request, std::cout, std::cerr));
    }
    int operator()(const NewRequest& request) const {
        return afterWork(runNew(request, std::cout, std::cerr));
    }
    int operator()(const UsageError& error) const {
        std::cerr << "wendmark-tour: " << error.message << "; see wendmark-tour --help\n";
        return wrongUse;
    }

private:
    /// The tour is there also when nobody hears of it.
    static int afterWork(const Outcome& outcome) {
        if (const Outcome flushed = flushOutput(); !flushed.ok())
            std::cerr << "wendmark-tour: warning: " << flushed.message() << '\n';
        return exitStatusOf(outcome);
    }
};

} // namespace

int main(int argc, char* argv[]) {
    // A file-size limit, or nobody at the other end of a pipe, is a failure to be reported and not the end.
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
    try {
        return std::visit(Runner(), parseCommandLine({argv + 1, argv + argc}));
    } catch (const std::exception& error) {
        return exitStatusOf(Outcome::failure(error.what()));
    }
}
