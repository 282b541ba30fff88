#include "probe/PageCheck.h"

#include "platform/BrowserView.h"
#include "platform/Strings.h"
#include "probe/FramePages.h"

#include <QDateTime>
#include <QPointer>
#include <QWebEngineProfile>
#include <algorithm>
#include <utility>

namespace wendmark {

PageCheck::PageCheck(QObject* parent) : PageCheck(Options(), parent) {}

PageCheck::PageCheck(Options options, QObject* parent)
    : QObject(parent), m_options(options), m_queue(options.limits) {
    m_next.setSingleShot(true);
    m_next.callOnTimeout(this, &PageCheck::startProbes);
    m_clock.start();
}

PageCheck::~PageCheck() {
    cancel();
}

Outcome PageCheck::add(const std::string& address) {
    const auto isSame = [&](const Page& page) { return page.address == address; };
    if (std::ranges::any_of(m_pages, isSame))
        return Outcome::success();
    if (!m_frames)
        m_frames = std::make_unique<FramePages>();
    if (!m_frames->state().ok()) {
        Outcome failure = m_frames->state();
        m_frames.reset(); // It may go better the next time.
        return failure;
    }
    if (!m_profile)
        m_profile.reset(makeBrowserProfile(nullptr));
    m_queue.add(m_pages.size(), address);
    m_pages.push_back({address});
    ++m_left;
    m_next.start(0);
    return Outcome::success();
}

void PageCheck::cancel() {
    m_left = 0;
    release();
}

void PageCheck::startProbes() {
    while (const auto page = m_queue.takeNext(m_clock.elapsed())) {
        Page& taken = m_pages.at(*page);
        const QUrl framing = m_frames->make(toQString(taken.address));
        if (framing.isEmpty()) {
            giveUp();
            return;
        }
        taken.probe = new PageProbe(*m_profile, *m_frames, taken.address, framing, m_options.patience, this);
        // Queued: what the engine is in the middle of must not be deleted.
        connect(
            taken.probe, &PageProbe::done, this,
            [this, number = *page, probe = QPointer(taken.probe)] {
                if (probe != nullptr)
                    take(number);
            },
            Qt::QueuedConnection);
    }
    if (const auto time = m_queue.nextTime(m_clock.elapsed()))
        m_next.start(static_cast<int>(*time - m_clock.elapsed()));
}

void PageCheck::giveUp() {
    const QString reason = toQString(m_frames->state().message());
    cancel();
    emit failed(reason);
}

void PageCheck::take(std::size_t number) {
    constexpr std::int64_t second = 1000;
    Page& page = m_pages.at(number);
    const PageFindings findings = page.probe->findings();
    delete std::exchange(page.probe, nullptr);
    const auto delay = retryAfter(findings.answers, QDateTime::currentSecsSinceEpoch());
    if (delay && *delay * second <= m_options.longestDelay && !std::exchange(page.wasPostponed, true)) {
        m_queue.postpone(number, m_clock.elapsed() + *delay * second);
        startProbes();
        return;
    }
    m_queue.end(number);
    --m_left;
    if (m_left > 0)
        startProbes();
    else
        release();
    const bool wasLast = m_left == 0;
    emit found(findings);
    if (wasLast && m_left == 0)
        emit ended();
}

/// The engine's processes end with its pages.
void PageCheck::release() {
    m_next.stop();
    for (Page& page : m_pages)
        delete page.probe;
    m_pages.clear();
    m_queue = PageQueue(m_options.limits);
    m_profile.reset();
    m_frames.reset();
}

} // namespace wendmark
