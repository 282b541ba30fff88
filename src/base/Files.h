#pragma once

#include "base/Outcome.h"

#include <cstddef>
#include <set>
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

/// Whether there is surely nothing of that name: what cannot be looked at may be there.
bool isMissing(const std::string& path);

struct Contents {
    Outcome outcome;
    std::string bytes; ///< Empty after a failure.
};

Contents read(const std::string& path);

/// Same for the first `most` bytes of a file, or all there are.
Contents readBeginning(const std::string& path, std::size_t most);

/// How a file takes the place of an older one.
enum class Replacing {
    /// Complete or not at all: a temporary file beside it is written and renamed over it. After a failure the
    /// old file is what it was and no temporary file is left.
    completeOrNot,
    /// The old file goes first, and after a failure there is none. Much quicker where a disk secures the
    /// contents of a file that takes another's name. For folders that nobody looks into and that are given up
    /// after a failure.
    oldFirst
};

/// Replaces the file at `path`.
Outcome write(const std::string& path, std::string_view bytes,
              Replacing replacing = Replacing::completeOrNot);

/// Replaces the file `to` by a copy of `from`. A file is never copied onto itself.
Outcome copy(const std::string& from, const std::string& to, Replacing replacing = Replacing::completeOrNot);

/// Same as write(), and the bytes are on the disk before the file has its name: a power cut leaves the old
/// file or the new one.
Outcome writeSecured(const std::string& path, std::string_view bytes);

/// Copies `from` to a name that is free. After a failure there is no file `to`.
Outcome copyNew(const std::string& from, const std::string& to);

/// Gives the file `from` a second name, which must be free. On another disk, and where files have one name
/// only, that is a copy.
Outcome addName(const std::string& from, const std::string& to);

/// Renames a file over `to`, or a folder to a free name; both must lie on one disk.
Outcome move(const std::string& from, const std::string& to);

/// Removes one file, or the link itself if it is one. A missing file is a failure.
Outcome remove(const std::string& path);

/// Makes one folder; its parent must exist. Fails when the name is taken.
Outcome makeFolder(const std::string& path);

/// Makes a folder and every parent that is missing. One that is there is a success.
Outcome makeFolders(const std::string& path);

/// Removes a folder with all that it holds, without following links. A missing folder is a success.
Outcome removeFolder(const std::string& path);

/// Makes `path` the current folder of the process.
Outcome enterFolder(const std::string& path);

/// Whether both paths lead to the same existing file or folder.
bool same(const std::string& left, const std::string& right);

/// Whether the file that `path` leads to, by links also, lies in `folder` or below it. False when there is
/// none.
bool leadsInside(const std::string& path, const std::string& folder);

/// Whether the file that `path` leads to, also by links, lies in `folder` or below it.
bool liesInside(const std::string& path, const std::string& folder);

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

/// Names of the folders in `folder`, without links to folders.
Listing listFolders(const std::string& folder);

/// What changes when a file is replaced or written to. Empty for what is no file.
std::string stampOf(const std::string& path);

/// Names of the regular files of `folder` that differ from one of `names`, which are lower case, but only in
/// case. On a disk that ignores case there are none. Nothing when the folder cannot be read.
std::vector<std::string> otherSpellings(const std::string& folder, const std::set<std::string>& names);

/// Names of everything in `folder` that is not a folder, dot names included.
Listing listRemovable(const std::string& folder);

} // namespace wendmark::files
