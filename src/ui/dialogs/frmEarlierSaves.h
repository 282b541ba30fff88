#pragma once

#include <QDialog>
#include <string>

class QCheckBox;
class QLabel;
class QPushButton;
class QTreeWidget;

namespace wendmark {

/// Lists the scripts that were kept when tours were saved, the latest first, and lets the author choose one.
class frmEarlierSaves final : public QDialog {
    Q_OBJECT

public:
    /// `savedScripts` is the folder of the scripts, `tourPath` that of the open tour; empty: it has none.
    frmEarlierSaves(std::string savedScripts, std::string tourPath, QWidget* parent = nullptr);

    /// Path of the chosen script; empty before the dialog is accepted.
    const QString& chosen() const { return m_chosen; }

    /// Folder of the tour that was saved then.
    const QString& chosenTour() const { return m_chosenTour; }

    QSize sizeHint() const override;

private:
    void setupList();
    void setupLayout();
    void fill();
    void choose();

    std::string m_savedScripts;
    std::string m_tourPath;
    QString m_chosen;
    QString m_chosenTour;
    QTreeWidget* m_list;   ///< lstSaves
    QLabel* m_empty;       ///< lblEmpty, in place of the list.
    QCheckBox* m_allTours; ///< chkAllTours
    QPushButton* m_open;   ///< btnOpen
};

} // namespace wendmark
