#include "support/FramingCases.h"

#include "base/TextLines.h"
#include "support/ScratchFolder.h"

#include <stdexcept>

namespace wendmark::test {

namespace {

bool readVerdict(std::string_view line) {
    if (line != "allows" && line != "refuses")
        throw std::runtime_error("no verdict: " + std::string(line));
    return line == "allows";
}

void addHeader(FramingCase::Answer& answer, std::string_view line) {
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos)
        throw std::runtime_error("no header: " + std::string(line));
    answer.headers.push_back({std::string(line.substr(0, colon)), std::string(line.substr(colon + 1))});
}

void addAnswerLine(FramingCase& framingCase, std::string_view line) {
    constexpr std::string_view statusLine = "HTTP/1.1 ";
    if (line.starts_with(statusLine))
        framingCase.answers.push_back({std::stoi(std::string(line.substr(statusLine.size()))), {}, {}});
    else if (line.starts_with('<'))
        framingCase.answers.back().page.append(line).append("\n");
    else
        addHeader(framingCase.answers.back(), line);
}

} // namespace

std::vector<FramingCase> framingCases() {
    const std::string table = readFile(WENDMARK_TESTS "/framing/answers.txt");
    std::vector<FramingCase> cases;
    bool verdictFollows = false;
    TextLines lines(table);
    while (const auto line = lines.next()) {
        if (line->empty() || line->starts_with('#'))
            continue;
        if (line->starts_with('[')) {
            cases.push_back({std::string(line->substr(1, line->size() - 2)), true, {}});
            verdictFollows = true;
        } else if (verdictFollows) {
            cases.back().allowed = readVerdict(*line);
            verdictFollows = false;
        } else {
            addAnswerLine(cases.back(), *line);
        }
    }
    return cases;
}

} // namespace wendmark::test
