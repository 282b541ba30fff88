#include "commands/TourDocument.h"

#include "base/Files.h"
#include "commands/SeenTour.h"
#include "commands/TourProperties.h"
#include "support/DocumentFixture.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <random>

namespace wendmark {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::IsEmpty;
using testing::Not;

using test::differences;
using test::DocumentFixture;
using test::Seen;
using test::seen;

TourProperties propertiesOf(const TourModel& model) {
    TourProperties properties;
    properties.tourTitle = model.tourTitle;
    properties.tourAuthor = model.tourAuthor;
    properties.autoInstruction = model.autoInstruction;
    properties.cachePeriod = std::to_string(model.bufferDelay);
    properties.autoBuffer = model.autoBuffer;
    properties.narHeight = std::to_string(model.narHeight);
    properties.advWidth = std::to_string(model.advWidth);
    properties.navWidth = std::to_string(model.navWidth);
    return properties;
}

class TourDocumentTest : public testing::Test {
protected:
    TourDocumentTest() { program.openTour(program.makeTour("first", 3)); }

    std::string titles() const {
        std::string all;
        for (const Stop& stop : program.document.model().stops)
            all += stop.stopTitle.substr(0, 6) + ",";
        return all;
    }

    DocumentFixture program;
    TourDocument& document = program.document;
};

TEST_F(TourDocumentTest, eachCommandIsOneStepWithAName) {
    EXPECT_EQ(document.undoName(), "Open Tour");
    document.goToStop(1);
    document.insertStop();
    EXPECT_EQ(document.undoName(), "Insert Stop");
    document.moveStopForward();
    EXPECT_EQ(document.undoName(), "Move Stop Forward");
    document.undo();
    EXPECT_EQ(document.undoName(), "Insert Stop");
    EXPECT_EQ(document.redoName(), "Move Stop Forward");
    document.deleteStop();
    EXPECT_EQ(document.redoName(), std::nullopt);
}

TEST_F(TourDocumentTest, choicesAreUndoneWithTheirFile) {
    const Seen before = seen(program);
    TourProperties properties = propertiesOf(document.model());
    properties.language = "de";
    properties.wordsBesidePage = true;
    document.setProperties(properties, [] {});
    const std::string choices = document.workspace().workingFile("tourchoices.js");
    EXPECT_EQ(document.model().language, "de");
    EXPECT_TRUE(files::canBeRead(choices));
    document.undo();
    EXPECT_EQ(document.model().language, "");
    EXPECT_FALSE(document.model().wordsBesidePage);
    EXPECT_FALSE(files::canBeRead(choices));
    EXPECT_THAT(differences(before, seen(program)), IsEmpty());
    document.redo();
    EXPECT_TRUE(document.model().wordsBesidePage);
    EXPECT_NE(files::read(choices).bytes.find("tourChoices.language = 'de';"), std::string::npos);
}

TEST_F(TourDocumentTest, choicesThatAreGivenUpLeaveTheToursFolderToo) {
    TourProperties properties = propertiesOf(document.model());
    properties.language = "de";
    document.setProperties(properties, [] {});
    document.save();
    const std::string saved = document.workspace().tourFile("tourchoices.js");
    EXPECT_TRUE(files::canBeRead(saved));
    properties.language.clear();
    document.setProperties(properties, [] {});
    EXPECT_TRUE(document.save());
    EXPECT_FALSE(files::canBeRead(saved));
}

TEST_F(TourDocumentTest, undoGoesToTheStopWhereTheChangeWas) {
    document.setTexts(2, {"Two", "Words.", ""});
    document.goToStop(3);
    document.undo();
    EXPECT_EQ(document.model().currentStop, 2);
    EXPECT_EQ(titles(), "Stop 1,Stop 2,Stop 3,");
    document.redo();
    EXPECT_EQ(document.model().currentStop, 2);
    EXPECT_EQ(titles(), "Stop 1,Two,Stop 3,");
}

TEST_F(TourDocumentTest, commandThatChangesNothingIsNoStep) {
    const Stop stop = document.model().stops.at(1);
    document.setTexts(1, {stop.stopTitle, stop.stopNarration, stop.stopInstruction});
    document.setTexts(1, {stop.stopTitle, stop.stopNarration, stop.stopInstruction});
    document.goToStop(0);
    EXPECT_EQ(document.deleteStop(), StopCommandResult::refused);
    EXPECT_EQ(document.undoName(), "Open Tour");
}

TEST_F(TourDocumentTest, undoMarksTheTourAsChangedUnlessItIsWhatWasSaved) {
    EXPECT_TRUE(document.isAsSaved());
    document.insertStop();
    EXPECT_FALSE(document.isAsSaved());
    document.undo();
    EXPECT_FALSE(document.model().tourChanged);
    document.redo();
    EXPECT_TRUE(document.model().tourChanged);
    document.save();
    EXPECT_FALSE(document.model().tourChanged);
    document.undo();
    EXPECT_TRUE(document.model().tourChanged);
    document.redo();
    EXPECT_FALSE(document.model().tourChanged);
}

TEST_F(TourDocumentTest, undoGoesBackPastASave) {
    const Seen opened = seen(program);
    document.insertStop();
    EXPECT_TRUE(document.save());
    document.undo();
    EXPECT_THAT(differences(seen(program), opened), IsEmpty());
    EXPECT_TRUE(document.save());
    EXPECT_THAT(test::readFile(program.tourFile("first", "script.txt")), Not(testing::HasSubstr("Stop4")));
}

TEST_F(TourDocumentTest, openingAnotherTourCanBeUndone) {
    test::writeFile(program.tourFile("first", "own.htm"), "<p>own</p>");
    program.openTour(program.tourFolder("first"));
    document.goToStop(2);
    document.deleteStop();
    const Seen before = seen(program);
    program.openTour(program.makeTour("second", 5));
    const Seen after = seen(program);
    EXPECT_THAT(titles(), testing::HasSubstr("Stop 5"));
    document.undo();
    EXPECT_THAT(differences(seen(program), before), IsEmpty());
    EXPECT_TRUE(document.model().tourChanged);
    document.redo();
    EXPECT_THAT(differences(seen(program), after), IsEmpty());
    EXPECT_FALSE(document.model().tourChanged);
}

TEST_F(TourDocumentTest, earlierSaveTakesThePlaceOfTheTourInOneStep) {
    test::writeFile(program.tourFile("one", "script.txt"),
                    "<<<VoskInfo>>>#AutoBuffer\r\n<<<VoskInfo>>>#Author = Ada Reed\r\n" +
                        test::scriptOfStops(4));
    program.openTour(program.tourFolder("one"));
    test::writeFile(program.scratch / "mine.htm", "mine");
    EXPECT_TRUE(program.document.addFile(program.scratch / "mine.htm", "mine.htm", "Add File"));
    program.document.goToStop(3);
    ASSERT_TRUE(program.document.model().autoBuffer);
    const Seen before = seen(program);
    const std::uint64_t steps = program.steps();

    EXPECT_TRUE(program.document.openScript(test::scriptOfStops(2)));
    const TourModel& model = program.document.model();
    EXPECT_EQ(program.steps(), steps + 1);
    EXPECT_EQ(program.document.undoName(), "Open Earlier Save");
    EXPECT_EQ(model.stopCount(), 2);
    EXPECT_EQ(model.currentStop, 0);
    EXPECT_TRUE(model.tourChanged);
    EXPECT_FALSE(program.document.isAsSaved());
    EXPECT_FALSE(model.autoBuffer);
    EXPECT_EQ(model.tourAuthor, "");
    EXPECT_EQ(program.document.workspace().tourPath(), program.tourFolder("one"));
    EXPECT_EQ(test::readFile(program.working("mine.htm")), "mine");
    EXPECT_EQ(test::readFile(program.working("toc.htm")).find("page3.htm"), std::string::npos);

    program.document.undo();
    EXPECT_THAT(differences(before, seen(program)), IsEmpty());
    program.document.redo();
    EXPECT_EQ(model.stopCount(), 2);
}

TEST_F(TourDocumentTest, scriptWithoutATitleTakesNoTourAway) {
    program.openTour(program.makeTour("one", 4));
    const Seen before = seen(program);
    EXPECT_FALSE(program.document.openScript("<<<VoskInfo>>>#Author = Ada Reed\r\n\r\n"));
    EXPECT_FALSE(program.document.openScript(""));
    EXPECT_THAT(differences(before, seen(program)), IsEmpty());
    EXPECT_TRUE(program.document.isAsSaved());
}

TEST_F(TourDocumentTest, cancelledOpenResetsThePropertiesAndCanBeUndone) {
    program.change([](TourModel& model) {
        model.tourAuthor = "Ann";
        model.narHeight = 150;
        model.launchURL[0] = "http://here/";
        model.launchURLCount = 1;
    });
    document.insertStop();
    document.beginOpening();
    document.cancelOpening();
    EXPECT_EQ(document.model().tourAuthor, "");
    EXPECT_EQ(document.model().launchURLCount, 0);
    EXPECT_FALSE(document.model().tourChanged);
    EXPECT_FALSE(document.isAsSaved());
    document.undo();
    EXPECT_EQ(document.model().tourAuthor, "Ann");
    EXPECT_EQ(document.model().narHeight, 150);
    EXPECT_EQ(document.model().launchURLCount, 1);
}

TEST_F(TourDocumentTest, savedPagesAreThoseOfTheScriptAfterACancelledOpen) {
    program.change([](TourModel& model) { model.autoInstruction = false; });
    document.setTexts(1, {"First", "Words\r\n", "Look at the roof.\r\n"});
    EXPECT_TRUE(document.save());
    const auto savedPage = [&] { return test::readFile(document.workspace().tourPath() + "/page1.htm"); };
    EXPECT_NE(savedPage().find("Look at the roof."), std::string::npos);
    const auto playsAsItsScriptSays = [&] {
        EXPECT_TRUE(document.save());
        test::DocumentFixture other;
        other.openTour(document.workspace().tourPath());
        EXPECT_EQ(savedPage(), test::readFile(other.workingCopy() + "/page1.htm"));
    };
    document.beginOpening();
    document.cancelOpening();
    playsAsItsScriptSays();
    EXPECT_EQ(savedPage().find("Look at the roof."), std::string::npos);
    document.undo();
    playsAsItsScriptSays();
    EXPECT_NE(savedPage().find("Look at the roof."), std::string::npos);
    document.redo();
    playsAsItsScriptSays();
    EXPECT_EQ(savedPage().find("Look at the roof."), std::string::npos);
}

TEST_F(TourDocumentTest, filesComeBackAfterACancelledNewBeforeAnythingIsGeneratedOrSaved) {
    test::writeFile(program.tourFile("first", "fr-logo.gif"), "own logo");
    test::writeFile(program.tourFile("first", "own.htm"), "own page");
    program.openTour(program.tourFolder("first"));
    const Seen before = seen(program);
    document.beginNew();
    document.cancelNew();
    EXPECT_FALSE(fs::exists(program.working("own.htm")));
    document.save();
    EXPECT_THAT(differences(seen(program), before), Not(Contains("own.htm")));
    EXPECT_EQ(test::readFile(program.tourFile("first", "fr-logo.gif")), "own logo");
    EXPECT_EQ(test::readFile(program.working("own.htm")), "own page");
}

TEST_F(TourDocumentTest, cancelledNewTwiceLosesNothingEither) {
    test::writeFile(program.tourFile("first", "own.htm"), "own page");
    program.openTour(program.tourFolder("first"));
    const Seen before = seen(program);
    for (int k = 0; k < 2; ++k) {
        document.beginNew();
        document.cancelNew();
    }
    document.showCurrentStop();
    EXPECT_THAT(differences(seen(program), before), IsEmpty());
}

TEST_F(TourDocumentTest, tourOfTheTemplatesGetsItsPagesWhenTheWizardIsClosed) {
    DocumentFixture fresh;
    fresh.document.showTemplateTour();
    fresh.document.beginNew();
    fresh.document.cancelNew();
    fresh.document.showCurrentStop();
    ASSERT_GT(fresh.document.model().stopCount(), 0);
    EXPECT_TRUE(fs::exists(fresh.working("page1.htm")));
    EXPECT_TRUE(fresh.document.isAsSaved());
}

TEST_F(TourDocumentTest, newTourCanBeUndone) {
    document.insertStop();
    const Seen before = seen(program);
    program.newTour("third", "Third");
    const Seen after = seen(program);
    EXPECT_EQ(document.model().tourTitle, "Third");
    document.undo();
    EXPECT_THAT(differences(seen(program), before), IsEmpty());
    document.redo();
    EXPECT_THAT(differences(seen(program), after), IsEmpty());
}

TEST_F(TourDocumentTest, addedAndReplacedFilesCanBeUndone) {
    const std::string source = program.scratch / "picture.png";
    test::writeFile(source, "one");
    EXPECT_TRUE(document.addFile(source, "picture.png", "Add Image"));
    test::writeFile(source, "two");
    EXPECT_TRUE(document.addFile(source, "picture.png", "Add Image"));
    document.undo();
    EXPECT_EQ(test::readFile(program.working("picture.png")), "one");
    document.undo();
    EXPECT_FALSE(fs::exists(program.working("picture.png")));
    document.redo();
    document.redo();
    EXPECT_EQ(test::readFile(program.working("picture.png")), "two");
}

TEST_F(TourDocumentTest, whatAnEditorWroteIsNotLostByUndo) {
    const std::string source = program.scratch / "own.htm";
    test::writeFile(source, "first");
    EXPECT_TRUE(document.addFile(source, "own.htm", "Add File"));
    test::writeFile(program.working("own.htm"), "written by the author's editor");
    document.undo();
    document.redo();
    EXPECT_EQ(test::readFile(program.working("own.htm")), "written by the author's editor");
}

TEST_F(TourDocumentTest, bookmarksAreUndoneWithTheirFile) {
    document.loadBookmarks();
    document.setBookmarks({{{"http://a/", "", white}}, {}}, "Remember Page");
    document.saveBookmarks();
    EXPECT_TRUE(fs::exists(program.working("goodlist.txt")));
    document.insertStop();
    document.undo();
    EXPECT_EQ(document.bookmarks().bookmarks.size(), 1U);
    document.undo();
    EXPECT_THAT(document.bookmarks().bookmarks, IsEmpty());
    EXPECT_FALSE(fs::exists(program.working("goodlist.txt")));
    document.redo();
    EXPECT_EQ(document.bookmarks().bookmarks.size(), 1U);
    EXPECT_TRUE(fs::exists(program.working("goodlist.txt")));
}

TEST_F(TourDocumentTest, bookmarksThatWereReadLateAreNotUndoneWithTheStepsBefore) {
    test::writeFile(program.tourFile("first", "goodlist.txt"), "http://a/\r\nnote\r\n255\r\n");
    program.openTour(program.tourFolder("first"));
    document.insertStop();
    document.insertStop();
    document.undo();
    document.loadBookmarks();
    document.undo();
    EXPECT_EQ(document.bookmarks().bookmarks.size(), 1U);
    document.redo();
    document.redo();
    EXPECT_EQ(document.bookmarks().bookmarks.size(), 1U);
    document.undo();
    document.undo();
    document.undo();
    EXPECT_THAT(document.bookmarks().bookmarks, IsEmpty()) << "Those of the tour before.";
}

TEST_F(TourDocumentTest, scriptWithoutATitleMustNotBeOverwrittenUnasked) {
    test::writeFile(program.tourFile("empty", "script.txt"), "");
    const Opening opening = program.openTour(program.tourFolder("empty"));
    EXPECT_FALSE(opening.hasTitle);
    EXPECT_FALSE(document.mayOverwrite());
    program.openTour(program.tourFolder("first"));
    EXPECT_TRUE(document.mayOverwrite());
}

TEST_F(TourDocumentTest, refusedFolderIsShownAndNeverSavedInto) {
    const std::string folder = program.tourFolder("first");
    document.showRefusedFolder("/refused");
    EXPECT_EQ(document.shownTourPath(), "/refused");
    EXPECT_FALSE(document.hasFolder());
    EXPECT_EQ(document.workspace().tourPath(), folder);
    program.openTour(folder);
    EXPECT_TRUE(document.hasFolder());
}

TEST_F(TourDocumentTest, listenersHearOfChangesPlacesAndSaves) {
    struct Ear final : DocumentListener {
        void tourChangedNow() override { ++changes; }
        void currentStopChanged() override { ++places; }
        void tourSaved(bool complete) override { saves += complete ? 1 : 100; }
        int changes = 0;
        int places = 0;
        int saves = 0;
    } ear;
    document.addListener(ear);
    document.insertStop();
    EXPECT_GT(ear.changes, 0);
    document.showNextStop();
    EXPECT_GT(ear.places, 0);
    document.save();
    EXPECT_EQ(ear.saves, 1);
    document.removeListener(ear);
    const int changes = ear.changes;
    document.insertStop();
    EXPECT_EQ(ear.changes, changes);
}

TEST_F(TourDocumentTest, aThousandStepsOfAFullTourStaySmall) {
    program.openTour(program.makeTour("full", 100));
    for (std::int16_t k = 0; k < 1000; ++k)
        document.setTexts(static_cast<std::int16_t>(k % 100 + 1),
                          {"T", std::string(2000, 'a') + std::to_string(k), ""});
    EXPECT_LT(document.historyBytes(), 64'000'000U);
    EXPECT_EQ(document.undoName(), "Narration");
}

/// One author of many ways.
class Walk final {
public:
    explicit Walk(unsigned seed) : m_random(seed) {
        m_program.openTour(m_program.makeTour("walk", 4));
        m_program.makeTour("other", 2);
        m_states.push_back(seen(m_program));
    }

