#include "model/FoundLinks.h"

#include "base/TextLines.h"
#include "base/Utf8.h"
#include "base/Windows1252.h"
#include "model/HtmlText.h"
#include "model/StopAddress.h"
#include "model/TourModel.h"

#include <algorithm>
#include <optional>

namespace wendmark {

namespace {

constexpr std::string_view fileScheme = "file:";

std::string_view trimmed(std::string_view text) {
    const auto isEmpty = [](char c) { return static_cast<unsigned char>(c) <= ' '; };
    const auto* const first = std::find_if_not(text.begin(), text.end(), isEmpty);
    const auto last = std::find_if_not(text.rbegin(), std::make_reverse_iterator(first), isEmpty);
    return {first, static_cast<std::size_t>(last.base() - first)};
}

bool beginsWith(std::string_view text, std::string_view scheme) {
    return text.size() >= scheme.size() && equalAsciiIgnoringCase(text.substr(0, scheme.size()), scheme);
}

/// Valid UTF-8, whatever the bytes are.
std::string asUtf8(std::string_view bytes) {
    if (isUtf8(bytes))
        return std::string(bytes);
    std::string text;
    for (std::size_t position = 0; position < bytes.size();) {
        const Utf8Unit unit = decodeUtf8(bytes, position);
        const std::string_view part = bytes.substr(position, unit.length);
        text += unit.valid ? std::string(part) : windows1252::decode(part);
        position += unit.length;
    }
    return text;
}

/// The path of a file on this computer; none when the address is that of something else.
std::optional<std::string> pathIn(std::string_view address) {
    constexpr std::string_view thisComputer = "localhost";
    if (!beginsWith(address, fileScheme))
        return std::nullopt;
    address.remove_prefix(fileScheme.size());
    if (address.starts_with("//")) {
        address.remove_prefix(2);
        address.remove_prefix(beginsWith(address, thisComputer) ? thisComputer.size() : 0);
    }
    std::string path = percentDecoded(address.substr(0, address.find_first_of("?#")));
    const bool isPath = path.size() > 1 && path.starts_with('/') && !path.ends_with('/') &&
                        path.find('\0') == std::string::npos;
    return isPath ? std::optional(std::move(path)) : std::nullopt;
}

std::string nameWithoutEnding(std::string_view path) {
    std::string_view name = path.substr(path.rfind('/') + 1);
    const std::size_t dot = name.rfind('.');
    if (dot != std::string_view::npos && dot > 0)
        name = name.substr(0, dot);
    return asUtf8(name);
}

/// HTML that shows the title, or what stands for a missing one, on one line and not too long.
std::string titleFrom(std::string_view plain, const std::string& standIn) {
    std::string line = visibleText(htmlShowing(asUtf8(plain)));
    if (line.empty())
        line = standIn;
    std::size_t end = 0;
    for (std::size_t characters = 0; characters < longestFoundTitle && end < line.size(); ++characters)
        end += decodeUtf8(line, end).length;
    return htmlShowing(line.substr(0, end)) + (end < line.size() ? "..." : "");
}

class Collector final {
public:
    /// `title` is plain text and may be empty.
    void add(std::string_view address, std::string_view title) {
        const bool fits = address.size() <= longestFoundAddress &&
                          m_found.stops.size() + m_found.files.size() < mostFoundLinks;
        const std::optional<std::string> path = fits ? pathIn(address) : std::nullopt;
        if (path)
            addFile(*path, title);
        else if (fits && isWebAddress(address))
            addPage(address, title);
        else
            leaveOut();
    }

    void leaveOut() { ++m_found.leftOut; }

    FoundLinks take() { return std::move(m_found); }

private:
    void addPage(std::string_view address, std::string_view title) {
        const std::string stored = withoutDelimiters(asUtf8(address));
        m_found.stops.push_back(
            {titleFrom(title, hostAndPath(stored)), stored, std::string(noNarration), {}});
    }

