#pragma once

#include <functional>
#include <string>
#include <vector>

/// What the author can set for the whole tour.
namespace wendmark {

struct TourContext;

/// The properties as the author has left them, numbers as typed.
struct TourProperties {
    std::string tourTitle;
    std::string tourAuthor;
    bool autoInstruction = true;
    std::string cachePeriod; ///< Seconds; what follows a leading number counts for nothing.
    bool autoBuffer = false;
    std::vector<std::string> launchURLs; ///< What goes beyond the tour's capacity is left out.
    std::string narHeight;               ///< Pixels, as are the next two.
    std::string advWidth;
    std::string navWidth;
    std::string language; ///< As in TourModel.
    bool wordsBesidePage = false;
    std::string logoFile; ///< Full path; empty: the logo stays what it is.
};

/// Puts the properties into the model, copies the logo, generates every page again and marks the tour as
/// changed. Calls `refuseDimension` for each dimension that is not numeric; its value stays what it was, as
/// does that of a number that is too large.
void changeTourProperties(TourContext& context, const TourProperties& properties,
                          const std::function<void()>& refuseDimension);

} // namespace wendmark
