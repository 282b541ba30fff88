#include "tour_cli/TourTarget.h"

#include "base/Files.h"
#include "base/Names.h"
#include "model/TourFiles.h"

#include <algorithm>
#include <filesystem>
#include <random>
#include <set>
#include <vector>

namespace wendmark::cli {

namespace fs = std::filesystem;

namespace {

/// Moves files of one folder over those of another, and all of them back when one does not go.
class Replacement final {
public:
    /// `replaced` is an empty folder; all three lie on one disk.
    Replacement(const std::string& from, const std::string& to, const std::string& replaced)
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

void replaceAll(std::string& text, const std::string& part, const std::string& by) {
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + by.size()))
        text.replace(at, part.size(), by);
}

sigset_t endingSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGHUP, SIGINT, SIGTERM})
        sigaddset(&signals, signal);
    return signals;
}

} // namespace

HeldSignals::HeldSignals() {
    const sigset_t ending = endingSignals();
    sigprocmask(SIG_BLOCK, &ending, &m_before);
}

HeldSignals::~HeldSignals() {
    sigprocmask(SIG_SETMASK, &m_before, nullptr);
}

bool HeldSignals::isWaiting() {
    sigset_t waiting;
    sigpending(&waiting);
    return sigismember(&waiting, SIGHUP) == 1 || sigismember(&waiting, SIGINT) == 1 ||
           sigismember(&waiting, SIGTERM) == 1;
}

TourTarget::TourTarget(std::string folder)
    : m_folder(std::move(folder)), m_parent(fs::path(m_folder).parent_path().string()) {}

TourTarget::~TourTarget() {
    if (!m_finished.empty() && !m_keepsOld)
        static_cast<void>(files::removeFolder(m_finished)); // Nobody is left to be told.
}

Outcome TourTarget::make() {
    std::error_code error;
    if (fs::exists(fs::symlink_status(m_folder, error)))
        return Outcome::failure("create the folder", m_folder, std::make_error_code(std::errc::file_exists));
    m_isNew = true;
    return makeHiddenIn(m_parent.path());
}

Outcome TourTarget::makeIfMissing() {
    std::error_code error;
    if (fs::is_directory(m_folder, error))
        return makeHiddenIn(m_folder);
    Outcome parentMade = m_parent.makeIfMissing();
    return parentMade.ok() ? make() : parentMade;
}

Outcome TourTarget::putInPlace() {
    if (HeldSignals::isWaiting())
        return Outcome::failure(m_folder + " stays what it was: the run was interrupted");
    Outcome outcome = m_isNew ? files::move(m_finished, m_folder) : replaceFiles();
    if (outcome.ok())
        m_parent.keep();
    return outcome;
}

std::string TourTarget::withoutHiddenFolder(std::string text) const {
    if (m_keepsOld)
        return text;
    replaceAll(text, m_finished, m_folder);
    return text;
}

Outcome TourTarget::makeHiddenIn(const std::string& place) {
    // Unlike any other run's.
    m_finished = files::join(place, ".wendmark-publish-" + std::to_string(std::random_device{}()));
    Outcome made = files::makeFolder(m_finished);
    return made.ok() ? made : Outcome::failure(withoutHiddenFolder(made.message()));
}

Outcome TourTarget::replaceFiles() {
    files::Listing finished = files::list(m_finished, files::Links::anywhere);
    if (!finished.outcome.ok())
        return finished.outcome;
    sortByPatterns(finished.names, savedLast());
    const std::string replaced = files::join(m_finished, "replaced");
    Outcome made = files::makeFolder(replaced);
    if (!made.ok())
        return made;
    Replacement replacement(m_finished, m_folder, replaced);
    Outcome outcome = replacement.moveAll(finished.names);
    m_keepsOld = replacement.keepsOld();
    return m_keepsOld
               ? Outcome::failure(outcome.message() + "; files that did not go back are in " + replaced)
               : outcome;
}

} // namespace wendmark::cli
