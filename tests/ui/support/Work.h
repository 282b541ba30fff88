#pragma once

#include <cstddef>
#include <functional>

namespace wendmark::test {

/// What the windows' thread has allocated meanwhile. Programs that use this are linked with
/// wendmark_counted_allocations.
struct Work {
    std::size_t allocations = 0;
    std::size_t bytes = 0;
};

Work workOf(const std::function<void()>& act);

/// Fails the test when `large`, the same work on `times` times as much input, is more than in proportion to
/// `small`, give or take what the engine does meanwhile and what doubling buffers take.
void verifyInProportion(const char* what, const Work& small, const Work& large, double times);

} // namespace wendmark::test
