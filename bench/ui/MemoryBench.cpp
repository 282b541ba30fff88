#include "MemoryBench.h"

#include "Comparison.h"
#include "Environment.h"
#include "ProcessMemory.h"
#include "platform/Settings.h"
#include "platform/Strings.h"
#include "platform/Twips.h"
#include "support/ScratchFolder.h"

#include <QProcess>
#include <QThread>
#include <cmath>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace wendmark::bench {

namespace {

namespace fs = std::filesystem;

constexpr double aim = 1.1;
constexpr int windowWidth = 1366; // Pixels.
constexpr int windowHeight = 768;
constexpr int patience = 120000;                 // Milliseconds.
constexpr unsigned long pauseBetweenLooks = 500; // Milliseconds.
constexpr int looksOfRest = 6;
constexpr int mostLooks = 120;
constexpr double mostOfRest = 0.002; // By which memory changes from look to look when nothing goes on.

/// Waits until the memory has come to rest: pages are drawn and what was needed for that is given back.
double memoryAtRest(qint64 process) {
    double last = 0;
    int restingLooks = 0;
    for (int look = 0; look < mostLooks && restingLooks < looksOfRest; ++look) {
        QThread::msleep(pauseBetweenLooks);
        const double now = memoryOf(process);
        restingLooks = std::abs(now - last) < mostOfRest * now ? restingLooks + 1 : 0;
        last = now;
    }
    return last;
}

/// Runs a program until it shows its page and its memory is at rest.
double measure(const QString& program, const QStringList& arguments, const QProcessEnvironment& environment) {
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(program, arguments);
    for (QByteArray output; !output.contains("loaded"); output += process.readAllStandardOutput()) {
        if (!process.waitForReadyRead(patience))
            throw std::runtime_error(toUtf8(program) + " shows nothing");
    }
    const double memory = memoryAtRest(process.processId());
    const bool lives = process.state() == QProcess::Running;
    process.kill();
    process.waitForFinished();
    if (!lives)
        throw std::runtime_error(toUtf8(program) + " has ended by itself");
    return memory;
}

void setWindowSize(const QString& home) {
    SettingsStore settings(home + QStringLiteral("/.config/Wendmark/Wendmark.conf"));
    settings.store(mainSettings::width, twipsFromPixels(windowWidth));
    settings.store(mainSettings::height, twipsFromPixels(windowHeight));
}

} // namespace

void runMemoryBench(int runs) {
    const test::ScratchFolder folder;
    const std::string application = folder / "Wendmark";
    fs::copy(BENCH_APPLICATION_FOLDER, application, fs::copy_options::recursive);
    const QString home = toQString(folder.path());
    setWindowSize(home);
    const QProcessEnvironment environment = environmentIn(home);
    const QString program = toQString(application + "/wendmark");
    const QString sample = toQString(application + "/MyTours/Sample");
    const QStringList bareArguments = {toQString(folder / "shown/fv1.htm"), QString::number(windowWidth),
                                       QString::number(windowHeight)};
    Comparison result{"the program with the sample tour open, 1366x768",
                      "a bare window with the same frameset, 1366x768",
                      aim,
                      {},
                      {},
                      "MB"};
    for (int run = 0; run < runs; ++run) {
        result.ours.push_back(measure(program, {sample}, environment));
        // The pages that the program has left in its working copy: the very ones that it has shown.
        fs::remove_all(folder / "shown");
        fs::copy(application + "/NewTour", folder / "shown");
        fs::remove_all(folder / ".local/state/wendmark/recovery"); // Nothing is offered to the next run.
        result.baselines.push_back(measure(QStringLiteral(BENCH_BARE_WINDOW), bareArguments, environment));
    }
    print(result);
}

} // namespace wendmark::bench
