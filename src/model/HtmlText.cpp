#include "model/HtmlText.h"

#include "base/Utf8.h"
#include "base/Windows1252.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <map>

namespace wendmark {

namespace {

constexpr std::size_t longestEntity = 32;
constexpr std::string_view spaces = " \t\n\f\r";
constexpr std::string_view commentStart = "<!--";
constexpr std::string_view commentEnd = "-->";

char lowerAscii(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

bool isAsciiLetter(char character) {
    return lowerAscii(character) >= 'a' && lowerAscii(character) <= 'z';
}

/// Names of the characters U+00A0 to U+00FF, in their order.
constexpr std::array<std::string_view, 96> latinNames = {
    "nbsp",   "iexcl",  "cent",   "pound",  "curren", "yen",    "brvbar", "sect",   "uml",    "copy",
    "ordf",   "laquo",  "not",    "shy",    "reg",    "macr",   "deg",    "plusmn", "sup2",   "sup3",
    "acute",  "micro",  "para",   "middot", "cedil",  "sup1",   "ordm",   "raquo",  "frac14", "frac12",
    "frac34", "iquest", "Agrave", "Aacute", "Acirc",  "Atilde", "Auml",   "Aring",  "AElig",  "Ccedil",
    "Egrave", "Eacute", "Ecirc",  "Euml",   "Igrave", "Iacute", "Icirc",  "Iuml",   "ETH",    "Ntilde",
    "Ograve", "Oacute", "Ocirc",  "Otilde", "Ouml",   "times",  "Oslash", "Ugrave", "Uacute", "Ucirc",
    "Uuml",   "Yacute", "THORN",  "szlig",  "agrave", "aacute", "acirc",  "atilde", "auml",   "aring",
    "aelig",  "ccedil", "egrave", "eacute", "ecirc",  "euml",   "igrave", "iacute", "icirc",  "iuml",
    "eth",    "ntilde", "ograve", "oacute", "ocirc",  "otilde", "ouml",   "divide", "oslash", "ugrave",
    "uacute", "ucirc",  "uuml",   "yacute", "thorn",  "yuml"};

using NamedCharacters = std::map<std::string_view, char32_t>;

NamedCharacters namedCharacters() {
    NamedCharacters named = {
        {"amp", '&'},       {"lt", '<'},        {"gt", '>'},       {"quot", '"'},      {"apos", '\''},
        {"OElig", 0x152},   {"oelig", 0x153},   {"Scaron", 0x160}, {"scaron", 0x161},  {"Yuml", 0x178},
        {"ndash", 0x2013},  {"mdash", 0x2014},  {"lsquo", 0x2018}, {"rsquo", 0x2019},  {"sbquo", 0x201a},
        {"ldquo", 0x201c},  {"rdquo", 0x201d},  {"bdquo", 0x201e}, {"dagger", 0x2020}, {"bull", 0x2022},
        {"hellip", 0x2026}, {"permil", 0x2030}, {"prime", 0x2032}, {"lsaquo", 0x2039}, {"rsaquo", 0x203a},
        {"euro", 0x20ac},   {"trade", 0x2122},  {"larr", 0x2190},  {"uarr", 0x2191},   {"rarr", 0x2192},
        {"darr", 0x2193},   {"minus", 0x2212},  {"ensp", 0x2002},  {"emsp", 0x2003},   {"thinsp", 0x2009}};
    char32_t character = 0xa0;
    for (const std::string_view name : latinNames)
        named[name] = character++;
    return named;
}

void appendNumbered(std::string& text, char32_t number) {
    constexpr char32_t replacement = 0xfffd;
    const bool surrogate = number >= 0xd800 && number <= 0xdfff;
    if (number >= 0x80 && number <= 0x9f)
        text += windows1252::decode(std::string(1, static_cast<char>(number)));
    else
        appendUtf8(text, number == 0 || surrogate || number > 0x10ffff ? replacement : number);
}

/// `name` stands between "&" and ";". False when it means nothing.
bool appendEntity(std::string& text, std::string_view name) {
    static const NamedCharacters named = namedCharacters();
    if (!name.starts_with('#')) {
        const auto found = named.find(name);
        if (found != named.end())
            appendUtf8(text, found->second);
        return found != named.end();
    }
    name.remove_prefix(1);
    const bool hexadecimal = name.starts_with('x') || name.starts_with('X');
    name.remove_prefix(hexadecimal ? 1 : 0);
    std::uint32_t number = 0;
    const char* const end = name.data() + name.size();
    const auto [stop, error] = std::from_chars(name.data(), end, number, hexadecimal ? 16 : 10);
    if (name.empty() || stop != end || error == std::errc::invalid_argument)
        return false;
    appendNumbered(text, error == std::errc() ? number : 0);
    return true;
}

/// Adds words to a line, any white space between them as one blank.
class OneLine final {
public:
    void add(std::string_view text) {
        for (const char character : text) {
            const bool control = static_cast<unsigned char>(character) < ' ' || character == '\x7f';
            if (control || character == ' ') {
                addBlank();
                continue;
            }
            if (m_blank && !m_line.empty())
                m_line += ' ';
            m_blank = false;
            m_line += character;
        }
    }
    void addBlank() { m_blank = true; }
    std::string take() { return std::move(m_line); }

private:
    std::string m_line;
    bool m_blank = false;
};

} // namespace

bool isHtmlSpace(char character) {
    return spaces.find(character) != std::string_view::npos;
}

bool equalAsciiIgnoringCase(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return lowerAscii(a) == lowerAscii(b); });
}

