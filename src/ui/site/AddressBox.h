#pragma once

#include <QComboBox>
#include <string>

class QStringListModel;

namespace wendmark {

class TourDocument;

/// The address box "cboAddress": a field with the visited addresses as its list, the latest first. The list
/// is the tour's, in "brhist.txt" of the working copy.
class AddressBox final : public QComboBox {
    Q_OBJECT

public:
    /// The document must outlive the box.
    AddressBox(const TourDocument& document, QWidget* parent);

    void LoadHistory();
    void SaveHistory() const;

    /// Puts an address that was visited on top of the list.
    void recordVisit(const QString& location);

    /// Shows an address that is being gone to.
    void showAddress(const QString& address);

    /// Takes the keyboard, with the whole address selected.
    void edit();

signals:
    /// The author wants to see this; `typed`: entered by Return, not chosen from the list.
    void addressWanted(const QString& text, bool typed);

private:
    const TourDocument& m_document;
    QStringListModel* m_history;
    std::string m_furtherHistory; ///< What the file holds beyond the list: written again as it was.
};

} // namespace wendmark
