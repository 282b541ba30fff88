#include "model/Workspace.h"

#include "maker.h"
#include "support/SystemLimits.h"
#include "support/TestTour.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace wendmark {
namespace {

namespace fs = std::filesystem;

using test::exists;
using test::FileSizeLimit;
using test::folderContents;
using test::readFile;
using test::TestTour;
using test::UnprivilegedUser;
using test::writeFile;
using Files = std::map<std::string, std::string>;
using Lines = std::vector<std::string>;

/// A tour folder beside the application folders, to be opened or saved into.
class WorkspaceTest : public testing::Test {
protected:
    WorkspaceTest() {
        m_tour.workspace.setTourPath(m_tour.scratch / "tour");
        fs::create_directory(m_tour.workspace.tourPath());
    }

    void writeTourFile(std::string_view name, std::string_view bytes) {
        writeFile(m_tour.workspace.tourFile(name), bytes);
    }
    Files workingFiles() const { return folderContents(m_tour.workspace.folders().newTourPath); }
    Files tourFiles() const { return folderContents(m_tour.workspace.tourPath()); }
    std::string workingFile(std::string_view name) const { return m_tour.workspace.workingFile(name); }
    std::string tourFile(std::string_view name) const { return m_tour.workspace.tourFile(name); }

    /// Four notes at most: what restoreWorkingFiles() cannot repair is expected and no failure.
    void expectNothingWentWrong() const {
        EXPECT_EQ(m_tour.log.failures, Lines{});
        EXPECT_EQ(m_tour.log.warnings, Lines{});
    }

