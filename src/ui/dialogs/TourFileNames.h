#pragma once

#include <string>

class QString;
class QWidget;

namespace wendmark {

class Workspace;

/// Finds, with the author, names under which files are taken into the tour. Lives as long as the program.
class TourFileNames final {
public:
    /// The workspace must outlive it.
    explicit TourFileNames(const Workspace& workspace) : m_workspace(workspace) {}

    /// Name for the page at `path`; asks when a file of that name is there, which may be overwritten unless
    /// it is the program's own. Empty when the author gives up.
    std::string nameForPage(const QString& path, QWidget* parent);

    /// Same for an image. Names of templates lead to the question for another one at once.
    std::string nameForImage(const QString& path, QWidget* parent);

    /// Line of the rename dialog that says why a name is not free, as it was told last.
    const std::string& renameReason() const { return m_renameReason; }

private:
    bool isOtherFile(const std::string& source, const std::string& name) const;
    static std::string askForOther(const std::string& name, const std::string& reason, QWidget* parent);

    const Workspace& m_workspace;
    std::string m_renameReason;
};

} // namespace wendmark
