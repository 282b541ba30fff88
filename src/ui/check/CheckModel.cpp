#include "ui/check/CheckModel.h"

#include "model/StopAddress.h"
#include "platform/Icons.h"
#include "platform/Strings.h"

#include <QIcon>
#include <algorithm>
#include <array>
#include <utility>

namespace wendmark {

namespace {

constexpr qsizetype longestShown = 500; // UTF-16 units.

QString shown(const std::string& text) {
    return toQString(text).left(longestShown);
}

QString verdictOf(const StopCheck::Row& row) {
    switch (row.state) {
    case StopCheck::State::unknown:
        return CheckModel::tr("Not checked");
    case StopCheck::State::asking:
        return CheckModel::tr("Checking...");
    case StopCheck::State::known:
        break;
    }
    if (!row.stop.missingParts.empty())
        return CheckModel::tr("Files missing");
    const QString words = toQString(wordsFor(row.verdict.verdict));
    return row.isLeft ? CheckModel::tr("%1, left").arg(words) : words;
}

/// Of a card.
QString aboutOriginal(const StopCheck::Row& row) {
    const QString host = shown(hostOf(row.stop.original));
    if (row.asksForOriginal)
        return CheckModel::tr("A card for a page of %1, which is being checked.").arg(host);
    if (!row.original)
        return CheckModel::tr("A card for a page of %1.").arg(host);
    return isShown(row.original->verdict)
               ? CheckModel::tr("A card, but the page of %1 would play.").arg(host)
               : CheckModel::tr("A card for a page of %1, which does not play: %2.")
                     .arg(host, toQString(wordsFor(row.original->verdict)).toLower());
}

QString whyOf(const StopCheck::Row& row) {
    if (row.state == StopCheck::State::known && !row.verdict.why.empty())
        return shown(row.verdict.why);
    if (!row.stop.original.empty())
        return aboutOriginal(row);
    return row.stop.sameAs > 0 ? CheckModel::tr("Same page as stop %1.").arg(row.stop.sameAs) : QString();
}

QIcon iconOf(const StopCheck::Row& row) {
    if (row.state != StopCheck::State::known)
        return {};
    if (!isShown(row.verdict.verdict) && !row.isLeft)
        return QIcon(QStringLiteral(":/icons/messageWarning.svg"));
    const bool plays = row.verdict.verdict == Verdict::plays && row.stop.missingParts.empty() &&
                       !(row.original && isShown(row.original->verdict));
    return themedIcon(plays ? QStringLiteral("siteYes") : QStringLiteral("stopRemark"));
}

} // namespace

void CheckModel::show(std::vector<StopCheck::Row> rows) {
    const auto was = static_cast<int>(m_rows.size());
    const auto is = static_cast<int>(rows.size());
    if (is > was)
        beginInsertRows({}, was, is - 1);
    else if (is < was)
        beginRemoveRows({}, is, was - 1);
    const std::vector<StopCheck::Row> before = std::exchange(m_rows, std::move(rows));
    if (is > was)
        endInsertRows();
    else if (is < was)
        endRemoveRows();
    for (int row = 0; row < std::min(was, is); ++row) {
        if (before.at(static_cast<std::size_t>(row)) != m_rows.at(static_cast<std::size_t>(row)))
            emit dataChanged(index(row, 0), index(row, columnCountOfAll - 1));
    }
}

int CheckModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int CheckModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : columnCountOfAll;
}

QString CheckModel::text(const StopCheck::Row& row, int column) {
    switch (column) {
    case stopColumn:
        return QString::number(row.stop.stop);
    case titleColumn:
        return shown(row.stop.title);
    case verdictColumn:
        return verdictOf(row);
    default:
        return whyOf(row);
    }
}

QVariant CheckModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const StopCheck::Row& row = m_rows.at(static_cast<std::size_t>(index.row()));
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return text(row, index.column());
    if (role == Qt::TextAlignmentRole && index.column() == stopColumn)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (role == Qt::DecorationRole && index.column() == verdictColumn)
        return iconOf(row);
    return {};
}

QVariant CheckModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    const std::array<QString, columnCountOfAll> captions = {tr("Stop"), tr("Title"), tr("Page"), tr("Why")};
    return captions.at(static_cast<std::size_t>(section));
}

QString describe(const StopCheck::Row& row) {
    QStringList sentences;
    if (row.state == StopCheck::State::known) {
        sentences.append(toQString(visitorsSee(row.verdict.verdict)));
        if (!row.verdict.why.empty())
            sentences.append(shown(row.verdict.why));
        if (!row.verdict.playsFor.empty()) {
            QStringList sites;
            for (const std::string& site : row.verdict.playsFor)
                sites.append(toQString(site));
            sentences.append(CheckModel::tr("It may be shown by: %1.")
                                 .arg(sites.join(QStringLiteral(", ")))
                                 .left(longestShown));
        }
    }
    if (!row.stop.original.empty())
        sentences.append(aboutOriginal(row) + QLatin1Char(' ') + shown(row.stop.original));
    if (row.isLeft)
        sentences.append(CheckModel::tr("You leave it as it is."));
    if (row.stop.sameAs > 0)
        sentences.append(CheckModel::tr("Stop %1 shows the same page.").arg(row.stop.sameAs));
    const QString address = shown(row.stop.address);
    return address + QLatin1Char('\n') + sentences.join(QLatin1Char(' '));
}

} // namespace wendmark
