#include "commands/TourCommands.h"
#include "commands/TourSave.h"
#include "model/ScriptFile.h"
#include "support/TestTour.h"
#include "tour_cli/TourFixture.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace wendmark::test {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

class PublishTest : public TourFixture {
protected:
    ProgramResult publish(const std::vector<std::string>& arguments) const {
        std::vector<std::string> words{"publish"};
        words.insert(words.end(), arguments.begin(), arguments.end());
        return program().run(words);
    }
};

/// What the window program's start, Open and Save leave in the tour's folder and in the working copy.
struct Expected {
    Expected(const std::string& tour, const std::string& target) {
        windowProgram.useShippedTemplates();
        fs::create_directories(target);
        startProgram(windowProgram.context, windowProgram.options);
        loadTemplateTour(windowProgram.context);
        windowProgram.workspace.initTourDefaults();
        windowProgram.workspace.setTourPath(tour);
        openTour(windowProgram.context);
        windowProgram.workspace.setTourPath(target);
        saveTour(windowProgram.context);
        saved = folderContents(target);
        workingCopy = folderContents(windowProgram.workspace.folders().newTourPath);
        if (tour != target) // The launch list that a save leaves for the next one.
            saved["link.txt"] = workingCopy.at("link.txt");
    }

    TestTour windowProgram;
    std::map<std::string, std::string> saved;
    std::map<std::string, std::string> workingCopy;
};

struct TourCase {
    std::string name;
    std::string script;
};

void PrintTo(const TourCase& tourCase, std::ostream* out) {
    *out << tourCase.name;
}

std::vector<TourCase> tourCases() {
    const std::string commands = crlfLines({"<<<VoskInfo>>>#AutoBuffer", "<<<VoskInfo>>>#NoAutoInstruction",
                                            "<<<VoskInfo>>>#LaunchURL = https://www.brenholt.example/a",
                                            "<<<VoskInfo>>>#LaunchURL = https://www.brenholt.example/b",
                                            "<<<VoskInfo>>>#Author = Ann Lee"});
    return {{"withoutStops", scriptWithStops(0)},
            {"withOneStop", scriptWithStops(1)},
            {"withTwoStops", scriptWithStops(2)},
            {"withHundredStops", scriptWithStops(100)},
            {"withLaunchingPoints", commands + scriptWithStops(2)},
            {"withOtherLetters",
             "W\xfcste &#8594;\r\n\r\n<<<VoskInfo>>> Stop1\r\nK\xe4sten\r\na%E2%86%92.htm\r\n\r\n"
             "\x93Text\x94\r\n\r\nWeiter\r\n\r\n"},
            {"withLineErrors", "<<<VoskInfo>>>#NarHeight\r\n" + scriptWithStops(1)}};
}

class PublishedTourTest : public PublishTest, public ::testing::WithParamInterface<TourCase> {};

TEST_P(PublishedTourTest, isWhatOpenAndSaveWouldLeave) {
    const std::string folder = makeTour("case", GetParam().script);
    const Expected expected(folder, scratch / "expected");
    EXPECT_EQ(publish({folder, "--into", scratch / "www"}).status, 0);
    EXPECT_EQ(folderContents(scratch / "www"), expected.saved);
}

TEST_P(PublishedTourTest, isTheSameWithAWorkingCopyWhichIsLeftInItsEditingForm) {
    const std::string folder = makeTour("case", GetParam().script);
    const Expected expected(folder, scratch / "expected");
    EXPECT_EQ(publish({folder, "--into", scratch / "www", "--working-copy", scratch / "copy"}).status, 0);
    EXPECT_EQ(folderContents(scratch / "www"), expected.saved);
    EXPECT_EQ(folderContents(scratch / "copy"), expected.workingCopy);
}

TEST_P(PublishedTourTest, isTheSameInPlace) {
    const std::string folder = makeTour("case", GetParam().script);
    const std::string twin = makeTour("twin", GetParam().script);
    const Expected expected(twin, twin);
    EXPECT_EQ(publish({folder}).status, 0);
    EXPECT_EQ(folderContents(folder), expected.saved);
}

