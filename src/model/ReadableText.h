#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace wendmark {

/// Bytes of a text, from `begin` up to but without `end`.
struct TextRange {
    std::size_t begin = 0;
    std::size_t end = 0;

    friend bool operator==(const TextRange&, const TextRange&) = default;
};

/// Whether the character is white space to readers.
bool isReadAsBlank(char32_t character);

/// Whether it is not there for them: a place where a word may be cut.
bool isReadAsNothing(char32_t character);

/// A text as people read it, with the way back to where each part of it is stored. Work and memory are in
/// proportion to the text.
class ReadableText final {
public:
    /// What visitors read of HTML in UTF-8, on one line: entities as characters, any run of white space, hard
    /// blanks and line breaks as one blank, none at the ends, and no soft hyphens.
    static ReadableText ofHtml(std::string_view html);

    /// The text as it stands.
    static ReadableText ofPlain(std::string_view text);

    const std::string& text() const { return m_text; }

    /// What is stored for this range of text(), which must not be empty and have whole characters at its
    /// ends. Tags may stand inside. None when it begins or ends with a blank that only a tag makes.
    std::optional<TextRange> stored(TextRange range) const;

private:
    friend class HtmlFlattener;

    /// A part of the text. It reaches to the next one.
    struct Part {
        std::size_t begin = 0;
        TextRange stored;
        bool asItStands = false; ///< Byte for byte; else it is one character.
    };

    const Part& partAt(std::size_t position) const;

    std::string m_text;
    std::vector<Part> m_parts;
};

/// The HTML with words in the place of what people read in this range of it, which comes from stored(). Tags
/// and comments in the range stay, behind the words, so that whatever was opened is closed. The words are
/// plain text; neither they nor what they then stand beside become tags or entities.
class HtmlReplacer final {
public:
    /// The text must outlive it.
    explicit HtmlReplacer(std::string_view html) : m_html(html) {}

    /// Ranges come in their order and do not overlap.
    void replace(TextRange range, std::string_view words);

    /// The whole text.
    std::string take();

private:
    void append(std::string_view html);
    void join(std::string_view html);

    std::string_view m_html;
    std::string m_result;
    std::size_t m_taken = 0; ///< Bytes of the HTML that are dealt with.
    bool m_replaced = false; ///< They end with a range that was replaced.
};

} // namespace wendmark
