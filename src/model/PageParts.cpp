#include "model/PageParts.h"

#include "base/Names.h"
#include "base/Utf8.h"
#include "base/Windows1252.h"
#include "model/HtmlText.h"
#include "model/StopAddress.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace wendmark {

namespace {

constexpr std::string_view spaces = " \t\n\f\r";
constexpr std::size_t none = std::string_view::npos;

struct PartAttribute {
    std::string_view tag;
    std::string_view name;
};

/// Attributes that hold the address of a part.
constexpr std::array<PartAttribute, 13> partAttributes = {{{"img", "src"},
                                                           {"input", "src"},
                                                           {"source", "src"},
                                                           {"audio", "src"},
                                                           {"video", "src"},
                                                           {"video", "poster"},
                                                           {"track", "src"},
                                                           {"embed", "src"},
                                                           {"script", "src"},
                                                           {"object", "data"},
                                                           {"body", "background"},
                                                           {"table", "background"},
                                                           {"td", "background"}}};

bool isLetter(char character) {
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

bool isAlphanumeric(char character) {
    return isLetter(character) || (character >= '0' && character <= '9');
}

/// "http:", "data:", "c:"
std::string_view schemeOf(std::string_view address) {
    const std::size_t end = address.find_first_of(":/?#");
    if (end == none || end == 0 || address[end] != ':' || !isLetter(address.front()))
        return {};
    return address.substr(0, end + 1);
}

/// The path without "." and ".."; nothing when it leads out of its root, or by a name that begins with a dot.
std::optional<std::string> normalised(std::string_view path) {
    std::vector<std::string_view> names;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find('/'), path.size());
        const std::string_view name = path.substr(0, end);
        path.remove_prefix(std::min(end + 1, path.size()));
        if (name == "..") {
            if (names.empty())
                return std::nullopt;
            names.pop_back();
        } else if (name.starts_with('.') && name != ".") {
            return std::nullopt;
        } else if (!name.empty() && name != ".") {
            names.push_back(name);
        }
    }
    std::string whole;
    for (const std::string_view name : names)
        whole.append(whole.empty() ? "" : "/").append(name);
    return whole;
}

std::string asUtf8(std::string_view text) {
    return isUtf8(text) ? std::string(text) : windows1252::decode(text);
}

/// Collects the parts of a text.
class Collector final {
public:
    Collector(std::string_view text, std::string_view folder) : m_text(text), m_folder(folder) {}

    PageParts take() {
        std::sort(m_parts.references.begin(), m_parts.references.end(),
                  [](const PartReference& a, const PartReference& b) { return a.start < b.start; });
        return std::move(m_parts);
    }

    /// `written` is a part of the text; `address` what it means.
    void add(std::string_view written, std::string_view address) {
        const std::size_t begin = address.find_first_not_of(spaces);
        if (begin == none)
            return;
        address = address.substr(begin, address.find_last_not_of(spaces) + 1 - begin);
        const std::string_view scheme = schemeOf(address);
        const bool ofFile = equalAsciiIgnoringCase(scheme, "file:") || scheme.size() == 2;
        if (address.front() == '#' || address.starts_with("//") || (!scheme.empty() && !ofFile))
            return;
        const std::string path = percentDecoded(address.substr(0, address.find_first_of("?#")));
        const bool isRelative = !ofFile && !path.starts_with('/') && path.find('\\') == none;
        const std::optional<std::string> inside =
            isRelative ? normalised(std::string(m_folder) + path) : std::nullopt;
        if (!inside) {
            m_parts.elsewhere.push_back(asUtf8(address));
            return;
        }
        if (inside->empty() || inside->find('\0') != none)
            return;
        m_parts.references.push_back({static_cast<std::size_t>(written.data() - m_text.data()),
                                      written.size(), asUtf8(*inside),
                                      asUtf8(normalised(path).value_or(std::string()))});
    }

private:
    std::string_view m_text;
    std::string_view m_folder;
    PageParts m_parts;
};

/// Walks through the addresses of a style sheet.
class StyleWalk final {
public:
    StyleWalk(std::string_view css, Collector& parts) : m_css(css), m_parts(parts) {}

    void walk() {
        while (m_position < m_css.size()) {
            const std::string_view rest = m_css.substr(m_position);
            if (rest.starts_with("/*"))
                skipBehind(rest.find("*/", 2), 2);
            else if (beginsWith("url(") && (m_position == 0 || !isAlphanumeric(m_css[m_position - 1])))
                takeUrl();
            else if (beginsWith("@import"))
                takeImport();
            else if (rest.front() == '"' || rest.front() == '\'')
                skipBehind(rest.find(rest.front(), 1), 1);
            else
                ++m_position;
        }
    }

private:
    bool beginsWith(std::string_view word) const {
        return equalAsciiIgnoringCase(m_css.substr(m_position, word.size()), word);
    }

    /// `end` counts from the position.
    void skipBehind(std::size_t end, std::size_t length) {
        m_position = end == none ? m_css.size() : m_position + end + length;
    }

    void skipSpaces() { m_position = std::min(m_css.find_first_not_of(spaces, m_position), m_css.size()); }

    void takeUrl() {
        m_position += 4;
        skipSpaces();
        if (takeQuoted())
            return;
        const std::size_t end = std::min(m_css.find_first_of(" \t\n\f\r)\"'(", m_position), m_css.size());
        add(end);
        m_position = end;
    }

