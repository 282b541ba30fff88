#pragma once

namespace wendmark::bench {

/// Checks a tour of 100 stops on 100 servers that answer after a second, and prints how long that takes and
/// by how much the memory of the program, engine included, grows meanwhile.
void runCheckBench(int runs);

} // namespace wendmark::bench
