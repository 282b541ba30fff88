#pragma once

#include "model/TourSearch.h"

#include <QAbstractTableModel>
#include <QString>
#include <vector>

namespace wendmark {

/// The places where words were found, one in each row.
class PlaceModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    /// Of the column `textColumn`: where the found words stand in the text, a QPoint of position and length.
    static constexpr int wordsRole = Qt::UserRole;

    enum Column { stopColumn, titleColumn, partColumn, textColumn, columnCountOfAll };

    using QAbstractTableModel::QAbstractTableModel;

    /// Shows these places of the tour. Rows that are the same stay; the others go and come in one update
    /// each.
    void show(const TourModel& tour, const std::vector<FoundPlace>& places);

    /// Takes all rows out, so that none is chosen any more.
    void clear();

    const FoundPlace& placeAt(int row) const { return m_rows.at(static_cast<std::size_t>(row)).place; }

    /// Row of the first place at or behind this one; behind the last row when there is none.
    int rowFrom(std::int16_t stop, StopPart part, std::size_t begin) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Row {
        FoundPlace place;
        QString title; ///< Of its stop.

        friend bool operator==(const Row&, const Row&) = default;
    };

    static QString text(const Row& row, int column);

    std::vector<Row> m_rows;
};

} // namespace wendmark
