#pragma once

#include <map>
#include <string>
#include <vector>

namespace wendmark::test {

/// Records what happens to the files of some folders, in the order in which it happens across all of them.
class FolderWatch final {
public:
    /// Watches existing folders; the keys are the names by which the events tell them apart.
    explicit FolderWatch(const std::map<std::string, std::string>& folders);
    ~FolderWatch();
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;

    /// What has happened since the last call: "+folder/name" when a file got its contents, "-folder/name"
    /// when it was removed. Names that begin with a dot are left out.
    std::vector<std::string> events();

private:
    int m_queue;
    std::map<int, std::string> m_names;
};

} // namespace wendmark::test
