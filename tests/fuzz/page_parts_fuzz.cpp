// Looks for the parts of a page in arbitrary HTML, and for the pictures in a narration; then gives them other
// names and descriptions.

#include "base/Utf8.h"
#include "fuzz/Require.h"
#include "model/PageParts.h"
#include "model/PictureTag.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace wendmark::fuzz {
namespace {

void requireInside(const PageParts& parts, const std::string& text) {
    std::size_t end = 0;
    for (const PartReference& reference : parts.references) {
        require(reference.start >= end && reference.length > 0, "references stand in their order");
        end = reference.start + reference.length;
        require(end <= text.size(), "references stand in the text");
        const std::string path = "/" + reference.path + "/";
        require(path.find("/.") == std::string::npos, "no part leads out of its folder");
        require(path.size() > 2 && path.find('\0') == std::string::npos, "parts have names");
    }
}

/// Renaming all parts and looking again finds files beside the text, and nothing is left to rename.
void requireRenamed(const std::string& text, const PageParts& parts,
                    PageParts (*partsOf)(std::string_view text)) {
    std::map<std::string, std::string> names;
    for (const PartReference& reference : parts.references)
        names[reference.path] = "part" + std::to_string(names.size()) + ".png";
    const std::string renamed = withPartNames(text, parts, names);
    const PageParts again = partsOf(renamed);
    require(again.references.size() == parts.references.size(), "renamed parts are found again");
    for (std::size_t i = 0; i < again.references.size(); ++i)
        require(again.references[i].path == names[parts.references[i].path],
                "renamed parts are where they are");
}

void requirePicture(const std::string& text, int caret) {
    const std::optional<PictureTag> picture = pictureAt(text, caret);
    if (!picture)
        return;
    require(picture->place.start < caret && caret <= picture->place.start + picture->place.length,
            "the caret is in the picture's tag");
    const std::string described = describedTag(picture->tag, "\"Eel\" & <b>'");
    const std::optional<PictureTag> again = pictureAt(described, 1);
    require(again && again->description == "\"Eel\" & <b>'", "a description is read back");
    require(again->address == picture->address, "a description changes no address");
    require(pictureAt(sizedTag(described, 120), 1)->width == 120, "a width is read back");
}

void checkInput(const std::string& text) {
    const PageParts page = partsOfPage(text);
    requireInside(page, text);
    requireRenamed(text, page, [](std::string_view html) { return partsOfPage(html); });
    const PageParts style = partsOfStyleSheet(text, "css/");
    requireInside(style, text);
    requireRenamed(text, style, [](std::string_view css) { return partsOfStyleSheet(css, {}); });
    if (isUtf8(text) && !text.empty())
        requirePicture(text, std::min<int>(static_cast<unsigned char>(text.back()),
                                           static_cast<int>(utf16Length(text))));
}

} // namespace
} // namespace wendmark::fuzz

// The fuzzer calls it by this name.
// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    wendmark::fuzz::checkInput(std::string(data, data + size));
    return 0;
}
