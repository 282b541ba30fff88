#pragma once

#include "model/StopTexts.h"

#include <QPlainTextEdit>
#include <string>

class QLabel;
class QMenu;

namespace wendmark {

class HtmlHighlighter;
class SpellChecker;

/// A field of several lines of HTML, coloured, with words checked that visitors will see. Keys for tags work
/// on the selection: Ctrl+B, Ctrl+I, Ctrl+U; Shift+Return begins a new line for visitors.
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
    /// first time. Of a text that is too long only the beginning is shown, and it can be changed only as a
    /// whole: by typing or pasting in its place, when all of it is selected. typedText() gives all of it.
    void setTypedText(const std::string& text);

    /// Same for another text altogether: from here nothing leads back to the former one.
    void beginWith(const std::string& text);

    bool isTooLong() const { return !m_wholeText.empty(); }

    /// What authors have to know of such a text.
    static QString tooLongNotice();

    /// Nothing of it can be changed, because another window has the text.
    void setLocked(bool locked);

    /// What is selected, or where the caret is.
    Selection selection() const;

    /// Takes an edit of typedText() over, which has changed nothing but the selection: one step that can be
    /// undone.
    void takeOver(const EditedText& edited);

    /// Replaces a part of the text, and puts the caret behind the first character of what has come: a step
    /// that can be undone, one with the step before if `goesOn`.
    void replace(Selection part, const QString& text, bool goesOn);

    /// Selects all of the text if it is nothing but this: what is typed then takes its place. `placeholder`
    /// must outlive the field.
    void selectIfOnly(std::string_view placeholder);

    /// Takes that back, for commands that work on what the author has selected.
    void unselectPlaceholder();

signals:
    /// The author has chosen another dictionary, or none.
    void languageChosen(const QString& language);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    bool replacesAll(const QKeyEvent& key) const;
    void clearAll();
    void tellOfNewLine();
    void placeNotice();
    void addWordActions(QMenu& menu, const QTextCursor& word);
    void addLanguageMenu(QMenu& menu);
    QTextCursor wordAt(const QTextCursor& place) const;

    SpellChecker& m_spelling;
    HtmlHighlighter* m_highlighter;
    QLabel* m_notice;        ///< What visitors will see of the key that was pressed last.
    std::string m_wholeText; ///< Empty: all of the text is shown.
    std::string_view m_placeholder;
    bool m_locked = false;
};

} // namespace wendmark
