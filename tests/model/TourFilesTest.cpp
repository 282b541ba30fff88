#include "model/TourFiles.h"

#include "base/Names.h"
#include "support/ScratchFolder.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <set>

namespace wendmark {
namespace {

using ::testing::ElementsAre;

TEST(TourFiles, whatTheProgramMakesAnewIsGenerated) {
    for (const std::string_view name :
         {"framever.htm", "playtour.htm", "fv1.htm", "tmpframe.htm", "openhelp.htm", "index.htm", "toc.htm",
          "tguide.htm", "nav3.htm", "link.txt", "script.txt", "script1.txt", "ft.htm", "page1.htm",
          "page100.htm", "tourwords.js", "tourchoices.js", "_tourlaunch1.htm", "_tourlaunch100.htm"})
        EXPECT_TRUE(isGeneratedFile(name)) << name;
}

TEST(TourFiles, authorsFilesAndSupportFilesAreNotGenerated) {
    for (const std::string_view name : {"",
                                        "photo.gif",
                                        "page.htm",
                                        "page-one.htm",
                                        "page1.html",
                                        "page1x.htm",
                                        "1page1.htm",
                                        "page 1.htm",
                                        "_tourlaunch.htm",
                                        "_tourlaunch-pad.htm",
                                        "tourlaunch1.htm",
                                        "tour.js",
                                        "tourlanguage.js",
                                        "navtemp.htm",
                                        "navfinal.htm",
                                        "brhist.txt",
                                        "goodlist.txt",
                                        "myscript.txt",
                                        "script2.txt",
                                        "ft.html",
                                        ".htm",
                                        "page"})
        EXPECT_FALSE(isGeneratedFile(name)) << name;
}

TEST(TourFiles, scratchIsGeneratedAndNothingElseIsScratch) {
    for (const std::string_view name : {"ft.htm", "tmpframe.htm", "script1.txt", "FT.HTM"}) {
        EXPECT_TRUE(isScratchFile(name)) << name;
        EXPECT_TRUE(isGeneratedFile(name)) << name;
    }
    for (const std::string_view name : {"script.txt", "page1.htm", "fv1.htm", "photo.gif", "brhist.txt"})
        EXPECT_FALSE(isScratchFile(name)) << name;
}

TEST(TourFiles, whatTheSiteEditorRemembersIsPrivate) {
    for (const std::string_view name : {"brhist.txt", "goodlist.txt", "GoodList.txt"})
        EXPECT_TRUE(isPrivateFile(name)) << name;
    for (const std::string_view name : {"script.txt", "link.txt", "photo.gif", "ft.htm"})
        EXPECT_FALSE(isPrivateFile(name)) << name;
}

TEST(TourFiles, generatedAndPrivateNamesAreReservedInAnyCase) {
    for (const std::string_view name :
         {"page7.htm", "PAGE07.HTM", "_TourLaunch2.htm", "Index.htm", "TOC.HTM", "brhist.txt", "GOODLIST.TXT",
          "Script.txt", "script1.txt", "ft.htm", "tmpframe.htm", "link.txt", "nav3.htm"})
        EXPECT_TRUE(isReservedName(name)) << name;
    for (const std::string_view name : {"page.htm", "page-1.htm", "pages.htm", "logo.gif", "navtemp.htm", ""})
        EXPECT_FALSE(isReservedName(name)) << name;
}

TEST(TourFiles, neededTemplatesAreThere) {
    EXPECT_THAT(neededTemplates(),
                ElementsAre("framever.htm", "page.htm", "openhelp.htm", "index.htm", "toc.htm", "tguide.htm",
                            "navtemp.htm", "navfinal.htm", "script.txt"));
    for (const std::string& name : neededTemplates())
        EXPECT_TRUE(test::exists(WENDMARK_ASSETS "/Template/" + name)) << name;
}

TEST(TourFiles, whatLeadsToStopsIsSavedAfterThemAndTheScriptLast) {
    std::vector<std::string> names = {"_tourlaunch1.htm", "_tourlaunch2.htm", "framever.htm", "fv1.htm",
                                      "nav3.htm",         "page1.htm",        "playtour.htm", "script.txt",
                                      "style.css",        "toc.htm"};
    sortByPatterns(names, savedLast());
    EXPECT_THAT(names, ElementsAre("nav3.htm", "page1.htm", "style.css", "toc.htm", "framever.htm", "fv1.htm",
                                   "_tourlaunch1.htm", "_tourlaunch2.htm", "playtour.htm", "script.txt"));
}

/// Whatever the program writes into a tour beyond copies of templates and of the author's files.
TEST(TourFiles, everythingThatIsWrittenIntoATourIsReserved) {
    namespace fs = std::filesystem;
    const fs::path golden = WENDMARK_TESTS "/golden";
    std::size_t written = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator(golden)) {
        if (!entry.is_directory() || entry.path().filename() == "Template")
            continue;
        std::set<std::string> copied = {"grbullet.gif"}; // A stand-in that the Template folder lacks.
        for (const fs::path& folder : {golden / "Template", entry.path()}) {
            for (const fs::directory_entry& file : fs::directory_iterator(folder))
                copied.insert(lowerCase(file.path().filename().string()));
        }
        for (const auto& [name, bytes] : test::folderContents((entry.path() / "expected").string())) {
            if (copied.contains(name))
                continue;
            EXPECT_TRUE(isReservedName(name)) << entry.path() << " " << name;
            ++written;
        }
    }
    EXPECT_GT(written, 100U);
}

} // namespace
} // namespace wendmark
