#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace wendmark {

class TemplateFiller;
struct TourContext;
struct TourModel;

/// Fills the frameset template into the working copy's file `outName`. `homePage` is what Exit leads to: an
/// address, a host name, or "AUTO" for wherever the visitor came from. False, as with the next two, when the
/// file is not there or not complete; why, is in the log.
bool fillFrameset(TourContext& context, std::string_view outName, std::string_view homePage);

/// "framever.htm", the frameset that the editor shows.
bool makeWorkingFrameset(TourContext& context);

/// "playtour.htm", "fv1.htm" and, in a single-window tour, one frameset for each launching point.
bool makeTourFramesets(TourContext& context);

/// Name of the frameset of launching point k, which counts from 1.
std::string launchFileName(std::int16_t k);

/// Writes "tmpframe.htm", the working frameset with the current stop in its narration frame, and points the
/// main browser at it; on the opening page at "framever.htm".
void makePreviewFrameset(TourContext& context);

/// What fillFrameset() does with the text of its template.
void fillFramesetTemplate(TemplateFiller& filler, const TourModel& model, std::string_view homePage);

/// What makePreviewFrameset() does with the text of the working frameset.
void fillPreviewTemplate(TemplateFiller& filler, std::int16_t currentStop);

} // namespace wendmark
