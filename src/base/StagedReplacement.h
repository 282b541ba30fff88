#pragma once

#include "base/Outcome.h"

#include <set>
#include <string>
#include <vector>

namespace wendmark {

/// Replaces many files of one folder at once: every new file is first written completely into a hidden folder
/// inside it, and only when all are there are they renamed into place. Running out of space on the way
/// therefore changes nothing. What was staged and not put in place is removed again.
class StagedReplacement final {
public:
    explicit StagedReplacement(std::string folder);
    ~StagedReplacement();
    StagedReplacement(const StagedReplacement&) = delete;
    StagedReplacement& operator=(const StagedReplacement&) = delete;

    /// Makes the hidden folder, in place of one that a crash left behind.
    Outcome begin();

    /// Copies `source` to be put in place as `name`. May be called again for a name; the later copy counts.
    Outcome stage(const std::string& source, const std::string& name);

    /// Puts everything in place, files that match one of `lastPatterns` (see matchesWildcard()) at the end
    /// and in the order of the patterns, and removes files whose names differ from a new one only in case. A
    /// file that cannot be replaced keeps its old contents, the others go on. Returns the failures.
    std::vector<Outcome> commit(const std::vector<std::string>& lastPatterns);

private:
    std::string stagedPath(const std::string& name) const;
    void putInPlace(const std::string& name, std::vector<Outcome>& failures);
    void removeOtherSpellings(std::vector<Outcome>& failures) const;

    std::string m_folder;
    std::string m_staging;
    std::set<std::string> m_staged;
    std::set<std::string> m_placed;
};

} // namespace wendmark
