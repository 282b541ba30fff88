#include "recovery/RecoveryRecord.h"

#include "model/TourChoices.h"

#include <algorithm>
#include <charconv>
#include <concepts>

namespace wendmark {

namespace {

constexpr std::string_view beginning = "wendmark-recovery 1\n";

template <typename Record, typename Visit>
void visitPosition(Record& record, Visit visit) {
    visit("time", record.time);
    visit("currentStop", record.model.currentStop);
    visit("tourChanged", record.model.tourChanged);
}

template <typename Visit>
void visitStopCount(const StopList& stops, Visit visit) {
    visit("stopCount", stops.count());
}

/// The stops that follow find their places. A negative count, which no record has, stays none.
template <typename Visit>
void visitStopCount(StopList& stops, Visit visit) {
    std::int16_t count = 0;
    visit("stopCount", count);
    stops.setCount(count);
}

template <typename Record, typename Visit>
void visitWork(Record& record, Visit visit) {
    auto& model = record.model;
    visit("tourPath", record.tourPath);
    visit("tourTitle", model.tourTitle);
    visit("tourAuthor", model.tourAuthor);
    visit("autoBuffer", model.autoBuffer);
    visit("bufferDelay", model.bufferDelay);
    visit("autoInstruction", model.autoInstruction);
    visit("singleWindow", model.singleWindow);
    visit("narHeight", model.narHeight);
    visit("advWidth", model.advWidth);
    visit("navWidth", model.navWidth);
    visit("stopLabel", model.stopLabel);
    visit("helpFile", model.helpFile);
    visit("homeSiteURL", model.homeSiteURL);
    visit("launchURLCount", model.launchURLCount);
    visitStopCount(model.stops, visit);
    const auto launchingPoints =
        static_cast<std::size_t>(std::clamp<std::int16_t>(model.launchURLCount, 0, tourCapacity));
    for (std::size_t i = 0; i < launchingPoints; ++i)
        visit("launchURL", model.launchURL.at(i));
    for (auto& stop : model.stops) {
        visit("stopTitle", stop.stopTitle);
        visit("stopURL", stop.stopURL);
        visit("stopNarration", stop.stopNarration);
        visit("stopInstruction", stop.stopInstruction);
    }
}

/// Fields that a record has only where something is chosen, so that earlier records can be read, too.
template <typename Record, typename Visit>
void visitChoices(Record& record, Visit visit) {
    visit("language", record.model.language);
    visit("wordsBesidePage", record.model.wordsBesidePage);
}

template <typename Texts, typename Visit>
void visitTexts(Texts& texts, Visit visit) {
    visit("unappliedTitle", texts.title);
    visit("unappliedNarration", texts.narration);
    visit("unappliedInstruction", texts.instruction);
}

/// Calls `visit` with the name and the variable of every field, always in the same order.
template <typename Record, typename Visit>
void visitFields(Record& record, Visit visit) {
    visitPosition(record, visit);
    visitWork(record, visit);
}

/// Counts the bytes of the texts: what is written is known to be huge before it has to move.
class TextSizes final {
public:
    void operator()(std::string_view, const std::string& text) { bytes += text.size(); }
    void operator()(std::string_view, std::integral auto) {}

    std::size_t bytes = 0;
};

/// A field is a line with its name and the number of its bytes, those bytes, and the end of a line.
class Writer final {
public:
    explicit Writer(const RecoveryRecord& record) : bytes(beginning) {
        constexpr std::size_t beside = 65'536; // Names, numbers and counts.
        TextSizes sizes;
        visitWork(record, std::ref(sizes));
        bytes.reserve(sizes.bytes + beside);
    }

    void operator()(std::string_view name, const std::string& text) {
        bytes.append(name).append(" ").append(std::to_string(text.size()));
        bytes.append("\n").append(text).append("\n");
    }
    void operator()(std::string_view name, std::integral auto number) {
        (*this)(name, std::to_string(static_cast<std::int64_t>(number)));
    }

    std::string bytes;
};

class Reader final {
public:
    explicit Reader(std::string_view bytes) : m_rest(bytes) {
        ok = m_rest.starts_with(beginning);
        m_rest.remove_prefix(ok ? beginning.size() : 0);
    }

    void operator()(std::string_view name, std::string& text) { text = take(name); }
    void operator()(std::string_view name, bool& flag) {
        std::int64_t number = 0;
        (*this)(name, number);
        flag = number != 0;
    }
    template <std::integral Number>
    void operator()(std::string_view name, Number& number) {
        const std::string_view digits = take(name);
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
        ok = ok && error == std::errc() && end == digits.data() + digits.size();
    }

    bool isAt(std::string_view name) const {
        return m_rest.starts_with(name) && m_rest.substr(name.size()).starts_with(' ');
    }
    bool isAtEnd() const { return m_rest.empty(); }

    bool ok = true;

private:
    std::string_view take(std::string_view name) {
        const std::size_t lineEnd = m_rest.find('\n');
        ok = ok && lineEnd != std::string_view::npos && m_rest.starts_with(name) &&
             m_rest.substr(name.size()).starts_with(' ');
        if (!ok)
            return {};
        const std::string_view digits = m_rest.substr(name.size() + 1, lineEnd - name.size() - 1);
        std::size_t size = 0;
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), size);
        m_rest.remove_prefix(lineEnd + 1);
        ok = error == std::errc() && end == digits.data() + digits.size() && size < m_rest.size() &&
             m_rest[size] == '\n';
        if (!ok)
            return {};
        const std::string_view text = m_rest.substr(0, size);
        m_rest.remove_prefix(size + 1);
        return text;
    }

    std::string_view m_rest;
};

} // namespace

std::string encodeRecord(const RecoveryRecord& record) {
    Writer writer(record);
    visitFields(record, std::ref(writer));
    if (record.unapplied)
        visitTexts(*record.unapplied, std::ref(writer));
    if (hasChoices(record.model))
        visitChoices(record, std::ref(writer));
    writer("end", std::string());
    return std::move(writer.bytes);
}

std::string encodeWork(const RecoveryRecord& record) {
    Writer writer(record);
    visitWork(record, std::ref(writer));
    visitChoices(record, std::ref(writer));
    return std::move(writer.bytes);
}

std::optional<RecoveryRecord> decodeRecord(std::string_view bytes) {
    RecoveryRecord record;
    Reader reader(bytes);
    visitFields(record, std::ref(reader));
    if (reader.ok && bytes.find("\nunappliedTitle ") != std::string_view::npos) {
        Reader withTexts = reader;
        UnappliedTexts texts;
        visitTexts(texts, std::ref(withTexts));
        if (withTexts.ok) {
            record.unapplied = std::move(texts);
            reader = withTexts;
        }
    }
    if (reader.isAt("language"))
        visitChoices(record, std::ref(reader));
    std::string end;
    reader("end", end);
    const TourModel& model = record.model;
    const bool makesSense =
        model.launchURLCount >= 0 && (model.language.empty() || isLanguageCode(model.language));
    return reader.ok && reader.isAtEnd() && makesSense ? std::optional(std::move(record)) : std::nullopt;
}

} // namespace wendmark
