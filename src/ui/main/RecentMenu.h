#pragma once

#include "platform/FolderLooks.h"
#include "platform/RecentTours.h"

#include <QHash>
#include <QMenu>

namespace wendmark {

/// The menu of the last tours. It is filled each time it is about to be shown; a tour whose folder is gone is
/// disabled as soon as that is known.
class RecentMenu final : public QMenu {
    Q_OBJECT

public:
    /// The settings must outlive it.
    explicit RecentMenu(SettingsStore& settings, QWidget* parent);

signals:
    void tourChosen(const QString& folder);

private:
    void fill();
    void addTour(const RecentTour& tour, qsizetype number);
    void showLook(const QString& folder);

    RecentTours m_tours;
    FolderLooks m_looks;
    QHash<QString, QAction*> m_items; ///< By folder.
};

} // namespace wendmark
