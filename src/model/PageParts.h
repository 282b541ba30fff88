#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

/// What a page needs beside itself to look as it does: pictures, style sheets, scripts, fonts and sound.
/// UTF-8 or a code page; tolerant as browsers are, with work in proportion to the text.
namespace wendmark {

/// A place in a text that names a part.
struct PartReference {
    std::size_t start = 0;  ///< Of the address in the text, in bytes.
    std::size_t length = 0; ///< Bytes, 1 or more.
    std::string path;       ///< Relative to the page's folder, UTF-8, with "/", without "." and "..".
    std::string flat; ///< Same relative to the folder of the text itself; empty when it leads out of that.
};

struct PageParts {
    std::vector<PartReference> references; ///< In their order in the text.
    std::vector<std::string> elsewhere;    ///< Addresses on this computer that lead out of the page's folder.
};

/// Parts of a page of HTML. Those of the web are none, nor are other pages, that links and frames lead to. A
/// page with a base address of its own has none.
PageParts partsOfPage(std::string_view html);

/// Parts of a style sheet that lies in `folder`: a path relative to the page's, empty or with "/" at its end.
PageParts partsOfStyleSheet(std::string_view css, std::string_view folder);

/// Whether it is a style sheet, by its name.
bool isStyleSheet(std::string_view path);

/// The text as it has to be when it lies in one folder with its parts, which have these names, by their
/// paths. References that lead to them already, and those to other paths, stay as they are.
std::string withPartNames(std::string_view text, const PageParts& parts,
                          const std::map<std::string, std::string>& names);

} // namespace wendmark
