#include "base/Files.h"
#include "maker.h"
#include "tour_cli/CommandLine.h"
#include "tour_cli/Commands.h"
#include "tour_cli/Folders.h"
#include "tour_cli/HelpText.h"
#include "tour_cli/ProgramEnd.h"
#include "tour_cli/TerminalText.h"

#include <cerrno>
#include <exception>
#include <iostream>
#include <unistd.h>

namespace {

using namespace wendmark;
using namespace wendmark::cli;

/// Carries out each kind of request.
struct Runner {
    char** words; ///< The command line, with the program's name first.

    int operator()(const HelpRequest& request) const {
        std::cout << helpText(request.command);
        return exitStatusOf(flushOutput());
    }
    int operator()(const VersionRequest&) const {
        std::cout << "wendmark-tour " << programVersion << '\n';
        return exitStatusOf(flushOutput());
    }
    int operator()(const PublishRequest& request) const {
        return endAfterWork(runPublish(request, std::cout, std::cerr));
    }
    int operator()(const NewRequest& request) const {
        return endAfterWork(runNew(request, std::cout, std::cerr));
    }
    /// Laying out pages needs more libraries than everything else together: a program beside this one does
    /// it.
    int operator()(const PrintRequest& request) const {
        const Outcome replaceable = checkReplaceable(absoluteFolder(request.to));
        return exitStatusOf(replaceable.ok() ? become("print-tour") : replaceable);
    }
    /// Same for the browser engine.
    int operator()(const CheckRequest&) const {
        exitStatusOf(become("check-tour"));
        return wrongUse; // Status 1 speaks of the tours.
    }
    int operator()(const UsageError& error) const {
        std::cerr << "wendmark-tour: " << printable(error.message) << "; see wendmark-tour --help\n";
        return wrongUse;
    }

private:
    /// Returns only when that program cannot be started.
    Outcome become(std::string_view helper) const {
        const std::string program = files::join(programFolder(), helper);
        execv(program.c_str(), words);
        return Outcome::failure("start", program, {errno, std::generic_category()});
    }
};

} // namespace

int main(int argc, char* argv[]) {
    handleSignalsAsFailures();
    try {
        return std::visit(Runner{argv}, parseCommandLine({argv + 1, argv + argc}));
    } catch (const std::exception& error) {
        return exitStatusOf(Outcome::failure(error.what()));
    }
}
