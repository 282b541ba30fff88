#pragma once

#include "base/Outcome.h"
#include "model/Workspace.h"

#include <optional>
#include <string>

namespace wendmark::cli {

/// The absolute path of a folder as typed, without a separator at its end.
std::string absoluteFolder(const std::string& typed);

/// The folder that holds the running program.
std::string programFolder();

bool isFolder(const std::string& path);

/// Whether one path is the other, or leads to it or to something inside it.
bool isInside(const std::string& path, const std::string& folder);

/// The fixed folders of the program, with the templates from elsewhere if they are named.
WorkspaceFolders runFolders(const std::optional<std::string>& templateFolder);

/// Fails on the first template that a tour cannot be generated without.
Outcome checkTemplates(const WorkspaceFolders& folders);

/// A folder made for this run, readable by its user only, and removed with it.
class TemporaryFolder final {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const Outcome& outcome() const { return m_outcome; }
    const std::string& path() const { return m_path; }

private:
    std::string m_path;
    Outcome m_outcome;
};

/// A folder that is made, with its parents, and taken away again unless it is kept. One that was there before
/// stays.
class TargetFolder final {
public:
    explicit TargetFolder(std::string path);
    ~TargetFolder();
    TargetFolder(const TargetFolder&) = delete;
    TargetFolder& operator=(const TargetFolder&) = delete;

    /// Makes the folder, and every parent that is missing.
    Outcome makeIfMissing();

    void keep() { m_firstMade.clear(); }

private:
    std::string m_path;
    std::string m_firstMade; ///< The outermost folder that was made; empty when none.
};

} // namespace wendmark::cli
