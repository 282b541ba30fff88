#include "publish/TourCommands.h"

#include "base/Files.h"
#include "base/Log.h"
#include "model/Desktop.h"
#include "model/HandOver.h"
#include "model/Options.h"
#include "model/ScriptFile.h"
#include "model/TourContext.h"
#include "model/TourModel.h"
#include "model/Workspace.h"
#include "publish/Framesets.h"
#include "publish/StopPages.h"
#include "publish/TourPages.h"
#include "publish/TourSave.h"

namespace wendmark {

void startProgram(TourContext& context, HandOver& handOver, Options& options) {
    Workspace& workspace = context.workspace;
    context.log.skipAsNote(files::makeFolder(workspace.folders().newTourPath));
    workspace.tourPath.clear();
    options.htmlEditorPath.clear();
    context.model.editingMode = true;
    workspace.initTourDefaults();
    handOver.wizardTourName.clear();
    handOver.wizardTourTitle.clear();
}

void loadTemplateTour(TourContext& context) {
    context.model.currentStop = 0;
    context.workspace.resetWorkingCopy();
    readScript(context);
    context.model.tourChanged = false;
    useEditingNavigator(context);
}

void openTour(TourContext& context) {
    const BusyPointer busy(context.desktop);
    TourModel& model = context.model;
    model.currentStop = 0;
    context.workspace.loadTourIntoWorkingCopy();
    const int failuresBefore = context.log.failureCount();
    readScript(context);
    if (context.log.failureCount() != failuresBefore)
        context.workspace.spare("script.txt");
    makeWorkingFrameset(context);
    writeScript(context);
    makeStopPages(context, 1, model.stopCount());
    makeContentsPage(context);
    makeOpeningPageSimple(context);
    makeIndexPage(context);
    makeTourGuide(context);
    makeOpeningPage(context);
    useEditingNavigator(context);
    context.desktop.navigateMainBrowser("file://" + context.workspace.folders().appPath + "/NewTour/fv1.htm");
    model.tourChanged = false;
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

void generateNewTour(TourContext& context, HandOver& handOver) {
    TourModel& model = context.model;
    context.workspace.initTourDefaults();
    model.currentStop = 0;
    readScript(context);
    model.tourChanged = false;
    useEditingNavigator(context);
    model.tourTitle = handOver.wizardTourTitle;
    makeEveryPage(context);
    handOver.saveFolderChosen = true;
}

bool finishNewTour(TourContext& context, HandOver& handOver) {
    const BusyPointer busy(context.desktop);
    generateNewTour(context, handOver);
    return saveTour(context);
}

} // namespace wendmark
