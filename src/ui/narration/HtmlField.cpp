#include "ui/narration/HtmlField.h"

#include "platform/SpellChecker.h"
#include "platform/Strings.h"
#include "ui/narration/HtmlHighlighter.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QLabel>
#include <QMenu>
#include <QTextBlock>
#include <QToolTip>
#include <algorithm>

namespace wendmark {

namespace {

constexpr int mostSuggestions = 6;

const Tag* tagOf(const QKeyEvent& key) {
    if (key.matches(QKeySequence::Bold))
        return &boldTag;
    if (key.matches(QKeySequence::Italic))
        return &italicTag;
    return key.matches(QKeySequence::Underline) ? &underlineTag : nullptr;
}

bool isReturn(const QKeyEvent& key) {
    return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
}

/// The beginning of the text, with "\n" for "\r\n": more than longestEdited units where there are more.
QString beginningInLines(const std::string& text) {
    QString beginning = beginningOf(text, 2 * (HtmlField::longestEdited + 1)); // At most half of them go.
    return beginning.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

} // namespace

HtmlField::HtmlField(SpellChecker& spelling, QWidget* parent)
    : QPlainTextEdit(parent)
    , m_spelling(spelling)
    , m_highlighter(new HtmlHighlighter(spelling, palette(), document()))
    , m_notice(new QLabel(this)) {
    setTabChangesFocus(true);
    m_notice->setObjectName(QStringLiteral("lblNewLine"));
    m_notice->setAutoFillBackground(true);
    m_notice->setPalette(QToolTip::palette());
    m_notice->setFrameStyle(QFrame::Box);
    m_notice->setWordWrap(true);
    m_notice->hide();
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
    setReadOnly(m_locked || isTooLong());
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

QString HtmlField::tooLongNotice() {
    return tr("A text of more than %L1 characters is shown in part. It stays as it is until all of it is "
              "selected "
              "and replaced.")
        .arg(longestEdited);
}

void HtmlField::setLocked(bool locked) {
    m_locked = locked;
    setReadOnly(m_locked || isTooLong());
}

Selection HtmlField::selection() const {
    const QTextCursor cursor = textCursor();
    return {cursor.selectionStart(), cursor.selectionEnd() - cursor.selectionStart()};
}

void HtmlField::takeOver(const EditedText& edited) {
    // Only the selection differs: that it alone is replaced keeps the rest of the field as it is on screen.
    const QString text = toQString(edited.text);
    const Selection replaced = selection();
    const qsizetype growth = text.size() - shownText().size();
    QTextCursor cursor = textCursor();
    cursor.beginEditBlock(); // Or the step would be one with letters that were typed before.
    cursor.insertText(text.mid(replaced.start, replaced.length + growth));
    cursor.endEditBlock();
    cursor.setPosition(edited.caret);
    setTextCursor(cursor);
}

void HtmlField::replace(Selection part, const QString& text, bool goesOn) {
    QTextCursor cursor(document());
    cursor.setPosition(part.start);
    cursor.setPosition(part.start + part.length, QTextCursor::KeepAnchor);
    if (goesOn)
        cursor.joinPreviousEditBlock();
    else
        cursor.beginEditBlock();
    cursor.insertText(text);
    cursor.endEditBlock();
    cursor.setPosition(part.start + 1);
    setTextCursor(cursor);
}

void HtmlField::selectIfOnly(std::string_view placeholder) {
    m_placeholder = placeholder;
    if (typedText() == placeholder)
        selectAll();
}

void HtmlField::unselectPlaceholder() {
    if (!m_placeholder.empty() && selection().length > 0 && typedText() == m_placeholder)
        moveCursor(QTextCursor::Start);
}

bool HtmlField::event(QEvent* event) {
    // The window has the same keys, for when no field has the focus.
    const auto* const key = dynamic_cast<const QKeyEvent*>(event);
    if (key != nullptr && event->type() == QEvent::ShortcutOverride && tagOf(*key) != nullptr)
        event->accept();
    return QPlainTextEdit::event(event);
}

void HtmlField::keyPressEvent(QKeyEvent* event) {
    m_notice->hide();
    if (replacesAll(*event))
        clearAll();
    if (const Tag* const tag = tagOf(*event)) {
        unselectPlaceholder();
        if (!isReadOnly())
            takeOver(wrapSelection(typedText(), selection(), *tag));
        return;
    }
    if (isReturn(*event) && event->modifiers().testFlag(Qt::ShiftModifier)) {
        if (!isReadOnly())
            textCursor().insertText(QStringLiteral("<BR>\n"));
        return;
    }
    QPlainTextEdit::keyPressEvent(event);
    if (isReturn(*event) && event->isAccepted() && !isReadOnly())
        tellOfNewLine();
}

/// Of a text that is too long, only the whole can be replaced.
bool HtmlField::replacesAll(const QKeyEvent& key) const {
    const QTextCursor cursor = textCursor();
    const bool allSelected = cursor.selectionStart() == 0 && cursor.selectionEnd() == shownText().size();
    if (m_locked || !isTooLong() || !allSelected)
        return false;
    const bool isTyped = !key.text().isEmpty() && key.text().at(0).isPrint() &&
                         !(key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    return isTyped || key.key() == Qt::Key_Delete || key.key() == Qt::Key_Backspace ||
           key.matches(QKeySequence::Paste);
}

/// Undo of the field would bring back what it shows, which is not all of the text.
void HtmlField::clearAll() {
    m_wholeText.clear();
    setReadOnly(m_locked);
    setPlainText(QString());
}

/// A save makes a line break of each empty line.
void HtmlField::tellOfNewLine() {
    const bool isBehindEmptyLine = textCursor().block().previous().text().isEmpty();
    m_notice->setText(isBehindEmptyLine ? tr("Visitors see one new line for an empty line.")
                                        : tr("Visitors see no new line here. Shift+Enter begins one."));
    placeNotice();
    m_notice->show();
    QAccessibleEvent told(m_notice, QAccessible::Alert);
    QAccessible::updateAccessibility(&told);
}

void HtmlField::placeNotice() {
    const QRect room = viewport()->geometry();
    const int width = std::min(m_notice->sizeHint().width(), room.width());
    const int height = m_notice->heightForWidth(width);
    m_notice->setGeometry(room.right() + 1 - width, room.bottom() + 1 - height, width, height);
}

void HtmlField::resizeEvent(QResizeEvent* event) {
    QPlainTextEdit::resizeEvent(event);
    placeNotice();
}

void HtmlField::focusOutEvent(QFocusEvent* event) {
    m_notice->hide();
    QPlainTextEdit::focusOutEvent(event);
}

void HtmlField::contextMenuEvent(QContextMenuEvent* event) {
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const QTextCursor place = byKey ? textCursor() : cursorForPosition(event->pos());
    QMenu* const menu = createStandardContextMenu();
    menu->setObjectName(QStringLiteral("mnuWord"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (const QTextCursor word = wordAt(place); word.hasSelection())
        addWordActions(*menu, word);
    if (isTooLong() && !m_locked)
        menu->addAction(tr("Clear &Whole Text"), this, &HtmlField::clearAll);
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
