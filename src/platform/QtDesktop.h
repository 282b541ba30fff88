#pragma once

#include "model/Desktop.h"

#include <QElapsedTimer>
#include <QObject>
#include <functional>

namespace wendmark {

/// Seconds since midnight, going on past the next one.
using Clock = std::function<float()>;

/// A clock that starts with the system's time of day and then counts on.
Clock realClock();

/// The desktop of the window program.
class QtDesktop final : public QObject, public Desktop {
    Q_OBJECT

public:
    explicit QtDesktop(Clock clock = realClock());

    void showLineError(const std::string& text) override;
    void processPendingEvents() override;
    void stayResponsive() override;
    float timeOfDay() override { return m_clock(); }
    void navigateMainBrowser(const std::string& address) override;
    void setBusyPointer(Pointer pointer) override;

    /// Whether events are being handled between the steps of a command, which has left the tour half done:
    /// whatever reads or changes the tour must wait.
    bool isBetweenSteps() const { return m_betweenSteps; }

    /// Sounds the system's beep: the command cannot be done here.
    void beep();

signals:
    void mainBrowserNavigationRequested(const QString& address);
    void beeped();

protected:
    void customEvent(QEvent* event) override;

private:
    Clock m_clock;
    bool m_hourglass = false;
    bool m_betweenSteps = false;
    QElapsedTimer m_sinceEvents; ///< Runs from the first step after events were handled.
};

} // namespace wendmark
