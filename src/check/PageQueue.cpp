#include "check/PageQueue.h"

#include "base/Names.h"
#include "model/StopAddress.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <ctime>
#include <iomanip>
#include <locale>
#include <sstream>

namespace wendmark {

namespace {

/// "Sun, 06 Nov 1994 08:49:37 GMT", in seconds since 1970.
std::optional<std::int64_t> secondsOfDate(const std::string& text) {
    constexpr int firstYear = 1900;
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    std::tm parts{};
    stream >> std::get_time(&parts, "%a, %d %b %Y %H:%M:%S");
    if (stream.fail())
        return std::nullopt;
    const std::chrono::year_month_day day(std::chrono::year(parts.tm_year + firstYear),
                                          std::chrono::month(static_cast<unsigned>(parts.tm_mon + 1)),
                                          std::chrono::day(static_cast<unsigned>(parts.tm_mday)));
    if (!day.ok())
        return std::nullopt;
    const auto time = std::chrono::sys_seconds(std::chrono::sys_days(day)) +
                      std::chrono::hours(parts.tm_hour) + std::chrono::minutes(parts.tm_min) +
                      std::chrono::seconds(parts.tm_sec);
    return time.time_since_epoch().count();
}

} // namespace

void PageQueue::add(std::size_t page, const std::string& address) {
    m_hosts[lowerCase(hostOf(address))].waiting.push_back(page);
    ++m_waiting;
}

bool PageQueue::isReady(const Host& host, std::int64_t now) const {
    return !host.waiting.empty() && host.taken < m_limits.perHost && host.notBefore <= now;
}

std::optional<std::size_t> PageQueue::takeNext(std::int64_t now) {
    if (static_cast<int>(m_taken.size()) >= m_limits.pages)
        return std::nullopt;
    const auto ready = [&](const auto& entry) { return isReady(entry.second, now); };
    auto found = std::find_if(m_hosts.upper_bound(m_last), m_hosts.end(), ready);
    if (found == m_hosts.end())
        found = std::find_if(m_hosts.begin(), m_hosts.end(), ready);
    if (found == m_hosts.end())
        return std::nullopt;
    auto& [name, host] = *found;
    const std::size_t page = host.waiting.front();
    host.waiting.pop_front();
    --m_waiting;
    ++host.taken;
    m_taken[page] = name;
    m_last = name;
    return page;
}

void PageQueue::end(std::size_t page) {
    const auto taken = m_taken.find(page);
    if (taken == m_taken.end())
        return;
    const auto host = m_hosts.find(taken->second);
    --host->second.taken;
    if (host->second.taken == 0 && host->second.waiting.empty())
        m_hosts.erase(host);
    m_taken.erase(taken);
}

void PageQueue::postpone(std::size_t page, std::int64_t time) {
    const auto taken = m_taken.find(page);
    if (taken == m_taken.end())
        return;
    Host& host = m_hosts[taken->second];
    host.waiting.push_front(page);
    host.notBefore = std::max(host.notBefore, time);
    ++m_waiting;
    --host.taken;
    m_taken.erase(taken);
}

std::optional<std::int64_t> PageQueue::nextTime(std::int64_t now) const {
    std::optional<std::int64_t> earliest;
    for (const auto& [name, host] : m_hosts) {
        if (!host.waiting.empty() && host.notBefore > now)
            earliest = std::min(earliest.value_or(host.notBefore), host.notBefore);
    }
    return earliest;
}

void PageQueue::clear() {
    for (auto& [name, host] : m_hosts)
        host.waiting.clear();
    std::erase_if(m_hosts, [](const auto& entry) { return entry.second.taken == 0; });
    m_waiting = 0;
}

std::optional<std::int64_t> retryAfter(const std::vector<HttpAnswer>& answers, std::int64_t now) {
    constexpr int tooManyRequests = 429;
    constexpr int unavailable = 503;
    if (answers.empty() || (answers.back().status != tooManyRequests && answers.back().status != unavailable))
        return std::nullopt;
    const std::string value = headerValue(answers.back(), "Retry-After");
    std::int64_t seconds = 0;
    const char* const end = value.data() + value.size();
    if (const auto number = std::from_chars(value.data(), end, seconds); !value.empty() && number.ptr == end)
        return seconds < 0 ? std::nullopt : std::optional(seconds);
    const auto date = secondsOfDate(value);
    return date ? std::optional(std::max<std::int64_t>(*date - now, 0)) : std::nullopt;
}

} // namespace wendmark
