#include "commands/SeenTour.h"

#include "model/TourFiles.h"
#include "support/DocumentFixture.h"

namespace wendmark::test {

Seen seen(const DocumentFixture& program) {
    TourModel model = program.document.model();
    Seen all;
    for (const Stop& stop : model.stops)
        all.tour += stop.stopTitle + "\n" + stop.stopURL + "\n" + stop.stopNarration + "\n" +
                    stop.stopInstruction + "\n";
    all.tour += model.tourTitle + model.tourAuthor + std::to_string(model.narHeight) +
                std::to_string(static_cast<int>(model.autoInstruction)) +
                std::to_string(model.launchURLCount) + program.document.workspace().tourPath();
    for (const auto& [name, bytes] : folderContents(program.workingCopy())) {
        const bool between = isScratchFile(name) || name == "script.txt" || name == "link.txt" ||
                             name == "brhist.txt" || name == "nav3.htm";
        if (!between)
            all.files[name] = bytes;
    }
    return all;
}

std::vector<std::string> differences(const Seen& left, const Seen& right) {
    std::vector<std::string> names;
    if (left.tour != right.tour)
        names.push_back("the tour: " + left.tour + " / " + right.tour);
    for (const auto& [name, bytes] : left.files) {
        const auto other = right.files.find(name);
        if (other == right.files.end() || other->second != bytes)
            names.push_back(name);
    }
    for (const auto& [name, bytes] : right.files) {
        if (!left.files.contains(name))
            names.push_back("also " + name);
    }
    return names;
}

} // namespace wendmark::test