    void takeImport() {
        m_position += 7;
        skipSpaces();
        takeQuoted();
    }

    bool takeQuoted() {
        const char quote = m_position < m_css.size() ? m_css[m_position] : ' ';
        if (quote != '"' && quote != '\'')
            return false;
        ++m_position;
        const std::size_t end = std::min(m_css.find(quote, m_position), m_css.size());
        add(end);
        m_position = std::min(end + 1, m_css.size());
        return true;
    }

    /// An address with escapes is one that nobody writes for a file.
    void add(std::size_t end) {
        const std::string_view address = m_css.substr(m_position, end - m_position);
        if (address.find_first_of("\\\n") == none)
            m_parts.add(address, address);
    }

    std::string_view m_css;
    Collector& m_parts;
    std::size_t m_position = 0;
};

/// Addresses with widths or densities behind them, separated by commas.
void addSourceSet(std::string_view value, Collector& parts) {
    while (true) {
        const std::size_t begin = value.find_first_not_of(" \t\n\f\r,");
        if (begin == none)
            return;
        value.remove_prefix(begin);
        const std::size_t end = std::min(value.find_first_of(spaces), value.size());
        const std::string_view written = value.substr(0, end);
        const std::string_view address = written.substr(0, written.find_last_not_of(',') + 1);
        parts.add(address, decodeEntities(address));
        value.remove_prefix(end);
        if (address.size() == written.size())
            value.remove_prefix(std::min(value.find(','), value.size()));
    }
}

bool linksAPart(const HtmlPiece& piece) {
    const std::string relation = lowerCase(piece.attribute("rel").value_or(std::string_view()));
    return piece.isTag(HtmlPiece::Kind::openingTag, "link") &&
           (relation.find("stylesheet") != none || relation.find("icon") != none);
}

bool holdsAPart(const HtmlPiece& piece, std::string_view name) {
    if (linksAPart(piece))
        return equalAsciiIgnoringCase(name, "href");
    return std::any_of(partAttributes.begin(), partAttributes.end(), [&](const PartAttribute& attribute) {
        return equalAsciiIgnoringCase(piece.content, attribute.tag) &&
               equalAsciiIgnoringCase(name, attribute.name);
    });
}

void addAttributes(const HtmlPiece& piece, Collector& parts) {
    HtmlAttributes all(piece.attributes);
    while (const std::optional<HtmlAttribute> attribute = all.next()) {
        if (attribute->value.empty())
            continue;
        if (equalAsciiIgnoringCase(attribute->name, "style"))
            StyleWalk(attribute->value, parts).walk();
        else if (equalAsciiIgnoringCase(attribute->name, "srcset"))
            addSourceSet(attribute->value, parts);
        else if (holdsAPart(piece, attribute->name))
            parts.add(attribute->value, decodeEntities(attribute->value));
    }
}

/// What stands between this tag and the one that closes it.
std::string_view contentOfStyle(std::string_view html, const HtmlPiece& opening) {
    const auto begin =
        static_cast<std::size_t>(opening.attributes.data() - html.data()) + opening.attributes.size();
    const std::string_view rest = html.substr(begin);
    std::size_t end = rest.find("</");
    while (end != none && !equalAsciiIgnoringCase(rest.substr(end, 7), "</style"))
        end = rest.find("</", end + 2);
    return rest.substr(0, end);
}

/// As an address; safe in attributes, with quotes and without, and in style sheets.
std::string asAddress(std::string_view name) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    constexpr std::string_view safe = "-._~";
    std::string address;
    for (const char character : name) {
        const auto byte = static_cast<unsigned char>(character);
        if (isAlphanumeric(character) || safe.find(character) != none)
            address += character;
        else
            address.append({'%', digits[byte >> 4], digits[byte & 15]});
    }
    return address;
}

} // namespace

PageParts partsOfPage(std::string_view html) {
    Collector parts(html, {});
    HtmlPieces pieces(html);
    while (const std::optional<HtmlPiece> piece = pieces.next()) {
        if (piece->kind != HtmlPiece::Kind::openingTag)
            continue;
        if (piece->isTag(HtmlPiece::Kind::openingTag, "base") && piece->attribute("href"))
            return {};
        addAttributes(*piece, parts);
        if (piece->isTag(HtmlPiece::Kind::openingTag, "style"))
            StyleWalk(contentOfStyle(html, *piece), parts).walk();
    }
    return parts.take();
}

PageParts partsOfStyleSheet(std::string_view css, std::string_view folder) {
    Collector parts(css, folder);
    StyleWalk(css, parts).walk();
    return parts.take();
}

bool isStyleSheet(std::string_view path) {
    return lowerCase(path).ends_with(".css");
}

std::string withPartNames(std::string_view text, const PageParts& parts,
                          const std::map<std::string, std::string>& names) {
    std::string changed;
    std::size_t copied = 0;
    for (const PartReference& reference : parts.references) {
        const auto found = names.find(reference.path);
        if (found == names.end() || reference.flat == found->second)
            continue;
        const std::string_view written = text.substr(reference.start, reference.length);
        const std::size_t fragment = std::min(written.find('#'), written.size());
        changed.append(text.substr(copied, reference.start - copied)).append(asAddress(found->second));
        changed.append(written.substr(fragment));
        copied = reference.start + reference.length;
    }
    return changed.append(text.substr(copied));
}

} // namespace wendmark
