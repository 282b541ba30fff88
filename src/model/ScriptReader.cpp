#include "base/Files.h"
#include "base/Log.h"
#include "base/Names.h"
#include "base/Numbers.h"
#include "base/TextLines.h"
#include "base/Windows1252.h"
#include "model/Desktop.h"
#include "model/ScriptFile.h"
#include "model/TourChoices.h"
#include "model/TourContext.h"
#include "model/TourModel.h"
#include "model/Workspace.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>

namespace wendmark {

namespace {

constexpr std::string_view prematureEnd = "Premature end of file";
constexpr std::string_view noEqualsSign = "Command Syntax Error - '=' sign not found";
constexpr std::string_view noFileName = "Command Syntax Error - null filename";
constexpr std::string_view noAuthorName = "Command Syntax Error - null author name";
constexpr std::string_view noValue = "Command Syntax Error - null stop name";

bool isMarkerLine(std::string_view line) {
    return line.starts_with(scriptMarker);
}

/// Whether the line, trimmed, says something of the title or of a stop.
bool isTextLine(std::string_view line) {
    return !line.empty() && !isMarkerLine(line);
}

/// One header command, after its keyword was recognised.
struct Command {
    std::string_view text; ///< The command from its "#" on.
    int lineNumber;
    TourModel& model;
    const LineErrorHandler& onError;
    bool& hasPlace; ///< Set to false when the model has no place for the value.

    /// What follows the first "=", trimmed; reports when there is none.
    std::optional<std::string_view> value() const {
        const std::size_t equals = text.find('=');
        if (equals == std::string_view::npos) {
            onError(lineNumber, noEqualsSign);
            return std::nullopt;
        }
        return trimBlanks(text.substr(equals + 1));
    }

    /// Same, and reports `whenEmpty` for an empty value.
    std::optional<std::string_view> filledValue(std::string_view whenEmpty) const {
        const std::optional<std::string_view> given = value();
        if (!given || !given->empty())
            return given;
        onError(lineNumber, whenEmpty);
        return std::nullopt;
    }
};

void applyAutoBuffer(const Command& command) {
    command.model.autoBuffer = true;
}

void applyBufferDelay(const Command& command) {
    constexpr std::int32_t shortest = 10;
    const auto value = command.value();
    if (!value)
        return;
    const double seconds = leadingNumber(*value);
    if (seconds < shortest)
        command.model.bufferDelay = shortest;
    else if (const auto rounded = roundTo32Bits(seconds))
        command.model.bufferDelay = *rounded;
}

void applyHelpFile(const Command& command) {
    if (const auto value = command.filledValue(noFileName))
        command.model.helpFile = lowerCase(windows1252::decode(*value));
}

void applyStopName(const Command& command) {
    if (const auto value = command.filledValue(noValue))
        command.model.stopLabel = lowerCase(windows1252::decodeHtml(*value));
}

void applyNoAutoInstruction(const Command& command) {
    command.model.autoInstruction = false;
}

void applySingleWindow(const Command& command) {
    command.model.singleWindow = true;
}

void applyLaunchURL(const Command& command) {
    const auto value = command.filledValue(noValue);
    if (!value)
        return;
    TourModel& model = command.model;
    command.hasPlace = model.launchURLCount < tourCapacity;
    if (command.hasPlace)
        model.launchURL.at(static_cast<std::size_t>(model.launchURLCount++)) = windows1252::decode(*value);
}

template <std::int16_t TourModel::*size>
void applyFrameSize(const Command& command) {
    const auto value = command.filledValue(noValue);
    if (!value)
        return;
    if (const auto pixels = roundTo16Bits(leadingNumber(*value)))
        command.model.*size = *pixels;
}

void applyAuthor(const Command& command) {
    if (const auto value = command.filledValue(noAuthorName))
        command.model.tourAuthor = windows1252::decodeHtml(*value);
}

/// A text that names no language changes nothing.
void applyLanguage(const Command& command) {
    const auto value = command.value();
    if (value && isLanguageCode(*value))
        command.model.language = lowerCase(std::string(*value));
}

void applyLayout(const Command& command) {
    const auto value = command.value();
    if (value && equalIgnoringCase(*value, wordsBesidePageLayout))
        command.model.wordsBesidePage = true;
}

struct Keyword {
    std::string_view text; ///< Upper case; compared with as many characters of the command.
    void (*apply)(const Command&);
};

/// In the order in which they are tried.
constexpr std::array<Keyword, 13> keywords = {{{"#AUTOBUFFER", applyAutoBuffer},
                                               {"#BUFFERDELAY", applyBufferDelay},
                                               {"#HELPFILE", applyHelpFile},
                                               {"#STOPNAME", applyStopName},
                                               {"#NOAUTOINSTRUCTION", applyNoAutoInstruction},
                                               {"#SINGLEWINDOW", applySingleWindow},
                                               {"#LAUNCHURL", applyLaunchURL},
                                               {"#NARHEIGHT", applyFrameSize<&TourModel::narHeight>},
                                               {"#ADVWIDTH", applyFrameSize<&TourModel::advWidth>},
                                               {"#NAVWIDTH", applyFrameSize<&TourModel::navWidth>},
                                               {"#AUTHOR", applyAuthor},
                                               {"#LANGUAGE", applyLanguage},
                                               {"#LAYOUT", applyLayout}}};

class ScriptReader final {
public:
    ScriptReader(std::string_view script, TourModel& model, const LineErrorHandler& onError)
        : m_lines(script), m_model(model), m_onError(onError) {}

