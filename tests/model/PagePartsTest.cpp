#include "model/PageParts.h"

#include <gtest/gtest.h>

namespace wendmark {
namespace {

using Paths = std::vector<std::string>;

Paths pathsOf(const PageParts& parts) {
    Paths paths;
    for (const PartReference& reference : parts.references)
        paths.push_back(reference.path);
    return paths;
}

Paths partsIn(const std::string& html) {
    return pathsOf(partsOfPage(html));
}

Paths partsInStyle(const std::string& css, const std::string& folder = {}) {
    return pathsOf(partsOfStyleSheet(css, folder));
}

TEST(PageParts, areWhatThePageShowsOrWorksWith) {
    EXPECT_EQ(
        partsIn("<body background=paper.gif><IMG SRC='a.png'><input type=image src=b.png>"
                "<video poster=\"c.jpg\" src=d.mp4><source src=e.webm></video><audio src=f.mp3></audio>"
                "<track src=g.vtt><embed src=h.pdf><object data=i.svg></object><script src=j.js></script>"
                "<LINK REL=\"StyleSheet\" HREF=k.css><link rel='shortcut icon' href=l.ico>"),
        (Paths{"paper.gif", "a.png", "b.png", "c.jpg", "d.mp4", "e.webm", "f.mp3", "g.vtt", "h.pdf", "i.svg",
               "j.js", "k.css", "l.ico"}));
}

TEST(PageParts, areNoOtherPagesAndNothingOfTheWeb) {
    EXPECT_EQ(
        partsIn("<a href=other.htm>x</a><iframe src=frame.htm></iframe><link rel=next href=next.htm>"
                "<img src=http://127.0.0.1/a.png><img src=//127.0.0.1/a.png><img src='data:image/png,x'>"
                "<img src='#a'><img src=''><img src='?a'><img><!-- <img src=no.png> -->"),
        Paths());
}

TEST(PageParts, stayInsideThePagesFolder) {
    const PageParts parts = partsOfPage("<img src='img/../a.png'><img src='./img//b.png'><img src='../c.png'>"
                                        "<img src='/etc/d.png'><img src='file:///e.png'><img src='C:/f.png'>"
                                        "<img src='img\\g.png'><img src='.h.png'><img src='.ssh/i'>"
                                        "<img src='%2e%2e/j.png'><img src='img/..'>");
    EXPECT_EQ(pathsOf(parts), (Paths{"a.png", "img/b.png"}));
    EXPECT_EQ(parts.elsewhere, (Paths{"../c.png", "/etc/d.png", "file:///e.png", "C:/f.png", "img\\g.png",
                                      ".h.png", ".ssh/i", "%2e%2e/j.png"}));
}

TEST(PageParts, areReadAsBrowsersReadThem) {
    EXPECT_EQ(partsIn("<img src=' D%C3%BCne.png?v=1#x '>"), (Paths{"D\xC3\xBCne.png"}));
    EXPECT_EQ(partsIn("<img src='D\xFCne.png'>"), (Paths{"D\xC3\xBCne.png"})); // Of a page in a code page.
    EXPECT_EQ(partsIn("<img src='a&amp;b.png'>"), (Paths{"a&b.png"}));
    EXPECT_EQ(partsIn("<img src='a%00b.png'>"), Paths());
    EXPECT_EQ(partsIn("<img srcset='a.png 1x,b.png 2x, c.png, d,e.png 90w'>"),
              (Paths{"a.png", "b.png", "c.png", "d,e.png"}));
}

TEST(PageParts, ofStyles) {
    EXPECT_EQ(partsIn("<style>@import 'a.css'; p { background: URL( \"b.png\" ) }</STYLE>"
                      "<p style='background:url(c.png)'><style></style><img src=d.png>"),
              (Paths{"a.css", "b.png", "c.png", "d.png"}));
    EXPECT_EQ(partsIn("<style>p { background: url(a.png"), (Paths{"a.png"}));
    EXPECT_EQ(
        partsInStyle("/* url(no.png) */ @font-face { src: url('../f.woff2') } p { content: \"url(no.png)\" }"
                     " q { background: url(img/a.png), url( b.png ) }",
                     "css/"),
        (Paths{"f.woff2", "css/img/a.png", "css/b.png"}));
    EXPECT_EQ(partsOfStyleSheet("a { b: url(../../x.png) }", "css/").elsewhere, (Paths{"../../x.png"}));
    EXPECT_EQ(partsInStyle("@import"), Paths());
    EXPECT_EQ(partsInStyle("a { b: url("), Paths());
    EXPECT_EQ(partsInStyle("a { b: url('a\\.png') }"), Paths());
    EXPECT_TRUE(isStyleSheet("css/A.CSS"));
    EXPECT_FALSE(isStyleSheet("css"));
}

TEST(PageParts, pageWithABaseAddressHasNone) {
    EXPECT_EQ(partsIn("<img src=a.png><base href='http://127.0.0.1/'><img src=b.png>"), Paths());
    EXPECT_EQ(partsIn("<base target=_top><img src=a.png>"), (Paths{"a.png"}));
}

std::string renamed(const std::string& html, const std::map<std::string, std::string>& names) {
    return withPartNames(html, partsOfPage(html), names);
}

TEST(PartNames, changeWhereTheFilesHaveOthers) {
    EXPECT_EQ(renamed("<img src=img/Eel.PNG?v=1#x><p style=\"background:url('img/b.png')\">",
                      {{"img/Eel.PNG", "eel.png"}, {"img/b.png", "b-2.png"}}),
              "<img src=eel.png#x><p style=\"background:url('b-2.png')\">");
    EXPECT_EQ(renamed("<img srcset='img/a.png 1x, img/b.png 2x'>", {{"img/b.png", "b.png"}}),
              "<img srcset='img/a.png 1x, b.png 2x'>");
}

TEST(PartNames, areSafeWhereverTheyStand) {
    EXPECT_EQ(renamed("<img src=x/a.png>", {{"x/a.png", "a \"'<>#?%\xC3\xBC).png"}}),
              "<img src=a%20%22%27%3C%3E%23%3F%25%C3%BC%29.png>");
}

TEST(PartNames, stayWhereTheyLeadToTheFileAlready) {
    for (const std::string html : {"<img src='./eel.png?v=1'>", "<img src='my%20eel.png'>",
                                   "<img src='my eel.png'>", "<img src='other.png'>", ""})
        EXPECT_EQ(renamed(html, {{"eel.png", "eel.png"}, {"my eel.png", "my eel.png"}}), html);
}

TEST(PartNames, ofAStyleSheetThatLeavesItsFolder) {
    const std::string css = "a { b: url(../img/a.png) url(c.png) }";
    EXPECT_EQ(
        withPartNames(css, partsOfStyleSheet(css, "css/"), {{"img/a.png", "a.png"}, {"css/c.png", "c.png"}}),
        "a { b: url(a.png) url(c.png) }");
}

} // namespace
} // namespace wendmark
