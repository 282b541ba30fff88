#include "publish/CardPage.h"

#include "base/Windows1252.h"
#include "model/HtmlText.h"
#include "publish/TemplateFiller.h"

namespace wendmark {

namespace {

constexpr std::string_view originalName = "tour-original";
constexpr std::size_t beginning = 16'384; // Bytes of a page in which a card says that it is one.
constexpr int openingTags = 40;

std::string shown(const std::string& text) {
    return windows1252::encodeHtml(htmlShowing(text));
}

void writeHead(TemplateFiller& filler, const PageCard& card, const std::string& title) {
    filler.copyThrough(pageMarker);
    filler.write("<title>", shown(title), "</title>");
    filler.write("<meta name=\"", originalName, "\" content=\"", shown(card.original), "\">");
    filler.closeRegion(pageMarker);
}

void writePicture(TemplateFiller& filler, const PageCard& card) {
    if (card.picture.empty())
        return;
    const std::string large = card.largePicture.empty() ? "" : ", " + shown(card.largePicture) + " 2x";
    filler.write("<img class=\"picture\" src=\"", shown(card.picture), "\" srcset=\"", shown(card.picture),
                 " 1x", large, "\" width=\"", std::to_string(card.width), "\" height=\"",
                 std::to_string(card.height), "\" alt=\"\">");
}

void writeBody(TemplateFiller& filler, const PageCard& card, const std::string& title) {
    filler.copyThrough(pageMarker);
    filler.write("<h1 dir=\"auto\">", shown(title), "</h1>");
    filler.write("<p class=\"site\"><span dir=\"auto\">", shown(card.site),
                 "</span> &#183; <time datetime=\"", shown(card.date), "\">", shown(card.date),
                 "</time></p>");
    if (!card.description.empty())
        filler.write("<p class=\"description\" dir=\"auto\">", shown(card.description), "</p>");
    filler.write("<p class=\"buttons\"><a class=\"button primary\" href=\"", shown(card.original),
                 "\" target=\"_blank\" rel=\"noopener\" data-word=\"openTab\">Open this page in a tab of its "
                 "own</a></p>");
    writePicture(filler, card);
    filler.closeRegion(pageMarker);
    filler.copyRest();
}

} // namespace

Outcome composeCard(std::string_view templateText, const PageCard& card, std::string& page) {
    const std::string& title = card.title.empty() ? card.site : card.title;
    TemplateFiller filler(templateText);
    writeHead(filler, card, title);
    writeBody(filler, card, title);
    if (filler.stopped())
        return Outcome::failure("the template of cards is not complete: " + filler.reason());
    page = filler.output();
    return Outcome::success();
}

std::string originalOfCard(std::string_view page) {
    HtmlPieces pieces(page.substr(0, beginning));
    int tags = 0;
    while (const auto piece = pieces.next()) {
        if (piece->kind != HtmlPiece::Kind::openingTag)
            continue;
        if (++tags > openingTags)
            break;
        if (!piece->isTag(HtmlPiece::Kind::openingTag, "meta") || piece->attribute("name") != originalName)
            continue;
        return decodeEntities(windows1252::decode(piece->attribute("content").value_or(std::string_view())));
    }
    return {};
}

} // namespace wendmark
