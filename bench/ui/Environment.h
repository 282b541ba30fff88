#pragma once

#include <QProcessEnvironment>

namespace wendmark::bench {

/// What the programs that are measured see: settings and caches of their own, and the probe.
QProcessEnvironment environmentIn(const QString& home);

} // namespace wendmark::bench
