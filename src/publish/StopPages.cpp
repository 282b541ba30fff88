#include "publish/StopPages.h"

#include "base/Files.h"
#include "base/Log.h"
#include "base/Windows1252.h"
#include "model/TourContext.h"
#include "model/TourModel.h"
#include "model/Workspace.h"
#include "publish/PageFile.h"
#include "publish/TemplateFiller.h"

#include <string>

namespace wendmark {

namespace {

constexpr std::string_view nextInstruction = "Click the <strong>Next button</strong> to go to the next stop.";
constexpr std::string_view exitInstruction = "Click the <strong>Exit button</strong> to quit this Tour.";

/// False when a stop is only counted, or when there is no last stop.
bool writeStandardInstructions(TourModel& model) {
    for (std::int16_t n = 1; n <= model.stops.held(); ++n)
        model.stops.at(n).stopInstruction = n < model.stopCount() ? nextInstruction : exitInstruction;
    return model.stopCount() >= 1 && model.stopCount() == model.stops.held();
}

void logMissingLastStop(TourContext& context) {
    if (context.model.stopCount() < 1)
        context.log.note("no stop pages written: the tour has no last stop to instruct");
    else
        context.log.fail("no stop pages written: a tour has at most 100 stops");
}

} // namespace

void makeStopPages(TourContext& context, std::int16_t first, std::int16_t last) {
    TourModel& model = context.model;
    if (model.autoInstruction && !writeStandardInstructions(model)) {
        logMissingLastStop(context);
        return;
    }
    const files::Contents source = files::read(context.workspace.templateFile("page.htm"));
    context.log.skip(source.outcome);
    if (!source.outcome.ok())
        return;
    for (int n = first; n <= last; ++n) {
        if (n < 1 || n > model.stops.held()) {
            context.log.fail("no page for stop " + std::to_string(n) + ": the tour has stops 1 to " +
                             std::to_string(model.stops.held()));
            return;
        }
        const bool complete = fillPageFrom(
            context, source.bytes, "page" + std::to_string(n) + ".htm",
            [&](TemplateFiller& filler) { fillStopPage(filler, model, static_cast<std::int16_t>(n)); });
        if (!complete)
            return;
    }
}

std::string composeStopPage(std::string_view templateText, TourModel model, std::int16_t n) {
    if (model.autoInstruction)
        writeStandardInstructions(model);
    TemplateFiller filler(templateText);
    fillStopPage(filler, model, n);
    return filler.output();
}

void fillStopPage(TemplateFiller& filler, const TourModel& model, std::int16_t n) {
    const Stop& stop = model.stops.at(n);
    const std::string number = std::to_string(n);
    const std::string address = windows1252::encodeAddress(stop.stopURL);
    const std::string_view base = isRemoteAddress(stop.stopURL) ? "" : "parent.homePath + ";

    filler.copyThrough(scriptBlockMarker);
    filler.write("linkURL = ", base, "'", address, "';");
    filler.write("linkPage = ", number, ";");
    filler.write("parent.nav.status = '>*>*>vosktourstop->", number, "';");
    filler.closeRegion(scriptBlockMarker);

    filler.copyThrough(scriptBlockMarker);
    filler.write("         self.location.href = '", windows1252::encodeAddress(model.homeSiteURL), "';");
    filler.closeRegion(scriptBlockMarker);

    filler.copyThrough(loosePageMarker);
    filler.write(windows1252::encodeHtml(model.stopLabel), " ", number, "&#151;",
                 windows1252::encodeHtml(stop.stopTitle), "</font></h5>");
    filler.write(windows1252::encodeHtml(stop.stopNarration));
    filler.write("<br><br>");
    filler.write(windows1252::encodeHtml(stop.stopInstruction));
    filler.skipThrough(loosePageMarker);
    filler.write(pageMarker);

    filler.copyThrough(loosePageMarker);
    filler.write(address);
    filler.skipThrough(loosePageMarker);
    filler.write(pageMarker);
    filler.copyThrough("</html>");
}

} // namespace wendmark
