#include "commands/StopReplace.h"

#include "base/Files.h"
#include "commands/SeenTour.h"
#include "support/DocumentFixture.h"

#include <gmock/gmock.h>

#include <set>

namespace wendmark {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using test::differences;
using test::Seen;
using test::seen;

struct Ear final : DocumentListener {
    explicit Ear(TourDocument& heard) : document(heard) { document.addListener(*this); }
    ~Ear() override { document.removeListener(*this); }
    void tourChangedNow() override { ++changes; }
    void currentStopChanged() override { ++places; }

    TourDocument& document;
    int changes = 0;
    int places = 0;
};

class StopReplaceTest : public testing::Test {
protected:
    StopReplaceTest() {
        program.openTour(program.makeTour("first", 5));
        program.change([](TourModel& model) {
            model.autoInstruction = false;
            model.stops.at(2) = {"The temple", "https://temple.example/", "A temple.\r\n", "Enter.\r\n"};
            model.stops.at(3) = {"Quarry", "quarry.htm", "Stones.\r\n", "Look.\r\n"};
            model.stops.at(4) = {"Garden", "https://temple.example/garden", "Behind the temple.\r\n",
                                 "Go.\r\n"};
            model.currentStop = 3;
        });
        document.showCurrentStop();
    }

    static WordReplacement replacement(const std::string& old, const std::string& words,
                                       bool addresses = false) {
        return {{old, {}, addresses}, words, {}, std::nullopt};
    }

    /// Names of the files of the working copy that are written by this.
    std::set<std::string> writtenBy(const std::function<void()>& command) {
        const auto stamps = [&] {
            std::map<std::string, std::string> all;
            for (const std::string& name : files::list(program.workingCopy(), files::Links::anywhere).names)
                all[name] = files::stampOf(program.working(name));
            return all;
        };
        const auto before = stamps();
        command();
        std::set<std::string> written;
        for (const auto& [name, stamp] : stamps()) {
            const auto former = before.find(name);
            if (former == before.end() || former->second != stamp)
                written.insert(name);
        }
        return written;
    }

    test::DocumentFixture program;
    TourDocument& document = program.document;
};

} // namespace

TEST_F(StopReplaceTest, isOneStepOfTheHistory) {
    const Seen before = seen(program);
    const std::uint64_t steps = program.steps();
    const WordReplacementResult result = document.replaceWords(replacement("temple", "shrine"));
    EXPECT_EQ(result.places, 3U);
    EXPECT_THAT(result.stops, ElementsAre(2, 4));
    EXPECT_EQ(program.steps(), steps + 1);
    EXPECT_EQ(document.undoName(), "Replace");
    EXPECT_EQ(document.model().stops.at(2).stopTitle, "The shrine");
    EXPECT_EQ(document.model().stops.at(4).stopNarration, "Behind the shrine.\r\n");
    EXPECT_TRUE(document.model().tourChanged);
    const Seen after = seen(program);
    document.undo();
    EXPECT_THAT(differences(seen(program), before), IsEmpty());
    document.redo();
    EXPECT_THAT(differences(seen(program), after), IsEmpty());
}

TEST_F(StopReplaceTest, onlyPagesOfChangedStopsAreMade) {
    EXPECT_EQ(writtenBy([&] { document.replaceWords(replacement("temple", "shrine")); }),
              (std::set<std::string>{"page2.htm", "page4.htm", "toc.htm", "tguide.htm"}));
    EXPECT_THAT(test::readFile(program.working("page4.htm")), HasSubstr("Behind the shrine."));
    EXPECT_THAT(test::readFile(program.working("toc.htm")), HasSubstr("The shrine"));
    EXPECT_EQ(writtenBy([&] { document.replaceWords(replacement("behind", "before")); }),
              (std::set<std::string>{"page4.htm", "tguide.htm"}));
}

TEST_F(StopReplaceTest, browserIsSentToTheCurrentStopWhenItIsAnotherNow) {
    program.desktop.addresses.clear();
    document.replaceWords(replacement("temple", "shrine"));
    EXPECT_THAT(program.desktop.addresses, IsEmpty());
    document.replaceWords(replacement("stones", "rocks"));
    EXPECT_EQ(program.desktop.addresses.size(), 1U);
}

