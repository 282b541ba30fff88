#include "model/TourChoices.h"

#include "model/TourModel.h"

#include <algorithm>

namespace wendmark {

namespace {

constexpr std::size_t longestLanguageCode = 35;

bool isLetterOrDigit(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

} // namespace

bool isLanguageCode(std::string_view text) {
    if (text.size() < 2 || text.size() > longestLanguageCode || text.front() == '-' || text.back() == '-')
        return false;
    const bool hasWrongLetter =
        std::any_of(text.begin(), text.end(), [](char c) { return c != '-' && !isLetterOrDigit(c); });
    return !hasWrongLetter && text.find("--") == std::string_view::npos;
}

bool hasChoices(const TourModel& model) {
    return !model.language.empty() || model.wordsBesidePage;
}

} // namespace wendmark
