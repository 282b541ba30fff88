#include "commands/TourCommands.h"
#include "hostile/Effort.h"
#include "model/ScriptFile.h"
#include "support/TestTour.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <random>

namespace wendmark::test {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr std::size_t tenMegabytes = 10'000'000;
constexpr std::size_t hundredMegabytes = 100'000'000;

std::string repeated(std::string_view part, std::size_t bytes) {
    std::string text;
    text.reserve(bytes + part.size());
    while (text.size() < bytes)
        text += part;
    return text;
}

std::string randomBytes(std::size_t count) {
    std::mt19937_64 generator(20240229);
    std::string bytes(count, '\0');
    for (std::size_t i = 0; i < count; ++i)
        bytes[i] = static_cast<char>(generator() >> 56);
    return bytes;
}

std::string utf16(std::string_view ascii, bool bigEndian) {
    std::string bytes = bigEndian ? "\xfe\xff" : "\xff\xfe";
    bytes.reserve(2 * ascii.size() + 2);
    for (const char c : ascii) {
        bytes.push_back(bigEndian ? '\0' : c);
        bytes.push_back(bigEndian ? c : '\0');
    }
    return bytes;
}

const std::string shortStop = "Stop\r\nhttp://a.example/\r\n\r\nWords.\r\n\r\nDo it.\r\n\r\n";

/// Reads scripts that no author wrote, and opens tours that hold them.
class HostileScriptTest : public ::testing::Test {
protected:
    HostileScriptTest() {
        tour.useShippedTemplates();
        tour.workspace.setTourPath(tour.scratch / "MyTours/hostile");
        std::filesystem::create_directory(tour.workspace.tourPath());
    }

    /// Measures the reading of this script. The model then holds what was read.
    void read(std::string_view what, std::string_view script) {
        expectEffortInProportion("read: " + std::string(what), script, 6, [&](std::string_view part) {
            writeFile(tour.workspace.tourFile("script.txt"), part);
            tour.model = TourModel();
            tour.desktop.lineErrors.clear();
            tour.log.warnings.clear();
            readScriptFile(tour.context, tour.workspace.tourFile("script.txt"));
        });
        EXPECT_LE(tour.desktop.lineErrors.size(), 1U + mostShownLineErrors);
    }

    /// Same, and before it the opening of a tour that holds the first tenth of the script. Each text goes
    /// into two pages, the title into eight.
    void readAndOpen(std::string_view what, std::string_view script) {
        expectEffortInProportion("open: " + std::string(what), script.substr(0, script.size() / 10), 6,
                                 [&](std::string_view part) {
                                     writeFile(tour.workspace.tourFile("script.txt"), part);
                                     tour.desktop.lineErrors.clear();
                                     tour.log.failures.clear();
                                     openTour(tour.context);
                                 });
        EXPECT_LE(tour.desktop.lineErrors.size(), 1U + mostShownLineErrors);
        if (tour.model.stopCount() > tourCapacity)
            EXPECT_THAT(tour.log.failures, Contains(HasSubstr("a tour has at most 100 stops")));
        else
            EXPECT_THAT(tour.log.failures, IsEmpty());
        EXPECT_TRUE(exists(tour.workspace.workingFile("script.txt")));
        EXPECT_TRUE(exists(tour.workspace.workingFile("framever.htm")));
        read(what, script);
    }

