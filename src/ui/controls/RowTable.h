#pragma once

#include <QTableView>

namespace wendmark {

/// A table whose rows are chosen as wholes and typed into by nobody. Tab leads out of it.
class RowTable : public QTableView {
    Q_OBJECT

public:
    explicit RowTable(QWidget* parent = nullptr);

    /// Emits rowGiven() from now on. Return is not that of the window's default button then.
    void giveRows();

signals:
    /// Return, Enter or a double click: something is to be done with the current row.
    void rowGiven();
};

} // namespace wendmark
