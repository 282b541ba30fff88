#pragma once

#include <QPlainTextEdit>
#include <string>

class QMenu;

namespace wendmark {

class HtmlHighlighter;
class SpellChecker;

/// A field of several lines of HTML, coloured, with words checked that visitors will see.
class HtmlField final : public QPlainTextEdit {
    Q_OBJECT

public:
    /// The checker must outlive the field.
    explicit HtmlField(SpellChecker& spelling, QWidget* parent = nullptr);

    /// UTF-16 units. Longer texts would keep the window from answering.
    static constexpr qsizetype longestEdited = 50'000;

    /// The text, UTF-8, with "\n" between its lines; one that is too long as it was given.
    std::string typedText() const;

    /// What is on screen, with "\n" between its lines; unlike toPlainText() it keeps no-break spaces.
    QString shownText() const;

    /// Replaces the text, which is UTF-8. This is a step that can be undone, on screen or not, except the
    /// first time. Of a text that is too long only the beginning is shown, and nothing of it can be changed;
    /// typedText() gives all of it.
    void setTypedText(const std::string& text);

    /// Same for another text altogether: from here nothing leads back to the former one.
    void beginWith(const std::string& text);

    bool isTooLong() const { return !m_wholeText.empty(); }

    /// Replaces the selection by `text` in one step that can be undone, and puts the caret at `caret`, which
    /// counts UTF-16 units from the beginning.
    void replaceSelection(const QString& text, int caret);

signals:
    /// The author has chosen another dictionary, or none.
    void languageChosen(const QString& language);

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void addWordActions(QMenu& menu, const QTextCursor& word);
    void addLanguageMenu(QMenu& menu);
    QTextCursor wordAt(const QTextCursor& place) const;

    SpellChecker& m_spelling;
    HtmlHighlighter* m_highlighter;
    std::string m_wholeText; ///< Empty: all of the text is shown.
};

} // namespace wendmark
