#include "Comparison.h"

#include <algorithm>
#include <cstdio>

namespace wendmark::bench {

namespace {

double median(std::vector<double> figures) {
    const auto middle = figures.begin() + static_cast<std::ptrdiff_t>(figures.size() / 2);
    std::nth_element(figures.begin(), middle, figures.end());
    return *middle;
}

} // namespace

void printFigures(const std::string& what, const std::vector<double>& figures, const std::string& unit) {
    const auto [least, most] = std::minmax_element(figures.begin(), figures.end());
    std::printf("  %-62s %7.1f %s  (%.1f to %.1f, %zu runs)\n", what.c_str(), median(figures), unit.c_str(),
                *least, *most, figures.size());
}

void print(const Comparison& comparison) {
    printFigures(comparison.what, comparison.ours, comparison.unit);
    printFigures(comparison.baseline, comparison.baselines, comparison.unit);
    std::printf("  ratio of the medians %.2f (aim: at most %.2f)\n\n",
                median(comparison.ours) / median(comparison.baselines), comparison.aim);
    std::fflush(stdout);
}

} // namespace wendmark::bench
