#include "model/TourLook.h"

#include "base/Files.h"
#include "model/HtmlText.h"
#include "model/ScriptFile.h"

#include <cstddef>

namespace wendmark {

namespace {

/// Bytes. A hundred launching points of the usual length stand before the title.
constexpr std::size_t mostRead = 32768;

} // namespace

TourLook lookAtTour(const std::string& folder) {
    if (folder.empty())
        return {};
    const files::Contents script = files::readBeginning(files::join(folder, "script.txt"), mostRead);
    if (!script.outcome.ok())
        return {};
    return {true, visibleText(titleInScript(script.bytes))};
}

} // namespace wendmark
