#include "ui/support/Work.h"

#include "support/Allocations.h"

#include <QTest>

namespace wendmark::test {

namespace {

constexpr double slack = 2;
constexpr double constantAllocations = 10'000;
constexpr double constantBytes = 16.0 * 1024 * 1024;

} // namespace

Work workOf(const std::function<void()>& act) {
    const Allocations before = Allocations::now();
    act();
    const Allocations after = Allocations::now();
    return {after.count - before.count, after.bytes - before.bytes};
}

void verifyInProportion(const char* what, const Work& small, const Work& large, double times) {
    qInfo("%s: %zu allocations of %zu bytes, on %.0f times the input %zu of %zu", what, small.allocations,
          small.bytes, times, large.allocations, large.bytes);
    const double most = slack * times;
    QVERIFY2(static_cast<double>(large.allocations) <=
                 most * static_cast<double>(small.allocations) + constantAllocations,
             what);
    QVERIFY2(static_cast<double>(large.bytes) <= most * static_cast<double>(small.bytes) + constantBytes,
             what);
}

} // namespace wendmark::test
