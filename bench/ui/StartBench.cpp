#include "StartBench.h"

#include "Comparison.h"
#include "Environment.h"
#include "platform/Strings.h"
#include "support/ScratchFolder.h"

#include <QElapsedTimer>
#include <QProcess>
#include <filesystem>
#include <stdexcept>

namespace wendmark::bench {

namespace {

constexpr int patience = 60000; // Milliseconds.
constexpr double aim = 1.25;

/// Milliseconds from the start of the process to its "shown".
double timeStart(const QString& program, const QProcessEnvironment& environment) {
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setStandardErrorFile(QProcess::nullDevice());
    QElapsedTimer timer;
    timer.start();
    process.start(program, {});
    QByteArray output;
    while (!output.contains("shown")) {
        if (!process.waitForReadyRead(patience))
            throw std::runtime_error(toUtf8(program) + " shows nothing");
        output += process.readAllStandardOutput();
    }
    const double time = static_cast<double>(timer.nsecsElapsed()) / 1e6;
    process.kill();
    process.waitForFinished();
    return time;
}

} // namespace

void runStartBench(int runs) {
    const test::ScratchFolder folder;
    std::filesystem::copy(BENCH_APPLICATION_FOLDER, folder / "Wendmark",
                          std::filesystem::copy_options::recursive);
    const QString program = toQString(folder / "Wendmark/wendmark");
    const QProcessEnvironment environment = environmentIn(toQString(folder.path()));
    Comparison result{"start until the wizard's first page is on screen",
                      "start of a bare window until its empty page is loaded",
                      aim,
                      {},
                      {}};
    timeStart(program, environment);
    timeStart(QStringLiteral(BENCH_BARE_WINDOW), environment);
    for (int run = 0; run < runs; ++run) {
        result.ours.push_back(timeStart(program, environment));
        result.baselines.push_back(timeStart(QStringLiteral(BENCH_BARE_WINDOW), environment));
    }
    print(result);
}

} // namespace wendmark::bench
