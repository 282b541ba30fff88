#include "ui/support/OutsidePrograms.h"

#include <QDesktopServices>

namespace wendmark::test {

namespace {

constexpr const char* schemes[] = {"http", "https", "file"};

} // namespace

OutsidePrograms::OutsidePrograms() {
    for (const char* const scheme : schemes)
        QDesktopServices::setUrlHandler(QLatin1String(scheme), this, "open");
}

OutsidePrograms::~OutsidePrograms() {
    for (const char* const scheme : schemes)
        QDesktopServices::unsetUrlHandler(QLatin1String(scheme));
}

} // namespace wendmark::test
