#pragma once

#include "model/HtmlTokens.h"

#include <QList>
#include <QSyntaxHighlighter>

class QPalette;

namespace wendmark {

class SpellChecker;

/// UTF-16 units, counted from the beginning of a line.
struct WordRange {
    int start;
    int length;
};

/// Colours tags, attributes, entities and comments, and underlines words that are spelled wrong. Only words
/// that visitors will read are checked, and no addresses.
class HtmlHighlighter final : public QSyntaxHighlighter {
    Q_OBJECT

public:
    /// The checker must outlive the highlighter.
    HtmlHighlighter(SpellChecker& spelling, const QPalette& palette, QTextDocument* document);

    /// Takes colours that can be read on the palette's background.
    void setColours(const QPalette& palette);

    QList<WordRange> misspelledWordsIn(const QTextBlock& block) const;

protected:
    void highlightBlock(const QString& line) override;

private:
    QList<WordRange> misspelledWords(const QString& line, const HtmlLine& tokens) const;

    SpellChecker& m_spelling;
    bool m_dark = false;
};

} // namespace wendmark
