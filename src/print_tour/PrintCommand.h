#pragma once

#include "base/Outcome.h"
#include "tour_cli/CommandLine.h"

#include <iosfwd>

namespace wendmark::cli {

/// Prints a tour into a PDF file, all or nothing; the tour's folder stays as it is. Needs a QGuiApplication.
Outcome runPrint(const PrintRequest& request, std::ostream& output, std::ostream& errors);

} // namespace wendmark::cli
