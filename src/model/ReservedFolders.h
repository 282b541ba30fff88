#pragma once

#include <string>

namespace wendmark {

struct WorkspaceFolders;

/// Why `tour` is no folder of a tour: it is Template or NewTour, or lies in one of them, by whatever spelling
/// and whatever links it is reached. Empty when it may be one. The path may be relative and need not exist.
std::string reservedTourMessage(const WorkspaceFolders& folders, const std::string& tour);

} // namespace wendmark
