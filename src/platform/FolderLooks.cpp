#include "platform/FolderLooks.h"

#include "platform/Strings.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace wendmark {

/// What the window and the thread share. Everything is guarded by the mutex.
struct FolderLooks::Queue {
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<QString> folders;
    FolderLooks* owner = nullptr; ///< Null when nobody wants to know any more.
};

FolderLooks::FolderLooks(QObject* parent) : QObject(parent) {
    connect(this, &FolderLooks::found, this, &FolderLooks::take, Qt::QueuedConnection);
}

FolderLooks::~FolderLooks() {
    if (!m_queue)
        return;
    const std::lock_guard lock(m_queue->mutex);
    m_queue->owner = nullptr;
    m_queue->changed.notify_one();
}

std::optional<TourLook> FolderLooks::at(const QString& folder) {
    const auto known = m_known.constFind(folder);
    if (known != m_known.constEnd())
        return *known;
    if (m_asked.contains(folder))
        return std::nullopt;
    m_asked.insert(folder);
    if (!m_queue) {
        m_queue = std::make_shared<Queue>();
        m_queue->owner = this;
        // Nobody waits for its end: a disk that does not answer would hold up the window.
        std::thread([queue = m_queue] { work(queue); }).detach();
    }
    const std::lock_guard lock(m_queue->mutex);
    m_queue->folders.push_back(folder);
    if (m_queue->folders.size() > static_cast<std::size_t>(mostWaiting)) {
        m_asked.remove(m_queue->folders.front());
        m_queue->folders.pop_front();
    }
    m_queue->changed.notify_one();
    return std::nullopt;
}

void FolderLooks::forget() {
    m_known.clear();
    m_asked.clear(); // A look that is under way counts; it is hardly older.
}

void FolderLooks::work(const std::shared_ptr<Queue>& queue) {
    std::unique_lock lock(queue->mutex);
    for (;;) {
        queue->changed.wait(lock, [&] { return queue->owner == nullptr || !queue->folders.empty(); });
        if (queue->owner == nullptr)
            return;
        const QString folder = queue->folders.back();
        queue->folders.pop_back();
        lock.unlock();
        const TourLook look = lookAtTour(toUtf8(folder));
        lock.lock();
        if (queue->owner != nullptr)
            emit queue->owner->found(folder, look);
    }
}

void FolderLooks::take(const QString& folder, const TourLook& look) {
    m_asked.remove(folder);
    m_known.insert(folder, look);
    emit looked(folder);
}

} // namespace wendmark
