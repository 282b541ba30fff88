#include "maker.h"
#include "tour_cli/CommandLine.h"
#include "tour_cli/Commands.h"

#include <csignal>
#include <exception>
#include <iostream>

namespace {

using namespace wendmark;
using namespace wendmark::cli;

enum ExitStatus { done = 0, couldNot = 1, wrongUse = 2 };

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
        return done;
    }
    int operator()(const VersionRequest&) const {
        std::cout << "wendmark-tour " << programVersion << '\n';
        return done;
    }
    int operator()(const PublishRequest& request) const {
        return exitStatusOf(runPublish(request, std::cout, std::cerr));
    }
    int operator()(const NewRequest& request) const {
        return exitStatusOf(runNew(request, std::cout, std::cerr));
    }
    int operator()(const UsageError& error) const {
        std::cerr << "wendmark-tour: " << error.message << "; see wendmark-tour --help\n";
        return wrongUse;
    }
};

} // namespace

int main(int argc, char* argv[]) {
    // A file-size limit is a failure to be reported, not the end of the program.
    std::signal(SIGXFSZ, SIG_IGN);
    try {
        return std::visit(Runner(), parseCommandLine({argv + 1, argv + argc}));
    } catch (const std::exception& error) {
        return exitStatusOf(Outcome::failure(error.what()));
    }
}
