#include "tour_cli/Folders.h"

#include "base/Files.h"
#include "base/Names.h"
#include "model/ReservedFolders.h"
#include "model/ScriptFile.h"
#include "model/TourFiles.h"
#include "model/TourModel.h"

#include <algorithm>
#include <filesystem>

namespace wendmark::cli {

namespace fs = std::filesystem;

namespace {

std::string withoutSeparatorAtEnd(std::string path) {
    while (path.size() > 1 && path.back() == pathSeparator)
        path.pop_back();
    return path;
}

bool isFolder(const std::string& path) {
    std::error_code error;
    return fs::is_directory(path, error);
}

/// The path without links and "..", as far as it exists.
fs::path resolved(const fs::path& path) {
    std::error_code error;
    fs::path canonical = fs::weakly_canonical(path, error);
    return error ? path : canonical;
}

} // namespace

std::string absoluteFolder(const std::string& typed) {
    std::error_code error;
    const fs::path absolute = fs::absolute(typed, error);
    if (error)
        return withoutSeparatorAtEnd(typed);
    // What ".." leads to depends on the links before it.
    const bool climbs = std::find(absolute.begin(), absolute.end(), "..") != absolute.end();
    return withoutSeparatorAtEnd((climbs ? resolved(absolute) : absolute.lexically_normal()).string());
}

std::string tourFolder(const std::string& typed) {
    std::string folder = absoluteFolder(typed);
    const fs::path path(folder);
    if (equalIgnoringCase(path.filename().string(), "script.txt") && !isFolder(folder))
        return path.parent_path().string();
    return folder;
}

std::string programFolder() {
    return fs::canonical("/proc/self/exe").parent_path().string();
}

bool isInside(const std::string& path, const std::string& folder) {
    const fs::path inner = resolved(path);
    const fs::path outer = resolved(withoutSeparatorAtEnd(folder));
    return std::mismatch(outer.begin(), outer.end(), inner.begin(), inner.end()).first == outer.end();
}

WorkspaceFolders runFolders(const std::optional<std::string>& templateFolder) {
    WorkspaceFolders folders = WorkspaceFolders::inside(programFolder());
    if (templateFolder)
        folders.templatePath = files::join(absoluteFolder(*templateFolder), "");
    return folders;
}

WorkspaceFolders foldersForReading(const std::string& tour) {
    WorkspaceFolders folders = runFolders({});
    folders.newTourPath = files::join(tour, "");
    return folders;
}

Outcome checkTour(const std::string& tour, const WorkspaceFolders& folders) {
    const WorkspaceFolders own = WorkspaceFolders::inside(folders.appPath);
    const std::string message = reservedTourMessage(own, tour);
    return message.empty() ? Outcome::success() : Outcome::failure(tour + ": " + message);
}

Outcome checkReplaceable(const std::string& file) {
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (fs::is_directory(status))
        return Outcome::failure("cannot write " + file + ": it is a folder, where a file is wanted");
    if (fs::exists(status) && !fs::is_regular_file(status))
        return Outcome::failure("cannot write " + file + ": only regular files are replaced");
    return Outcome::success();
}

Outcome checkTemplates(const WorkspaceFolders& folders) {
    for (const std::string& name : neededTemplates()) {
        Outcome readable = files::read(folders.templatePath + name).outcome;
        if (!readable.ok())
            return readable;
    }
    return Outcome::success();
}

Outcome checkTitle(const std::string& tour) {
    const std::string path = files::join(tour, "script.txt");
    const files::Contents script = files::read(path);
    if (!script.outcome.ok())
        return script.outcome;
    TourModel model;
    const bool hasTitle = parseScript(script.bytes, model, [](int, std::string_view) {}).hasTitle;
    return hasTitle ? Outcome::success()
                    : Outcome::failure("cannot use " + path + ": it ends before the title of a tour");
}

MadeFolder::MadeFolder(std::string path) : m_path(std::move(path)) {}

MadeFolder::~MadeFolder() {
    if (!m_firstMade.empty())
        static_cast<void>(files::removeFolder(m_firstMade)); // The failure that led here is told.
}

Outcome MadeFolder::makeIfMissing() {
    if (isFolder(m_path))
        return Outcome::success();
    std::error_code error;
    fs::path missing = m_path;
    while (missing.has_relative_path() && !fs::exists(missing.parent_path(), error))
        missing = missing.parent_path();
    const bool taken = fs::exists(fs::symlink_status(missing, error));
    fs::create_directories(m_path, error);
    if (!taken)
        m_firstMade = missing.string();
    if (!error && !isFolder(m_path))
        error = std::make_error_code(std::errc::not_a_directory);
    return error ? Outcome::failure("create the folder", m_path, error) : Outcome::success();
}

} // namespace wendmark::cli
