// Reads arbitrary bytes as a tour script, writes the tour back, and reads and writes that again.

#include "base/TextLines.h"
#include "fuzz/Require.h"
#include "model/ScriptFile.h"
#include "model/TourModel.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace wendmark::fuzz {
namespace {

constexpr std::array<std::string_view, 5> knownMessages = {
    "Premature end of file", "Command Syntax Error - '=' sign not found",
    "Command Syntax Error - null filename", "Command Syntax Error - null author name",
    "Command Syntax Error - null stop name"};

int lineCount(std::string_view text) {
    int count = 0;
    for (TextLines lines(text); lines.next();)
        ++count;
    return count;
}

std::size_t storedStops(const TourModel& tour) {
    return static_cast<std::size_t>(std::min(tour.stopCount(), tourCapacity));
}

/// Reads a script into a tour that says nothing yet.
std::unique_ptr<TourModel> read(std::string_view script) {
    auto tour = std::make_unique<TourModel>();
    const int lines = lineCount(script);
    parseScript(script, *tour, [&](int lineNumber, std::string_view message) {
        require(std::ranges::find(knownMessages, message) != knownMessages.end(), "messages are known ones");
        // Each text that a file ends before is one more attempt to read a line.
        require(lineNumber >= 1 && lineNumber <= lines + 3, "messages name a line of the file");
    });
    return tour;
}

void checkRanges(const TourModel& tour) {
    require(tour.stopCount() >= 0, "the number of stops is not negative");
    require(tour.launchURLCount >= 0 && tour.launchURLCount <= tourCapacity, "100 launching points fit");
    require(tour.bufferDelay >= 10, "the loading time is 10 seconds or more");
}

/// A narration or instruction as read: lines that are neither empty nor markers, each ended.
void checkText(std::string_view text) {
    if (text.empty())
        return;
    require(text.ends_with(lineBreak), "the last line of a text is ended");
    TextLines lines(text);
    while (const auto line = lines.next()) {
        require(!line->empty() && line->front() != ' ' && line->back() != ' ', "lines of texts are trimmed");
        require(!line->starts_with(scriptMarker), "texts hold no marker line");
    }
}

bool hasTextLeftEmpty(const TourModel& tour) {
    for (std::size_t i = 0; i < storedStops(tour); ++i) {
        if (tour.stops.at(i + 1).stopNarration.empty() || tour.stops.at(i + 1).stopInstruction.empty())
            return true;
    }
    return false;
}

/// A placeholder gets its line end only by being read.
std::string withLineEnd(const std::string& text) {
    return text.ends_with(lineBreak) ? text : text + std::string(lineBreak);
}

/// `right` was read from what was composed of `left`.
void checkSameTour(const TourModel& left, const TourModel& right) {
    require(left.tourTitle == right.tourTitle, "the title survives");
    require(left.tourAuthor == right.tourAuthor, "the author survives");
    require(storedStops(left) == storedStops(right), "every stop survives");
    for (std::size_t i = 0; i < storedStops(left); ++i) {
        require(left.stops.at(i + 1).stopTitle == right.stops.at(i + 1).stopTitle, "stop titles survive");
        require(left.stops.at(i + 1).stopURL == right.stops.at(i + 1).stopURL, "stop addresses survive");
        require(withLineEnd(left.stops.at(i + 1).stopNarration) == right.stops.at(i + 1).stopNarration,
                "narrations survive");
        require(withLineEnd(left.stops.at(i + 1).stopInstruction) == right.stops.at(i + 1).stopInstruction,
                "instructions survive");
    }
    require(left.launchURLCount == right.launchURLCount && left.launchURL == right.launchURL,
            "launching points survive");
    require(left.autoBuffer == right.autoBuffer && left.bufferDelay == right.bufferDelay, "loading survives");
    require(left.autoInstruction == right.autoInstruction, "own instructions survive");
    require(left.narHeight == right.narHeight && left.advWidth == right.advWidth &&
                left.navWidth == right.navWidth,
            "frame sizes survive");
}

void checkLineEnds(std::string_view script) {
    TextLines lines(script);
    std::size_t length = 0;
    while (const auto line = lines.next())
        length += line->size() + lineBreak.size();
    require(length == script.size(), "every line of a script ends in CR LF");
}

void checkScript(std::string_view bytes) {
    const auto tour = read(bytes);
    checkRanges(*tour);
    for (std::size_t i = 0; i < storedStops(*tour); ++i) {
        checkText(tour->stops.at(i + 1).stopNarration);
        checkText(tour->stops.at(i + 1).stopInstruction);
    }
    const bool placeholdersNeeded = hasTextLeftEmpty(*tour);

    const std::string written = composeScript(*tour);
    checkLineEnds(written);
    const auto tourAgain = read(written);
    checkSameTour(*tour, *tourAgain);

    const std::string writtenAgain = composeScript(*tourAgain);
    require(placeholdersNeeded || writtenAgain == written, "writing what was read changes nothing");
    const auto settledTour = read(writtenAgain);
    checkSameTour(*tourAgain, *settledTour);
    require(composeScript(*settledTour) == writtenAgain, "a script that was written twice has settled");
}

} // namespace
} // namespace wendmark::fuzz

// The fuzzer calls it by this name.
// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    wendmark::fuzz::checkScript({reinterpret_cast<const char*>(data), size});
    return 0;
}
