#include "model/ReservedFolders.h"

#include "base/Files.h"
#include "model/Workspace.h"

#include <filesystem>

namespace wendmark {

namespace {

namespace fs = std::filesystem;

std::string withSeparatorAtEnd(const fs::path& path) {
    return files::join(path.string(), "");
}

/// The path as it is written, absolute and with a separator at its end.
std::string written(const std::string& path) {
    std::error_code error;
    const fs::path absolute = fs::absolute(path, error);
    return withSeparatorAtEnd(error ? fs::path(path) : absolute.lexically_normal());
}

/// Same without links, as far as the path exists.
std::string resolved(const std::string& path) {
    std::error_code error;
    const fs::path canonical = fs::weakly_canonical(written(path), error);
    return error ? written(path) : withSeparatorAtEnd(canonical);
}

} // namespace

std::string reservedTourMessage(const WorkspaceFolders& folders, const std::string& tour) {
    if (tour.empty())
        return {};
    WorkspaceFolders real = folders;
    real.templatePath = resolved(folders.templatePath);
    real.newTourPath = resolved(folders.newTourPath);
    std::string message = reservedFolderMessage(real, resolved(tour));
    return message.empty() ? reservedFolderMessage(folders, written(tour)) : message;
}

} // namespace wendmark
