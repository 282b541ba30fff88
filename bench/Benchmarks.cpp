// What the core's work on a tour costs: as a whole, and per stop, which must not grow with the number of
// stops.
#include "model/ScriptFile.h"
#include "publish/Framesets.h"
#include "publish/StopPages.h"
#include "publish/TourPages.h"
#include "support/TestTour.h"

#include <benchmark/benchmark.h>

namespace wendmark {
namespace {

std::string narrationOf(std::size_t bytes) {
    constexpr std::string_view line = "A line of words that a visitor reads beside the page of the stop.\r\n";
    std::string narration;
    while (narration.size() < bytes)
        narration.append(line);
    return narration;
}

/// Fills the tour with as many stops, and narrations of as many bytes, as the benchmark's arguments say.
void addStops(TourModel& model, const benchmark::State& state) {
    model.tourTitle = "Plants of the Desert";
    model.stops.setCount(static_cast<std::int16_t>(state.range(0)));
    for (std::size_t i = 0; i < static_cast<std::size_t>(state.range(0)); ++i) {
        model.stops.at(i + 1).stopTitle = "Plant " + std::to_string(i + 1);
        model.stops.at(i + 1).stopURL = "https://www.brenholt.example/plant" + std::to_string(i + 1) + ".htm";
        model.stops.at(i + 1).stopNarration = narrationOf(static_cast<std::size_t>(state.range(1)));
        model.stops.at(i + 1).stopInstruction = "Look closely.\r\n";
    }
}

void reportTimePerStop(benchmark::State& state) {
    state.counters["per stop"] =
        benchmark::Counter(static_cast<double>(state.range(0)),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void readScriptFromMemory(benchmark::State& state) {
    TourModel model;
    addStops(model, state);
    const std::string script = composeScript(model);
    for (auto _ : state)
        parseScript(script, model, [](int, std::string_view) {});
    reportTimePerStop(state);
}

void writeScriptToMemory(benchmark::State& state) {
    TourModel model;
    addStops(model, state);
    for (auto _ : state)
        benchmark::DoNotOptimize(composeScript(model));
    reportTimePerStop(state);
}

void makeStopPagesOnDisk(benchmark::State& state) {
    test::TestTour tour;
    tour.useShippedTemplates();
    addStops(tour.model, state);
    for (auto _ : state)
        makeStopPages(tour.context, 1, tour.model.stopCount());
    reportTimePerStop(state);
}

void makeContentsGuideAndFramesetsOnDisk(benchmark::State& state) {
    test::TestTour tour;
    tour.useShippedTemplates();
    addStops(tour.model, state);
    for (auto _ : state) {
        makeContentsPage(tour.context);
        makeTourGuide(tour.context);
        makeWorkingFrameset(tour.context);
        makeTourFramesets(tour.context);
    }
    reportTimePerStop(state);
}

void eachSize(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgNames({"stops", "narration"})
        ->ArgsProduct({{1, 10, 100}, {2048, 32768}})
        ->Unit(benchmark::kMicrosecond);
}

BENCHMARK(readScriptFromMemory)->Apply(eachSize);
BENCHMARK(writeScriptToMemory)->Apply(eachSize);
BENCHMARK(makeStopPagesOnDisk)->Apply(eachSize);
BENCHMARK(makeContentsGuideAndFramesetsOnDisk)->Apply(eachSize);

} // namespace
} // namespace wendmark
