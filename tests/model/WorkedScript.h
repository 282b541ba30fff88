#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace wendmark::test {

/// A script that has every kind of line; stop 2's texts are placeholders.
inline constexpr std::array<std::string_view, 31> workedScriptLines = {
    "<<<VoskInfo>>>#AutoBuffer",
    "<<<VoskInfo>>>#BufferDelay = 30",
    "<<<VoskInfo>>>#NoAutoInstruction",
    "<<<VoskInfo>>>#SingleWindow",
    "<<<VoskInfo>>>#LaunchURL = http://host/start.htm",
    "<<<VoskInfo>>>#NarHeight = 100",
    "<<<VoskInfo>>>#AdvWidth = 110",
    "<<<VoskInfo>>>#NavWidth = 94",
    "<<<VoskInfo>>>#Author = Ann Lee",
    "",
    "Plants of the Desert",
    "",
    "<<<VoskInfo>>> Stop1",
    "Cactus",
    "http://host/cactus.htm",
    "",
    "Cacti store water.<BR>",
    "Look at the spines.",
    "",
    "",
    "Read the page, then go on.",
    "",
    "",
    "<<<VoskInfo>>> Stop2",
    "Our notes",
    "notes.htm",
    "",
    "<!--narration-->",
    "",
    "<!--instruction-->",
    ""};

/// The first `count` lines, each ended by `end`.
inline std::string workedScript(std::size_t count = workedScriptLines.size(), std::string_view end = "\r\n") {
    std::string script;
    for (std::size_t i = 0; i < count; ++i)
        script.append(workedScriptLines.at(i)).append(end);
    return script;
}

} // namespace wendmark::test