    void step() {
        const unsigned choice = below(31);
        if (choice < 4)
            undo();
        else if (choice < 6)
            redo();
        else if (choice == 6)
            save();
        else
            change(choice);
    }

    void undoAll() {
        while (m_place > 0 && !testing::Test::HasFailure())
            undo();
    }

    void redoAll() {
        while (m_place + 1 < m_states.size() && !testing::Test::HasFailure())
            redo();
    }

private:
    TourDocument& document() { return m_program.document; }

    unsigned below(unsigned limit) { return static_cast<unsigned>(m_random()) % limit; }

    void undo() {
        if (m_place == 0)
            return;
        document().undo();
        expectState(--m_place, "undo");
    }

    void redo() {
        if (m_place + 1 >= m_states.size())
            return;
        document().redo();
        expectState(++m_place, "redo");
    }

    void expectState(std::size_t place, const char* what) {
        EXPECT_THAT(differences(seen(m_program), m_states[place]), IsEmpty()) << what << " to " << place;
        EXPECT_EQ(document().redoName().has_value(), place + 1 < m_states.size());
    }

    /// A save fills in what is empty, and its framesets belong to the step before it.
    void save() {
        EXPECT_TRUE(document().save());
        m_states[m_place] = seen(m_program);
    }

    void change(unsigned choice) {
        const std::optional<std::string> former = document().undoName();
        const std::uint64_t stepsBefore = m_program.steps();
        run(choice);
        if (m_program.steps() == stepsBefore)
            return; // Nothing to undo.
        m_states.resize(m_place + 1);
        m_states.push_back(seen(m_program));
        ++m_place;
    }

