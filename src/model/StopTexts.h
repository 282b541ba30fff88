#pragma once

#include <string>
#include <string_view>

/// Edits of a stop's texts, HTML in UTF-8. Positions and lengths count UTF-16 units from 0, as the fields of
/// windows do; one inside a character counts as the position after it, one beyond the end as the end.
namespace wendmark {

/// Part of a text that is selected; with length 0 the caret stands at `start`.
struct Selection {
    int start = 0;
    int length = 0;

    bool operator==(const Selection&) const = default;
};

/// A text cut at a selection.
struct SplitText {
    std::string before;
    std::string selected;
    std::string after;
};

SplitText SplitString(std::string_view text, int selStart, int selLength);

struct Tag {
    std::string_view opening;
    std::string_view closing;
};

inline constexpr Tag boldTag{"<B>", "</B>"};
inline constexpr Tag italicTag{"<I>", "</I>"};
inline constexpr Tag underlineTag{"<U>", "</U>"};
inline constexpr Tag bigTag{"<BIG>", "</BIG>"};
inline constexpr Tag smallTag{"<SMALL>", "</SMALL>"};

/// A text after an edit, with nothing selected.
struct EditedText {
    std::string text;
    int caret = 0;
};

/// Puts the selection between the tags; the caret goes 3 behind where the opening tag begins, whatever the
/// length of that tag.
EditedText wrapSelection(std::string_view text, Selection selection, const Tag& tag);

/// Makes the selection a link that shows `address` in the site frame.
EditedText linkSelection(std::string_view text, Selection selection, std::string_view address);

/// Inserts "<BR>" at `caret`.
EditedText insertLineBreak(std::string_view text, int caret);

/// Inserts the image in the tour's file `name` at `caret`.
EditedText insertImage(std::string_view text, int caret, std::string_view name);

/// A title as it is stored: one line, and one that the script's reader takes for a title. A title of blanks
/// becomes empty; the marker of the script's own lines gets an entity.
std::string storableTitle(std::string_view title);

/// A narration or an instruction as it is stored. One of blanks and line breaks alone becomes `placeholder`.
/// Lines are separated by CR LF. What would make the reader see the end of the text too early, or a line of
/// the script's own, is written in another way that looks the same on the page.
std::string storableText(std::string_view text, std::string_view placeholder);

} // namespace wendmark
