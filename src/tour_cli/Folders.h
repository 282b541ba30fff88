#pragma once

#include "base/Outcome.h"
#include "model/Workspace.h"

#include <optional>
#include <string>

namespace wendmark::cli {

/// The absolute path of a folder as typed, without a separator at its end. Links stay in it as long as no
/// ".." depends on them.
std::string absoluteFolder(const std::string& typed);

/// The absolute path of the folder of a tour that is named by it, or by its script: a last name "script.txt",
/// in any case, that is no folder.
std::string tourFolder(const std::string& typed);

/// The folder that holds the running program.
std::string programFolder();

/// Whether one path is the other, or leads to it or to something inside it.
bool isInside(const std::string& path, const std::string& folder);

/// The fixed folders of the program, with the templates from elsewhere if they are named.
WorkspaceFolders runFolders(const std::optional<std::string>& templateFolder);

/// Same for a run that only reads a tour: its own folder is the working copy.
WorkspaceFolders foldersForReading(const std::string& tour);

/// Fails for a folder of the window program's own, by whatever way it is reached: no tour is kept in one.
Outcome checkTour(const std::string& tour, const WorkspaceFolders& folders);

/// Fails when something of that name is there that is no regular file: a folder, a device, a pipe.
Outcome checkReplaceable(const std::string& file);

/// Fails on the first template that a tour cannot be generated without.
Outcome checkTemplates(const WorkspaceFolders& folders);

/// Fails when the tour's script cannot be read, and when it ends before its title: reading that would leave
/// the tour that was there before in the model.
Outcome checkTitle(const std::string& tour);

/// A folder that is made for a run, and taken away again with all that it holds unless it is kept. One that
/// was there before stays.
class MadeFolder final {
public:
    explicit MadeFolder(std::string path);
    ~MadeFolder();
    MadeFolder(const MadeFolder&) = delete;
    MadeFolder& operator=(const MadeFolder&) = delete;

    const std::string& path() const { return m_path; }

    /// Makes the folder if it is missing, with every parent that is missing.
    Outcome makeIfMissing();

    void keep() { m_firstMade.clear(); }

private:
    std::string m_path;
    std::string m_firstMade; ///< The outermost folder that was made; empty when none.
};

} // namespace wendmark::cli
