#include "commands/WorkingFiles.h"

#include "base/Files.h"
#include "base/Log.h"
#include "base/Names.h"
#include "base/Numbers.h"
#include "commands/ContentStore.h"
#include "maker.h"
#include "model/Desktop.h"
#include "model/TourContext.h"
#include "model/TourFiles.h"
#include "model/Workspace.h"
#include "publish/Framesets.h"
#include "publish/StopPages.h"
#include "publish/TourChoicesFile.h"
#include "publish/TourPages.h"

#include <string_view>

namespace wendmark {

namespace {

bool doesNotCount(const std::string& name) {
    return isScratchFile(name) || name == "brhist.txt" || name == "script.txt" || name == "link.txt" ||
           name == "nav3.htm";
}

/// The number in "page7.htm"; 0 when the name is no such.
int numberIn(std::string_view name, std::string_view beginning) {
    constexpr std::string_view end = ".htm";
    if (!name.starts_with(beginning) || !name.ends_with(end))
        return 0;
    name.remove_prefix(beginning.size());
    name.remove_suffix(end.size());
    int number = 0;
    for (const char digit : name) {
        if (digit < '0' || digit > '9' || number > tourCapacity)
            return 0;
        number = number * 10 + (digit - '0');
    }
    return number <= tourCapacity ? number : 0;
}

/// Whether the editor keeps the file up to date with the tour at every moment.
bool isLivePage(const std::string& name, const TourSnapshot& tour) {
    static const std::set<std::string> pages = {"framever.htm", "openhelp.htm", "index.htm",     "toc.htm",
                                                "tguide.htm",   "tourwords.js", "tourchoices.js"};
    const int stop = numberIn(name, "page");
    return pages.contains(name) || (stop >= 1 && stop <= tour.stopCount);
}

bool isVisitorsFrameset(const std::string& name) {
    return name == "playtour.htm" || name == "fv1.htm" || numberIn(name, "_tourlaunch") > 0;
}

} // namespace

bool FileState::sameContentsAs(const FileState& other) const {
    if (kind != other.kind)
        return false;
    if (kind == Kind::generated)
        return shows == other.shows;
    return stamp == other.stamp || (!digest.empty() && digest == other.digest);
}

WorkingFiles::WorkingFiles(TourContext& context, ContentStore& store) : m_context(context), m_store(store) {}

void WorkingFiles::look(Made made, const TourMoment& tour) {
    const std::string& folder = m_context.workspace.folders().newTourPath;
    FileStates found;
    for (const std::string& name : files::list(folder, files::Links::insideFolder).names) {
        if (doesNotCount(lowerCase(name)))
            continue;
        const std::string stamp = files::stampOf(files::join(folder, name));
        const auto known = m_states.find(name);
        FileState state = known != m_states.end() && known->second.stamp == stamp
                              ? known->second
                              : describe(name, made, tour);
        state.stamp = stamp;
        found[name] = std::move(state);
    }
    m_states = std::move(found);
}

FileState WorkingFiles::describe(const std::string& name, Made made, const TourMoment& tour) {
    const bool generated = made != Made::nothing &&
                           (isLivePage(name, *tour) || (made == Made::everyForm && isVisitorsFrameset(name)));
    if (generated)
        return {FileState::Kind::generated, tour, {}, {}};
    return {FileState::Kind::stored, nullptr, {}, {}};
}

void WorkingFiles::keepAll() {
    for (const auto& [name, state] : m_states) {
        keep(name);
        m_context.desktop.stayResponsive();
    }
}

void WorkingFiles::keepGenerated() {
    for (const auto& [name, state] : m_states) {
        if (isGeneratedFile(name))
            keep(name);
    }
}

void WorkingFiles::keep(const std::string& name) {
    const auto found = m_states.find(name);
    if (found == m_states.end() || found->second.kind != FileState::Kind::stored ||
        !found->second.digest.empty())
        return;
    found->second.digest = m_store.keep(m_context.workspace.workingFile(name));
}

void WorkingFiles::restore(const FileStates& wanted) {
    const BusyPointer busy(m_context.desktop);
    for (const auto& [name, state] : wanted) {
        const auto present = m_states.find(name);
        const bool there = present != m_states.end() && present->second.sameContentsAs(state);
        const bool absent = present == m_states.end() && state.kind == FileState::Kind::absent;
        if (there || absent)
            continue;
        keep(name);
        put(name, state);
        m_context.desktop.stayResponsive();
    }
    m_shown.reset();
    m_shownModel = {};
}

void WorkingFiles::put(const std::string& name, const FileState& wanted) {
    const std::string path = m_context.workspace.workingFile(name);
    bool done = true;
    switch (wanted.kind) {
    case FileState::Kind::absent:
        m_context.log.skip(files::remove(path));
        m_states.erase(name);
        return;
    case FileState::Kind::generated:
        done = generate(name, wanted.shows);
        break;
    case FileState::Kind::stored:
        done = m_store.restore(wanted.digest, path);
        break;
    }
    if (!done)
        m_context.log.fail("cannot bring back what " + path + " held before");
    m_states[name] = wanted;
    m_states[name].stamp = files::stampOf(path);
}

bool WorkingFiles::generate(const std::string& name, const TourMoment& shown) {
    if (m_shown != shown)
        m_shownModel = modelOf(*shown);
    m_shown = shown;
    TourModel& model = m_shownModel;
    TourContext context{model, m_context.workspace, m_context.desktop, m_context.log};
    if (const int stop = numberIn(name, "page"); stop > 0) {
        makeStopPages(context, static_cast<std::int16_t>(stop), static_cast<std::int16_t>(stop));
        return true;
    }
    if (const int point = numberIn(name, "_tourlaunch"); point > 0)
        return fillFrameset(context, name, model.launchURL.at(static_cast<std::size_t>(point - 1)));
    if (name == "fv1.htm")
        return fillFrameset(context, name, makerSiteHost);
    if (name == "framever.htm" || name == "playtour.htm")
        return fillFrameset(context, name, "AUTO");
    if (name == "tourwords.js")
        return makeTourWords(context);
    if (name == "tourchoices.js")
        return makeTourChoices(context);
    static const std::map<std::string, void (*)(TourContext&)> pages = {{"openhelp.htm", makeOpeningPage},
                                                                        {"index.htm", makeIndexPage},
                                                                        {"toc.htm", makeContentsPage},
                                                                        {"tguide.htm", makeTourGuide}};
    const auto page = pages.find(name);
    if (page == pages.end())
        return false;
    page->second(context);
    return true;
}

FileChanges changesBetween(const FileStates& before, const FileStates& after) {
    FileChanges changes;
    for (const auto& [name, state] : before) {
        const auto now = after.find(name);
        if (now == after.end())
            changes[name] = {state, {}};
        else if (!state.sameContentsAs(now->second))
            changes[name] = {state, now->second};
    }
    for (const auto& [name, state] : after) {
        if (!before.contains(name))
            changes[name] = {{}, state};
    }
    return changes;
}

void collectDigests(const FileChanges& changes, std::set<std::string>& digests) {
    for (const auto& [name, change] : changes) {
        for (const FileState* const state : {&change.before, &change.after}) {
            if (!state->digest.empty())
                digests.insert(state->digest);
        }
    }
}

} // namespace wendmark
