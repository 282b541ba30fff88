#include "ui/check/StopCheck.h"

#include "commands/TourDocument.h"
#include "platform/Settings.h"
#include "platform/SettingsStore.h"
#include "platform/Strings.h"

#include <numeric>
#include <utility>

namespace wendmark {

StopCheck::StopCheck(const TourDocument& document, SettingsStore& settings, PageCheck::Options options,
                     QObject* parent)
    : QObject(parent)
    , m_document(document)
    , m_settings(settings)
    , m_check(options, nullptr)
    , m_left(settings)
    , m_posting(postingNamed(toUtf8(settings.read(checkSettings::posting))).value_or(Posting::https)) {
    connect(&m_check, &PageCheck::found, this, &StopCheck::take);
    connect(&m_check, &PageCheck::failed, this, [this](const QString& reason) {
        cancel();
        emit failed(reason);
    });
}

StopCheck::~StopCheck() = default;

std::vector<StopCheck::Row> StopCheck::rows() const {
    std::vector<Row> rows;
    const Audience audience = audienceOf(m_document.model(), m_posting);
    for (StopToCheck& stop : stopsToCheck(m_document.model(), m_document.workspace())) {
        Row row{std::move(stop), State::known, {}};
        const auto found = m_findings.find(row.stop.address);
        if (!row.stop.asksTheWeb)
            row.verdict = row.stop.known;
        else if (m_asking.contains(row.stop.address))
            row.state = State::asking;
        else if (found == m_findings.end())
            row.state = State::unknown;
        else
            row.verdict = judgePage(found->second, audience);
        row.isLeft = isLeft(row.stop.address, row.verdict);
        row.asksForOriginal = !row.stop.original.empty() && m_asking.contains(row.stop.original);
        if (!row.stop.original.empty())
            row.original = verdictOn(row.stop.original);
        rows.push_back(std::move(row));
    }
    return rows;
}

std::optional<PageVerdict> StopCheck::verdictOn(const std::string& address) const {
    const auto found = m_findings.find(address);
    if (found == m_findings.end() || m_asking.contains(address))
        return std::nullopt;
    return judgePage(found->second, audienceOf(m_document.model(), m_posting));
}

bool StopCheck::isLeft(const std::string& address, const PageVerdict& verdict) const {
    return verdict.verdict != Verdict::plays && m_left.holds(m_posting, verdict.verdict, address);
}

void StopCheck::setLeft(const StopNumbers& stops, bool left) {
    const std::vector<Row> all = rows();
    for (const std::int16_t number : stops) {
        if (number < 1 || static_cast<std::size_t>(number) > all.size())
            continue;
        const Row& row = all.at(static_cast<std::size_t>(number - 1));
        if (!row.canBeLeft())
            continue;
        if (left)
            m_left.add(m_posting, row.verdict.verdict, row.stop.address);
        else
            m_left.remove(m_posting, row.verdict.verdict, row.stop.address);
    }
    emit changed();
}

void StopCheck::setPosting(Posting posting) {
    if (std::exchange(m_posting, posting) == posting)
        return;
    m_settings.store(checkSettings::posting, toQString(nameOf(posting)));
    emit changed();
}

Outcome StopCheck::check(const StopNumbers& stops) {
    Outcome outcome = Outcome::success();
    if (!isRunning())
        m_asked = m_found = 0;
    const std::vector<StopToCheck> all = stopsToCheck(m_document.model(), m_document.workspace());
    for (const std::int16_t number : stops) {
        if (number < 1 || static_cast<std::size_t>(number) > all.size())
            continue;
        const StopToCheck& stop = all.at(static_cast<std::size_t>(number - 1));
        const std::string& page = stop.webPage();
        if (page.empty() || m_asking.contains(page))
            continue;
        outcome = m_check.add(page);
        if (!outcome.ok())
            break;
        m_asking.insert(page);
        ++m_asked;
    }
    emit changed();
    return outcome;
}

Outcome StopCheck::checkAll() {
    StopNumbers all(static_cast<std::size_t>(m_document.model().stops.held()));
    std::iota(all.begin(), all.end(), std::int16_t{1});
    return check(all);
}

void StopCheck::cancel() {
    m_check.cancel();
    m_asking.clear();
    emit changed();
}

void StopCheck::take(const PageFindings& findings) {
    m_asking.erase(findings.address);
    m_findings[findings.address] = findings;
    for (const Posting posting : {Posting::https, Posting::http, Posting::disk}) {
        const PageVerdict verdict = judgePage(findings, audienceOf(m_document.model(), posting));
        m_left.keepOnly(posting, verdict.verdict, findings.address);
    }
    ++m_found;
    emit changed();
}

} // namespace wendmark
