#pragma once

namespace wendmark::bench {

/// Inserts a hundredth stop near the start, in the middle and at the end of a tour, and compares the time
/// until the stop label shows it with a plain reload of the same frameset in a bare browser view.
void runInsertBench(int runs);

} // namespace wendmark::bench
