#include "publish/TourPages.h"

#include "base/Windows1252.h"
#include "model/TourContext.h"
#include "model/TourModel.h"
#include "model/Workspace.h"
#include "publish/Framesets.h"
#include "publish/PageFile.h"
#include "publish/StopPages.h"
#include "publish/TemplateFiller.h"
#include "publish/TourChoicesFile.h"

#include <string>

namespace wendmark {

namespace {

void fillFromTemplate(TourContext& context, std::string_view name,
                      void (*fill)(TemplateFiller&, const TourModel&)) {
    fillPage(context, context.workspace.templateFile(name), name,
             [&](TemplateFiller& filler) { fill(filler, context.model); });
}

void writeTitleAndAuthor(TemplateFiller& filler, const TourModel& model) {
    const std::string author = model.tourAuthor.empty() ? " " : windows1252::encodeHtml(model.tourAuthor);
    filler.write("<b> ", windows1252::encodeHtml(model.tourTitle), " </b> </font><br>");
    filler.write("<font size=2> ", author, " </font>");
}

/// Calls `write` with each stop's number, from 1, and the stop. One that is only counted stops the filling.
template <typename Write>
void forEachStop(TemplateFiller& filler, const TourModel& model, Write write) {
    for (std::int16_t n = 1; n <= model.stops.held(); ++n)
        write(std::to_string(n), model.stops.at(n));
    if (model.stopCount() > model.stops.held())
        filler.stop("a tour has at most 100 stops");
}

void writePageEnd(TemplateFiller& filler) {
    filler.write("</body>");
    filler.write("</html>");
}

template <typename... Parts>
void writeWithEmptyLine(TemplateFiller& filler, const Parts&... parts) {
    filler.write(parts...);
    filler.write("");
}

void writeGuideEntry(TemplateFiller& filler, const std::string& number, const Stop& stop) {
    const std::string_view kind = isRemoteAddress(stop.stopURL) ? "" : "Local File: ";
    const std::string address = windows1252::encodeAddress(stop.stopURL);
    filler.write("<P>");
    writeWithEmptyLine(filler, "<HR WIDTH=\"100%\"></P>");
    writeWithEmptyLine(filler, "<P><B><FONT COLOR=\"#CC0000\"><FONT SIZE=+1>Stop-", number, ": ",
                       windows1252::encodeHtml(stop.stopTitle), "</FONT></FONT></B></P>");
    writeWithEmptyLine(filler, windows1252::encodeHtml(stop.stopNarration));
    writeWithEmptyLine(filler, "<P><FONT COLOR=\"#800000\">", kind, address, "</FONT></P>");
}

} // namespace

void makeOpeningPageSimple(TourContext& context) {
    fillFromTemplate(context, "openhelp.htm", fillOpeningPageSimple);
}

void makeOpeningPage(TourContext& context) {
    fillFromTemplate(context, "openhelp.htm", fillOpeningPage);
}

void makeIndexPage(TourContext& context) {
    fillFromTemplate(context, "index.htm", fillIndexPage);
}

void makeContentsPage(TourContext& context) {
    fillFromTemplate(context, "toc.htm", fillContentsPage);
}

void makeTourGuide(TourContext& context) {
    fillFromTemplate(context, "tguide.htm", fillTourGuide);
}

void fillOpeningPageSimple(TemplateFiller& filler, const TourModel& model) {
    filler.copyThrough(pageMarker);
    writeTitleAndAuthor(filler, model);
    filler.closeRegion(pageMarker);
    filler.copyRest();
}

void fillOpeningPage(TemplateFiller& filler, const TourModel& model) {
    filler.copyThrough(loosePageMarker);
    writeTitleAndAuthor(filler, model);
    filler.skipThrough(loosePageMarker);
    filler.write(pageMarker);
    for (int kept = 3; kept <= 5; ++kept)
        filler.copyThrough(loosePageMarker);
    filler.skipThrough(loosePageMarker);
    filler.write(pageMarker);
    filler.copyRest();
}

void fillIndexPage(TemplateFiller& filler, const TourModel& model) {
    filler.copyThrough(pageMarker);
    filler.write(windows1252::encodeHtml(model.tourTitle));
    filler.closeRegion(pageMarker);
    filler.copyRest();
}

void fillContentsPage(TemplateFiller& filler, const TourModel& model) {
    filler.copyThrough(loosePageMarker);
    filler.write(windows1252::encodeHtml(model.tourTitle), "</font></h5>");
    forEachStop(filler, model, [&](const std::string& number, const Stop& stop) {
        filler.write("<a href=\"page", number, ".htm\">Stop ", number, "&#151;",
                     windows1252::encodeHtml(stop.stopTitle), "</a><BR>");
    });
    writePageEnd(filler);
}

void fillTourGuide(TemplateFiller& filler, const TourModel& model) {
    filler.copyThrough(loosePageMarker);
    filler.write("<CENTER><P><B><FONT SIZE=+2>", windows1252::encodeHtml(model.tourTitle),
                 "</FONT></B></P></CENTER>");
    filler.skipThrough(loosePageMarker);
    filler.write(pageMarker);
    filler.copyThrough(loosePageMarker);
    forEachStop(filler, model,
                [&](const std::string& number, const Stop& stop) { writeGuideEntry(filler, number, stop); });
    writePageEnd(filler);
}

void makeEveryPage(TourContext& context) {
    makeStopPages(context, 1, context.model.stopCount());
    makeWorkingFrameset(context);
    makeOpeningPageSimple(context);
    makeIndexPage(context);
    makeContentsPage(context);
    makeTourGuide(context);
    makeOpeningPage(context);
    makeWordsAndChoices(context);
}

} // namespace wendmark
