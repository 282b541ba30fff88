#pragma once

#include "base/Files.h"

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace wendmark {

class Desktop;
class Log;
class StagedReplacement;
struct TourModel;

/// The program's fixed folders. Each ends with the path separator, except for appPath.
struct WorkspaceFolders {
    std::string appPath;      ///< Folder that holds the program.
    std::string templatePath; ///< What every new tour starts with.
    std::string newTourPath;  ///< The working copy: the only place where pages are edited and generated.
    std::string myToursPath;  ///< Where tours are kept unless the author chooses otherwise.

    /// Nobody looks into the working copy while it is made, and it is given up when anything fails: its files
    /// are replaced the quick way.
    bool newTourPathIsPrivate = false;

    /// The folders Template, NewTour and MyTours in `appPath`, which has no separator at its end.
    static WorkspaceFolders inside(const std::string& appPath);
};

/// Fills, empties and copies the folders of the tour that is being edited. A failing step is one line in the
/// log, and the next step follows; nothing here is shown to the author.
class Workspace final {
public:
    /// All references must outlive the workspace.
    Workspace(WorkspaceFolders folders, TourModel& model, Desktop& desktop, Log& log);

    const WorkspaceFolders& folders() const { return m_folders; }

    std::string templateFile(std::string_view name) const {
        return m_folders.templatePath + std::string(name);
    }
    std::string workingFile(std::string_view name) const { return m_folders.newTourPath + std::string(name); }
    std::string tourFile(std::string_view name) const;

    /// Sets the defaults that a script may then change. Leaves the title, the stops, autoBuffer and
    /// bufferDelay as they are: whoever calls this reads a script next.
    void initTourDefaults();

    /// Empties the working copy and fills it from the Template folder.
    void resetWorkingCopy();

    /// Fills the working copy from the Template folder and then from the tour's folder, whose files win.
    /// Clears tourChanged. A link that leads out of the tour's folder is left out and logged as a warning.
    void loadTourIntoWorkingCopy();

    /// Whether something of the tour that was loaded last did not arrive. The working copy may hold the
    /// templates' file in its place, so a save into the same folder leaves the author's own alone.
    bool isIncomplete() const { return m_spared.all || !m_spared.names.empty(); }

    /// What of which folder saves leave alone.
    struct Spared {
        std::string folder;          ///< The tour's.
        std::set<std::string> names; ///< Lower case.
        bool all = false;            ///< Not even the names of the tour's files are known.
    };
    const Spared& spared() const { return m_spared; }
    void setSpared(Spared spared) { m_spared = std::move(spared); }

    /// From now on, until another tour is loaded or the working copy is reset, saves leave this file of the
    /// tour's folder alone.
    void spare(const std::string& name);

    /// Replaces the tour folder's files by those of the working copy and its navigator by the final one.
    /// Files that only the tour folder has stay. When the new files cannot all be written (no space, no
    /// permission), nothing changes. Clears tourChanged in every case.
    /// False when something of the tour could not be saved; what, is in the log.
    bool copyWorkingCopyToTour();

    /// Empties the working copy but for a copy of the templates' script, "script1.txt": what a program that
    /// ends leaves behind.
    void leaveOnlyTemplateScript();

    /// Repairs support files that the working copy lacks.
    void restoreWorkingFiles();

    /// Whether the working copy holds a file that matches `name`, which may hold wildcards.
    bool workingFileExists(std::string_view name) const;

    /// Whether the Template folder holds a file of this name. Such names are reserved in every tour.
    bool isTemplateFile(std::string_view name) const;

    /// Replaces a file of the working copy.
    Outcome writeWorkingFile(std::string_view name, std::string_view bytes) const;

    /// Replaces a file of the working copy by a copy of `source`.
    Outcome copyToWorkingFile(const std::string& source, std::string_view name) const;

    /// Waits while window events are handled.
    void pause(float seconds) const;

    /// Folder of the open tour, without a separator at its end; empty when the tour has none yet.
    const std::string& tourPath() const { return m_tourPath; }
    void setTourPath(std::string path) { m_tourPath = std::move(path); }

private:
    void emptyWorkingCopy();
    void fillFromTemplates();
    void fillFromTour();
    bool isSpared(const std::string& name) const;
    void copyInWorkingCopy(std::string_view from, std::string_view to);
    files::Replacing replacing() const;
    /// Files by the names that they get.
    using Sources = std::map<std::string, std::string>;

    Sources sourcesByTargetName(const files::Listing& listing, const std::string& folder) const;
    bool savedTourSources(Sources& sources) const;
    bool replaceTourFiles();
    bool stageTour(StagedReplacement& replacement, const Sources& sources, bool& complete) const;
    bool removeFormerChoices(const std::string& folder, bool areThere) const;
    bool skip(const Outcome& outcome) const;

    std::string m_tourPath;
    Spared m_spared;
    WorkspaceFolders m_folders;
    TourModel& m_model;
    Desktop& m_desktop;
    Log& m_log;
};

/// Whether a file can be opened for reading.
bool fileExists(const std::string& path);

/// Whether `folder` (no separator at its end) holds a tour: a script.txt that can be opened for reading.
bool folderHoldsTour(const std::string& folder);

/// Why no tour may be kept in `tourPath`, which lies in a folder of the program's own; empty when it may.
std::string reservedFolderMessage(const WorkspaceFolders& folders, const std::string& tourPath);

/// Same for a folder that is to be made, which may not look like the sample tour either.
std::string reservedNewFolderMessage(const WorkspaceFolders& folders, const std::string& tourPath);

} // namespace wendmark
