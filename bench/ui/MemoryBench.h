#pragma once

namespace wendmark::bench {

/// Starts the program in a fresh application folder with the sample tour open, in a window of 1366x768
/// pixels, and compares its memory with that of a bare window of this size which shows the same frameset.
void runMemoryBench(int runs);

} // namespace wendmark::bench