    void addFile(const std::string& path, std::string_view title) {
        m_found.files.push_back({path, titleFrom(title, nameWithoutEnding(path)), m_found.stops.size()});
    }

    FoundLinks m_found;
};

bool isAddress(std::string_view text) {
    const bool blank =
        std::any_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) <= ' '; });
    return !blank && (isWebAddress(text) || pathIn(text).has_value());
}

/// One of the parts that tabs separate is the address, and the first other one that is not empty the title.
void addLine(Collector& links, std::string_view line) {
    std::string_view address;
    std::string_view title;
    for (std::size_t begin = 0; begin <= line.size();) {
        const std::size_t end = std::min(line.find('\t', begin), line.size());
        const std::string_view part = trimmed(line.substr(begin, end - begin));
        if (address.empty() && isAddress(part))
            address = part;
        else if (title.empty())
            title = part;
        begin = end + 1;
    }
    if (address.empty())
        links.leaveOut();
    else
        links.add(address, title);
}

/// An address in HTML may be broken over lines and hold blanks.
std::string addressIn(std::string_view attribute) {
    const std::string decoded = decodeEntities(attribute);
    std::string address(trimmed(decoded));
    std::erase_if(address, [](char c) { return c == '\n' || c == '\r' || c == '\t'; });
    return address;
}

/// The link that is open while HTML is read.
class OpenLink final {
public:
    explicit OpenLink(Collector& links) : m_links(links) {}

    void begin(std::string_view attribute) {
        end();
        m_open = true;
        if (attribute.size() <= longestAttribute)
            m_address = addressIn(attribute);
    }

    void end() {
        if (!m_open)
            return;
        m_links.add(m_address, decodeEntities(m_text));
        m_open = false;
        m_address.clear();
        m_text.clear();
    }

    void addText(std::string_view html) {
        if (m_open && m_text.size() < longestFoundAddress)
            m_text += html.substr(0, longestFoundAddress);
    }

private:
    /// Entities make an address longer.
    static constexpr std::size_t longestAttribute = 4 * longestFoundAddress;

    Collector& m_links;
    bool m_open = false;
    std::string m_address;
    std::string m_text; ///< Entities as they stand.
};

} // namespace

bool isWebAddress(std::string_view address) {
    for (const std::string_view scheme : {"http://", "https://"}) {
        if (!beginsWith(address, scheme))
            continue;
        const std::string host = hostOf(address);
        return !host.empty() && !host.starts_with(':') && host.find(' ') == std::string::npos;
    }
    return false;
}

FoundLinks linksInUriList(std::string_view text) {
    Collector links;
    TextLines lines(text);
    while (const auto line = lines.next()) {
        const std::string_view address = trimmed(*line);
        if (address.empty() || address.starts_with('#'))
            continue;
        if (address.size() <= longestFoundAddress && isAddress(address))
            links.add(address, {});
        else
            links.leaveOut();
    }
    return links.take();
}

FoundLinks linksInPlainText(std::string_view text) {
    Collector links;
    TextLines lines(text);
    while (const auto line = lines.next()) {
        if (line->size() > longestFoundAddress)
            links.leaveOut();
        else if (!trimmed(*line).empty())
            addLine(links, *line);
    }
    return links.take();
}

FoundLinks linksInHtml(std::string_view html) {
    Collector links;
    OpenLink link(links);
    HtmlPieces pieces(html);
    while (const std::optional<HtmlPiece> piece = pieces.next()) {
        if (piece->kind == HtmlPiece::Kind::text)
            link.addText(piece->content);
        else if (piece->isTag(HtmlPiece::Kind::closingTag, "a"))
            link.end();
        else if (!piece->joinsWords())
            link.addText(" ");
        if (piece->isTag(HtmlPiece::Kind::openingTag, "a")) {
            link.end();
            if (const auto address = piece->attribute("href"))
                link.begin(*address);
        }
    }
    link.end();
    return links.take();
}

} // namespace wendmark
