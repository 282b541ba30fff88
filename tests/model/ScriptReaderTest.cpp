#include "model/ScriptFile.h"
#include "model/TourModel.h"
#include "model/WorkedScript.h"
#include "support/TestTour.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

namespace wendmark {
namespace {

using test::TestTour;
using test::workedScript;
using Lines = std::vector<std::string>;

constexpr std::string_view noEqualsSign = "Command Syntax Error - '=' sign not found in line 1";
constexpr std::string_view noStopName = "Command Syntax Error - null stop name in line 1";

struct Reading {
    TourModel model;
    Lines errors; ///< As the author sees them.
    ScriptSurplus surplus;
    bool couldBeRead = false;
    bool hasTitle = false;
};

LineErrorHandler collectIn(Lines& errors) {
    return [&errors](int lineNumber, std::string_view message) {
        errors.push_back(std::string(message) + " in line " + std::to_string(lineNumber));
    };
}

Reading read(std::string_view script, TourModel model = {}) {
    Reading reading;
    reading.model = std::move(model);
    const ScriptReading result = parseScript(script, reading.model, collectIn(reading.errors));
    reading.surplus = result.surplus;
    reading.couldBeRead = result.couldBeRead;
    reading.hasTitle = result.hasTitle;
    return reading;
}

/// Reads one header command, given without its marker.
Reading readCommand(std::string_view command, TourModel model = {}) {
    return read("<<<VoskInfo>>>" + std::string(command) + "\r\nTitle\r\n", std::move(model));
}

std::string scriptOfStops(int count) {
    std::string script = "Title\r\n";
    for (int n = 1; n <= count; ++n) {
        const std::string number = std::to_string(n);
        script +=
            "Stop " + number + "\r\nh/" + number + "\r\n\r\nN" + number + "\r\n\r\nI" + number + "\r\n\r\n";
    }
    return script;
}

std::string scriptOfLaunchURLs(int count) {
    std::string script;
    for (int k = 1; k <= count; ++k)
        script += "<<<VoskInfo>>>#LaunchURL = http://host/" + std::to_string(k) + "\r\n";
    return script + "Title\r\n";
}

TEST(ScriptReader, workedScriptFillsTheModel) {
    const Reading reading = read(workedScript());
    const TourModel& model = reading.model;
    EXPECT_EQ(reading.errors, Lines{});
    EXPECT_TRUE(model.autoBuffer);
    EXPECT_EQ(model.bufferDelay, 30);
    EXPECT_FALSE(model.autoInstruction);
    EXPECT_TRUE(model.singleWindow);
    ASSERT_EQ(model.launchURLCount, 1);
    EXPECT_EQ(model.launchURL[0], "http://host/start.htm");
    EXPECT_EQ(model.narHeight, 100);
    EXPECT_EQ(model.advWidth, 110);
    EXPECT_EQ(model.navWidth, 94);
    EXPECT_EQ(model.tourAuthor, "Ann Lee");
    EXPECT_EQ(model.tourTitle, "Plants of the Desert");
    ASSERT_EQ(model.stopCount(), 2);
    EXPECT_EQ(model.stops.at(1).stopTitle, "Cactus");
    EXPECT_EQ(model.stops.at(1).stopURL, "http://host/cactus.htm");
    EXPECT_EQ(model.stops.at(1).stopNarration, "Cacti store water.<BR>\r\nLook at the spines.\r\n");
    EXPECT_EQ(model.stops.at(1).stopInstruction, "Read the page, then go on.\r\n");
    EXPECT_EQ(model.stops.at(2).stopTitle, "Our notes");
    EXPECT_EQ(model.stops.at(2).stopURL, "notes.htm");
    EXPECT_EQ(model.stops.at(2).stopNarration, "<!--narration-->\r\n");
    EXPECT_EQ(model.stops.at(2).stopInstruction, "<!--instruction-->\r\n");
}

TEST(ScriptReader, everyKindOfLineEndIsRead) {
    for (const std::string_view end : {"\n", "\r"}) {
        const Reading reading = read(workedScript(31, end));
        EXPECT_EQ(reading.errors, Lines{});
        EXPECT_EQ(reading.model.tourTitle, "Plants of the Desert");
        EXPECT_EQ(reading.model.stopCount(), 2);
        EXPECT_EQ(reading.model.stops.at(1).stopNarration,
                  "Cacti store water.<BR>\r\nLook at the spines.\r\n");
    }
}

struct CutCase {
    std::size_t lines; ///< Lines of the worked script that are left.
    Lines errors;
    std::int16_t stopCount; ///< -1: the file ends before the stops, the count stays.
};

TEST(ScriptReader, prematureEndAnywhereIsReportedWithTheCountOfAttempts) {
    const auto prematureEnds = [](std::initializer_list<int> lineNumbers) {
        Lines errors;
        for (const int number : lineNumbers)
            errors.push_back("Premature end of file in line " + std::to_string(number));
        return errors;
    };
    const std::vector<CutCase> cases = {
        {0, prematureEnds({1}), 77},
        {1, prematureEnds({2}), 77},
        {9, prematureEnds({10}), 77},
        {10, prematureEnds({11}), 77},
        {11, {}, 0},
        {12, {}, 0},
        {13, {}, 0},
        {14, {}, 1},
        {15, prematureEnds({16, 18}), 1},
        {16, prematureEnds({17, 18}), 1},
        {17, prematureEnds({19}), 1},
        {18, prematureEnds({20}), 1},
        {19, prematureEnds({20}), 1},
        {20, prematureEnds({21}), 1},
        {21, {}, 1},
        {22, {}, 1},
        {24, {}, 1},
        {25, {}, 2},
        {26, prematureEnds({27, 29}), 2},
        {27, prematureEnds({28, 29}), 2},
        {28, prematureEnds({30}), 2},
        {29, prematureEnds({30}), 2},
        {30, {}, 2},
    };
    for (const CutCase& cut : cases) {
        SCOPED_TRACE("cut after line " + std::to_string(cut.lines));
        TourModel before;
        before.stops.setCount(77);
        const Reading reading = read(workedScript(cut.lines), before);
        EXPECT_EQ(reading.errors, cut.errors);
        EXPECT_EQ(reading.model.stopCount(), cut.stopCount);
    }
}

TEST(ScriptReader, fileThatEndsAfterAnAddressRepeatsTheAddressAsBothTexts) {
    const TourModel model = read(workedScript(15)).model;
    EXPECT_EQ(model.stops.at(1).stopURL, "http://host/cactus.htm");
    EXPECT_EQ(model.stops.at(1).stopNarration, "http://host/cactus.htm\r\n");
    EXPECT_EQ(model.stops.at(1).stopInstruction, "http://host/cactus.htm\r\n");
}

TEST(ScriptReader, fileThatEndsInANarrationRepeatsItsLastLineAsInstruction) {
    const TourModel model = read(workedScript(18)).model;
    EXPECT_EQ(model.stops.at(1).stopNarration, "Cacti store water.<BR>\r\nLook at the spines.\r\n");
    EXPECT_EQ(model.stops.at(1).stopInstruction, "Look at the spines.\r\n");
}

TEST(ScriptReader, textStaysEmptyWhenTheLastLineCannotBeginOne) {
    const TourModel afterEmptyLine = read(workedScript(19)).model;
    EXPECT_EQ(afterEmptyLine.stops.at(1).stopNarration, "Cacti store water.<BR>\r\nLook at the spines.\r\n");
    EXPECT_EQ(afterEmptyLine.stops.at(1).stopInstruction, "");

    const Reading afterMarker = read("T\r\nS\r\na.htm\r\n<<<VoskInfo>>> Stop2\r\n");
    EXPECT_EQ(afterMarker.errors,
              (Lines{"Premature end of file in line 5", "Premature end of file in line 6"}));
    EXPECT_EQ(afterMarker.model.stops.at(1).stopNarration, "");
    EXPECT_EQ(afterMarker.model.stops.at(1).stopInstruction, "");
}

TEST(ScriptReader, markerLinesInsideATextAreSkipped) {
    const Reading reading =
        read("T\r\nS\r\na.htm\r\n<<<VoskInfo>>>#Author = X\r\nN1\r\n<<<VoskInfo>>> Stop7\r\nN2\r\n\r\n"
             "I1\r\n<<<VoskInfo>>>\r\nI2\r\n");
    EXPECT_EQ(reading.errors, Lines{});
    EXPECT_EQ(reading.model.stops.at(1).stopNarration, "N1\r\nN2\r\n");
    EXPECT_EQ(reading.model.stops.at(1).stopInstruction, "I1\r\nI2\r\n");
    EXPECT_EQ(reading.model.tourAuthor, "");
}

TEST(ScriptReader, markerAsLastLineOfANarrationIsNoTextForTheInstruction) {
    const Reading reading = read("T\r\nS\r\na.htm\r\nN\r\n<<<VoskInfo>>> Stop2\r\n");
    EXPECT_EQ(reading.errors, Lines{"Premature end of file in line 7"});
    EXPECT_EQ(reading.model.stops.at(1).stopNarration, "N\r\n");
    EXPECT_EQ(reading.model.stops.at(1).stopInstruction, "");
}

TEST(ScriptReader, fileWithTitleOfAStopOnlyCountsThatStop) {
    const Reading reading = read("T\r\nLonely\r\n");
    EXPECT_EQ(reading.errors, Lines{});
    ASSERT_EQ(reading.model.stopCount(), 1);
    EXPECT_EQ(reading.model.stops.at(1).stopTitle, "Lonely");
    EXPECT_EQ(reading.model.stops.at(1).stopURL, "");
    EXPECT_EQ(reading.model.stops.at(1).stopNarration, "");
}

TEST(ScriptReader, stopReplacesTheWholeRecordThatStoodThereBefore) {
    const TourModel before = read(workedScript()).model;
    const TourModel after = read("T\r\nLonely\r\n", before).model;
    EXPECT_EQ(after.stops.at(1).stopTitle, "Lonely");
    EXPECT_EQ(after.stops.at(1).stopURL, "");
    EXPECT_EQ(after.stops.at(1).stopNarration, "");
    EXPECT_EQ(after.stops.at(1).stopInstruction, "");
}

TEST(ScriptReader, lastLineNeedsNoEnd) {
    const Reading reading = read("T\nS\na.htm\nN\n\nI");
    EXPECT_EQ(reading.errors, Lines{});
    EXPECT_EQ(reading.model.stopCount(), 1);
    EXPECT_EQ(reading.model.stops.at(1).stopInstruction, "I\r\n");
}

TEST(ScriptReader, numberOnAStopLineIsNotRead) {
    const TourModel model = read("T\r\n<<<VoskInfo>>> Stop9\r\nA\r\na\r\nN\r\n\r\nI\r\n\r\n<<<VoskInfo>>> "
                                 "Stop1\r\nB\r\nb\r\nN\r\n\r\nI\r\n")
                                .model;
    ASSERT_EQ(model.stopCount(), 2);
    EXPECT_EQ(model.stops.at(1).stopTitle, "A");
    EXPECT_EQ(model.stops.at(2).stopTitle, "B");
}

TEST(ScriptReader, stopsNeedNoMarkerLines) {
    const TourModel model =
        read("T\r\n\r\nA\r\n\r\na\r\n\r\nN\r\n\r\nI\r\n\r\nB\r\nb\r\nN\r\n\r\nI\r\n").model;
    ASSERT_EQ(model.stopCount(), 2);
    EXPECT_EQ(model.stops.at(1).stopURL, "a");
    EXPECT_EQ(model.stops.at(2).stopTitle, "B");
}

TEST(ScriptReader, blanksAtTheEndsOfLinesAreLostAndTabsAreKept) {
    const TourModel model =
        read("  \r\n  Ti tle  \r\n  S  \r\n  a b.htm  \r\n  N1  \r\n\tN2\t\r\n   \r\n \t \r\n").model;
    EXPECT_EQ(model.tourTitle, "Ti tle");
    EXPECT_EQ(model.stops.at(1).stopTitle, "S");
    EXPECT_EQ(model.stops.at(1).stopURL, "a b.htm");
    EXPECT_EQ(model.stops.at(1).stopNarration, "N1\r\n\tN2\t\r\n");
    EXPECT_EQ(model.stops.at(1).stopInstruction, "\t\r\n");
}

TEST(ScriptReader, markerCountsBehindBlanksAndOnlyInItsOwnCase) {
    EXPECT_EQ(read("  <<<VoskInfo>>>#Author = X\r\nT\r\n").model.tourAuthor, "X");
    EXPECT_EQ(read("<<<voskinfo>>>#Author = X\r\nT\r\n").model.tourTitle, "<<<voskinfo>>>#Author = X");
    EXPECT_EQ(read("\t<<<VoskInfo>>>#Author = X\r\nT\r\n").model.tourTitle, "\t<<<VoskInfo>>>#Author = X");
}

TEST(ScriptReader, markerAloneIsAMarkerLine) {
    const Reading reading = read("<<<VoskInfo>>>\r\nT\r\n");
    EXPECT_EQ(reading.errors, Lines{});
    EXPECT_EQ(reading.model.tourTitle, "T");
}

TEST(ScriptReader, commandAfterTheTitleHasNoEffect) {
    const Reading reading = read("T\r\n<<<VoskInfo>>>#Author = X\r\n<<<VoskInfo>>>#LaunchURL\r\n");
    EXPECT_EQ(reading.errors, Lines{});
    EXPECT_EQ(reading.model.tourAuthor, "");
}

TEST(ScriptReader, whatTheScriptDoesNotNameKeepsItsValue) {
    TourModel before;
    before.autoBuffer = true;
    before.bufferDelay = 77;
    before.autoInstruction = false;
    before.singleWindow = false;
    before.narHeight = 1;
    before.advWidth = 2;
    before.navWidth = 3;
    before.tourAuthor = "Kept";
    before.stopLabel = "kept";
    before.helpFile = "kept.htm";
    before.launchURLCount = 1;
    before.launchURL[0] = "kept";
    const TourModel model = read("New\r\n", before).model;
    EXPECT_EQ(model.tourTitle, "New");
    EXPECT_TRUE(model.autoBuffer);
    EXPECT_EQ(model.bufferDelay, 77);
    EXPECT_FALSE(model.autoInstruction);
    EXPECT_FALSE(model.singleWindow);
    EXPECT_EQ(model.narHeight, 1);
    EXPECT_EQ(model.advWidth, 2);
    EXPECT_EQ(model.navWidth, 3);
    EXPECT_EQ(model.tourAuthor, "Kept");
    EXPECT_EQ(model.stopLabel, "kept");
    EXPECT_EQ(model.helpFile, "kept.htm");
    EXPECT_EQ(model.launchURLCount, 1);
    EXPECT_EQ(model.launchURL[0], "kept");
}

TEST(ScriptReader, languageIsRead) {
    EXPECT_EQ(readCommand("#Language = de").model.language, "de");
    EXPECT_EQ(readCommand("#LANGUAGE=  pt-BR ").model.language, "pt-br");
    EXPECT_EQ(readCommand("#Language").errors, Lines{std::string(noEqualsSign)});
}

TEST(ScriptReader, whatIsNoLanguageChangesNothing) {
    TourModel before;
    before.language = "de";
    for (const std::string_view text : {"", "d", "-de", "de-", "de--at", "d'e", "de fr", "\xE9n", "<b>",
                                        "abcdefghijklmnopqrstuvwxyzabcdefghij"})
        EXPECT_EQ(readCommand("#Language = " + std::string(text), before).model.language, "de") << text;
}

TEST(ScriptReader, layoutIsReadWhenItIsAKnownOne) {
    EXPECT_TRUE(readCommand("#Layout = side").model.wordsBesidePage);
    EXPECT_TRUE(readCommand("#layout=SIDE").model.wordsBesidePage);
    EXPECT_FALSE(readCommand("#Layout = other").model.wordsBesidePage);
    EXPECT_FALSE(readCommand("#Layout =").model.wordsBesidePage);
}

TEST(ScriptReader, fileWithoutTitleKeepsTitleAndStopsAndReportsOnce) {
    TourModel before;
    before.tourTitle = "Old";
    before.stops.setCount(3);
    const Reading reading = read("\r\n<<<VoskInfo>>>#AutoBuffer\r\n\r\n", before);
    EXPECT_EQ(reading.errors, Lines{"Premature end of file in line 4"});
    EXPECT_TRUE(reading.model.autoBuffer);
    EXPECT_EQ(reading.model.tourTitle, "Old");
    EXPECT_EQ(reading.model.stopCount(), 3);
}

void expectThatEveryCommandWasApplied(const TourModel& model) {
    EXPECT_TRUE(model.autoBuffer);
    EXPECT_EQ(model.bufferDelay, 11);
    EXPECT_EQ(model.helpFile, "12");
    EXPECT_EQ(model.stopLabel, "13");
    EXPECT_FALSE(model.autoInstruction);
    EXPECT_TRUE(model.singleWindow);
    EXPECT_EQ(model.launchURLCount, 1);
    EXPECT_EQ(model.launchURL[0], "14");
    EXPECT_EQ(model.narHeight, 15);
    EXPECT_EQ(model.advWidth, 16);
    EXPECT_EQ(model.navWidth, 17);
    EXPECT_EQ(model.tourAuthor, "18");
}

TEST(ScriptReader, keywordsAreReadInAnyCase) {
    const std::vector<std::string> commands = {"#AutoBuffer",     "#BufferDelay = 11",  "#HelpFile = 12",
                                               "#StopName = 13",  "#NoAutoInstruction", "#SingleWindow",
                                               "#LaunchURL = 14", "#NarHeight = 15",    "#AdvWidth = 16",
                                               "#NavWidth = 17",  "#Author = 18"};
    using Spelling = int (*)(int);
    for (const Spelling spelling :
         {Spelling([](int c) { return c; }), Spelling(std::tolower), Spelling(std::toupper)}) {
        std::string script;
        for (std::string command : commands) {
            std::transform(command.begin(), command.end(), command.begin(),
                           [&](char c) { return static_cast<char>(spelling(c)); });
            script += "<<<VoskInfo>>>" + command + "\r\n";
        }
        TourModel before;
        before.singleWindow = false;
        expectThatEveryCommandWasApplied(read(script + "T\r\n", before).model);
    }
}

TEST(ScriptReader, keywordIsMatchedAsAPrefix) {
    EXPECT_TRUE(readCommand("#AutoBufferOff").model.autoBuffer);
    EXPECT_FALSE(readCommand("#NoAutoInstructionsAnyMore").model.autoInstruction);
    EXPECT_EQ(readCommand("#AuthorOfTheTour = Ann").model.tourAuthor, "Ann");
    EXPECT_EQ(readCommand("#NavWidthInPixels=12").model.navWidth, 12);
}

TEST(ScriptReader, otherCommandsAreIgnoredWithoutAMessage) {
    for (const std::string_view command :
         {"", "#", "#Auto", "#AutoBuffe", "#Unknown", "#Unknown = 1", "# AutoBuffer", "Author = X", " Stop1",
          "\t#Author = X", "##Author = X"}) {
        SCOPED_TRACE(command);
        const Reading reading = readCommand(command);
        EXPECT_EQ(reading.errors, Lines{});
        EXPECT_FALSE(reading.model.autoBuffer);
        EXPECT_EQ(reading.model.tourAuthor, "");
        EXPECT_EQ(reading.model.tourTitle, "Title");
    }
}

TEST(ScriptReader, valueIsWhatFollowsTheFirstEqualsSignTrimmed) {
    EXPECT_EQ(readCommand("   #LaunchURL   =   http://host/?a=b&c=d   ").model.launchURL[0],
              "http://host/?a=b&c=d");
    EXPECT_EQ(readCommand("#Author==X").model.tourAuthor, "=X");
    EXPECT_EQ(readCommand("#Author=\tX").model.tourAuthor, "\tX");
    EXPECT_EQ(readCommand("#AuthorX").errors, Lines{std::string(noEqualsSign)});
}

TEST(ScriptReader, helpFileAndStopNameAreLowerCasedAndTheAuthorIsNot) {
    EXPECT_EQ(readCommand("#HelpFile =  Help\xC4.HTM ").model.helpFile, "helpä.htm");
    EXPECT_EQ(readCommand("#StopName = \x8A\x8C\x8E\x9F\xD7 STOP").model.stopLabel, "šœžÿ× stop");
    EXPECT_EQ(readCommand("#Author = \xC4NN Lee").model.tourAuthor, "ÄNN Lee");
}

TEST(ScriptReader, missingEqualsSignIsReportedAndTheFieldKeepsItsValue) {
    const TourModel before;
    for (const std::string_view command :
         {"#BufferDelay 30", "#HelpFile x", "#StopName", "#LaunchURL http://h", "#NarHeight 5", "#AdvWidth 5",
          "#NavWidth 5", "#Author X"}) {
        SCOPED_TRACE(command);
        const Reading reading = readCommand(command);
        EXPECT_EQ(reading.errors, Lines{std::string(noEqualsSign)});
        EXPECT_EQ(reading.model.bufferDelay, before.bufferDelay);
        EXPECT_EQ(reading.model.helpFile, "");
        EXPECT_EQ(reading.model.stopLabel, "");
        EXPECT_EQ(reading.model.launchURLCount, 0);
        EXPECT_EQ(reading.model.narHeight, before.narHeight);
        EXPECT_EQ(reading.model.advWidth, before.advWidth);
        EXPECT_EQ(reading.model.navWidth, before.navWidth);
        EXPECT_EQ(reading.model.tourAuthor, "");
    }
}

TEST(ScriptReader, emptyValueIsReportedInTheWordsOfItsCommandAndTheFieldKeepsItsValue) {
    TourModel before;
    before.helpFile = before.stopLabel = before.tourAuthor = "kept";
    before.narHeight = before.advWidth = before.navWidth = 7;
    struct Case {
        std::string_view command;
        std::string_view error;
    };
    for (const Case& given :
         {Case{"#HelpFile =", "Command Syntax Error - null filename in line 1"},
          Case{"#StopName = ", noStopName}, Case{"#LaunchURL =  ", noStopName},
          Case{"#NarHeight=", noStopName}, Case{"#AdvWidth =", noStopName}, Case{"#NavWidth =", noStopName},
          Case{"#Author =", "Command Syntax Error - null author name in line 1"}}) {
        SCOPED_TRACE(given.command);
        const Reading reading = readCommand(given.command, before);
        EXPECT_EQ(reading.errors, Lines{std::string(given.error)});
        EXPECT_EQ(reading.model.helpFile, "kept");
        EXPECT_EQ(reading.model.stopLabel, "kept");
        EXPECT_EQ(reading.model.tourAuthor, "kept");
        EXPECT_EQ(reading.model.launchURLCount, 0);
        EXPECT_EQ(reading.model.narHeight, 7);
        EXPECT_EQ(reading.model.advWidth, 7);
        EXPECT_EQ(reading.model.navWidth, 7);
    }
}

TEST(ScriptReader, emptyBufferDelayGivesTheShortestWithoutAMessage) {
    TourModel before;
    before.bufferDelay = 50;
    const Reading reading = readCommand("#BufferDelay =", before);
    EXPECT_EQ(reading.errors, Lines{});
    EXPECT_EQ(reading.model.bufferDelay, 10);
}

TEST(ScriptReader, readingGoesOnAfterAnError) {
    const Reading reading = read("<<<VoskInfo>>>#AutoBuffer\r\n\r\n<<<VoskInfo>>>#NarHeight 3\r\n"
                                 "<<<VoskInfo>>>#LaunchURL =\r\n<<<VoskInfo>>>#Author = X\r\nT\r\n");
    EXPECT_EQ(reading.errors, (Lines{"Command Syntax Error - '=' sign not found in line 3",
                                     "Command Syntax Error - null stop name in line 4"}));
    EXPECT_EQ(reading.model.tourAuthor, "X");
    EXPECT_EQ(reading.model.tourTitle, "T");
}

TEST(ScriptReader, bufferDelayIsRoundedAndAtLeastTen) {
    constexpr std::int32_t before = 55;
    struct Case {
        std::string_view value;
        std::int32_t seconds;
    };
    for (const Case& given :
         {Case{"5", 10}, Case{"9.99", 10}, Case{"10", 10}, Case{"10.5", 10}, Case{"11.5", 12},
          Case{"12.5", 12}, Case{"13.5", 14}, Case{"-300", 10}, Case{"soon", 10}, Case{"40000", 40000},
          Case{"2147483647", 2147483647}, Case{"2147483647.4", 2147483647}, Case{"2147483647.5", before},
          Case{"2147483648", before}, Case{"1e400", before}, Case{"-1e400", 10}}) {
        SCOPED_TRACE(given.value);
        TourModel model;
        model.bufferDelay = before;
        const Reading reading = readCommand("#bufferdelay=" + std::string(given.value), model);
        EXPECT_EQ(reading.errors, Lines{});
        EXPECT_EQ(reading.model.bufferDelay, given.seconds);
    }
}

TEST(ScriptReader, frameSizeIsTheNumberAtTheStartOfItsValue) {
    constexpr std::int16_t before = 55;
    struct Case {
        std::string_view value;
        std::int16_t pixels;
    };
    for (const Case& given : {Case{"0", 0},
                              Case{"-7", -7},
                              Case{"+7", 7},
                              Case{"120px", 120},
                              Case{"1 2\t3", 123},
                              Case{"1e2", 100},
                              Case{"1E+2x", 100},
                              Case{"1e", 1},
                              Case{"2.5", 2},
                              Case{"3.5", 4},
                              Case{"-2.5", -2},
                              Case{".5", 0},
                              Case{"1.", 1},
                              Case{"wide", 0},
                              Case{"-", 0},
                              Case{".", 0},
                              Case{"--5", 0},
                              Case{"1,5", 1},
                              Case{"0x10", 0},
                              Case{"32767", 32767},
                              Case{"32767.4", 32767},
                              Case{"32767.5", before},
                              Case{"32768", before},
                              Case{"-32768", -32768},
                              Case{"-32768.5", -32768},
                              Case{"-32769", before},
                              Case{"1e400", before},
                              Case{"nan", 0},
                              Case{"inf", 0}}) {
        SCOPED_TRACE(given.value);
        TourModel model;
        model.narHeight = model.advWidth = model.navWidth = before;
        const std::string value(given.value);
        EXPECT_EQ(readCommand("#NarHeight = " + value, model).model.narHeight, given.pixels);
        EXPECT_EQ(readCommand("#AdvWidth = " + value, model).model.advWidth, given.pixels);
        const Reading reading = readCommand("#NavWidth = " + value, model);
        EXPECT_EQ(reading.model.navWidth, given.pixels);
        EXPECT_EQ(reading.errors, Lines{});
    }
}

TEST(ScriptReader, launchingPointsAreAppended) {
    TourModel before;
    before.launchURLCount = 1;
    before.launchURL[0] = "first";
    const TourModel model = readCommand("#LaunchURL = second", before).model;
    ASSERT_EQ(model.launchURLCount, 2);
    EXPECT_EQ(model.launchURL[0], "first");
    EXPECT_EQ(model.launchURL[1], "second");
}

TEST(ScriptReader, hundredLaunchingPointsAreKept) {
    const Reading reading = read(scriptOfLaunchURLs(100));
    EXPECT_EQ(reading.model.launchURLCount, 100);
    EXPECT_EQ(reading.model.launchURL[99], "http://host/100");
    EXPECT_EQ(reading.surplus.launchURLs, 0);
}

TEST(ScriptReader, launchingPointsAfterThe100thAreLeftOutAndCounted) {
    const Reading reading = read(scriptOfLaunchURLs(103));
    EXPECT_EQ(reading.errors, Lines{});
    EXPECT_EQ(reading.model.launchURLCount, 100);
    EXPECT_EQ(reading.model.launchURL[99], "http://host/100");
    EXPECT_EQ(reading.surplus.launchURLs, 3);
}

TEST(ScriptReader, parsedCommandSaysWhetherTheModelHadAPlaceForIt) {
    TourModel model;
    Lines errors;
    const LineErrorHandler onError = collectIn(errors);
    model.launchURLCount = 99;
    EXPECT_TRUE(parseScriptCommand("<<<VoskInfo>>>#LaunchURL = a", 4, model, onError));
    EXPECT_FALSE(parseScriptCommand("<<<VoskInfo>>>#LaunchURL = b", 5, model, onError));
    EXPECT_TRUE(parseScriptCommand("<<<VoskInfo>>>#LaunchURL = ", 6, model, onError));
    EXPECT_TRUE(parseScriptCommand("<<<VoskInfo>>>#Author = X", 7, model, onError));
    EXPECT_TRUE(parseScriptCommand("<<<VoskInfo>>>#Unknown", 8, model, onError));
    EXPECT_EQ(model.launchURL[99], "a");
    EXPECT_EQ(errors, Lines{"Command Syntax Error - null stop name in line 6"});
}

TEST(ScriptReader, commandShorterThanTheMarkerIsIgnored) {
    TourModel model;
    Lines errors;
    EXPECT_TRUE(parseScriptCommand("", 1, model, collectIn(errors)));
    EXPECT_TRUE(parseScriptCommand("#AutoBuffer", 1, model, collectIn(errors)));
    EXPECT_FALSE(model.autoBuffer);
    EXPECT_EQ(errors, Lines{});
}

TEST(ScriptReader, hundredStopsAreKept) {
    const Reading reading = read(scriptOfStops(100));
    EXPECT_EQ(reading.model.stopCount(), 100);
    EXPECT_EQ(reading.model.stops.at(100).stopTitle, "Stop 100");
    EXPECT_EQ(reading.model.stops.at(100).stopInstruction, "I100\r\n");
    EXPECT_EQ(reading.surplus.stops, 0);
}

TEST(ScriptReader, stopsAfterThe100thAreCountedButNotStored) {
    const Reading reading = read(scriptOfStops(101));
    EXPECT_EQ(reading.errors, Lines{});
    EXPECT_EQ(reading.model.stopCount(), 101);
    EXPECT_EQ(reading.model.stops.at(100).stopTitle, "Stop 100");
    EXPECT_EQ(reading.surplus.stops, 1);
}

TEST(ScriptReader, moreStopsThanA16BitNumberHoldsAreCountedUpToItsLargest) {
    const Reading reading = read(scriptOfStops(40000));
    EXPECT_EQ(reading.model.stopCount(), std::numeric_limits<std::int16_t>::max());
    EXPECT_EQ(reading.model.stops.at(100).stopTitle, "Stop 100");
}

TEST(ScriptReader, textsBecomeUnicodeAndReferencesOfMissingCharactersAreTurnedBack) {
    const TourModel model =
        read("\x93 Caf\xE9 \x94 &#8594; &eacute; &#233; &#0231;\r\n\x80 5\r\nhttp://h/\xE9?&#8594;\r\n"
             "\x97&#128512;\r\n\r\n&#1046;\r\n")
            .model;
    EXPECT_EQ(model.tourTitle, "“ Café ” → &eacute; &#233; &#0231;");
    EXPECT_EQ(model.stops.at(1).stopTitle, "€ 5");
    EXPECT_EQ(model.stops.at(1).stopURL, "http://h/é?&#8594;");
    EXPECT_EQ(model.stops.at(1).stopNarration, "—😀\r\n");
    EXPECT_EQ(model.stops.at(1).stopInstruction, "Ж\r\n");
}

TEST(ScriptReader, noBreakSpaceIsNotTrimmed) {
    EXPECT_EQ(read("\xA0T\xA0\r\n").model.tourTitle, "\u00A0T\u00A0");
}

TEST(ScriptReader, nulBytesAreCharactersLikeOthers) {
    using namespace std::string_literals;
    const TourModel model = read("A\0B\r\nS\0\r\n\0\r\nN\0N\r\n\r\nI\r\n"s).model;
    EXPECT_EQ(model.tourTitle, "A\0B"s);
    EXPECT_EQ(model.stops.at(1).stopTitle, "S\0"s);
    EXPECT_EQ(model.stops.at(1).stopURL, "\0"s);
    EXPECT_EQ(model.stops.at(1).stopNarration, "N\0N\r\n"s);
}

TEST(ScriptReader, lineOfTenMegabytesIsKept) {
    const std::string longLine(10'000'000, 'x');
    const TourModel model = read("T\r\nS\r\na.htm\r\n" + longLine + "\r\n\r\nI\r\n").model;
    EXPECT_EQ(model.stops.at(1).stopNarration, longLine + "\r\n");
    EXPECT_EQ(model.stops.at(1).stopInstruction, "I\r\n");
}

TEST(ScriptReader, errorsOfTheWorkingCopysScriptAreShownOneByOne) {
    TestTour tour;
    tour.writeWorking("script.txt", workedScript(15));
    readScript(tour.context);
    EXPECT_EQ(tour.desktop.lineErrors,
              (Lines{"Premature end of file in line 16", "Premature end of file in line 18"}));
    EXPECT_EQ(tour.model.tourTitle, "Plants of the Desert");
    EXPECT_EQ(tour.log.failures, Lines{});
    EXPECT_EQ(tour.log.warnings, Lines{});
}

TEST(ScriptReader, scriptIsFoundInAnyCaseOfItsName) {
    TestTour tour;
    tour.writeWorking("Script.TXT", "Found\r\n");
    readScript(tour.context);
    EXPECT_EQ(tour.model.tourTitle, "Found");
}

TEST(ScriptReader, scriptOfAnotherFolderIsReadInTheSameWay) {
    TestTour tour;
    tour.writeWorking("script.txt", "Of the working copy\r\n");
    tour.writeTemplate("script.txt", "Of the template\r\nS\r\na.htm\r\n");
    readScriptFile(tour.context, tour.workspace.templateFile("script.txt"));
    EXPECT_EQ(tour.model.tourTitle, "Of the template");
    EXPECT_EQ(tour.desktop.lineErrors,
              (Lines{"Premature end of file in line 4", "Premature end of file in line 6"}));
}

TEST(ScriptReader, fileThatCannotBeReadBehavesLikeAnEmptyOneAndIsLogged) {
    for (const bool folderInItsPlace : {false, true}) {
        TestTour tour;
        tour.model.tourTitle = "Old";
        tour.model.stops.setCount(2);
        if (folderInItsPlace)
            std::filesystem::create_directory(tour.workspace.workingFile("script.txt"));
        readScript(tour.context);
        EXPECT_EQ(tour.desktop.lineErrors, Lines{"Premature end of file in line 1"});
        ASSERT_EQ(tour.log.failures.size(), 1U);
        EXPECT_TRUE(
            tour.log.failures[0].starts_with("cannot read " + tour.workspace.workingFile("script.txt")))
            << tour.log.failures[0];
        EXPECT_EQ(tour.model.tourTitle, "Old");
        EXPECT_EQ(tour.model.stopCount(), 2);
    }
}

TEST(ScriptReader, onlyTheFirstErrorsOfALongRowAreShown) {
    std::string script = "Title\r\n";
    for (const int errors : {mostShownLineErrors, mostShownLineErrors + 3}) {
        TestTour tour;
        std::string faulty;
        for (int i = 0; i < errors; ++i)
            faulty += "<<<VoskInfo>>>#Author\r\n";
        tour.writeWorking("script.txt", faulty + script);
        readScript(tour.context);
        Lines& shown = tour.desktop.lineErrors;
        ASSERT_GE(shown.size(), static_cast<std::size_t>(mostShownLineErrors));
        EXPECT_EQ(shown[mostShownLineErrors - 1],
                  "Command Syntax Error - '=' sign not found in line " + std::to_string(mostShownLineErrors));
        shown.erase(shown.begin(), shown.begin() + mostShownLineErrors);
        EXPECT_EQ(tour.desktop.lineErrors, errors == mostShownLineErrors
                                               ? Lines{}
                                               : Lines{"Further errors in the script, not shown: 3"});
        EXPECT_EQ(tour.model.tourTitle, "Title");
    }
}

TEST(ScriptReader, whatWasLeftOutIsOneWarningForStopsAndOneForLaunchingPoints) {
    TestTour tour;
    std::string script = scriptOfLaunchURLs(102);
    script += scriptOfStops(104).substr(std::string_view("Title\r\n").size());
    tour.writeWorking("script.txt", script);
    readScript(tour.context);
    EXPECT_EQ(tour.log.warnings, (Lines{"the script's stops after the 100th are left out: 4",
                                        "the script's launching points after the 100th are left out: 2"}));
    EXPECT_EQ(tour.log.failures, Lines{});
    EXPECT_EQ(tour.desktop.lineErrors, Lines{});
}

TEST(ScriptReader, fullTourIsReadWithoutAWarning) {
    TestTour tour;
    std::string script = scriptOfLaunchURLs(100);
    script += scriptOfStops(100).substr(std::string_view("Title\r\n").size());
    tour.writeWorking("script.txt", script);
    readScript(tour.context);
    EXPECT_EQ(tour.log.warnings, Lines{});
}

TEST(ScriptReader, tellsWhetherTheScriptHasATitle) {
    TourModel before;
    before.tourTitle = "Before";
    before.stops.setCount(2);
    for (const std::string_view script : {"", "\r\n", " \n \n", "<<<VoskInfo>>>#Author = Ann\r\n",
                                          "<<<VoskInfo>>>#AutoBuffer\r\n\r\n  <<<VoskInfo>>> Title\r\n"}) {
        const Reading reading = read(script, before);
        EXPECT_FALSE(reading.hasTitle) << script;
        EXPECT_TRUE(reading.couldBeRead);
        EXPECT_EQ(reading.model.tourTitle, "Before");
        EXPECT_EQ(reading.model.stopCount(), 2);
        EXPECT_EQ(reading.errors.size(), 1U);
    }
    for (const std::string_view script : {"Title", "\r\n Title\r\n", "<<<VoskInfo>>>#AutoBuffer\nTitle\n"})
        EXPECT_TRUE(read(script).hasTitle) << script;
}

TEST(ScriptReader, ofAFileTellsWhetherItCouldBeRead) {
    TestTour tour;
    tour.writeWorking("script.txt", "Title\r\n");
    ScriptReading reading = readScript(tour.context);
    EXPECT_TRUE(reading.couldBeRead);
    EXPECT_TRUE(reading.hasTitle);
    reading = readScriptFile(tour.context, tour.scratch / "missing.txt");
    EXPECT_FALSE(reading.couldBeRead);
    EXPECT_FALSE(reading.hasTitle);
}

} // namespace
} // namespace wendmark
