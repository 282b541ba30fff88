#pragma once

#include "recovery/RecoveryRecord.h"
#include "recovery/SavedScripts.h"

#include <cstdint>
#include <ctime>
#include <string>
#include <unistd.h>

/// What an author who is going to be killed says on the standard output: a line for each moment, with its
/// time, which is the same clock for all processes.
namespace wendmark::test {

/// Milliseconds.
inline std::int64_t timeNow() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return std::int64_t(now.tv_sec) * 1000 + now.tv_nsec / 1000000;
}

/// 'B': a command begins; 'S': the state that it has led to; 'C': the same, and it is saved. 'L': the
/// recovery begins to look at what there is to keep.
inline void report(char kind, const std::string& state) {
    const std::string line = std::string(1, kind) + " " + std::to_string(timeNow()) + " " + state + "\n";
    if (write(STDOUT_FILENO, line.data(), line.size()) < 0)
        _exit(1); // Nobody listens any more.
}

/// Stands for a tour at one moment, wherever in it the author is.
inline std::string stateOf(RecoveryRecord record) {
    record.time = 0;
    record.model.currentStop = 0;
    record.model.tourChanged = false;
    record.model.homeSiteURL.clear();
    return folderNameFor(encodeRecord(record));
}

} // namespace wendmark::test
