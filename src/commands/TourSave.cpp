#include "commands/TourSave.h"

#include "base/Files.h"
#include "base/Log.h"
#include "base/TextLines.h"
#include "base/Windows1252.h"
#include "model/LineError.h"
#include "model/ScriptFile.h"
#include "model/TourContext.h"
#include "model/TourModel.h"
#include "model/Workspace.h"
#include "publish/Framesets.h"
#include "publish/TourChoicesFile.h"

#include <string>

namespace wendmark {

namespace {

constexpr std::string_view navigatorName = "nav3.htm";

/// Tells the author, as well as the log, of a failure that belongs to no line. False when there was one.
bool report(TourContext& context, const Outcome& outcome, std::string_view message) {
    context.log.skip(outcome);
    if (!outcome.ok())
        reportLineError(context.desktop, 0, message);
    return outcome.ok();
}

std::string composeLaunchList(const TourModel& model) {
    if (model.launchURLCount == 0)
        return std::string("Launching points not specified").append(lineBreak);
    std::string list;
    for (std::int16_t k = 1; k <= model.launchURLCount; ++k) {
        const std::string& address = model.launchURL.at(static_cast<std::size_t>(k - 1));
        list.append(" ").append(std::to_string(k)).append("\t");
        list.append(launchFileName(k)).append("\t");
        list.append(windows1252::encodeAddress(address)).append(lineBreak);
    }
    return list;
}

/// What differs between a tour that is edited and one that is saved, but for the navigator.
bool makeWhatHasTwoForms(TourContext& context) {
    bool complete = makeWorkingFrameset(context);
    complete = makeTourFramesets(context) && complete;
    return makeWordsAndChoices(context) && complete;
}

} // namespace

void useEditingNavigator(TourContext& context) {
    const Workspace& workspace = context.workspace;
    report(context, workspace.copyToWorkingFile(workspace.templateFile("navtemp.htm"), navigatorName),
           "Error in copying NavTemp file");
}

bool useFinalNavigator(TourContext& context) {
    const Workspace& workspace = context.workspace;
    const std::string navigator = workspace.templateFile("navfinal.htm");
    Outcome copied = workspace.copyToWorkingFile(navigator, navigatorName);
    if (copied.ok() && !workspace.tourPath().empty())
        copied = files::copy(navigator, workspace.tourFile(navigatorName));
    return report(context, copied, "Error in copying NavFinal file");
}

void writeLaunchList(TourContext& context) {
    const std::string list = composeLaunchList(context.model);
    report(context, context.workspace.writeWorkingFile("link.txt", list), "Error in creating Link.txt file");
}

bool makeFinalForm(TourContext& context) {
    bool complete = writeScript(context);
    context.model.editingMode = false;
    complete = makeWhatHasTwoForms(context) && complete;
    return useFinalNavigator(context) && complete;
}

bool saveTourAs(TourContext& context) {
    bool complete = makeFinalForm(context);
    context.workspace.pause(1.0F);
    complete = context.workspace.copyWorkingCopyToTour() && complete;
    useEditingNavigator(context);
    context.model.editingMode = true;
    makeWhatHasTwoForms(context);
    return complete;
}

bool saveTour(TourContext& context) {
    const bool complete = saveTourAs(context);
    writeLaunchList(context);
    return complete;
}

} // namespace wendmark