    TestTour m_tour;
    Workspace& m_workspace = m_tour.workspace;
};

TEST_F(WorkspaceTest, foldersLieInTheApplicationFolderAndEndWithASeparator) {
    const WorkspaceFolders folders = WorkspaceFolders::inside("/opt/app");
    EXPECT_EQ(folders.appPath, "/opt/app");
    EXPECT_EQ(folders.templatePath, "/opt/app/Template/");
    EXPECT_EQ(folders.newTourPath, "/opt/app/NewTour/");
    EXPECT_EQ(folders.myToursPath, "/opt/app/MyTours/");
}

TEST_F(WorkspaceTest, filesAreNamedByTheirFolders) {
    EXPECT_EQ(m_workspace.templateFile("a.htm"), m_tour.scratch / "Template/a.htm");
    EXPECT_EQ(m_workspace.workingFile("a.htm"), m_tour.scratch / "NewTour/a.htm");
    EXPECT_EQ(m_workspace.tourFile("a.htm"), m_tour.scratch / "tour/a.htm");
}

TEST_F(WorkspaceTest, initTourDefaultsCreatesTheMissingWorkingCopy) {
    fs::remove(m_workspace.folders().newTourPath);
    m_workspace.initTourDefaults();
    EXPECT_TRUE(fs::is_directory(m_workspace.folders().newTourPath));
    expectNothingWentWrong();
}

TEST_F(WorkspaceTest, initTourDefaultsEntersTheWorkingCopyAndKeepsItsFiles) {
    m_tour.writeWorking("kept.htm", "kept");
    m_workspace.initTourDefaults();
    EXPECT_TRUE(fs::equivalent(fs::current_path(), m_workspace.folders().newTourPath));
    EXPECT_EQ(workingFiles(), (Files{{"kept.htm", "kept"}}));
}

TEST_F(WorkspaceTest, initTourDefaultsLogsAWorkingCopyThatCannotBeMade) {
    fs::remove(m_workspace.folders().newTourPath);
    writeFile(m_tour.scratch / "NewTour", "a file in its place");
    m_workspace.initTourDefaults();
    EXPECT_EQ(m_tour.log.failures.size(), 1U);
    EXPECT_EQ(m_tour.model.narHeight, 100);
}

TEST_F(WorkspaceTest, initTourDefaultsSetsItsFields) {
    TourModel& model = m_tour.model;
    model.tourChanged = true;
    model.homeSiteURL = "x";
    model.narHeight = model.advWidth = model.navWidth = 1;
    model.launchURLCount = 5;
    model.singleWindow = model.autoInstruction = false;
    model.tourAuthor = "x";
    m_workspace.initTourDefaults();
    EXPECT_FALSE(model.tourChanged);
    EXPECT_EQ(model.homeSiteURL, makerSiteURL);
    EXPECT_EQ(model.narHeight, 100);
    EXPECT_EQ(model.advWidth, 110);
    EXPECT_EQ(model.navWidth, 94);
    EXPECT_EQ(model.launchURLCount, 0);
    EXPECT_TRUE(model.singleWindow);
    EXPECT_TRUE(model.autoInstruction);
    EXPECT_EQ(model.tourAuthor, "");
}

TEST_F(WorkspaceTest, initTourDefaultsLeavesWhatTheScriptSets) {
    TourModel& model = m_tour.model;
    model.tourTitle = "Title";
    m_tour.addStop("S", "a.htm", "N", "I");
    model.autoBuffer = true;
    model.bufferDelay = 33;
    model.stopLabel = "halt";
    model.helpFile = "h.htm";
    model.currentStop = 1;
    model.editingMode = false;
    model.launchURL[0] = "leftover";
    m_workspace.initTourDefaults();
    EXPECT_EQ(model.tourTitle, "Title");
    EXPECT_EQ(model.stopCount(), 1);
    EXPECT_EQ(model.stops.at(1).stopTitle, "S");
    EXPECT_EQ(model.stops.at(1).stopURL, "a.htm");
    EXPECT_EQ(model.stops.at(1).stopNarration, "N");
    EXPECT_EQ(model.stops.at(1).stopInstruction, "I");
    EXPECT_TRUE(model.autoBuffer);
    EXPECT_EQ(model.bufferDelay, 33);
    EXPECT_EQ(model.stopLabel, "halt");
    EXPECT_EQ(model.helpFile, "h.htm");
    EXPECT_EQ(model.currentStop, 1);
    EXPECT_FALSE(model.editingMode);
    EXPECT_EQ(model.launchURL[0], "leftover");
    EXPECT_EQ(m_workspace.tourPath(), m_tour.scratch / "tour");
}

TEST_F(WorkspaceTest, resetEmptiesTheWorkingCopyAndFillsItFromTheTemplate) {
    m_tour.writeTemplate("page.htm", "template");
    m_tour.writeTemplate("script.txt", "script");
    m_tour.writeWorking("page.htm", "old");
    m_tour.writeWorking("page7.htm", "old");
    m_tour.writeWorking(".wendmark-0123456789abcdef.tmp", "left by a crash");
    m_tour.model.tourChanged = true;
    m_workspace.resetWorkingCopy();
    EXPECT_EQ(workingFiles(), (Files{{"page.htm", "template"}, {"script.txt", "script"}}));
    EXPECT_TRUE(fs::equivalent(fs::current_path(), m_workspace.folders().appPath));
    EXPECT_TRUE(m_tour.model.tourChanged);
    expectNothingWentWrong();
}

TEST_F(WorkspaceTest, resetLowersTheNamesOfTemplates) {
    m_tour.writeTemplate("Page.HTM", "page");
    m_tour.writeTemplate("ÄŠŒŽŸ.GIF", "picture");
    m_workspace.resetWorkingCopy();
    EXPECT_EQ(workingFiles(), (Files{{"page.htm", "page"}, {"äšœžÿ.gif", "picture"}}));
}

TEST_F(WorkspaceTest, resetCopiesFilesWithoutADotToo) {
    m_tour.writeTemplate("README", "text");
    m_workspace.resetWorkingCopy();
    EXPECT_EQ(workingFiles(), (Files{{"readme", "text"}}));
}

TEST_F(WorkspaceTest, resetLeavesFoldersAndDotFilesOfTheTemplateWhereTheyAre) {
    m_tour.writeTemplate("page.htm", "page");
    m_tour.writeTemplate(".hidden", "x");
    m_tour.writeTemplate("sub/inner.htm", "x");
    m_workspace.resetWorkingCopy();
    EXPECT_EQ(workingFiles(), (Files{{"page.htm", "page"}}));
    expectNothingWentWrong();
}

TEST_F(WorkspaceTest, resetKeepsFoldersOfTheWorkingCopy) {
    m_tour.writeWorking("sub/kept.htm", "kept");
    m_workspace.resetWorkingCopy();
    EXPECT_EQ(workingFiles(), (Files{{"sub/kept.htm", "kept"}}));
}

TEST_F(WorkspaceTest, resetFollowsLinksOfTheTemplate) {
    writeFile(m_tour.scratch / "elsewhere.htm", "linked");
    fs::create_symlink(m_tour.scratch / "elsewhere.htm", m_workspace.templateFile("page.htm"));
    m_workspace.resetWorkingCopy();
    EXPECT_EQ(workingFiles(), (Files{{"page.htm", "linked"}}));
    EXPECT_FALSE(fs::is_symlink(workingFile("page.htm")));
}

TEST_F(WorkspaceTest, emptyingRemovesALinkAndNotWhatItLeadsTo) {
    writeFile(m_tour.scratch / "elsewhere.htm", "kept");
    fs::create_symlink(m_tour.scratch / "elsewhere.htm", workingFile("page.htm"));
    m_workspace.resetWorkingCopy();
    EXPECT_FALSE(exists(workingFile("page.htm")));
    EXPECT_EQ(readFile(m_tour.scratch / "elsewhere.htm"), "kept");
}

TEST_F(WorkspaceTest, resetGoesOnAfterAFileThatCannotBeCopied) {
    m_tour.writeTemplate("a.htm", "a");
    m_tour.writeTemplate("b.htm", "b");
    fs::create_directories(workingFile("a.htm/in the way"));
    m_workspace.resetWorkingCopy();
    EXPECT_EQ(workingFiles(), (Files{{"b.htm", "b"}}));
    EXPECT_EQ(m_tour.log.failures.size(), 1U);
}

TEST_F(WorkspaceTest, resetLogsAMissingTemplateFolderOnce) {
    fs::remove(m_workspace.folders().templatePath);
    m_tour.writeWorking("old.htm", "old");
    m_workspace.resetWorkingCopy();
    EXPECT_EQ(workingFiles(), Files{});
    ASSERT_EQ(m_tour.log.failures.size(), 1U);
    EXPECT_TRUE(m_tour.log.failures[0].starts_with("cannot list " + m_workspace.folders().templatePath))
        << m_tour.log.failures[0];
}

TEST_F(WorkspaceTest, copiesOfReadOnlyTemplatesCanBeWritten) {
    m_tour.writeTemplate("page.htm", "page");
    fs::permissions(m_workspace.templateFile("page.htm"), fs::perms::owner_read);
    m_workspace.resetWorkingCopy();
    EXPECT_NE(fs::status(workingFile("page.htm")).permissions() & fs::perms::owner_write, fs::perms::none);
}

TEST_F(WorkspaceTest, loadedTourWinsOverTheTemplateInAnyCaseOfNames) {
    m_tour.writeTemplate("script.txt", "template");
    m_tour.writeTemplate("Page.HTM", "template");
    m_tour.writeTemplate("grbullet.gif", "bullet");
    m_tour.writeWorking("page3.htm", "of the tour before");
    writeTourFile("Script.TXT", "tour");
    writeTourFile("page1.htm", "tour");
    m_tour.model.tourChanged = true;
    m_workspace.loadTourIntoWorkingCopy();
    EXPECT_EQ(workingFiles(), (Files{{"script.txt", "tour"},
                                     {"page.htm", "template"},
                                     {"page1.htm", "tour"},
                                     {"grbullet.gif", "bullet"}}));
    EXPECT_FALSE(m_tour.model.tourChanged);
    expectNothingWentWrong();
}

TEST_F(WorkspaceTest, loadingLeavesTheTourFolderAsItIs) {
    m_tour.writeTemplate("page.htm", "template");
    writeTourFile("Script.TXT", "tour");
    writeTourFile(".hidden", "hidden");
    const Files before = tourFiles();
    m_workspace.loadTourIntoWorkingCopy();
    EXPECT_EQ(tourFiles(), before);
}

TEST_F(WorkspaceTest, loadingTakesTheLowerCaseSpellingOfTwoAndElseTheFirst) {
    writeTourFile("Script.TXT", "other");
    writeTourFile("script.txt", "lower");
    writeTourFile("SCRIPT.txt", "other");
    writeTourFile("PAGE.htm", "first");
    writeTourFile("Page.htm", "second");
    m_workspace.loadTourIntoWorkingCopy();
    EXPECT_EQ(workingFiles(), (Files{{"script.txt", "lower"}, {"page.htm", "first"}}));
}

TEST_F(WorkspaceTest, loadingLeavesDotFilesFoldersAndPipesBehind) {
    writeTourFile("script.txt", "tour");
    writeTourFile(".htaccess", "x");
    writeTourFile("images/a.gif", "x");
    ASSERT_EQ(mkfifo(tourFile("pipe.htm").c_str(), 0600), 0);
    m_workspace.loadTourIntoWorkingCopy();
    EXPECT_EQ(workingFiles(), (Files{{"script.txt", "tour"}}));
    expectNothingWentWrong();
}

TEST_F(WorkspaceTest, loadingLeavesLinksThatLeadOutBehindWithAWarningEach) {
    writeFile(m_tour.scratch / "secret.htm", "secret");
    writeTourFile("real.htm", "real");
    fs::create_symlink("real.htm", tourFile("inside.htm"));
    fs::create_symlink("../secret.htm", tourFile("outside.htm"));
    fs::create_symlink("/dev/zero", tourFile("device.htm"));
    fs::create_symlink("nowhere.htm", tourFile("broken.htm"));
    m_workspace.loadTourIntoWorkingCopy();
    EXPECT_EQ(workingFiles(), (Files{{"real.htm", "real"}, {"inside.htm", "real"}}));
    EXPECT_EQ(m_tour.log.warnings,
              (Lines{"left out " + tourFile("device.htm") + ": the link leads out of its folder",
                     "left out " + tourFile("outside.htm") + ": the link leads out of its folder"}));
    EXPECT_EQ(m_tour.log.failures, Lines{});
}

TEST_F(WorkspaceTest, tourFolderThatIsItselfALinkIsLoaded) {
    writeTourFile("script.txt", "tour");
    fs::create_directory_symlink(m_workspace.tourPath(), m_tour.scratch / "link");
    m_workspace.setTourPath(m_tour.scratch / "link");
    m_workspace.loadTourIntoWorkingCopy();
    EXPECT_EQ(workingFiles(), (Files{{"script.txt", "tour"}}));
    expectNothingWentWrong();
}

TEST_F(WorkspaceTest, loadingAMissingTourLeavesTheTemplateAndIsLoggedOnce) {
    for (const std::string& tourPath : {m_tour.scratch / "missing", std::string()}) {
        m_tour.writeTemplate("script.txt", "template");
        m_tour.log.failures.clear();
        m_workspace.setTourPath(tourPath);
        m_workspace.loadTourIntoWorkingCopy();
        EXPECT_EQ(workingFiles(), (Files{{"script.txt", "template"}}));
        EXPECT_EQ(m_tour.log.failures.size(), 1U);
        EXPECT_FALSE(m_tour.model.tourChanged);
    }
}

TEST_F(WorkspaceTest, loadingGoesOnAfterAFileThatCannotBeRead) {
    writeTourFile("a.htm", "a");
    writeTourFile("b.htm", "b");
    fs::permissions(tourFile("a.htm"), fs::perms::none);
    fs::permissions(m_tour.scratch.path(), fs::perms::all);
    for (const std::string& folder : {m_workspace.folders().newTourPath, m_workspace.folders().templatePath})
        fs::permissions(folder, fs::perms::all);
    {
        const UnprivilegedUser nobody;
        m_workspace.loadTourIntoWorkingCopy();
    }
    EXPECT_EQ(workingFiles(), (Files{{"b.htm", "b"}}));
    ASSERT_EQ(m_tour.log.failures.size(), 1U);
    EXPECT_NE(m_tour.log.failures[0].find(tourFile("a.htm")), std::string::npos) << m_tour.log.failures[0];
}

TEST_F(WorkspaceTest, loadingRepairsTheBullet) {
    m_tour.writeTemplate("gr-bullet-bk.gif", "spare");
    writeTourFile("script.txt", "tour");
    m_workspace.loadTourIntoWorkingCopy();
    EXPECT_EQ(m_tour.working("grbullet.gif"), "spare");
    EXPECT_EQ(m_tour.working("gr-bullet-bk.gif"), "spare");
    expectNothingWentWrong();
}

TEST_F(WorkspaceTest, bulletThatIsThereIsLeftAlone) {
    m_tour.writeWorking("GRBullet.gif", "own");
    m_tour.writeWorking("gr-bullet-bk.gif", "spare");
    m_workspace.restoreWorkingFiles();
    EXPECT_EQ(workingFiles(), (Files{{"GRBullet.gif", "own"}, {"gr-bullet-bk.gif", "spare"}}));
}

TEST_F(WorkspaceTest, otherSupportFilesAreNotRepairedAndThatIsOnlyNoted) {
    m_tour.writeWorking("lower.txt", "has no effect");
    m_workspace.restoreWorkingFiles();
    EXPECT_EQ(workingFiles(), (Files{{"lower.txt", "has no effect"}}));
    EXPECT_EQ(m_tour.log.notes.size(), 4U);
    expectNothingWentWrong();
}

TEST_F(WorkspaceTest, nothingIsNotedWhenAllSupportFilesAreThere) {
    for (const std::string_view name : {"brhist.txt", "lower.htm", "search.txt", "grbullet.gif"})
        m_tour.writeWorking(name, "own");
    m_workspace.restoreWorkingFiles();
    EXPECT_EQ(m_tour.log.notes, Lines{});
}

TEST_F(WorkspaceTest, savingReplacesFilesOfTheSameNamesAndKeepsTheOthers) {
    m_tour.writeTemplate("navfinal.htm", "final");
    m_tour.writeWorking("script.txt", "new");
    m_tour.writeWorking("page1.htm", "new");
    writeTourFile("script.txt", "old");
    writeTourFile("own.htm", "kept");
    writeTourFile(".htaccess", "kept");
    writeTourFile("images/a.gif", "kept");
    m_tour.model.tourChanged = true;
    m_workspace.copyWorkingCopyToTour();
    EXPECT_EQ(tourFiles(), (Files{{"script.txt", "new"},
                                  {"page1.htm", "new"},
                                  {"nav3.htm", "final"},
                                  {"own.htm", "kept"},
                                  {".htaccess", "kept"},
                                  {"images/a.gif", "kept"}}));
    EXPECT_FALSE(m_tour.model.tourChanged);
    expectNothingWentWrong();
}

TEST_F(WorkspaceTest, savedNavigatorIsTheFinalOneOfTheTemplateWhateverTheWorkingCopyHolds) {
    m_tour.writeTemplate("navfinal.htm", "final");
    m_tour.writeWorking("nav3.htm", "editing");
    m_tour.writeWorking("navfinal.htm", "edited");
    m_workspace.copyWorkingCopyToTour();
    EXPECT_EQ(tourFiles(), (Files{{"nav3.htm", "final"}, {"navfinal.htm", "edited"}}));
    EXPECT_EQ(m_tour.working("nav3.htm"), "editing");
}

TEST_F(WorkspaceTest, missingFinalNavigatorIsLoggedAndTheWorkingCopysOneIsSaved) {
    m_tour.writeWorking("nav3.htm", "editing");
    m_workspace.copyWorkingCopyToTour();
    EXPECT_EQ(tourFiles(), (Files{{"nav3.htm", "editing"}}));
    ASSERT_EQ(m_tour.log.failures.size(), 1U);
    EXPECT_NE(m_tour.log.failures[0].find(m_workspace.templateFile("navfinal.htm")), std::string::npos)
        << m_tour.log.failures[0];
}

TEST_F(WorkspaceTest, savingLowersNamesAndRemovesOtherSpellings) {
    m_tour.writeTemplate("navfinal.htm", "final");
    m_tour.writeWorking("Own.HTM", "new");
    m_tour.writeWorking("script.txt", "new");
    writeTourFile("Script.TXT", "old");
    writeTourFile("OWN.htm", "old");
    writeTourFile("Nav3.htm", "old");
    writeTourFile("Other.HTM", "kept");
    m_workspace.copyWorkingCopyToTour();
    EXPECT_EQ(
        tourFiles(),
        (Files{{"own.htm", "new"}, {"script.txt", "new"}, {"nav3.htm", "final"}, {"Other.HTM", "kept"}}));
    expectNothingWentWrong();
}

TEST_F(WorkspaceTest, savingLeavesDotFilesAndFoldersOfTheWorkingCopyBehind) {
    m_tour.writeTemplate("navfinal.htm", "final");
    m_tour.writeWorking(".hidden", "x");
    m_tour.writeWorking("sub/a.htm", "x");
    m_workspace.copyWorkingCopyToTour();
    EXPECT_EQ(tourFiles(), (Files{{"nav3.htm", "final"}}));
}

TEST_F(WorkspaceTest, savingLeavesLinksOutOfTheWorkingCopyBehindWithAWarning) {
    m_tour.writeTemplate("navfinal.htm", "final");
    writeFile(m_tour.scratch / "secret.htm", "secret");
    fs::create_symlink("../secret.htm", workingFile("page1.htm"));
    m_workspace.copyWorkingCopyToTour();
    EXPECT_EQ(tourFiles(), (Files{{"nav3.htm", "final"}}));
    EXPECT_EQ(m_tour.log.warnings,
              Lines{"left out " + workingFile("page1.htm") + ": the link leads out of its folder"});
}

TEST_F(WorkspaceTest, savingDoesNotWriteThroughALinkOfTheTourFolder) {
    m_tour.writeTemplate("navfinal.htm", "final");
    m_tour.writeWorking("page1.htm", "new");
    writeFile(m_tour.scratch / "elsewhere.htm", "kept");
    fs::create_symlink("../elsewhere.htm", tourFile("page1.htm"));
    m_workspace.copyWorkingCopyToTour();
    EXPECT_EQ(readFile(m_tour.scratch / "elsewhere.htm"), "kept");
    EXPECT_EQ(tourFiles(), (Files{{"page1.htm", "new"}, {"nav3.htm", "final"}}));
}

TEST_F(WorkspaceTest, folderInTheWayOfASavedFileIsOneFailureAndTheOthersAreSaved) {
    m_tour.writeTemplate("navfinal.htm", "final");
    m_tour.writeWorking("page1.htm", "new");
    m_tour.writeWorking("script.txt", "new");
    writeTourFile("page1.htm/inner", "kept");
    m_workspace.copyWorkingCopyToTour();
    EXPECT_EQ(tourFiles(),
              (Files{{"page1.htm/inner", "kept"}, {"script.txt", "new"}, {"nav3.htm", "final"}}));
    EXPECT_EQ(m_tour.log.failures.size(), 1U);
    EXPECT_FALSE(m_tour.model.tourChanged);
}

TEST_F(WorkspaceTest, fullDiskLeavesTheTourAsItWas) {
    m_tour.writeTemplate("navfinal.htm", "final");
    m_tour.writeWorking("a.htm", "new");
    m_tour.writeWorking("page1.htm", std::string(10000, 'x'));
    m_tour.writeWorking("script.txt", "new");
    writeTourFile("a.htm", "old");
    writeTourFile("Script.txt", "old");
    const Files before = tourFiles();
    m_tour.model.tourChanged = true;
    {
        const FileSizeLimit limit(5000);
        m_workspace.copyWorkingCopyToTour();
    }
    EXPECT_EQ(tourFiles(), before);
    EXPECT_FALSE(exists(tourFile(".wendmark-save")));
    EXPECT_EQ(m_tour.log.failures.size(), 1U);
    EXPECT_FALSE(m_tour.model.tourChanged);
}

TEST_F(WorkspaceTest, readOnlyTourFolderStaysAsItWas) {
    m_tour.writeTemplate("navfinal.htm", "final");
    m_tour.writeWorking("script.txt", "new");
    writeTourFile("script.txt", "old");
    fs::permissions(m_workspace.tourPath(), fs::perms::owner_read | fs::perms::owner_exec |
                                                fs::perms::others_read | fs::perms::others_exec);
    {
        const UnprivilegedUser nobody;
        m_workspace.copyWorkingCopyToTour();
    }
    EXPECT_EQ(tourFiles(), (Files{{"script.txt", "old"}}));
    EXPECT_EQ(m_tour.log.failures.size(), 1U);
    EXPECT_FALSE(m_tour.model.tourChanged);
}

TEST_F(WorkspaceTest, fileOfTheWorkingCopyThatCannotBeReadIsOneFailureAndTheOthersAreSaved) {
    m_tour.writeTemplate("navfinal.htm", "final");
    m_tour.writeWorking("a.htm", "new");
    m_tour.writeWorking("b.htm", "new");
    writeTourFile("a.htm", "old");
    fs::permissions(workingFile("a.htm"), fs::perms::none);
    fs::permissions(m_workspace.tourPath(), fs::perms::all);
    {
        const UnprivilegedUser nobody;
        m_workspace.copyWorkingCopyToTour();
    }
    EXPECT_EQ(tourFiles(), (Files{{"a.htm", "old"}, {"b.htm", "new"}, {"nav3.htm", "final"}}));
    EXPECT_EQ(m_tour.log.failures.size(), 1U);
}

TEST_F(WorkspaceTest, savingIntoNoFolderIsOneFailureAndWritesNothing) {
    m_tour.writeTemplate("navfinal.htm", "final");
    m_tour.writeWorking("script.txt", "new");
    fs::current_path(m_workspace.tourPath());
    for (const std::string& tourPath : {std::string(), m_tour.scratch / "missing"}) {
        m_tour.log.failures.clear();
        m_tour.model.tourChanged = true;
        m_workspace.setTourPath(tourPath);
        m_workspace.copyWorkingCopyToTour();
        EXPECT_EQ(m_tour.log.failures.size(), 1U);
        EXPECT_FALSE(m_tour.model.tourChanged);
    }
    EXPECT_FALSE(exists(m_tour.scratch / "missing"));
    EXPECT_EQ(folderContents(m_tour.scratch / "tour"), Files{});
}

TEST_F(WorkspaceTest, savingWaitsASecondBeforeItTouchesTheTour) {
    m_tour.writeTemplate("navfinal.htm", "final");
    m_tour.writeWorking("script.txt", "new");
    writeTourFile("script.txt", "old");
    Files duringThePause;
    m_tour.desktop.onPendingEvents = [&] { duringThePause = tourFiles(); };
    const float start = m_tour.desktop.seconds;
    m_workspace.copyWorkingCopyToTour();
    EXPECT_EQ(duringThePause, (Files{{"script.txt", "old"}}));
    EXPECT_GE(m_tour.desktop.seconds, start + 1.0F);
    EXPECT_LE(m_tour.desktop.seconds, start + 1.2F);
}

TEST_F(WorkspaceTest, savedTourIsLoadedAsItWas) {
    m_tour.writeTemplate("navfinal.htm", "final");
    m_tour.writeWorking("script.txt", "script");
    m_tour.writeWorking("page1.htm", std::string("\0\r\n\x1A\xFF", 5));
    m_workspace.copyWorkingCopyToTour();
    m_workspace.loadTourIntoWorkingCopy();
    EXPECT_EQ(workingFiles(), (Files{{"script.txt", "script"},
                                     {"page1.htm", std::string("\0\r\n\x1A\xFF", 5)},
                                     {"nav3.htm", "final"},
                                     {"navfinal.htm", "final"}}));
}

TEST_F(WorkspaceTest, workingFilesAreReplacedCompleteOrNotAtAll) {
    m_tour.writeWorking("a.htm", "old");
    const std::string large = m_tour.scratch / "large";
    writeFile(large, std::string(10000, 'x'));
    {
        const FileSizeLimit limit(5000);
        EXPECT_FALSE(m_workspace.writeWorkingFile("a.htm", std::string(10000, 'x')).ok());
        EXPECT_FALSE(m_workspace.copyToWorkingFile(large, "a.htm").ok());
        EXPECT_EQ(workingFiles(), (Files{{"a.htm", "old"}}));
    }
    EXPECT_TRUE(m_workspace.writeWorkingFile("a.htm", "written").ok());
    EXPECT_EQ(m_tour.working("a.htm"), "written");
    EXPECT_TRUE(m_workspace.copyToWorkingFile(large, "a.htm").ok());
    EXPECT_EQ(m_tour.working("a.htm"), readFile(large));
}

TEST_F(WorkspaceTest, privateWorkingCopyIsFilledInTheSameWay) {
    WorkspaceFolders folders = m_workspace.folders();
    folders.newTourPathIsPrivate = true;
    Workspace workspace(folders, m_tour.model, m_tour.desktop, m_tour.log);
    workspace.setTourPath(m_workspace.tourPath());
    m_tour.writeTemplate("Page.HTM", "template");
    m_tour.writeTemplate("script.txt", "template");
    m_tour.writeTemplate("gr-bullet-bk.gif", "spare");
    m_tour.writeWorking("old.htm", "old");
    writeTourFile("Script.TXT", "tour");
    workspace.loadTourIntoWorkingCopy();
    EXPECT_TRUE(workspace.writeWorkingFile("page.htm", "written").ok());
    EXPECT_EQ(workingFiles(), (Files{{"page.htm", "written"},
                                     {"script.txt", "tour"},
                                     {"gr-bullet-bk.gif", "spare"},
                                     {"grbullet.gif", "spare"}}));
    expectNothingWentWrong();
}

TEST_F(WorkspaceTest, workingFilesAreFoundByNameAndWildcardInAnyCase) {
    m_tour.writeWorking("Page12.htm", "x");
    m_tour.writeWorking("sub/inner.gif", "x");
    EXPECT_TRUE(m_workspace.workingFileExists("Page12.htm"));
    EXPECT_TRUE(m_workspace.workingFileExists("PAGE12.HTM"));
    EXPECT_TRUE(m_workspace.workingFileExists("page*.htm"));
    EXPECT_TRUE(m_workspace.workingFileExists("page??.htm"));
    EXPECT_TRUE(m_workspace.workingFileExists("*.*"));
    EXPECT_FALSE(m_workspace.workingFileExists("page?.htm"));
    EXPECT_FALSE(m_workspace.workingFileExists("page12"));
    EXPECT_FALSE(m_workspace.workingFileExists("*.gif"));
    EXPECT_FALSE(m_workspace.workingFileExists("sub"));
    EXPECT_FALSE(m_workspace.workingFileExists(""));
}

TEST_F(WorkspaceTest, namesOfTemplatesAreReservedInAnyCase) {
    writeFile(m_workspace.templateFile("fr-logo.gif"), "GIF");
    fs::create_directory(m_workspace.templateFile("folder"));
    EXPECT_TRUE(m_workspace.isTemplateFile("fr-logo.gif"));
    EXPECT_TRUE(m_workspace.isTemplateFile("FR-Logo.GIF"));
    for (const std::string_view name : {"", "logo.gif", "folder", "fr-logo", "."})
        EXPECT_FALSE(m_workspace.isTemplateFile(name)) << name;
}

TEST_F(WorkspaceTest, fileOfTheWorkingCopyAloneIsNoTemplate) {
    writeFile(workingFile("own.gif"), "GIF");
    EXPECT_FALSE(m_workspace.isTemplateFile("own.gif"));
}

TEST_F(WorkspaceTest, folderHoldsATourWhenItsScriptCanBeRead) {
    EXPECT_FALSE(folderHoldsTour(m_workspace.tourPath()));
    EXPECT_FALSE(folderHoldsTour(m_tour.scratch / "missing"));
    writeTourFile("SCRIPT.txt", "");
    EXPECT_TRUE(folderHoldsTour(m_workspace.tourPath()));
}

TEST_F(WorkspaceTest, noFolderIsNotTheCurrentOne) {
    writeTourFile("script.txt", "x");
    fs::current_path(m_workspace.tourPath());
    EXPECT_FALSE(folderHoldsTour(""));
}

TEST_F(WorkspaceTest, folderWhoseScriptIsAFolderOrCannotBeReadHoldsNoTour) {
    fs::create_directory(tourFile("script.txt"));
    EXPECT_FALSE(folderHoldsTour(m_workspace.tourPath()));
    fs::remove(tourFile("script.txt"));
    writeTourFile("script.txt", "x");
    fs::permissions(tourFile("script.txt"), fs::perms::none);
    const UnprivilegedUser nobody;
    EXPECT_FALSE(folderHoldsTour(m_workspace.tourPath()));
}

TEST_F(WorkspaceTest, onlyAFileThatCanBeOpenedExists) {
    writeTourFile("a.htm", "");
    EXPECT_TRUE(fileExists(tourFile("a.htm")));
    EXPECT_TRUE(fileExists(tourFile("A.HTM")));
    EXPECT_FALSE(fileExists(tourFile("b.htm")));
    EXPECT_FALSE(fileExists(m_workspace.tourPath()));
    EXPECT_FALSE(fileExists(""));
}

TEST_F(WorkspaceTest, pauseHandlesEventsUntilTheTimeHasPassed) {
    m_workspace.pause(0.5F);
    EXPECT_GE(m_tour.desktop.eventRounds, 5);
    EXPECT_LE(m_tour.desktop.eventRounds, 6); // Tenths of a second are not exact.
}

TEST_F(WorkspaceTest, pauseEndsWhenItsEndIsReachedAndNotOnlyPassed) {
    m_tour.desktop.seconds = 1000;
    m_tour.desktop.onPendingEvents = [&] { m_tour.desktop.seconds = 1002; };
    m_workspace.pause(2);
    EXPECT_EQ(m_tour.desktop.eventRounds, 1);
}

TEST_F(WorkspaceTest, pauseOfNoTimeHandlesEventsOnce) {
    m_workspace.pause(0);
    EXPECT_EQ(m_tour.desktop.eventRounds, 1);
}

TEST_F(WorkspaceTest, programsOwnFoldersAreReservedInAnyCase) {
    const WorkspaceFolders folders = WorkspaceFolders::inside("/app");
    const std::string reservedTemplate =
        "The 'Template' folder is used for internal operations, and cannot be used "
        "to store or retrieve user tours.";
    const std::string reservedNewTour =
        "The 'NewTour' folder is used for internal operations, and cannot be used to "
        "store or retrieve user tours.";
    EXPECT_EQ(reservedFolderMessage(folders, "/app/Template/x"), reservedTemplate);
    EXPECT_EQ(reservedFolderMessage(folders, "/APP/TEMPLATE/X"), reservedTemplate);
    EXPECT_EQ(reservedFolderMessage(folders, "/app/newtour/x"), reservedNewTour);
    EXPECT_EQ(reservedFolderMessage(folders, "/app/MyTours/sample"), "");
    EXPECT_EQ(reservedFolderMessage(folders, "/app/Templates"), "");
    EXPECT_EQ(reservedFolderMessage(folders, ""), "");
    EXPECT_EQ(reservedNewFolderMessage(folders, "/app/Template/x"), reservedTemplate);
    EXPECT_EQ(reservedNewFolderMessage(folders, "/app/newtour/x"), reservedNewTour);
}

TEST_F(WorkspaceTest, newFolderMayNotLookLikeTheSampleTour) {
    const WorkspaceFolders folders = WorkspaceFolders::inside("/app");
    const std::string reservedSample =
        "The 'Sample' tour folder is used for training purposes, and cannot be used to "
        "store or retrieve user tours.";
    EXPECT_EQ(reservedNewFolderMessage(folders, "/app/MyTours/sample"), reservedSample);
    EXPECT_EQ(reservedNewFolderMessage(folders, "/app/mytours/Samples of mine"), reservedSample);
    EXPECT_EQ(reservedNewFolderMessage(folders, "/app/MyTours/mine"), "");
}

} // namespace
} // namespace wendmark
