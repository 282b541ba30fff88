#include "publish/LaunchingInformation.h"

#include "base/TextLines.h"
#include "model/TourModel.h"
#include "publish/Framesets.h"

#include <algorithm>

namespace wendmark {

namespace {

constexpr std::string_view explanation =
    "A tour is launched by creating a hyperlink to a particular tour file. This file (TOURLAUNCH) is "
    "automatically created by Wendmark. Apart from launching the tour. this file also remembers the "
    "URL of the launching point so that the user may be returned to the launching point when the Exit "
    "button is clicked.\r\n"
    "\r\n"
    "A tour may be launched from multiple locations. For each such location a version of the "
    "TOURLAUNCH file is created. The first TOURLAUNCH file is named as '_tourlaunch1.htm', the second "
    "one as '_tourlaunch2.htm' etc. To launch the tour from launching point one, you should hyperlink "
    "to '_tourlaunch1.htm'. Similarly, to launch the same tour from launching point two, you should "
    "hyperlink to '_tourlaunch2.htm'.\r\n"
    "\r\n"
    "To see which TOURLAUNCH file corresponds to which launching point, take a look at the "
    "'launch.txt' file in the tour's folder. This file is modified each time the launching point list "
    "is modified in Tour Properties.\r\n"
    "\r\n"
    "The current launching points and their corresponding TOURLAUNCH files are shown below:\r\n"
    "\r\n";

constexpr std::string_view noLaunchingPoints = "    NO LAUNCHING POINTS SPECIFIED\r\n"
                                               "\r\n";

constexpr std::string_view howToAddThem =
    "[Launching points are not yet specified. You must do so before you post the tour for public "
    "viewing. To do so, Click on the 'Tour Properties' button on Wendmark's toolbar and select the "
    "'Launching' tab. Add all the launching points from which you want to launch this tour. You can "
    "always add new launching points in the future, or delete existing ones.]";

std::int16_t listedPoints(const TourModel& model) {
    return std::min(model.launchURLCount, tourCapacity);
}

/// The line of launching point k, counted from 1.
std::string launchLine(const TourModel& model, std::int16_t k) {
    std::string line = " ";
    line += std::to_string(k);
    line += ".  When launching from  '";
    line += model.launchURL.at(static_cast<std::size_t>(k - 1));
    line += "'  hyperlink to  '";
    line += launchFileName(k);
    line += "'";
    return line;
}

} // namespace

std::string launchingInformation(const TourModel& model) {
    std::string text(explanation);
    if (model.launchURLCount == 0)
        return text.append(noLaunchingPoints).append(howToAddThem);
    for (std::int16_t k = 1; k <= listedPoints(model); ++k)
        text.append(launchLine(model, k)).append(lineBreak);
    return text;
}

std::vector<std::string> launchingListToPrint(const TourModel& model) {
    constexpr std::size_t linesAbove = 6;
    constexpr std::size_t linesBetween = 4;
    const std::string margin(10, ' ');
    if (model.launchURLCount == 0)
        return {};
    std::vector<std::string> lines(linesAbove);
    lines.push_back(margin + "Launching URLs");
    lines.push_back(margin + model.tourTitle);
    lines.resize(lines.size() + linesBetween);
    for (std::int16_t k = 1; k <= listedPoints(model); ++k)
        lines.push_back(margin + launchLine(model, k));
    return lines;
}

} // namespace wendmark