    void run(unsigned choice) {
        const auto stops = document().model().stopCount();
        const auto any =
            static_cast<std::int16_t>(stops == 0 ? 0U : 1U + below(static_cast<unsigned>(stops)));
        document().goToStop(any);
        const std::string word = std::to_string(below(100));
        switch (choice) {
        case 7:
        case 8:
        case 9:
            document().insertStop();
            break;
        case 10:
            document().deleteStop();
            break;
        case 11:
            document().moveStopBack();
            break;
        case 12:
            document().moveStopForward();
            break;
        case 13:
            if (any > 0)
                document().setTexts(any, {below(4) == 0 ? "" : "T" + word, "Words " + word, "Do " + word});
            break;
        case 14:
            if (any > 0)
                document().setAddress(any, "http://host/" + word);
            break;
        case 15:
            setProperties(word);
            break;
        case 16:
            addFile(word);
            break;
        case 17:
            m_program.openTour(m_program.tourFolder(below(2) == 0 ? "walk" : "other"));
            break;
        case 18:
            m_program.newTour("new" + std::to_string(++m_newTours), "New " + word);
            break;
        case 19:
        case 20:
            cancelSomething();
            break;
        default:
            runOnSeveral(choice, any, word);
            break;
        }
    }

    void runOnSeveral(unsigned choice, std::int16_t any, const std::string& word) {
        const std::int16_t stops = document().model().stopCount();
        switch (choice) {
        case 21:
        case 22:
        case 23:
            document().moveStops(someStops(), static_cast<std::int16_t>(1 + below(unsignedOf(stops) + 1)));
            break;
        case 24:
        case 27:
            document().removeStops(someStops());
            break;
        case 25:
            document().duplicateStops(someStops());
            break;
        case 26:
            insertSome(any, word);
            break;
        case 30:
            replaceSome(any, word);
            break;
        default:
            typeAt(any, word);
            break;
        }
    }

