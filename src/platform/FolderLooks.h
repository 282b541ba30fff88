#pragma once

#include "model/TourLook.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <memory>
#include <optional>

namespace wendmark {

/// Looks at folders in the background, so that a slow disk keeps no window from answering, and remembers what
/// it has seen. Of the folders that wait, the one asked for last comes first; when too many wait, the oldest
/// are forgotten, as those of a list that was scrolled past are.
class FolderLooks final : public QObject {
    Q_OBJECT

public:
    static constexpr qsizetype mostWaiting = 200;

    explicit FolderLooks(QObject* parent = nullptr);
    /// Waits for nothing, whatever the disk does.
    ~FolderLooks() override;
    Q_DISABLE_COPY_MOVE(FolderLooks)

    /// What is known of a folder. Nothing: it is looked at now, unless it comes to be forgotten, and
    /// looked() follows.
    std::optional<TourLook> at(const QString& folder);

    /// Everything is to be looked at anew.
    void forget();

signals:
    void looked(const QString& folder);

    /// From the thread to this.
    void found(const QString& folder, const wendmark::TourLook& look);

private:
    struct Queue;

    static void work(const std::shared_ptr<Queue>& queue);
    void take(const QString& folder, const TourLook& look);

    std::shared_ptr<Queue> m_queue; ///< Shared with the thread, which may outlive this.
    QHash<QString, TourLook> m_known;
    QSet<QString> m_asked;
};

} // namespace wendmark
