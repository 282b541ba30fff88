#include "commands/CardFiles.h"

#include "base/Files.h"
#include "base/Names.h"
#include "model/Workspace.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace wendmark {

namespace {

constexpr std::string_view pageEnding = ".htm";
constexpr std::string_view pictureEnding = ".jpg";
constexpr std::string_view largePictureEnding = "-2x.jpg";

/// Name of a card without its ending; empty when its page has another.
std::string stemOf(const std::string& page) {
    const bool ends = lowerCase(page).ends_with(pageEnding);
    return ends ? page.substr(0, page.size() - pageEnding.size()) : std::string();
}

} // namespace

Outcome CardFiles::add(Content content, const std::string& former, std::string& page) {
    const files::Contents source = files::read(m_workspace.templateFile(cardTemplate));
    if (!source.outcome.ok())
        return source.outcome;
    std::string name = stemOf(former);
    if (name.empty())
        name = freeName();
    PageCard& card = content.card;
    card.date = m_day;
    if (!content.picture.empty())
        card.picture = name + std::string(pictureEnding);
    if (!content.largePicture.empty())
        card.largePicture = name + std::string(largePictureEnding);
    std::string bytes;
    if (Outcome composed = composeCard(source.bytes, card, bytes); !composed.ok())
        return composed;
    page = name + std::string(pageEnding);
    m_files.push_back({"", page, std::move(bytes)});
    if (!content.picture.empty())
        m_files.push_back({"", card.picture, std::move(content.picture)});
    if (!content.largePicture.empty())
        m_files.push_back({"", card.largePicture, std::move(content.largePicture)});
    m_taken.insert(std::move(name));
    return Outcome::success();
}

std::string CardFiles::freeName() const {
    constexpr std::array<std::string_view, 3> endings = {pageEnding, pictureEnding, largePictureEnding};
    for (int n = 1;; ++n) {
        std::string name = "card" + std::to_string(n);
        const auto isTaken = [&](std::string_view ending) {
            const std::string file = name + std::string(ending);
            return m_workspace.workingFileExists(file) || m_workspace.isTemplateFile(file);
        };
        if (!m_taken.contains(name) && std::ranges::none_of(endings, isTaken))
            return name;
    }
}

} // namespace wendmark
