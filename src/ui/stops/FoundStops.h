#pragma once

#include "commands/StopListCommands.h"
#include "model/FoundLinks.h"

#include <QString>
#include <optional>
#include <vector>

class QMimeData;
class QWidget;

namespace wendmark {

struct ProgramParts;

/// What a clipboard or a drop holds for a tour.
struct FoundStops {
    std::optional<std::vector<Stop>> own; ///< Stops of this or another running program.
    QString folder;                       ///< Where the files of those are; empty: nobody knows.
    FoundLinks links;                     ///< Only without those.
};

FoundStops findStops(const QMimeData& data);

/// Puts them behind stop `position`; 0 is the opening page. Files come into the tour under names that the
/// author is asked about where they clash. `notice` says what was left out, if anything.
StopListResult takeStops(const ProgramParts& parts, const FoundStops& found, int position, QWidget& window,
                         QString& notice);

} // namespace wendmark
