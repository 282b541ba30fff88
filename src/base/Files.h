#pragma once

#include "base/Outcome.h"

#include <string>
#include <string_view>
#include <vector>

/// Everything the core does on the disk. Paths are native, in UTF-8. Looking a file up ignores the case of
/// its name (an exact match wins); a written file has exactly the given name. Only regular files are ever
/// opened, so that a folder, a pipe or a device under a tour's file name is an error and never a wait.
namespace wendmark::files {

/// "folder/name", with one separator between them.
std::string join(std::string_view folder, std::string_view name);

/// Whether `path` is a regular file that can be opened for reading.
bool canBeRead(const std::string& path);

struct Contents {
    Outcome outcome;
    std::string bytes; ///< Empty after a failure.
};

Contents read(const std::string& path);

/// Replaces the file at `path`, complete or not at all: writes a temporary file beside it and renames that
/// over it. After a failure the old file is what it was and no temporary file is left.
Outcome write(const std::string& path, std::string_view bytes);

/// Replaces the file `to` by a copy of `from`, complete or not at all. A file is never copied onto itself.
Outcome copy(const std::string& from, const std::string& to);

/// Copies `from` to a name that is free. After a failure there is no file `to`.
Outcome copyNew(const std::string& from, const std::string& to);

/// Renames a file over `to`; both must lie on one disk.
Outcome move(const std::string& from, const std::string& to);

/// Removes one file, or the link itself if it is one. A missing file is a failure.
Outcome remove(const std::string& path);

/// Makes one folder; its parent must exist. Fails when the name is taken.
Outcome makeFolder(const std::string& path);

/// Removes a folder with all that it holds, without following links. A missing folder is a success.
Outcome removeFolder(const std::string& path);

/// Makes `path` the current folder of the process.
Outcome enterFolder(const std::string& path);

/// Whether both paths lead to the same existing file or folder.
bool same(const std::string& left, const std::string& right);

enum class Links {
    anywhere,    ///< Links to files count as files.
    insideFolder ///< Links that lead out of the folder are left out.
};

struct Listing {
    Outcome outcome;                  ///< Failure: the folder, or the rest of it, cannot be read.
    std::vector<std::string> names;   ///< Sorted by their bytes.
    std::vector<std::string> leadOut; ///< Links left out because they lead out of the folder.
};

/// Names of the regular files of `folder` that match `pattern` (see matchesWildcard()). Names that begin with
/// a dot are left out.
Listing list(const std::string& folder, Links links, std::string_view pattern = "*.*");

/// Names of everything in `folder` that is not a folder, dot names included.
Listing listRemovable(const std::string& folder);

} // namespace wendmark::files
