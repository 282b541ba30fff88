#include "base/StagedReplacement.h"

#include "base/Files.h"
#include "base/Names.h"

#include <filesystem>

namespace wendmark {

namespace fs = std::filesystem;

namespace {

/// Moves files of one folder over those of another, and all of them back when one does not go.
class ReversibleMove final {
public:
    /// `replaced` is an empty folder; all three lie on one disk.
    ReversibleMove(const std::string& from, const std::string& to, const std::string& replaced)
        : m_from(from), m_to(to), m_replaced(replaced) {}

    /// Goes by the order of the names.
    Outcome moveAll(const std::vector<std::string>& names) {
        for (const std::string& name : names) {
            Outcome moved = keepOld(name);
            if (moved.ok())
                moved = moveNew(name);
            if (!moved.ok())
                return undo(std::move(moved));
        }
        for (const std::string& name : files::otherSpellings(m_to, m_new)) {
            Outcome moved = moveOld(name);
            if (!moved.ok())
                return undo(std::move(moved));
        }
        return Outcome::success();
    }

    /// Whether, after a failure, something of the old files did not go back and is still in `replaced`.
    bool keepsOld() const { return m_keepsOld; }

private:
    Outcome keepOld(const std::string& name) {
        const std::string path = files::join(m_to, name);
        std::error_code error;
        const fs::file_status status = fs::symlink_status(path, error);
        if (!fs::exists(status))
            return Outcome::success();
        if (fs::is_directory(status))
            return Outcome::failure("replace", path, std::make_error_code(std::errc::is_a_directory));
        // With a second name, the first one is at no moment without a file. Not every disk knows them.
        fs::create_hard_link(path, files::join(m_replaced, name), error);
        if (error)
            return moveOld(name);
        m_old.insert(name);
        return Outcome::success();
    }

    Outcome moveOld(const std::string& name) { return move(name, m_to, m_replaced, m_old); }

    Outcome moveNew(const std::string& name) { return move(name, m_from, m_to, m_new); }

    /// Says of a failure that the file in its place cannot be replaced, whichever step it was.
    Outcome move(const std::string& name, const std::string& from, const std::string& to,
                 std::set<std::string>& moved) const {
        std::error_code error;
        fs::rename(files::join(from, name), files::join(to, name), error);
        if (error)
            return Outcome::failure("replace", files::join(m_to, name), error);
        moved.insert(name);
        return Outcome::success();
    }

    Outcome undo(Outcome reason) {
        for (const std::string& name : m_old) {
            if (!files::move(files::join(m_replaced, name), files::join(m_to, name)).ok())
                m_keepsOld = true;
        }
        for (const std::string& name : m_new) {
            if (!m_old.contains(name))
                static_cast<void>(files::remove(files::join(m_to, name)));
        }
        return reason;
    }

    const std::string& m_from;
    const std::string& m_to;
    const std::string& m_replaced;
    std::set<std::string> m_old; ///< Names in `replaced`.
    std::set<std::string> m_new; ///< Names moved so far.
    bool m_keepsOld = false;
};

bool isTaken(const std::string& path) {
    std::error_code error;
    return fs::exists(fs::symlink_status(path, error));
}

} // namespace

StagedReplacement::StagedReplacement(std::string folder)
    : StagedReplacement(std::move(folder), ".wendmark-save") {}

StagedReplacement::StagedReplacement(std::string folder, std::string_view hiddenName)
    : m_folder(std::move(folder)), m_hiddenName(hiddenName) {}

StagedReplacement::~StagedReplacement() {
    if (!m_staging.empty() && !m_keepsOld)
        static_cast<void>(files::removeFolder(m_staging)); // Nobody is left to be told.
}

Outcome StagedReplacement::begin() {
    return makeStagingIn(m_folder);
}

Outcome StagedReplacement::beginNew() {
    if (isTaken(m_folder))
        return Outcome::failure("create the folder", m_folder, std::make_error_code(std::errc::file_exists));
    m_isNew = true;
    return makeStagingIn(fs::path(m_folder).parent_path().string());
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
    std::vector<std::string> names;
    if (Outcome listed = listStaged(lastPatterns, names); !listed.ok())
        return {std::move(listed)};
    for (const std::string& name : names)
        putInPlace(name, failures);
    removeOtherSpellings(failures);
    return failures;
}

Outcome StagedReplacement::commitAllOrNothing(const std::vector<std::string>& lastPatterns) {
    return m_isNew ? files::move(m_staging, m_folder) : replaceFiles(lastPatterns);
}

Outcome StagedReplacement::makeStagingIn(const std::string& place) {
    m_staging = files::join(place, m_hiddenName);
    if (isTaken(m_staging)) {
        Outcome removed = files::removeFolder(m_staging);
        if (!removed.ok())
            return removed;
    }
    return files::makeFolder(m_staging);
}

std::string StagedReplacement::stagedPath(const std::string& name) const {
    return files::join(m_staging, name);
}

Outcome StagedReplacement::listStaged(const std::vector<std::string>& lastPatterns,
                                      std::vector<std::string>& names) const {
    files::Listing staged = files::list(m_staging, files::Links::anywhere);
    names = std::move(staged.names);
    sortByPatterns(names, lastPatterns);
    return staged.outcome;
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

Outcome StagedReplacement::replaceFiles(const std::vector<std::string>& lastPatterns) {
    std::vector<std::string> names;
    Outcome outcome = listStaged(lastPatterns, names);
    const std::string replaced = stagedPath("replaced");
    if (outcome.ok())
        outcome = files::makeFolder(replaced);
    if (!outcome.ok())
        return outcome;
    ReversibleMove moving(m_staging, m_folder, replaced);
    outcome = moving.moveAll(names);
    m_keepsOld = moving.keepsOld();
    return m_keepsOld
               ? Outcome::failure(outcome.message() + "; files that did not go back are in " + replaced)
               : outcome;
}

} // namespace wendmark
