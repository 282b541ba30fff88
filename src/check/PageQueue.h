#pragma once

#include "publish/FramingPolicy.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace wendmark {

/// Says which page is to be asked for next, so that no server is asked for too many at once, and none before
/// it wants to be. Pages of servers that wait hold up no others. Times are milliseconds of any clock that
/// only goes forward.
class PageQueue final {
public:
    struct Limits {
        int pages = 24;  ///< At once, 1 or more.
        int perHost = 4; ///< Same of one server.
    };

    PageQueue() : PageQueue(Limits()) {}
    explicit PageQueue(Limits limits) : m_limits(limits) {}

    /// `page` is the caller's number for it.
    void add(std::size_t page, const std::string& address);

    /// Takes out the page that is to be asked for now; none: not now, or there is none.
    std::optional<std::size_t> takeNext(std::int64_t now);

    /// The page that was taken out is done.
    void end(std::size_t page);

    /// The page that was taken out goes back: its server wants to be asked again at `time`, and for nothing
    /// else before that.
    void postpone(std::size_t page, std::int64_t time);

    /// The earliest time after `now` for which a server has postponed pages; none: no server has.
    std::optional<std::int64_t> nextTime(std::int64_t now) const;

    /// Pages that wait, and those taken out and not done.
    std::size_t left() const { return m_waiting + m_taken.size(); }

    /// Forgets those that wait.
    void clear();

private:
    struct Host {
        std::deque<std::size_t> waiting;
        int taken = 0;
        std::int64_t notBefore = 0;
    };
    using Hosts = std::map<std::string, Host>;

    bool isReady(const Host& host, std::int64_t now) const;

    Limits m_limits;
    Hosts m_hosts; ///< Those that have pages waiting or taken.
    std::map<std::size_t, std::string> m_taken;
    std::size_t m_waiting = 0;
    std::string m_last; ///< The host asked last: the others come first.
};

/// How many seconds a server that turns a request down wants to be left alone, by the last of the answers:
/// 0 or more; none when it does not say so. `now` is in seconds since 1970.
std::optional<std::int64_t> retryAfter(const std::vector<HttpAnswer>& answers, std::int64_t now);

} // namespace wendmark
