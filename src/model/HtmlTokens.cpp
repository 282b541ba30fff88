#include "model/HtmlTokens.h"

#include <algorithm>
#include <utility>

namespace wendmark {

namespace {

constexpr std::u16string_view commentStart = u"<!--";
constexpr std::u16string_view commentEnd = u"-->";
constexpr std::size_t longestEntity = 32;

bool isLetter(char16_t unit) {
    return (unit >= 'a' && unit <= 'z') || (unit >= 'A' && unit <= 'Z');
}

bool isLetterOrDigit(char16_t unit) {
    return isLetter(unit) || (unit >= '0' && unit <= '9');
}

class HtmlLineReader final {
public:
    HtmlLineReader(std::u16string_view line, HtmlState state) : m_line(line), m_state(state) {}

    HtmlLine read() {
        while (m_position < m_line.size())
            readToken();
        return {std::move(m_tokens), m_state};
    }

private:
    void readToken() {
        switch (m_state) {
        case HtmlState::text:
            readText();
            break;
        case HtmlState::tag:
            readTag();
            break;
        case HtmlState::doubleQuoted:
            readThrough(u"\"", HtmlPart::attribute, HtmlState::tag);
            break;
        case HtmlState::singleQuoted:
            readThrough(u"'", HtmlPart::attribute, HtmlState::tag);
            break;
        case HtmlState::comment:
            readThrough(commentEnd, HtmlPart::comment, HtmlState::text);
            break;
        }
    }

    void readText() {
        const std::u16string_view rest = m_line.substr(m_position);
        if (rest.starts_with(commentStart)) {
            add(HtmlPart::comment, commentStart.size());
            m_state = HtmlState::comment;
        } else if (beginsTag(rest)) {
            add(HtmlPart::tag, 1);
            m_state = HtmlState::tag;
        } else if (const std::size_t length = entityLength(rest); length > 0) {
            add(HtmlPart::entity, length);
        } else {
            add(HtmlPart::text, std::min(rest.find_first_of(u"<&", 1), rest.size()));
        }
    }

    void readTag() {
        const std::u16string_view rest = m_line.substr(m_position);
        const std::size_t length = std::min(rest.find_first_of(u">\"'"), rest.size());
        if (length == rest.size()) {
            add(HtmlPart::tag, length);
        } else if (rest[length] == u'>') {
            add(HtmlPart::tag, length + 1);
            m_state = HtmlState::text;
        } else {
            if (length > 0)
                add(HtmlPart::tag, length);
            m_state = rest[length] == u'"' ? HtmlState::doubleQuoted : HtmlState::singleQuoted;
            add(HtmlPart::attribute, 1);
        }
    }

    void readThrough(std::u16string_view end, HtmlPart part, HtmlState next) {
        const std::size_t found = m_line.find(end, m_position);
        if (found == std::u16string_view::npos) {
            add(part, m_line.size() - m_position);
            return;
        }
        add(part, found + end.size() - m_position);
        m_state = next;
    }

    static bool beginsTag(std::u16string_view rest) {
        return rest.size() > 1 && rest[0] == u'<' &&
               (isLetter(rest[1]) || rest[1] == u'/' || rest[1] == u'!' || rest[1] == u'?');
    }

    /// 0 when `rest` begins with no entity.
    static std::size_t entityLength(std::u16string_view rest) {
        if (rest[0] != u'&')
            return 0;
        std::size_t length = rest.size() > 1 && rest[1] == u'#' ? 2 : 1;
        const std::size_t name = length;
        while (length < std::min(rest.size(), longestEntity) && isLetterOrDigit(rest[length]))
            ++length;
        return length > name && length < rest.size() && rest[length] == u';' ? length + 1 : 0;
    }

    /// Neighbours of one kind become one token.
    void add(HtmlPart part, std::size_t length) {
        if (!m_tokens.empty() && m_tokens.back().part == part)
            m_tokens.back().length += length;
        else
            m_tokens.push_back({part, m_position, length});
        m_position += length;
    }

    std::u16string_view m_line;
    HtmlState m_state;
    std::size_t m_position = 0;
    std::vector<HtmlToken> m_tokens;
};

} // namespace

HtmlLine tokenizeHtml(std::u16string_view line, HtmlState state) {
    return HtmlLineReader(line, state).read();
}

} // namespace wendmark
