#pragma once

#include "model/Desktop.h"

#include <QObject>
#include <QUrl>
#include <functional>
#include <optional>

namespace wendmark {

/// Seconds since midnight, going on past the next one.
using Clock = std::function<float()>;

/// A clock that starts with the system's time of day and then counts on.
Clock realClock();

/// Milliseconds, counted from anywhere.
using StepClock = std::function<qint64()>;

/// A clock that counts the system's time from now on.
StepClock realStepClock();

class Gate;

/// The desktop of the window program.
class QtDesktop final : public QObject, public Desktop {
    Q_OBJECT

public:
    /// Every wait goes through the gate, which must outlive the desktop. `stepClock` tells how long a command
    /// has kept the windows waiting.
    explicit QtDesktop(Gate& gate, Clock clock = realClock(), StepClock stepClock = realStepClock());

    void showLineError(const std::string& text) override;
    void processPendingEvents() override;
    void stayResponsive() override;
    float timeOfDay() override { return m_clock(); }
    void navigateMainBrowser(const std::string& address) override;
    void setBusyPointer(Pointer pointer) override;

    /// Has the program open it that the desktop opens such things with: the browser, the file manager. False
    /// when there is none.
    static bool openOutside(const QUrl& address);

    /// Sounds the system's beep: the command cannot be done here.
    void beep();

signals:
    void mainBrowserNavigationRequested(const QString& address);
    void beeped();
    /// A command takes long, and the windows are about to get their turn.
    void lasting();

protected:
    void customEvent(QEvent* event) override;

private:
    Gate& m_gate;
    Clock m_clock;
    StepClock m_stepClock;
    bool m_hourglass = false;
    std::optional<qint64> m_firstStep; ///< When the first step after events were handled was.
};

} // namespace wendmark