    /// In all stops but one, mostly what other commands have put there.
    void replaceSome(std::int16_t spared, const std::string& word) {
        static constexpr const char* found[] = {"1", "Words", "host", "o", "Stop"};
        WordReplacement replacement;
        replacement.query.words = found[below(5)];
        replacement.query.addresses = below(2) == 0;
        replacement.words = below(4) == 0 ? std::string() : "R" + word;
        replacement.spared = {spared};
        document().replaceWords(replacement);
    }

    static unsigned unsignedOf(std::int16_t count) { return static_cast<unsigned>(count); }

    StopNumbers someStops() {
        const std::int16_t stops = document().model().stopCount();
        StopNumbers some;
        for (unsigned k = 0; stops > 0 && k < 1 + below(3); ++k)
            some.push_back(static_cast<std::int16_t>(1 + below(unsignedOf(stops))));
        return some;
    }

    void insertSome(std::int16_t position, const std::string& word) {
        const std::string source = m_program.scratch / "source.htm";
        test::writeFile(source, "page of " + word);
        const std::string name = "own" + std::to_string(below(3)) + ".htm";
        std::vector<Stop> stops(1 + below(3), Stop{"I" + word, "http://host/" + word, "", "Do " + word});
        stops.front().stopURL = name;
        document().insertStops(position, stops, {{source, name}});
    }

