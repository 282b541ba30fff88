#include "check_tour/CheckCommand.h"

#include "check_tour/CheckReport.h"
#include "check_tour/CheckedTour.h"
#include "check_tour/EndingSignals.h"
#include "check_tour/PageInquiry.h"
#include "check_tour/ReportFile.h"
#include "tour_cli/Folders.h"
#include "tour_cli/ProgramEnd.h"

#include <algorithm>
#include <iterator>
#include <ostream>
#include <unistd.h>

namespace wendmark::cli {

namespace {

constexpr int signalled = 128; // Added to the number of the signal, as shells do.
constexpr std::string_view standardOutput = "-";

PageCheck::Options optionsFrom(const CheckRequest& request) {
    constexpr int second = 1000; // Milliseconds.
    PageCheck::Options options;
    options.limits.pages = request.jobs.value_or(mostJobs);
    if (request.timeout)
        options.patience.page = *request.timeout * second;
    return options;
}

/// Those that can be read; the others are told of, and `status` says so.
std::vector<CheckedTour> readTours(const CheckRequest& request, std::ostream& errors, int& status) {
    std::vector<std::string> folders; // First of all: reading a tour makes its folder the current one.
    std::ranges::transform(request.tours, std::back_inserter(folders), tourFolder);
    std::vector<CheckedTour> tours;
    for (std::size_t i = 0; i < folders.size(); ++i) {
        CheckedTour tour;
        tour.name = request.tours.at(i);
        if (const Outcome read = readCheckedTour(folders.at(i), request.posting, tour, errors); read.ok())
            tours.push_back(std::move(tour));
        else
            status = exitStatusOf(Outcome::failure(harmless(read.message())));
    }
    return tours;
}

class CheckRun final {
public:
    CheckRun(const CheckRequest& request, std::ostream& output, std::ostream& errors)
        : m_request(request)
        , m_output(output)
        , m_errors(errors)
        , m_hasFile(request.json && *request.json != standardOutput)
        , m_file(m_hasFile ? absoluteFolder(*request.json) : std::string()) {}

    int run() {
        int ended = 0;
        EndingSignals ending;
        if (const Outcome opened = m_hasFile ? m_file.open() : Outcome::success(); !opened.ok())
            return exitStatusOf(opened);
        int status = done;
        std::vector<CheckedTour> tours = readTours(m_request, m_errors, status);
        std::ostream* const progress = isatty(STDERR_FILENO) == 1 ? &m_errors : nullptr;
        PageInquiry inquiry(tours, optionsFrom(m_request), progress);
        QObject::connect(&ending, &EndingSignals::came, &inquiry, [&](int signal) {
            ended = signalled + signal;
            inquiry.interrupt();
        });
        const Outcome asked = inquiry.run();
        if (ended != 0)
            return ended;
        if (!asked.ok()) {
            exitStatusOf(asked);
            return wrongUse; // Status 1 speaks of the tours.
        }
        if (const Outcome reported = report(tours); !reported.ok())
            return exitStatusOf(reported);
        return std::ranges::all_of(tours, isAllShown) ? status : int{couldNot};
    }

private:
    Outcome report(const std::vector<CheckedTour>& tours) {
        if (m_request.json == standardOutput)
            m_output << composeJson(tours).toStdString();
        else
            printTable(tours, m_output);
        Outcome written = m_hasFile ? m_file.write(composeJson(tours)) : Outcome::success();
        return written.ok() ? flushOutput() : written;
    }

    const CheckRequest& m_request;
    std::ostream& m_output;
    std::ostream& m_errors;
    bool m_hasFile;
    ReportFile m_file;
};

} // namespace

int runCheck(const CheckRequest& request, std::ostream& output, std::ostream& errors) {
    return CheckRun(request, output, errors).run();
}

} // namespace wendmark::cli
