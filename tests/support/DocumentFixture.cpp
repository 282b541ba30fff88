#include "support/DocumentFixture.h"

#include <filesystem>

namespace wendmark::test {

namespace fs = std::filesystem;

std::string scriptOfStops(int stops) {
    std::string script = "<<<VoskInfo>>>#BufferDelay = 30\r\n\r\nTest tour\r\n\r\n";
    for (int n = 1; n <= stops; ++n) {
        const std::string number = std::to_string(n);
        script += "<<<VoskInfo>>> Stop" + number + "\r\nStop " + number +
                  "\r\nnewpage.htm\r\n\r\nWords of stop " + number + ".\r\n\r\n<!--instruction-->\r\n\r\n";
    }
    return script;
}

DocumentFixture::DocumentFixture()
    : document(WorkspaceFolders::inside(scratch.path()), desktop, log, scratch / "state/undo") {
    fs::copy(WENDMARK_ASSETS "/Template", scratch / "Template");
    fs::create_directory(scratch / "MyTours");
    document.startProgram(options);
}

std::string DocumentFixture::makeTour(const std::string& name, int stops) {
    writeFile(tourFile(name, "script.txt"), scriptOfStops(stops));
    return tourFolder(name);
}

Opening DocumentFixture::openTour(const std::string& folder) {
    document.beginOpening();
    return document.finishOpening(folder);
}

bool DocumentFixture::newTour(const std::string& name, const std::string& title) {
    document.beginNew();
    fs::create_directories(tourFolder(name));
    return document.finishNew(title, tourFolder(name));
}

} // namespace wendmark::test
