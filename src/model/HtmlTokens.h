#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

/// Takes the HTML of a narration apart, line by line, for colouring it and for finding its words.
namespace wendmark {

enum class HtmlPart {
    text,
    tag,       ///< Brackets, name and attributes, without quoted values.
    attribute, ///< A quoted value with its quotes.
    entity,
    comment
};

struct HtmlToken {
    HtmlPart part;
    std::size_t start;  ///< UTF-16 units from the beginning of the line.
    std::size_t length; ///< UTF-16 units, 1 or more.
};

/// What is still open at the end of a line.
enum class HtmlState { text, tag, doubleQuoted, singleQuoted, comment };

struct HtmlLine {
    std::vector<HtmlToken> tokens; ///< They cover the line without gaps.
    HtmlState state;
};

/// `state`: what was open at the end of the line before. A "<" that begins no tag is text.
HtmlLine tokenizeHtml(std::u16string_view line, HtmlState state);

} // namespace wendmark
