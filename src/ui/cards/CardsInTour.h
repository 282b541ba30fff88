#pragma once

#include "base/Outcome.h"
#include "commands/StopListCommands.h"
#include "ui/cards/CardMaker.h"

#include <functional>
#include <optional>
#include <vector>

class QWidget;

namespace wendmark {

class TourDocument;
struct ProgramParts;

/// What has become of new cards.
struct CardsInTour {
    Outcome outcome;     ///< A failure: no card has come into the tour, and why.
    StopNumbers stops;   ///< Those that show a card now.
    bool isWhole = true; ///< False when the files of some could not be written; the log says why.
};

/// Puts the cards in the place of the pages that they stand for, as one step of the history. The author may
/// have gone on working meanwhile: a stop that shows another page by now keeps that.
CardsInTour putCardsIntoTour(TourDocument& document, const std::vector<CardMaker::Result>& cards);

/// Makes one card, as CardMaker does, and puts it into the tour. Waits for its page meanwhile, as a command
/// that may be looked through; `goOn` is called again and again and gives up by returning false. Nothing when
/// it was given up.
std::optional<CardsInTour> makeCard(const ProgramParts& parts, CardMaker::Request request, QWidget& window,
                                    const std::function<bool()>& goOn);

/// Says what has gone wrong, for the author. Empty when nothing has.
QString failureOf(const CardsInTour& cards);

} // namespace wendmark