    ScriptReading read() {
        m_reading.hasTitle = readHeader();
        if (m_reading.hasTitle)
            readStops();
        return m_reading;
    }

private:
    /// Makes the next line the current one, trimmed. At the end of the file the current line stays and the
    /// attempt counts all the same.
    bool readLine() {
        if (m_lineNumber < std::numeric_limits<int>::max())
            ++m_lineNumber;
        const std::optional<std::string_view> line = m_lines.next();
        if (line)
            m_line = trimBlanks(*line);
        return line.has_value();
    }

    bool readTextLine() {
        while (readLine()) {
            if (isTextLine(m_line))
                return true;
        }
        return false;
    }

    /// False when the file ends before its title.
    bool readHeader() {
        while (readLine()) {
            if (isMarkerLine(m_line)) {
                if (!parseScriptCommand(m_line, m_lineNumber, m_model, m_onError))
                    ++m_reading.surplus.launchURLs;
            } else if (!m_line.empty()) {
                m_model.tourTitle = windows1252::decodeHtml(m_line);
                return true;
            }
        }
        m_onError(m_lineNumber, prematureEnd);
        return false;
    }

    void readStops() {
        constexpr std::int16_t mostCounted = std::numeric_limits<std::int16_t>::max();
        std::int16_t stopCounter = 0;
        while (stopCounter < mostCounted && readTextLine())
            readStop(stopCounter++);
        m_model.stops.setCount(stopCounter);
        m_reading.surplus.stops = std::max(0, stopCounter - tourCapacity);
    }

    /// Reads a stop from its title, the current line, on. Everything is read also when there is no place for
    /// it.
    void readStop(std::int16_t index) {
        std::string title = windows1252::decodeHtml(m_line);
        std::string address;
        std::string narration;
        std::string instruction;
        if (readTextLine()) {
            address = windows1252::decode(m_line);
            narration = readText();
            instruction = readText();
        }
        if (index >= tourCapacity)
            return;
        if (index >= m_model.stops.held())
            m_model.stops.setCount(static_cast<std::int16_t>(index + 1));
        m_model.stops.at(index + 1) = {std::move(title), std::move(address), std::move(narration),
                                       std::move(instruction)};
    }

