// Puts words in the place of others in arbitrary HTML, as Replace All does.
//
// First line of the input: what is looked for. Second line: what comes in its place. The rest is the HTML.

#include "fuzz/Require.h"
#include "model/ReadableText.h"
#include "model/TextSearch.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace wendmark::fuzz {
namespace {

/// Takes the first line off the input.
std::string_view takeLine(std::string_view& input) {
    const std::size_t end = std::min(input.find('\n'), input.size());
    const std::string_view line = input.substr(0, end);
    input.remove_prefix(std::min(end + 1, input.size()));
    return line;
}

struct Replaced {
    std::string html;
    std::string expected; ///< What people should read then.
};

Replaced replaceAll(std::string_view html, const TextSearch& search, std::string_view words) {
    const ReadableText text = ReadableText::ofHtml(html);
    HtmlReplacer replacer(html);
    Replaced replaced;
    std::size_t taken = 0;
    std::size_t storedEnd = 0;
    search.find(text.text(), [&](TextRange range) {
        require(range.begin >= taken && range.begin < range.end && range.end <= text.text().size(),
                "places come in order and do not overlap");
        const std::optional<TextRange> stored = text.stored(range);
        if (!stored)
            return false;
        require(stored->begin >= storedEnd && stored->begin < stored->end && stored->end <= html.size(),
                "so do the places where they are stored");
        replacer.replace(*stored, words);
        replaced.expected.append(text.text(), taken, range.begin - taken).append(words);
        taken = range.end;
        storedEnd = stored->end;
        return true;
    });
    replaced.html = replacer.take();
    replaced.expected.append(text.text(), taken);
    return replaced;
}

/// Line breaks inside a place stay behind the new words, and are read as blanks.
std::string withoutBlanks(std::string text) {
    std::erase(text, ' ');
    return text;
}

void checkInput(std::string_view input) {
    const std::string_view wanted = takeLine(input);
    const std::string_view words = takeLine(input);
    for (const SearchOptions& options :
         {SearchOptions{}, SearchOptions{.matchCase = true, .wholeWords = true}}) {
        const TextSearch search(wanted, options);
        if (search.isEmpty())
            continue;
        replaceAll(input, search, words);
        const Replaced replaced = replaceAll(input, search, "<new&amp;words>");
        require(withoutBlanks(ReadableText::ofHtml(replaced.html).text()) == withoutBlanks(replaced.expected),
                "people read the new words in the place of the old ones, and nothing else is another");
    }
}

} // namespace
} // namespace wendmark::fuzz

// The fuzzer calls it by this name.
// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    wendmark::fuzz::checkInput({reinterpret_cast<const char*>(data), size});
    return 0;
}
