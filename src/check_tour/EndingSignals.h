#pragma once

#include <QObject>
#include <QSocketNotifier>

namespace wendmark::cli {

/// Takes the signals that ask the program to end (hang-up, interrupt, terminate), so that it clears away what
/// it has made. A second one of the same kind ends it at once. One object at a time, in a program with
/// events.
class EndingSignals final : public QObject {
    Q_OBJECT

public:
    /// Signals that come from now on, also before events are handled, are told.
    EndingSignals();
    ~EndingSignals() override;

signals:
    void came(int signal);

private:
    static int makePipe();

    QSocketNotifier m_notifier;
};

} // namespace wendmark::cli
