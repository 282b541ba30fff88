#include "check/TourCheck.h"

#include "base/Files.h"
#include "base/Names.h"
#include "commands/StopLook.h"
#include "model/FoundLinks.h"
#include "model/PageParts.h"
#include "model/StopAddress.h"
#include "model/TourModel.h"
#include "model/Workspace.h"
#include "publish/CardPage.h"

#include <algorithm>
#include <map>
#include <set>

namespace wendmark {

namespace {

bool isPage(const std::string& name) {
    const std::string lowered = lowerCase(name);
    return lowered.ends_with(".htm") || lowered.ends_with(".html") || lowered.ends_with(".xhtml");
}

/// The files that a page of the working copy names, and that are not there.
std::vector<std::string> missingPartsOf(const std::string& page, const Workspace& workspace) {
    std::set<std::string> missing;
    for (const PartReference& part : partsOfPage(page).references) {
        if (!files::canBeRead(workspace.workingFile(part.path)))
            missing.insert(part.path);
    }
    return {missing.begin(), missing.end()};
}

std::string sentenceAbout(const std::vector<std::string>& missingParts) {
    std::string sentence =
        missingParts.size() == 1 ? "A file of the page is missing:" : "Files of the page are missing:";
    for (const std::string& part : missingParts)
        sentence.append(&part == missingParts.data() ? " " : ", ").append(part);
    return sentence + ".";
}

void judgePageOf(StopToCheck& stop, const std::string& name, const Workspace& workspace) {
    if (!isPage(name))
        return;
    const std::string page = files::read(workspace.workingFile(name)).bytes;
    stop.missingParts = missingPartsOf(page, workspace);
    if (!stop.missingParts.empty())
        stop.known.why = sentenceAbout(stop.missingParts);
    if (std::string original = originalOfCard(page); isWebAddress(original))
        stop.original = std::move(original);
}

void judgeFile(StopToCheck& stop, const StopLook& look, const Workspace& workspace) {
    const std::string name = localFileName(stop.address);
    stop.known.finalAddress = stop.address;
    if (look.noPage) {
        stop.known.verdict = Verdict::noPage;
    } else if (look.fileMissing) {
        stop.known.verdict = Verdict::fileMissing;
        stop.known.why = "The tour has no file " + name + ".";
    } else {
        judgePageOf(stop, name, workspace);
    }
}

} // namespace

std::vector<StopToCheck> stopsToCheck(const TourModel& tour, const Workspace& workspace) {
    const std::vector<StopLook> looks = lookAtStops(tour, workspace);
    std::vector<StopToCheck> stops;
    std::map<std::string, std::int16_t> firstOf;
    for (const StopLook& look : looks) {
        StopToCheck stop;
        stop.stop = static_cast<std::int16_t>(stops.size() + 1);
        stop.title = look.title;
        stop.address = tour.stops.at(stop.stop).stopURL;
        stop.asksTheWeb = isWebAddress(stop.address);
        if (!stop.asksTheWeb && isRemoteAddress(stop.address)) {
            stop.known = {
                Verdict::fails, "Browsers show no pages from such an address.", stop.address, {}, {}};
        } else if (!stop.asksTheWeb) {
            judgeFile(stop, look, workspace);
        }
        if (!look.noPage) {
            const auto [first, isNew] = firstOf.try_emplace(pageOf(stop.address), stop.stop);
            stop.sameAs = isNew ? std::int16_t{0} : first->second;
        }
        stops.push_back(std::move(stop));
    }
    return stops;
}

std::string pageOf(const std::string& address) {
    return address.substr(0, address.find('#'));
}

Posting usualPosting(const TourModel& tour) {
    const std::vector<WebOrigin> sites = audienceOf(tour, Posting::https).sites;
    const bool isPlain =
        std::ranges::all_of(sites, [](const WebOrigin& site) { return site.scheme == "http"; });
    return isPlain && !sites.empty() ? Posting::http : Posting::https;
}

Audience audienceOf(const TourModel& tour, Posting posting) {
    Audience audience{posting, {}};
    const auto count = static_cast<std::size_t>(std::max<std::int16_t>(tour.launchURLCount, 0));
    for (std::size_t point = 0; point < std::min(count, tour.launchURL.size()); ++point) {
        const auto site = originOf(tour.launchURL.at(point));
        if (site && std::ranges::find(audience.sites, *site) == audience.sites.end())
            audience.sites.push_back(*site);
    }
    return audience;
}

} // namespace wendmark