    /// A burst of typing in one field, which is one step.
    void typeAt(std::int16_t stop, const std::string& word) {
        if (stop == 0)
            return;
        static constexpr std::string Stop::*fields[] = {&Stop::stopTitle, &Stop::stopURL,
                                                        &Stop::stopNarration, &Stop::stopInstruction};
        std::string Stop::*const field = fields[below(4)];
        ++m_burst;
        for (unsigned k = 0; k < 1 + below(4); ++k) {
            Stop typed = document().model().stops.at(stop);
            typed.*field += word;
            document().setStop(stop, typed, m_burst);
        }
    }

    void setProperties(const std::string& word) {
        TourProperties properties;
        properties.tourTitle = "Title " + word;
        properties.tourAuthor = word;
        properties.autoInstruction = below(2) == 0;
        properties.cachePeriod = "30";
        properties.narHeight = "1" + word;
        properties.advWidth = "110";
        properties.navWidth = "94";
        if (below(3) == 0)
            properties.launchURLs = {"http://from/" + word};
        if (below(3) == 0) {
            properties.logoFile = m_program.scratch / "logo.gif";
            test::writeFile(properties.logoFile, "logo " + word);
        }
        document().setProperties(properties, [] {});
    }

    void addFile(const std::string& word) {
        const std::string source = m_program.scratch / "source.htm";
        test::writeFile(source, "page " + word);
        EXPECT_TRUE(document().addFile(source, "own" + std::to_string(below(3)) + ".htm", "Add File"));
    }

    void cancelSomething() {
        if (below(2) == 0) {
            document().beginOpening();
            document().cancelOpening();
            return;
        }
        document().beginNew();
        document().cancelNew();
        document().showCurrentStop();
    }

    std::mt19937 m_random;
    DocumentFixture m_program;
    std::vector<Seen> m_states;
    std::size_t m_place = 0;
    int m_newTours = 0;
    std::uint64_t m_burst = 0;
};

TEST(TourDocumentWalk, everyStateComesBackByteForByte) {
#ifdef NDEBUG
    constexpr int steps = 250; // Two thousand in all.
#else
    constexpr int steps = 40; // The build for looking into what fails takes five times as long for each.
#endif
    for (unsigned seed = 1; seed <= 8 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Walk walk(seed);
        for (int k = 0; k < steps && !testing::Test::HasFailure(); ++k) {
            SCOPED_TRACE("step " + std::to_string(k));
            walk.step();
        }
        walk.undoAll();
        walk.redoAll();
    }
}

} // namespace
} // namespace wendmark
