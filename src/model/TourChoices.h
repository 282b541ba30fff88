#pragma once

#include <string_view>

/// What an author may choose for a tour beside what its script has always held: older readers of scripts know
/// nothing of it, and a tour for which nothing is chosen has no trace of it.
namespace wendmark {

struct TourModel;

/// What a script and the pages call the layout in which the words stand beside the page.
inline constexpr std::string_view wordsBesidePageLayout = "side";

/// Whether the text may stand for a language in a script and in a page: letters, digits and single hyphens
/// between them, at most 35 characters, as in "de" and "pt-BR".
bool isLanguageCode(std::string_view text);

/// Whether the author has chosen anything for the tour.
bool hasChoices(const TourModel& model);

} // namespace wendmark