std::string decodeEntities(std::string_view html) {
    std::string text;
    text.reserve(html.size());
    for (std::size_t position = 0; position < html.size();) {
        const std::size_t begin = std::min(html.find('&', position), html.size());
        text.append(html, position, begin - position);
        position = begin;
        if (begin == html.size())
            break;
        const std::size_t length = takeEntity(text, html.substr(begin));
        if (length == 0)
            text += '&';
        position += std::max<std::size_t>(length, 1);
    }
    return text;
}

std::size_t takeEntity(std::string& text, std::string_view html) {
    if (!html.starts_with('&'))
        return 0;
    const std::string_view name = html.substr(1, longestEntity);
    const std::size_t end = name.find(';');
    const bool known = end != std::string_view::npos && appendEntity(text, name.substr(0, end));
    return known ? end + 2 : 0;
}

std::string visibleText(std::string_view html) {
    OneLine line;
    HtmlPieces pieces(html);
    while (const std::optional<HtmlPiece> piece = pieces.next()) {
        if (piece->kind == HtmlPiece::Kind::text)
            line.add(decodeEntities(piece->content));
        else if (!piece->joinsWords())
            line.addBlank();
    }
    return line.take();
}

std::string htmlShowing(std::string_view text) {
    std::string html;
    html.reserve(text.size());
    for (const char character : text) {
        switch (character) {
        case '&':
            html += "&amp;";
            break;
        case '<':
            html += "&lt;";
            break;
        case '>':
            html += "&gt;";
            break;
        case '"':
            html += "&quot;";
            break;
        default:
            html += character;
        }
    }
    return html;
}

std::optional<HtmlAttribute> HtmlAttributes::next() {
    skipSpaceAnd('/');
    if (m_position >= m_text.size())
        return std::nullopt;
    if (m_text[m_position] == '>') {
        ++m_position;
        m_text = m_text.substr(0, m_position);
        return std::nullopt;
    }
    // A "=" that begins a name belongs to it.
    const std::size_t begin = m_position++;
    takeUntil(" \t\n\f\r/>=");
    HtmlAttribute attribute{m_text.substr(begin, m_position - begin), {}};
    skipSpaceAnd(' ');
    if (m_position < m_text.size() && m_text[m_position] == '=') {
        ++m_position;
        attribute.value = takeValue();
    }
    return attribute;
}

void HtmlAttributes::skipSpaceAnd(char other) {
    while (m_position < m_text.size() && (isHtmlSpace(m_text[m_position]) || m_text[m_position] == other))
        ++m_position;
}

