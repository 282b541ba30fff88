#pragma once

namespace wendmark::bench {

/// Megabytes of a process and of all that it has started. Of what processes share each bears its part.
double memoryOf(long long process);

} // namespace wendmark::bench
