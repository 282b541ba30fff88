#include "InsertBench.h"
#include "StartBench.h"

#include <QApplication>
#include <QCommandLineParser>
#include <cstdio>
#include <exception>

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QCommandLineParser options;
    options.setApplicationDescription(QStringLiteral("Times the window program against its engine alone"));
    options.addHelpOption();
    options.addOption({QStringLiteral("runs"), QStringLiteral("Runs of each kind"), QStringLiteral("number"),
                       QStringLiteral("21")});
    options.process(application);
    const int runs = qMax(1, options.value(QStringLiteral("runs")).toInt());
    try {
        wendmark::bench::runInsertBench(runs);
        wendmark::bench::runStartBench(runs);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
