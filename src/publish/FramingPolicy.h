#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Pages may refuse to be shown in a frame of another site. They do so by headers, and browsers heed them.
namespace wendmark {

struct HttpHeader {
    std::string name; ///< In any case.
    std::string value;
};

/// What a web server answers, without the page itself.
struct HttpAnswer {
    std::string address; ///< What was asked for, "http://..." or "https://...".
    int status = 200;    ///< As in the status line.
    std::vector<HttpHeader> headers;
};

struct FramingVerdict {
    bool allowed = true;
    std::string reason; ///< What refuses, for example "X-Frame-Options: DENY"; empty when allowed.
};

/// Whether the page may be shown in a frame of a tour that is posted on any web server: over http or https,
/// on any host and port. `answers` are those of one request in the order in which they came; those that
/// redirect say nothing of the page, so the last one counts. Without an answer nothing refuses.
FramingVerdict framingPolicy(const std::vector<HttpAnswer>& answers);

/// The same of a tour that is opened from disk.
FramingVerdict framingPolicyFromDisk(const std::vector<HttpAnswer>& answers);

/// Where pages come from, as browsers tell web sites apart.
struct WebOrigin {
    std::string scheme; ///< "http" or "https".
    std::string host;   ///< In small letters.
    int port = 0;       ///< 1 to 65535.

    friend bool operator==(const WebOrigin&, const WebOrigin&) = default;
};

/// None for addresses that are not of the web.
std::optional<WebOrigin> originOf(std::string_view address);

/// What framingPolicy() says, of a tour that is posted on this site.
FramingVerdict framingPolicyAt(const WebOrigin& tour, const std::vector<HttpAnswer>& answers);

/// The sites whose tours may show the page, as its policy names them; empty when it names none, or takes in
/// every one.
std::vector<std::string> sitesTakenIn(const std::vector<HttpAnswer>& answers);

/// What a browser's console says when it refuses a page in a frame, as the answer that makes it say so.
/// Nothing for other messages.
std::optional<HttpAnswer> answerOnConsole(std::string_view message);

/// What framingPolicy() says of that answer, which is all that is known of what the page's server has
/// answered to the browser. A browser that shows a tour from disk refuses pages, too,
/// that are for web servers only; these are allowed. Nothing for other messages.
std::optional<FramingVerdict> refusalOnConsole(std::string_view message);

/// Whether browsers leave the page out of a tour that is posted on a server with https: its address begins
/// with http, and it does not lie on the visitor's own computer.
bool isInsecure(std::string_view address);

/// Whether the answer only names another address to ask.
bool isRedirect(const HttpAnswer& answer);

/// The values of all headers of that name, joined by commas as the rules of HTTP have it. Empty when there
/// are none.
std::string headerValue(const HttpAnswer& answer, std::string_view name);

} // namespace wendmark
