#include "Environment.h"

namespace wendmark::bench {

QProcessEnvironment environmentIn(const QString& home) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), home);
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"})
        environment.remove(QLatin1String(name));
    environment.insert(QStringLiteral("QT_PLUGIN_PATH"), QStringLiteral(BENCH_PLUGINS));
    environment.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QStringLiteral("startprobe"));
    return environment;
}

} // namespace wendmark::bench
