#include "ui/site/AddressBox.h"

#include "base/Files.h"
#include "base/Log.h"
#include "commands/TourDocument.h"
#include "model/SiteLists.h"
#include "platform/Strings.h"

#include <QCompleter>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QStringListModel>
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

} // namespace

AddressBox::AddressBox(const TourDocument& document, QWidget* parent)
    : QComboBox(parent), m_document(document), m_history(new QStringListModel(this)) {
    setObjectName(QStringLiteral("cboAddress"));
    setModel(m_history); // Unlike the usual one it takes millions of lines at once.
    setAccessibleName(tr("Address"));
    setLineEdit(new AddressField);
    lineEdit()->setAccessibleName(tr("Address"));
    setInsertPolicy(QComboBox::NoInsert);
    // The box takes typed text for the item that differs from it in case only. Addresses do differ by that.
    for (const auto signal : {&QLineEdit::returnPressed, &QLineEdit::editingFinished})
        disconnect(lineEdit(), signal, this, nullptr);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(12);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    // Completing in the field itself would change what the author types.
    completer()->setCompletionMode(QCompleter::PopupCompletion);
    completer()->setFilterMode(Qt::MatchContains);
    auto* const list = new QListView(this);
    list->setUniformItemSizes(true); // A history may be long.
    setView(list);
    connect(this, &QComboBox::activated, this, [this] { emit addressWanted(currentText(), false); });
    connect(lineEdit(), &QLineEdit::returnPressed, this, [this] { emit addressWanted(currentText(), true); });
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
    const int formerVisit = findText(location, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (formerVisit >= 0)
        removeItem(formerVisit);
    // Ten characters never equal six: the test page is recorded, too, unless it has no folder.
    if (location.trimmed().right(10) != QLatin1String("ft.htm")) {
        insertItem(0, location);
        setCurrentIndex(0);
        lineEdit()->setCursorPosition(0);
    }
}

void AddressBox::showAddress(const QString& address) {
    setEditText(address);
    lineEdit()->setCursorPosition(0); // Addresses are told apart by their beginning.
}

void AddressBox::edit() {
    setFocus();
    lineEdit()->selectAll();
}

} // namespace wendmark
