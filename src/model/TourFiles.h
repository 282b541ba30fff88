#pragma once

#include <string>
#include <string_view>
#include <vector>

/// What the names of a tour's files say, whatever their case. One table holds all of it.
namespace wendmark {

/// Whether the program makes the file of this name anew, from the model and the templates, whenever it needs
/// it.
bool isGeneratedFile(std::string_view name);

/// Whether the file is the program's scratch: needed for a moment, and worth nothing afterwards. It is a
/// generated file, too.
bool isScratchFile(std::string_view name);

/// Whether the file is the author's own and none of the tour's visitors: what the site editor remembers.
bool isPrivateFile(std::string_view name);

/// Whether the program writes files of this name, so that none of the author's (a page, an image) may take
/// it: generated files and private ones. Names of templates are reserved, too; see
/// Workspace::isTemplateFile().
bool isReservedName(std::string_view name);

/// The templates without which no tour can be generated.
const std::vector<std::string>& neededTemplates();

/// Patterns (see matchesWildcard()) of the files that a save puts in place last, in this order: what leads to
/// stops comes after the stops, and the script, as which the folder opens, after everything else. However far
/// a save gets, each file finds what it leads to.
const std::vector<std::string>& savedLast();

} // namespace wendmark
