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
    if (m_session.empty() && !beginSession())
        return false;
    keepFiles(workingCopy);
    const Outcome written = files::writeSecured(files::join(m_session, recordName), encodeRecord(record));
    m_log.skip(written);
    return written.ok();
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

bool RecoveryStore::beginSession() {
    std::random_device random;
    const std::string session = files::join(m_folder, std::to_string(random()) + std::to_string(random()));
    const Outcome made = files::makeFolders(filesOf(session));
    m_log.skip(made);
    if (made.ok())
        m_session = session;
    return made.ok();
}

void RecoveryStore::keepFiles(const std::string& workingCopy) {
    const AuthorsFiles present = authorsFiles(workingCopy);
    const std::string folder = filesOf(m_session);
    for (const auto& [name, stamp] : present) {
        if (const auto kept = m_kept.find(name); kept != m_kept.end() && kept->second == stamp)
            continue;
        // Under another name first, so that the former file is there until the new one is.
        const std::string coming = files::join(folder, ".coming");
        static_cast<void>(files::remove(coming)); // There is one only after a failure.
        Outcome copied = files::addName(files::join(workingCopy, name), coming);
        if (copied.ok())
            copied = files::move(coming, files::join(folder, name));
        m_log.skip(copied);
        if (copied.ok())
            m_kept[name] = stamp;
    }
    for (auto kept = m_kept.begin(); kept != m_kept.end();) {
        if (present.contains(kept->first)) {
            ++kept;
            continue;
        }
        m_log.skip(files::remove(files::join(folder, kept->first)));
        kept = m_kept.erase(kept);
    }
}

} // namespace wendmark
