#pragma once

#include "commands/TourSnapshot.h"

#include <map>
#include <set>
#include <string>

namespace wendmark {

class ContentStore;
struct TourContext;

/// What a file of the working copy is, as far as undo needs to know.
struct FileState {
    enum class Kind {
        absent,
        generated, ///< Made from a tour and the templates; made anew when it is needed.
        stored     ///< Anything else. Its contents can be had again once they were kept.
    };
    Kind kind = Kind::absent;
    TourMoment shows;   ///< The tour that a generated file shows.
    std::string digest; ///< Of stored contents; empty before they are kept.
    std::string stamp;  ///< The file on the disk, see files::stampOf().

    bool sameContentsAs(const FileState& other) const;
};

/// By lower-case name.
using FileStates = std::map<std::string, FileState>;

/// One file before and after a change.
struct FileChange {
    FileState before;
    FileState after;
};
using FileChanges = std::map<std::string, FileChange>;

/// Knows what every file of the working copy is, and can bring a former state back byte for byte. What the
/// program writes anew between any two commands (the preview's frameset, the frame test, the script, the
/// launch list, the navigator, the history of addresses) does not count.
class WorkingFiles final {
public:
    /// What a command has made of the files that it changed.
    enum class Made {
        pages,     ///< Stop pages and what lists them, from the tour as it is now.
        everyForm, ///< Those and the framesets of visitors.
        nothing    ///< Nothing was generated: files came from elsewhere.
    };

    /// All must outlive it.
    WorkingFiles(TourContext& context, ContentStore& store);

    const FileStates& states() const { return m_states; }

    /// Looks at the working copy; files that differ from what was known are what `made` says of `tour`.
    void look(Made made, const TourMoment& tour);

    /// Keeps the contents of stored files, since a command is about to replace them: all, those that bear the
    /// names of generated ones (a tour's folder may hold such), or one.
    void keepAll();
    void keepGenerated();
    void keep(const std::string& name);

    /// Makes the working copy's files what `wanted` says, as far as they are not.
    void restore(const FileStates& wanted);

private:
    static FileState describe(const std::string& name, Made made, const TourMoment& tour);
    void put(const std::string& name, const FileState& wanted);
    bool generate(const std::string& name, const TourMoment& shown);

    TourContext& m_context;
    ContentStore& m_store;
    FileStates m_states;
    TourMoment m_shown;     ///< While files are brought back: the tour that was generated from last,
    TourModel m_shownModel; ///< and what it holds.
};

/// The files whose states differ. Stored ones are kept in the first place.
FileChanges changesBetween(const FileStates& before, const FileStates& after);

/// Digests of all contents that the changes may need.
void collectDigests(const FileChanges& changes, std::set<std::string>& digests);

} // namespace wendmark
