#include "CheckBench.h"
#include "InsertBench.h"
#include "MemoryBench.h"
#include "PanelsBench.h"
#include "StartBench.h"

#include <QApplication>
#include <QCommandLineParser>
#include <cstdio>
#include <exception>

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QCommandLineParser options;
    options.setApplicationDescription(QStringLiteral("Measures the window program against its engine alone"));
    options.addHelpOption();
    options.addOption({QStringLiteral("runs"), QStringLiteral("Runs of each kind"), QStringLiteral("number"),
                       QStringLiteral("21")});
    const QCommandLineOption memory(QStringLiteral("memory"),
                                    QStringLiteral("Measures memory instead of time"));
    const QCommandLineOption panels(QStringLiteral("panels"),
                                    QStringLiteral("Times the list of stops and the stop panel"));
    const QCommandLineOption check(QStringLiteral("check"), QStringLiteral("Times the check of 100 stops"));
    options.addOptions({memory, panels, check});
    options.process(application);
    const int runs = qMax(1, options.value(QStringLiteral("runs")).toInt());
    try {
        if (options.isSet(memory)) {
            wendmark::bench::runMemoryBench(runs);
            return 0;
        }
        if (options.isSet(panels)) {
            wendmark::bench::runPanelsBench(runs);
            return 0;
        }
        if (options.isSet(check)) {
            wendmark::bench::runCheckBench(runs);
            return 0;
        }
        wendmark::bench::runInsertBench(runs);
        wendmark::bench::runStartBench(runs);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
