#include "model/StopAddress.h"

#include "base/Names.h"

namespace wendmark {

namespace {

constexpr std::string_view newPage = "newpage.htm";
constexpr std::string_view encodedBlank = "%20";

} // namespace

std::string stopAddressFor(std::string_view location) {
    const bool onDisk = beginsIgnoringCase(trimBlanks(location), "file");
    return onDisk ? lastPathPart(location, '/') : std::string(location);
}

bool isNewPage(std::string_view address) {
    return trimBlanks(address).ends_with(newPage);
}

std::string editableFile(std::string_view location) {
    constexpr std::string_view beforePath = "///";
    const std::string_view trimmed = trimBlanks(location);
    const std::size_t path = location.find(beforePath);
    if (!beginsIgnoringCase(trimmed, "file:") || lowerCase(trimmed).ends_with(newPage) ||
        path == std::string_view::npos)
        return {};
    return std::string(location.substr(path + beforePath.size()));
}

std::string AddSpaces(std::string_view text) {
    std::string spaced(trimBlanks(text));
    for (std::size_t at = spaced.find(encodedBlank); at != std::string::npos;
         at = spaced.find(encodedBlank, at))
        spaced.replace(at, encodedBlank.size(), " ");
    return spaced;
}

} // namespace wendmark
