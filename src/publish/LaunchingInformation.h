#pragma once

#include <string>
#include <vector>

/// What the author is told about starting a finished tour from a web page.
namespace wendmark {

struct TourModel;

/// The explanation with the list of launching points; lines end in CR LF.
std::string launchingInformation(const TourModel& model);

/// The list as it is printed, line by line without line ends; empty without launching points.
std::vector<std::string> launchingListToPrint(const TourModel& model);

} // namespace wendmark
