#pragma once

#include <string>
#include <vector>

namespace wendmark::bench {

/// Times or memory of what the program does, and of the least that the same engine needs for the same
/// result.
struct Comparison {
    std::string what;
    std::string baseline;
    double aim = 0;                ///< Ratio of the medians that should not be exceeded.
    std::vector<double> ours;      ///< One for each run.
    std::vector<double> baselines; ///< Taken in turn with ours.
    std::string unit = "ms";
};

void print(const Comparison& comparison);

/// One line: the median of the figures, of which there must be some, the least and the most.
void printFigures(const std::string& what, const std::vector<double>& figures, const std::string& unit);

} // namespace wendmark::bench