    /// A narration or an instruction: its first line, found behind empty and marker lines, up to the next
    /// empty line. When the file ends before it, the last line read counts as read again; one that cannot
    /// begin a text leaves the text empty.
    std::string readText() {
        if (!readTextLine()) {
            m_onError(m_lineNumber, prematureEnd);
            if (!isTextLine(m_line))
                return {};
        }
        std::string text;
        do {
            if (!isMarkerLine(m_line)) {
                windows1252::appendDecodedHtml(text, m_line);
                text.append(lineBreak);
            }
        } while (readLine() && !m_line.empty());
        return text;
    }

    TextLines m_lines;
    std::string_view m_line;
    int m_lineNumber = 0; ///< Counts attempts, also those that found the end of the file.
    TourModel& m_model;
    const LineErrorHandler& m_onError;
    ScriptReading m_reading;
};

/// Keywords are ASCII, whatever the language of the system.
char upperLetter(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool beginsWithKeyword(std::string_view command, std::string_view keyword) {
    if (command.size() < keyword.size())
        return false;
    for (std::size_t i = 0; i < keyword.size(); ++i) {
        if (upperLetter(command[i]) != keyword[i])
            return false;
    }
    return true;
}

/// Shows the first errors of a script and counts the others: a file that is no script at all can hold a
/// million, and each one that is shown waits for the author.
class ShownErrors final {
public:
    explicit ShownErrors(Desktop& desktop) : m_desktop(desktop) {}

    void add(int lineNumber, std::string_view message) {
        if (m_count++ < mostShownLineErrors)
            reportLineError(m_desktop, lineNumber, message);
    }

    void showHowManyMore() {
        if (m_count > mostShownLineErrors)
            m_desktop.showLineError("Further errors in the script, not shown: " +
                                    std::to_string(m_count - mostShownLineErrors));
    }

private:
    Desktop& m_desktop;
    int m_count = 0;
};

void warnOfSurplus(Log& log, std::string_view what, int count) {
    if (count > 0)
        log.warn("the script's " + std::string(what) +
                 " after the 100th are left out: " + std::to_string(count));
}

} // namespace

std::string titleInScript(std::string_view beginning) {
    TextLines lines(beginning);
    while (const std::optional<std::string_view> line = lines.next()) {
        const std::string_view text = trimBlanks(*line);
        if (isTextLine(text))
            return windows1252::decodeHtml(text);
    }
    return {};
}

bool parseScriptCommand(std::string_view line, int lineNumber, TourModel& model,
                        const LineErrorHandler& onError) {
    const std::string_view trimmed = trimBlanks(line);
    const std::string_view command =
        trimBlanks(trimmed.substr(std::min(scriptMarker.size(), trimmed.size())));
    if (!command.starts_with('#'))
        return true;
    for (const Keyword& keyword : keywords) {
        if (beginsWithKeyword(command, keyword.text)) {
            bool hasPlace = true;
            keyword.apply(Command{command, lineNumber, model, onError, hasPlace});
            return hasPlace;
        }
    }
    return true;
}

ScriptReading parseScript(std::string_view script, TourModel& model, const LineErrorHandler& onError) {
    return ScriptReader(script, model, onError).read();
}

ScriptReading readScript(TourContext& context) {
    return readScriptFile(context, context.workspace.workingFile("script.txt"));
}

ScriptReading readScriptFile(TourContext& context, const std::string& path) {
    const files::Contents script = files::read(path);
    context.log.skip(script.outcome);
    ScriptReading reading = readScriptBytes(context, script.bytes);
    reading.couldBeRead = script.outcome.ok();
    return reading;
}

ScriptReading readScriptBytes(TourContext& context, std::string_view script) {
    context.desktop.stayResponsive();
    ShownErrors errors(context.desktop);
    const ScriptReading reading =
        parseScript(script, context.model,
                    [&](int lineNumber, std::string_view message) { errors.add(lineNumber, message); });
    context.desktop.stayResponsive();
    errors.showHowManyMore();
    warnOfSurplus(context.log, "stops", reading.surplus.stops);
    warnOfSurplus(context.log, "launching points", reading.surplus.launchURLs);
    return reading;
}

} // namespace wendmark
