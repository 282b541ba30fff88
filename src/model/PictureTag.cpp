#include "model/PictureTag.h"

#include "base/Utf8.h"
#include "model/HtmlText.h"

#include <algorithm>
#include <charconv>

namespace wendmark {

namespace {

constexpr std::string_view addressName = "SRC";
constexpr std::string_view descriptionName = "ALT";
constexpr std::string_view widthName = "WIDTH";
constexpr int widest = 360; // Pixels; the words' frame of a phone held upright.
constexpr int highest = 240;

int pixelsOf(std::string_view value) {
    int pixels = 0;
    const char* const end = value.data() + value.size();
    const auto [stop, error] = std::from_chars(value.data(), end, pixels);
    const bool whole = error == std::errc() && stop == end;
    return whole && pixels >= 1 && pixels <= largestPictureWidth ? pixels : 0;
}

std::string valueOf(const HtmlPiece& piece, std::string_view name) {
    return decodeEntities(piece.attribute(name).value_or(std::string_view()));
}

PictureTag pictureOf(const HtmlPiece& piece, std::string_view tag) {
    PictureTag picture;
    picture.tag = tag;
    picture.address = valueOf(piece, addressName);
    if (piece.attribute(descriptionName))
        picture.description = valueOf(piece, descriptionName);
    picture.width = pixelsOf(valueOf(piece, widthName));
    return picture;
}

/// Whether a ">" ends these attributes: one in a value that is not closed does not.
bool isClosed(std::string_view attributes) {
    HtmlAttributes all(attributes);
    std::size_t behindLast = 0;
    while (all.next())
        behindLast = all.position();
    return all.position() > behindLast && attributes.ends_with('>');
}

/// From the "<" to the ">"; nothing when it is not closed.
std::string_view wholeTag(std::string_view text, const HtmlPiece& piece) {
    if (!isClosed(piece.attributes))
        return {};
    const auto begin = static_cast<std::size_t>(piece.content.data() - text.data()) - 1;
    return text.substr(begin, 1 + piece.content.size() + piece.attributes.size());
}

/// Where an attribute stands in a tag, the blanks before it included; at the tag's end when it has none.
struct Range {
    std::size_t begin;
    std::size_t end;
};

Range findAttribute(std::string_view tag, std::string_view name) {
    const std::size_t behindName = std::min(tag.find_first_of(" \t\n\f\r/>"), tag.size());
    HtmlAttributes all(tag.substr(behindName));
    Range range{behindName, behindName};
    for (std::size_t former = behindName; const auto found = all.next(); former = range.end) {
        range = {former, behindName + all.position()};
        if (!equalAsciiIgnoringCase(found->name, name))
            continue;
        // What was skipped to look for a "=" is not the attribute's.
        while (isHtmlSpace(tag[range.end - 1]))
            --range.end;
        return range;
    }
    std::size_t end = tag.ends_with('>') ? tag.size() - 1 : tag.size();
    while (end > behindName && (isHtmlSpace(tag[end - 1]) || (tag[end - 1] == '/' && end > range.end)))
        --end;
    if (tag[end - 1] == '=') // What came behind it would be its value.
        end = behindName;
    return {end, end};
}

std::string withAttribute(std::string_view tag, std::string_view name,
                          const std::optional<std::string>& value) {
    const Range range = findAttribute(tag, name);
    std::string changed(tag.substr(0, range.begin));
    if (value)
        changed.append(" ").append(name).append("=\"").append(htmlShowing(*value)).append("\"");
    return changed.append(tag.substr(range.end));
}

} // namespace

std::optional<PictureTag> pictureAt(std::string_view text, int caret) {
    const std::size_t place = skipUtf16(text, 0, static_cast<std::size_t>(std::max(0, caret)));
    HtmlPieces pieces(text);
    while (const std::optional<HtmlPiece> piece = pieces.next()) {
        const std::string_view tag =
            piece->isTag(HtmlPiece::Kind::openingTag, "img") ? wholeTag(text, *piece) : std::string_view();
        if (tag.empty())
            continue;
        const auto begin = static_cast<std::size_t>(tag.data() - text.data());
        if (place <= begin)
            return std::nullopt;
        if (place > begin + tag.size())
            continue;
        PictureTag picture = pictureOf(*piece, tag);
        picture.place = {static_cast<int>(utf16Length(text.substr(0, begin))),
                         static_cast<int>(utf16Length(tag))};
        return picture;
    }
    return std::nullopt;
}

std::string describedTag(std::string_view tag, const std::optional<std::string>& description) {
    return withAttribute(tag, descriptionName, description);
}

std::string sizedTag(std::string_view tag, int width) {
    return withAttribute(tag, widthName, width > 0 ? std::optional(std::to_string(width)) : std::nullopt);
}

int fittingWidth(int width, int height) {
    const int forHeight = height > highest ? width * highest / height : width;
    return std::clamp(forHeight, 1, widest);
}

} // namespace wendmark
