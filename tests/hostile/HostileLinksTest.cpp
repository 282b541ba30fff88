#include "hostile/Effort.h"
#include "model/FoundLinks.h"
#include "model/HtmlText.h"
#include "model/StopTransfer.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>

namespace wendmark::test {
namespace {

constexpr std::size_t tenMegabytes = 10'000'000;

std::string repeated(std::string_view part) {
    std::string text;
    text.reserve(tenMegabytes + part.size());
    while (text.size() < tenMegabytes)
        text += part;
    return text;
}

std::string noise() {
    std::mt19937_64 generator(20240229);
    std::string bytes(tenMegabytes, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(generator() >> 56);
    return bytes;
}

/// What is found stays within its limits, and everything else is counted.
void expectLimits(const FoundLinks& found) {
    EXPECT_LE(found.stops.size() + found.files.size(), mostFoundLinks);
    for (const Stop& stop : found.stops) {
        EXPECT_LE(stop.stopURL.size(), 3 * longestFoundAddress);
        EXPECT_LE(visibleText(stop.stopTitle).size(), 4 * longestFoundTitle + 3);
    }
}

void expectLittleWork(std::string_view what, const std::string& input) {
    SCOPED_TRACE(what);
    std::string name(what);
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c < ' '; }, '_');
    expectEffortInProportion(name + " as addresses", input, 2,
                             [](std::string_view text) { expectLimits(linksInUriList(text)); });
    expectEffortInProportion(name + " as lines", input, 2,
                             [](std::string_view text) { expectLimits(linksInPlainText(text)); });
    expectEffortInProportion(name + " as HTML", input, 2,
                             [](std::string_view text) { expectLimits(linksInHtml(text)); });
    expectEffortInProportion(name + " as a title", input, 4,
                             [](std::string_view text) { visibleText(text); });
    expectEffortInProportion(name + " as stops", input, 2,
                             [](std::string_view text) { EXPECT_EQ(decodeStops(text), std::nullopt); });
}

TEST(HostileLinksTest, tenMegabytesOfNoiseTakeLittle) {
    expectLittleWork("noise", noise());
    expectLittleWork("zeros", std::string(tenMegabytes, '\0'));
    expectLittleWork("one line", std::string(tenMegabytes, 'a'));
}

TEST(HostileLinksTest, tenMegabytesOfBeginningsTakeLittle) {
    for (const char* part : {"<",
                             "<a ",
                             "<a href=",
                             "<a href=\"",
                             "<a href='http://h/",
                             "</a",
                             "<!--",
                             "<!",
                             "&",
                             "&#",
                             "&amp",
                             "<script>",
                             "<a href=http://h/>",
                             "\n",
                             "\t",
                             "http://h/\t",
                             "%",
                             "\r",
                             "<a href=http://host/x>y",
                             "http://host/\n",
                             "file:///a\n",
                             "title\thttp://h/\n",
                             "/ ",
                             "='",
                             "wendmark-stops 1\n"})
        expectLittleWork(part, repeated(part));
}

TEST(HostileLinksTest, hugeStopsComeBack) {
    const std::vector<Stop> stops(10, Stop{"t", "http://h/", std::string(1'000'000, 'n'), "i"});
    const std::string bytes = encodeStops(stops);
    expectLittleEffort("ten huge stops", bytes.size(), 2, [&] { EXPECT_EQ(decodeStops(bytes), stops); });
}

} // namespace
} // namespace wendmark::test
