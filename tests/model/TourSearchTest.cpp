#include "model/TourSearch.h"

#include "model/HtmlText.h"
#include "model/TourModel.h"

#include <gmock/gmock.h>

#include <random>

namespace wendmark {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TourModel tourOf(const std::vector<Stop>& stops, bool autoInstruction = false) {
    TourModel model;
    model.autoInstruction = autoInstruction;
    for (const Stop& stop : stops)
        model.stops.insert(model.stops.held() + 1, stop);
    return model;
}

TourQuery query(const std::string& words, bool addresses = false) {
    return {words, {}, addresses};
}

/// Number of the stop and first letter of its text, for each place.
std::vector<std::string> places(const TourModel& model, const TourQuery& wanted) {
    constexpr std::string_view letters = "twia";
    std::vector<std::string> found;
    for (const FoundPlace& place : findInTour(model, wanted, 1000).listed)
        found.push_back(std::to_string(place.stop) + letters[static_cast<std::size_t>(place.part)]);
    return found;
}

Stop replaced(const Stop& stop, const TourQuery& wanted, const std::string& by) {
    return replaceInStop(tourOf({stop}), 1, wanted, by).stop;
}

/// Everything of the HTML that is no text.
std::vector<std::string> tagsOf(const std::string& html) {
    std::vector<std::string> tags;
    HtmlPieces pieces(html);
    while (const auto piece = pieces.next()) {
        if (piece->kind != HtmlPiece::Kind::text)
            tags.push_back(std::string(piece->content) + std::string(piece->attributes));
    }
    return tags;
}

/// What visitors read, with `by` for each of these words, and without the blanks, which tags may make.
std::string readWithout(const std::string& html, const std::string& words, const std::string& by) {
    std::string text = ReadableText::ofHtml(html).text();
    for (std::size_t found = text.find(words); found != std::string::npos;
         found = text.find(words, found + by.size()))
        text.replace(found, words.size(), by);
    std::erase(text, ' ');
    return text;
}

const Stop temple = {"The temple", "https://temple.example/a", "A temple, temples.\r\n",
                     "Enter the temple\r\n"};

} // namespace

TEST(FindInTourTest, looksThroughTheTextsOfAllStopsInTheirOrder) {
    const TourModel model = tourOf({temple, {"Quarry", "quarry.htm", "No words.\r\n", ""}, temple});
    EXPECT_THAT(places(model, query("temple")), ElementsAre("1t", "1w", "1w", "1i", "3t", "3w", "3w", "3i"));
    const FoundPlaces found = findInTour(model, query("temple"), 3);
    EXPECT_EQ(found.count, 8U);
    EXPECT_EQ(found.stops, 2);
    EXPECT_EQ(found.listed.size(), 3U);
}

TEST(FindInTourTest, looksIntoAddressesWhenAsked) {
    EXPECT_THAT(places(tourOf({temple}), query("temple.example")), IsEmpty());
    EXPECT_THAT(places(tourOf({temple}), query("temple.example", true)), ElementsAre("1a"));
}

TEST(FindInTourTest, instructionsOfTheProgramAreNotLookedAt) {
    const Stop automatic = {"Title", "a.htm", "Words\r\n", "Click Next to go on\r\n"};
    EXPECT_THAT(places(tourOf({automatic}, true), query("next")), IsEmpty());
    EXPECT_THAT(places(tourOf({automatic}, false), query("next")), ElementsAre("1i"));
}

TEST(FindInTourTest, emptyWordsAndEmptyToursHaveNoPlaces) {
    EXPECT_EQ(findInTour(tourOf({temple}), query(""), 10).count, 0U);
    EXPECT_EQ(findInTour(tourOf({}), query("temple"), 10).count, 0U);
    EXPECT_EQ(findInTour(tourOf({Stop{}}), query("temple"), 10).count, 0U);
}

TEST(FindInTourTest, fullTourIsSearchedToItsEndAndOverfullOnesAsFarAsTheyAreHeld) {
    TourModel model = tourOf(std::vector<Stop>(tourCapacity, temple));
    EXPECT_EQ(findInTour(model, query("temples"), 10).stops, 100);
    model.stops.setCount(120);
    EXPECT_EQ(findInTour(model, query("temples"), 10).stops, 100);
}

