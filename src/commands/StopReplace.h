#pragma once

#include "commands/StopListCommands.h"
#include "model/TourSearch.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace wendmark {

/// Words that are to stand in the place of others.
struct WordReplacement {
    TourQuery query;
    std::string words;              ///< Plain text, UTF-8.
    StopNumbers spared;             ///< Stops that stay as they are.
    std::optional<FoundPlace> only; ///< At this place alone; else wherever the query finds something.
};

struct WordReplacementResult {
    std::size_t places = 0;             ///< How many were replaced; a text that stays the same has none.
    StopNumbers stops;                  ///< In these stops, in their order.
    std::vector<std::string> addresses; ///< New ones among them.
};

/// Replaces words in the stops of the tour, and makes the pages that show those that are others now, each
/// once. The main browser is sent to the current stop anew if that is one of them. Leaves tourChanged alone.
WordReplacementResult replaceWords(TourContext& context, const WordReplacement& replacement);

} // namespace wendmark
