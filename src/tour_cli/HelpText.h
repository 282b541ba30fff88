#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace wendmark::cli {

/// The commands, in the order in which --help names them, "help" last.
std::vector<std::string_view> commandNames();

/// What --help prints; with the name of a command, what is to be said of that one alone.
std::string helpText(std::string_view command = {});

} // namespace wendmark::cli
