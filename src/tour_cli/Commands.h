#pragma once

#include "base/Outcome.h"
#include "tour_cli/CommandLine.h"

#include <iosfwd>

namespace wendmark::cli {

/// Carries out the command. After a failure, the folders that it was about are what they were before.
Outcome runPublish(const PublishRequest& request, std::ostream& output, std::ostream& errors);
Outcome runNew(const NewRequest& request, std::ostream& output, std::ostream& errors);

} // namespace wendmark::cli
