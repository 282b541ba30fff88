#include "serve/ServedFile.h"

#include "base/Names.h"
#include "model/TourFiles.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <sys/types.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace wendmark {

namespace {

namespace fs = std::filesystem;

struct Type {
    std::string_view ending;
    std::string_view type;
};

/// HTML without its encoding: pages say themselves which one they have.
constexpr std::array<Type, 34> types = {{{".htm", "text/html"},       {".html", "text/html"},
                                         {".css", "text/css"},        {".js", "text/javascript"},
                                         {".mjs", "text/javascript"}, {".json", "application/json"},
                                         {".xml", "application/xml"}, {".xhtml", "application/xhtml+xml"},
                                         {".txt", "text/plain"},      {".pdf", "application/pdf"},
                                         {".gif", "image/gif"},       {".jpg", "image/jpeg"},
                                         {".jpeg", "image/jpeg"},     {".png", "image/png"},
                                         {".svg", "image/svg+xml"},   {".webp", "image/webp"},
                                         {".avif", "image/avif"},     {".bmp", "image/bmp"},
                                         {".ico", "image/x-icon"},    {".mp3", "audio/mpeg"},
                                         {".m4a", "audio/mp4"},       {".oga", "audio/ogg"},
                                         {".ogg", "audio/ogg"},       {".opus", "audio/ogg"},
                                         {".wav", "audio/wav"},       {".mid", "audio/midi"},
                                         {".mp4", "video/mp4"},       {".m4v", "video/mp4"},
                                         {".ogv", "video/ogg"},       {".webm", "video/webm"},
                                         {".woff", "font/woff"},      {".woff2", "font/woff2"},
                                         {".ttf", "font/ttf"},        {".otf", "font/otf"}}};

bool isLeftByEditor(std::string_view lowerCaseName) {
    constexpr std::array<std::string_view, 7> endings = {"~",    ".bak",  ".old", ".orig",
                                                         ".swp", ".save", ".tmp"};
    return lowerCaseName.starts_with('#') ||
           std::any_of(endings.begin(), endings.end(),
                       [&](std::string_view ending) { return lowerCaseName.ends_with(ending); });
}

bool isForVisitors(std::string_view part) {
    const bool isName = !part.empty() && !part.starts_with('.') &&
                        part.find('\0') == std::string_view::npos &&
                        part.find('\\') == std::string_view::npos;
    return isName && !isPrivateFile(part) && !isLeftByEditor(lowerCase(part));
}

bool areForVisitors(std::string_view path) {
    for (std::size_t begin = 0; begin <= path.size();) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        if (!isForVisitors(path.substr(begin, end - begin)))
            return false;
        begin = end + 1;
    }
    return true;
}

/// Where the path leads with all links followed; empty when that is nowhere, or outside the folder.
fs::path leadsTo(const std::string& folder, std::string_view path) {
    std::error_code error;
    const fs::path inside = fs::canonical(folder, error);
    const fs::path target = error ? fs::path() : fs::canonical(inside / path, error);
    if (error)
        return {};
    const auto end = std::mismatch(inside.begin(), inside.end(), target.begin(), target.end()).first;
    return end == inside.end() ? target : fs::path();
}

} // namespace

std::optional<ServedFile> ServedFile::open(const std::string& folder, std::string_view path) {
    const fs::path target = areForVisitors(path) ? leadsTo(folder, path) : fs::path();
    // A link may have another name than what it leads to; a pipe would have to be waited for.
    std::error_code error;
    if (target.empty() || !isForVisitors(target.filename().string()) || !fs::is_regular_file(target, error))
        return std::nullopt;
    OpenFile file(std::fopen(target.c_str(), "rbe"));
    if (!file)
        return std::nullopt;
    const std::uintmax_t size = fs::file_size(target, error);
    return error ? std::nullopt : std::optional(ServedFile(std::move(file), size));
}

std::size_t ServedFile::read(std::uint64_t offset, char* bytes, std::size_t length) const {
    const ssize_t count = ::pread(::fileno(m_file.get()), bytes, length, static_cast<off_t>(offset));
    return count > 0 ? static_cast<std::size_t>(count) : 0;
}

std::string_view contentTypeOf(std::string_view name) {
    const std::string lower = lowerCase(name);
    const auto* const found = std::find_if(types.begin(), types.end(),
                                           [&](const Type& one) { return lower.ends_with(one.ending); });
    return found == types.end() ? "application/octet-stream" : found->type;
}

} // namespace wendmark
