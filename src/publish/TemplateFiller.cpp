#include "publish/TemplateFiller.h"

namespace wendmark {

void TemplateFiller::copyThrough(std::string_view marker) {
    takeThrough(marker, [this](std::string_view line) { write(line); });
}

void TemplateFiller::skipThrough(std::string_view marker) {
    takeThrough(marker, [](std::string_view) {});
}

void TemplateFiller::copyLine() {
    if (const auto line = nextLine("one more line"))
        write(*line);
}

void TemplateFiller::dropLine() {
    nextLine("one more line");
}

void TemplateFiller::copyRest() {
    while (!stopped() && !m_lines.atEnd())
        copyLine();
}

void TemplateFiller::closeRegion(std::string_view marker) {
    skipThrough(marker);
    write(marker);
}

void TemplateFiller::stop(std::string_view reason) {
    if (!stopped())
        m_reason = reason;
}

template <typename Take>
void TemplateFiller::takeThrough(std::string_view marker, Take take) {
    while (const auto line = nextLine(marker)) {
        take(*line);
        if (line->starts_with(marker))
            return;
    }
}

std::optional<std::string_view> TemplateFiller::nextLine(std::string_view expected) {
    if (stopped())
        return std::nullopt;
    const auto line = m_lines.next();
    if (!line)
        stop("it ends before \"" + std::string(expected) + "\"");
    return line;
}

} // namespace wendmark
