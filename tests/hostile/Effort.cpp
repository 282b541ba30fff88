#include "hostile/Effort.h"

#include "support/Allocations.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace wendmark::test {

namespace {

constexpr double megabyte = 1024.0 * 1024;
constexpr double constantBytes = 16 * megabyte;
constexpr double constantAllocations = 10'000;
constexpr std::size_t timesLarger = 10;
constexpr double slack = 2; // Buffers that double are more or less full, and a cut input is another one.

Effort effortOf(const std::function<void()>& call) {
    Allocations::forgetPeak();
    const Allocations before = Allocations::now();
    call();
    const Allocations after = Allocations::now();
    return {after.count - before.count, after.bytes - before.bytes,
            static_cast<std::size_t>(after.peak - before.held)};
}

double megabytes(std::size_t bytes) {
    return static_cast<double>(bytes) / megabyte;
}

Effort printedEffortOf(std::string_view what, std::size_t inputBytes, const std::function<void()>& call) {
    const Effort effort = effortOf(call);
    std::printf("%-44s input %7.1f MB %9zu allocations of %8.1f MB, of which at most %7.1f MB were held\n",
                std::string(what).c_str(), megabytes(inputBytes), effort.allocations, megabytes(effort.bytes),
                megabytes(effort.peak));
    return effort;
}

} // namespace

Effort expectLittleEffort(std::string_view what, std::size_t inputBytes, double timesInput,
                          const std::function<void()>& call) {
    const Effort effort = printedEffortOf(what, inputBytes, call);
    EXPECT_LE(static_cast<double>(effort.peak), timesInput * static_cast<double>(inputBytes) + constantBytes)
        << what;
    return effort;
}

void expectEffortInProportion(std::string_view what, std::string_view input, double timesInput,
                              const std::function<void(std::string_view)>& call) {
    const std::string_view tenth = input.substr(0, input.size() / timesLarger);
    const Effort small = printedEffortOf(what, tenth.size(), [&] { call(tenth); });
    const Effort large = expectLittleEffort(what, input.size(), timesInput, [&] { call(input); });
    const double most = slack * timesLarger;
    EXPECT_LE(static_cast<double>(large.allocations),
              most * static_cast<double>(small.allocations) + constantAllocations)
        << what;
    EXPECT_LE(static_cast<double>(large.bytes), most * static_cast<double>(small.bytes) + constantBytes)
        << what;
}

} // namespace wendmark::test
