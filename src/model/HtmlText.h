#pragma once

#include <optional>
#include <string>
#include <string_view>

/// What people read of HTML, for lists of stops and for links that come from elsewhere. UTF-8; tolerant as
/// browsers are, with work in proportion to the text.
namespace wendmark {

/// The text as visitors read it, on one line: without tags, comments and what stands in scripts and style
/// sheets, entities as characters, any run of white space and control characters as one blank
/// and none at the ends.
std::string visibleText(std::string_view html);

/// HTML that shows this text; also fit for a quoted attribute.
std::string htmlShowing(std::string_view text);

/// The text with its entities as characters. One without a semicolon, or with an unknown name, stays.
std::string decodeEntities(std::string_view html);

/// Appends the character of the entity that the text begins with, and returns its bytes in the text. 0, and
/// nothing appended, when it begins with none.
std::size_t takeEntity(std::string& text, std::string_view html);

/// White space of HTML: blank, tab, ends of lines and pages.
bool isHtmlSpace(char character);

/// Whether both are the same but for the case of ASCII letters, as names of tags and schemes are compared.
bool equalAsciiIgnoringCase(std::string_view left, std::string_view right);

struct HtmlAttribute {
    std::string_view name;
    std::string_view value; ///< Without quotes, entities as they stand.
};

/// Reads attributes up to the ">" of their tag.
class HtmlAttributes final {
public:
    /// `text` begins behind the name of the tag.
    explicit HtmlAttributes(std::string_view text) : m_text(text) {}

    /// Nothing at the end of the tag.
    std::optional<HtmlAttribute> next();

    /// How many bytes of the text have been read; after the last attribute the ">" is among them.
    std::size_t position() const { return m_position; }

private:
    void skipSpaceAnd(char other);
    std::string_view takeUntil(std::string_view ends);
    std::string_view takeValue();

    std::string_view m_text;
    std::size_t m_position = 0;
};

/// A run of text, or a tag.
struct HtmlPiece {
    enum class Kind { text, openingTag, closingTag };
    Kind kind = Kind::text;
    std::string_view content; ///< The text as it stands, or the name of the tag.
    std::string_view attributes;

    bool isTag(Kind wanted, std::string_view name) const {
        return kind == wanted && equalAsciiIgnoringCase(content, name);
    }

    /// Whether the words before and after the tag are one, as around "<b>".
    bool joinsWords() const;

    /// Value of an opening tag's attribute, entities as they stand.
    std::optional<std::string_view> attribute(std::string_view name) const;
};

/// Walks through a text. Comments, scripts and style sheets are passed over; what is not closed reaches to
/// the end of the text.
class HtmlPieces final {
public:
    /// The text must outlive the walk.
    explicit HtmlPieces(std::string_view html) : m_html(html) {}

    std::optional<HtmlPiece> next();

private:
    std::string_view rest() const { return m_html.substr(m_position); }
    void skipThrough(std::string_view end);
    void skipTo(std::string_view beginning);
    HtmlPiece takeText();
    HtmlPiece takeTag();

    std::string_view m_html;
    std::size_t m_position = 0;
};

} // namespace wendmark
