#pragma once

#include "commands/StopListCommands.h"
#include "ui/ProgramParts.h"
#include "ui/check/StopCheck.h"

#include <QList>
#include <QObject>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

class QLayout;
class QPushButton;
class QWidget;

namespace wendmark {

class CardMaker;

/// What the author can do about the pages of chosen stops, each with a button of its own, for however many
/// stops. What changes the tour is one step of its history.
class Remedies final : public QObject {
    Q_OBJECT

public:
    /// The chosen stops as they are when they are asked for.
    using ChosenRows = std::function<std::vector<StopCheck::Row>()>;

    /// What `parts` refers to must outlive it; buttons and messages belong to `window`, a dialog of
    /// one that shows pages.
    Remedies(const ProgramParts& parts, ChosenRows chosenRows, QWidget& window);

    void addButtonsTo(QLayout& row) const;

    /// In the order of the Tab key.
    QList<QWidget*> buttons() const;

    /// Enables what helps these.
    void showFor(const std::vector<StopCheck::Row>& rows);

    const CardMaker& cards() const { return *m_cards; }

    /// Forgets the cards that are being made.
    void cancel();

signals:
    /// A card more has been made, or the author has settled something.
    void changed();

    /// The pages of these stops are others now.
    void checkWanted(const wendmark::StopNumbers& stops);

private:
    QPushButton* addButton(const char* name, const QString& caption, const QString& toolTip,
                           void (Remedies::*command)());
    void useNewAddress();
    void makeCards();
    void useCards();
    void useOriginal();
    void leave();
    void changeAddresses(const std::map<std::int16_t, std::string>& addresses, const std::string& stepName);

    const ProgramParts& m_parts;
    ChosenRows m_chosenRows;
    QWidget& m_window;
    CardMaker* m_cards;
    QPushButton* m_newAddress; ///< btnNewAddress
    QPushButton* m_card;       ///< btnCard
    QPushButton* m_original;   ///< btnOriginal
    QPushButton* m_leave;      ///< btnLeave: down while the chosen stops are left as they are.
};

} // namespace wendmark