INSTANTIATE_TEST_SUITE_P(Tours, PublishedTourTest, ::testing::ValuesIn(tourCases()),
                         [](const auto& tested) { return tested.param.name; });

TEST_F(PublishTest, sampleTourIsPublishedWithoutAWord) {
    const std::string sample = WENDMARK_ASSETS "/MyTours/Sample";
    const Expected expected(sample, scratch / "expected");
    expectDone(publish({sample, "--into", scratch / "www"}));
    EXPECT_EQ(folderContents(scratch / "www"), expected.saved);
}

TEST_F(PublishTest, publishingAgainChangesNothing) {
    expectDone(publish({tour, "--into", scratch / "www"}));
    const auto once = folderState(scratch / "www");
    expectDone(publish({tour, "--into", scratch / "www"}));
    EXPECT_EQ(folderState(scratch / "www"), once);
    expectDone(publish({scratch / "www"}));
    EXPECT_EQ(folderState(scratch / "www"), once);
}

TEST_F(PublishTest, launchListIsTheCurrentOneElsewhereAndThatOfTheSaveBeforeInPlace) {
    const std::string launched = makeTour(
        "launched", "<<<VoskInfo>>>#LaunchURL = https://www.brenholt.example/a\r\n" + scriptWithStops(1));
    writeFile(launched + "/link.txt", "of the save before");
    fs::create_directory_symlink("launched", scratch / "link");
    expectDone(publish({launched}));
    expectDone(publish({launched, "--into", scratch / "link"}));
    EXPECT_EQ(readFile(launched + "/link.txt"), "of the save before");
    for (const std::vector<std::string>& options :
         {std::vector<std::string>{}, {"--working-copy", scratch / "copy"}}) {
        std::vector<std::string> words{launched, "--into", scratch / "www"};
        words.insert(words.end(), options.begin(), options.end());
        expectDone(publish(words));
        EXPECT_THAT(readFile(scratch / "www/link.txt"), HasSubstr("https://www.brenholt.example/a"));
        fs::remove_all(scratch / "www");
    }
}

TEST_F(PublishTest, tourItselfStaysAsItIsWhenItGoesElsewhere) {
    const auto before = folderState(tour);
    expectDone(publish({tour, "--into", scratch / "www"}));
    EXPECT_EQ(folderState(tour), before);
}

TEST_F(PublishTest, folderIsMadeWithItsParents) {
    expectDone(publish({tour, "--into", scratch / "a/b/www"}));
    EXPECT_TRUE(exists(scratch / "a/b/www/playtour.htm"));
}

TEST_F(PublishTest, otherFilesOfTheFolderStay) {
    writeFile(scratch / "www/notes.txt", "mine");
    writeFile(scratch / "www/page4.htm", "of a longer tour");
    writeFile(scratch / "www/.htaccess", "hidden");
    writeFile(scratch / "www/pictures/cactus.gif", "GIF");
    expectDone(publish({tour, "--into", scratch / "www"}));
    EXPECT_EQ(readFile(scratch / "www/notes.txt"), "mine");
    EXPECT_EQ(readFile(scratch / "www/page4.htm"), "of a longer tour");
    EXPECT_EQ(readFile(scratch / "www/.htaccess"), "hidden");
    EXPECT_EQ(readFile(scratch / "www/pictures/cactus.gif"), "GIF");
}

TEST_F(PublishTest, oldSpellingsOfReplacedNamesGo) {
    writeFile(scratch / "www/Page1.HTM", "old");
    writeFile(scratch / "www/PLAYTOUR.htm", "old");
    expectDone(publish({tour, "--into", scratch / "www"}));
    EXPECT_FALSE(exists(scratch / "www/Page1.HTM"));
    EXPECT_FALSE(exists(scratch / "www/PLAYTOUR.htm"));
    EXPECT_TRUE(exists(scratch / "www/page1.htm"));
}

TEST_F(PublishTest, namesOfTheTourBecomeLowerCase) {
    fs::rename(tour + "/script.txt", tour + "/Script.TXT");
    writeFile(tour + "/Photo.JPG", "photo");
    expectDone(publish({tour, "--into", scratch / "www"}));
    EXPECT_EQ(readFile(scratch / "www/photo.jpg"), "photo");
    EXPECT_TRUE(exists(scratch / "www/page3.htm"));
    EXPECT_FALSE(exists(scratch / "www/Script.TXT"));
}

