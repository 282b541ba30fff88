#pragma once

#include <cstddef>

namespace wendmark::test {

/// What one thread has taken with `new` and given back with `delete` since it began. It depends on the work
/// alone, not on the machine, nor on what else runs there. Only in programs that are linked with
/// wendmark_counted_allocations; what libraries take past `new` is not seen.
struct Allocations {
    std::size_t count = 0;   ///< Of calls.
    std::size_t bytes = 0;   ///< Of all these calls.
    std::ptrdiff_t held = 0; ///< Bytes not given back; less than zero for what another thread has taken.
    std::ptrdiff_t peak = 0; ///< The most that was held since forgetPeak().

    /// Those of the calling thread.
    static Allocations now();

    /// Lets the peak of the calling thread begin at what it holds now.
    static void forgetPeak();
};

} // namespace wendmark::test
