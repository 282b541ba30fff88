#include "commands/StopLook.h"

#include "base/Files.h"
#include "base/Names.h"
#include "model/FoundLinks.h"
#include "model/HtmlText.h"
#include "model/StopAddress.h"
#include "model/TourModel.h"
#include "model/Workspace.h"

#include <algorithm>
#include <functional>
#include <set>

namespace wendmark {

namespace {

/// What a saved script holds for an address that there is not.
constexpr std::string_view noAddress = "NoURL";

bool hasWords(std::string_view narration) {
    const auto isSpace = [](char c) { return isHtmlSpace(c); };
    const auto* const first = std::find_if_not(narration.begin(), narration.end(), isSpace);
    narration.remove_prefix(static_cast<std::size_t>(first - narration.begin()));
    const bool placeholder = narration.starts_with(noNarration);
    narration.remove_prefix(placeholder ? noNarration.size() : 0);
    return !std::all_of(narration.begin(), narration.end(), isSpace);
}

StopLook look(const Stop& stop, const std::function<bool(const std::string&)>& isThere) {
    StopLook look;
    look.title = visibleText(stop.stopTitle);
    look.noWords = !hasWords(stop.stopNarration);
    if (isRemoteAddress(stop.stopURL)) {
        look.page = isWebAddress(stop.stopURL) ? hostOf(stop.stopURL) : stop.stopURL;
        return look;
    }
    const std::string name = localFileName(stop.stopURL);
    look.noPage = name.empty() || name == noAddress || isNewPage(stop.stopURL);
    if (!look.noPage) {
        look.page = name;
        look.fileMissing = !isThere(name);
    }
    return look;
}

} // namespace

StopLook lookAtStop(const Stop& stop, const Workspace& workspace) {
    return look(stop, [&](const std::string& name) { return files::canBeRead(workspace.workingFile(name)); });
}

std::vector<StopLook> lookAtStops(const TourModel& model, const Workspace& workspace) {
    std::set<std::string> names;
    for (const std::string& name :
         files::list(workspace.folders().newTourPath, files::Links::insideFolder).names)
        names.insert(lowerCase(name));
    std::vector<StopLook> looks;
    for (const Stop& stop : model.stops)
        looks.push_back(look(stop, [&](const std::string& name) { return names.contains(lowerCase(name)); }));
    return looks;
}

} // namespace wendmark
