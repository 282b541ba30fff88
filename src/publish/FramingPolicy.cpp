#include "publish/FramingPolicy.h"

#include "base/Names.h"
#include "model/StopAddress.h"

#include <algorithm>
#include <functional>
#include <set>

namespace wendmark {

namespace {

constexpr std::string_view policyHeader = "Content-Security-Policy";
constexpr std::string_view optionsHeader = "X-Frame-Options";
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

/// Whether a source of a policy takes a tour in.
using TakesIn = std::function<bool(std::string_view)>;

/// What the policies say; nothing when none of them speaks of frames. In each that does, one of the sources
/// must take the tour in.
std::optional<FramingVerdict> verdictOfPolicies(std::string_view policies, const TakesIn& takesIn) {
    std::optional<FramingVerdict> verdict;
    for (const std::string_view policy : split(policies, ',')) {
        const auto sources = frameAncestors(policy);
        if (!sources)
            continue;
        if (std::ranges::none_of(*sources, takesIn))
            return refusal(policyHeader, policy);
        verdict = FramingVerdict{};
    }
    return verdict;
}

/// Of the page at this address and tours on any web server.
TakesIn everyServer(std::string_view address) {
    const bool secure = beginsIgnoringCase(address, "https:");
    return [secure](std::string_view source) { return takesInEveryServer(source, secure); };
}

bool takesInDisk(std::string_view source) {
    return lowerCase(source) == "file:";
}

/// Values other than these are ignored. In a list of different values each of them refuses, ALLOWALL among
/// them: browsers take such a list for a mistake.
FramingVerdict verdictOfFrameOptions(const HttpAnswer& answer) {
    const std::string value = headerValue(answer, optionsHeader);
    std::set<std::string> options;
    for (const std::string_view option : split(value, ','))
        options.insert(lowerCase(option));
    const bool mistake = options.size() > 1 && options.contains("allowall");
    if (mistake || options.contains("deny") || options.contains("sameorigin"))
        return refusal(optionsHeader, value);
    return {};
}

/// None when all of them redirect.
const HttpAnswer* answerThatCounts(const std::vector<HttpAnswer>& answers) {
    const auto answer = std::find_if_not(answers.rbegin(), answers.rend(), isRedirect);
    return answer == answers.rend() ? nullptr : &*answer;
}

/// Its policies count before its older header.
FramingVerdict verdictOf(const HttpAnswer& answer, const TakesIn& takesIn) {
    const auto verdict = verdictOfPolicies(headerValue(answer, policyHeader), takesIn);
    return verdict ? *verdict : verdictOfFrameOptions(answer);
}

/// What stands between `before` and the next `after`; nothing where one of them is missing. The rest of the
/// text is that behind `after`.
std::optional<std::string_view> takeBetween(std::string_view& text, std::string_view before,
                                            std::string_view after) {
    const std::size_t begin = text.find(before);
    if (begin == std::string_view::npos)
        return std::nullopt;
    const std::size_t start = begin + before.size();
    const std::size_t end = text.find(after, start);
    if (end == std::string_view::npos)
        return std::nullopt;
    const std::string_view found = text.substr(start, end - start);
    text.remove_prefix(end + after.size());
    return found;
}

/// In small letters, without the port.
std::string hostName(std::string_view address) {
    const std::string host = lowerCase(hostOf(address));
    const std::size_t port = host.find(':', host.starts_with('[') ? host.find(']') : 0);
    return host.substr(0, port);
}

} // namespace

FramingVerdict framingPolicy(const std::vector<HttpAnswer>& answers) {
    const HttpAnswer* const answer = answerThatCounts(answers);
    return answer == nullptr ? FramingVerdict() : verdictOf(*answer, everyServer(answer->address));
}

FramingVerdict framingPolicyFromDisk(const std::vector<HttpAnswer>& answers) {
    const HttpAnswer* const answer = answerThatCounts(answers);
    return answer == nullptr ? FramingVerdict() : verdictOf(*answer, takesInDisk);
}

std::optional<FramingVerdict> refusalOnConsole(std::string_view message) {
    constexpr std::string_view display = "Refused to display '";
    constexpr std::string_view frame = "Refused to frame '";
    if (message.starts_with(display)) {
        if (!takeBetween(message, display, "' in a frame because it set "))
            return std::nullopt;
        const auto one = takeBetween(message, "'X-Frame-Options' to '", "'");
        const auto value = one ? one : takeBetween(message, "conflicting values ('", "')");
        return refusal(optionsHeader, value.value_or("refused"));
    }
    if (!message.starts_with(frame))
        return std::nullopt;
    const auto address = takeBetween(message, frame, "' because an ancestor violates");
    const auto policy = takeBetween(message, "Content Security Policy directive: \"", "\"");
    if (!address || !policy)
        return std::nullopt;
    return verdictOfPolicies(*policy, everyServer(*address)).value_or(refusal(policyHeader, *policy));
}

bool isInsecure(std::string_view address) {
    if (!beginsIgnoringCase(address, "http:"))
        return false;
    const std::string host = hostName(address);
    const bool isNumber = host.find_first_not_of("0123456789.") == std::string::npos;
    const bool isOwn = host == "localhost" || host.ends_with(".localhost") || host == "[::1]" ||
                       (isNumber && host.starts_with("127."));
    return !isOwn;
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
