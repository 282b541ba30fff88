#pragma once

#include "tour_cli/CommandLine.h"

#include <iosfwd>

namespace wendmark::cli {

/// Checks the tours, whose folders stay as they are, and says what was found out; the exit status. After a
/// signal that asks the program to end it says nothing. Needs a QApplication.
int runCheck(const CheckRequest& request, std::ostream& output, std::ostream& errors);

} // namespace wendmark::cli
