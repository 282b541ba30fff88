// How long the core works on input that no author made. Tests judge what it allocates, never the time.
#include "commands/TourCommands.h"
#include "model/ScriptFile.h"
#include "model/SiteLists.h"
#include "publish/TemplateFiller.h"
#include "support/TestTour.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <functional>
#include <random>

namespace wendmark {
namespace {

constexpr std::size_t hundredMegabytes = 100'000'000;

std::string repeated(std::string_view part, std::size_t bytes = hundredMegabytes) {
    std::string text;
    text.reserve(bytes + part.size());
    while (text.size() < bytes)
        text += part;
    return text;
}

std::string noise() {
    std::mt19937_64 generator(7);
    std::string bytes(hundredMegabytes, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(generator() >> 56);
    return bytes;
}

std::string words() {
    return "Title\r\nStop\r\na.htm\r\n\r\n" + repeated("The quick brown fox jumps over the lazy dog. \r\n");
}

std::string oneLine() {
    return repeated("word ");
}

std::string references() {
    return "Title\nStop\na.htm\n\n" + repeated("&#8364;&&#");
}

std::string shortLines() {
    return repeated("a\n", hundredMegabytes / 2);
}

std::string stops() {
    return "Title\r\n" + repeated("Stop\r\nhttp://a.example/\r\n\r\nWords.\r\n\r\nDo it.\r\n\r\n");
}

std::string historyLines() {
    return repeated("http://a.example/" + std::string(1983, '\xe9') + "\r\n");
}

using MakeBytes = std::string (*)();

/// Puts a script of these bytes, or of their first tenth, into a tour of its own.
class ScriptOnDisk final {
public:
    ScriptOnDisk(const std::string& bytes, std::size_t part) {
        tour.useShippedTemplates();
        tour.workspace.setTourPath(tour.scratch / "MyTours/hostile");
        std::filesystem::create_directory(tour.workspace.tourPath());
        test::writeFile(tour.workspace.tourFile("script.txt"),
                        std::string_view(bytes).substr(0, bytes.size() / part));
    }

    test::TestTour tour;
};

void readScriptFromDisk(benchmark::State& state, MakeBytes make) {
    ScriptOnDisk script(make(), 1);
    for (auto _ : state)
        readScriptFile(script.tour.context, script.tour.workspace.tourFile("script.txt"));
}

void openTenthOfIt(benchmark::State& state, MakeBytes make) {
    ScriptOnDisk script(make(), 10);
    for (auto _ : state)
        openTour(script.tour.context);
}

void readBookmarkList(benchmark::State& state, MakeBytes make) {
    const std::string bytes = make();
    for (auto _ : state)
        benchmark::DoNotOptimize(readBookmarks(bytes));
}

void readHistoryList(benchmark::State& state, MakeBytes make) {
    const std::string bytes = make();
    for (auto _ : state)
        benchmark::DoNotOptimize(readHistory(bytes));
}

void fillThroughMillionMarkers(benchmark::State& state) {
    const std::string text = repeated(std::string(pageMarker) + "\r\n", 1'000'000 * (pageMarker.size() + 2));
    for (auto _ : state) {
        TemplateFiller filler(text);
        while (!filler.stopped()) {
            filler.copyThrough(pageMarker);
            filler.write("new");
            filler.closeRegion(pageMarker);
        }
        benchmark::DoNotOptimize(filler.output());
    }
}

void fewRuns(benchmark::internal::Benchmark* benchmark) {
    benchmark->Iterations(3)->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(readScriptFromDisk, words, words)->Apply(fewRuns);
BENCHMARK_CAPTURE(readScriptFromDisk, oneLine, oneLine)->Apply(fewRuns);
BENCHMARK_CAPTURE(readScriptFromDisk, references, references)->Apply(fewRuns);
BENCHMARK_CAPTURE(readScriptFromDisk, shortLines, shortLines)->Apply(fewRuns);
BENCHMARK_CAPTURE(readScriptFromDisk, stops, stops)->Apply(fewRuns);
BENCHMARK_CAPTURE(readScriptFromDisk, noise, noise)->Apply(fewRuns);
BENCHMARK_CAPTURE(openTenthOfIt, words, words)->Apply(fewRuns);
BENCHMARK_CAPTURE(openTenthOfIt, oneLine, oneLine)->Apply(fewRuns);
BENCHMARK_CAPTURE(openTenthOfIt, references, references)->Apply(fewRuns);
BENCHMARK_CAPTURE(openTenthOfIt, noise, noise)->Apply(fewRuns);
BENCHMARK_CAPTURE(readBookmarkList, noise, noise)->Apply(fewRuns);
BENCHMARK_CAPTURE(readHistoryList, historyLines, historyLines)->Apply(fewRuns);
BENCHMARK(fillThroughMillionMarkers)->Apply(fewRuns);

} // namespace
} // namespace wendmark
