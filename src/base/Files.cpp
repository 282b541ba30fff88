#include "base/Files.h"

#include "base/Names.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <random>

namespace wendmark::files {

namespace fs = std::filesystem;

namespace {

fs::path toPath(std::string_view utf8) {
    return fs::path(std::u8string(utf8.begin(), utf8.end()));
}

std::string toUtf8(const fs::path& path) {
    const std::u8string utf8 = path.u8string();
    return std::string(utf8.begin(), utf8.end());
}

std::error_code lastError() {
    return std::error_code(errno != 0 ? errno : EIO, std::generic_category());
}

/// The file that a look-up of `path` finds: the one of exactly this name, else the first one whose name
/// differs only in case, else `path` itself.
fs::path existing(const std::string& path) {
    fs::path wanted = toPath(path);
    std::error_code error;
    if (fs::exists(fs::symlink_status(wanted, error)))
        return wanted;
    const std::string wantedName = lowerCase(toUtf8(wanted.filename()));
    const fs::path folder = wanted.parent_path();
    std::string found;
    fs::directory_iterator entry(folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const std::string name = toUtf8(entry->path().filename());
        if (lowerCase(name) == wantedName && (found.empty() || name < found))
            found = name;
    }
    return found.empty() ? wanted : folder / toPath(found);
}

/// Why `path` must not be opened; no error for a regular file or a link to one.
std::error_code whyNotRegular(const fs::path& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (error || fs::is_regular_file(status))
        return error;
    return std::make_error_code(fs::is_directory(status) ? std::errc::is_a_directory
                                                         : std::errc::not_supported);
}

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using OpenFile = std::unique_ptr<std::FILE, CloseFile>;

OpenFile openFile(const fs::path& path, const char* mode) {
    errno = 0;
    return OpenFile(std::fopen(path.string().c_str(), mode));
}

/// Reads to the end; an error leaves what came before it in `bytes`.
std::error_code readAll(std::FILE* file, std::string& bytes) {
    std::array<char, 65536> block{};
    std::size_t count = 0;
    while ((count = std::fread(block.data(), 1, block.size(), file)) > 0)
        bytes.append(block.data(), count);
    return std::ferror(file) != 0 ? lastError() : std::error_code();
}

std::error_code writeNew(const fs::path& path, std::string_view bytes) {
    OpenFile file = openFile(path, "wbx");
    if (!file)
        return lastError();
    std::setvbuf(file.get(), nullptr, _IONBF, 0);
    if (std::fwrite(bytes.data(), 1, bytes.size(), file.get()) != bytes.size())
        return lastError();
    errno = 0;
    return std::fclose(file.release()) == 0 ? std::error_code() : lastError();
}

std::error_code copyContents(const fs::path& from, const fs::path& to) {
    std::error_code error = whyNotRegular(from);
    if (!error)
        fs::copy_file(from, to, fs::copy_options::none, error);
    if (error)
        return error;
    // A copy of a read-only template is the author's own and may be edited.
    const fs::perms mode = fs::status(to, error).permissions();
    if (!error && (mode & fs::perms::owner_write) == fs::perms::none)
        fs::permissions(to, fs::perms::owner_write, fs::perm_options::add, error);
    return error;
}

std::string randomDigits() {
    static constexpr char hexDigits[] = "0123456789abcdef";
    static std::mt19937_64 generator{std::random_device{}()};
    std::string digits;
    for (int i = 0; i < 16; ++i)
        digits.push_back(hexDigits[generator() & 0xf]);
    return digits;
}

/// A file beside its target that is removed again unless it was renamed over the target. Its name begins with
/// a dot, so that one left behind by a crash is never taken for a file of the tour.
class TemporaryFile final {
public:
    explicit TemporaryFile(const fs::path& target)
        : m_target(target), m_path(target.parent_path() / (".wendmark-" + randomDigits() + ".tmp")) {}
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        std::error_code ignored;
        if (m_created)
            fs::remove(m_path, ignored);
    }

    const fs::path& path() {
        m_created = true;
        return m_path;
    }

    std::error_code renameOverTarget() {
        std::error_code error;
        fs::rename(m_path, m_target, error);
        m_created = static_cast<bool>(error);
        return error;
    }

private:
    fs::path m_target;
    fs::path m_path;
    bool m_created = false;
};

Outcome outcomeOf(std::string_view action, const std::string& path, const std::error_code& error) {
    return error ? Outcome::failure(action, path, error) : Outcome::success();
}

bool liesInside(const fs::path& path, const fs::path& folder) {
    const auto [inFolder, inPath] = std::mismatch(folder.begin(), folder.end(), path.begin(), path.end());
    return inFolder == folder.end();
}

bool leadsOut(const fs::directory_entry& entry, const fs::path& folder) {
    std::error_code error;
    if (!entry.is_symlink(error))
        return false;
    const fs::path target = fs::canonical(entry.path(), error);
    if (error)
        return false; // A broken link is no regular file and is left out for that.
    const fs::path home = fs::canonical(folder, error);
    return error || !liesInside(target, home);
}

/// Calls `take` with each entry of the folder.
template <typename Take>
Outcome forEachEntry(const std::string& folder, Take take) {
    std::error_code error;
    fs::directory_iterator entry(toPath(folder), error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error))
        take(*entry, toUtf8(entry->path().filename()));
    return outcomeOf("list", folder, error);
}

} // namespace

