#pragma once

#include <optional>
#include <string>
#include <vector>

namespace wendmark {

struct TourContext;

/// A file of the author's that comes into the tour.
struct AddedFile {
    std::string source; ///< Path.
    std::string name;   ///< The name that it gets; a file of that name is replaced.
    /// What it gets to hold, when that is not what the source holds.
    std::optional<std::string> bytes = std::nullopt;
};

std::vector<std::string> namesOf(const std::vector<AddedFile>& files);

/// Copies the files into the working copy. Names of those that could not be copied; why is in the log.
std::vector<std::string> addFilesOfAuthor(TourContext& context, const std::vector<AddedFile>& added);

} // namespace wendmark