    TestTour tour;
};

TEST_F(HostileScriptTest, aHundredMegabytesOfWords) {
    readAndOpen("words", "Title\r\nStop\r\na.htm\r\n\r\n" +
                             repeated("The quick brown fox jumps over the lazy dog. \r\n", hundredMegabytes));
    EXPECT_EQ(tour.model.stopCount(), 1);
    EXPECT_GT(tour.model.stops.at(1).stopNarration.size(), hundredMegabytes / 10 * 9);
    EXPECT_THAT(tour.desktop.lineErrors, Contains(HasSubstr("Premature end of file in line")));
}

TEST_F(HostileScriptTest, aHundredMegabytesInOneLine) {
    readAndOpen("one line", repeated("word ", hundredMegabytes));
    EXPECT_EQ(tour.model.stopCount(), 0);
    EXPECT_EQ(tour.model.tourTitle.size(), hundredMegabytes - 1);
}

TEST_F(HostileScriptTest, linesOfTenMegabytes) {
    const std::string line = repeated("word&#8211;", tenMegabytes) + "\r\n";
    readAndOpen("lines of 10 MB", line + line + "a.htm\r\n\r\n" + line + line + "\r\n" + line + "\r\n");
    EXPECT_EQ(tour.model.stopCount(), 1);
    EXPECT_THAT(tour.desktop.lineErrors, IsEmpty());
}

TEST_F(HostileScriptTest, fiftyMegabytesOfLineEnds) {
    for (const std::string_view end : {"\n", "\r", "\r\n", "\n\r"}) {
        readAndOpen("line ends", repeated(end, hundredMegabytes / 2));
        EXPECT_THAT(tour.desktop.lineErrors, Contains(HasSubstr("Premature end of file in line")));
    }
}

TEST_F(HostileScriptTest, aHundredMegabytesOfBlanks) {
    readAndOpen("blanks", repeated(" ", hundredMegabytes));
    EXPECT_THAT(tour.desktop.lineErrors, Contains("Premature end of file in line 2"));
}

TEST_F(HostileScriptTest, aHundredMegabytesOfReferences) {
    readAndOpen("references", "Title\nStop\na.htm\n\n" + repeated("&#8364;&&#", hundredMegabytes));
    EXPECT_EQ(tour.model.stopCount(), 1);
}

TEST_F(HostileScriptTest, aHundredMegabytesOfMarkerLines) {
    readAndOpen("marker lines", repeated("<<<VoskInfo>>>\n", hundredMegabytes));
    EXPECT_THAT(tour.desktop.lineErrors, Contains(HasSubstr("Premature end of file in line")));
    readAndOpen("marker lines in a text",
                "Title\nStop\na.htm\n\nWords.\n" + repeated("<<<VoskInfo>>>#\n", hundredMegabytes));
    EXPECT_EQ(tour.model.stopCount(), 1);
}

TEST_F(HostileScriptTest, aHundredThousandStops) {
    readAndOpen("100,000 stops", "Title\r\n" + repeated(shortStop, 100'000 * shortStop.size()));
    EXPECT_THAT(tour.log.warnings, Contains("the script's stops after the 100th are left out: 32667"));
    EXPECT_EQ(tour.model.stops.at(100).stopTitle, "Stop");
}

TEST_F(HostileScriptTest, aTextOfTwentyFiveMillionLines) {
    readAndOpen("short lines", repeated("a\n", hundredMegabytes / 2));
    EXPECT_EQ(tour.model.stopCount(), 1);
    EXPECT_THAT(tour.desktop.lineErrors, Contains("Premature end of file in line 25000002"));
}

TEST_F(HostileScriptTest, aMillionFaultyCommands) {
    readAndOpen("faulty commands", repeated("<<<VoskInfo>>>#Author\n", 1'000'000 * 22));
    EXPECT_THAT(tour.desktop.lineErrors, Contains("Command Syntax Error - '=' sign not found in line 1"));
    EXPECT_THAT(tour.desktop.lineErrors, SizeIs(1U + mostShownLineErrors));
    EXPECT_EQ(tour.desktop.lineErrors.back(),
              "Further errors in the script, not shown: " + std::to_string(1000001 - mostShownLineErrors));
}

TEST_F(HostileScriptTest, aMillionLaunchingPoints) {
    const std::string launchingPoint = "<<<VoskInfo>>>#LaunchURL=http://a.example/\n";
    readAndOpen("launching points", repeated(launchingPoint, 1'000'000 * launchingPoint.size()));
    EXPECT_EQ(tour.model.launchURLCount, 100);
    EXPECT_THAT(tour.log.warnings,
                Contains("the script's launching points after the 100th are left out: 999900"));
}

TEST_F(HostileScriptTest, commandsOfTenMegabytes) {
    std::string script;
    for (const std::string_view keyword : {"BufferDelay", "NarHeight", "Author", "StopName", "HelpFile",
                                           "LaunchURL", "AdvWidth", "NavWidth", "Unknown"})
        script += "<<<VoskInfo>>>#" + std::string(keyword) + "=" + repeated("9", tenMegabytes) + "\r\n";
    readAndOpen("commands of 10 MB", script + "Title\r\n");
    EXPECT_EQ(tour.model.tourTitle, "Title");
    EXPECT_EQ(tour.model.launchURLCount, 1);
}

TEST_F(HostileScriptTest, nulBytes) {
    readAndOpen("NUL bytes", std::string(hundredMegabytes, '\0'));
    EXPECT_EQ(tour.model.stopCount(), 0);
    using namespace std::string_view_literals;
    const std::string_view stop = "St\0p\r\na\0b.htm\r\n\r\nW\0rds.\r\n\r\nDo\0it.\r\n\r\n"sv;
    readAndOpen("NUL bytes in texts", "Title\r\n" + repeated(stop, stop.size() * 50));
    EXPECT_EQ(tour.model.stopCount(), 50);
    EXPECT_EQ(tour.model.stops.at(50).stopTitle, std::string("St\0p", 4));
    EXPECT_EQ(tour.model.stops.at(50).stopURL, std::string("a\0b.htm", 7));
}

TEST_F(HostileScriptTest, utf8) {
    readAndOpen(
        "UTF-8",
        "\xef\xbb\xbfT\xc3\xaftle\r\n" +
            repeated("\xe4\xb8\xad\xe6\x96\x87\r\na.htm\r\n\r\n\xf0\x9f\x9a\x80\r\n\r\nDo it.\r\n\r\n",
                     35 * 100));
    EXPECT_EQ(tour.model.stopCount(), 100);
    // Bytes are taken as those of the code page, and given back as they were.
    EXPECT_THAT(readFile(tour.workspace.workingFile("script.txt")),
                HasSubstr("\xef\xbb\xbfT\xc3\xaftle\r\n"));
    EXPECT_THAT(readFile(tour.workspace.workingFile("script.txt")), HasSubstr("\xe4\xb8\xad\xe6\x96\x87"));
}

TEST_F(HostileScriptTest, utf16) {
    for (const bool bigEndian : {false, true}) {
        readAndOpen("UTF-16", utf16("Title\r\n" + repeated(shortStop, 90 * shortStop.size()), bigEndian));
        tour.log.failures.clear();
        readAndOpen("100 MB of UTF-16",
                    utf16("Title\r\n" + repeated(shortStop, hundredMegabytes / 2), bigEndian));
    }
}

TEST_F(HostileScriptTest, aHundredMegabytesAtRandom) {
    readAndOpen("random bytes", randomBytes(hundredMegabytes));
}

} // namespace
} // namespace wendmark::test
