#include "hostile/Effort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <malloc.h>
#include <stdexcept>
#include <string>

namespace wendmark::test {

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool sanitized = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool sanitized = true;
#else
constexpr bool sanitized = false;
#endif
#else
constexpr bool sanitized = false;
#endif

#ifdef NDEBUG
constexpr bool optimised = true;
#else
constexpr bool optimised = false;
#endif

constexpr double secondsAllowed = optimised && !sanitized ? 1 : 30;
constexpr double megabyte = 1024.0 * 1024;
constexpr double constantMegabytes = 16;

/// A size in the process's own account of its memory, in megabytes.
double memory(std::string_view name) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(name))
            return std::stod(line.substr(name.size() + 1)) / 1024;
    }
    throw std::runtime_error("the memory in use is not to be had");
}

void forgetFormerPeak() {
    malloc_trim(0);
    std::ofstream reset("/proc/self/clear_refs");
    if (!(reset << '5' << std::flush))
        throw std::runtime_error("the peak of the memory in use cannot be reset");
}

/// What the process has worked; what others do on this machine at the same time does not count.
double secondsOfWork() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

struct Effort {
    double seconds;
    double megabytes;
};

Effort effortOf(const std::function<void()>& call) {
    forgetFormerPeak();
    const double before = memory("VmRSS");
    const double start = secondsOfWork();
    call();
    return {secondsOfWork() - start, memory("VmHWM") - before};
}

} // namespace

void expectLittleEffort(std::string_view what, std::size_t inputBytes, double timesInput,
                        const std::function<void()>& call) {
    const double inputMegabytes = static_cast<double>(inputBytes) / megabyte;
    Effort least = effortOf(call);
    for (int more = 0; more < 2 && least.seconds > secondsAllowed; ++more) {
        const Effort again = effortOf(call);
        least = {std::min(least.seconds, again.seconds), std::max(least.megabytes, again.megabytes)};
    }
    std::printf("%-44s input %7.1f MB %7.3f s, memory grew by %7.1f MB\n", std::string(what).c_str(),
                inputMegabytes, least.seconds, least.megabytes);
    EXPECT_LE(least.seconds, secondsAllowed) << what;
    // The sanitizers keep what was freed for a while, to see who still uses it.
    if (!sanitized) {
        EXPECT_LE(least.megabytes, timesInput * inputMegabytes + constantMegabytes) << what;
    }
}

} // namespace wendmark::test
