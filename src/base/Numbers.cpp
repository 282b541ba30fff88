#include "base/Numbers.h"

#include <cmath>
#include <limits>
#include <locale>
#include <sstream>
#include <string>

namespace wendmark {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Reads one number off the front of a text that holds no blanks.
class NumberScanner final {
public:
    explicit NumberScanner(std::string_view text) : m_text(text) {}

    /// The longest prefix that is a number; empty when there is none.
    std::string_view number() {
        skipSign();
        std::size_t digits = skipDigits();
        if (at('.')) {
            ++m_position;
            digits += skipDigits();
        }
        if (digits == 0)
            return {};
        skipExponent();
        return m_text.substr(0, m_position);
    }

private:
    bool at(char c) const { return m_position < m_text.size() && m_text[m_position] == c; }

    void skipSign() {
        if (at('+') || at('-'))
            ++m_position;
    }

    std::size_t skipDigits() {
        const std::size_t first = m_position;
        while (m_position < m_text.size() && isDigit(m_text[m_position]))
            ++m_position;
        return m_position - first;
    }

    void skipExponent() {
        const std::size_t start = m_position;
        if (!at('e') && !at('E'))
            return;
        ++m_position;
        skipSign();
        if (skipDigits() == 0)
            m_position = start;
    }

    std::string_view m_text;
    std::size_t m_position = 0;
};

std::string withoutBlanksAndTabs(std::string_view text) {
    std::string kept;
    for (const char c : text) {
        if (c != ' ' && c != '\t')
            kept.push_back(c);
    }
    return kept;
}

template <typename Integer>
std::optional<Integer> roundTo(double number) {
    // The default rounding mode sends ties to the even neighbour.
    const double rounded = std::nearbyint(number);
    if (!(rounded >= std::numeric_limits<Integer>::min() && rounded <= std::numeric_limits<Integer>::max()))
        return std::nullopt;
    return static_cast<Integer>(rounded);
}

} // namespace

double leadingNumber(std::string_view text) {
    const std::string compact = withoutBlanksAndTabs(text);
    const std::string_view number = NumberScanner(compact).number();
    if (number.empty())
        return 0;
    std::istringstream stream{std::string(number)};
    stream.imbue(std::locale::classic());
    double value = 0;
    stream >> value;
    return value;
}

bool isNumeric(std::string_view text) {
    constexpr std::string_view blanks = " \t";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return false;
    text = text.substr(first, text.find_last_not_of(blanks) - first + 1);
    return NumberScanner(text).number().size() == text.size();
}

std::optional<std::int16_t> roundTo16Bits(double number) {
    return roundTo<std::int16_t>(number);
}

std::optional<std::int32_t> roundTo32Bits(double number) {
    return roundTo<std::int32_t>(number);
}

} // namespace wendmark
