#pragma once

#include <string>

namespace wendmark {

/// What the core needs from whoever runs it: the window program shows and waits for real, the command-line
/// companion prints and does not wait.
class Desktop {
public:
    enum class Pointer { standard = 0, hourglass = 11 };

    virtual ~Desktop() = default;

    /// Shows an error of a script or of a tour file, ready to read, and returns once it was acknowledged.
    virtual void showLineError(const std::string& text) = 0;

    /// Handles the window events that are waiting, then returns.
    virtual void processPendingEvents() = 0;

    /// Called between the steps of what may take long. Lets the windows repaint and answer the system when
    /// they have not done so for a while; the author's keys and clicks wait. Nothing to do without windows.
    virtual void stayResponsive() {}

    /// Seconds since midnight. A clock that runs past midnight goes on counting, or pauses end a day late.
    virtual float timeOfDay() = 0;

    /// Points the main window's browser at a file path or address.
    virtual void navigateMainBrowser(const std::string& address) = 0;

    virtual void setBusyPointer(Pointer pointer) = 0;
};

/// Shows the hourglass for as long as it lives.
class BusyPointer final {
public:
    explicit BusyPointer(Desktop& desktop) : m_desktop(desktop) {
        m_desktop.setBusyPointer(Desktop::Pointer::hourglass);
    }
    ~BusyPointer() { m_desktop.setBusyPointer(Desktop::Pointer::standard); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;

private:
    Desktop& m_desktop;
};

} // namespace wendmark
