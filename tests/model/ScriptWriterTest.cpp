#include "model/ScriptFile.h"
#include "model/WorkedScript.h"
#include "support/SystemLimits.h"
#include "support/TestTour.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace wendmark {
namespace {

using test::crlfLines;
using test::FileSizeLimit;
using test::TestTour;
using test::workedScript;
using Lines = std::vector<std::string>;

/// The model that workedScript() describes, as windows leave it.
TourModel workedModel() {
    TourModel model;
    model.autoBuffer = true;
    model.bufferDelay = 30;
    model.autoInstruction = false;
    model.launchURLCount = 1;
    model.launchURL[0] = "http://host/start.htm";
    model.tourAuthor = "Ann Lee";
    model.tourTitle = "Plants of the Desert";
    model.stops.setCount(2);
    model.stops.at(1).stopTitle = "Cactus";
    model.stops.at(1).stopURL = "http://host/cactus.htm";
    model.stops.at(1).stopNarration = "Cacti store water.<BR>\r\nLook at the spines.\r\n";
    model.stops.at(1).stopInstruction = "Read the page, then go on.\r\n";
    model.stops.at(2).stopTitle = "Our notes";
    model.stops.at(2).stopURL = "notes.htm";
    return model;
}

/// A model with one stop whose texts are "N" and "I".
TourModel oneStop() {
    TourModel model;
    model.tourTitle = "T";
    model.stops.setCount(1);
    model.stops.at(1).stopTitle = "S";
    model.stops.at(1).stopURL = "a.htm";
    model.stops.at(1).stopNarration = "N";
    model.stops.at(1).stopInstruction = "I";
    return model;
}

bool hasLine(const std::string& script, std::string_view line) {
    const std::vector<std::string> lines = test::splitCrlfLines(script);
    return std::find(lines.begin(), lines.end(), line) != lines.end();
}

/// The part of the script that describes the stops.
std::string stopsOf(const std::string& script) {
    const std::size_t start = script.find("<<<VoskInfo>>> Stop");
    return start == std::string::npos ? "" : script.substr(start);
}

std::string marked(std::string text) {
    markParagraphs(text);
    return text;
}

TEST(ScriptWriter, workedModelIsWrittenLineByLine) {
    TourModel model = workedModel();
    EXPECT_EQ(composeScript(model), workedScript());
}

TEST(ScriptWriter, placeholdersAreStoredInTheModel) {
    TourModel model;
    model.stops.setCount(1);
    composeScript(model);
    EXPECT_EQ(model.tourTitle, "Untitled Tour");
    EXPECT_EQ(model.stops.at(1).stopTitle, "Untitled");
    EXPECT_EQ(model.stops.at(1).stopURL, "NoURL");
    EXPECT_EQ(model.stops.at(1).stopNarration, "<!--narration-->");
    EXPECT_EQ(model.stops.at(1).stopInstruction, "<!--instruction-->");
}

TEST(ScriptWriter, placeholdersAreWritten) {
    TourModel model;
    model.stops.setCount(1);
    EXPECT_EQ(composeScript(model),
              crlfLines({"<<<VoskInfo>>>#BufferDelay = 10", "<<<VoskInfo>>>#SingleWindow",
                         "<<<VoskInfo>>>#NarHeight = 100", "<<<VoskInfo>>>#AdvWidth = 110",
                         "<<<VoskInfo>>>#NavWidth = 94", "", "Untitled Tour", "", "<<<VoskInfo>>> Stop1",
                         "Untitled", "NoURL", "", "<!--narration-->", "", "<!--instruction-->", ""}));
}

TEST(ScriptWriter, tourWithoutStopsHasNoStopBlocks) {
    TourModel model;
    model.tourTitle = "Empty";
    EXPECT_EQ(composeScript(model),
              crlfLines({"<<<VoskInfo>>>#BufferDelay = 10", "<<<VoskInfo>>>#SingleWindow",
                         "<<<VoskInfo>>>#NarHeight = 100", "<<<VoskInfo>>>#AdvWidth = 110",
                         "<<<VoskInfo>>>#NavWidth = 94", "", "Empty", ""}));
}

TEST(ScriptWriter, autoBufferIsWrittenOnlyWhenOn) {
    TourModel model;
    EXPECT_FALSE(hasLine(composeScript(model), "<<<VoskInfo>>>#AutoBuffer"));
    model.autoBuffer = true;
    EXPECT_TRUE(hasLine(composeScript(model), "<<<VoskInfo>>>#AutoBuffer"));
}

TEST(ScriptWriter, noAutoInstructionIsWrittenOnlyWhenOff) {
    TourModel model;
    EXPECT_FALSE(hasLine(composeScript(model), "<<<VoskInfo>>>#NoAutoInstruction"));
    model.autoInstruction = false;
    EXPECT_TRUE(hasLine(composeScript(model), "<<<VoskInfo>>>#NoAutoInstruction"));
}

TEST(ScriptWriter, singleWindowIsWrittenWhateverTheModelHolds) {
    TourModel model;
    for (const bool singleWindow : {false, true}) {
        model.singleWindow = singleWindow;
        EXPECT_TRUE(hasLine(composeScript(model), "<<<VoskInfo>>>#SingleWindow"));
    }
}

TEST(ScriptWriter, authorIsWrittenAsItStandsUnlessBlank) {
    TourModel model;
    model.tourAuthor = "   ";
    EXPECT_EQ(composeScript(model).find("#Author"), std::string::npos);
    model.tourAuthor = " Ann ";
    EXPECT_TRUE(hasLine(composeScript(model), "<<<VoskInfo>>>#Author =  Ann "));
}

TEST(ScriptWriter, numbersAreWrittenInPlainDecimals) {
    TourModel model;
    model.bufferDelay = 2147483647;
    model.narHeight = -32768;
    model.advWidth = 0;
    model.navWidth = 7;
    const std::string script = composeScript(model);
    EXPECT_TRUE(hasLine(script, "<<<VoskInfo>>>#BufferDelay = 2147483647"));
    EXPECT_TRUE(hasLine(script, "<<<VoskInfo>>>#NarHeight = -32768"));
    EXPECT_TRUE(hasLine(script, "<<<VoskInfo>>>#AdvWidth = 0"));
    EXPECT_TRUE(hasLine(script, "<<<VoskInfo>>>#NavWidth = 7"));
}

TEST(ScriptWriter, launchingPointsAreWrittenInOrderUpToTheirCount) {
    TourModel model;
    model.launchURL[0] = "http://b/";
    model.launchURL[1] = "http://a/";
    model.launchURL[2] = "http://leftover/";
    model.launchURLCount = 2;
    const Lines lines = test::splitCrlfLines(composeScript(model));
    EXPECT_EQ(lines.at(2), "<<<VoskInfo>>>#LaunchURL = http://b/");
    EXPECT_EQ(lines.at(3), "<<<VoskInfo>>>#LaunchURL = http://a/");
    EXPECT_EQ(lines.at(4), "<<<VoskInfo>>>#NarHeight = 100");
}

TEST(ScriptWriter, hundredLaunchingPointsAreWritten) {
    TourModel model;
    model.launchURL.fill("http://h/");
    model.launchURL[99] = "http://last/";
    model.launchURLCount = 100;
    const Lines lines = test::splitCrlfLines(composeScript(model));
    EXPECT_EQ(lines.at(101), "<<<VoskInfo>>>#LaunchURL = http://last/");
    EXPECT_EQ(lines.at(102), "<<<VoskInfo>>>#NarHeight = 100");
}

TEST(ScriptWriter, hundredStopsAreWrittenOfATourThatClaimsMore) {
    TourModel model;
    model.stops.setCount(101);
    const std::string script = composeScript(model);
    EXPECT_TRUE(hasLine(script, "<<<VoskInfo>>> Stop100"));
    EXPECT_FALSE(hasLine(script, "<<<VoskInfo>>> Stop101"));
}

TEST(ScriptWriter, textWithALineEndOfItsOwnIsFollowedByTwoEmptyLines) {
    TourModel model = oneStop();
    model.stops.at(1).stopNarration = "N1\r\nN2\r\n";
    EXPECT_EQ(stopsOf(composeScript(model)),
              crlfLines({"<<<VoskInfo>>> Stop1", "S", "a.htm", "", "N1", "N2", "", "", "I", ""}));
}

TEST(ScriptWriter, blankLinesInTextsBecomeParagraphsInFileAndModel) {
    TourModel model = oneStop();
    model.stops.at(1).stopNarration = "a\r\n\r\nb";
    model.stops.at(1).stopInstruction = "c\r\n\r\nd";
    EXPECT_EQ(stopsOf(composeScript(model)),
              crlfLines({"<<<VoskInfo>>> Stop1", "S", "a.htm", "", "a<BR>", "b", "", "c<BR>", "d", ""}));
    EXPECT_EQ(model.stops.at(1).stopNarration, "a<BR>\r\nb");
    EXPECT_EQ(model.stops.at(1).stopInstruction, "c<BR>\r\nd");
}

TEST(ScriptWriter, titleAndAddressAreNotMarkedUp) {
    TourModel model = oneStop();
    model.tourTitle = " spaced ";
    model.stops.at(1).stopTitle = " <b>S</b> ";
    const std::string script = composeScript(model);
    EXPECT_TRUE(hasLine(script, " spaced "));
    EXPECT_TRUE(hasLine(script, " <b>S</b> "));
}

TEST(ScriptWriter, textsAreWrittenInWindows1252WithReferencesForTheRest) {
    TourModel model = oneStop();
    model.tourTitle = "“Café” →";
    model.tourAuthor = "Žofie Ж";
    model.stops.at(1).stopTitle = "5 €";
    model.stops.at(1).stopNarration = "😀 – &amp;";
    model.stops.at(1).stopInstruction = "→";
    const std::string script = composeScript(model);
    EXPECT_TRUE(hasLine(script, "\x93"
                                "Caf\xE9\x94 &#8594;"));
    EXPECT_TRUE(hasLine(script, "<<<VoskInfo>>>#Author = \x8Eofie &#1046;"));
    EXPECT_TRUE(hasLine(script, "5 \x80"));
    EXPECT_TRUE(hasLine(script, "&#128512; \x96 &amp;"));
    EXPECT_TRUE(hasLine(script, "&#8594;"));
    EXPECT_EQ(model.tourTitle, "“Café” →");
}

TEST(ScriptWriter, addressesKeepMissingCharactersPercentEncoded) {
    TourModel model = oneStop();
    model.stops.at(1).stopURL = "http://h/é→";
    model.launchURLCount = 1;
    model.launchURL[0] = "http://h/Ж";
    const std::string script = composeScript(model);
    EXPECT_TRUE(hasLine(script, "http://h/\xE9%E2%86%92"));
    EXPECT_TRUE(hasLine(script, "<<<VoskInfo>>>#LaunchURL = http://h/%D0%96"));
}

TEST(ScriptWriter, workingCopysScriptIsReplaced) {
    TestTour tour;
    tour.writeWorking("script.txt", std::string(5000, 'x'));
    tour.model = workedModel();
    writeScript(tour.context);
    EXPECT_EQ(tour.working("script.txt"), workedScript());
    EXPECT_EQ(tour.log.failures, Lines{});
    EXPECT_EQ(test::folderContents(tour.workspace.folders().newTourPath).size(), 1U);
}

TEST(ScriptWriter, failureIsOneLogLineAndTheModelIsFilledAllTheSame) {
    TestTour tour;
    std::filesystem::create_directory(tour.workspace.workingFile("script.txt"));
    writeScript(tour.context);
    ASSERT_EQ(tour.log.failures.size(), 1U);
    EXPECT_TRUE(tour.log.failures[0].starts_with("cannot write " + tour.workspace.workingFile("script.txt")))
        << tour.log.failures[0];
    EXPECT_EQ(tour.model.tourTitle, "Untitled Tour");
    EXPECT_EQ(tour.desktop.calls, Lines{});
}

TEST(ScriptWriter, fullDiskLeavesTheOldScript) {
    TestTour tour;
    tour.writeWorking("script.txt", "old");
    {
        const FileSizeLimit limit(100);
        writeScript(tour.context);
    }
    EXPECT_EQ(tour.log.failures.size(), 1U);
    EXPECT_EQ(test::folderContents(tour.workspace.folders().newTourPath),
              (std::map<std::string, std::string>{{"script.txt", "old"}}));
}

TEST(MarkParagraphs, pairOfBreaksBecomesAMarkAndABreak) {
    struct Case {
        std::string_view text;
        std::string_view marked;
    };
    for (const Case& given :
         {Case{"", ""}, Case{"a", "a"}, Case{"a\r\nb\r\n", "a\r\nb\r\n"}, Case{"a\r\n\r\nb", "a<BR>\r\nb"},
          Case{"\r\n\r\n", "<BR>\r\n"}, Case{"a\r\n\r\nb\r\n\r\nc", "a<BR>\r\nb<BR>\r\nc"},
          Case{"a\r\n\r\n\r\nb", "a<BR>\r\n\r\nb"}, Case{"a\r\n\r\n\r\n\r\nb", "a<BR>\r\n<BR>\r\nb"},
          Case{"a\r\n\r\n\r\n\r\n\r\nb", "a<BR>\r\n<BR>\r\n\r\nb"}, Case{"a\n\nb", "a\n\nb"},
          Case{"a\r\rb", "a\r\rb"}, Case{"a\r\n \r\nb", "a\r\n \r\nb"},
          Case{"a\n\r\n\r\nb", "a\n<BR>\r\nb"}}) {
        SCOPED_TRACE(testing::PrintToString(given.text));
        EXPECT_EQ(marked(std::string(given.text)), given.marked);
    }
}

/// A text of `units` UTF-16 units that ends in a pair of breaks, filled with `filler` of `fillerUnits` units.
std::string textOfUnits(std::size_t units, std::string_view filler, std::size_t fillerUnits) {
    constexpr std::string_view breaks = "\r\n\r\n";
    std::string text((units - breaks.size()) % fillerUnits, '.');
    for (std::size_t i = 0; i < (units - breaks.size()) / fillerUnits; ++i)
        text += filler;
    return text.append(breaks);
}

TEST(MarkParagraphs, textsUpTo32767UnitsAreProcessedAndLongerOnesAreNot) {
    struct Filler {
        std::string_view character;
        std::size_t units;
    };
    for (const Filler& filler : {Filler{"x", 1}, Filler{"é", 1}, Filler{"→", 1}, Filler{"😀", 2}}) {
        SCOPED_TRACE(filler.character);
        const std::string longest = textOfUnits(32767, filler.character, filler.units);
        EXPECT_EQ(marked(longest), longest.substr(0, longest.size() - 4) + "<BR>\r\n");
        const std::string tooLong = textOfUnits(32768, filler.character, filler.units);
        EXPECT_EQ(marked(tooLong), tooLong);
    }
}

TEST(JoinLines, breaksAreRemovedButOneRightBehindARemovedOneStays) {
    struct Case {
        std::string_view text;
        std::string_view joined;
    };
    for (const Case& given :
         {Case{"", ""}, Case{"abc", "abc"}, Case{"ab\r\ncd", "abcd"}, Case{"\r\nab\r\n", "ab"},
          Case{"ab\r\n\r\ncd", "ab\r\ncd"}, Case{"\r\n\r\n\r\n", "\r\n"},
          Case{"\r\n\r\n\r\n\r\n", "\r\n\r\n"}, Case{"a\r\nb\r\nc", "ab\r\nc"}, Case{"a\r\nbb\r\nc", "abbc"},
          Case{"a\nb\rc", "a\nb\rc"}, Case{"a\r\né\r\nc", "aé\r\nc"}, Case{"a\r\néé\r\nc", "aééc"},
          Case{"a\r\n→\r\nc", "a→\r\nc"}, Case{"a\r\n😀\r\nc", "a😀c"}, Case{"a\r\nb😀\r\nc", "ab😀c"}}) {
        SCOPED_TRACE(testing::PrintToString(given.text));
        EXPECT_EQ(joinLines(std::string(given.text)), given.joined);
    }
}

} // namespace
} // namespace wendmark
