#pragma once

#include "base/Outcome.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace wendmark {

/// Most scripts that are kept of one tour.
inline constexpr int savedScriptsKept = 20;

/// A script that is kept.
struct SavedScript {
    std::string path;
    std::int64_t time = 0; ///< Of its save: seconds since 1970.
    std::string tourPath;  ///< Folder of its tour; empty when nothing says which it was.

    friend bool operator==(const SavedScript&, const SavedScript&) = default;
};

/// Keeps the script of a tour that was just saved, beside those of its last saves, in a folder of the tour's
/// own inside `folder`; its file "tour.txt" names the tour. Older ones go, and a script that equals the
/// latest one is not kept twice. `now`: seconds since 1970.
Outcome keepSavedScript(const std::string& folder, const std::string& tourPath, std::string_view script,
                        std::int64_t now);

/// The scripts that keepSavedScript() has kept in `folder` of the tour in `tourPath`, the latest first. What
/// cannot be read is left out.
std::vector<SavedScript> savedScriptsOf(const std::string& folder, const std::string& tourPath);

/// Same of all tours.
std::vector<SavedScript> savedScriptsOfAllTours(const std::string& folder);

/// A name for a folder that stands for a path: the same for the same path, in every run of the program.
std::string folderNameFor(std::string_view path);

} // namespace wendmark
