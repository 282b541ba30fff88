#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace wendmark {

class TemplateFiller;
struct TourContext;
struct TourModel;

/// Writes the working copy's "page" + n + ".htm" for each stop n from `first` to `last`, which count from 1
/// and are both included. With autoInstruction, first overwrites the instructions of all stops in the model.
/// Stops at the first failure, among them a stop number above 100 and an automatic instruction without any
/// stop.
void makeStopPages(TourContext& context, std::int16_t first, std::int16_t last);

/// The page that makeStopPages() would write for stop n, 1 to 100, of this model, with the text of its
/// template.
std::string composeStopPage(std::string_view templateText, TourModel model, std::int16_t n);

/// What makeStopPages() does with the text of its template for stop n, 1 to 100.
void fillStopPage(TemplateFiller& filler, const TourModel& model, std::int16_t n);

} // namespace wendmark
