#include "publish/FramingPolicy.h"

#include "base/Names.h"

#include <algorithm>
#include <optional>
#include <set>

namespace wendmark {

namespace {

constexpr std::string_view whiteSpace = " \t\n\f\r";

std::string_view trimWhiteSpace(std::string_view text) {
    const std::size_t first = text.find_first_not_of(whiteSpace);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(whiteSpace) - first + 1);
}

/// The parts between separators, empty ones included, without white space around them.
std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (;;) {
        const std::size_t end = text.find(separator);
        parts.push_back(trimWhiteSpace(text.substr(0, end)));
        if (end == std::string_view::npos)
            return parts;
        text.remove_prefix(end + 1);
    }
}

std::vector<std::string_view> splitWords(std::string_view text) {
    std::vector<std::string_view> words;
    for (text = trimWhiteSpace(text); !text.empty(); text = trimWhiteSpace(text)) {
        const std::size_t end = std::min(text.find_first_of(whiteSpace), text.size());
        words.push_back(text.substr(0, end));
        text.remove_prefix(end);
    }
    return words;
}

/// The sources that one policy gives for frame-ancestors; nothing when it does not speak of them. Of two such
/// directives the first counts.
std::optional<std::vector<std::string_view>> frameAncestors(std::string_view policy) {
    for (const std::string_view directive : split(policy, ';')) {
        std::vector<std::string_view> words = splitWords(directive);
        if (words.empty() || lowerCase(words.front()) != "frame-ancestors")
            continue;
        words.erase(words.begin());
        return words;
    }
    return std::nullopt;
}

/// Whether a source takes in every web server. One that takes in http takes in https, too; a host without a
/// scheme stands for the scheme of the page, and without a port for the usual one.
bool takesInEveryServer(std::string_view source, bool secure) {
    const std::string lowered = lowerCase(source);
    const bool asPage = lowered == "*:*" || lowered == "*:*/";
    return lowered == "*" || lowered == "http:" || lowered == "http://*:*" || lowered == "http://*:*/" ||
           (asPage && !secure);
}

FramingVerdict refusal(std::string_view header, std::string_view text) {
    return {false, std::string(header) + ": " + std::string(text)};
}

/// What the policies say; nothing when none of them speaks of frames. All that do must allow.
std::optional<FramingVerdict> verdictOfPolicies(const HttpAnswer& answer) {
    constexpr std::string_view header = "Content-Security-Policy";
    const std::string value = headerValue(answer, header);
    const bool secure = beginsIgnoringCase(answer.address, "https:");
    std::optional<FramingVerdict> verdict;
    for (const std::string_view policy : split(value, ',')) {
        const auto sources = frameAncestors(policy);
        if (!sources)
            continue;
        if (std::ranges::none_of(*sources,
                                 [&](std::string_view source) { return takesInEveryServer(source, secure); }))
            return refusal(header, policy);
        verdict = FramingVerdict{};
    }
    return verdict;
}

/// Values other than these are ignored. In a list of different values each of them refuses, ALLOWALL among
/// them: browsers take such a list for a mistake.
FramingVerdict verdictOfFrameOptions(const HttpAnswer& answer) {
    constexpr std::string_view header = "X-Frame-Options";
    const std::string value = headerValue(answer, header);
    std::set<std::string> options;
    for (const std::string_view option : split(value, ','))
        options.insert(lowerCase(option));
    const bool mistake = options.size() > 1 && options.contains("allowall");
    if (mistake || options.contains("deny") || options.contains("sameorigin"))
        return refusal(header, value);
    return {};
}

} // namespace

FramingVerdict framingPolicy(const std::vector<HttpAnswer>& answers) {
    const auto answer = std::find_if_not(answers.rbegin(), answers.rend(), isRedirect);
    if (answer == answers.rend())
        return {};
    if (const std::optional<FramingVerdict> verdict = verdictOfPolicies(*answer))
        return *verdict;
    return verdictOfFrameOptions(*answer);
}

bool isRedirect(const HttpAnswer& answer) {
    static const std::set<int> redirects = {301, 302, 303, 307, 308};
    return redirects.contains(answer.status) && !headerValue(answer, "Location").empty();
}

std::string headerValue(const HttpAnswer& answer, std::string_view name) {
    std::string joined;
    bool first = true;
    for (const HttpHeader& header : answer.headers) {
        if (!equalIgnoringCase(header.name, name))
            continue;
        if (!first)
            joined += ", ";
        joined += trimWhiteSpace(header.value);
        first = false;
    }
    return joined;
}

} // namespace wendmark
