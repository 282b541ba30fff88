#include "publish/Framesets.h"

#include "base/Windows1252.h"
#include "maker.h"
#include "model/Desktop.h"
#include "model/TourContext.h"
#include "model/TourModel.h"
#include "model/Workspace.h"
#include "publish/PageFile.h"
#include "publish/TemplateFiller.h"

#include <algorithm>
#include <limits>

namespace wendmark {

namespace {

constexpr std::string_view framesetTemplate = "framever.htm";
constexpr std::string_view framesStart = "<!-- Frameset for frame-based design -->";

/// Milliseconds, kept within 32 bits.
std::int32_t loadingTime(std::int32_t seconds) {
    using Limits = std::numeric_limits<std::int32_t>;
    const std::int64_t milliseconds = std::int64_t{seconds} * 1000;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(milliseconds, Limits::min(), Limits::max()));
}

void writeVariables(TemplateFiller& filler, const TourModel& model, std::string_view homePage) {
    // The editor's own preview never loads stops ahead.
    const bool loadAhead = model.autoBuffer && !model.editingMode;
    filler.write("numStops = ", std::to_string(model.stopCount()));
    filler.write("bufDelay = ", std::to_string(loadingTime(model.bufferDelay)));
    filler.write(loadAhead ? "bufFlag = true" : "bufFlag = false");
    filler.write("homePage = \"", windows1252::encodeAddress(homePage), "\"");
}

void writeFrames(TemplateFiller& filler, const TourModel& model) {
    filler.write("<frameset rows=\"*,", std::to_string(model.narHeight), ",0\" onload=\"startTimers()\">");
    filler.write("<frame src = \"openhelp.htm\" name=\"mw\" marginwidth=\"10\" marginheight=\"10\">");
    filler.write("<frameset cols=\"", std::to_string(model.advWidth), ",*,", std::to_string(model.navWidth),
                 "\">");
}

} // namespace

bool fillFrameset(TourContext& context, std::string_view outName, std::string_view homePage) {
    return fillPage(context, context.workspace.templateFile(framesetTemplate), outName,
                    [&](TemplateFiller& filler) { fillFramesetTemplate(filler, context.model, homePage); });
}

bool makeWorkingFrameset(TourContext& context) {
    return fillFrameset(context, "framever.htm", "AUTO");
}

bool makeTourFramesets(TourContext& context) {
    const TourModel& model = context.model;
    bool complete = fillFrameset(context, "playtour.htm", "AUTO");
    complete = fillFrameset(context, "fv1.htm", makerSiteHost) && complete;
    if (!model.singleWindow)
        return complete;
    for (std::int16_t k = 1; k <= model.launchURLCount; ++k) {
        const std::string& address = model.launchURL.at(static_cast<std::size_t>(k - 1));
        complete = fillFrameset(context, launchFileName(k), address) && complete;
    }
    return complete;
}

std::string launchFileName(std::int16_t k) {
    return "_tourlaunch" + std::to_string(k) + ".htm";
}

void makePreviewFrameset(TourContext& context) {
    const std::int16_t currentStop = context.model.currentStop;
    // The working copy's own frameset, so that the preview shows the tour's current title and layout.
    fillPage(context, context.workspace.workingFile(framesetTemplate), "tmpframe.htm",
             [&](TemplateFiller& filler) { fillPreviewTemplate(filler, currentStop); });
    context.desktop.navigateMainBrowser(
        context.workspace.workingFile(currentStop < 1 ? "framever.htm" : "tmpframe.htm"));
}

void fillFramesetTemplate(TemplateFiller& filler, const TourModel& model, std::string_view homePage) {
    filler.copyThrough(pageMarker);
    filler.write("<title>", windows1252::encodeHtml(model.tourTitle), " </title>");
    filler.closeRegion(pageMarker);

    filler.copyThrough(scriptBlockMarker);
    writeVariables(filler, model, homePage);
    filler.closeRegion(scriptBlockMarker);

    filler.copyThrough(pageMarker);
    writeFrames(filler, model);
    filler.closeRegion(pageMarker);
    filler.copyRest();
}

void fillPreviewTemplate(TemplateFiller& filler, std::int16_t currentStop) {
    filler.copyThrough(framesStart);
    filler.copyThrough(pageMarker);
    filler.copyLine();
    filler.dropLine();
    filler.write("<frame src = \"\" name=\"mw\" marginwidth=\"10\" marginheight=\"10\" >");
    filler.copyThrough(pageMarker);
    filler.copyLine();
    filler.dropLine();
    filler.write("<frame src= \"page", std::to_string(currentStop),
                 ".htm\" name=\"nar\" marginwidth=\"3\" >");
    filler.copyRest();
}

} // namespace wendmark
