#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

namespace wendmark::test {

/// The work of one call, as far as it does not depend on the machine.
struct Effort {
    std::size_t allocations; ///< Calls of `new`.
    std::size_t bytes;       ///< That these have taken, whether or not they were given back meanwhile.
    std::size_t peak;        ///< Most bytes held at one time, beyond those held before.
};

/// Runs one call on input of `inputBytes`, prints its effort and expects that it holds no more memory than
/// `timesInput` times the input and a constant. One that never comes back is ended with the test program;
/// how long it takes is printed by bench/, and judged nowhere.
Effort expectLittleEffort(std::string_view what, std::size_t inputBytes, double timesInput,
                          const std::function<void()>& call);

/// Same for all of `input`, after a call with its first tenth; and expects that the larger input takes no
/// more allocations and bytes than in proportion, give or take what doubling buffers do.
void expectEffortInProportion(std::string_view what, std::string_view input, double timesInput,
                              const std::function<void(std::string_view)>& call);

} // namespace wendmark::test
