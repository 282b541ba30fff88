#include "Comparison.h"

#include <algorithm>
#include <cstdio>

namespace wendmark::bench {

namespace {

double median(std::vector<double> times) {
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

void printTimes(const std::string& what, const std::vector<double>& times) {
    const auto [least, most] = std::minmax_element(times.begin(), times.end());
    std::printf("  %-62s %7.1f ms  (%.1f to %.1f, %zu runs)\n", what.c_str(), median(times), *least, *most,
                times.size());
}

} // namespace

void print(const Comparison& comparison) {
    printTimes(comparison.what, comparison.ours);
    printTimes(comparison.baseline, comparison.baselines);
    std::printf("  ratio of the medians %.2f (aim: at most %.2f)\n\n",
                median(comparison.ours) / median(comparison.baselines), comparison.aim);
    std::fflush(stdout);
}

} // namespace wendmark::bench
