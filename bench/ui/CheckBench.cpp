#include "CheckBench.h"

#include "ProcessMemory.h"
#include "ui/check/StopCheck.h"
#include "ui/main/frmMain.h"
#include "ui/support/UiFixture.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <vector>

namespace wendmark::bench {

namespace {

constexpr int stops = 100;
constexpr int delay = 1000;       // Milliseconds before a server answers.
constexpr int lookAtMemory = 250; // Milliseconds.
constexpr int patience = 300'000; // Milliseconds.
constexpr double aimSeconds = 8;
constexpr double aimMegabytes = 600;

/// A hundred servers, each at an address of its own of this computer.
class Servers final {
public:
    Servers() {
        for (int n = 1; n <= stops; ++n) {
            auto server = std::make_unique<QTcpServer>();
            if (!server->listen(QHostAddress(QStringLiteral("127.0.1.%1").arg(n))))
                throw std::runtime_error("no port is to be had");
            QObject::connect(server.get(), &QTcpServer::newConnection, server.get(),
                             [&one = *server] { greet(one); });
            m_servers.push_back(std::move(server));
        }
    }

    /// Of server `n`, from 1.
    std::string address(int n) const {
        const QTcpServer& server = *m_servers.at(static_cast<std::size_t>(n - 1));
        return "http://127.0.1." + std::to_string(n) + ":" + std::to_string(server.serverPort()) + "/";
    }

private:
    static void greet(QTcpServer& server) {
        QTcpSocket* const socket = server.nextPendingConnection();
        QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [socket] {
            if (!socket->readAll().contains("\r\n\r\n"))
                return;
            QTimer::singleShot(delay, socket, [socket] { answer(*socket); });
        });
    }

    static void answer(QTcpSocket& socket) {
        static const QByteArray page =
            "<!DOCTYPE html><title>Page</title>" + QByteArray("<p>Words of a page.\n").repeated(1000);
        socket.write("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nConnection: close\r\nContent-Length: " +
                     QByteArray::number(page.size()) + "\r\n\r\n" + page);
        socket.disconnectFromHost();
    }

    std::vector<std::unique_ptr<QTcpServer>> m_servers;
};

struct Figures {
    double seconds;
    double megabytes;
};

Figures measure(const Servers& servers) {
    test::UiFixture program;
    frmMain window(program.parts());
    window.load(program.makeTour(QStringLiteral("walk"), stops));
    window.show();
    for (int n = 1; n <= stops; ++n)
        program.model.stops.at(n).stopURL = servers.address(n);
    constexpr int settlingTime = 3000;
    test::waitUntil([] { return false; }, settlingTime);
    const double idle = memoryOf(QCoreApplication::applicationPid());
    double most = idle;
    QTimer looks;
    looks.callOnTimeout([&] { most = std::max(most, memoryOf(QCoreApplication::applicationPid())); });
    looks.start(lookAtMemory);
    QElapsedTimer clock;
    clock.start();
    if (!program.check.checkAll().ok() ||
        !test::waitUntil([&] { return !program.check.isRunning(); }, patience))
        throw std::runtime_error("the check does not end");
    const double seconds = static_cast<double>(clock.elapsed()) / 1000;
    for (const StopCheck::Row& row : program.check.rows()) {
        if (row.verdict.verdict != Verdict::insecure && row.verdict.verdict != Verdict::plays)
            throw std::runtime_error("stop " + std::to_string(row.stop.stop) + ": " + row.verdict.why);
    }
    return {seconds, most - idle};
}

void print(const char* name, std::vector<double> values, double aim, const char* unit) {
    std::ranges::sort(values);
    std::printf("%s: median %.1f %s, %.1f to %.1f in %zu runs; aim at most %.0f\n", name,
                values.at(values.size() / 2), unit, values.front(), values.back(), values.size(), aim);
}

} // namespace

void runCheckBench(int runs) {
    const Servers servers;
    std::vector<double> seconds;
    std::vector<double> megabytes;
    for (int run = 0; run < runs; ++run) {
        const Figures figures = measure(servers);
        seconds.push_back(figures.seconds);
        megabytes.push_back(figures.megabytes);
    }
    std::printf("100 stops on 100 servers that answer after a second\n");
    print("  time", seconds, aimSeconds, "s");
    print("  memory above the idle program", megabytes, aimMegabytes, "MB");
}

} // namespace wendmark::bench
