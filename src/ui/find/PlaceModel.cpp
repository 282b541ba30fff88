#include "ui/find/PlaceModel.h"

#include "model/HtmlText.h"
#include "model/TourModel.h"
#include "platform/Strings.h"

#include <QPoint>
#include <algorithm>
#include <array>
#include <iterator>
#include <tuple>

namespace wendmark {

namespace {

constexpr qsizetype longestTitle = 200; // UTF-16 units.

QString nameOf(StopPart part) {
    switch (part) {
    case StopPart::title:
        return PlaceModel::tr("Title");
    case StopPart::words:
        return PlaceModel::tr("Words");
    case StopPart::instruction:
        return PlaceModel::tr("Instruction");
    case StopPart::address:
        break;
    }
    return PlaceModel::tr("Address");
}

} // namespace

void PlaceModel::show(const TourModel& tour, const std::vector<FoundPlace>& places) {
    std::vector<Row> now;
    now.reserve(places.size());
    for (const FoundPlace& place : places) {
        const bool sameStop = !now.empty() && now.back().place.stop == place.stop;
        now.push_back(
            {place, sameStop
                        ? now.back().title
                        : toQString(visibleText(tour.stops.at(place.stop).stopTitle)).left(longestTitle)});
    }
    const auto [firstOld, firstNew] = std::mismatch(m_rows.begin(), m_rows.end(), now.begin(), now.end());
    const auto lastOld = std::mismatch(m_rows.rbegin(), std::make_reverse_iterator(firstOld), now.rbegin(),
                                       std::make_reverse_iterator(firstNew))
                             .first.base();
    const auto first = static_cast<int>(firstOld - m_rows.begin());
    const auto gone = static_cast<int>(lastOld - firstOld);
    const auto come = static_cast<int>(now.size()) - static_cast<int>(m_rows.size()) + gone;
    if (gone > 0) {
        beginRemoveRows({}, first, first + gone - 1);
        m_rows.erase(firstOld, lastOld);
        endRemoveRows();
    }
    if (come > 0) {
        beginInsertRows({}, first, first + come - 1);
        m_rows = std::move(now);
        endInsertRows();
    }
}

void PlaceModel::clear() {
    beginResetModel();
    m_rows.clear();
    endResetModel();
}

int PlaceModel::rowFrom(std::int16_t stop, StopPart part, std::size_t begin) const {
    const auto wanted = std::tuple(stop, part, begin);
    const auto row = std::find_if(m_rows.begin(), m_rows.end(), [&](const Row& one) {
        return std::tuple(one.place.stop, one.place.part, one.place.stored.begin) >= wanted;
    });
    return static_cast<int>(row - m_rows.begin());
}

int PlaceModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int PlaceModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : columnCountOfAll;
}

QString PlaceModel::text(const Row& row, int column) {
    const FoundPlace& place = row.place;
    switch (column) {
    case stopColumn:
        return QString::number(place.stop);
    case titleColumn:
        return row.title;
    case partColumn:
        return nameOf(place.part);
    default:
        return toQString(place.before) + toQString(place.words) + toQString(place.behind);
    }
}

QVariant PlaceModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    if (role == wordsRole && index.column() == textColumn) {
        const FoundPlace& place = placeAt(index.row());
        return QPoint(static_cast<int>(toQString(place.before).size()),
                      static_cast<int>(toQString(place.words).size()));
    }
    if (role == Qt::TextAlignmentRole && index.column() == stopColumn)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return {};
    return text(m_rows.at(static_cast<std::size_t>(index.row())), index.column());
}

QVariant PlaceModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    const std::array<QString, columnCountOfAll> captions = {tr("Stop"), tr("Title"), tr("Where"), tr("Text")};
    return captions.at(static_cast<std::size_t>(section));
}

} // namespace wendmark
