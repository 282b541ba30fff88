#pragma once

#include "commands/AddedFiles.h"

#include <string>
#include <vector>

class QString;
class QWidget;

namespace wendmark {

struct ProgramParts;

/// Files that come into the tour with the page at `path`, which gets this name there: the page first, and
/// what it shows if the author wants that. None: the author has given up. `others` come at the same time.
std::vector<AddedFile> filesOfPage(const ProgramParts& parts, const QString& path, const std::string& name,
                                   const std::vector<AddedFile>& others, QWidget& window);

} // namespace wendmark
