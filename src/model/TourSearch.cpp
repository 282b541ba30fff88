#include "model/TourSearch.h"

#include "base/Utf8.h"
#include "model/StopAddress.h"
#include "model/StopTexts.h"
#include "model/TourModel.h"

#include <algorithm>
#include <array>

namespace wendmark {

namespace {

constexpr std::size_t bytesBefore = 30;
constexpr std::size_t bytesBehind = 80;
constexpr std::string_view ellipsis = "\xE2\x80\xA6 ";
constexpr std::size_t longestShown = 200; // Bytes of the words that were found.

constexpr std::array<StopPart, 4> parts = {StopPart::title, StopPart::words, StopPart::instruction,
                                           StopPart::address};

/// Of a stop that may be constant.
template <typename AnyStop>
auto& partOf(AnyStop& stop, StopPart part) {
    switch (part) {
    case StopPart::title:
        return stop.stopTitle;
    case StopPart::words:
        return stop.stopNarration;
    case StopPart::instruction:
        return stop.stopInstruction;
    case StopPart::address:
        break;
    }
    return stop.stopURL;
}

bool isSearched(const TourModel& model, const TourQuery& query, StopPart part) {
    if (part == StopPart::instruction)
        return !model.autoInstruction;
    return part != StopPart::address || query.addresses;
}

ReadableText readable(const std::string& text, StopPart part) {
    return part == StopPart::address ? ReadableText::ofPlain(text) : ReadableText::ofHtml(text);
}

bool isInsideCharacter(std::string_view text, std::size_t position) {
    return position < text.size() && (static_cast<unsigned char>(text[position]) & 0xc0U) == 0x80U;
}

/// The end of a text; what is cut begins with a whole word, or at least a whole character.
std::string endOf(std::string_view text, std::size_t bytes) {
    if (text.size() <= bytes)
        return std::string(text);
    text.remove_prefix(text.size() - bytes);
    const std::size_t blank = text.find(' ');
    text.remove_prefix(blank < text.size() - 1 ? blank + 1 : 0);
    while (isInsideCharacter(text, 0))
        text.remove_prefix(1);
    return std::string(ellipsis).append(text);
}

/// Whole characters of the beginning of a text.
std::string_view beginningOf(std::string_view text, std::size_t bytes) {
    std::size_t end = std::min(bytes, text.size());
    while (end > 0 && isInsideCharacter(text, end))
        --end;
    return text.substr(0, end);
}

FoundPlace placeIn(std::string_view text, TextRange range, TextRange stored) {
    FoundPlace place;
    place.stored = stored;
    place.before = endOf(text.substr(0, range.begin), bytesBefore);
    place.words = beginningOf(text.substr(range.begin, range.end - range.begin), longestShown);
    place.behind = beginningOf(text.substr(range.end), bytesBehind);
    return place;
}

class Finder final {
public:
    Finder(const TourModel& model, const TourQuery& query, std::size_t mostListed)
        : m_model(model), m_query(query), m_search(query.words, query.options), m_mostListed(mostListed) {}

    FoundPlaces find() {
        for (std::int16_t stop = 1; stop <= m_model.stops.held() && !m_search.isEmpty(); ++stop) {
            const std::size_t before = m_found.count;
            for (const StopPart part : parts) {
                if (isSearched(m_model, m_query, part))
                    look(stop, part);
            }
            m_found.stops += m_found.count > before ? 1 : 0;
        }
        return std::move(m_found);
    }

private:
    void look(std::int16_t stop, StopPart part) {
        const ReadableText text = readable(textOf(m_model.stops.at(stop), part), part);
        m_search.find(text.text(), [&](TextRange range) {
            const std::optional<TextRange> stored = text.stored(range);
            if (!stored)
                return false;
            if (m_found.count++ < m_mostListed) {
                FoundPlace place = placeIn(text.text(), range, *stored);
                place.stop = stop;
                place.part = part;
                m_found.listed.push_back(std::move(place));
            }
            return true;
        });
    }

    const TourModel& m_model;
    const TourQuery& m_query;
    TextSearch m_search;
    std::size_t m_mostListed;
    FoundPlaces m_found;
};

/// Puts words into an address, which has no tags to look after.
class AddressReplacer final {
public:
    explicit AddressReplacer(std::string_view address) : m_address(address) {}

    void replace(TextRange range, std::string_view words) {
        m_result.append(m_address.substr(m_taken, range.begin - m_taken)).append(withoutDelimiters(words));
        m_taken = range.end;
    }
    std::string take() { return std::move(m_result.append(m_address.substr(m_taken))); }

private:
    std::string_view m_address;
    std::string m_result;
    std::size_t m_taken = 0;
};

struct ReplacedText {
    std::string text;
    std::size_t places = 0;
};

template <typename Replacer>
ReplacedText replaceIn(const std::string& text, StopPart part, const TextSearch& search,
                       std::string_view words, const FoundPlace* only) {
    const ReadableText source = readable(text, part);
    Replacer replacer(text);
    ReplacedText replaced;
    search.find(source.text(), [&](TextRange range) {
        const std::optional<TextRange> stored = source.stored(range);
        if (stored && (only == nullptr || *stored == only->stored)) {
            replacer.replace(*stored, words);
            ++replaced.places;
        }
        return stored.has_value();
    });
    replaced.text = replacer.take();
    return replaced;
}

/// As a script can give it back.
std::string storable(const std::string& text, StopPart part) {
    switch (part) {
    case StopPart::title:
        return storableTitle(text);
    case StopPart::words:
        return storableText(text, noNarration);
    case StopPart::instruction:
        return storableText(text, noInstruction);
    case StopPart::address:
        break;
    }
    return text;
}

void replaceInPart(ReplacedStop& stop, StopPart part, const TextSearch& search, std::string_view words,
                   const FoundPlace* only) {
    std::string& text = partOf(stop.stop, part);
    const ReplacedText replaced = part == StopPart::address
                                      ? replaceIn<AddressReplacer>(text, part, search, words, only)
                                      : replaceIn<HtmlReplacer>(text, part, search, words, only);
    if (replaced.places == 0 || replaced.text == text)
        return;
    text = storable(replaced.text, part);
    stop.places += replaced.places;
}

} // namespace

const std::string& textOf(const Stop& stop, StopPart part) {
    return partOf(stop, part);
}

FoundPlaces findInTour(const TourModel& model, const TourQuery& query, std::size_t mostListed) {
    return Finder(model, query, mostListed).find();
}

ReplacedStop replaceInStop(const TourModel& model, std::int16_t stop, const TourQuery& query,
                           std::string_view words, const FoundPlace* only) {
    ReplacedStop replaced{model.stops.at(stop), 0};
    const TextSearch search(query.words, query.options);
    for (const StopPart part : parts) {
        if (isSearched(model, query, part) && (only == nullptr || only->part == part))
            replaceInPart(replaced, part, search, words, only);
    }
    return replaced;
}

} // namespace wendmark
