#pragma once

#include "platform/FolderLooks.h"
#include "platform/RecentTours.h"

#include <QTreeWidget>

namespace wendmark {

/// The last tours with their titles, folders and times. None is selected until the author selects one. Those
/// whose folders are gone are disabled as soon as that is known.
class RecentTourList final : public QTreeWidget {
    Q_OBJECT

public:
    explicit RecentTourList(const QList<RecentTour>& tours, QWidget* parent = nullptr);

    /// The folder of the selected tour; empty when there is none.
    QString selectedFolder() const;

    QSize sizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    int widthFor(int letters) const;
    void addTour(const RecentTour& tour);
    void showLook(const QString& folder);

    FolderLooks m_looks;
};

} // namespace wendmark
