#include "ui/stops/AddressField.h"

#include "base/Files.h"
#include "base/Log.h"
#include "commands/TourDocument.h"
#include "model/SiteLists.h"
#include "platform/Strings.h"

#include <QCompleter>
#include <QStringListModel>

namespace wendmark {

namespace {

constexpr qsizetype mostOffered = 5'000; // The latest first.

} // namespace

AddressField::AddressField(const TourDocument& document, QWidget* parent)
    : QLineEdit(parent), m_document(document), m_visited(new QStringListModel(this)) {
    setPlaceholderText(QStringLiteral("https://"));
    auto* const completer = new QCompleter(m_visited, this);
    completer->setCompletionMode(QCompleter::PopupCompletion);
    completer->setFilterMode(Qt::MatchContains);
    setCompleter(completer);
}

void AddressField::focusInEvent(QFocusEvent* event) {
    loadVisited();
    QLineEdit::focusInEvent(event);
}

void AddressField::loadVisited() {
    const files::Contents file = files::read(m_document.workspace().workingFile("brhist.txt"));
    m_document.log().skipAsNote(file.outcome);
    QStringList addresses;
    for (const std::string& address : readHistory(file.bytes).addresses) {
        const bool isTestPage = address.ends_with("/ft.htm"); // Of the frame test, which is no stop.
        if (addresses.size() < mostOffered && !isTestPage)
            addresses.append(toQString(address));
    }
    m_visited->setStringList(addresses);
}

} // namespace wendmark
