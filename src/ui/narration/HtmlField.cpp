#include "ui/narration/HtmlField.h"

#include "platform/SpellChecker.h"
#include "platform/Strings.h"
#include "ui/narration/HtmlHighlighter.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QTextBlock>

namespace wendmark {

namespace {

constexpr int mostSuggestions = 6;

/// The beginning of the text, with "\n" for "\r\n": more than longestEdited units where there are more.
QString beginningInLines(const std::string& text) {
    QString beginning = beginningOf(text, 2 * (HtmlField::longestEdited + 1)); // At most half of them go.
    return beginning.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

} // namespace

HtmlField::HtmlField(SpellChecker& spelling, QWidget* parent)
    : QPlainTextEdit(parent)
    , m_spelling(spelling)
    , m_highlighter(new HtmlHighlighter(spelling, palette(), document())) {
    setTabChangesFocus(true);
    connect(&m_spelling, &SpellChecker::changed, m_highlighter, &QSyntaxHighlighter::rehighlight);
}

std::string HtmlField::typedText() const {
    return isTooLong() ? m_wholeText : toUtf8(shownText());
}

QString HtmlField::shownText() const {
    return document()
        ->toRawText()
        .replace(QChar::ParagraphSeparator, QLatin1Char('\n'))
        .replace(QChar::LineSeparator, QLatin1Char('\n'));
}

void HtmlField::setTypedText(const std::string& text) {
    const QString lines = beginningInLines(text);
    const bool wasTooLong = isTooLong();
    const bool tooLong = lines.size() > longestEdited;
    if (tooLong ? text == m_wholeText : !wasTooLong && lines == shownText())
        return;
    const bool isFirst = shownText().isEmpty() && !document()->isUndoAvailable();
    m_wholeText = tooLong ? text : std::string();
    setReadOnly(isTooLong());
    if (isFirst || isTooLong() || wasTooLong) {
        setPlainText(lines.left(longestEdited));
        return;
    }
    QTextCursor all(document());
    all.select(QTextCursor::Document);
    all.insertText(lines);
    moveCursor(QTextCursor::Start);
}

void HtmlField::beginWith(const std::string& text) {
    m_wholeText.clear();
    setPlainText(QString());
    setTypedText(text);
}

void HtmlField::replaceSelection(const QString& text, int caret) {
    QTextCursor cursor = textCursor();
    cursor.beginEditBlock(); // Or the step would be one with letters that were typed before.
    cursor.insertText(text);
    cursor.endEditBlock();
    cursor.setPosition(caret);
    setTextCursor(cursor);
}

void HtmlField::contextMenuEvent(QContextMenuEvent* event) {
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const QTextCursor place = byKey ? textCursor() : cursorForPosition(event->pos());
    QMenu* const menu = createStandardContextMenu();
    menu->setObjectName(QStringLiteral("mnuWord"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (const QTextCursor word = wordAt(place); word.hasSelection())
        addWordActions(*menu, word);
    addLanguageMenu(*menu);
    const QPoint below = viewport()->mapToGlobal(cursorRect(place).bottomLeft());
    menu->popup(byKey ? below : event->globalPos());
}

void HtmlField::changeEvent(QEvent* event) {
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        m_highlighter->setColours(palette());
}

void HtmlField::addWordActions(QMenu& menu, const QTextCursor& word) {
    QAction* const before = menu.actions().value(0);
    const auto insert = [&](const QString& caption, auto action) {
        auto* const item = new QAction(caption, &menu);
        connect(item, &QAction::triggered, this, action);
        menu.insertAction(before, item);
        return item;
    };
    const QString text = word.selectedText();
    const QStringList suggestions = m_spelling.suggestionsFor(text).mid(0, mostSuggestions);
    for (const QString& suggestion : suggestions) {
        QAction* const item = insert(QString(suggestion).replace(QLatin1Char('&'), QStringLiteral("&&")),
                                     [word, suggestion] { QTextCursor(word).insertText(suggestion); });
        QFont bold = item->font();
        bold.setBold(true);
        item->setFont(bold);
    }
    if (suggestions.isEmpty())
        insert(tr("No Suggestions"), [] {})->setEnabled(false);
    insert(tr("Add to &Dictionary"), [this, text] { m_spelling.addWord(text); });
    menu.insertSeparator(before);
}

void HtmlField::addLanguageMenu(QMenu& menu) {
    const QStringList installed = SpellChecker::installedLanguages();
    if (installed.isEmpty())
        return;
    menu.addSeparator();
    QMenu* const languages = menu.addMenu(tr("Check &Spelling"));
    const auto add = [&](const QString& caption, const QString& language) {
        QAction* const item =
            languages->addAction(caption, this, [this, language] { emit languageChosen(language); });
        item->setCheckable(true);
        item->setChecked(language == m_spelling.language());
    };
    add(tr("&Off"), QString());
    for (const QString& language : installed)
        add(language, language);
}

QTextCursor HtmlField::wordAt(const QTextCursor& place) const {
    QTextCursor cursor(place);
    cursor.clearSelection();
    const QTextBlock block = cursor.block();
    for (const WordRange& word : m_highlighter->misspelledWordsIn(block)) {
        if (cursor.positionInBlock() < word.start || cursor.positionInBlock() > word.start + word.length)
            continue;
        cursor.setPosition(block.position() + word.start);
        cursor.setPosition(block.position() + word.start + word.length, QTextCursor::KeepAnchor);
        return cursor;
    }
    return cursor;
}

} // namespace wendmark
