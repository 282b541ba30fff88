#include "tour_cli/TourFixture.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <sstream>
#include <stdexcept>

namespace wendmark::test {

namespace fs = std::filesystem;

namespace {

constexpr std::uintmax_t longestShown = 1000000;

std::string stateOf(const fs::directory_entry& entry) {
    if (entry.is_symlink())
        return "link to " + fs::read_symlink(entry.path()).string();
    std::ostringstream state;
    state << std::oct << static_cast<unsigned>(entry.status().permissions()) << ' ';
    if (entry.is_directory())
        state << "folder";
    else if (entry.is_regular_file() && entry.file_size() > longestShown)
        state << "file of " << entry.file_size() << " bytes";
    else if (entry.is_regular_file())
        state << "file: " << readFile(entry.path().string());
    else
        state << "something else";
    return state.str();
}

} // namespace

std::map<std::string, std::string> folderState(const std::string& folder) {
    std::map<std::string, std::string> state;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder))
        state[(fs::relative(entry.path().parent_path(), folder) / entry.path().filename())
                  .lexically_normal()] = stateOf(entry);
    return state;
}

std::string scriptWithStops(int stops) {
    std::string script = crlfLines(
        {"<<<VoskInfo>>>#BufferDelay = 30", "<<<VoskInfo>>>#SingleWindow", "", "Plants of the Desert", ""});
    for (int n = 1; n <= stops; ++n) {
        const std::string number = std::to_string(n);
        const std::string address = n == 1 ? "cactus.htm" : "https://www.brenholt.example/" + number + ".htm";
        script += crlfLines({"<<<VoskInfo>>> Stop" + number, "Plant " + number, address, "",
                             "What plant " + number + " does.", "", "Look closely.", ""});
    }
    return script;
}

TourFixture::TourFixture() : tour(makeTour("tour", scriptWithStops(3))) {
    fs::permissions(scratch.path(), fs::perms(0755));
}

std::string TourFixture::makeTour(std::string_view name, std::string_view script) const {
    std::string folder = scratch / name;
    writeFile(folder + "/script.txt", script);
    writeFile(folder + "/cactus.htm", "<html>A cactus.</html>");
    return folder;
}

ProgramRun TourFixture::program() {
    return ProgramRun(WENDMARK_TOUR);
}

ProgramRun TourFixture::programInFolder(const std::string& app) {
    fs::create_directory(app);
    fs::copy_file(WENDMARK_TOUR, app + "/wendmark-tour");
    fs::copy(WENDMARK_ASSETS "/Template", app + "/Template");
    return ProgramRun(app + "/wendmark-tour");
}

void TourFixture::expectFailure(const ProgramRun& run, const std::vector<std::string>& arguments,
                                std::initializer_list<std::string_view> parts) const {
    SCOPED_TRACE(::testing::PrintToString(arguments));
    const auto before = folderState(scratch.path());
    const ProgramResult result = run.run(arguments);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    const std::vector<std::string> lines = linesOf(result.errors);
    ASSERT_EQ(lines.size(), 1U) << result.errors;
    EXPECT_THAT(lines.front(), ::testing::StartsWith("wendmark-tour: "));
    for (const std::string_view part : parts)
        EXPECT_THAT(lines.front(), ::testing::HasSubstr(std::string(part)));
    EXPECT_EQ(folderState(scratch.path()), before);
}

void expectDone(const ProgramResult& result) {
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
}

std::vector<std::string> linesOf(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        if (end == std::string_view::npos)
            throw std::runtime_error("a last line without an end: " + std::string(text));
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    return lines;
}

} // namespace wendmark::test
