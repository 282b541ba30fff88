#include "ui/site/AddressBox.h"

#include "base/Files.h"
#include "base/Log.h"
#include "commands/TourDocument.h"
#include "model/SiteLists.h"
#include "platform/Strings.h"
#include "ui/site/HistoryModel.h"

#include <QCompleter>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QSortFilterProxyModel>
#include <QStyledItemDelegate>
#include <QWheelEvent>
#include <utility>

namespace wendmark {

namespace {

constexpr std::string_view historyFileName = "brhist.txt";

/// The box sends keys that the field has left over back to it: without this, Return counts twice.
class AddressField final : public QLineEdit {
protected:
    void keyPressEvent(QKeyEvent* event) override {
        QLineEdit::keyPressEvent(event);
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
            event->accept();
    }
};

/// Writes what the model says of an entry, where that is more than its address.
class EntryPainter final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        option->text = index.data(Qt::AccessibleTextRole).toString();
    }
};

/// Offers no page of the frame test.
class OnlyPages final : public QSortFilterProxyModel {
public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override {
        return !isTestPage(sourceModel()->index(row, 0, parent).data().toString());
    }
};

} // namespace

/// The field as the author sees it.
struct AddressBox::Shown {
    QString text;
    int caret = 0;
    int selectionStart = -1;
    int selectionLength = 0;
    bool wholeSelected = false;
};

AddressBox::AddressBox(const TourDocument& document, QWidget* parent)
    : QComboBox(parent), m_document(document), m_history(new HistoryModel(this)) {
    setObjectName(QStringLiteral("cboAddress"));
    setModel(m_history);
    setAccessibleName(tr("Address"));
    setLineEdit(new AddressField);
    lineEdit()->setAccessibleName(tr("Address"));
    setInsertPolicy(QComboBox::NoInsert);
    setFocusPolicy(Qt::StrongFocus); // A wheel that happens to be over it is not meant for it.
    // The box takes typed text for the item that differs from it in case only. Addresses do differ by that.
    for (const auto signal : {&QLineEdit::returnPressed, &QLineEdit::editingFinished})
        disconnect(lineEdit(), signal, this, nullptr);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(12);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setupList();
    setupCompletion();
    connect(lineEdit(), &QLineEdit::textEdited, this, [this] { m_typed = true; });
    connect(this, &QComboBox::activated, this, [this] {
        m_typed = false;
        emit addressWanted(currentText(), false);
    });
    connect(lineEdit(), &QLineEdit::returnPressed, this, [this] {
        m_typed = false;
        emit addressWanted(currentText(), true);
    });
}

void AddressBox::setupList() {
    auto* const list = new QListView(this);
    list->setUniformItemSizes(true); // A history may be long.
    setView(list);
    setItemDelegate(new EntryPainter(this));
}

/// Completing in the field itself would change what the author types.
void AddressBox::setupCompletion() {
    auto* const pages = new OnlyPages(this);
    pages->setSourceModel(m_history);
    completer()->setModel(pages);
    completer()->setCompletionMode(QCompleter::PopupCompletion);
    completer()->setFilterMode(Qt::MatchContains);
}

void AddressBox::LoadHistory() {
    const files::Contents file = files::read(m_document.workspace().workingFile(historyFileName));
    m_document.log().skipAsNote(file.outcome);
    History history = readHistory(file.bytes);
    m_furtherHistory = std::move(history.further);
    QStringList addresses;
    for (const std::string& address : history.addresses)
        addresses.append(toQString(address));
    m_history->setStringList(addresses);
    setCurrentIndex(addresses.isEmpty() ? -1 : 0);
}

void AddressBox::SaveHistory() const {
    History history{{}, m_furtherHistory};
    history.addresses.reserve(static_cast<std::size_t>(count()));
    for (int i = 0; i < count(); ++i)
        history.addresses.push_back(toUtf8(itemText(i)));
    m_document.log().skip(m_document.workspace().writeWorkingFile(historyFileName, historyFile(history)));
}

void AddressBox::recordVisit(const QString& location) {
    if (location.isEmpty())
        return;
    const Shown before = shown();
    const int formerVisit = findText(location, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (formerVisit >= 0)
        removeItem(formerVisit);
    // Ten characters never equal six: the test page is recorded, too, unless it has no folder.
    if (location.trimmed().right(10) != QLatin1String("ft.htm")) {
        insertItem(0, location);
        setCurrentIndex(0);
    }
    bringBack(before);
}

void AddressBox::showAddress(const QString& address) {
    const Shown before = shown();
    if (before.text == address || isBeingTyped())
        return;
    setEditText(address);
    bringBack(before);
}

void AddressBox::replaceByAddress(const QString& address) {
    m_typed = false;
    showAddress(address);
}

void AddressBox::edit() {
    setFocus();
    lineEdit()->selectAll();
}

void AddressBox::wheelEvent(QWheelEvent* event) {
    event->ignore(); // Turning it would load one page after the other.
}

/// The focus of its window: that may be another one's for a while.
bool AddressBox::isBeingTyped() const {
    const QWidget* const focus = window()->focusWidget();
    return m_typed && (focus == this || focus == lineEdit());
}

AddressBox::Shown AddressBox::shown() const {
    const QLineEdit& field = *lineEdit();
    const bool whole = field.hasSelectedText() && field.selectedText() == field.text();
    return {field.text(), field.cursorPosition(), field.selectionStart(), field.selectionLength(), whole};
}

/// What is being typed, or the selection of the whole address, whichever it is by now.
void AddressBox::bringBack(const Shown& before) {
    QLineEdit& field = *lineEdit();
    if (!isBeingTyped()) {
        field.setCursorPosition(0); // Addresses are told apart by their beginning.
        if (before.wholeSelected)
            field.selectAll();
        return;
    }
    if (field.text() == before.text)
        return;
    field.setText(before.text);
    if (before.selectionStart < 0) {
        field.setCursorPosition(before.caret);
        return;
    }
    const bool backwards = before.caret == before.selectionStart;
    field.setSelection(backwards ? before.selectionStart + before.selectionLength : before.selectionStart,
                       backwards ? -before.selectionLength : before.selectionLength);
}

} // namespace wendmark
