#pragma once

#include <QComboBox>
#include <string>

namespace wendmark {

class HistoryModel;
class TourDocument;

/// The address box "cboAddress": a field with the visited addresses as its list, the latest first. The list
/// is the tour's, in "brhist.txt" of the working copy.
///
/// What the author types stays as it is, caret and all, whatever pages come and go meanwhile.
class AddressBox final : public QComboBox {
    Q_OBJECT

public:
    /// The document must outlive the box.
    AddressBox(const TourDocument& document, QWidget* parent);

    void LoadHistory();
    void SaveHistory() const;

    /// Puts an address that was visited on top of the list, and shows it unless the author is typing.
    void recordVisit(const QString& location);

    /// Shows where the browser is, or goes, unless the author is typing.
    void showAddress(const QString& address);

    /// Same, and what was typed is given up.
    void replaceByAddress(const QString& address);

    /// Takes the keyboard, with the whole address selected.
    void edit();

signals:
    /// The author wants to see this; `typed`: entered by Return, not chosen from the list.
    void addressWanted(const QString& text, bool typed);

protected:
    void wheelEvent(QWheelEvent* event) override;

private:
    struct Shown;

    Shown shown() const;
    void bringBack(const Shown& before);
    bool isBeingTyped() const;
    void setupList();
    void setupCompletion();

    const TourDocument& m_document;
    HistoryModel* m_history;
    std::string m_furtherHistory; ///< What the file holds beyond the list: written again as it was.
    bool m_typed = false;         ///< The field holds what nobody has gone to yet.
};

} // namespace wendmark
