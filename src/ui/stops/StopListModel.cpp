#include "ui/stops/StopListModel.h"

#include "commands/TourDocument.h"
#include "model/HtmlText.h"
#include "model/StopTransfer.h"
#include "platform/Icons.h"
#include "platform/Strings.h"
#include "ui/check/StopCheck.h"

#include <QMimeData>
#include <algorithm>
#include <array>
#include <utility>

namespace wendmark {

namespace {

constexpr int openingRows = 1;
constexpr qsizetype longestShown = 500; // UTF-16 units.

QString shown(const std::string& text) {
    return toQString(text).left(longestShown);
}

} // namespace

StopListModel::StopListModel(const TourDocument& document, const StopCheck& check, QObject* parent)
    : QAbstractTableModel(parent), m_document(document), m_check(check) {
    refresh();
}

void StopListModel::refresh() {
    std::vector<Row> now = rowsNow();
    const auto [firstOld, firstNew] = std::mismatch(m_stops.begin(), m_stops.end(), now.begin(), now.end());
    const auto same = static_cast<int>(firstOld - m_stops.begin());
    const auto was = static_cast<int>(m_stops.size());
    const auto is = static_cast<int>(now.size());
    const int both = std::min(was, is);
    // The rows keep their numbers, so what comes or goes does so at the end.
    if (is > was)
        beginInsertRows({}, was + openingRows, is);
    else if (is < was)
        beginRemoveRows({}, is + openingRows, was);
    m_stops = std::move(now);
    if (is > was)
        endInsertRows();
    else if (is < was)
        endRemoveRows();
    if (same < both)
        emit dataChanged(index(same + openingRows, 0), index(both, columnCountOfAll - 1));
    if (std::exchange(m_tourTitle, m_document.model().tourTitle) != m_document.model().tourTitle)
        emit dataChanged(index(0, titleColumn), index(0, titleColumn));
}

std::vector<StopListModel::Row> StopListModel::rowsNow() const {
    std::vector<Row> rows;
    for (StopLook& look : lookAtStops(m_document.model(), m_document.workspace()))
        rows.push_back({std::move(look), false, {}, {}});
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const std::string& address = m_document.model().stops.at(i + openingRows).stopURL;
        const std::optional<PageVerdict> verdict = m_check.verdictOn(address);
        rows[i].untested = !verdict && m_document.isUntested(address);
        if (verdict && verdict->verdict != Verdict::plays && !m_check.isLeft(address, *verdict)) {
            rows[i].found = toQString(wordsFor(verdict->verdict)).toLower();
            rows[i].why = toQString(verdict->why);
        }
    }
    return rows;
}

QMimeData* StopListModel::dataOf(const StopNumbers& stops) const {
    std::vector<Stop> taken;
    for (const std::int16_t stop : stops) {
        if (stop <= m_document.model().stops.held()) // The rows may be older than the tour.
            taken.push_back(m_document.model().stops.at(stop));
    }
    auto* const data = new QMimeData;
    data->setData(toQString(stopsMimeType), QByteArray::fromStdString(encodeStops(taken)));
    data->setData(QLatin1String(stopsFolderType),
                  QByteArray::fromStdString(m_document.workspace().folders().newTourPath));
    data->setHtml(toQString(stopsAsHtml(taken)));
    data->setText(toQString(stopsAsPlainText(taken)));
    return data;
}

int StopListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_stops.size()) + openingRows;
}

int StopListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : columnCountOfAll;
}

QString StopListModel::remarksOn(const Row& row) {
    QStringList remarks;
    if (row.look.noPage)
        remarks.append(tr("no page yet"));
    if (row.look.fileMissing)
        remarks.append(tr("file missing"));
    if (!row.found.isEmpty())
        remarks.append(row.found);
    if (row.untested)
        remarks.append(tr("not checked"));
    if (row.look.noWords)
        remarks.append(tr("no words"));
    return remarks.join(QStringLiteral(", "));
}

QString StopListModel::text(int row, int column) const {
    if (row == 0)
        return column == titleColumn ? tr("Opening page: %1").arg(shown(visibleText(m_tourTitle)))
                                     : QString();
    const Row& stop = m_stops.at(static_cast<std::size_t>(row - openingRows));
    switch (column) {
    case numberColumn:
        return QString::number(row);
    case titleColumn:
        return shown(stop.look.title);
    case pageColumn:
        return shown(stop.look.page);
    default:
        return remarksOn(stop);
    }
}

QString StopListModel::findingOf(const QModelIndex& index) const {
    const bool isRemark = index.row() >= openingRows && index.column() == remarkColumn;
    return isRemark ? m_stops.at(static_cast<std::size_t>(index.row() - openingRows)).why : QString();
}

QVariant StopListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const QString shownText = text(index.row(), index.column());
    if (role == Qt::ToolTipRole && !findingOf(index).isEmpty())
        return QString(shownText + QLatin1Char('\n') + findingOf(index));
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return shownText;
    if (role == Qt::TextAlignmentRole && index.column() == numberColumn)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (role == Qt::DecorationRole && index.column() == remarkColumn && !shownText.isEmpty())
        return themedIcon(QStringLiteral("stopRemark"));
    return {};
}

QVariant StopListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    const std::array<QString, columnCountOfAll> captions = {tr("No."), tr("Title"), tr("Page"),
                                                            tr("Remarks")};
    return captions.at(static_cast<std::size_t>(section));
}

Qt::ItemFlags StopListModel::flags(const QModelIndex& index) const {
    if (!index.isValid())
        return Qt::ItemIsDropEnabled; // Between the rows.
    const Qt::ItemFlags usual = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    return index.row() == 0 ? usual : usual | Qt::ItemIsDragEnabled;
}

QStringList StopListModel::mimeTypes() const {
    return {toQString(stopsMimeType), QStringLiteral("text/uri-list"), QStringLiteral("text/html"),
            QStringLiteral("text/plain")};
}

QMimeData* StopListModel::mimeData(const QModelIndexList& indexes) const {
    const StopNumbers stops = stopsOf(indexes);
    return stops.empty() ? nullptr : dataOf(stops);
}

bool StopListModel::dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int,
                                 const QModelIndex& parent) {
    if (action == Qt::IgnoreAction || data == nullptr)
        return false;
    const int before = row >= 0 ? row : parent.isValid() ? parent.row() + 1 : rowCount();
    emit dropped(*data, std::max(before - openingRows, 0));
    return false;
}

StopNumbers stopsOf(const QModelIndexList& indexes) {
    StopNumbers stops;
    for (const QModelIndex& index : indexes) {
        if (index.row() > 0)
            stops.push_back(static_cast<std::int16_t>(index.row()));
    }
    std::sort(stops.begin(), stops.end());
    stops.erase(std::unique(stops.begin(), stops.end()), stops.end());
    return stops;
}

} // namespace wendmark
