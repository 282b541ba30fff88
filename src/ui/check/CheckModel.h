#pragma once

#include "ui/check/StopCheck.h"

#include <QAbstractTableModel>
#include <QString>
#include <vector>

namespace wendmark {

/// The stops with what is known of their pages: row n - 1 is stop n.
class CheckModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { stopColumn, titleColumn, verdictColumn, whyColumn, columnCountOfAll };

    using QAbstractTableModel::QAbstractTableModel;

    /// Shows these rows: those that are others, have come or have gone, each in one update.
    void show(std::vector<StopCheck::Row> rows);

    const std::vector<StopCheck::Row>& rows() const { return m_rows; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    static QString text(const StopCheck::Row& row, int column);

    std::vector<StopCheck::Row> m_rows;
};

/// What there is to say of the stop, in sentences: what visitors see, why, and what else was found.
QString describe(const StopCheck::Row& row);

} // namespace wendmark
