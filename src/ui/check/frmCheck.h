#pragma once

#include "commands/DocumentListener.h"
#include "commands/StopListCommands.h"
#include "ui/ProgramParts.h"
#include "ui/check/StopCheck.h"

#include <QDialog>
#include <QTimer>
#include <vector>

class QComboBox;
class QLabel;
class QLayout;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;

namespace wendmark {

class CheckModel;
class Remedies;
class RowTable;

/// Says of every stop whether visitors see its page, and what can be done about those they do not. Not modal:
/// the list fills while the author goes on working. Remedies go through the gate; each is one step of the
/// history, for however many stops.
class frmCheck final : public QDialog, private DocumentListener {
    Q_OBJECT

public:
    /// What `parts` refers to must outlive the window.
    explicit frmCheck(ProgramParts parts, QWidget* parent = nullptr);
    ~frmCheck() override;

    /// Comes to the front, and asks for all pages that nothing is known of yet.
    void ask();

    /// Asks for no further page, and goes.
    void reject() override;

private:
    void setupPosting();
    void setupTable();
    void setupChoice();
    void setupTabOrder();
    QLayout* makePostingRow();
    QLayout* makeProgressRow();
    QLayout* makeCheckButtons();
    QLayout* makeButtonRow();
    QPushButton* addButton(QLayout& row, const char* name, const QString& caption,
                           void (frmCheck::*command)());

    StopNumbers selectedStops() const;
    std::vector<StopCheck::Row> chosenRows() const;
    void showRows();
    void showProgress();
    QString stateOfAll() const;
    void showChoice();
    void tellChoice(const QString& text);

    void checkUnknown();
    void checkAll();
    void checkAgain();
    void check(const StopNumbers& stops);
    void tellFailure(const QString& reason);
    void cancel();
    void go();

    void tourChangedNow() override;
    void filesChanged() override { tourChangedNow(); }

    ProgramParts m_parts;
    CheckModel* m_rows;
    QComboBox* m_posting;                ///< cboPosting
    RowTable* m_table;                   ///< grdChecks
    QLabel* m_progressText;              ///< lblProgress
    QProgressBar* m_progress;            ///< barProgress
    QPlainTextEdit* m_choice;            ///< txtChoice: about the chosen stop.
    QPushButton* m_checkAgain = nullptr; ///< btnCheckAgain
    QPushButton* m_cancel = nullptr;     ///< btnStop
    QPushButton* m_go = nullptr;         ///< btnGo
    Remedies* m_remedies;
    QTimer m_changes; ///< Runs while the list has not caught up.
};

} // namespace wendmark
