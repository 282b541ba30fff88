#include "support/TestTour.h"

#include <filesystem>
#include <stdexcept>

namespace wendmark::test {

namespace fs = std::filesystem;

void RecordingDesktop::showLineError(const std::string& text) {
    lineErrors.push_back(text);
    calls.push_back("error: " + text);
}

void RecordingDesktop::processPendingEvents() {
    ++eventRounds;
    seconds += 0.1F;
    if (onPendingEvents)
        onPendingEvents();
}

void RecordingDesktop::navigateMainBrowser(const std::string& address) {
    addresses.push_back(address);
    calls.push_back("navigate: " + address);
}

void RecordingDesktop::setBusyPointer(Pointer pointer) {
    calls.push_back("pointer: " + std::to_string(static_cast<int>(pointer)));
}

void RecordingLog::write(Level level, const std::string& line) {
    auto& lines = level == Level::note ? notes : level == Level::warning ? warnings : failures;
    lines.push_back(line);
}

TestTour::TestTour()
    : workspace(WorkspaceFolders::inside(scratch.path()), model, desktop, log)
    , context{model, workspace, desktop, log} {
    for (const std::string& folder :
         {workspace.folders().templatePath, workspace.folders().newTourPath, workspace.folders().myToursPath})
        fs::create_directory(folder);
}

void TestTour::useShippedTemplates() {
    useTemplates(WENDMARK_ASSETS "/Template");
}

void TestTour::useGoldenTemplates() {
    useTemplates(WENDMARK_TESTS "/golden/Template");
}

void TestTour::writeTemplate(std::string_view name, std::string_view bytes) {
    writeFile(workspace.templateFile(name), bytes);
}

void TestTour::writeWorking(std::string_view name, std::string_view bytes) {
    writeFile(workspace.workingFile(name), bytes);
}

std::string TestTour::working(std::string_view name) const {
    return readFile(workspace.workingFile(name));
}

std::vector<std::string> TestTour::workingLines(std::string_view name) const {
    return splitCrlfLines(working(name));
}

void TestTour::addStop(std::string_view title, std::string_view address, std::string_view narration,
                       std::string_view instruction) {
    model.stops.insert(model.stops.held() + 1, {std::string(title), std::string(address),
                                                std::string(narration), std::string(instruction)});
}

void TestTour::useTemplates(const std::string& folder) {
    // Without "recursive", an option to overwrite makes it copy nothing at all.
    fs::copy(folder, workspace.folders().templatePath,
             fs::copy_options::recursive | fs::copy_options::overwrite_existing);
}

std::vector<std::string> splitCrlfLines(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = text.find("\r\n");
        if (end == std::string_view::npos)
            throw std::runtime_error("a line without CR LF: " + std::string(text));
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(end + 2);
    }
    return lines;
}

} // namespace wendmark::test
