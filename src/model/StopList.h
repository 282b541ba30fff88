#pragma once

#include <algorithm>
#include <concepts>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace wendmark {

/// Most stops, and most launching points, that a tour holds.
inline constexpr std::int16_t tourCapacity = 100;

/// One stop: a page and the words beside it. Texts are UTF-8.
struct Stop {
    std::string stopTitle;       ///< HTML.
    std::string stopURL;         ///< With a "/": a web address. Without: a file of the tour folder.
    std::string stopNarration;   ///< HTML, lines separated by CR LF.
    std::string stopInstruction; ///< HTML, lines separated by CR LF.

    friend bool operator==(const Stop&, const Stop&) = default;
};

/// The stops of a tour in their order, numbered from 1. At most tourCapacity of them are held; a script may
/// name more, which are only counted.
class StopList final {
public:
    /// How many stops the tour has, those included that are only counted.
    std::int16_t count() const { return static_cast<std::int16_t>(m_stops.size() + m_onlyCounted); }

    /// How many stops can be had from at(): 0 to tourCapacity.
    std::int16_t held() const { return static_cast<std::int16_t>(m_stops.size()); }

    /// Takes stops away at the end, or adds empty ones; beyond tourCapacity they are only counted. A negative
    /// number counts as none.
    void setCount(std::int16_t count) {
        const int wanted = std::max<int>(0, count);
        const int kept = std::min<int>(wanted, tourCapacity);
        m_stops.resize(static_cast<std::size_t>(kept));
        m_onlyCounted = static_cast<std::size_t>(wanted - kept);
    }

    /// Stop n, 1 to held(); throws std::out_of_range for any other number.
    template <std::integral Number>
    Stop& at(Number n) {
        return m_stops.at(indexOf(n));
    }
    template <std::integral Number>
    const Stop& at(Number n) const {
        return m_stops.at(indexOf(n));
    }

    /// Puts a stop before stop n, which may be held() + 1. The list must hold fewer than tourCapacity.
    template <std::integral Number>
    void insert(Number n, Stop stop) {
        if (held() >= tourCapacity || std::cmp_greater(n, held() + 1))
            throw std::out_of_range("no place for a stop there");
        m_stops.insert(m_stops.begin() + static_cast<std::ptrdiff_t>(indexOf(n)), std::move(stop));
    }

    /// Takes stop n, 1 to held(), out.
    template <std::integral Number>
    void erase(Number n) {
        m_stops.erase(m_stops.begin() + (&at(n) - m_stops.data()));
    }

    auto begin() { return m_stops.begin(); }
    auto end() { return m_stops.end(); }
    auto begin() const { return m_stops.begin(); }
    auto end() const { return m_stops.end(); }

    friend bool operator==(const StopList&, const StopList&) = default;

private:
    template <std::integral Number>
    static std::size_t indexOf(Number n) {
        if (std::cmp_less(n, 1))
            throw std::out_of_range("stops are numbered from 1");
        return static_cast<std::size_t>(n) - 1;
    }

    std::vector<Stop> m_stops;
    std::size_t m_onlyCounted = 0;
};

} // namespace wendmark
