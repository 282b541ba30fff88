#include "tour_cli/TourFixture.h"

#include <gmock/gmock.h>

#include <csignal>
#include <filesystem>

namespace wendmark::test {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

class NewTest : public TourFixture {
protected:
    ProgramResult makeNew(const std::string& title) const {
        return program().run({"new", scratch / "new", "--title", title});
    }
};

TEST_F(NewTest, tourHasTheTitleAndTheStopsOfTheTemplates) {
    const ProgramResult result = makeNew("Plants of the Desert");
    expectDone(result);
    EXPECT_THAT(result.output, ::testing::StartsWith("Created \"Plants of the Desert\", stops: "));
    const std::string templateScript = readFile(WENDMARK_ASSETS "/Template/script.txt");
    const std::string script = readFile(scratch / "new/script.txt");
    EXPECT_THAT(script, HasSubstr("\r\n\r\nPlants of the Desert\r\n\r\n<<<VoskInfo>>> Stop1\r\n"));
    const auto stopsOf = [](const std::string& text) {
        return text.substr(text.find("<<<VoskInfo>>> Stop1"));
    };
    EXPECT_EQ(stopsOf(script).substr(0, 60), stopsOf(templateScript).substr(0, 60));
}

TEST_F(NewTest, everyPageThatShowsTheTitleShowsIt) {
    expectDone(makeNew("Plants of the Desert"));
    for (const std::string name :
         {"playtour.htm", "fv1.htm", "framever.htm", "openhelp.htm", "index.htm", "toc.htm", "tguide.htm"})
        EXPECT_THAT(readFile(scratch / ("new/" + name)), HasSubstr("Plants of the Desert")) << name;
}

TEST_F(NewTest, tourIsWhatPublishingItAgainMakesOfIt) {
    expectDone(makeNew("Plants of the Desert"));
    expectDone(program().run({"publish", scratch / "new", "--into", scratch / "www"}));
    auto published = folderState(scratch / "www");
    EXPECT_EQ(published.erase("link.txt"), 1U); // A new tour has none before its first save.
    EXPECT_EQ(published, folderState(scratch / "new"));
}

TEST_F(NewTest, tourHasTheFinalNavigator) {
    expectDone(makeNew("T"));
    EXPECT_EQ(readFile(scratch / "new/nav3.htm"), readFile(WENDMARK_ASSETS "/Template/navfinal.htm"));
}

TEST_F(NewTest, titleMayHoldAnyLetter) {
    expectDone(makeNew("  W\xc3\xbcste \xe2\x86\x92 \"Oase\" & <b>mehr</b> "));
    EXPECT_THAT(readFile(scratch / "new/script.txt"),
                HasSubstr("\r\nW\xfcste &#8594; \"Oase\" & <b>mehr</b>\r\n"));
    EXPECT_THAT(readFile(scratch / "new/playtour.htm"),
                HasSubstr("<title>W\xfcste &#8594; \"Oase\" & <b>mehr</b> </title>"));
}

TEST_F(NewTest, folderMayBeRelativeAndHaveAnUnusualName) {
    for (const std::string name : {"two words/", "-dash", "\"\xc3\x84\xe2\x86\x92\""}) {
        expectDone(program().in(scratch.path()).run({"new", "--title=T", "--", name}));
        EXPECT_TRUE(exists(scratch / (name + "/playtour.htm"))) << name;
    }
}

TEST_F(NewTest, nothingElseIsLeftBehind) {
    fs::create_directory(scratch / "temporary");
    expectDone(program().with("TMPDIR", scratch / "temporary").run({"new", scratch / "new", "--title", "T"}));
    EXPECT_TRUE(fs::is_empty(scratch / "temporary"));
    std::vector<std::string> left;
    for (const fs::directory_entry& entry : fs::directory_iterator(scratch.path()))
        left.push_back(entry.path().filename());
    EXPECT_THAT(left, ::testing::UnorderedElementsAre("tour", "temporary", "new"));
}

TEST_F(NewTest, windowProgramsWorkingCopyStaysUntouched) {
    const ProgramRun run = programInFolder(scratch / "app");
    writeFile(scratch / "app/NewTour/page1.htm", "being edited");
    const auto before = folderState(scratch / "app");
    expectDone(run.run({"new", scratch / "new", "--title", "T"}));
    EXPECT_EQ(folderState(scratch / "app"), before);
}

TEST_F(NewTest, otherTemplatesAreUsed) {
    programInFolder(scratch / "app");
    writeFile(scratch / "app/Template/script.txt", scriptWithStops(5));
    expectDone(
        program().run({"new", scratch / "new", "--title", "T", "--template", scratch / "app/Template"}));
    EXPECT_TRUE(exists(scratch / "new/page5.htm"));
    EXPECT_FALSE(exists(scratch / "new/page6.htm"));
}

TEST_F(NewTest, folderThatIsThereIsRefused) {
    fs::create_directory(scratch / "empty");
    fs::create_symlink("nowhere", scratch / "dangling");
    for (const std::string& folder : {tour, scratch / "empty", tour + "/cactus.htm", scratch / "dangling"})
        expectFailure(program(), {"new", folder, "--title", "T"},
                      {"cannot create the folder " + folder, "File exists"});
}

TEST_F(NewTest, parentOfTheFolderMustBeThere) {
    expectFailure(program(), {"new", scratch / "a/new", "--title", "T"},
                  {"cannot create the folder " + (scratch / "a/new"), "No such file or directory"});
    expectFailure(program(), {"new", tour + "/cactus.htm/new", "--title", "T"},
                  {"cannot create the folder " + tour + "/cactus.htm/new", "Not a directory"});
}

TEST_F(NewTest, parentOfTheFolderMustBeWritable) {
    programInFolder(scratch / "app");
    fs::create_directory(scratch / "closed");
    fs::permissions(scratch / "closed", fs::perms(0555));
    expectFailure(ProgramRun(scratch / "app/wendmark-tour").asOrdinaryUser(),
                  {"new", scratch / "closed/new", "--title", "T"},
                  {"cannot create the folder " + (scratch / "closed/new"), "Permission denied"});
}

TEST_F(NewTest, reservedFoldersAreRefused) {
    const ProgramRun run = programInFolder(scratch / "app");
    fs::create_directory(scratch / "app/NewTour");
    fs::create_directory(scratch / "app/MyTours");
    const auto refused = [&](const std::string& name, std::string_view which) {
        expectFailure(run, {"new", scratch / ("app/" + name), "--title", "T"},
                      {scratch / ("app/" + name), which, "cannot be used to store or retrieve user tours."});
    };
    refused("Template/new", "The 'Template' folder is used for internal operations");
    refused("TEMPLATE/new", "The 'Template' folder is used for internal operations");
    refused("NewTour/new", "The 'NewTour' folder is used for internal operations");
    refused("newtour/new", "The 'NewTour' folder is used for internal operations");
    refused("MyTours/Sample", "The 'Sample' tour folder is used for training purposes");
    refused("MyTours/samples2", "The 'Sample' tour folder is used for training purposes");
    expectDone(run.run({"new", scratch / "app/MyTours/Exam", "--title", "T"}));
    expectDone(run.run({"new", scratch / "SampleX", "--title", "T"}));
}

TEST_F(NewTest, templatesMustBeComplete) {
    const ProgramRun run = programInFolder(scratch / "app");
    fs::remove(scratch / "app/Template/toc.htm");
    expectFailure(run, {"new", scratch / "new", "--title", "T"},
                  {scratch / "app/Template/toc.htm", "No such file or directory"});
    writeFile(scratch / "app/Template/toc.htm", "no markers");
    expectFailure(run, {"new", scratch / "new", "--title", "T"}, {"toc.htm", "template"});
}

TEST_F(NewTest, fullDiskLeavesNothing) {
    expectFailure(program().withFileSizeLimit(1000), {"new", scratch / "new", "--title", "T"},
                  {scratch / "new/", "File too large"});
}

TEST_F(NewTest, interruptedRunLeavesNothing) {
    expectFailure(program().withWaitingSignal(SIGTERM), {"new", scratch / "new", "--title", "T"},
                  {scratch / "new", "interrupted"});
}

} // namespace
} // namespace wendmark::test
