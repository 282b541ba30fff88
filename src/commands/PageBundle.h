#pragma once

#include "commands/AddedFiles.h"

#include <cstddef>
#include <string>
#include <vector>

namespace wendmark {

class Workspace;

/// A page of the author's own with the files that it shows or works with, as they would come into the tour.
struct PageBundle {
    /// A file beside the page, or below its folder.
    struct Part {
        std::string path; ///< Relative to the page's folder, with "/".
        AddedFile file;
        bool isThere = false; ///< The tour has it already, under that name.
    };

    AddedFile page; ///< Its bytes are there when it has to show parts under other names.
    std::vector<Part> parts;
    std::vector<std::string> missing;   ///< Paths, as in Part, of parts that cannot be read.
    std::vector<std::string> elsewhere; ///< Addresses on this computer that lead out of the page's folder.
    std::size_t leftOut = 0;            ///< Parts beyond mostPageParts.

    /// Whether copying the page alone would leave anything behind.
    bool needsMore() const;

    /// The page and its parts.
    std::vector<AddedFile> files() const;
};

/// Most files that come with a page.
inline constexpr std::size_t mostPageParts = 200;

/// Finds what the page at `path`, which gets the name `name` in the tour, shows or works with, style sheets
/// of its style sheets included, and names under which these can be taken: their own, in lower case, or one
/// with a number where that is taken by another file. Files to which links lead out of the page's folder are
/// left alone, and so are those whose names begin with a dot. `others` come into the tour at the same time.
PageBundle bundlePage(const Workspace& workspace, const std::string& path, const std::string& name,
                      const std::vector<AddedFile>& others = {});

} // namespace wendmark
