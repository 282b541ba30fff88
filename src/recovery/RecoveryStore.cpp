#include "recovery/RecoveryStore.h"

#include "base/Files.h"
#include "base/Log.h"
#include "model/TourFiles.h"

#include <algorithm>
#include <random>
#include <string_view>

namespace wendmark {

namespace {

constexpr std::string_view recordName = "record";
constexpr std::string_view filesFolder = "files";

std::string filesOf(const std::string& session) {
    return files::join(session, filesFolder);
}

Outcome keepFile(const std::string& path, const std::string& folder, const std::string& name) {
    // Under another name first, so that the former file is there until the new one is.
    const std::string coming = files::join(folder, ".coming");
    static_cast<void>(files::remove(coming)); // There is one only after a failure.
    Outcome added = files::addName(path, coming);
    return added.ok() ? files::move(coming, files::join(folder, name)) : added;
}

} // namespace

AuthorsFiles authorsFiles(const std::string& workingCopy) {
    AuthorsFiles stamps;
    for (const std::string& name : files::list(workingCopy, files::Links::insideFolder).names) {
        if (!isGeneratedFile(name))
            stamps[name] = files::stampOf(files::join(workingCopy, name));
    }
    return stamps;
}

RecoveryStore::RecoveryStore(std::string folder, Log& log) : m_folder(std::move(folder)), m_log(log) {}

bool RecoveryStore::keep(const RecoveryRecord& record, const std::string& workingCopy) {
    const Outcome begun = beginSession();
    if (!begun.ok()) {
        tell(begun);
        return false;
    }
    const Outcome filesKept = keepFiles(workingCopy);
    const Outcome written = files::writeSecured(files::join(m_session, recordName), encodeRecord(record));
    tell(written.ok() ? filesKept : written);
    return written.ok();
}

void RecoveryStore::tell(const Outcome& kept) {
    if (!kept.ok() && !m_isFailing)
        m_log.fail("unsaved work is not kept: " + kept.message());
    if (kept.ok() && m_isFailing)
        m_log.note("unsaved work is kept again");
    m_isFailing = !kept.ok();
}

void RecoveryStore::forget() {
    if (m_session.empty())
        return;
    m_log.skip(files::removeFolder(m_session));
    m_session.clear();
    m_kept.clear();
}

std::vector<RecoverySession> RecoveryStore::leftovers() const {
    std::vector<RecoverySession> sessions;
    for (const std::string& name : files::listFolders(m_folder).names) {
        const std::string folder = files::join(m_folder, name);
        const files::Contents bytes = files::read(files::join(folder, recordName));
        std::optional<RecoveryRecord> record = decodeRecord(bytes.bytes);
        if (folder == m_session)
            continue;
        if (record)
            sessions.push_back({folder, std::move(*record)});
        else if (!bytes.outcome.ok())
            m_log.skip(files::removeFolder(folder)); // The program ended before it had kept anything.
        else
            m_log.warn("cannot understand what is kept in " + folder);
    }
    std::sort(sessions.begin(), sessions.end(),
              [](const RecoverySession& left, const RecoverySession& right) {
                  return left.record.time > right.record.time;
              });
    return sessions;
}

void RecoveryStore::restoreFiles(const RecoverySession& session, const std::string& workingCopy) const {
    const std::string folder = filesOf(session.folder);
    const files::Listing listing = files::list(folder, files::Links::insideFolder);
    m_log.skip(listing.outcome);
    for (const std::string& name : listing.names)
        m_log.skip(files::copy(files::join(folder, name), files::join(workingCopy, name)));
}

void RecoveryStore::discard(const RecoverySession& session) const {
    m_log.skip(files::removeFolder(session.folder));
}

Outcome RecoveryStore::beginSession() {
    if (!m_session.empty())
        return Outcome::success();
    std::random_device random;
    const std::string session = files::join(m_folder, std::to_string(random()) + std::to_string(random()));
    Outcome made = files::makeFolders(filesOf(session));
    if (made.ok())
        m_session = session;
    return made;
}

/// Gives the first failure, after which the other files are kept all the same.
Outcome RecoveryStore::keepFiles(const std::string& workingCopy) {
    const AuthorsFiles present = authorsFiles(workingCopy);
    const std::string folder = filesOf(m_session);
    Outcome outcome = Outcome::success();
    const auto succeeded = [&](Outcome step) {
        const bool ok = step.ok();
        if (!ok && outcome.ok())
            outcome = std::move(step);
        return ok;
    };
    for (const auto& [name, stamp] : present) {
        const auto kept = m_kept.find(name);
        const bool isKept = kept != m_kept.end() && kept->second == stamp;
        if (!isKept && succeeded(keepFile(files::join(workingCopy, name), folder, name)))
            m_kept[name] = stamp;
    }
    for (auto kept = m_kept.begin(); kept != m_kept.end();) {
        if (present.contains(kept->first)) {
            ++kept;
            continue;
        }
        succeeded(files::remove(files::join(folder, kept->first)));
        kept = m_kept.erase(kept);
    }
    return outcome;
}

} // namespace wendmark
