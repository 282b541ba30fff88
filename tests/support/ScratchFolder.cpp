#include "support/ScratchFolder.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

namespace wendmark::test {

namespace fs = std::filesystem;

namespace {

/// Pictures for readers show a folder of a plain name, which is given from outside.
fs::path newFolder() {
    if (const char* const named = std::getenv("WENDMARK_SCRATCH_FOLDER"); named != nullptr)
        return named;
    return fs::temp_directory_path() / ("wendmark-test-" + std::to_string(std::random_device{}()));
}

} // namespace

ScratchFolder::ScratchFolder() : m_formerCurrentFolder(fs::current_path().string()) {
    const fs::path folder = newFolder();
    if (!fs::create_directory(folder))
        throw std::runtime_error("no scratch folder " + folder.string());
    m_path = fs::canonical(folder).string();
}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    fs::current_path(m_formerCurrentFolder, ignored);
    for (fs::recursive_directory_iterator entry(m_path, ignored), end; entry != end;
         entry.increment(ignored)) {
        if (entry->is_directory(ignored) && !entry->is_symlink(ignored))
            fs::permissions(entry->path(), fs::perms::owner_all, fs::perm_options::add, ignored);
    }
    fs::remove_all(m_path, ignored);
}

std::string ScratchFolder::operator/(std::string_view name) const {
    return m_path + "/" + std::string(name);
}

void writeFile(const std::string& path, std::string_view bytes) {
    fs::create_directories(fs::path(path).parent_path());
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush())
        throw std::runtime_error("cannot write " + path);
}

std::string readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error("cannot read " + path);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

bool exists(const std::string& path) {
    return fs::exists(fs::symlink_status(path));
}

std::map<std::string, std::string> folderContents(const std::string& folder) {
    std::map<std::string, std::string> contents;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file())
            contents[entry.path().lexically_relative(folder).string()] = readFile(entry.path().string());
    }
    return contents;
}

std::string crlfLines(std::initializer_list<std::string_view> lines) {
    std::string text;
    for (const std::string_view line : lines)
        text.append(line).append("\r\n");
    return text;
}

} // namespace wendmark::test