TEST(FindInTourTest, tagsCommentsAndAddressesInThemAreNotFound) {
    const Stop stop = {"<span class='bold'>T</span>", "a.htm",
                       "<a href=\"bold.htm\" title='bold'>x</a><!-- bold --><script>bold</script>&bold;\r\n",
                       ""};
    EXPECT_THAT(places(tourOf({stop}), query("bold.htm")), IsEmpty());
    EXPECT_THAT(places(tourOf({stop}), query("bold")), ElementsAre("1w")); // No entity has this name.
    EXPECT_THAT(places(tourOf({stop}), query("narration")), IsEmpty());
}

TEST(FindInTourTest, saysWhatStandsAroundAPlace) {
    const Stop stop = {"Title", "a.htm", "The <b>old</b> Tem<i>ple</i> of &Uuml;r.\r\n", ""};
    const FoundPlace place = findInTour(tourOf({stop}), query("temple"), 1).listed.at(0);
    EXPECT_EQ(place.before, "The old ");
    EXPECT_EQ(place.words, "Temple");
    EXPECT_EQ(place.behind, " of \xC3\x9Cr.");
}

TEST(FindInTourTest, whatStandsAroundIsCutBetweenCharacters) {
    std::string umlauts;
    for (int i = 0; i < 100; ++i)
        umlauts += "\xC3\xBC";
    const FoundPlace place =
        findInTour(tourOf({{"a" + umlauts + "x" + umlauts, "", "", ""}}), query("x"), 1).listed.at(0);
    EXPECT_EQ(place.before, "\xE2\x80\xA6 " + umlauts.substr(0, 30));
    EXPECT_EQ(place.behind, umlauts.substr(0, 80));
}

TEST(FindInTourTest, whatStandsBeforeBeginsWithAWholeWordWhereItCan) {
    const auto before = [](const std::string& text) {
        return findInTour(tourOf({{text, "", "", ""}}), query("x"), 1).listed.at(0).before;
    };
    EXPECT_EQ(before("in the old town of the twelve bridges x"), "\xE2\x80\xA6 town of the twelve bridges ");
    EXPECT_EQ(before("thirty letters without any end x"), "\xE2\x80\xA6 letters without any end ");
    EXPECT_EQ(before("forty-two-letters-without-any-blank-at-all x"),
              "\xE2\x80\xA6 ters-without-any-blank-at-all ");
}

TEST(ReplaceInStopTest, replacesInAllTextsButAddresses) {
    const ReplacedStop done = replaceInStop(tourOf({temple}), 1, query("temple"), "shrine");
    EXPECT_EQ(done.places, 4U);
    EXPECT_EQ(done.stop, (Stop{"The shrine", "https://temple.example/a", "A shrine, shrines.\r\n",
                               "Enter the shrine\r\n"}));
}

TEST(ReplaceInStopTest, replacesInAddressesWhenAsked) {
    EXPECT_EQ(replaced(temple, query("TEMPLE.example", true), "shrine.example").stopURL,
              "https://shrine.example/a");
    EXPECT_EQ(replaced(temple, query("/a", true), "/'b' \"<c>\\").stopURL,
              "https://temple.example/%27b%27%20%22%3Cc%3E%5C");
    EXPECT_EQ(replaced({"t", "\xC3\xA9.htm", "", ""}, query("\xC3\x89", true), "\xC3\xBC").stopURL,
              "\xC3\xBC.htm");
}

TEST(ReplaceInStopTest, instructionsOfTheProgramStay) {
    EXPECT_EQ(replaceInStop(tourOf({temple}, true), 1, query("temple"), "shrine").stop.stopInstruction,
              temple.stopInstruction);
}

TEST(ReplaceInStopTest, wordsThatHoldWhatIsLookedForAreNotReplacedAgain) {
    const ReplacedStop done = replaceInStop(tourOf({temple}), 1, query("temple"), "temple temple");
    EXPECT_EQ(done.places, 4U);
    EXPECT_EQ(done.stop.stopNarration, "A temple temple, temple temples.\r\n");
}

TEST(ReplaceInStopTest, onePlaceAlone) {
    const TourModel model = tourOf({temple});
    const FoundPlaces found = findInTour(model, query("temple"), 10);
    const ReplacedStop done = replaceInStop(model, 1, query("temple"), "shrine", &found.listed.at(2));
    EXPECT_EQ(done.places, 1U);
    EXPECT_EQ(done.stop.stopNarration, "A temple, shrines.\r\n");
    EXPECT_EQ(done.stop.stopTitle, temple.stopTitle);
    FoundPlace gone = found.listed.at(2);
    ++gone.stored.begin;
    EXPECT_EQ(replaceInStop(model, 1, query("temple"), "shrine", &gone).places, 0U);
}

