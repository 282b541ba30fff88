#include "recovery/SavedScripts.h"

#include "base/Files.h"

#include <cstdio>

namespace wendmark {

namespace {

/// Sorted by name, the files are sorted by time.
std::string scriptName(std::int64_t time, int number) {
    char name[48];
    std::snprintf(name, sizeof name, "%012lld-%02d.txt", static_cast<long long>(time), number);
    return name;
}

Outcome writeUnderFreeName(const std::string& folder, std::string_view script, std::int64_t now) {
    constexpr int mostInASecond = 100;
    int number = 0;
    while (number < mostInASecond - 1 && files::canBeRead(files::join(folder, scriptName(now, number))))
        ++number;
    return files::write(files::join(folder, scriptName(now, number)), script);
}

} // namespace

std::string folderNameFor(std::string_view path) {
    // Fowler, Noll and Vo's hash: names need to differ, not to be safe from forgery.
    std::uint64_t hash = 14695981039346656037U;
    for (const char byte : path)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 1099511628211U;
    char name[17];
    std::snprintf(name, sizeof name, "%016llx", static_cast<unsigned long long>(hash));
    return name;
}

Outcome keepSavedScript(const std::string& folder, const std::string& tourPath, std::string_view script,
                        std::int64_t now) {
    const std::string own = files::join(folder, folderNameFor(tourPath));
    Outcome outcome = files::makeFolders(own);
    if (outcome.ok() && !files::canBeRead(files::join(own, "tour.txt")))
        outcome = files::write(files::join(own, "tour.txt"), tourPath + "\n");
    if (!outcome.ok())
        return outcome;
    std::vector<std::string> names = files::list(own, files::Links::insideFolder, "0*.txt").names;
    if (!names.empty() && files::read(files::join(own, names.back())).bytes == script)
        return outcome;
    outcome = writeUnderFreeName(own, script, now);
    for (std::size_t i = 0; outcome.ok() && i + savedScriptsKept <= names.size(); ++i)
        outcome = files::remove(files::join(own, names[i]));
    return outcome;
}

} // namespace wendmark
