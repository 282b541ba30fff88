#include "ui/cards/CardsInTour.h"

#include "base/Log.h"
#include "commands/TourDocument.h"
#include "platform/Gate.h"
#include "platform/Strings.h"
#include "ui/ProgramParts.h"

#include <QCoreApplication>
#include <QDate>
#include <utility>

namespace wendmark {

CardsInTour putCardsIntoTour(TourDocument& document, const std::vector<CardMaker::Result>& cards) {
    CardFiles files(document.workspace(), toUtf8(QDate::currentDate().toString(Qt::ISODate)));
    std::map<std::int16_t, std::string> addresses;
    CardsInTour result{Outcome::success(), {}, true};
    const StopList& stops = document.model().stops;
    for (const auto& [request, content] : cards) {
        if (request.stop > document.model().stopCount() || stops.at(request.stop).stopURL != request.address)
            continue;
        std::string page;
        result.outcome = files.add(content, request.former, page);
        if (!result.outcome.ok()) {
            document.log().skip(result.outcome);
            return result;
        }
        addresses[request.stop] = page;
    }
    if (addresses.empty())
        return result;
    const StopListResult changed = document.changeAddresses(addresses, "Make a Card", files.files());
    result.isWhole = changed.done() && changed.notCopied.empty();
    for (const auto& [stop, address] : addresses) {
        if (stops.at(stop).stopURL == address)
            result.stops.push_back(stop);
    }
    return result;
}

std::optional<CardsInTour> makeCard(const ProgramParts& parts, CardMaker::Request request, QWidget& window,
                                    const std::function<bool()>& goOn) {
    CardMaker maker(window);
    bool hasEnded = false;
    QObject::connect(&maker, &CardMaker::ended, &maker, [&] { hasEnded = true; });
    maker.start({std::move(request)});
    while (!hasEnded) {
        parts.gate.handleEvents(true);
        if (!goOn())
            return std::nullopt;
    }
    return putCardsIntoTour(parts.document, maker.results());
}

QString failureOf(const CardsInTour& cards) {
    if (!cards.outcome.ok())
        return QCoreApplication::translate("CardsInTour", "No card can be made: %1")
            .arg(toQString(cards.outcome.message()));
    return cards.isWhole ? QString()
                         : QCoreApplication::translate("CardsInTour",
                                                       "Not every card could be written. The log says why.");
}

} // namespace wendmark
