#pragma once

#include <map>
#include <string>
#include <string_view>

namespace wendmark::test {

/// A folder of its own for one test, removed with everything in it when the test ends. Leaves the current
/// folder of the process as it was before.
class ScratchFolder final {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    /// Without a separator at its end.
    const std::string& path() const { return m_path; }
    std::string operator/(std::string_view name) const;

private:
    std::string m_path;
    std::string m_formerCurrentFolder;
};

/// Writes a file, making its folder if needed; a test that cannot is a broken test and throws.
void writeFile(const std::string& path, std::string_view bytes);

/// Contents of a file; throws when it cannot be read.
std::string readFile(const std::string& path);

bool exists(const std::string& path);

/// Every file below a folder, by its path relative to it, with its contents. Dot names and links included.
std::map<std::string, std::string> folderContents(const std::string& folder);

/// The lines joined by CR LF, with one at the end.
std::string crlfLines(std::initializer_list<std::string_view> lines);

} // namespace wendmark::test
