#pragma once

#include "base/Outcome.h"
#include "check/PageQueue.h"
#include "probe/PageProbe.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <memory>
#include <string>
#include <vector>

class QWebEngineProfile;

namespace wendmark {

class FramePages;

/// Finds out about pages of the web, several at once, as a visitor who has been nowhere before. Servers that
/// ask for it are left alone for a while. Nothing is waited for: events do the work.
class PageCheck final : public QObject {
    Q_OBJECT

public:
    struct Options {
        PageQueue::Limits limits;
        PageProbe::Patience patience;
        int longestDelay = 60'000; ///< Milliseconds that a server may ask to be left alone.
    };

    explicit PageCheck(QObject* parent = nullptr);
    PageCheck(Options options, QObject* parent);
    ~PageCheck() override;

    /// Asks for the page at this address, too, which is one of the web; one that is asked for already is so
    /// only once. A failure: the page cannot be framed.
    Outcome add(const std::string& address);

    /// Forgets all pages that have not been found out about.
    void cancel();

    bool isRunning() const { return m_left > 0; }

signals:
    void found(const wendmark::PageFindings& findings);

    /// There is nothing more to find out about.
    void ended();

    /// No page can be framed any more; the rest is forgotten.
    void failed(const QString& reason);

private:
    struct Page {
        std::string address;
        PageProbe* probe = nullptr; ///< While the page is asked for.
        bool wasPostponed = false;
    };

    void startProbes();
    void giveUp();
    void take(std::size_t number);
    void waitForServers();
    void release();

    Options m_options;
    std::unique_ptr<QWebEngineProfile> m_profile; ///< Both while pages are left.
    std::unique_ptr<FramePages> m_frames;
    PageQueue m_queue;
    std::vector<Page> m_pages; ///< By the queue's numbers.
    std::size_t m_left = 0;    ///< Pages that have not been found out about.
    QElapsedTimer m_clock;
    QTimer m_next; ///< Runs out when pages may be asked for again.
};

} // namespace wendmark
