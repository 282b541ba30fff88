#pragma once

namespace wendmark::bench {

/// Starts the program in a fresh application folder and compares the time until the wizard's first page is
/// on screen, its splash window being closed at once, with the start of a bare window with an empty page.
void runStartBench(int runs);

} // namespace wendmark::bench
