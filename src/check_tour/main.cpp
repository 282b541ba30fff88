#include "check_tour/CheckCommand.h"
#include "tour_cli/ProgramEnd.h"

#include <QApplication>
#include <exception>
#include <iostream>

namespace {

/// Qt remarks on an environment that has no desktop, which is where this program is used.
void tellOnlyFailures(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type == QtFatalMsg)
        std::cerr << "wendmark-tour: " << text.toStdString() << '\n';
}

} // namespace

/// Started by wendmark-tour, with the same command line.
int main(int argc, char* argv[]) {
    using namespace wendmark;
    using namespace wendmark::cli;
    handleSignalsAsFailures();
    qInstallMessageHandler(tellOnlyFailures);
    qputenv("QT_QPA_PLATFORM", "offscreen"); // There may be no display, and none is needed.
    int ownWords = 1;                        // What follows is not Qt's.
    const QApplication application(ownWords, argv);
    try {
        const Request request = parseCommandLine({argv + 1, argv + argc});
        const CheckRequest* const check = std::get_if<CheckRequest>(&request);
        return check == nullptr ? int{wrongUse} : runCheck(*check, std::cout, std::cerr);
    } catch (const std::exception& error) {
        return exitStatusOf(Outcome::failure(error.what()));
    }
}
