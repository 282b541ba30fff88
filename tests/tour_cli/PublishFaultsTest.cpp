#include "tour_cli/TourFixture.h"

#include <gmock/gmock.h>

#include <csignal>
#include <filesystem>
#include <sys/stat.h>

namespace wendmark::test {
namespace {

namespace fs = std::filesystem;

/// Every failure leaves the whole scratch folder as it was; expectFailure() sees to that.
class PublishFaultsTest : public TourFixture {
protected:
    PublishFaultsTest() { writeFile(scratch / "www/page1.htm", "old page"); }

    /// A run without the rights of root, on a program that every user can reach.
    ProgramRun ordinaryProgram() const { return ProgramRun(ownProgram()).asOrdinaryUser(); }

    ProgramRun ownProgram() const {
        return exists(scratch / "app") ? ProgramRun(scratch / "app/wendmark-tour")
                                       : programInFolder(scratch / "app");
    }

    void allow(const std::string& path, unsigned rights) const { fs::permissions(path, fs::perms(rights)); }
};

TEST_F(PublishFaultsTest, tourIsMissing) {
    expectFailure(program(), {"publish", scratch / "nowhere"},
                  {scratch / "nowhere/script.txt", "No such file or directory"});
    expectFailure(program(), {"publish", scratch / "nowhere", "--into", scratch / "new"},
                  {scratch / "nowhere/script.txt"});
}

TEST_F(PublishFaultsTest, tourIsAFile) {
    expectFailure(program(), {"publish", tour + "/cactus.htm", "--into", scratch / "new"},
                  {tour + "/cactus.htm/script.txt", "Not a directory"});
}

TEST_F(PublishFaultsTest, tourHasNoScript) {
    fs::remove(tour + "/script.txt");
    expectFailure(program(), {"publish", tour}, {tour + "/script.txt", "No such file or directory"});
}

TEST_F(PublishFaultsTest, scriptHasNoTitle) {
    for (const std::string script : {"", "\r\n\r\n", "<<<VoskInfo>>>#Author = Ann Lee\r\n\r\n",
                                     "<<<VoskInfo>>>#NarHeight\r\n<<<VoskInfo>>> Stop1\r\n"}) {
        writeFile(tour + "/script.txt", script);
        for (const std::string& target : {tour, scratch / "www", scratch / "a/new"})
            expectFailure(program(), {"publish", tour, "--into", target},
                          {"cannot use " + tour + "/script.txt: it ends before the title of a tour"});
        expectFailure(program(), {"publish", tour, "--working-copy", scratch / "copy"},
                      {"cannot use " + tour + "/script.txt"});
    }
}

TEST_F(PublishFaultsTest, scriptIsAFolder) {
    fs::remove(tour + "/script.txt");
    fs::create_directory(tour + "/script.txt");
    expectFailure(program(), {"publish", tour, "--into", scratch / "new"},
                  {tour + "/script.txt", "Is a directory"});
}

TEST_F(PublishFaultsTest, scriptIsAPipeWhichIsNotWaitedFor) {
    fs::remove(tour + "/script.txt");
    ASSERT_EQ(mkfifo((tour + "/script.txt").c_str(), 0666), 0);
    expectFailure(program(), {"publish", tour, "--into", scratch / "new"}, {tour + "/script.txt"});
}

TEST_F(PublishFaultsTest, scriptIsALinkOutOfTheTour) {
    fs::rename(tour + "/script.txt", scratch / "common.txt");
    fs::create_symlink("../common.txt", tour + "/script.txt");
    expectFailure(program(), {"publish", tour}, {tour + "/script.txt", "the link leads out of its folder"});
}

TEST_F(PublishFaultsTest, scriptMayNotBeRead) {
    const ProgramRun run = ordinaryProgram();
    allow(tour + "/script.txt", 0);
    allow(scratch.path(), 0777);
    expectFailure(run, {"publish", tour, "--into", scratch / "new"},
                  {tour + "/script.txt", "Permission denied"});
}

TEST_F(PublishFaultsTest, fileOfTheTourMayNotBeRead) {
    const ProgramRun run = ordinaryProgram();
    allow(tour + "/cactus.htm", 0);
    allow(scratch.path(), 0777);
    expectFailure(run, {"publish", tour, "--into", scratch / "new"},
                  {tour + "/cactus.htm", scratch / "new/cactus.htm", "Permission denied"});
}

TEST_F(PublishFaultsTest, tourHasTooManyStops) {
    const std::string longTour = makeTour("long", scriptWithStops(101));
    for (const std::string& target : {scratch / "new", scratch / "www", longTour})
        expectFailure(program(), {"publish", longTour, "--into", target},
                      {longTour, "101 stops, but a tour has at most 100"});
}

TEST_F(PublishFaultsTest, templateFolderIsMissing) {
    expectFailure(program(), {"publish", tour, "--template", scratch / "looks"},
                  {scratch / "looks/framever.htm", "No such file or directory"});
}

TEST_F(PublishFaultsTest, aTemplateIsMissing) {
    const ProgramRun run = ownProgram();
    for (const std::string name : {"framever.htm", "page.htm", "openhelp.htm", "index.htm", "toc.htm",
                                   "tguide.htm", "navtemp.htm", "navfinal.htm", "script.txt"}) {
        const std::string path = scratch / ("app/Template/" + name);
        fs::rename(path, scratch / "away");
        expectFailure(run, {"publish", tour, "--into", scratch / "new"}, {path, "No such file or directory"});
        fs::rename(scratch / "away", path);
    }
}

TEST_F(PublishFaultsTest, aTemplateLacksItsMarkers) {
    const ProgramRun run = ownProgram();
    for (const std::string name :
         {"framever.htm", "page.htm", "openhelp.htm", "index.htm", "toc.htm", "tguide.htm"}) {
        const std::string path = scratch / ("app/Template/" + name);
        const std::string contents = readFile(path);
        writeFile(path, "<html>\n</html>\n");
        const std::string page = name == "page.htm" ? "page1.htm" : name;
        for (const std::string& target : {scratch / "new", scratch / "www", tour})
            expectFailure(run, {"publish", tour, "--into", target}, {page, "template"});
        writeFile(path, contents);
    }
}

TEST_F(PublishFaultsTest, folderIsAFileOrLiesUnderOne) {
    for (const std::string& target :
         {tour + "/cactus.htm", tour + "/cactus.htm/sub", tour + "/cactus.htm/a/b"})
        expectFailure(program(), {"publish", tour, "--into", target},
                      {"cannot create the folder " + tour + "/cactus.htm"});
}

TEST_F(PublishFaultsTest, folderIsALinkToNowhere) {
    fs::create_symlink("nowhere", scratch / "dangling");
    expectFailure(program(), {"publish", tour, "--into", scratch / "dangling"}, {scratch / "dangling"});
}

TEST_F(PublishFaultsTest, folderMayNotBeWritten) {
    const ProgramRun run = ordinaryProgram();
    allow(scratch / "www", 0555);
    allow(tour, 0555);
    for (const std::string& target : {scratch / "www", tour})
        expectFailure(run, {"publish", tour, "--into", target}, {target, "Permission denied"});
}

TEST_F(PublishFaultsTest, folderMayNotBeMade) {
    const ProgramRun run = ordinaryProgram();
    allow(scratch / "www", 0555);
    for (const std::string& target : {scratch / "www/new", scratch / "www/a/b/new"})
        expectFailure(run, {"publish", tour, "--into", target}, {scratch / "www/", "Permission denied"});
}

TEST_F(PublishFaultsTest, aFileOfTheFolderMayNotBeReplaced) {
    const ProgramRun run = ordinaryProgram();
    // Only owners remove files here, and page2.htm has another one.
    allow(scratch / "www", 01777);
    writeFile(scratch / "www/page2.htm", "somebody's page");
    expectFailure(run, {"publish", tour, "--into", scratch / "www"}, {scratch / "www/page"});
}

TEST_F(PublishFaultsTest, aFolderHasTheNameOfAPage) {
    for (const std::string name : {"page2.htm", "nav3.htm", "playtour.htm", "script.txt", "index.htm"}) {
        fs::create_directory(scratch / ("www/" + name));
        expectFailure(program(), {"publish", tour, "--into", scratch / "www"},
                      {scratch / ("www/" + name), "Is a directory"});
        fs::remove(scratch / ("www/" + name));
    }
}

TEST_F(PublishFaultsTest, diskTakesNoLargeFiles) {
    writeFile(tour + "/photo.jpg", std::string(200000, 'x'));
    for (const std::string& target : {scratch / "new", scratch / "a/b/new", scratch / "www", tour}) {
        for (const std::size_t limit : {1000U, 4000U, 150000U})
            expectFailure(program().withFileSizeLimit(limit), {"publish", tour, "--into", target},
                          {target, "File too large"});
    }
}

TEST_F(PublishFaultsTest, diskTakesNoLargeFilesBehindAGivenWorkingCopy) {
    writeFile(tour + "/photo.jpg", std::string(200000, 'x'));
    expectFailure(program().withFileSizeLimit(150000),
                  {"publish", tour, "--into", scratch / "www", "--working-copy", scratch / "copy"},
                  {scratch / "copy/photo.jpg", "File too large"});
}

TEST_F(PublishFaultsTest, runIsInterrupted) {
    for (const int signal : {SIGHUP, SIGINT, SIGTERM}) {
        for (const std::string& target : {scratch / "new", scratch / "www", tour})
            expectFailure(program().withWaitingSignal(signal), {"publish", tour, "--into", target},
                          {target, "interrupted"});
    }
}

TEST_F(PublishFaultsTest, programsOwnFoldersAreNoTarget) {
    const ProgramRun run = ownProgram();
    fs::create_directory(scratch / "app/NewTour");
    fs::create_directory_symlink(scratch / "app", scratch / "link");
    for (const std::string& target : {scratch / "app/Template", scratch / "app/Template/new",
                                      scratch / "link/Template/new", scratch / "app/x/../Template"})
        expectFailure(
            run, {"publish", tour, "--into", target},
            {target.starts_with(scratch / "app/x") ? scratch / "app/Template" : target,
             "The 'Template' folder is used for internal operations, and cannot be used to store or "
             "retrieve user tours."});
    for (const std::string& target : {scratch / "app/NewTour", scratch / "app/NewTour/new",
                                      scratch / "link/NewTour/", scratch / "app/newtour/new"})
        expectFailure(run, {"publish", tour, "--into", target},
                      {"The 'NewTour' folder is used for internal operations, and cannot be used to store or "
                       "retrieve user tours."});
}

TEST_F(PublishFaultsTest, templateFolderInUseIsNoTarget) {
    ownProgram();
    expectFailure(
        program(),
        {"publish", tour, "--template", scratch / "app/Template", "--into", scratch / "app/Template"},
        {scratch / "app/Template: The 'Template' folder"});
}

TEST_F(PublishFaultsTest, workingCopyMustNotHoldAnythingOfValue) {
    const ProgramRun run = ownProgram();
    fs::create_directory_symlink(tour, scratch / "link");
    for (const std::string& copy :
         {tour, scratch / "link", scratch.path(), scratch / "www", scratch / "app", scratch / "app/Template"})
        expectFailure(run, {"publish", tour, "--into", scratch / "www", "--working-copy", copy},
                      {copy, "would be emptied, but it holds"});
}

TEST_F(PublishFaultsTest, programsFolderIsNoWorkingCopyAlsoWhenTheTemplatesLieElsewhere) {
    const std::string templates = WENDMARK_ASSETS "/Template";
    expectFailure(ownProgram(), {"publish", tour, "--template", templates, "--working-copy", scratch / "app"},
                  {scratch / "app", "would be emptied, but it holds"});
}

TEST_F(PublishFaultsTest, windowProgramsWorkingCopyIsNotToBeUsed) {
    const ProgramRun run = ownProgram();
    writeFile(scratch / "app/NewTour/page1.htm", "being edited");
    expectFailure(run, {"publish", tour, "--working-copy", scratch / "app/NewTour"},
                  {scratch / "app/NewTour is the window program's own working copy"});
}

TEST_F(PublishFaultsTest, workingCopyIsAFile) {
    expectFailure(program(), {"publish", tour, "--working-copy", tour + "/cactus.htm"},
                  {"cannot create the folder " + tour + "/cactus.htm"});
}

} // namespace
} // namespace wendmark::test