TEST_F(PublishTest, linkInTheFolderIsReplacedAndNotFollowed) {
    writeFile(scratch / "elsewhere.htm", "not the tour's");
    fs::create_directory(scratch / "www");
    fs::create_symlink("../elsewhere.htm", scratch / "www/page1.htm");
    fs::create_symlink("nowhere", scratch / "www/page2.htm");
    expectDone(publish({tour, "--into", scratch / "www"}));
    EXPECT_EQ(readFile(scratch / "elsewhere.htm"), "not the tour's");
    EXPECT_FALSE(fs::is_symlink(scratch / "www/page1.htm"));
    EXPECT_FALSE(fs::is_symlink(scratch / "www/page2.htm"));
}

TEST_F(PublishTest, unusualNamesWork) {
    for (const std::string name :
         {"two words", "it's", "\"quoted\"", "\xc3\x84\xc3\x96\xe2\x86\x92", "a&b;$(c)*", "%41", "new\nline",
          "-dash", "--into", "\xff\xfe", "trailing."}) {
        SCOPED_TRACE(name);
        makeTour(name, scriptWithStops(1));
        const std::string www = "www " + name;
        expectDone(program()
                       .in(scratch.path())
                       .run({"publish", "--into", www, "--working-copy", "copy " + name, "--", name}));
        EXPECT_TRUE(exists(scratch / (www + "/page1.htm")));
        EXPECT_TRUE(exists(scratch / ("copy " + name + "/page1.htm")));
    }
}

TEST_F(PublishTest, foldersMayBeRelative) {
    expectDone(program().in(tour).run({"publish", ".", "--into", "../www//"}));
    EXPECT_TRUE(exists(scratch / "www/page3.htm"));
    expectDone(program().in(scratch.path()).run({"publish", "tour///", "--working-copy=./copy/"}));
    EXPECT_TRUE(exists(tour + "/page3.htm"));
    EXPECT_TRUE(exists(scratch / "copy/page3.htm"));
}

TEST_F(PublishTest, tourMayBeNamedByItsScript) {
    expectDone(publish({tour + "/script.txt", "--into", scratch / "www"}));
    EXPECT_TRUE(exists(scratch / "www/page3.htm"));
    EXPECT_FALSE(exists(tour + "/page3.htm"));
    expectDone(program().in(tour).run({"publish", "script.txt"}));
    EXPECT_TRUE(exists(tour + "/page3.htm"));
}

TEST_F(PublishTest, relativeTemplateFolderIsFound) {
    programInFolder(scratch / "app");
    writeFile(scratch / "app/Template/extra.css", "extra");
    expectDone(
        program().in(scratch.path()).run({"publish", "tour", "--into", "www", "--template", "app/Template"}));
    EXPECT_EQ(readFile(scratch / "www/extra.css"), "extra");
}

TEST_F(PublishTest, foldersMayBeReachedThroughLinks) {
    fs::create_directory(scratch / "www");
    fs::create_directory_symlink("tour", scratch / "link");
    fs::create_directory_symlink("www", scratch / "out");
    expectDone(publish({scratch / "link", "--into", scratch / "out"}));
    EXPECT_TRUE(fs::is_symlink(scratch / "out"));
    EXPECT_TRUE(exists(scratch / "www/page3.htm"));
    expectDone(publish({tour, "--into", scratch / "link"}));
    EXPECT_TRUE(exists(tour + "/page3.htm"));
}

TEST_F(PublishTest, tourAndFolderMayLieInOneAnother) {
    expectDone(publish({tour, "--into", tour + "/public"}));
    EXPECT_TRUE(exists(tour + "/public/page3.htm"));
    EXPECT_FALSE(exists(tour + "/page3.htm"));
    expectDone(publish({tour, "--into", scratch.path()}));
    EXPECT_TRUE(exists(scratch / "page3.htm"));
    EXPECT_FALSE(exists(tour + "/page3.htm"));
}