TEST(ReplaceInStopTest, withoutAPlaceNothingIsWrittenAnew) {
    const Stop odd = {"<<<VoskInfo>>>", "a.htm", "a\n\n\n\nb", "c\n"};
    const ReplacedStop done = replaceInStop(tourOf({odd}), 1, query("temple"), "shrine");
    EXPECT_EQ(done.places, 0U);
    EXPECT_EQ(done.stop, odd);
}

TEST(ReplaceInStopTest, whatIsLeftCanBeGivenBackByAScript) {
    EXPECT_EQ(replaced({"Temple", "", "Temple\r\n", "Temple\r\n"}, query("temple"), ""),
              (Stop{"", "", std::string(noNarration), std::string(noInstruction)}));
    EXPECT_EQ(replaced({"t", "", "One.\r\n9\r\n9\r\nTwo.\r\n", ""}, query("9"), "").stopNarration,
              "One.<BR>\r\n<BR>\r\nTwo.\r\n");
    EXPECT_EQ(replaced({"<<9<VoskInfo>>>", "", "", ""}, query("9"), "").stopTitle, "&lt;<<VoskInfo>>>");
}

TEST(ReplaceInStopTest, tagsStayBalanced) {
    EXPECT_EQ(replaced({"t", "", "<p>A tem<b>ple and</b> more</p>\r\n", ""}, query("temple"), "shrine")
                  .stopNarration,
              "<p>A shrine<b> and</b> more</p>\r\n");
    EXPECT_EQ(replaced({"t", "", "caf&eacute; Caf\xC3\xA9", ""}, query("CAF\xC3\x89"), "bar & <grill>")
                  .stopNarration,
              "bar &amp; &lt;grill&gt; bar &amp; &lt;grill&gt;");
}

TEST(ReplaceInStopTest, malformedHtmlIsLeftWhereItIsNoText) {
    EXPECT_EQ(replaced({"t", "", "word <b word", ""}, query("word"), "x").stopNarration, "x <b word");
    EXPECT_EQ(replaced({"t", "", "word <!-- word", ""}, query("word"), "x").stopNarration, "x <!-- word");
    EXPECT_EQ(replaced({"t", "", "word </ word> < word & word;", ""}, query("word"), "x").stopNarration,
              "x </ word> < x & x;");
}

TEST(ReplaceInStopTest, tagsAndOtherWordsStayWhateverTheHtml) {
    const std::string_view pieces[] = {
        "a", "b", "x",   "a",    " ",          "&", "&amp;", "lt;",       "#97;",  "&#97;",
        "<", ">", "<b>", "</b>", "<!-- a -->", "/", "!",     "<i a='b'>", "&shy;", "\xC3\xA9"};
    std::minstd_rand random(1);
    for (int round = 0; round < 5'000; ++round) {
        std::string html;
        for (unsigned long length = random() % 12; length > 0; --length)
            html += pieces[random() % std::size(pieces)];
        for (const char* const words : {"a", "ab", "x", "&", "<"}) {
            for (const char* const by : {"", "q", "<", "am"}) {
                const std::string after = replaced({"t", "", html, ""}, query(words), by).stopNarration;
                if (after == noNarration)
                    continue;
                EXPECT_EQ(tagsOf(after), tagsOf(html))
                    << html << " : " << words << " : " << by << " : " << after;
                EXPECT_EQ(readWithout(after, " ", ""), readWithout(html, words, by))
                    << html << " : " << words;
            }
        }
    }
}

TEST(ReplaceInStopTest, hugeTextsAreDoneInProportion) {
    std::string narration;
    for (int i = 0; i < 1'000'000; ++i)
        narration += "w&#111;<b>rd</b>";
    const ReplacedStop done = replaceInStop(tourOf({{"t", "", narration, ""}}), 1, query("word"), "x");
    EXPECT_EQ(done.places, 1'000'000U);
    EXPECT_EQ(done.stop.stopNarration.substr(0, 16), "x<b></b>x<b></b>");
    EXPECT_EQ(done.stop.stopNarration.size(), 8'000'000U);
}

} // namespace wendmark
