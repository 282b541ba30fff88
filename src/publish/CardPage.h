#pragma once

#include "base/Outcome.h"

#include <string>
#include <string_view>

/// Cards: pages of the tour's own that stand for a page of the web which is not shown in frames. A card shows
/// what that page is and opens it in a tab of its own. All texts are UTF-8.
namespace wendmark {

/// The template of cards. Not every Template folder has it: those of older programs do not.
inline constexpr std::string_view cardTemplate = "tourcard.htm";

struct PageCard {
    std::string original;     ///< Address of the page that it stands for.
    std::string title;        ///< Plain text; empty: the site is the title.
    std::string site;         ///< Who publishes the page, plain text.
    std::string description;  ///< Plain text; may be empty.
    std::string date;         ///< When the card was made, as "2026-11-23".
    std::string picture;      ///< File name of a picture of the page; empty: there is none.
    std::string largePicture; ///< Same picture with twice as many pixels each way.
    int width = 0;            ///< Of `picture`, in pixels.
    int height = 0;
};

/// Fills the template. A failure says what it lacks, and leaves `page` alone.
Outcome composeCard(std::string_view templateText, const PageCard& card, std::string& page);

/// The address of the page that this page is a card for; empty when it is none. Looks at the beginning only.
std::string originalOfCard(std::string_view page);

} // namespace wendmark
