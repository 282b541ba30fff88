#pragma once

#include "model/SiteLists.h"

#include <QAbstractTableModel>

namespace wendmark {

/// The bookmarks of a tour as a table: one row for each, counted from 0. Whatever is done to them is one of
/// these operations, and each that changes something tells the views by one signal of its kind.
class BookmarkModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column {
        colourColumn = 0, ///< No text; the background is the colour.
        addressColumn = 1,
        noteColumn = 2,
        columnCountOfAll = 3
    };

    /// UTF-16 units of an address or a note that views get to see; GetRow() gives all of it.
    static constexpr qsizetype longestShown = 1000;

    using QAbstractTableModel::QAbstractTableModel;

    const BookmarkList& list() const { return m_list; }
    void setList(BookmarkList list);

    std::int16_t bookmarkCount() const;

    /// `row` must be there.
    const Bookmark& GetRow(int row) const;

    /// Adds rows as far as they are needed, those before the given one being empty and white. Does nothing
    /// for a row at or beyond bookmarkCapacity.
    void SetRow(int row, const Bookmark& bookmark);

    /// Row of the first bookmark of this address; -1 when there is none.
    int rowOf(const std::string& address) const;

    /// Moves rows, both included, up (`by` -1) or down (`by` 1), past the neighbour that must be there.
    void moveBlock(int first, int last, int by);

    void setColour(int first, int last, Colour colour);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QStringList mimeTypes() const override;
    /// The bookmarks as links: HTML with their notes as texts, addresses one to a line.
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    Qt::DropActions supportedDragActions() const override { return Qt::CopyAction; }
    bool removeRows(int row, int count, const QModelIndex& parent = {}) override;

private:
    BookmarkList m_list;
};

} // namespace wendmark
