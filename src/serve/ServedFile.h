#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace wendmark {

/// A file that is open for those who play a tour.
class ServedFile final {
public:
    /// Opens the file of the folder at this path relative to it, decoded, parts separated by "/". None when
    /// visitors are to get no such file: it is not there, or is no regular file; it lies outside the folder,
    /// also by a link; a part of the path begins with a dot, or is a private file of the tour's or what an
    /// editor leaves behind. Never waits.
    static std::optional<ServedFile> open(const std::string& folder, std::string_view path);

    /// Bytes, when it was opened.
    std::uint64_t size() const { return m_size; }

    /// Reads up to `length` bytes from `offset` on; how many there were. 0 at the end, and after a failure.
    std::size_t read(std::uint64_t offset, char* bytes, std::size_t length) const;

private:
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    using OpenFile = std::unique_ptr<std::FILE, Close>;

    ServedFile(OpenFile file, std::uint64_t size) : m_file(std::move(file)), m_size(size) {}

    OpenFile m_file;
    std::uint64_t m_size;
};

/// The type that a web server tells of a file with this name, by its ending.
std::string_view contentTypeOf(std::string_view name);

} // namespace wendmark