std::string_view HtmlAttributes::takeUntil(std::string_view ends) {
    const std::size_t begin = m_position;
    m_position = std::min(m_text.find_first_of(ends, m_position), m_text.size());
    return m_text.substr(begin, m_position - begin);
}

std::string_view HtmlAttributes::takeValue() {
    skipSpaceAnd(' ');
    const char first = m_position < m_text.size() ? m_text[m_position] : '>';
    if (first != '"' && first != '\'')
        return takeUntil(" \t\n\f\r>");
    ++m_position;
    const std::string_view value = takeUntil(std::string_view(&first, 1));
    m_position = std::min(m_position + 1, m_text.size());
    return value;
}

bool HtmlPiece::joinsWords() const {
    static constexpr std::array<std::string_view, 22> inLines = {
        "a",      "abbr",  "acronym", "b",      "big",   "cite", "code", "em", "font", "i",   "kbd",
        "script", "small", "span",    "strong", "style", "sub",  "sup",  "tt", "u",    "var", "wbr"};
    return kind == Kind::text || std::any_of(inLines.begin(), inLines.end(), [&](std::string_view name) {
               return equalAsciiIgnoringCase(content, name);
           });
}

std::optional<std::string_view> HtmlPiece::attribute(std::string_view name) const {
    HtmlAttributes all(attributes);
    while (const std::optional<HtmlAttribute> found = all.next()) {
        if (equalAsciiIgnoringCase(found->name, name))
            return found->value;
    }
    return std::nullopt;
}

std::optional<HtmlPiece> HtmlPieces::next() {
    while (m_position < m_html.size()) {
        const std::string_view text = rest();
        const char second = text.size() > 1 && text.front() == '<' ? text[1] : ' ';
        const char third = text.size() > 2 ? text[2] : ' ';
        if (text.starts_with(commentStart))
            skipThrough(commentEnd);
        else if (second == '!' || second == '?' || (second == '/' && !isAsciiLetter(third)))
            skipThrough(">");
        else if (isAsciiLetter(second) || second == '/')
            return takeTag();
        else
            return takeText();
    }
    return std::nullopt;
}

void HtmlPieces::skipThrough(std::string_view end) {
    const std::size_t found = m_html.find(end, m_position);
    m_position = found == std::string_view::npos ? m_html.size() : found + end.size();
}

/// `beginning` is in lower case; case does not count in the text.
void HtmlPieces::skipTo(std::string_view beginning) {
    const auto* const found =
        std::search(m_html.begin() + static_cast<std::ptrdiff_t>(m_position), m_html.end(), beginning.begin(),
                    beginning.end(), [](char a, char b) { return lowerAscii(a) == b; });
    m_position = static_cast<std::size_t>(found - m_html.begin());
}

/// A "<" that begins no tag is text.
HtmlPiece HtmlPieces::takeText() {
    const std::size_t begin = m_position;
    m_position = std::min(m_html.find('<', m_position + 1), m_html.size());
    return {HtmlPiece::Kind::text, m_html.substr(begin, m_position - begin), {}};
}

HtmlPiece HtmlPieces::takeTag() {
    HtmlPiece tag;
    tag.kind = rest()[1] == '/' ? HtmlPiece::Kind::closingTag : HtmlPiece::Kind::openingTag;
    const std::size_t begin = m_position + (tag.kind == HtmlPiece::Kind::closingTag ? 2 : 1);
    const std::size_t end = std::min(m_html.find_first_of(" \t\n\f\r/>", begin), m_html.size());
    tag.content = m_html.substr(begin, end - begin);
    HtmlAttributes attributes(m_html.substr(end));
    while (attributes.next()) {
    }
    tag.attributes = m_html.substr(end, attributes.position());
    m_position = end + attributes.position();
    for (const std::string_view unread : {"script", "style"}) {
        if (tag.isTag(HtmlPiece::Kind::openingTag, unread))
            skipTo("</" + std::string(unread));
    }
    return tag;
}

} // namespace wendmark
