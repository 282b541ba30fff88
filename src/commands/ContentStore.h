#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>

namespace wendmark {

class Log;

/// Contents of files that undo may need again, each under its digest in a folder of the program's own. Every
/// failure is a line in the log.
class ContentStore final {
public:
    /// Most bytes that all contents together may have.
    static constexpr std::uint64_t mostBytes = 1024ULL * 1024 * 1024;

    /// What a former run has left in `folder` is removed; the folder is made when it is needed. The log must
    /// outlive the store.
    ContentStore(std::string folder, Log& log);
    ~ContentStore();
    ContentStore(const ContentStore&) = delete;
    ContentStore& operator=(const ContentStore&) = delete;

    /// Keeps what the file at `path` holds, and returns its digest; empty when it could not be kept. The file
    /// may share its bytes with the store: it must be replaced next, not written into.
    std::string keep(const std::string& path);

    /// Replaces the file at `path` by the contents with this digest. False when they are not there any more.
    bool restore(const std::string& digest, const std::string& path) const;

    /// Forgets whatever is not among these.
    void keepOnly(const std::set<std::string>& digests);

    std::uint64_t bytes() const { return m_bytes; }

private:
    std::string pathOf(const std::string& digest) const;

    std::string m_folder;
    Log& m_log;
    std::map<std::string, std::uint64_t> m_sizes; ///< By digest.
    std::uint64_t m_bytes = 0;
};

} // namespace wendmark
