#include "tour_cli/Commands.h"

#include "base/Files.h"
#include "publish/TourCommands.h"
#include "publish/TourSave.h"
#include "tour_cli/Folders.h"
#include "tour_cli/TourRun.h"

#include <optional>
#include <ostream>

namespace wendmark::cli {

namespace {

/// The folders of one publish run, absolute.
struct PublishFolders {
    std::string tour;
    std::string target;
    WorkspaceFolders workspace;
};

Outcome refuse(const std::string& sentence) {
    return Outcome::failure(sentence);
}

/// The working copy is emptied, so it must not be a folder that holds something else of value.
Outcome checkWorkingCopy(const PublishFolders& folders) {
    const std::string& workingCopy = folders.workspace.newTourPath;
    const std::string windowProgramCopy = WorkspaceFolders::inside(folders.workspace.appPath).newTourPath;
    for (const std::string& precious : {folders.tour, folders.target, folders.workspace.templatePath}) {
        if (isInside(precious, workingCopy))
            return refuse("the working copy " + workingCopy + " would be emptied, but it holds " + precious);
    }
    if (isInside(workingCopy, windowProgramCopy))
        return refuse("the folder " + workingCopy + " is the window program's own working copy");
    return Outcome::success();
}

Outcome checkPublish(const PublishFolders& folders) {
    Outcome script = files::read(files::join(folders.tour, "script.txt")).outcome;
    if (!script.ok())
        return script;
    if (const std::string reserved = reservedFolderMessage(folders.workspace, folders.target);
        !reserved.empty())
        return refuse(folders.target + ": " + reserved);
    Outcome workingCopy = checkWorkingCopy(folders);
    return workingCopy.ok() ? checkTemplates(folders.workspace) : workingCopy;
}

/// Reads the tour and generates its pages in the working copy.
Outcome generate(TourRun& run, const std::string& tour) {
    run.start();
    run.workspace().initTourDefaults();
    run.workspace().tourPath = tour;
    openTour(run.context());
    const std::int16_t stops = run.model().stopCount;
    if (stops > tourCapacity)
        return refuse(tour + " has " + std::to_string(stops) + " stops, but a tour has at most 100");
    return run.outcome();
}

/// Saves the generated tour. The navigator is put into the target before the other files, so it is taken out
/// again when they do not follow.
Outcome save(TourRun& run, const std::string& target) {
    run.workspace().tourPath = target;
    const std::string navigator = run.workspace().tourFile("nav3.htm");
    const bool hadNavigator = fileExists(navigator);
    saveTour(run.context());
    if (!run.outcome().ok() && !hadNavigator)
        static_cast<void>(files::remove(navigator)); // Missing if it could not be put there.
    return run.outcome();
}

void printDone(std::ostream& output, const std::string& done, TourRun& run, const std::string& folder) {
    output << done << " \"" << run.model().tourTitle << "\", stops: " << run.model().stopCount << ", in "
           << folder << '\n';
}

} // namespace

Outcome runPublish(const PublishRequest& request, std::ostream& output, std::ostream& errors) {
    std::optional<TemporaryFolder> temporary;
    if (!request.workingCopy) {
        temporary.emplace();
        if (!temporary->outcome().ok())
            return temporary->outcome();
    }
    PublishFolders folders{absoluteFolder(request.tour), absoluteFolder(request.into.value_or(request.tour)),
                           runFolders(request.templateFolder)};
    const std::string workingCopy = temporary ? temporary->path() : absoluteFolder(*request.workingCopy);
    folders.workspace.newTourPath = files::join(workingCopy, "");

    Outcome outcome = checkPublish(folders);
    TargetFolder workingFolder(workingCopy);
    if (outcome.ok())
        outcome = workingFolder.makeIfMissing();
    TargetFolder target(folders.target);
    if (outcome.ok())
        outcome = target.makeIfMissing();
    if (!outcome.ok())
        return outcome;

    TourRun run(folders.workspace, errors);
    outcome = generate(run, folders.tour);
    if (outcome.ok())
        outcome = save(run, folders.target);
    if (!outcome.ok())
        return outcome;
    workingFolder.keep();
    target.keep();
    printDone(output, "Published", run, folders.target);
    return outcome;
}

Outcome runNew(const NewRequest& request, std::ostream& output, std::ostream& errors) {
    const TemporaryFolder temporary;
    if (!temporary.outcome().ok())
        return temporary.outcome();
    const std::string folder = absoluteFolder(request.folder);
    WorkspaceFolders folders = runFolders(request.templateFolder);
    if (const std::string reserved = reservedNewFolderMessage(folders, folder); !reserved.empty())
        return refuse(folder + ": " + reserved);
    folders.newTourPath = files::join(temporary.path(), "");
    Outcome outcome = checkTemplates(folders);
    if (!outcome.ok())
        return outcome;
    outcome = files::makeFolder(folder);
    if (!outcome.ok())
        return outcome;

    TourRun run(folders, errors);
    run.start();
    run.workspace().resetWorkingCopy();
    run.handOver().wizardTourTitle = request.title;
    run.workspace().tourPath = folder;
    finishNewTour(run.context(), run.handOver());
    if (run.outcome().ok())
        printDone(output, "Created", run, folder);
    else
        static_cast<void>(files::removeFolder(folder)); // It was made above and holds nothing else.
    return run.outcome();
}

} // namespace wendmark::cli
