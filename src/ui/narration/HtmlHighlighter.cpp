#include "ui/narration/HtmlHighlighter.h"

#include "platform/SpellChecker.h"

#include <QPalette>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextBoundaryFinder>

namespace wendmark {

namespace {

constexpr int middleLightness = 128;

/// UTF-16 units of a line: thousands of colours in one line would keep the window from answering.
constexpr qsizetype longestColoured = 10'000;

QColor colourOf(HtmlPart part, bool dark) {
    switch (part) {
    case HtmlPart::tag:
        return dark ? QColor(0x7c, 0xb7, 0xf5) : QColor(0x0b, 0x4f, 0xa8);
    case HtmlPart::attribute:
        return dark ? QColor(0x86, 0xd9, 0x8d) : QColor(0x1c, 0x66, 0x24);
    case HtmlPart::entity:
        return dark ? QColor(0xf2, 0xab, 0x66) : QColor(0x93, 0x3c, 0x05);
    case HtmlPart::comment:
        return dark ? QColor(0xa5, 0xad, 0xb6) : QColor(0x5b, 0x62, 0x6b);
    case HtmlPart::text:
        break;
    }
    return {};
}

QColor wrongWordColour(bool dark) {
    return dark ? QColor(0xff, 0x7b, 0x72) : QColor(0xc6, 0x28, 0x28);
}

/// The line with blanks for everything that is no text for visitors, so that positions stay.
QString visibleText(const QString& line, const HtmlLine& tokens) {
    QString text = line;
    for (const HtmlToken& token : tokens.tokens) {
        if (token.part == HtmlPart::text)
            continue;
        // A word that holds an entity cannot be looked up; a digit in it says so.
        const QChar filling = token.part == HtmlPart::entity ? QLatin1Char('0') : QLatin1Char(' ');
        for (std::size_t i = token.start; i < token.start + token.length; ++i)
            text[static_cast<qsizetype>(i)] = filling;
    }
    static const QRegularExpression address(
        QStringLiteral("\\w+://\\S+|www\\.\\S+|mailto:\\S+|\\S+@\\S+|\\w+\\.\\w\\S*"),
        QRegularExpression::CaseInsensitiveOption);
    for (auto found = address.globalMatch(text); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        text.replace(match.capturedStart(), match.capturedLength(),
                     QString(match.capturedLength(), QLatin1Char(' ')));
    }
    return text;
}

/// Words that a dictionary can know: letters, apostrophes between them, and nothing else.
bool canBeLookedUp(QStringView word) {
    for (const QChar character : word) {
        if (!character.isLetter() && !character.isMark() && !character.isSurrogate() &&
            character != QLatin1Char('\'') && character != QChar(u'\u2019'))
            return false;
    }
    return word.size() > 1;
}

QList<WordRange> wordsOf(const QString& text) {
    QList<WordRange> words;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, text);
    qsizetype start = -1;
    for (qsizetype position = 0; position >= 0; position = finder.toNextBoundary()) {
        const auto reasons = finder.boundaryReasons();
        if (start >= 0 && reasons.testFlag(QTextBoundaryFinder::EndOfItem)) {
            if (canBeLookedUp(QStringView(text).mid(start, position - start)))
                words.append({static_cast<int>(start), static_cast<int>(position - start)});
            start = -1;
        }
        if (reasons.testFlag(QTextBoundaryFinder::StartOfItem))
            start = position;
    }
    return words;
}

/// The state before is that of a text block: -1 when it has none.
HtmlLine tokensOf(const QString& line, int stateBefore) {
    const auto state = stateBefore < 0 ? HtmlState::text : static_cast<HtmlState>(stateBefore);
    const QStringView view(line);
    return tokenizeHtml({view.utf16(), static_cast<std::size_t>(view.size())}, state);
}

} // namespace

HtmlHighlighter::HtmlHighlighter(SpellChecker& spelling, const QPalette& palette, QTextDocument* document)
    : QSyntaxHighlighter(document), m_spelling(spelling) {
    setColours(palette);
}

void HtmlHighlighter::setColours(const QPalette& palette) {
    m_dark = palette.color(QPalette::Base).lightness() < middleLightness;
    rehighlight();
}

QList<WordRange> HtmlHighlighter::misspelledWordsIn(const QTextBlock& block) const {
    const QString line = block.text();
    return misspelledWords(line,
                           tokensOf(line, block.previous().isValid() ? block.previous().userState() : -1));
}

void HtmlHighlighter::highlightBlock(const QString& line) {
    const HtmlLine tokens = tokensOf(line, previousBlockState());
    setCurrentBlockState(static_cast<int>(tokens.state));
    if (line.size() > longestColoured)
        return;
    for (const HtmlToken& token : tokens.tokens) {
        if (token.part != HtmlPart::text)
            setFormat(static_cast<int>(token.start), static_cast<int>(token.length),
                      colourOf(token.part, m_dark));
    }
    QTextCharFormat wrong;
    wrong.setUnderlineStyle(QTextCharFormat::SpellCheckUnderline);
    wrong.setUnderlineColor(wrongWordColour(m_dark));
    for (const WordRange& word : misspelledWords(line, tokens))
        setFormat(word.start, word.length, wrong);
}

QList<WordRange> HtmlHighlighter::misspelledWords(const QString& line, const HtmlLine& tokens) const {
    if (m_spelling.language().isEmpty())
        return {};
    QList<WordRange> misspelled;
    for (const WordRange& word : wordsOf(visibleText(line, tokens))) {
        if (!m_spelling.isCorrect(line.mid(word.start, word.length)))
            misspelled.append(word);
    }
    return misspelled;
}

} // namespace wendmark