std::string join(std::string_view folder, std::string_view name) {
    std::string path(folder);
    if (!path.empty() && path.back() != pathSeparator)
        path.push_back(pathSeparator);
    return path.append(name);
}

bool canBeRead(const std::string& path) {
    const fs::path found = existing(path);
    return !whyNotRegular(found) && openFile(found, "rb") != nullptr;
}

Contents read(const std::string& path) {
    const fs::path found = existing(path);
    Contents contents{Outcome::success(), {}};
    std::error_code error = whyNotRegular(found);
    if (!error) {
        const OpenFile file = openFile(found, "rb");
        error = file ? readAll(file.get(), contents.bytes) : lastError();
    }
    if (error)
        return {Outcome::failure("read", path, error), {}};
    return contents;
}

Outcome write(const std::string& path, std::string_view bytes) {
    TemporaryFile temporary(toPath(path));
    std::error_code error = writeNew(temporary.path(), bytes);
    if (!error)
        error = temporary.renameOverTarget();
    return outcomeOf("write", path, error);
}

Outcome copy(const std::string& from, const std::string& to) {
    const fs::path source = existing(from);
    if (same(toUtf8(source), to))
        return Outcome::failure("copy", from, std::make_error_code(std::errc::file_exists));
    TemporaryFile temporary(toPath(to));
    std::error_code error = copyContents(source, temporary.path());
    if (!error)
        error = temporary.renameOverTarget();
    return outcomeOf("copy", from + " to " + to, error);
}

Outcome copyNew(const std::string& from, const std::string& to) {
    const fs::path target = toPath(to);
    const std::error_code error = copyContents(existing(from), target);
    std::error_code ignored;
    if (error && error != std::errc::file_exists)
        fs::remove(target, ignored);
    return outcomeOf("copy", from + " to " + to, error);
}

Outcome move(const std::string& from, const std::string& to) {
    std::error_code error;
    fs::rename(toPath(from), toPath(to), error);
    return outcomeOf("replace", to, error);
}

Outcome remove(const std::string& path) {
    const fs::path file = toPath(path);
    std::error_code error;
    if (fs::is_directory(fs::symlink_status(file, error)))
        error = std::make_error_code(std::errc::is_a_directory);
    else if (!fs::remove(file, error) && !error)
        error = std::make_error_code(std::errc::no_such_file_or_directory);
    return outcomeOf("remove", path, error);
}

Outcome makeFolder(const std::string& path) {
    std::error_code error;
    if (!fs::create_directory(toPath(path), error) && !error)
        error = std::make_error_code(std::errc::file_exists);
    return outcomeOf("create the folder", path, error);
}

Outcome removeFolder(const std::string& path) {
    std::error_code error;
    fs::remove_all(toPath(path), error);
    return outcomeOf("remove the folder", path, error);
}

Outcome enterFolder(const std::string& path) {
    std::error_code error;
    fs::current_path(toPath(path), error);
    return outcomeOf("enter the folder", path, error);
}

bool same(const std::string& left, const std::string& right) {
    std::error_code error;
    return fs::equivalent(toPath(left), toPath(right), error);
}

Listing list(const std::string& folder, Links links, std::string_view pattern) {
    Listing listing{Outcome::success(), {}, {}};
    listing.outcome = forEachEntry(folder, [&](const fs::directory_entry& entry, std::string name) {
        if (name.starts_with('.') || !matchesWildcard(name, pattern))
            return;
        std::error_code error;
        if (links == Links::insideFolder && leadsOut(entry, toPath(folder)))
            listing.leadOut.push_back(std::move(name));
        else if (entry.is_regular_file(error))
            listing.names.push_back(std::move(name));
    });
    std::sort(listing.names.begin(), listing.names.end());
    std::sort(listing.leadOut.begin(), listing.leadOut.end());
    return listing;
}

Listing listRemovable(const std::string& folder) {
    Listing listing{Outcome::success(), {}, {}};
    listing.outcome = forEachEntry(folder, [&](const fs::directory_entry& entry, std::string name) {
        std::error_code error;
        if (!fs::is_directory(entry.symlink_status(error)))
            listing.names.push_back(std::move(name));
    });
    std::sort(listing.names.begin(), listing.names.end());
    return listing;
}

} // namespace wendmark::files
