#include "commands/PageBundle.h"

#include "base/Files.h"
#include "support/DocumentFixture.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace wendmark {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

class PageBundleTest : public testing::Test {
protected:
    PageBundleTest() { program.openTour(program.makeTour("first", 2)); }

    /// A file of the author's, beside the page.
    void write(const std::string& path, const std::string& bytes) const {
        const fs::path whole = program.scratch / ("Pages/" + path);
        fs::create_directories(whole.parent_path());
        ASSERT_TRUE(files::write(whole.string(), bytes).ok());
    }

    PageBundle bundle(const std::string& html, const std::string& name = "eels.htm") const {
        write("eels.htm", html);
        return bundlePage(program.document.workspace(), program.scratch / "Pages/eels.htm", name);
    }

    static std::vector<std::string> namesOf(const PageBundle& bundle) {
        std::vector<std::string> names;
        for (const PageBundle::Part& part : bundle.parts)
            names.push_back(part.path + " as " + part.file.name + (part.isThere ? ", there" : ""));
        return names;
    }

    std::string tourFile(const std::string& name) const { return files::read(program.working(name)).bytes; }

    test::DocumentFixture program;
};

TEST_F(PageBundleTest, pageWithoutPartsComesAlone) {
    const PageBundle found = bundle("<a href=other.htm>Eels</a><img src=http://127.0.0.1:9/a.png>");
    EXPECT_FALSE(found.needsMore());
    EXPECT_EQ(found.files().size(), 1U);
}

TEST_F(PageBundleTest, partsBesideThePageLeaveItAsItIs) {
    write("eel.png", "eel");
    write("style.css", "p { background: url(paper.gif) }");
    write("paper.gif", "paper");
    const PageBundle found = bundle("<link rel=stylesheet href=style.css><img src=eel.png><img src=eel.png>");
    EXPECT_TRUE(found.needsMore());
    EXPECT_FALSE(found.page.bytes);
    EXPECT_THAT(namesOf(found),
                ElementsAre("paper.gif as paper.gif", "style.css as style.css", "eel.png as eel.png"));
    EXPECT_THAT(program.document.addFiles(found.files(), "Select Local File"), IsEmpty());
    EXPECT_EQ(tourFile("eel.png"), "eel");
    EXPECT_EQ(tourFile("style.css"), "p { background: url(paper.gif) }");
    EXPECT_FALSE(bundle("<link rel=stylesheet href=style.css><img src=eel.png>").needsMore());
}

TEST_F(PageBundleTest, partsOfOtherFoldersGetTheirNamesInThePage) {
    write("css/Style.css", "@import 'more.css'; p { background: url(../img/Paper.GIF) }");
    write("css/more.css", "q { background: url(../img/Paper.GIF) }");
    write("img/Paper.GIF", "paper");
    const PageBundle found = bundle("<link rel=stylesheet href=css/Style.css><img src='img/Paper.GIF'>");
    EXPECT_EQ(found.page.bytes, "<link rel=stylesheet href=style.css><img src='paper.gif'>");
    program.document.addFiles(found.files(), "Select Local File");
    EXPECT_EQ(tourFile("style.css"), "@import 'more.css'; p { background: url(paper.gif) }");
    EXPECT_EQ(tourFile("more.css"), "q { background: url(paper.gif) }");
    EXPECT_EQ(tourFile("eels.htm"), *found.page.bytes);
    EXPECT_EQ(files::read(program.scratch / "Pages/css/Style.css").bytes.substr(0, 7), "@import");
}

TEST_F(PageBundleTest, takenNamesGetANumber) {
    for (const char* name :
         {"tour.css", "page1.htm", "img/eel.png", "eel.png", "a/eels.htm", "page1.png", "none"})
        write(name, std::string("mine: ") + name);
    ASSERT_TRUE(files::write(program.working("page1.png"), "other").ok());
    ASSERT_TRUE(files::write(program.working("page1-2.png"), "another").ok());
    const PageBundle found = bundle(
        "<link rel=stylesheet href=tour.css><embed src=page1.htm><img src=img/eel.png><img src=eel.png>"
        "<embed src=a/eels.htm><img src=page1.png><img src=none>");
    EXPECT_THAT(namesOf(found),
                ElementsAre("tour.css as tour-2.css", "page1.htm as page1-2.htm", "img/eel.png as eel.png",
                            "eel.png as eel-2.png", "a/eels.htm as eels-2.htm", "page1.png as page1-3.png",
                            "none as none"));
    EXPECT_NE(found.page.bytes->find("<img src=eel-2.png>"), std::string::npos);
}

