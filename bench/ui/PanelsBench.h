#pragma once

namespace wendmark::bench {

/// Prints how long the list of 100 stops takes to follow a change of the tour on the screen, and how long a
/// key in the stop panel takes until the tour has it and until the preview shows it.
void runPanelsBench(int runs);

} // namespace wendmark::bench
