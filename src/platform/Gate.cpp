#include "platform/Gate.h"

#include <QApplication>
#include <QScopedValueRollback>
#include <QTimer>
#include <string_view>
#include <utility>

namespace wendmark {

namespace {

/// Milliseconds without an event after which a wait looks at its clock again. Sleeping between rounds of
/// events instead would starve the browser engine, whose work comes in thousands of small events.
constexpr int longestRest = 5;

} // namespace

Gate::Gate(QObject* parent) : QObject(parent) {
    connect(this, &Gate::turnEnded, this, &Gate::runNext, Qt::QueuedConnection);
}

void Gate::run(QObject& owner, std::function<void()> command, Kind kind) {
    if (!m_shutFor.isNull())
        return;
    const bool mayRun = isOpen() || (kind == Kind::look && isLookedThrough());
    if (mayRun)
        execute(command);
    else
        m_waiting.push_back({&owner, std::move(command), nullptr});
}

void Gate::runOnce(QObject& owner, const char* name, std::function<void()> command) {
    if (!m_shutFor.isNull())
        return;
    if (isOpen()) {
        execute(command);
        return;
    }
    const bool isLast = !m_waiting.empty() && m_waiting.back().name != nullptr &&
                        std::string_view(m_waiting.back().name) == name;
    if (!isLast)
        m_waiting.push_back({&owner, std::move(command), name});
}

void Gate::shut(QObject& ending) {
    m_shutFor = &ending;
    m_waiting.clear();
    emit closedForGood();
}

void Gate::execute(const std::function<void()>& command) {
    {
        const QScopedValueRollback running(m_running, m_running + 1);
        command();
    }
    if (m_running == 0 && !m_waiting.empty())
        emit turnEnded();
}

void Gate::runNext() {
    if (m_running > 0 || m_waiting.empty())
        return;
    const Waiting next = std::move(m_waiting.front());
    m_waiting.pop_front();
    // Without an owner it only passes the turn on.
    execute(next.owner.isNull() ? [] {} : next.command);
}

void Gate::handleEvents(bool looks) {
    int& waits = looks ? m_openWaits : m_closedWaits;
    const QScopedValueRollback waiting(waits, waits + 1);
    QTimer heartbeat;
    heartbeat.start(longestRest);
    QApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void Gate::breathe() {
    if (m_closedWaits > 0)
        return;
    const QScopedValueRollback waiting(m_closedWaits, m_closedWaits + 1);
    const QScopedValueRollback breathing(m_breathing, true);
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

} // namespace wendmark
