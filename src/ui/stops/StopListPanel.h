#pragma once

#include "commands/DocumentListener.h"
#include "commands/StopListCommands.h"
#include "ui/ProgramParts.h"

#include <QTimer>
#include <QWidget>
#include <functional>

class QKeySequence;
class QLineEdit;
class QMimeData;
class QSortFilterProxyModel;

namespace wendmark {

class StopListModel;
class StopTable;
struct FoundStops;

/// The list of all stops beside the preview: goes to a stop, and moves, copies, takes in and deletes several
/// at once. Every command is one step of the history and goes through the gate.
class StopListPanel final : public QWidget, private DocumentListener {
    Q_OBJECT

public:
    /// What `parts` refers to must outlive the panel.
    explicit StopListPanel(const ProgramParts& parts, QWidget* parent = nullptr);
    ~StopListPanel() override;

    /// Puts the focus into the list, on the current stop.
    void focusList();

signals:
    /// What the author should know of the command that has just ended; empty: nothing.
    void noticeShown(const QString& text);

    /// The command to insert a stop without a page was given, and when its turn was over, has ended.
    void insertGiven();
    void insertEnded(bool isInserted);

    /// The author wants to be back in the preview.
    void left();

private:
    void setupTable();
    void setupCommands();
    void addCommand(const char* name, const QString& text, const QList<QKeySequence>& keys,
                    void (StopListPanel::*command)());

    StopNumbers selectedStops() const;
    int currentRow() const;
    void select(int first, int count);
    void followDocument();
    void showChanges();

    void go();
    void insertHere();
    void duplicate();
    void remove();
    void copy();
    void cut();
    void paste();
    void takeDropped(const QMimeData& brought, int position);
    StopListResult take(const FoundStops& found, int position);
    void moveUp();
    void moveDown();
    StopListResult move(const StopNumbers& stops, int position);

    void change(std::function<StopListResult()> command);
    void end(const StopListResult& result, int stopsBefore);

    void tourChangedNow() override;
    void currentStopChanged() override;
    void filesChanged() override;

    ProgramParts m_parts;
    StopListModel* m_model;
    QSortFilterProxyModel* m_shown;
    QLineEdit* m_filter;          ///< txtStopFilter
    StopTable* m_table;           ///< grdStops
    int m_followed = -1;          ///< Stop on screen when the list looked last.
    std::function<void()> m_drop; ///< What to do once the drop has ended.
    QTimer m_dropEnd;
    QTimer m_changes; ///< Runs while the list has not caught up with the document.
};

} // namespace wendmark
