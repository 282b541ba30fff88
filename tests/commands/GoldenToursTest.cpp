#include "commands/TourCommands.h"
#include "commands/TourSave.h"
#include "support/TestTour.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace wendmark {
namespace {

namespace fs = std::filesystem;

using Files = std::map<std::string, std::string>;

const fs::path goldenFolder = WENDMARK_TESTS "/golden";

/// A folder of golden/, except for the templates that all share. Its files are the tour as it is opened;
/// expected/ is the tour's folder after the save, expected-editing/ what the working copy then holds instead.
std::vector<std::string> goldenCases() {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(goldenFolder)) {
        const std::string name = entry.path().filename().string();
        if (entry.is_directory() && name != "Template")
            names.push_back(name);
    }
    std::ranges::sort(names);
    return names;
}

struct Published {
    Files saved;
    Files editing; ///< Only what differs from the saved tour.
};

Files filesThatDiffer(const Files& files, const Files& from) {
    Files different;
    for (const auto& [name, bytes] : files) {
        const auto other = from.find(name);
        if (other == from.end() || other->second != bytes)
            different[name] = bytes;
    }
    return different;
}

/// Opens and saves a copy of the case's tour as a program does that was just started.
Published publish(const std::string& name) {
    test::TestTour tour;
    tour.useGoldenTemplates();
    const std::string folder = tour.scratch / "tour";
    fs::copy(goldenFolder / name, folder); // Not its folders.

    startProgram(tour.context, tour.options);
    loadTemplateTour(tour.context);
    tour.workspace.initTourDefaults();
    tour.workspace.setTourPath(folder);
    openTour(tour.context);
    saveTour(tour.context);

    EXPECT_THAT(tour.desktop.lineErrors, testing::IsEmpty());
    EXPECT_THAT(tour.log.failures, testing::IsEmpty());
    const Files saved = test::folderContents(folder);
    return {saved, filesThatDiffer(test::folderContents(tour.workspace.folders().newTourPath), saved)};
}

std::vector<std::string> namesOf(const Files& files) {
    std::vector<std::string> names;
    for (const auto& [name, bytes] : files)
        names.push_back(name);
    return names;
}

void expectFiles(const Files& actual, const fs::path& expectedFolder) {
    const Files expected =
        fs::exists(expectedFolder) ? test::folderContents(expectedFolder.string()) : Files();
    EXPECT_EQ(namesOf(actual), namesOf(expected));
    for (const auto& [name, bytes] : expected) {
        const auto written = actual.find(name);
        if (written == actual.end())
            continue; // Reported above.
        EXPECT_EQ(written->second, bytes) << "in " << expectedFolder / name;
    }
}

void writeFiles(const Files& files, const fs::path& folder) {
    for (const auto& [name, bytes] : files)
        test::writeFile((folder / name).string(), bytes);
}

TEST(GoldenTours, everyTourIsPublishedByteForByteAsExpected) {
    // For tools/approve-golden, which shows the difference and takes it over.
    const char* const outputFolder = std::getenv("WENDMARK_GOLDEN_OUTPUT");
    const std::vector<std::string> cases = goldenCases();
    ASSERT_THAT(cases, testing::IsSupersetOf({"no-stops", "hundred-stops"}));
    for (const std::string& name : cases) {
        SCOPED_TRACE(name);
        const Published published = publish(name);
        expectFiles(published.saved, goldenFolder / name / "expected");
        expectFiles(published.editing, goldenFolder / name / "expected-editing");
        if (outputFolder != nullptr) {
            writeFiles(published.saved, fs::path(outputFolder) / name / "expected");
            writeFiles(published.editing, fs::path(outputFolder) / name / "expected-editing");
        }
    }
}

} // namespace
} // namespace wendmark
