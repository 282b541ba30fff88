#pragma once

#include "model/StopList.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Stops on their way from one tour to another, also between two running programs. Texts are UTF-8.
namespace wendmark {

/// Names the form of encodeStops() among what a clipboard holds.
inline constexpr std::string_view stopsMimeType = "application/x-wendmark-stops";

/// Everything that the stops hold.
std::string encodeStops(const std::vector<Stop>& stops);

/// None when the bytes are not all of what encodeStops() gives for 1 to tourCapacity stops.
std::optional<std::vector<Stop>> decodeStops(std::string_view bytes);

/// HTML for other programs: a list of the titles, each with a link to its page on the web.
std::string stopsAsHtml(const std::vector<Stop>& stops);

/// One line for each stop: its title as visitors read it, a tab, and its address.
std::string stopsAsPlainText(const std::vector<Stop>& stops);

} // namespace wendmark
