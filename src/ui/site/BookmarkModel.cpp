#include "ui/site/BookmarkModel.h"

#include "platform/Strings.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/site/ColorBar.h"

#include <QColor>
#include <QMimeData>
#include <algorithm>
#include <set>

namespace wendmark {

namespace {

QColor toQColor(Colour colour) {
    return {colour & 255, colour >> 8 & 255, colour >> 16 & 255};
}

QString nameOfColour(Colour colour) {
    for (int k = 1; k <= ColorBar::segmentCount; ++k) {
        if (ColorBar::colourOf(k) == colour)
            return ColorBar::nameOf(k);
    }
    return toQColor(colour).name();
}

/// No more of a text than can be seen of it.
QString shown(const std::string& text) {
    return shortened(beginningOf(text, BookmarkModel::longestShown + 1), BookmarkModel::longestShown);
}

QVariant textData(const std::string& text, int role) {
    switch (role) {
    case Qt::DisplayRole:
        return shown(text);
    case Qt::ToolTipRole:
        return plain(shown(text));
    default:
        return {};
    }
}

QVariant colourData(Colour colour, int role) {
    switch (role) {
    case Qt::BackgroundRole:
        return toQColor(colour);
    case Qt::AccessibleTextRole:
        return nameOfColour(colour);
    default:
        return {};
    }
}

} // namespace

void BookmarkModel::setList(BookmarkList list) {
    beginResetModel();
    m_list = std::move(list);
    endResetModel();
}

std::int16_t BookmarkModel::bookmarkCount() const {
    return static_cast<std::int16_t>(m_list.bookmarks.size());
}

const Bookmark& BookmarkModel::GetRow(int row) const {
    return m_list.bookmarks.at(static_cast<std::size_t>(row));
}

void BookmarkModel::SetRow(int row, const Bookmark& bookmark) {
    if (row < 0 || row >= bookmarkCapacity)
        return;
    const auto place = static_cast<std::size_t>(row);
    if (row >= bookmarkCount()) {
        beginInsertRows({}, bookmarkCount(), row);
        m_list.bookmarks.resize(place + 1);
        m_list.bookmarks[place] = bookmark;
        endInsertRows();
        return;
    }
    m_list.bookmarks[place] = bookmark;
    emit dataChanged(index(row, colourColumn), index(row, noteColumn));
}

int BookmarkModel::rowOf(const std::string& address) const {
    const auto found = std::find_if(m_list.bookmarks.begin(), m_list.bookmarks.end(),
                                    [&](const Bookmark& bookmark) { return bookmark.address == address; });
    return found == m_list.bookmarks.end() ? -1 : static_cast<int>(found - m_list.bookmarks.begin());
}

void BookmarkModel::moveBlock(int first, int last, int by) {
    // It is the neighbour that goes to the other side of the block.
    const int neighbour = by < 0 ? first - 1 : last + 1;
    beginMoveRows({}, neighbour, neighbour, {}, by < 0 ? last + 1 : first);
    const auto begin = m_list.bookmarks.begin() + std::min(neighbour, first);
    const auto end = m_list.bookmarks.begin() + std::max(neighbour, last) + 1;
    std::rotate(begin, by < 0 ? begin + 1 : end - 1, end);
    endMoveRows();
}

void BookmarkModel::setColour(int first, int last, Colour colour) {
    for (int row = first; row <= last; ++row)
        m_list.bookmarks.at(static_cast<std::size_t>(row)).colour = colour;
    emit dataChanged(index(first, colourColumn), index(last, colourColumn));
}

int BookmarkModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : bookmarkCount();
}

int BookmarkModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : columnCountOfAll;
}

QVariant BookmarkModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Bookmark& bookmark = GetRow(index.row());
    switch (index.column()) {
    case colourColumn:
        return colourData(bookmark.colour, role);
    case addressColumn:
        return textData(bookmark.address, role);
    default:
        return textData(bookmark.note, role);
    }
}

QVariant BookmarkModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    switch (section) {
    case colourColumn:
        return tr("Colour");
    case addressColumn:
        return tr("Address");
    default:
        return tr("Note");
    }
}

Qt::ItemFlags BookmarkModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags usual = QAbstractTableModel::flags(index);
    return index.isValid() ? usual | Qt::ItemIsDragEnabled : usual;
}

QStringList BookmarkModel::mimeTypes() const {
    return {QStringLiteral("text/html"), QStringLiteral("text/plain")};
}

QMimeData* BookmarkModel::mimeData(const QModelIndexList& indexes) const {
    std::set<int> rows;
    for (const QModelIndex& index : indexes)
        rows.insert(index.row());
    QString html;
    QString text;
    for (const int row : rows) {
        const QString address = toQString(GetRow(row).address);
        const QString note = toQString(GetRow(row).note).left(longestShown).trimmed();
        html += QStringLiteral("<a href=\"%1\">%2</a><br>\n")
                    .arg(address.toHtmlEscaped(), (note.isEmpty() ? address : note).toHtmlEscaped());
        text += address + QLatin1Char('\n');
    }
    auto* const data = new QMimeData;
    data->setHtml(html);
    data->setText(text);
    return data;
}

bool BookmarkModel::removeRows(int row, int count, const QModelIndex& parent) {
    if (parent.isValid() || row < 0 || count < 1 || row + count > bookmarkCount())
        return false;
    beginRemoveRows({}, row, row + count - 1);
    const auto first = m_list.bookmarks.begin() + row;
    m_list.bookmarks.erase(first, first + count);
    endRemoveRows();
    return true;
}

} // namespace wendmark