TEST_F(PageBundleTest, whatIsThereIsKnownByItsContents) {
    write("eel.png", "eel");
    ASSERT_TRUE(files::write(program.working("eel.png"), "eel").ok());
    const PageBundle found = bundle("<img src=eel.png>");
    EXPECT_THAT(namesOf(found), ElementsAre("eel.png as eel.png, there"));
    EXPECT_FALSE(found.needsMore());
}

TEST_F(PageBundleTest, filesThatComeAtTheSameTimeAreSpared) {
    write("a/eel.png", "eel");
    write("b/eel.png", "other eel");
    const std::vector<AddedFile> others = {{program.scratch / "Pages/a/eel.png", "eel.png"},
                                           {program.scratch / "Pages/x.htm", "x.htm"}};
    write("eels.htm", "<img src=a/eel.png><img src=b/eel.png>");
    const PageBundle found =
        bundlePage(program.document.workspace(), program.scratch / "Pages/eels.htm", "eels.htm", others);
    EXPECT_THAT(namesOf(found), ElementsAre("a/eel.png as eel.png, there", "b/eel.png as eel-2.png"));
}

TEST_F(PageBundleTest, missingAndOutsidePartsStayAway) {
    write("../secret.png", "secret");
    write(".dot.png", "dot");
    fs::create_symlink(program.scratch / "secret.png", program.scratch / "Pages/link.png");
    fs::create_symlink(program.scratch / "", program.scratch / "Pages/linked");
    fs::create_directory(program.scratch / "Pages/folder.png");
    const PageBundle found =
        bundle("<img src=missing.png><img src=../secret.png><img src=.dot.png><img src=link.png>"
               "<img src=linked/secret.png><img src=folder.png>");
    EXPECT_THAT(found.parts, IsEmpty());
    EXPECT_THAT(found.missing, ElementsAre("missing.png", "folder.png"));
    EXPECT_THAT(found.elsewhere, ElementsAre("../secret.png", ".dot.png", "link.png", "linked/secret.png"));
    EXPECT_FALSE(found.needsMore());
}

TEST_F(PageBundleTest, styleSheetsMayLeadToEachOther) {
    write("a.css", "@import 'b.css';");
    write("b.css", "@import 'a.css'; @import 'b.css';");
    EXPECT_THAT(namesOf(bundle("<link rel=stylesheet href=a.css>")),
                ElementsAre("b.css as b.css", "a.css as a.css"));
}

TEST_F(PageBundleTest, isBounded) {
    std::string html;
    for (std::size_t i = 0; i <= mostPageParts; ++i) {
        const std::string name = "p" + std::to_string(i) + ".png";
        write(name, name);
        html += "<img src=" + name + ">";
    }
    const PageBundle found = bundle(html);
    EXPECT_EQ(found.parts.size(), mostPageParts);
    EXPECT_EQ(found.leftOut, 1U);
}

TEST_F(PageBundleTest, allOfItIsOneStepOfUndo) {
    write("img/eel.png", "eel");
    ASSERT_TRUE(files::write(program.working("eel.png"), "older").ok());
    ASSERT_TRUE(program.document.addFile(program.scratch / "Pages/img/eel.png", "other.png", "Add Image"));
    program.document.addFiles(bundle("<img src=img/eel.png>").files(), "Select Local File");
    EXPECT_EQ(tourFile("eel-2.png"), "eel");
    EXPECT_EQ(program.document.undoName(), "Select Local File");
    program.document.undo();
    EXPECT_FALSE(fs::exists(program.working("eel-2.png")));
    EXPECT_FALSE(fs::exists(program.working("eels.htm")));
    EXPECT_EQ(tourFile("eel.png"), "older");
    program.document.redo();
    EXPECT_EQ(tourFile("eels.htm"), "<img src=eel-2.png>");
}

TEST_F(PageBundleTest, whatCannotBeCopiedIsNamed) {
    const PageBundle found = bundle("");
    std::vector<AddedFile> files = found.files();
    files.push_back({program.scratch / "Pages/gone.png", "gone.png", {}});
    EXPECT_THAT(program.document.addFiles(files, "Select Local File"), ElementsAre("gone.png"));
    EXPECT_TRUE(fs::exists(program.working("eels.htm")));
}

} // namespace
} // namespace wendmark
