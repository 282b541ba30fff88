#pragma once

#include "platform/FolderLooks.h"

#include <QFileSystemModel>
#include <QIcon>

namespace wendmark {

/// The folders of the disk. Those that are tours are marked, by an icon and in words for screen readers, and
/// have their titles. What a folder is, is found out in the background when a view asks for it: of a folder
/// with ten thousand others, only those on screen are looked at.
class TourFolderModel final : public QFileSystemModel {
    Q_OBJECT

public:
    /// Role of a tour's title: a text on one line, perhaps empty; none for other folders, and for those that
    /// are still to be looked at.
    static constexpr int titleRole = Qt::UserRole + 100;

    explicit TourFolderModel(QObject* parent = nullptr);

    /// These folders are no tours, whatever is in them.
    void leaveUnmarked(const QStringList& folders);

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    QVariant titleOf(const QModelIndex& index) const;
    void showLook(const QString& folder);

    mutable FolderLooks m_looks; ///< Views ask by reading.
    QSet<QString> m_unmarked;
    QIcon m_tourIcon;
};

} // namespace wendmark
