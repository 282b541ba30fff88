#include "model/ReadableText.h"

#include "base/Utf8.h"
#include "model/HtmlText.h"

#include <algorithm>
#include <utility>

namespace wendmark {

namespace {

constexpr std::size_t longestJoint = 40; // Bytes: more than an entity has.

std::size_t offsetIn(std::string_view whole, std::string_view part) {
    return static_cast<std::size_t>(part.data() - whole.data());
}

bool isNameOfEntity(char character) {
    return (character >= '0' && character <= '9') || (character >= 'a' && character <= 'z') ||
           (character >= 'A' && character <= 'Z') || character == '#';
}

/// Where the text ends with a "<" or with the beginning of an entity; its size when it does not.
std::size_t looseEndOf(std::string_view text) {
    if (text.ends_with('<'))
        return text.size() - 1;
    const std::size_t limit = text.size() - std::min(text.size(), longestJoint);
    std::size_t begin = text.size();
    while (begin > limit && isNameOfEntity(text[begin - 1]))
        --begin;
    return begin > limit && text[begin - 1] == '&' ? begin - 1 : text.size();
}

/// Whether a "<" or "&" that was text begins a tag or an entity there.
bool wouldBeMarkup(std::string_view html) {
    std::string entity;
    if (takeEntity(entity, html) > 0)
        return true;
    HtmlPieces pieces(html);
    const std::optional<HtmlPiece> first = pieces.next();
    return html.starts_with('<') &&
           (!first || first->kind != HtmlPiece::Kind::text || offsetIn(html, first->content) != 0);
}

} // namespace

bool isReadAsBlank(char32_t character) {
    constexpr char32_t hardBlank = 0xa0;
    return character <= ' ' || character == 0x7f || character == hardBlank;
}

bool isReadAsNothing(char32_t character) {
    constexpr char32_t softHyphen = 0xad;
    return character == softHyphen;
}

class HtmlFlattener final {
public:
    explicit HtmlFlattener(std::string_view html) : m_html(html) {}

    ReadableText flatten() {
        HtmlPieces pieces(m_html);
        while (const std::optional<HtmlPiece> piece = pieces.next()) {
            if (piece->kind == HtmlPiece::Kind::text)
                addText(piece->content);
            else if (!piece->joinsWords())
                m_blank = m_blank || !m_result.m_text.empty();
        }
        return std::move(m_result);
    }

private:
    void addText(std::string_view text) {
        const std::size_t offset = offsetIn(m_html, text);
        for (std::size_t position = 0; position < text.size();) {
            std::string entity;
            const std::size_t length = takeEntity(entity, text.substr(position));
            const Utf8Unit unit = length > 0 ? decodeUtf8(entity, 0) : decodeUtf8(text, position);
            const TextRange stored{offset + position,
                                   offset + position + (length > 0 ? length : unit.length)};
            position = stored.end - offset;
            if (unit.valid && isReadAsBlank(unit.codePoint))
                addBlank(stored);
            else if (!unit.valid || !isReadAsNothing(unit.codePoint))
                addCharacter(stored, length > 0 ? std::string_view(entity) : std::string_view());
        }
    }

    /// It is there once a character follows.
    void addBlank(TextRange stored) {
        if (m_result.m_text.empty())
            return;
        m_stored.begin = m_stored.end == 0 ? stored.begin : m_stored.begin;
        m_stored.end = stored.end;
        m_blank = true;
    }

    void addCharacter(TextRange stored, std::string_view decoded) {
        if (std::exchange(m_blank, false)) {
            const TextRange none{stored.begin, stored.begin};
            begin(m_stored.end > 0 ? m_stored : none, false);
            m_result.m_text += ' ';
        }
        m_stored = {};
        if (!decoded.empty()) {
            begin(stored, false);
            m_result.m_text += decoded;
            return;
        }
        std::vector<ReadableText::Part>& parts = m_result.m_parts;
        if (!parts.empty() && parts.back().asItStands && parts.back().stored.end == stored.begin)
            parts.back().stored.end = stored.end;
        else
            begin(stored, true);
        m_result.m_text += m_html.substr(stored.begin, stored.end - stored.begin);
    }

    void begin(TextRange stored, bool asItStands) {
        m_result.m_parts.push_back({m_result.m_text.size(), stored, asItStands});
    }

    std::string_view m_html;
    ReadableText m_result;
    bool m_blank = false; ///< A blank comes before the next character.
    TextRange m_stored;   ///< White space that it stands for; empty: none, it is a tag's.
};

ReadableText ReadableText::ofHtml(std::string_view html) {
    return HtmlFlattener(html).flatten();
}

ReadableText ReadableText::ofPlain(std::string_view text) {
    ReadableText readable;
    readable.m_text = text;
    if (!text.empty())
        readable.m_parts.push_back({0, {0, text.size()}, true});
    return readable;
}

const ReadableText::Part& ReadableText::partAt(std::size_t position) const {
    const auto after =
        std::upper_bound(m_parts.begin(), m_parts.end(), position,
                         [](std::size_t wanted, const Part& part) { return wanted < part.begin; });
    return *std::prev(after);
}

std::optional<TextRange> ReadableText::stored(TextRange range) const {
    const Part& first = partAt(range.begin);
    const Part& last = partAt(range.end - 1);
    if (first.stored.begin == first.stored.end || last.stored.begin == last.stored.end)
        return std::nullopt;
    return TextRange{first.asItStands ? first.stored.begin + (range.begin - first.begin) : first.stored.begin,
                     last.asItStands ? last.stored.begin + (range.end - last.begin) : last.stored.end};
}

void HtmlReplacer::replace(TextRange range, std::string_view words) {
    append(m_html.substr(m_taken, range.begin - m_taken));
    join(htmlShowing(words));
    const std::string_view replaced = m_html.substr(range.begin, range.end - range.begin);
    std::size_t dealtWith = 0;
    HtmlPieces pieces(replaced);
    while (const std::optional<HtmlPiece> piece = pieces.next()) {
        if (piece->kind != HtmlPiece::Kind::text)
            continue;
        const std::size_t begin = offsetIn(replaced, piece->content);
        join(replaced.substr(dealtWith, begin - dealtWith));
        dealtWith = begin + piece->content.size();
    }
    join(replaced.substr(dealtWith));
    m_taken = range.end;
    m_replaced = true;
}

std::string HtmlReplacer::take() {
    append(m_html.substr(m_taken));
    m_taken = m_html.size();
    return std::move(m_result);
}

/// What stood behind all that was taken so far.
void HtmlReplacer::append(std::string_view html) {
    if (m_replaced)
        join(html);
    else
        m_result += html;
    m_replaced = m_replaced && html.empty();
}

/// What did not stand behind the end of the result before.
void HtmlReplacer::join(std::string_view html) {
    const std::size_t loose = looseEndOf(m_result);
    if (loose < m_result.size() && !html.empty() &&
        wouldBeMarkup(m_result.substr(loose) + std::string(html.substr(0, longestJoint))))
        m_result.replace(loose, 1, m_result[loose] == '<' ? "&lt;" : "&amp;");
    m_result += html;
}

} // namespace wendmark
