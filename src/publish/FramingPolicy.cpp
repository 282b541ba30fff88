#include "publish/FramingPolicy.h"

#include "base/Names.h"
#include "model/StopAddress.h"

#include <algorithm>
#include <charconv>
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

int usualPort(std::string_view scheme) {
    return scheme == "https" ? 443 : 80;
}

/// Of the host that the text begins with; behind it stands a colon, or nothing.
std::size_t hostLength(std::string_view text) {
    return std::min(text.find(':', text.starts_with('[') ? text.find(']') : 0), text.size());
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

bool takesInScheme(std::string_view source, std::string_view scheme) {
    return source == scheme || (source == "http" && scheme == "https");
}

bool takesInHost(std::string_view source, std::string_view host) {
    if (source == "*")
        return true;
    return source.starts_with("*.") ? host.ends_with(source.substr(1)) : host == source;
}

/// `port` as it is written in the source; empty: none is.
bool takesInPort(std::string_view port, const WebOrigin& tour) {
    if (port.empty())
        return tour.port == usualPort(tour.scheme);
    return port == "*" || port == std::to_string(tour.port) ||
           (port == "80" && tour.scheme == "https" && tour.port == usualPort("https"));
}

/// Whether a source takes in tours of this site; the page lies at `address`.
bool takesInTour(std::string_view source, std::string_view address, const WebOrigin& tour) {
    constexpr std::string_view schemeEnd = "://";
    const std::string lowered = lowerCase(source);
    const std::optional<WebOrigin> page = originOf(address);
    if (lowered == "'self'")
        return page == tour;
    if (lowered == "*" ||
        (lowered.ends_with(':') && takesInScheme(lowered.substr(0, lowered.size() - 1), tour.scheme)))
        return true;
    std::string_view rest = lowered;
    const std::size_t behindScheme = rest.find(schemeEnd);
    std::string_view scheme = page ? std::string_view(page->scheme) : std::string_view();
    if (behindScheme != std::string_view::npos) {
        scheme = rest.substr(0, behindScheme);
        rest.remove_prefix(behindScheme + schemeEnd.size());
    }
    rest = rest.substr(0, rest.find('/'));
    const std::size_t hostEnd = hostLength(rest);
    const std::string_view port = rest.substr(std::min(hostEnd + 1, rest.size()));
    return takesInScheme(scheme, tour.scheme) && takesInHost(rest.substr(0, hostEnd), tour.host) &&
           takesInPort(port, tour);
}

/// Values other than these are ignored. In a list of different values each of them refuses, ALLOWALL among
/// them: browsers take such a list for a mistake.
FramingVerdict verdictOfFrameOptions(const HttpAnswer& answer, bool isSameSite) {
    const std::string value = headerValue(answer, optionsHeader);
    std::set<std::string> options;
    for (const std::string_view option : split(value, ','))
        options.insert(lowerCase(option));
    const bool mistake = options.size() > 1 && options.contains("allowall");
    const bool elsewhere = options.contains("sameorigin") && !(isSameSite && options.size() == 1);
    if (mistake || elsewhere || options.contains("deny"))
        return refusal(optionsHeader, value);
    return {};
}

/// None when all of them redirect.
const HttpAnswer* answerThatCounts(const std::vector<HttpAnswer>& answers) {
    const auto answer = std::find_if_not(answers.rbegin(), answers.rend(), isRedirect);
    return answer == answers.rend() ? nullptr : &*answer;
}

/// Its policies count before its older header.
FramingVerdict verdictOf(const HttpAnswer& answer, const TakesIn& takesIn, bool isSameSite = false) {
    const auto verdict = verdictOfPolicies(headerValue(answer, policyHeader), takesIn);
    return verdict ? *verdict : verdictOfFrameOptions(answer, isSameSite);
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

} // namespace

FramingVerdict framingPolicy(const std::vector<HttpAnswer>& answers) {
    const HttpAnswer* const answer = answerThatCounts(answers);
    return answer == nullptr ? FramingVerdict() : verdictOf(*answer, everyServer(answer->address));
}

FramingVerdict framingPolicyFromDisk(const std::vector<HttpAnswer>& answers) {
    const HttpAnswer* const answer = answerThatCounts(answers);
    return answer == nullptr ? FramingVerdict() : verdictOf(*answer, takesInDisk);
}

std::optional<WebOrigin> originOf(std::string_view address) {
    constexpr int highestPort = 65535;
    WebOrigin origin;
    if (beginsIgnoringCase(address, "http://"))
        origin.scheme = "http";
    else if (beginsIgnoringCase(address, "https://"))
        origin.scheme = "https";
    else
        return std::nullopt;
    const std::string host = lowerCase(hostOf(address));
    const std::size_t length = hostLength(host);
    origin.host = host.substr(0, length);
    const std::string port = host.substr(std::min(length + 1, host.size()));
    origin.port = usualPort(origin.scheme);
    const char* const portEnd = port.data() + port.size();
    const bool isNumber = port.empty() || std::from_chars(port.data(), portEnd, origin.port).ptr == portEnd;
    if (origin.host.empty() || !isNumber || origin.port < 1 || origin.port > highestPort)
        return std::nullopt;
    return origin;
}

FramingVerdict framingPolicyAt(const WebOrigin& tour, const std::vector<HttpAnswer>& answers) {
    const HttpAnswer* const answer = answerThatCounts(answers);
    if (answer == nullptr)
        return {};
    const auto takesIn = [&](std::string_view source) { return takesInTour(source, answer->address, tour); };
    return verdictOf(*answer, takesIn, originOf(answer->address) == tour);
}

std::vector<std::string> sitesTakenIn(const std::vector<HttpAnswer>& answers) {
    std::vector<std::string> sites;
    if (framingPolicy(answers).allowed)
        return sites;
    const std::string policies = headerValue(*answerThatCounts(answers), policyHeader);
    for (const std::string_view policy : split(policies, ',')) {
        const auto sources = frameAncestors(policy);
        for (const std::string_view source : sources.value_or(std::vector<std::string_view>())) {
            if (!source.starts_with('\'') && std::ranges::find(sites, source) == sites.end())
                sites.emplace_back(source);
        }
    }
    return sites;
}

std::optional<HttpAnswer> answerOnConsole(std::string_view message) {
    constexpr std::string_view display = "Refused to display '";
    constexpr std::string_view frame = "Refused to frame '";
    const bool byOptions = message.starts_with(display);
    const auto address = byOptions ? takeBetween(message, display, "' in a frame because it set ")
                                   : takeBetween(message, frame, "' because an ancestor violates");
    if (!address)
        return std::nullopt;
    const auto one = byOptions ? takeBetween(message, "'X-Frame-Options' to '", "'")
                               : takeBetween(message, "Content Security Policy directive: \"", "\"");
    const auto value = one || !byOptions ? one : takeBetween(message, "conflicting values ('", "')");
    if (!byOptions && !value)
        return std::nullopt;
    return HttpAnswer{
        std::string(*address),
        200,
        {{std::string(byOptions ? optionsHeader : policyHeader), std::string(value.value_or("deny"))}}};
}

std::optional<FramingVerdict> refusalOnConsole(std::string_view message) {
    const auto answer = answerOnConsole(message);
    if (!answer)
        return std::nullopt;
    return framingPolicy({*answer});
}

bool isInsecure(std::string_view address) {
    if (!beginsIgnoringCase(address, "http:"))
        return false;
    const std::string site = lowerCase(hostOf(address));
    const std::string host = site.substr(0, hostLength(site));
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
