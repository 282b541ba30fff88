#include "check_tour/PageInquiry.h"

#include "platform/Strings.h"

#include <ostream>
#include <unistd.h>

namespace wendmark::cli {

namespace {

/// Where it cannot, the engine ends the program.
bool engineCanStart() {
    return geteuid() != 0 || qEnvironmentVariableIsSet("QTWEBENGINE_DISABLE_SANDBOX") ||
           qgetenv("QTWEBENGINE_CHROMIUM_FLAGS").contains("--no-sandbox");
}

} // namespace

PageInquiry::PageInquiry(std::vector<CheckedTour>& tours, PageCheck::Options options, std::ostream* progress)
    : m_check(options, nullptr), m_progress(progress) {
    for (CheckedTour& tour : tours) {
        for (StopToCheck& stop : tour.stops) {
            if (stop.asksTheWeb)
                m_waiting[pageOf(stop.address)].emplace_back(&tour, &stop);
        }
    }
    connect(&m_check, &PageCheck::found, this, &PageInquiry::take);
    connect(&m_check, &PageCheck::ended, &m_loop, &QEventLoop::quit);
    connect(&m_check, &PageCheck::failed, this, [this](const QString& reason) {
        m_outcome = Outcome::failure(toUtf8(reason));
        m_loop.quit();
    });
}

Outcome PageInquiry::run() {
    if (!m_waiting.empty() && !engineCanStart())
        return Outcome::failure(
            "root cannot start the browser engine with its sandbox; be another user, or do "
            "without the sandbox by QTWEBENGINE_DISABLE_SANDBOX=1");
    Outcome asked = askForAll();
    if (!asked.ok() || !m_check.isRunning())
        return asked;
    tellProgress();
    if (!m_isInterrupted)
        m_loop.exec();
    clearProgress();
    return m_outcome;
}

void PageInquiry::interrupt() {
    m_isInterrupted = true;
    m_check.cancel();
    m_loop.quit();
}

/// By the address that the first stop has, which may lead to a part of the page.
Outcome PageInquiry::askForAll() {
    for (const auto& [page, stops] : m_waiting) {
        Outcome outcome = m_check.add(stops.front().second->address);
        if (!outcome.ok())
            return outcome;
    }
    return Outcome::success();
}

void PageInquiry::take(const PageFindings& findings) {
    const auto waiting = m_waiting.find(pageOf(findings.address));
    if (waiting == m_waiting.end())
        return;
    PageFindings own = findings;
    for (const auto& [tour, stop] : waiting->second) {
        own.address = stop->address;
        stop->known = judgePage(own, tour->audience);
    }
    m_waiting.erase(waiting);
    ++m_answered;
    tellProgress();
}

void PageInquiry::tellProgress() {
    if (m_progress != nullptr)
        *m_progress << "\rChecked: " << m_answered << " of " << m_answered + m_waiting.size() << " pages"
                    << std::flush;
}

/// With what every terminal understands.
void PageInquiry::clearProgress() {
    constexpr int longest = 60;
    if (m_progress != nullptr)
        *m_progress << '\r' << std::string(longest, ' ') << '\r' << std::flush;
}

} // namespace wendmark::cli
