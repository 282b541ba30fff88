#include "base/StagedReplacement.h"

#include "base/Files.h"
#include "base/Names.h"

namespace wendmark {

StagedReplacement::StagedReplacement(std::string folder)
    : m_folder(std::move(folder)), m_staging(files::join(m_folder, ".wendmark-save")) {}

StagedReplacement::~StagedReplacement() {
    static_cast<void>(files::removeFolder(m_staging)); // The next begin() tries again.
}

Outcome StagedReplacement::begin() {
    const Outcome removed = files::removeFolder(m_staging);
    return removed.ok() ? files::makeFolder(m_staging) : removed;
}

Outcome StagedReplacement::stage(const std::string& source, const std::string& name) {
    const std::string target = stagedPath(name);
    if (m_staged.erase(name) > 0) {
        Outcome removed = files::remove(target);
        if (!removed.ok())
            return removed;
    }
    Outcome copied = files::copyNew(source, target);
    if (copied.ok())
        m_staged.insert(name);
    return copied;
}

std::vector<Outcome> StagedReplacement::commit(const std::vector<std::string>& lastPatterns) {
    std::vector<Outcome> failures;
    std::vector<std::string> names(m_staged.begin(), m_staged.end());
    sortByPatterns(names, lastPatterns);
    for (const std::string& name : names)
        putInPlace(name, failures);
    removeOtherSpellings(failures);
    return failures;
}

std::string StagedReplacement::stagedPath(const std::string& name) const {
    return files::join(m_staging, name);
}

void StagedReplacement::putInPlace(const std::string& name, std::vector<Outcome>& failures) {
    Outcome moved = files::move(stagedPath(name), files::join(m_folder, name));
    if (moved.ok())
        m_placed.insert(name);
    else
        failures.push_back(std::move(moved));
}

void StagedReplacement::removeOtherSpellings(std::vector<Outcome>& failures) const {
    for (const std::string& name : files::otherSpellings(m_folder, m_placed)) {
        Outcome removed = files::remove(files::join(m_folder, name));
        if (!removed.ok())
            failures.push_back(std::move(removed));
    }
}

} // namespace wendmark