TEST_F(StopReplaceTest, listenersHearItOnce) {
    const Ear ear(document);
    document.replaceWords(replacement("temple", "shrine"));
    EXPECT_EQ(ear.changes, 1);
    EXPECT_EQ(ear.places, 0);
}

TEST_F(StopReplaceTest, whatFindsNothingIsNoStep) {
    const std::uint64_t steps = program.steps();
    const Ear ear(document);
    for (const char* const words : {"", "nowhere", "Stop 17"})
        EXPECT_EQ(document.replaceWords(replacement(words, "x")).places, 0U);
    EXPECT_EQ(document.replaceWords(replacement("Stones", "Stones")).places, 0U);
    EXPECT_EQ(program.steps(), steps);
    EXPECT_EQ(ear.changes, 0);
    EXPECT_FALSE(document.model().tourChanged);
}

TEST_F(StopReplaceTest, tourWithoutStopsHasNothingToReplace) {
    program.openTour(program.makeTour("empty", 0));
    EXPECT_EQ(document.replaceWords(replacement("temple", "shrine")).places, 0U);
}

TEST_F(StopReplaceTest, sparedStopsStay) {
    WordReplacement wanted = replacement("temple", "shrine");
    wanted.spared = {2};
    EXPECT_THAT(document.replaceWords(wanted).stops, ElementsAre(4));
    EXPECT_EQ(document.model().stops.at(2).stopTitle, "The temple");
}

TEST_F(StopReplaceTest, onePlaceAlone) {
    WordReplacement wanted = replacement("temple", "shrine");
    wanted.only = findInTour(document.model(), wanted.query, 10).listed.at(1);
    EXPECT_EQ(document.replaceWords(wanted).places, 1U);
    EXPECT_EQ(document.model().stops.at(2).stopTitle, "The temple");
    EXPECT_EQ(document.model().stops.at(2).stopNarration, "A shrine.\r\n");
    EXPECT_EQ(document.replaceWords(wanted).places, 0U); // It is not there any more.
}

TEST_F(StopReplaceTest, changedAddressesAreNotChecked) {
    document.replaceWords(replacement("temple", "shrine"));
    EXPECT_EQ(document.model().stops.at(4).stopURL, "https://temple.example/garden");
    document.replaceWords(replacement("temple", "shrine", true));
    EXPECT_EQ(document.model().stops.at(4).stopURL, "https://shrine.example/garden");
    EXPECT_TRUE(document.isUntested("https://shrine.example/garden"));
    EXPECT_THAT(test::readFile(program.working("page4.htm")), HasSubstr("https://shrine.example/garden"));
    document.replaceWords(replacement("quarry.htm", "pit.htm", true));
    EXPECT_FALSE(document.isUntested("pit.htm")); // A file of the tour.
}

TEST_F(StopReplaceTest, automaticInstructionsStay) {
    program.openTour(program.makeTour("automatic", 2));
    program.change([](TourModel& model) { model.autoInstruction = true; });
    document.replaceWords(replacement("Stop 1", "Click"));
    const std::string instruction = document.model().stops.at(1).stopInstruction;
    EXPECT_THAT(instruction, HasSubstr("Click"));
    EXPECT_EQ(document.replaceWords(replacement("click", "Press")).stops.size(), 1U); // The title just made.
    EXPECT_EQ(document.model().stops.at(1).stopInstruction, instruction);
}

TEST_F(StopReplaceTest, undoOfOneStopLeadsThere) {
    document.replaceWords(replacement("behind", "before"));
    EXPECT_EQ(document.model().currentStop, 3);
    document.undo();
    EXPECT_EQ(document.model().currentStop, 4);
}

TEST_F(StopReplaceTest, savedTourGivesTheWordsBack) {
    document.replaceWords(replacement("temple", "\xE2\x86\x92 <caf\xC3\xA9>"));
    EXPECT_TRUE(document.save());
    const Stop changed = document.model().stops.at(4);
    program.openTour(program.tourFolder("first"));
    EXPECT_EQ(document.model().stops.at(4).stopNarration, changed.stopNarration);
    EXPECT_THAT(changed.stopNarration, HasSubstr("\xE2\x86\x92 &lt;caf\xC3\xA9&gt;"));
}

} // namespace wendmark
