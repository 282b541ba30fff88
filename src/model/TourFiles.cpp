#include "model/TourFiles.h"

#include "base/Names.h"

#include <algorithm>
#include <array>

namespace wendmark {

namespace {

enum class Kind {
    generated, ///< From the model and the templates.
    scratch,   ///< Generated, and worth nothing afterwards.
    own,       ///< The author's, not for visitors.
    support    ///< Only a template.
};

enum class Template { needed, no };

/// In which part of a save a file is put in place.
enum SavedIn { first, contents, workingFrameset, preview, launchingPoints, frameset, script };

struct TourFile {
    std::string_view name; ///< "#" stands for a number: one digit or more.
    Kind kind;
    Template inTemplates; ///< Whether generators need the template of this name.
    SavedIn savedIn;
};

constexpr std::array<TourFile, 22> tourFiles = {
    {{"framever.htm", Kind::generated, Template::needed, workingFrameset},
     {"page.htm", Kind::support, Template::needed, first},
     {"openhelp.htm", Kind::generated, Template::needed, first},
     {"index.htm", Kind::generated, Template::needed, first},
     {"toc.htm", Kind::generated, Template::needed, contents},
     {"tguide.htm", Kind::generated, Template::needed, first},
     {"navtemp.htm", Kind::support, Template::needed, first},
     {"navfinal.htm", Kind::support, Template::needed, first},
     {"script.txt", Kind::generated, Template::needed, script},
     {"page#.htm", Kind::generated, Template::no, first},
     {"playtour.htm", Kind::generated, Template::no, frameset},
     {"_tourlaunch#.htm", Kind::generated, Template::no, launchingPoints},
     {"fv1.htm", Kind::generated, Template::no, preview},
     {"nav3.htm", Kind::generated, Template::no, first},
     {"link.txt", Kind::generated, Template::no, first},
     {"tourwords.js", Kind::generated, Template::no, first},
     {"tourchoices.js", Kind::generated, Template::no, first},
     {"tmpframe.htm", Kind::scratch, Template::no, first},
     {"ft.htm", Kind::scratch, Template::no, first},
     {"script1.txt", Kind::scratch, Template::no, first},
     {"brhist.txt", Kind::own, Template::no, first},
     {"goodlist.txt", Kind::own, Template::no, first}}};

/// An author's page may be called "page-one.htm" and is none of the numbered ones.
bool hasName(const TourFile& file, std::string_view name) {
    const std::size_t number = file.name.find('#');
    if (number == std::string_view::npos)
        return equalIgnoringCase(name, file.name);
    const std::string_view beginning = file.name.substr(0, number);
    const std::string_view end = file.name.substr(number + 1);
    if (name.size() <= beginning.size() + end.size())
        return false;
    const std::string_view digits =
        name.substr(beginning.size(), name.size() - beginning.size() - end.size());
    return equalIgnoringCase(name.substr(0, beginning.size()), beginning) &&
           equalIgnoringCase(name.substr(name.size() - end.size()), end) &&
           digits.find_first_not_of("0123456789") == std::string_view::npos;
}

/// Null for a file of which nothing is known.
const TourFile* find(std::string_view name) {
    const auto* const file = std::find_if(tourFiles.begin(), tourFiles.end(),
                                          [&](const TourFile& known) { return hasName(known, name); });
    return file == tourFiles.end() ? nullptr : file;
}

bool isOfKind(std::string_view name, Kind kind) {
    const TourFile* const file = find(name);
    return file != nullptr && file->kind == kind;
}

std::vector<std::string> listNeededTemplates() {
    std::vector<std::string> names;
    for (const TourFile& file : tourFiles) {
        if (file.inTemplates == Template::needed)
            names.emplace_back(file.name);
    }
    return names;
}

std::vector<std::string> listSavedLast() {
    std::vector<TourFile> files(tourFiles.begin(), tourFiles.end());
    std::erase_if(files, [](const TourFile& file) { return file.savedIn == first; });
    std::sort(files.begin(), files.end(),
              [](const TourFile& left, const TourFile& right) { return left.savedIn < right.savedIn; });
    std::vector<std::string> patterns;
    for (const TourFile& file : files) {
        patterns.emplace_back(file.name);
        std::replace(patterns.back().begin(), patterns.back().end(), '#', '*');
    }
    return patterns;
}

} // namespace

bool isGeneratedFile(std::string_view name) {
    return isOfKind(name, Kind::generated) || isScratchFile(name);
}

bool isScratchFile(std::string_view name) {
    return isOfKind(name, Kind::scratch);
}

bool isPrivateFile(std::string_view name) {
    return isOfKind(name, Kind::own);
}

bool isReservedName(std::string_view name) {
    return isGeneratedFile(name) || isPrivateFile(name);
}

const std::vector<std::string>& neededTemplates() {
    static const std::vector<std::string> names = listNeededTemplates();
    return names;
}

const std::vector<std::string>& savedLast() {
    static const std::vector<std::string> patterns = listSavedLast();
    return patterns;
}

} // namespace wendmark
