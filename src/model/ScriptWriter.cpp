#include "base/Files.h"
#include "base/Log.h"
#include "base/Names.h"
#include "base/TextLines.h"
#include "base/Utf8.h"
#include "base/Windows1252.h"
#include "model/Desktop.h"
#include "model/ScriptFile.h"
#include "model/TourChoices.h"
#include "model/TourContext.h"
#include "model/TourModel.h"
#include "model/Workspace.h"

#include <algorithm>

namespace wendmark {

namespace {

constexpr std::string_view paragraphMark = "<BR>";

void fillIfEmpty(std::string& text, std::string_view placeholder) {
    if (text.empty())
        text = placeholder;
}

/// Composes a script in the file's encoding, line by line.
class ScriptWriter final {
public:
    explicit ScriptWriter(TourModel& model) : m_model(model) {}

    std::string compose() {
        writeHeader();
        writeTitle();
        for (std::int16_t n = 1; n <= m_model.stops.held(); ++n)
            writeStop(n);
        return std::move(m_script);
    }

private:
    void line(std::string_view bytes) { m_script.append(bytes).append(lineBreak); }

    void command(std::string_view text, std::string_view value = {}) {
        m_script.append(scriptMarker).append(text);
        line(value);
    }

    void numberCommand(std::string_view name, std::int32_t value) { command(name, std::to_string(value)); }

    void writeHeader() {
        if (m_model.autoBuffer)
            command("#AutoBuffer");
        numberCommand("#BufferDelay = ", m_model.bufferDelay);
        if (!m_model.autoInstruction)
            command("#NoAutoInstruction");
        command("#SingleWindow"); // Whatever the tour says of it.
        for (std::int16_t i = 0; i < m_model.launchURLCount; ++i)
            command("#LaunchURL = ",
                    windows1252::encodeAddress(m_model.launchURL.at(static_cast<std::size_t>(i))));
        numberCommand("#NarHeight = ", m_model.narHeight);
        numberCommand("#AdvWidth = ", m_model.advWidth);
        numberCommand("#NavWidth = ", m_model.navWidth);
        if (!trimBlanks(m_model.tourAuthor).empty())
            command("#Author = ", windows1252::encodeHtml(m_model.tourAuthor));
        if (!m_model.language.empty())
            command("#Language = ", m_model.language);
        if (m_model.wordsBesidePage)
            command("#Layout = ", wordsBesidePageLayout);
        line("");
    }

    void writeTitle() {
        fillIfEmpty(m_model.tourTitle, "Untitled Tour");
        line(windows1252::encodeHtml(m_model.tourTitle));
        line("");
    }

    void writeStop(std::int16_t n) {
        Stop& stop = m_model.stops.at(n);
        command(" Stop" + std::to_string(n));
        fillIfEmpty(stop.stopTitle, "Untitled");
        line(windows1252::encodeHtml(stop.stopTitle));
        fillIfEmpty(stop.stopURL, "NoURL");
        line(windows1252::encodeAddress(stop.stopURL));
        line("");
        writeText(stop.stopNarration, noNarration);
        writeText(stop.stopInstruction, noInstruction);
    }

    void writeText(std::string& text, std::string_view placeholder) {
        markParagraphs(text);
        fillIfEmpty(text, placeholder);
        line(windows1252::encodeHtml(text));
        line("");
    }

    TourModel& m_model;
    std::string m_script;
};

} // namespace

void markParagraphs(std::string& text) {
    constexpr std::string_view twoBreaks = "\r\n\r\n";
    if (text.size() > longestMarkedText && utf16Length(text) > longestMarkedText)
        return;
    std::string marked;
    std::size_t copied = 0;
    for (std::size_t match = text.find(twoBreaks); match != std::string::npos;
         match = text.find(twoBreaks, copied)) {
        marked.append(text, copied, match - copied).append(paragraphMark).append(lineBreak);
        copied = match + twoBreaks.size();
    }
    if (copied > 0)
        text = marked.append(text, copied);
}

std::string joinLines(const std::string& text) {
    // Two characters after each removed break are passed over unseen, so a break that follows at once stays.
    constexpr std::size_t passedOver = 2;
    std::string joined;
    std::size_t copied = 0;
    for (std::size_t match = text.find(lineBreak); match != std::string::npos;) {
        joined.append(text, copied, match - copied);
        copied = match + lineBreak.size();
        match = text.find(lineBreak, skipUtf16(text, copied, passedOver));
    }
    return joined.append(text, copied);
}

std::string composeScript(TourModel& model) {
    return ScriptWriter(model).compose();
}

bool writeScript(TourContext& context) {
    const std::string script = composeScript(context.model);
    context.desktop.stayResponsive();
    const Outcome written = context.workspace.writeWorkingFile("script.txt", script);
    context.log.skip(written);
    context.desktop.stayResponsive();
    return written.ok();
}

} // namespace wendmark
