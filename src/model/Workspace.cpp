#include "model/Workspace.h"

#include "base/Log.h"
#include "base/Names.h"
#include "base/StagedReplacement.h"
#include "maker.h"
#include "model/Desktop.h"
#include "model/TourFiles.h"
#include "model/TourModel.h"

namespace wendmark {

namespace {

constexpr const char* choicesName = "tourchoices.js";

/// Names to copy, by the lower-case name they get. Of several that differ only in case, the one that is lower
/// case already wins.
std::map<std::string, std::string> byLowerCaseName(const std::vector<std::string>& names) {
    std::map<std::string, std::string> chosen;
    for (const std::string& name : names) {
        std::string target = lowerCase(name);
        if (name == target)
            chosen[target] = name;
        else
            chosen.emplace(std::move(target), name);
    }
    return chosen;
}

} // namespace

WorkspaceFolders WorkspaceFolders::inside(const std::string& appPath) {
    const auto folder = [&](std::string_view name) { return files::join(files::join(appPath, name), ""); };
    return {appPath, folder("Template"), folder("NewTour"), folder("MyTours")};
}

Workspace::Workspace(WorkspaceFolders folders, TourModel& model, Desktop& desktop, Log& log)
    : m_folders(std::move(folders)), m_model(model), m_desktop(desktop), m_log(log) {}

std::string Workspace::tourFile(std::string_view name) const {
    return m_tourPath + pathSeparator + std::string(name);
}

void Workspace::initTourDefaults() {
    if (const Outcome entered = files::enterFolder(m_folders.newTourPath); !entered.ok())
        m_log.skip(files::makeFolder(m_folders.newTourPath));
    m_model.tourChanged = false;
    m_model.homeSiteURL = makerSiteURL;
    m_model.narHeight = 100;
    m_model.advWidth = 110;
    m_model.navWidth = 94;
    m_model.launchURLCount = 0;
    m_model.singleWindow = true;
    m_model.autoInstruction = true;
    m_model.tourAuthor.clear();
    m_model.language.clear();
    m_model.wordsBesidePage = false;
}

void Workspace::resetWorkingCopy() {
    m_log.skip(files::enterFolder(m_folders.appPath));
    emptyWorkingCopy();
    fillFromTemplates();
}

void Workspace::loadTourIntoWorkingCopy() {
    emptyWorkingCopy();
    resetWorkingCopy();
    fillFromTour();
    restoreWorkingFiles();
    m_model.tourChanged = false;
}

bool Workspace::copyWorkingCopyToTour() {
    // The embedded browser holds on to the files that it shows for a moment.
    pause(1.0F);
    const bool complete = replaceTourFiles();
    m_model.tourChanged = false;
    return complete;
}

void Workspace::leaveOnlyTemplateScript() {
    emptyWorkingCopy();
    pause(1.0F);
    m_log.skip(files::copy(templateFile("script.txt"), workingFile("script1.txt")));
}

void Workspace::restoreWorkingFiles() {
    // Only the bullet has a stand-in. The other three are copied from themselves, which never succeeds; that
    // the second one is looked for under another ending than it is copied from makes no difference to that.
    if (!workingFileExists("brhist.txt"))
        copyInWorkingCopy("brhist.txt", "brhist.txt");
    if (!workingFileExists("lower.htm"))
        copyInWorkingCopy("lower.txt", "lower.txt");
    if (!workingFileExists("search.txt"))
        copyInWorkingCopy("search.txt", "search.txt");
    if (!workingFileExists("grbullet.gif"))
        copyInWorkingCopy("gr-bullet-bk.gif", "grbullet.gif");
}

bool Workspace::workingFileExists(std::string_view name) const {
    return !files::list(m_folders.newTourPath, files::Links::anywhere, name).names.empty();
}

bool Workspace::isTemplateFile(std::string_view name) const {
    return fileExists(templateFile(name));
}

Outcome Workspace::writeWorkingFile(std::string_view name, std::string_view bytes) const {
    return files::write(workingFile(name), bytes, replacing());
}

Outcome Workspace::copyToWorkingFile(const std::string& source, std::string_view name) const {
    return files::copy(source, workingFile(name), replacing());
}

void Workspace::pause(float seconds) const {
    const float start = m_desktop.timeOfDay();
    do {
        m_desktop.processPendingEvents();
    } while (start + seconds > m_desktop.timeOfDay());
}

void Workspace::emptyWorkingCopy() {
    const files::Listing listing = files::listRemovable(m_folders.newTourPath);
    m_log.skip(listing.outcome);
    for (const std::string& name : listing.names) {
        m_log.skip(files::remove(workingFile(name)));
        m_desktop.stayResponsive();
    }
}

void Workspace::fillFromTemplates() {
    m_spared = {};
    const files::Listing listing = files::list(m_folders.templatePath, files::Links::anywhere);
    m_log.skip(listing.outcome);
    for (const auto& [target, source] : sourcesByTargetName(listing, m_folders.templatePath)) {
        m_log.skip(copyToWorkingFile(source, target));
        m_desktop.stayResponsive();
    }
}

void Workspace::fillFromTour() {
    const files::Listing listing = files::list(m_tourPath, files::Links::insideFolder);
    m_log.skip(listing.outcome);
    m_spared = {m_tourPath, {}, !listing.outcome.ok()};
    for (const auto& [target, source] : sourcesByTargetName(listing, m_tourPath)) {
        const Outcome copied = copyToWorkingFile(source, target);
        m_log.skip(copied);
        if (!copied.ok() && (target == "script.txt" || !isGeneratedFile(target)))
            spare(target);
        m_desktop.stayResponsive();
    }
}

void Workspace::spare(const std::string& name) {
    m_spared.folder = m_tourPath;
    m_spared.names.insert(name);
}

bool Workspace::isSpared(const std::string& name) const {
    return m_tourPath == m_spared.folder && (m_spared.all || m_spared.names.contains(name));
}

/// Goes on after a failure; false when there was one.
bool Workspace::skip(const Outcome& outcome) const {
    m_log.skip(outcome);
    return outcome.ok();
}

void Workspace::copyInWorkingCopy(std::string_view from, std::string_view to) {
    m_log.skipAsNote(copyToWorkingFile(workingFile(from), to));
}

files::Replacing Workspace::replacing() const {
    return m_folders.newTourPathIsPrivate ? files::Replacing::oldFirst : files::Replacing::completeOrNot;
}

Workspace::Sources Workspace::sourcesByTargetName(const files::Listing& listing,
                                                  const std::string& folder) const {
    for (const std::string& name : listing.leadOut)
        m_log.warn("left out " + files::join(folder, name) + ": the link leads out of its folder");
    Sources sources = byLowerCaseName(listing.names);
    for (auto& [target, source] : sources)
        source = files::join(folder, source);
    return sources;
}

/// False when not everything that belongs to the saved tour can be had.
bool Workspace::savedTourSources(Sources& sources) const {
    const files::Listing listing = files::list(m_folders.newTourPath, files::Links::insideFolder);
    const bool listed = skip(listing.outcome);
    sources = sourcesByTargetName(listing, m_folders.newTourPath);
    // The saved tour has the final navigator, whatever the working copy holds.
    const std::string finalNavigator = templateFile("navfinal.htm");
    if (!fileExists(finalNavigator)) {
        m_log.fail("cannot save the final navigator: " + finalNavigator + " cannot be read");
        return false;
    }
    sources["nav3.htm"] = finalNavigator;
    return listed;
}

/// False when not everything was replaced.
bool Workspace::replaceTourFiles() {
    if (m_tourPath.empty()) {
        m_log.fail("cannot save the tour: it has no folder");
        return false;
    }
    StagedReplacement replacement(m_tourPath);
    if (!skip(replacement.begin()))
        return false;
    Sources sources;
    bool complete = savedTourSources(sources);
    if (!stageTour(replacement, sources, complete))
        return false;
    for (const Outcome& failure : replacement.commit(savedLast()))
        complete = skip(failure) && complete;
    return removeFormerChoices(m_tourPath, sources.contains(choicesName)) && complete;
}

/// A tour's folder keeps what only it has, but nothing may say that the author has chosen what is not chosen
/// any more. False when that fails.
bool Workspace::removeFormerChoices(const std::string& folder, bool areThere) const {
    const std::string former = files::join(folder, choicesName);
    return areThere || !fileExists(former) || skip(files::remove(former));
}

/// False when the tour's own disk does not take the files: then the tour stays what it was.
bool Workspace::stageTour(StagedReplacement& replacement, const Sources& sources, bool& complete) const {
    for (const auto& [target, source] : sources) {
        if (isSpared(target)) {
            m_log.fail("cannot save " + tourFile(target) + ": it could not be read when the tour was opened");
            complete = false;
            continue;
        }
        const bool staged = skip(replacement.stage(source, target));
        if (!staged && fileExists(source))
            return false;
        complete = complete && staged;
        m_desktop.stayResponsive();
    }
    return true;
}

bool fileExists(const std::string& path) {
    return files::canBeRead(path);
}

bool folderHoldsTour(const std::string& folder) {
    // Without a folder the name would lead into the current one.
    return !folder.empty() && fileExists(files::join(folder, "script.txt"));
}

std::string reservedFolderMessage(const WorkspaceFolders& folders, const std::string& tourPath) {
    if (beginsIgnoringCase(tourPath, folders.templatePath))
        return "The 'Template' folder is used for internal operations, and cannot be used to store or "
               "retrieve "
               "user tours.";
    if (beginsIgnoringCase(tourPath, folders.newTourPath))
        return "The 'NewTour' folder is used for internal operations, and cannot be used to store or "
               "retrieve "
               "user tours.";
    return {};
}

std::string reservedNewFolderMessage(const WorkspaceFolders& folders, const std::string& tourPath) {
    std::string message = reservedFolderMessage(folders, tourPath);
    if (message.empty() && beginsIgnoringCase(tourPath, folders.myToursPath + "sample"))
        message =
            "The 'Sample' tour folder is used for training purposes, and cannot be used to store or retrieve "
            "user tours.";
    return message;
}

} // namespace wendmark
