#include "recovery/SavedScripts.h"

#include "base/Files.h"

#include <algorithm>
#include <charconv>
#include <vector>

namespace wendmark {

namespace {

constexpr std::size_t timeDigits = 12;
constexpr std::size_t counterDigits = 6;
constexpr std::string_view tourFileName = "tour.txt";

std::string padded(std::int64_t number, std::size_t digits) {
    const std::string text = std::to_string(number);
    return std::string(digits - std::min(digits, text.size()), '0') + text;
}

/// Sorted by name, the files are sorted by time.
std::string scriptName(std::int64_t time, std::int64_t counter) {
    return padded(time, timeDigits) + "-" + padded(counter, counterDigits) + ".txt";
}

std::int64_t numberIn(std::string_view digits) {
    std::int64_t number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return number;
}

/// A name that comes after the latest one, also when the clock was set back or both are of one second.
std::string nameAfter(const std::vector<std::string>& names, std::int64_t now) {
    std::string name = scriptName(now, 0);
    if (names.empty() || name > names.back())
        return name;
    const std::string_view latest = names.back();
    return scriptName(numberIn(latest.substr(0, timeDigits)),
                      numberIn(latest.substr(std::min(timeDigits + 1, latest.size()), counterDigits)) + 1);
}

std::vector<std::string> scriptNames(const std::string& own) {
    return files::list(own, files::Links::insideFolder, "0*.txt").names;
}

/// Appends the scripts in a folder of one tour.
void addScriptsIn(const std::string& own, std::vector<SavedScript>& scripts) {
    std::string tourPath = files::read(files::join(own, tourFileName)).bytes;
    if (tourPath.ends_with('\n'))
        tourPath.pop_back();
    for (const std::string& name : scriptNames(own)) {
        const std::int64_t time = numberIn(std::string_view(name).substr(0, timeDigits));
        scripts.push_back({files::join(own, name), time, tourPath});
    }
}

/// Those of one time in the order of their saves, which their names tell.
void sortLatestFirst(std::vector<SavedScript>& scripts) {
    std::ranges::stable_sort(scripts, [](const SavedScript& left, const SavedScript& right) {
        return left.time != right.time ? left.time > right.time : left.path > right.path;
    });
}

} // namespace

std::string folderNameFor(std::string_view path) {
    // Fowler, Noll and Vo's hash: names need to differ, not to be safe from forgery.
    std::uint64_t hash = 14695981039346656037U;
    for (const char byte : path)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 1099511628211U;
    static constexpr char hexDigits[] = "0123456789abcdef";
    std::string name;
    for (int shift = 60; shift >= 0; shift -= 4)
        name.push_back(hexDigits[(hash >> shift) & 0xf]);
    return name;
}

Outcome keepSavedScript(const std::string& folder, const std::string& tourPath, std::string_view script,
                        std::int64_t now) {
    const std::string own = files::join(folder, folderNameFor(tourPath));
    Outcome outcome = files::makeFolders(own);
    if (outcome.ok() && !files::canBeRead(files::join(own, tourFileName)))
        outcome = files::write(files::join(own, tourFileName), tourPath + "\n");
    if (!outcome.ok())
        return outcome;
    const std::vector<std::string> names = scriptNames(own);
    if (!names.empty() && files::read(files::join(own, names.back())).bytes == script)
        return outcome;
    outcome = files::write(files::join(own, nameAfter(names, now)), script);
    for (std::size_t i = 0; outcome.ok() && i + savedScriptsKept <= names.size(); ++i)
        outcome = files::remove(files::join(own, names[i]));
    return outcome;
}

std::vector<SavedScript> savedScriptsOf(const std::string& folder, const std::string& tourPath) {
    std::vector<SavedScript> scripts;
    if (!tourPath.empty())
        addScriptsIn(files::join(folder, folderNameFor(tourPath)), scripts);
    sortLatestFirst(scripts);
    return scripts;
}

std::vector<SavedScript> savedScriptsOfAllTours(const std::string& folder) {
    std::vector<SavedScript> scripts;
    for (const std::string& own : files::listFolders(folder).names)
        addScriptsIn(files::join(folder, own), scripts);
    sortLatestFirst(scripts);
    return scripts;
}

} // namespace wendmark
