#include "base/Files.h"

#include "base/Names.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <random>
#include <sys/stat.h>
#include <unistd.h>

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

/// A path and what it leads to.
struct Found {
    fs::path path;
    fs::file_status status;
    std::error_code error; ///< Why the status is not known.
};

Found lookAt(fs::path path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    return {std::move(path), status, error};
}

/// The file that a look-up of `path` finds: the one of exactly this name, else the first one whose name
/// differs only in case, else `path` itself.
Found find(const std::string& path) {
    Found exact = lookAt(toPath(path));
    std::error_code error;
    if (fs::exists(exact.status) || fs::exists(fs::symlink_status(exact.path, error)))
        return exact;
    const std::string wantedName = lowerCase(toUtf8(exact.path.filename()));
    const fs::path folder = exact.path.parent_path();
    std::string found;
    fs::directory_iterator entry(folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const std::string name = toUtf8(entry->path().filename());
        if (lowerCase(name) == wantedName && (found.empty() || name < found))
            found = name;
    }
    return found.empty() ? exact : lookAt(folder / toPath(found));
}

/// Why what was found must not be opened; no error for a regular file or a link to one.
std::error_code whyNotRegular(const Found& found) {
    if (found.error || fs::is_regular_file(found.status))
        return found.error;
    return std::make_error_code(fs::is_directory(found.status) ? std::errc::is_a_directory
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

/// Reads to the end; after an error `bytes` holds what came before it.
std::error_code readAll(std::FILE* file, std::size_t expectedSize, std::string& bytes) {
    constexpr std::size_t least = 4096;
    std::setvbuf(file, nullptr, _IONBF, 0);
    std::size_t count = 0;
    do {
        bytes.resize(std::max({least, expectedSize + 1, 2 * count}));
        count += std::fread(bytes.data() + count, 1, bytes.size() - count, file);
    } while (count == bytes.size());
    bytes.resize(count);
    return std::ferror(file) != 0 ? lastError() : std::error_code();
}

/// Makes a file of a name that is free and lets `fill` write it. After a failure there is none.
template <typename Fill>
std::error_code makeNew(const fs::path& path, Fill fill) {
    OpenFile file = openFile(path, "wbx");
    if (!file)
        return lastError();
    std::setvbuf(file.get(), nullptr, _IONBF, 0);
    std::error_code error = fill(file.get());
    errno = 0;
    if (std::fclose(file.release()) != 0 && !error)
        error = lastError();
    std::error_code ignored;
    if (error)
        fs::remove(path, ignored);
    return error;
}

std::error_code writeAll(std::FILE* file, std::string_view bytes) {
    errno = 0;
    return std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size() ? std::error_code() : lastError();
}

std::error_code copyAll(std::FILE* from, std::FILE* to) {
    constexpr std::size_t blockSize = 65536;
    const auto block = std::make_unique_for_overwrite<char[]>(blockSize);
    std::error_code error;
    std::setvbuf(from, nullptr, _IONBF, 0);
    for (std::size_t count = blockSize; count == blockSize && !error;) {
        errno = 0;
        count = std::fread(block.get(), 1, blockSize, from);
        error = std::ferror(from) != 0 ? lastError() : writeAll(to, {block.get(), count});
    }
    return error;
}

/// Not std::filesystem::copy_file(), which does not tell a full disk from a broken one.
std::error_code copyNewFile(const Found& from, const fs::path& to) {
    if (const std::error_code unfit = whyNotRegular(from))
        return unfit;
    const OpenFile source = openFile(from.path, "rb");
    if (!source)
        return lastError();
    return makeNew(to, [&](std::FILE* target) {
        std::error_code error;
        // A copy of a read-only template is the author's own and may be edited.
        const fs::perms rights = (from.status.permissions() & fs::perms::all) | fs::perms::owner_write;
        fs::permissions(to, rights, error);
        return error ? error : copyAll(source.get(), target);
    });
}

std::string randomDigits() {
    static constexpr char hexDigits[] = "0123456789abcdef";
    static std::mt19937_64 generator{std::random_device{}()};
    std::string digits;
    for (int i = 0; i < 16; ++i)
        digits.push_back(hexDigits[generator() & 0xf]);
    return digits;
}

/// `make` makes a file of a free name, or none and says why.
template <typename Make>
std::error_code replaceCompleteOrNot(const fs::path& target, Make make) {
    // Its name begins with a dot, so that one left behind by a crash is never taken for a file of the tour.
    const fs::path temporary = target.parent_path() / (".wendmark-" + randomDigits() + ".tmp");
    std::error_code error = make(temporary);
    if (error)
        return error;
    fs::rename(temporary, target, error);
    std::error_code ignored;
    if (error)
        fs::remove(temporary, ignored);
    return error;
}

template <typename Make>
std::error_code replaceOldFirst(const fs::path& target, Make make) {
    std::error_code error = make(target);
    std::error_code ignored;
    if (error != std::errc::file_exists || fs::is_directory(fs::symlink_status(target, ignored)))
        return error;
    return fs::remove(target, error) ? make(target) : error;
}

template <typename Make>
std::error_code replace(const std::string& target, Replacing replacing, Make make) {
    return replacing == Replacing::oldFirst ? replaceOldFirst(toPath(target), make)
                                            : replaceCompleteOrNot(toPath(target), make);
}

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
    const Found found = find(path);
    return !whyNotRegular(found) && openFile(found.path, "rb") != nullptr;
}

bool isMissing(const std::string& path) {
    return find(path).status.type() == fs::file_type::not_found;
}

Contents read(const std::string& path) {
    const Found found = find(path);
    Contents contents{Outcome::success(), {}};
    std::error_code error = whyNotRegular(found);
    if (!error) {
        std::error_code sizeUnknown;
        const std::uintmax_t size = fs::file_size(found.path, sizeUnknown);
        const OpenFile file = openFile(found.path, "rb");
        error = file ? readAll(file.get(), sizeUnknown ? 0 : size, contents.bytes) : lastError();
    }
    if (error)
        return {Outcome::failure("read", path, error), {}};
    return contents;
}

Contents readBeginning(const std::string& path, std::size_t most) {
    const Found found = find(path);
    Contents contents{Outcome::success(), {}};
    std::error_code error = whyNotRegular(found);
    if (!error) {
        const OpenFile file = openFile(found.path, "rb");
        contents.bytes.resize(file ? most : 0);
        contents.bytes.resize(file ? std::fread(contents.bytes.data(), 1, most, file.get()) : 0);
        if (!file || std::ferror(file.get()) != 0)
            error = lastError();
    }
    if (error)
        return {Outcome::failure("read", path, error), {}};
    return contents;
}

Outcome write(const std::string& path, std::string_view bytes, Replacing replacing) {
    const auto make = [&](const fs::path& target) {
        return makeNew(target, [&](std::FILE* file) { return writeAll(file, bytes); });
    };
    return outcomeOf("write", path, replace(path, replacing, make));
}

Outcome writeSecured(const std::string& path, std::string_view bytes) {
    const auto make = [&](const fs::path& target) {
        return makeNew(target, [&](std::FILE* file) {
            const std::error_code error = writeAll(file, bytes);
            return error || fsync(fileno(file)) == 0 ? error : lastError();
        });
    };
    return outcomeOf("write", path, replaceCompleteOrNot(toPath(path), make));
}

Outcome copy(const std::string& from, const std::string& to, Replacing replacing) {
    const Found source = find(from);
    std::error_code error;
    if (fs::equivalent(source.path, toPath(to), error))
        return Outcome::failure("copy", from, std::make_error_code(std::errc::file_exists));
    const auto make = [&](const fs::path& target) { return copyNewFile(source, target); };
    return outcomeOf("copy", from + " to " + to, replace(to, replacing, make));
}

Outcome copyNew(const std::string& from, const std::string& to) {
    return outcomeOf("copy", from + " to " + to, copyNewFile(find(from), toPath(to)));
}

Outcome addName(const std::string& from, const std::string& to) {
    const Found source = find(from);
    if (const std::error_code unfit = whyNotRegular(source))
        return Outcome::failure("copy", from + " to " + to, unfit);
    std::error_code error;
    if (!fs::is_symlink(source.path, error))
        fs::create_hard_link(source.path, toPath(to), error);
    else
        error = std::make_error_code(std::errc::not_supported);
    return error ? copyNew(from, to) : Outcome::success();
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

Outcome makeFolders(const std::string& path) {
    std::error_code error;
    fs::create_directories(toPath(path), error);
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

bool leadsInside(const std::string& path, const std::string& folder) {
    std::error_code error;
    const fs::path target = fs::canonical(find(path).path, error);
    if (error)
        return false;
    const fs::path home = fs::canonical(toPath(folder), error);
    return !error && liesInside(target, home);
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

Listing listFolders(const std::string& folder) {
    Listing listing{Outcome::success(), {}, {}};
    listing.outcome = forEachEntry(folder, [&](const fs::directory_entry& entry, std::string name) {
        std::error_code error;
        if (fs::is_directory(entry.symlink_status(error)))
            listing.names.push_back(std::move(name));
    });
    std::sort(listing.names.begin(), listing.names.end());
    return listing;
}

std::string stampOf(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return {};
    std::string stamp = std::to_string(status.st_dev);
    for (const auto number : {std::int64_t(status.st_ino), std::int64_t(status.st_size),
                              std::int64_t(status.st_mtim.tv_sec), std::int64_t(status.st_mtim.tv_nsec)})
        stamp.append(" ").append(std::to_string(number));
    return stamp;
}

std::vector<std::string> otherSpellings(const std::string& folder, const std::set<std::string>& names) {
    std::vector<std::string> others = list(folder, Links::anywhere).names;
    std::erase_if(others, [&](const std::string& name) {
        const std::string lowered = lowerCase(name);
        // A disk that ignores case may still list a replaced file under its old spelling.
        return name == lowered || !names.contains(lowered) || same(join(folder, name), join(folder, lowered));
    });
    return others;
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
