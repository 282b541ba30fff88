#include "check_tour/CheckReport.h"

#include "platform/Strings.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <array>
#include <ostream>

namespace wendmark::cli {

namespace {

constexpr qsizetype longestTitle = 40;  // Columns.
constexpr qsizetype longestWhy = 500;   // UTF-16 units.
constexpr qsizetype longestRead = 2000; // UTF-16 units of a text of which a table shows the beginning.

struct WideRange {
    char32_t first;
    char32_t last;
};

/// Letters and pictures that take two columns of a terminal.
constexpr std::array<WideRange, 9> wide = {{{0x1100, 0x115F},
                                            {0x2E80, 0xA4CF},
                                            {0xAC00, 0xD7A3},
                                            {0xF900, 0xFAFF},
                                            {0xFE30, 0xFE6F},
                                            {0xFF00, 0xFF60},
                                            {0xFFE0, 0xFFE6},
                                            {0x1F300, 0x1FAFF},
                                            {0x20000, 0x3FFFD}}};

qsizetype columnsOf(char32_t character) {
    switch (QChar::category(character)) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_Enclosing:
    case QChar::Other_Format:
        return 0;
    default:
        break;
    }
    return std::ranges::any_of(
               wide, [&](WideRange range) { return range.first <= character && character <= range.last; })
               ? 2
               : 1;
}

struct Cell {
    QString text;
    qsizetype columns = 0;
};

/// As much of the text as fits.
Cell cellOf(const QString& text, qsizetype most) {
    Cell cell;
    for (const char32_t character : text.toUcs4()) {
        const qsizetype columns = columnsOf(character);
        if (cell.columns + columns > most) {
            while (!cell.text.isEmpty() && cell.columns >= most) {
                const char32_t last = cell.text.toUcs4().last();
                cell.columns -= columnsOf(last);
                cell.text.chop(QChar::requiresSurrogates(last) ? 2 : 1);
            }
            return {cell.text + QChar(0x2026), cell.columns + 1};
        }
        cell.text += QString::fromUcs4(&character, 1);
        cell.columns += columns;
    }
    return cell;
}

std::string padded(const Cell& cell, qsizetype columns) {
    return toUtf8(cell.text) + std::string(static_cast<std::size_t>(columns - cell.columns), ' ');
}

Cell titleOf(const StopToCheck& stop) {
    return cellOf(onOneLine(beginningOf(stop.title, longestRead)), longestTitle);
}

std::string wordsOf(const StopToCheck& stop) {
    return stop.missingParts.empty() ? std::string(wordsFor(stop.known.verdict)) : "Files missing";
}

std::string whyOf(const StopToCheck& stop) {
    if (!stop.known.why.empty())
        return toUtf8(onOneLine(beginningOf(stop.known.why, longestWhy)));
    return stop.sameAs > 0 ? "Same page as stop " + std::to_string(stop.sameAs) + "." : std::string();
}

void printRow(const std::array<std::string, 4>& cells, std::ostream& output) {
    std::string line = cells[0] + "  " + cells[1] + "  " + cells[2] + "  " + cells[3];
    line.erase(line.find_last_not_of(' ') + 1);
    output << line << '\n';
}

void printStops(const std::vector<StopToCheck>& stops, std::ostream& output) {
    const Cell caption{QStringLiteral("Title"), 5};
    qsizetype titleColumns = caption.columns;
    std::size_t verdictColumns = 0;
    for (const StopToCheck& stop : stops) {
        titleColumns = std::max(titleColumns, titleOf(stop).columns);
        verdictColumns = std::max(verdictColumns, wordsOf(stop).size());
    }
    const auto ofVerdict = [&](std::string words) {
        words.resize(std::max(verdictColumns, words.size()), ' ');
        return words;
    };
    printRow({"Stop", padded(caption, titleColumns), ofVerdict("Page"), "Why"}, output);
    for (const StopToCheck& stop : stops) {
        const std::string number = std::to_string(stop.stop);
        printRow({std::string(number.size() < 4 ? 4 - number.size() : 0, ' ') + number,
                  padded(titleOf(stop), titleColumns), ofVerdict(wordsOf(stop)), whyOf(stop)},
                 output);
    }
}

template <typename Texts>
QJsonArray arrayOf(const Texts& texts) {
    QJsonArray array;
    for (const auto& text : texts)
        array.append(toQString(text));
    return array;
}

QJsonObject objectOf(const StopToCheck& stop) {
    QJsonObject object{
        {QStringLiteral("stop"), stop.stop},
        {QStringLiteral("title"), toQString(stop.title)},
        {QStringLiteral("address"), toQString(stop.address)},
        {QStringLiteral("verdict"), toQString(nameOf(stop.known.verdict))},
        {QStringLiteral("why"), toQString(stop.known.why)},
        {QStringLiteral("final"), toQString(stop.known.finalAddress)},
        {QStringLiteral("remedies"), arrayOf(remediesFor(stop.known))},
    };
    if (stop.sameAs > 0)
        object.insert(QStringLiteral("sameAs"), stop.sameAs);
    if (!stop.missingParts.empty())
        object.insert(QStringLiteral("missingParts"), arrayOf(stop.missingParts));
    if (!stop.known.playsFor.empty())
        object.insert(QStringLiteral("playsFor"), arrayOf(stop.known.playsFor));
    return object;
}

/// JSON lets most control characters stand as they are; some terminals do not.
QByteArray withoutControls(const QByteArray& json) {
    constexpr char16_t del = 0x7F;
    QString text;
    for (const QChar character : QString::fromUtf8(json)) {
        const bool isBare = character == QLatin1Char('\n') || onOneLine(character) == character;
        if (isBare && character.unicode() != del)
            text += character;
        else
            text += QStringLiteral("\\u%1").arg(int{character.unicode()}, 4, 16, QLatin1Char('0'));
    }
    return text.toUtf8();
}

} // namespace

std::string harmless(const std::string& text) {
    return toUtf8(onOneLine(toQString(text)));
}

void printTable(const std::vector<CheckedTour>& tours, std::ostream& output) {
    for (const CheckedTour& tour : tours) {
        if (&tour != tours.data())
            output << '\n';
        const QString title = onOneLine(beginningOf(tour.title, longestRead));
        output << '"' << toUtf8(cellOf(title, 2 * longestTitle).text) << "\", stops: " << tour.stops.size()
               << ", in " << harmless(tour.name) << '\n';
        if (!tour.stops.empty())
            printStops(tour.stops, output);
    }
}

QByteArray composeJson(const std::vector<CheckedTour>& tours) {
    QJsonArray all;
    for (const CheckedTour& tour : tours) {
        QJsonArray stops;
        for (const StopToCheck& stop : tour.stops)
            stops.append(objectOf(stop));
        all.append(
            QJsonObject{{QStringLiteral("tour"), toQString(tour.name)}, {QStringLiteral("stops"), stops}});
    }
    return withoutControls(QJsonDocument(QJsonObject{{QStringLiteral("tours"), all}}).toJson());
}

} // namespace wendmark::cli
