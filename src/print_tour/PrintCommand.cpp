#include "print_tour/PrintCommand.h"

#include "platform/Strings.h"
#include "publish/PrintedTour.h"
#include "tour_cli/Folders.h"
#include "tour_cli/TerminalText.h"
#include "tour_cli/TourRun.h"
#include "ui/printing/TourPrinter.h"

#include <QLocale>
#include <QPdfWriter>
#include <QSaveFile>
#include <ostream>

namespace wendmark::cli {

namespace {

StopRange wantedRange(const PrintRequest& request, const TourModel& model) {
    return {request.from.value_or(1), request.toStop.value_or(model.stopCount())};
}

QPageSize usualPageSize() {
    const bool usesInches = QLocale::system().measurementSystem() == QLocale::ImperialUSSystem;
    return QPageSize(usesInches ? QPageSize::Letter : QPageSize::A4);
}

Outcome writePdf(const PrintedTour& printed, const TourModel& model, const std::string& tour,
                 const std::string& path) {
    QSaveFile file(toQString(path));
    if (!file.open(QIODevice::WriteOnly))
        return Outcome::failure("cannot write " + path + ": " + toUtf8(file.errorString()));
    bool done = false;
    {
        QPdfWriter writer(&file);
        writer.setPageSize(usualPageSize());
        writer.setTitle(toQString(model.tourTitle));
        writer.setCreator(QStringLiteral("Wendmark"));
        done = printTour(writer, printed, toQString(tour));
    }
    if (!done || !file.commit())
        return Outcome::failure("cannot write " + path + ": " + toUtf8(file.errorString()));
    return Outcome::success();
}

} // namespace

Outcome runPrint(const PrintRequest& request, std::ostream& output, std::ostream& errors) {
    const std::string tour = tourFolder(request.tour);
    const std::string path = absoluteFolder(request.to);
    const WorkspaceFolders folders = foldersForReading(tour);
    TourRun run(folders, errors);
    Outcome outcome = checkTour(tour, folders);
    if (outcome.ok())
        outcome = run.readInPlace(tour);
    if (!outcome.ok())
        return outcome;
    const TourModel& model = run.model();
    const PrintedTour printed =
        composePrintedTour(model, wantedRange(request, model), true, tour, std::string());
    outcome = writePdf(printed, model, tour, path);
    if (!outcome.ok())
        return outcome;
    run.printWarnings();
    output << "Printed \"" << printable(model.tourTitle) << "\", pages: " << printed.stops.size() + 1
           << ", to " << printable(path) << '\n';
    return outcome;
}

} // namespace wendmark::cli
