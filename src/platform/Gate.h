#pragma once

#include <QObject>
#include <QPointer>
#include <deque>
#include <functional>

namespace wendmark {

/// The one gate through which the author's commands go, and the only place where window events are handled
/// while a command waits. Commands never run inside one another: what is given while one is under way waits
/// in its turn, and so does a request to close a window.
///
/// Some waits are long and change nothing, as the frame test's does; commands that only look at the tour run
/// inside them.
class Gate final : public QObject {
    Q_OBJECT

public:
    enum class Kind {
        change, ///< Changes the tour, saves it, opens another, or closes a window.
        look    ///< Looks at the tour, or at a page; runs inside a wait that changes nothing.
    };

    explicit Gate(QObject* parent = nullptr);

    /// Runs the command now or, while another one is under way, as soon as everything given before it has
    /// ended; not at all when its owner is gone by then.
    void run(QObject& owner, std::function<void()> command, Kind kind = Kind::change);

    /// Same for a command that does the same however often it is given in a row, such as Save: given while it
    /// is the last that waits, it is not given again. `name` tells such commands apart.
    void runOnce(QObject& owner, const char* name, std::function<void()> command);

    /// The program ends: what waits or comes from now on is not run, for as long as `ending` is there.
    void shut(QObject& ending);

    /// No command is under way, and none waits.
    bool isOpen() const { return m_running == 0 && m_waiting.empty(); }

    /// A command handles events in its middle: the tour may be half done, and whatever reads or changes it on
    /// its own account must wait.
    bool isClosed() const { return m_closedWaits > 0; }

    /// A command waits for something that changes nothing.
    bool isLookedThrough() const { return m_openWaits > 0 && m_closedWaits == 0; }

    /// Handles window events once, resting a little when there are none; `looks`: commands that only look may
    /// run meanwhile.
    void handleEvents(bool looks = false);

    /// Lets windows repaint and answer the system, between the steps of a command; keys and clicks wait.
    void breathe();

    /// The windows repaint only.
    bool isBreathing() const { return m_breathing; }

    /// Asks a command that is looked through to give up.
    void abandon() { emit abandonRequested(); }

    /// Save As is under way.
    bool saveInProgress() const { return m_saveInProgress; }
    void setSaveInProgress(bool inProgress) { m_saveInProgress = inProgress; }

signals:
    void abandonRequested();
    void closedForGood(); ///< See shut().
    void turnEnded();

private:
    struct Waiting {
        QPointer<QObject> owner;
        std::function<void()> command;
        const char* name = nullptr;
    };

    void execute(const std::function<void()>& command);
    void runNext();

    std::deque<Waiting> m_waiting;
    int m_running = 0; ///< Commands under way, those that look included.
    int m_closedWaits = 0;
    int m_openWaits = 0;
    bool m_breathing = false;
    QPointer<QObject> m_shutFor; ///< None while the gate takes commands.
    bool m_saveInProgress = false;
};

} // namespace wendmark
