// Fills arbitrary bytes as a template: by any order of steps, and by every generator.
//
// First line of the input: steps, one letter each (see takeStep()). Second line: the text that the tour has
// as title, author, stop titles, addresses, narrations and instructions. The rest is the template.

#include "base/TextLines.h"
#include "fuzz/Require.h"
#include "model/TourModel.h"
#include "publish/Framesets.h"
#include "publish/StopPages.h"
#include "publish/TemplateFiller.h"
#include "publish/TourPages.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>

namespace wendmark::fuzz {
namespace {

constexpr std::string_view framesStart = "<!-- Frameset for frame-based design -->";

using Fill = std::function<void(TemplateFiller&)>;
using Lines = std::set<std::string_view>;

Lines linesOf(std::string_view text) {
    Lines lines;
    for (TextLines walk(text); const auto line = walk.next();)
        lines.insert(*line);
    return lines;
}

struct Filled {
    std::string output;
    bool stopped;
};

Filled fill(std::string_view templateText, const Fill& steps) {
    TemplateFiller filler(templateText);
    steps(filler);
    require(filler.stopped() == !filler.reason().empty(), "a filling that stopped says why");
    return {filler.output(), filler.stopped()};
}

void takeStep(TemplateFiller& filler, char letter) {
    switch (letter) {
    case 'p':
        return filler.copyThrough(pageMarker);
    case 'l':
        return filler.copyThrough(loosePageMarker);
    case 'j':
        return filler.copyThrough(scriptBlockMarker);
    case 's':
        return filler.skipThrough(loosePageMarker);
    case 'c':
        return filler.closeRegion(pageMarker);
    case 'k':
        return filler.closeRegion(scriptBlockMarker);
    case '1':
        return filler.copyLine();
    case '0':
        return filler.dropLine();
    case 'w':
        return filler.write("generated");
    case '!':
        return filler.stop("told to");
    default:
        return;
    }
}

/// Markers of every kind, enough for each generator to find all of its own.
std::string everyMarker() {
    std::string text;
    const auto addMarkers = [&](std::string_view marker) {
        for (int i = 0; i < 8; ++i)
            text.append(marker).append(lineBreak);
    };
    addMarkers(scriptBlockMarker);
    addMarkers(pageMarker);
    addMarkers(scriptBlockMarker);
    text.append(framesStart).append(lineBreak);
    addMarkers(pageMarker);
    return text.append("</html>").append(lineBreak);
}

std::string endLastLine(std::string_view text) {
    std::string ended(text);
    if (ended.ends_with('\r'))
        ended.push_back('\n');
    else if (!ended.empty() && !ended.ends_with('\n'))
        ended.append(lineBreak);
    return ended;
}

struct Template {
    explicit Template(std::string_view bytes)
        : text(bytes), lines(linesOf(bytes)), continued(endLastLine(bytes) + everyMarker()) {}

    std::string_view text;
    Lines lines;
    std::string continued; ///< With further lines, in which every generator finds what it looks for.
};

/// `generated` are the lines that the filling may hold besides those of its template.
void checkLines(const Template& source, const Filled& filled, const Lines& generated) {
    std::size_t length = 0;
    for (TextLines walk(filled.output); const auto line = walk.next();) {
        require(source.lines.contains(*line) || generated.contains(*line),
                "each line comes from the template or from the generator");
        length += line->size() + lineBreak.size();
    }
    require(length == filled.output.size(), "every line of a page ends in CR LF");
}

Filled checkFilling(const Template& source, const Fill& steps, const Lines& generated) {
    Filled filled = fill(source.text, steps);
    checkLines(source, filled, generated);
    require(fill(source.continued, steps).output.starts_with(filled.output),
            "what was composed does not depend on what follows in the template");
    return filled;
}

void checkSteps(const Template& source, std::string_view letters) {
    // Lines that follow the rest of the template would move when the template gets longer.
    const std::string_view untilRest = letters.substr(0, letters.find('r'));
    const Fill steps = [&](TemplateFiller& filler) {
        for (const char letter : untilRest)
            takeStep(filler, letter);
        if (untilRest.size() < letters.size())
            filler.copyRest();
    };
    checkFilling(source, steps, {"generated", pageMarker, scriptBlockMarker});
}

/// A text that looks like a marker line makes a page that can be filled only once.
bool looksLikeMarker(std::string_view text) {
    return text.starts_with(loosePageMarker) || text.starts_with(scriptBlockMarker);
}

void checkGenerator(const Template& source, const TourModel& tour, const Fill& generate) {
    static const std::string markers = everyMarker();
    const Filled example = fill(markers, generate);
    require(!example.stopped, "a template with every marker can be filled");
    const Filled page = checkFilling(source, generate, linesOf(example.output));
    if (page.stopped || looksLikeMarker(tour.tourTitle))
        return;
    const Filled again = fill(page.output, generate);
    require(!again.stopped && again.output == page.output, "a filled page is its own template");
}

/// A tour that says `text` wherever it can.
std::unique_ptr<TourModel> tourOf(std::string_view text, std::int16_t stopCount) {
    auto tour = std::make_unique<TourModel>();
    tour->tourTitle = text;
    tour->tourAuthor = text;
    tour->stopLabel = text;
    tour->homeSiteURL = text;
    tour->stops.setCount(stopCount);
    for (std::size_t i = 0; i < static_cast<std::size_t>(stopCount); ++i) {
        tour->stops.at(i + 1).stopTitle = text;
        tour->stops.at(i + 1).stopURL = text;
        tour->stops.at(i + 1).stopNarration = text;
        tour->stops.at(i + 1).stopInstruction = text;
    }
    return tour;
}

void checkGenerators(const Template& source, const TourModel& tour) {
    const auto check = [&](const Fill& generate) { checkGenerator(source, tour, generate); };
    check([&](TemplateFiller& filler) { fillFramesetTemplate(filler, tour, tour.tourTitle); });
    check([&](TemplateFiller& filler) { fillOpeningPageSimple(filler, tour); });
    check([&](TemplateFiller& filler) { fillOpeningPage(filler, tour); });
    check([&](TemplateFiller& filler) { fillIndexPage(filler, tour); });
    check([&](TemplateFiller& filler) { fillContentsPage(filler, tour); });
    check([&](TemplateFiller& filler) { fillTourGuide(filler, tour); });
    check([&](TemplateFiller& filler) { fillPreviewTemplate(filler, tour.stopCount()); });
    if (tour.stopCount() > 0)
        check([&](TemplateFiller& filler) { fillStopPage(filler, tour, tour.stopCount()); });
}

/// Takes the first line off the input.
std::string_view takeLine(std::string_view& input) {
    const std::size_t end = std::min(input.find_first_of(lineBreak), input.size());
    const std::string_view line = input.substr(0, end);
    input.remove_prefix(std::min(end + 1, input.size()));
    return line;
}

void checkInput(std::string_view input) {
    const std::string_view letters = takeLine(input);
    const std::string_view text = takeLine(input);
    const Template source(input);
    checkSteps(source, letters);
    checkGenerators(source, *tourOf(text, 0));
    checkGenerators(source, *tourOf(text, 2));
}

} // namespace
} // namespace wendmark::fuzz

// The fuzzer calls it by this name.
// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    wendmark::fuzz::checkInput({reinterpret_cast<const char*>(data), size});
    return 0;
}
