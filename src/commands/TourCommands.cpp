#include "commands/TourCommands.h"

#include "base/Files.h"
#include "base/Log.h"
#include "commands/TourSave.h"
#include "model/Desktop.h"
#include "model/Options.h"
#include "model/ScriptFile.h"
#include "model/StopTexts.h"
#include "model/TourContext.h"
#include "model/TourModel.h"
#include "model/Workspace.h"
#include "publish/Framesets.h"
#include "publish/StopPages.h"
#include "publish/TourChoicesFile.h"
#include "publish/TourPages.h"

namespace wendmark {

void startProgram(TourContext& context, Options& options) {
    Workspace& workspace = context.workspace;
    context.log.skipAsNote(files::makeFolder(workspace.folders().newTourPath));
    workspace.setTourPath({});
    options.htmlEditorPath.clear();
    context.model.editingMode = true;
    workspace.initTourDefaults();
}

ScriptReading loadTemplateTour(TourContext& context) {
    context.model.currentStop = 0;
    context.workspace.resetWorkingCopy();
    const ScriptReading reading = readScript(context);
    context.model.tourChanged = false;
    useEditingNavigator(context);
    return reading;
}

ScriptReading openTour(TourContext& context) {
    const BusyPointer busy(context.desktop);
    TourModel& model = context.model;
    model.currentStop = 0;
    context.workspace.loadTourIntoWorkingCopy();
    const ScriptReading reading = readScript(context);
    if (!reading.couldBeRead)
        context.workspace.spare("script.txt");
    makeWorkingFrameset(context);
    writeScript(context);
    makeStopPages(context, 1, model.stopCount());
    makeContentsPage(context);
    makeOpeningPageSimple(context);
    makeIndexPage(context);
    makeTourGuide(context);
    makeOpeningPage(context);
    makeWordsAndChoices(context);
    useEditingNavigator(context);
    context.desktop.navigateMainBrowser("file://" + context.workspace.folders().appPath + "/NewTour/fv1.htm");
    model.tourChanged = false;
    return reading;
}

void generateRecoveredTour(TourContext& context) {
    const BusyPointer busy(context.desktop);
    TourModel& model = context.model;
    model.editingMode = true;
    makeEveryPage(context);
    writeLaunchList(context);
    useEditingNavigator(context);
    model.tourChanged = true;
    makePreviewFrameset(context);
}

void generateScriptedTour(TourContext& context, std::string_view script) {
    const BusyPointer busy(context.desktop);
    context.workspace.initTourDefaults();
    // Nothing of the tour on screen is to show through where the script says nothing.
    TourModel& model = context.model;
    const TourModel defaults;
    model.autoBuffer = defaults.autoBuffer;
    model.bufferDelay = defaults.bufferDelay;
    model.stopLabel = defaults.stopLabel;
    model.helpFile = defaults.helpFile;
    model.currentStop = 0;
    readScriptBytes(context, script);
    makeEveryPage(context);
    makePreviewFrameset(context);
}

void generateNewTour(TourContext& context, const std::string& title) {
    TourModel& model = context.model;
    context.workspace.initTourDefaults();
    model.currentStop = 0;
    readScript(context);
    model.tourChanged = false;
    useEditingNavigator(context);
    model.tourTitle = storableTitle(title);
    makeEveryPage(context);
}

bool finishNewTour(TourContext& context, const std::string& title) {
    const BusyPointer busy(context.desktop);
    generateNewTour(context, title);
    return saveTour(context);
}

} // namespace wendmark
