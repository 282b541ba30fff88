#pragma once

#include "base/Outcome.h"
#include "commands/AddedFiles.h"
#include "publish/CardPage.h"

#include <set>
#include <string>
#include <vector>

namespace wendmark {

class Workspace;

/// The files of new cards, each a page and its pictures, under names that nothing of the tour has. One for
/// all cards that come into the tour at once.
class CardFiles final {
public:
    /// The workspace must outlive it. `day` is the date that the cards show, as "2026-11-23".
    CardFiles(const Workspace& workspace, std::string day) : m_workspace(workspace), m_day(std::move(day)) {}

    /// What the card shows besides its names of files, which are decided here. JPEG; both pictures may be
    /// empty.
    struct Content {
        PageCard card;
        std::string picture;
        std::string largePicture;
    };

    /// Adds a card. `former` is the name of a card that it takes the place of; empty: of none. A failure (the
    /// template is missing, for example) adds nothing. `page` becomes the name of the card's page.
    Outcome add(Content content, const std::string& former, std::string& page);

    const std::vector<AddedFile>& files() const { return m_files; }

private:
    std::string freeName() const;

    const Workspace& m_workspace;
    std::string m_day;
    std::set<std::string> m_taken; ///< Names of cards, without their endings.
    std::vector<AddedFile> m_files;
};

} // namespace wendmark
