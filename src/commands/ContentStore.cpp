#include "commands/ContentStore.h"

#include "base/Digest.h"
#include "base/Files.h"
#include "base/Log.h"

namespace wendmark {

ContentStore::ContentStore(std::string folder, Log& log) : m_folder(std::move(folder)), m_log(log) {
    m_log.skip(files::removeFolder(m_folder));
}

ContentStore::~ContentStore() {
    m_log.skip(files::removeFolder(m_folder));
}

std::string ContentStore::keep(const std::string& path) {
    const files::Contents contents = files::read(path);
    m_log.skip(contents.outcome);
    if (!contents.outcome.ok())
        return {};
    std::string digest = digestOf(contents.bytes);
    if (m_sizes.contains(digest))
        return digest;
    Outcome kept = files::makeFolders(m_folder);
    if (kept.ok())
        kept = files::addName(path, pathOf(digest));
    m_log.skip(kept);
    if (!kept.ok())
        return {};
    m_sizes[digest] = contents.bytes.size();
    m_bytes += contents.bytes.size();
    return digest;
}

bool ContentStore::restore(const std::string& digest, const std::string& path) const {
    if (!m_sizes.contains(digest))
        return false;
    const Outcome copied = files::copy(pathOf(digest), path);
    m_log.skip(copied);
    return copied.ok();
}

void ContentStore::keepOnly(const std::set<std::string>& digests) {
    for (auto known = m_sizes.begin(); known != m_sizes.end();) {
        if (digests.contains(known->first)) {
            ++known;
            continue;
        }
        m_log.skip(files::remove(pathOf(known->first)));
        m_bytes -= known->second;
        known = m_sizes.erase(known);
    }
}

std::string ContentStore::pathOf(const std::string& digest) const {
    return files::join(m_folder, digest);
}

} // namespace wendmark
