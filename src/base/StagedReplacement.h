#pragma once

#include "base/Outcome.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace wendmark {

/// Replaces many files of one folder at once: every new file is first written completely into a hidden folder
/// on the same disk, and only when all are there are they renamed into place. Running out of space on the way
/// therefore changes nothing. What was staged and not put in place is removed again. The hidden folder
/// stays when it holds old files that could not be put back.
class StagedReplacement final {
public:
    /// The hidden folder lies in `folder`.
    explicit StagedReplacement(std::string folder);

    /// The hidden folder is called `hiddenName`, which nobody else may use.
    StagedReplacement(std::string folder, std::string_view hiddenName);

    ~StagedReplacement();
    StagedReplacement(const StagedReplacement&) = delete;
    StagedReplacement& operator=(const StagedReplacement&) = delete;

    /// Makes the hidden folder, in place of one that a crash left behind.
    Outcome begin();

    /// Same for a folder that is not there yet: the hidden one lies beside it and becomes the folder. Fails
    /// when there is one.
    Outcome beginNew();

    /// The hidden folder, empty at first. Whatever file is written there belongs to the new ones.
    const std::string& staging() const { return m_staging; }

    /// Copies `source` to be put in place as `name`. May be called again for a name; the later copy counts.
    Outcome stage(const std::string& source, const std::string& name);

    /// Puts everything in place, files that match one of `lastPatterns` (see matchesWildcard()) at the end
    /// and in the order of the patterns, and removes files whose names differ from a new one only in case. A
    /// file that cannot be replaced keeps its old contents, the others go on. Returns the failures.
    std::vector<Outcome> commit(const std::vector<std::string>& lastPatterns);

    /// Same, all or nothing: when one file cannot be replaced, the old ones are put back. Those that do not
    /// go back stay in the hidden folder, and the failure names it.
    Outcome commitAllOrNothing(const std::vector<std::string>& lastPatterns);

    /// Whether the hidden folder stays, since it holds what is nowhere else.
    bool keepsOld() const { return m_keepsOld; }

private:
    Outcome makeStagingIn(const std::string& place);
    std::string stagedPath(const std::string& name) const;
    Outcome listStaged(const std::vector<std::string>& lastPatterns, std::vector<std::string>& names) const;
    void putInPlace(const std::string& name, std::vector<Outcome>& failures);
    void removeOtherSpellings(std::vector<Outcome>& failures) const;
    Outcome replaceFiles(const std::vector<std::string>& lastPatterns);

    std::string m_folder;
    std::string m_hiddenName;
    std::string m_staging; ///< Empty before it is made.
    bool m_isNew = false;
    bool m_keepsOld = false;
    std::set<std::string> m_staged;
    std::set<std::string> m_placed;
};

} // namespace wendmark