TEST_F(PublishTest, linkOutOfTheTourIsLeftOutWithAWarning) {
    writeFile(scratch / "secret.htm", "secret");
    fs::create_symlink("../secret.htm", tour + "/leak.htm");
    fs::create_symlink("cactus.htm", tour + "/same.htm");
    const ProgramResult result = publish({tour, "--into", scratch / "www"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors,
              "wendmark-tour: warning: left out " + tour + "/leak.htm: the link leads out of its folder\n");
    EXPECT_FALSE(exists(scratch / "www/leak.htm"));
    EXPECT_EQ(readFile(scratch / "www/same.htm"), "<html>A cactus.</html>");
}

TEST_F(PublishTest, lineErrorsAreLinesOfTheStandardErrorStream) {
    const std::string faulty =
        makeTour("faulty", crlfLines({"<<<VoskInfo>>>#BufferDelay", "<<<VoskInfo>>>#Author =",
                                      "<<<VoskInfo>>>#LaunchURL = ", "Title", "", "Stop", "cactus.htm"}));
    const ProgramResult result = publish({faulty, "--into", scratch / "www"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(
        linesOf(result.errors),
        (std::vector<std::string>{"Command Syntax Error - '=' sign not found in line 1",
                                  "Command Syntax Error - null author name in line 2",
                                  "Command Syntax Error - null stop name in line 3",
                                  "Premature end of file in line 8", "Premature end of file in line 10"}));
    EXPECT_TRUE(exists(scratch / "www/page1.htm"));
}

TEST_F(PublishTest, tourOfAnOtherTemplateFolderTakesItsLook) {
    programInFolder(scratch / "app");
    writeFile(scratch / "app/Template/tour.css", "body { color: green }");
    expectDone(publish({tour, "--into", scratch / "www", "--template", scratch / "app/Template"}));
    EXPECT_EQ(readFile(scratch / "www/tour.css"), "body { color: green }");
}

TEST_F(PublishTest, readOnlyTemplatesBecomeFilesThatMayBeChanged) {
    programInFolder(scratch / "app");
    fs::permissions(scratch / "app/Template/tour.css", fs::perms(0444));
    expectDone(publish({tour, "--into", scratch / "www", "--template", scratch / "app/Template"}));
    EXPECT_EQ(fs::status(scratch / "www/tour.css").permissions(), fs::perms(0644));
}

TEST_F(PublishTest, templatesMayBeLinks) {
    programInFolder(scratch / "app");
    fs::rename(scratch / "app/Template/tour.css", scratch / "common.css");
    fs::create_symlink("../../common.css", scratch / "app/Template/tour.css");
    expectDone(publish({tour, "--into", scratch / "www", "--template", scratch / "app/Template"}));
    EXPECT_EQ(readFile(scratch / "www/tour.css"), readFile(scratch / "common.css"));
    EXPECT_FALSE(fs::is_symlink(scratch / "www/tour.css"));
}

TEST_F(PublishTest, givenWorkingCopyIsEmptiedFirst) {
    writeFile(scratch / "copy/old.htm", "old");
    expectDone(publish({tour, "--into", scratch / "www", "--working-copy", scratch / "copy"}));
    EXPECT_FALSE(exists(scratch / "copy/old.htm"));
    EXPECT_FALSE(exists(scratch / "www/old.htm"));
}

TEST_F(PublishTest, workingCopyIsLeftWithTheEditingNavigatorAndWithoutLoadingAhead) {
    const std::string ahead = makeTour("ahead", "<<<VoskInfo>>>#AutoBuffer\r\n" + scriptWithStops(2));
    expectDone(publish({ahead, "--into", scratch / "www", "--working-copy", scratch / "copy"}));
    EXPECT_EQ(readFile(scratch / "copy/nav3.htm"), readFile(WENDMARK_ASSETS "/Template/navtemp.htm"));
    EXPECT_EQ(readFile(scratch / "www/nav3.htm"), readFile(WENDMARK_ASSETS "/Template/navfinal.htm"));
    EXPECT_THAT(readFile(scratch / "copy/playtour.htm"), HasSubstr("bufFlag = false\r\n"));
    EXPECT_THAT(readFile(scratch / "www/playtour.htm"), HasSubstr("bufFlag = true\r\n"));
}

TEST_F(PublishTest, nothingIsLeftBehind) {
    fs::create_directory(scratch / "temporary");
    writeFile(scratch / "old/page1.htm", "old");
    for (const std::string& folder : {scratch / "new", scratch / "old"}) {
        expectDone(program().with("TMPDIR", scratch / "temporary").run({"publish", tour, "--into", folder}));
        for (const auto& [name, state] : folderState(folder))
            EXPECT_FALSE(name.starts_with('.')) << name;
    }
    EXPECT_TRUE(fs::is_empty(scratch / "temporary"));
    std::vector<std::string> left;
    for (const fs::directory_entry& entry : fs::directory_iterator(scratch.path()))
        left.push_back(entry.path().filename());
    EXPECT_THAT(left, ::testing::UnorderedElementsAre("tour", "temporary", "new", "old"));
}

TEST_F(PublishTest, foldersOfTheProgramStayUntouched) {
    const ProgramRun ownProgram = programInFolder(scratch / "app");
    writeFile(scratch / "app/NewTour/page1.htm", "being edited");
    const auto before = folderState(scratch / "app");
    expectDone(ownProgram.run({"publish", tour}));
    expectDone(ownProgram.run({"publish", tour, "--working-copy", scratch / "copy"}));
    EXPECT_EQ(folderState(scratch / "app"), before);
}

TEST_F(PublishTest, programsOwnFoldersAreNoTours) {
    const ProgramRun ownProgram = programInFolder(scratch / "app");
    writeFile(scratch / "app/NewTour/script.txt", scriptWithStops(1));
    writeFile(scratch / "app/NewTour/inner/script.txt", scriptWithStops(1));
    fs::create_directory_symlink(scratch / "app/NewTour", scratch / "link");
    for (const std::string name : {"app/Template", "app/TEMPLATE", "app/NewTour", "app/NewTour/inner",
                                   "app/newtour", "link", "link/inner"}) {
        const bool isTemplate = name.find("/T") != std::string::npos;
        expectFailure(ownProgram, {"publish", scratch / name, "--into", scratch / "www"},
                      {scratch / name, isTemplate ? "The 'Template' folder" : "The 'NewTour' folder",
                       "cannot be used to store or retrieve user tours."});
        expectFailure(ownProgram, {"publish", tour, "--into", scratch / name},
                      {scratch / name, isTemplate ? "The 'Template' folder" : "The 'NewTour' folder"});
    }
}

TEST_F(PublishTest, programsFoldersNeedNotBeWritable) {
    const ProgramRun ownProgram = programInFolder(scratch / "app");
    fs::permissions(scratch / "app", fs::perms(0555));
    fs::permissions(scratch / "app/Template", fs::perms(0555));
    fs::create_directory(scratch / "open");
    fs::permissions(scratch / "open", fs::perms(0777));
    expectDone(
        ProgramRun(ownProgram).asOrdinaryUser().run({"publish", tour, "--into", scratch / "open/www"}));
    EXPECT_TRUE(exists(scratch / "open/www/page3.htm"));
}

TEST_F(PublishTest, publishedFilesBelongToTheGroupThatTheFolderHandsDown) {
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can give a folder to any group";
    constexpr gid_t group = 12345;
    fs::create_directory(scratch / "site");
    ASSERT_EQ(chown((scratch / "site").c_str(), 0, group), 0);
    fs::permissions(scratch / "site", fs::perms(02775));
    fs::create_directory(scratch / "site/old");
    ASSERT_EQ(chown((scratch / "site/old").c_str(), 0, group), 0);
    fs::permissions(scratch / "site/old", fs::perms(02775));
    for (const std::string& folder : {scratch / "site/new", scratch / "site/old"}) {
        expectDone(publish({tour, "--into", folder}));
        for (const std::string name : {"", "/page1.htm", "/tour.css", "/script.txt", "/nav3.htm"}) {
            struct stat status {};
            ASSERT_EQ(stat((folder + name).c_str(), &status), 0);
            EXPECT_EQ(status.st_gid, group) << folder << name;
        }
    }
}

} // namespace
} // namespace wendmark::test
