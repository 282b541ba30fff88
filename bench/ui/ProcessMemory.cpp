#include "ProcessMemory.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

namespace wendmark::bench {

namespace {

namespace fs = std::filesystem;

/// Megabytes of a process. Of what it shares with others each bears its part.
double ownMemory(long long process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/smaps_rollup");
    for (std::string word; file >> word;) {
        double kilobytes = 0;
        if (word == "Pss:" && file >> kilobytes)
            return kilobytes / 1024;
    }
    return 0; // It has just ended.
}

} // namespace

double memoryOf(long long process) {
    double sum = ownMemory(process);
    std::error_code error;
    for (const auto& thread : fs::directory_iterator("/proc/" + std::to_string(process) + "/task", error)) {
        std::ifstream children(thread.path() / "children");
        for (long long child = 0; children >> child;)
            sum += memoryOf(child);
    }
    return sum;
}

} // namespace wendmark::bench
