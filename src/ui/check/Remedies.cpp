#include "ui/check/Remedies.h"

#include "commands/TourDocument.h"
#include "platform/Gate.h"
#include "ui/Messages.h"
#include "ui/cards/CardMaker.h"
#include "ui/cards/CardsInTour.h"
#include "ui/dialogs/DialogParts.h"

#include <QLayout>
#include <QPushButton>
#include <algorithm>
#include <utility>

namespace wendmark {

Remedies::Remedies(const ProgramParts& parts, ChosenRows chosenRows, QWidget& window)
    : QObject(&window)
    , m_parts(parts)
    , m_chosenRows(std::move(chosenRows))
    , m_window(window)
    , m_cards(new CardMaker(*window.parentWidget(), this))
    , m_newAddress(addButton("btnNewAddress", tr("Use &New Address"), {}, &Remedies::useNewAddress))
    , m_card(addButton(
          "btnCard", tr("Make a Ca&rd"),
          tr("A page of the tour's own that shows what the page is and opens it in a tab of its own"),
          &Remedies::makeCards))
    , m_original(addButton("btnOriginal", tr("Use Page &Itself"),
                           tr("In place of the card that stands for it"), &Remedies::useOriginal))
    , m_leave(addButton("btnLeave", tr("&Leave It"),
                        tr("Counts the chosen stops as settled, until their servers answer otherwise"),
                        &Remedies::leave)) {
    m_leave->setCheckable(true);
    connect(m_cards, &CardMaker::changed, this, &Remedies::changed);
    connect(m_cards, &CardMaker::ended, this, &Remedies::useCards);
}

QPushButton* Remedies::addButton(const char* name, const QString& caption, const QString& toolTip,
                                 void (Remedies::*command)()) {
    QPushButton* const button = makeButton(name, caption, &m_window);
    button->setToolTip(toolTip);
    connect(button, &QPushButton::clicked, this, command);
    return button;
}

void Remedies::addButtonsTo(QLayout& row) const {
    for (QWidget* const button : buttons())
        row.addWidget(button);
}

QList<QWidget*> Remedies::buttons() const {
    return {m_newAddress, m_card, m_original, m_leave};
}

void Remedies::showFor(const std::vector<StopCheck::Row>& rows) {
    using Row = StopCheck::Row;
    m_newAddress->setEnabled(
        std::ranges::any_of(rows, [](const Row& row) { return !row.verdict.newAddress.empty(); }));
    m_card->setEnabled(!m_cards->isRunning() &&
                       std::ranges::any_of(rows, [](const Row& row) { return row.canBeCard(); }));
    m_original->setEnabled(
        std::ranges::any_of(rows, [](const Row& row) { return !row.stop.original.empty(); }));
    m_leave->setEnabled(std::ranges::any_of(rows, [](const Row& row) { return row.canBeLeft(); }));
    m_leave->setChecked(m_leave->isEnabled() && std::ranges::all_of(rows, [](const Row& row) {
                            return !row.canBeLeft() || row.isLeft;
                        }));
}

void Remedies::cancel() {
    if (m_cards->isRunning())
        m_cards->cancel();
}

void Remedies::useNewAddress() {
    m_parts.gate.run(*this, [this] {
        std::map<std::int16_t, std::string> addresses;
        for (const StopCheck::Row& row : m_chosenRows()) {
            if (!row.verdict.newAddress.empty())
                addresses[row.stop.stop] = row.verdict.newAddress;
        }
        changeAddresses(addresses, "Use New Address");
    });
}

void Remedies::changeAddresses(const std::map<std::int16_t, std::string>& addresses,
                               const std::string& stepName) {
    if (!m_parts.document.changeAddresses(addresses, stepName).done())
        return;
    StopNumbers changed;
    for (const auto& [stop, address] : addresses)
        changed.push_back(stop);
    emit checkWanted(changed);
}

void Remedies::makeCards() {
    std::vector<CardMaker::Request> requests;
    for (const StopCheck::Row& row : m_chosenRows()) {
        if (!row.canBeCard())
            continue;
        const StopToCheck& stop = row.stop;
        requests.push_back({stop.stop, stop.address, stop.webPage(), stop.title,
                            stop.original.empty() ? std::string() : stop.address});
    }
    m_cards->start(std::move(requests));
}

void Remedies::useCards() {
    m_parts.gate.run(*this, [this] {
        const CardsInTour cards = putCardsIntoTour(m_parts.document, m_cards->results());
        emit checkWanted(cards.stops);
        if (const QString failure = failureOf(cards); !failure.isEmpty())
            showMessage(&m_window, failure);
    });
}

void Remedies::useOriginal() {
    m_parts.gate.run(*this, [this] {
        std::map<std::int16_t, std::string> addresses;
        for (const StopCheck::Row& row : m_chosenRows()) {
            if (!row.stop.original.empty())
                addresses[row.stop.stop] = row.stop.original;
        }
        changeAddresses(addresses, "Use Page Itself");
    });
}

/// Nothing of the tour changes, so it is no step of the history: the button takes it back.
void Remedies::leave() {
    const bool isWanted = m_leave->isChecked(); // Looking at the rows shows what holds for them.
    StopNumbers stops;
    for (const StopCheck::Row& row : m_chosenRows())
        stops.push_back(row.stop.stop);
    m_parts.check.setLeft(stops, isWanted);
    emit changed();
}

} // namespace wendmark
