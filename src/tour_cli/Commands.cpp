#include "tour_cli/Commands.h"

#include "base/Files.h"
#include "commands/TourCommands.h"
#include "commands/TourSave.h"
#include "model/ReservedFolders.h"
#include "tour_cli/Folders.h"
#include "tour_cli/TerminalText.h"
#include "tour_cli/TourRun.h"
#include "tour_cli/TourTarget.h"

#include <ostream>

namespace wendmark::cli {

namespace {

Outcome refuse(const std::string& sentence) {
    return Outcome::failure(sentence);
}

/// The script is copied with the tour's other files, and of links only those that stay inside the folder are.
Outcome checkScript(const std::string& tour) {
    Outcome usable = checkTitle(tour);
    if (!usable.ok())
        return usable;
    const files::Listing scripts = files::list(tour, files::Links::insideFolder, "script.txt");
    if (!scripts.leadOut.empty())
        return refuse("cannot use " + files::join(tour, scripts.leadOut.front()) +
                      ": the link leads out of its folder");
    return scripts.outcome;
}

/// Nothing is saved into the window program's own folders, nor among the templates in use, by whatever way
/// they are reached.
Outcome checkTarget(const std::string& target, const WorkspaceFolders& folders) {
    const std::string message = reservedTourMessage(folders, target);
    return message.empty() ? checkTour(target, folders) : refuse(target + ": " + message);
}

Outcome checkPublish(const std::string& tour, const std::string& target, const WorkspaceFolders& folders) {
    Outcome outcome = checkTour(tour, folders);
    if (outcome.ok())
        outcome = checkScript(tour);
    if (outcome.ok())
        outcome = checkTarget(target, folders);
    return outcome.ok() ? checkTemplates(folders) : outcome;
}

/// The working copy is emptied, so it must not be a folder that holds something else of value.
Outcome makeWorkingCopy(MadeFolder& workingCopy, const std::string& tour, const std::string& target,
                        const WorkspaceFolders& folders) {
    const std::string& folder = workingCopy.path();
    for (const std::string& precious : {tour, target, folders.templatePath, folders.appPath}) {
        if (isInside(precious, folder))
            return refuse("the working copy " + folder + " would be emptied, but it holds " + precious);
    }
    if (isInside(folder, WorkspaceFolders::inside(folders.appPath).newTourPath))
        return refuse("the folder " + folder + " is the window program's own working copy");
    return workingCopy.makeIfMissing();
}

Outcome checkNew(const std::string& folder, const WorkspaceFolders& folders) {
    const std::string reserved = reservedNewFolderMessage(WorkspaceFolders::inside(folders.appPath), folder);
    Outcome outcome = reserved.empty() ? checkTarget(folder, folders) : refuse(folder + ": " + reserved);
    return outcome.ok() ? checkTemplates(folders) : outcome;
}

/// Reads the tour and generates its pages in the working copy.
Outcome generate(TourRun& run, const std::string& tour) {
    run.start();
    run.workspace().initTourDefaults();
    run.workspace().setTourPath(tour);
    openTour(run.context());
    const std::int16_t stops = run.model().stopCount();
    if (stops > tourCapacity)
        return refuse(tour + " has " + std::to_string(stops) + " stops, but a tour has at most 100");
    return run.outcome();
}

/// Puts the finished tour where it belongs, and says so.
Outcome finish(TourRun& run, TourTarget& target, const std::string& done, std::ostream& output) {
    Outcome outcome = run.outcome();
    if (outcome.ok())
        outcome = target.putInPlace();
    if (!outcome.ok())
        return outcome;
    run.printWarnings();
    output << done << " \"" << printable(run.model().tourTitle) << "\", stops: " << run.model().stopCount()
           << ", in " << printable(target.folder()) << '\n';
    return outcome;
}

/// Saves the generated tour into the target's hidden folder. When that is the working copy itself, it is
/// there as soon as it has its final form.
void save(TourRun& run, const TourTarget& target) {
    const bool isThere = run.workspace().folders().newTourPathIsPrivate;
    run.workspace().setTourPath(isThere ? std::string() : target.finished());
    if (isThere)
        makeFinalForm(run.context());
    else
        saveTour(run.context());
}

Outcome publish(TourRun& run, const std::string& tour, TourTarget& target, std::ostream& output) {
    Outcome generated = generate(run, tour);
    if (!generated.ok())
        return generated;
    // Save leaves a tour the list of the save before; whoever gets a copy has use for the current one only.
    if (!files::same(tour, target.folder()))
        writeLaunchList(run.context());
    save(run, target);
    return finish(run, target, "Published", output);
}

Outcome createNew(TourRun& run, const std::string& title, TourTarget& target, std::ostream& output) {
    run.start();
    run.workspace().resetWorkingCopy();
    generateNewTour(run.context(), title);
    save(run, target);
    return finish(run, target, "Created", output);
}

/// Makes the target's hidden folder the working copy.
void useAsWorkingCopy(const TourTarget& target, WorkspaceFolders& folders) {
    folders.newTourPath = files::join(target.finished(), "");
    folders.newTourPathIsPrivate = true;
}

} // namespace

Outcome runPublish(const PublishRequest& request, std::ostream& output, std::ostream& errors) {
    const std::string tour = tourFolder(request.tour);
    TourTarget target(request.into ? absoluteFolder(*request.into) : tour);
    MadeFolder workingCopy(absoluteFolder(request.workingCopy.value_or("")));
    WorkspaceFolders folders = runFolders(request.templateFolder);
    Outcome outcome = checkPublish(tour, target.folder(), folders);
    if (outcome.ok() && request.workingCopy)
        outcome = makeWorkingCopy(workingCopy, tour, target.folder(), folders);
    if (outcome.ok())
        outcome = target.makeIfMissing();
    if (!outcome.ok())
        return outcome;
    if (request.workingCopy)
        folders.newTourPath = files::join(workingCopy.path(), "");
    else
        useAsWorkingCopy(target, folders);
    TourRun run(folders, errors);
    outcome = target.inOwnWords(publish(run, tour, target, output));
    if (outcome.ok())
        workingCopy.keep();
    return outcome;
}

Outcome runNew(const NewRequest& request, std::ostream& output, std::ostream& errors) {
    TourTarget target(absoluteFolder(request.folder));
    WorkspaceFolders folders = runFolders(request.templateFolder);
    Outcome outcome = checkNew(target.folder(), folders);
    if (outcome.ok())
        outcome = target.make();
    if (!outcome.ok())
        return outcome;
    useAsWorkingCopy(target, folders);
    TourRun run(folders, errors);
    return target.inOwnWords(createNew(run, request.title, target, output));
}

} // namespace wendmark::cli
