#include "check_tour/EndingSignals.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace wendmark::cli {

namespace {

constexpr std::array<int, 3> ending = {SIGHUP, SIGINT, SIGTERM};

// A handler of signals is given nothing else.
std::array<int, 2> pipeEnds = {-1, -1};

/// Does what may be done at any moment of the program.
void note(int signal) {
    const auto byte = static_cast<unsigned char>(signal);
    static_cast<void>(write(pipeEnds[1], &byte, 1) == 1);
}

void handleWith(void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = static_cast<int>(SA_RESETHAND | SA_RESTART);
    for (const int signal : ending)
        sigaction(signal, &action, nullptr);
}

} // namespace

int EndingSignals::makePipe() {
    return pipe2(pipeEnds.data(), O_CLOEXEC | O_NONBLOCK) == 0 ? pipeEnds[0] : -1;
}

EndingSignals::EndingSignals() : m_notifier(makePipe(), QSocketNotifier::Read) {
    if (pipeEnds[0] < 0)
        return; // They end the program as ever.
    connect(&m_notifier, &QSocketNotifier::activated, this, [this] {
        unsigned char signal = 0;
        if (read(pipeEnds[0], &signal, 1) == 1)
            emit came(signal);
    });
    handleWith(note);
}

EndingSignals::~EndingSignals() {
    if (pipeEnds[0] < 0)
        return;
    handleWith(SIG_DFL);
    m_notifier.setEnabled(false);
    for (int& end : pipeEnds) {
        close(end);
        end = -1;
    }
}

} // namespace wendmark::cli
