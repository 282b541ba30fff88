#include "ui/dialogs/TourFolderModel.h"

#include "platform/Icons.h"
#include "platform/Strings.h"
#include "ui/dialogs/DialogParts.h"

namespace wendmark {

namespace {

constexpr qsizetype longestTitle = 200; // UTF-16 units.

QString wordsFor(const QString& name, const QString& title) {
    return title.isEmpty() ? TourFolderModel::tr("%1, a tour").arg(name)
                           : TourFolderModel::tr("%1, the tour \"%2\"").arg(name, title);
}

} // namespace

TourFolderModel::TourFolderModel(QObject* parent)
    : QFileSystemModel(parent), m_tourIcon(themedIcon(QStringLiteral("tourFolder"))) {
    setFilter(QDir::AllDirs | QDir::NoDotAndDotDot);
    connect(&m_looks, &FolderLooks::looked, this, &TourFolderModel::showLook);
}

void TourFolderModel::leaveUnmarked(const QStringList& folders) {
    for (const QString& folder : folders)
        m_unmarked.insert(QDir::cleanPath(folder));
}

QVariant TourFolderModel::data(const QModelIndex& index, int role) const {
    const bool isOurs = role == Qt::DecorationRole || role == Qt::AccessibleTextRole ||
                        role == Qt::ToolTipRole || role == titleRole;
    if (!isOurs || !index.isValid() || index.column() != 0)
        return QFileSystemModel::data(index, role);
    QVariant title = titleOf(index);
    if (role == titleRole)
        return title;
    if (!title.isValid())
        return role == Qt::ToolTipRole ? QVariant() : QFileSystemModel::data(index, role);
    if (role == Qt::DecorationRole)
        return m_tourIcon;
    const QString words = wordsFor(onOneLine(fileName(index)), title.toString());
    return role == Qt::ToolTipRole ? QStringLiteral("<p>%1</p>").arg(plain(words)) : words;
}

QVariant TourFolderModel::titleOf(const QModelIndex& index) const {
    const QString folder = filePath(index);
    if (m_unmarked.contains(folder))
        return {};
    const std::optional<TourLook> look = m_looks.at(folder);
    if (!look || !look->isTour)
        return {};
    return onOneLine(shortened(beginningOf(look->title, longestTitle + 1), longestTitle));
}

void TourFolderModel::showLook(const QString& folder) {
    const QModelIndex changed = index(folder);
    if (changed.isValid() && m_looks.at(folder).value_or(TourLook()).isTour)
        emit dataChanged(changed, changed);
}

} // namespace wendmark
