#pragma once

#include "base/Outcome.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace wendmark {

/// Most scripts that are kept of one tour.
inline constexpr int savedScriptsKept = 5;

/// Keeps the script of a tour that was just saved, beside those of its last saves, in a folder of the tour's
/// own inside `folder`; its file "tour.txt" names the tour. Older ones go, and a script that equals the
/// latest one is not kept twice. `now`: seconds since 1970.
Outcome keepSavedScript(const std::string& folder, const std::string& tourPath, std::string_view script,
                        std::int64_t now);

/// A name for a folder that stands for a path: the same for the same path, in every run of the program.
std::string folderNameFor(std::string_view path);

} // namespace wendmark
