#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

namespace wendmark::test {

/// Runs one call on input of `inputBytes`, prints how long it took and by how much the memory of the process
/// grew at most, and expects it to take no longer than a second and no more memory than `timesInput` times
/// the input and a constant. Builds that are not optimised get more time; so do those that watch every
/// access, and as these keep what was freed, their memory is not judged. A call that is too slow because
/// something else has the machine is given two more chances, so it must be one that can be repeated.
void expectLittleEffort(std::string_view what, std::size_t inputBytes, double timesInput,
                        const std::function<void()>& call);

} // namespace wendmark::test
