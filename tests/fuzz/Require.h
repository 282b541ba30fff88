#pragma once

#include <cstdio>
#include <cstdlib>

namespace wendmark::fuzz {

/// Ends the run, so that the fuzzer keeps the input, when something does not hold that must.
inline void require(bool holds, const char* what) {
    if (holds)
        return;
    std::fprintf(stderr, "Does not hold: %s\n", what);
    std::abort();
}

} // namespace wendmark::fuzz
