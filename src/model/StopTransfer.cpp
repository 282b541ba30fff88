#include "model/StopTransfer.h"

#include "base/Utf8.h"
#include "model/FoundLinks.h"
#include "model/HtmlText.h"

#include <array>
#include <charconv>

namespace wendmark {

namespace {

constexpr std::string_view beginning = "wendmark-stops 1\n";

constexpr std::array<std::string Stop::*, 4> fields = {&Stop::stopTitle, &Stop::stopURL, &Stop::stopNarration,
                                                       &Stop::stopInstruction};

/// Reads from the front of a text.
class Reader final {
public:
    explicit Reader(std::string_view bytes) : m_rest(bytes) {}

    bool take(std::string_view expected) {
        const bool there = m_rest.starts_with(expected);
        m_rest.remove_prefix(there ? expected.size() : 0);
        return there;
    }

    /// A number with this character behind it.
    bool takeNumber(std::size_t& number, char end) {
        const char* const last = m_rest.data() + m_rest.size();
        const auto [stop, error] = std::from_chars(m_rest.data(), last, number);
        if (error != std::errc() || stop == last || *stop != end)
            return false;
        m_rest.remove_prefix(static_cast<std::size_t>(stop - m_rest.data()) + 1);
        return true;
    }

    bool takeText(std::size_t size, std::string& text) {
        if (size > m_rest.size() || !isUtf8(m_rest.substr(0, size)))
            return false;
        text = m_rest.substr(0, size);
        m_rest.remove_prefix(size);
        return true;
    }

    bool atEnd() const { return m_rest.empty(); }

private:
    std::string_view m_rest;
};

/// A line with the number of bytes of each text, those texts, and the end of a line.
bool takeStop(Reader& reader, Stop& stop) {
    std::array<std::size_t, fields.size()> sizes = {};
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (!reader.takeNumber(sizes.at(i), i + 1 < fields.size() ? ' ' : '\n'))
            return false;
    }
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (!reader.takeText(sizes.at(i), stop.*fields.at(i)))
            return false;
    }
    return reader.take("\n");
}

std::string titleOf(const Stop& stop) {
    return visibleText(stop.stopTitle);
}

} // namespace

std::string encodeStops(const std::vector<Stop>& stops) {
    std::string bytes(beginning);
    bytes.append(std::to_string(stops.size())).append("\n");
    for (const Stop& stop : stops) {
        for (std::size_t i = 0; i < fields.size(); ++i)
            bytes.append(i == 0 ? "" : " ").append(std::to_string((stop.*fields.at(i)).size()));
        bytes += '\n';
        for (const auto field : fields)
            bytes += stop.*field;
        bytes += '\n';
    }
    return bytes;
}

std::optional<std::vector<Stop>> decodeStops(std::string_view bytes) {
    Reader reader(bytes);
    std::size_t count = 0;
    if (!reader.take(beginning) || !reader.takeNumber(count, '\n') || count < 1 || count > tourCapacity)
        return std::nullopt;
    std::vector<Stop> stops(count);
    for (Stop& stop : stops) {
        if (!takeStop(reader, stop))
            return std::nullopt;
    }
    return reader.atEnd() ? std::optional(std::move(stops)) : std::nullopt;
}

std::string stopsAsHtml(const std::vector<Stop>& stops) {
    std::string html = "<meta charset=\"utf-8\">\n<ol>\n";
    for (const Stop& stop : stops) {
        const std::string title = htmlShowing(titleOf(stop));
        if (isWebAddress(stop.stopURL))
            html += "<li><a href=\"" + htmlShowing(stop.stopURL) + "\">" + title + "</a></li>\n";
        else
            html += "<li>" + title + "</li>\n";
    }
    return html + "</ol>\n";
}

std::string stopsAsPlainText(const std::vector<Stop>& stops) {
    std::string text;
    for (const Stop& stop : stops)
        text += titleOf(stop) + "\t" + stop.stopURL + "\n";
    return text;
}

} // namespace wendmark
