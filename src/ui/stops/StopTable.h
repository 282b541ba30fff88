#pragma once

#include "ui/controls/RowTable.h"

namespace wendmark {

/// The table of a stop list. It knows whether what is dropped on it was dragged from itself.
class StopTable final : public RowTable {
    Q_OBJECT

public:
    explicit StopTable(QWidget* parent = nullptr);

    /// During a drop: the rows dragged are this table's own, and are to be moved.
    bool takesItsOwn() const { return m_takesItsOwn; }

signals:
    /// A row was clicked, without any key that extends the selection.
    void rowChosen();

protected:
    void dropEvent(QDropEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    bool m_takesItsOwn = false;
};

} // namespace wendmark
