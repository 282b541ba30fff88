#include "publish/TourPages.h"

#include "publish/CutTemplate.h"
#include "support/TestTour.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace wendmark {
namespace {

using test::crlfLines;
using test::TestTour;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class TourPages : public testing::Test {
protected:
    TourPages() {
        tour.model.tourTitle = "Plants";
        tour.model.tourAuthor = "Ada Reed";
    }

    std::vector<std::string> linesOf(std::string_view name) const { return tour.workingLines(name); }

    TestTour tour;
};

class OpeningPage : public TourPages {
protected:
    OpeningPage() {
        tour.writeTemplate("openhelp.htm",
                           crlfLines({"<font size=5>", " <!--variable-->", "<!--variable--> one", "old",
                                      "<!--variable--> two", "<p>", "<!--variable three", "kept 3",
                                      "<!--variable four", "kept 4", "<!--variable five", "dropped",
                                      "<!--variable six", "</html>", "behind the end"}));
    }
};

TEST_F(OpeningPage, holdsTitleAndAuthorAndLosesItsLastRegion) {
    makeOpeningPage(tour.context);
    EXPECT_EQ(tour.working("openhelp.htm"),
              crlfLines({"<font size=5>", " <!--variable-->", "<!--variable--> one",
                         "<b> Plants </b> </font><br>", "<font size=2> Ada Reed </font>", "<!--variable-->",
                         "<p>", "<!--variable three", "kept 3", "<!--variable four", "kept 4",
                         "<!--variable five", "<!--variable-->", "</html>", "behind the end"}));
}

TEST_F(OpeningPage, simpleFormKeepsEverythingBehindTheAuthor) {
    makeOpeningPageSimple(tour.context);
    EXPECT_EQ(tour.working("openhelp.htm"),
              crlfLines({"<font size=5>", " <!--variable-->", "<!--variable--> one",
                         "<b> Plants </b> </font><br>", "<font size=2> Ada Reed </font>", "<!--variable-->",
                         "<p>", "<!--variable three", "kept 3", "<!--variable four", "kept 4",
                         "<!--variable five", "dropped", "<!--variable six", "</html>", "behind the end"}));
}

TEST_F(OpeningPage, simpleFormTakesOnlyWholeMarkers) {
    tour.writeTemplate("openhelp.htm", crlfLines({"<!--variable one", "<!--variable-->", "old",
                                                  "<!--variable two", "<!--variable-->"}));
    makeOpeningPageSimple(tour.context);
    EXPECT_THAT(linesOf("openhelp.htm"),
                ElementsAre("<!--variable one", "<!--variable-->", "<b> Plants </b> </font><br>",
                            "<font size=2> Ada Reed </font>", "<!--variable-->"));
}

TEST_F(OpeningPage, withoutAuthorThreeBlanksStandInTheAuthorsPlace) {
    tour.model.tourAuthor.clear();
    makeOpeningPageSimple(tour.context);
    EXPECT_THAT(linesOf("openhelp.htm"), Contains("<font size=2>   </font>"));
    std::filesystem::remove(tour.workspace.workingFile("openhelp.htm"));
    makeOpeningPage(tour.context);
    EXPECT_THAT(linesOf("openhelp.htm"), Contains("<font size=2>   </font>"));
}

TEST_F(OpeningPage, textsAreNotEscapedAndSurviveTheCodePage) {
    tour.model.tourTitle = "<i>\u0141\u00f3d\u017a</i>";
    tour.model.tourAuthor = "J\u00f6rg & \u2192";
    makeOpeningPage(tour.context);
    EXPECT_THAT(linesOf("openhelp.htm"), Contains("<b> <i>&#321;\xf3"
                                                  "d&#378;</i> </b> </font><br>"));
    EXPECT_THAT(linesOf("openhelp.htm"), Contains("<font size=2> J\xf6rg & &#8594; </font>"));
}

TEST_F(OpeningPage, templateThatEndsEarlyLeavesWhatWasComposed) {
    test::expectCutTemplateGivesBeginning(tour, "openhelp.htm", "openhelp.htm", 13,
                                          [&] { makeOpeningPage(tour.context); });
    EXPECT_THAT(tour.desktop.calls, IsEmpty());
}

TEST_F(OpeningPage, simpleFormOfATemplateThatEndsEarlyLeavesWhatWasComposed) {
    test::expectCutTemplateGivesBeginning(tour, "openhelp.htm", "openhelp.htm", 5,
                                          [&] { makeOpeningPageSimple(tour.context); });
}

TEST_F(TourPages, indexPageHoldsTheTitleAlone) {
    tour.writeTemplate("index.htm",
                       crlfLines({"<!--variable one", "<!--variable-->", "old", "<!--variable two",
                                  "<!--variable--> end", "rest", "<!--variable-->", "rest"}));
    makeIndexPage(tour.context);
    EXPECT_EQ(tour.working("index.htm"), crlfLines({"<!--variable one", "<!--variable-->", "Plants",
                                                    "<!--variable-->", "rest", "<!--variable-->", "rest"}));
}

TEST_F(TourPages, indexTemplateThatEndsEarlyLeavesWhatWasComposed) {
    tour.writeTemplate("index.htm", crlfLines({"<html>", "<!--variable-->", "<!--variable-->", "</html>"}));
    test::expectCutTemplateGivesBeginning(tour, "index.htm", "index.htm", 3,
                                          [&] { makeIndexPage(tour.context); });
}

class ContentsPage : public TourPages {
protected:
    ContentsPage() {
        tour.writeTemplate("toc.htm", crlfLines({"<h5><font>", "<!--variable here", "not used",
                                                 "<!--variable-->", "not used either"}));
    }
};

TEST_F(ContentsPage, linksToEachStop) {
    tour.addStop("Arid <i>lands</i>", "a.htm");
    tour.addStop("Cactus", "http://host/b.htm");
    makeContentsPage(tour.context);
    EXPECT_EQ(tour.working("toc.htm"),
              crlfLines({"<h5><font>", "<!--variable here", "Plants</font></h5>",
                         "<a href=\"page1.htm\">Stop 1&#151;Arid <i>lands</i></a><BR>",
                         "<a href=\"page2.htm\">Stop 2&#151;Cactus</a><BR>", "</body>", "</html>"}));
}

TEST_F(ContentsPage, withoutStopsEndsBehindTheTitle) {
    makeContentsPage(tour.context);
    EXPECT_THAT(linesOf("toc.htm"),
                ElementsAre("<h5><font>", "<!--variable here", "Plants</font></h5>", "</body>", "</html>"));
}

TEST_F(ContentsPage, listsAHundredStops) {
    for (int n = 1; n <= 100; ++n)
        tour.addStop(std::to_string(n), "a.htm");
    makeContentsPage(tour.context);
    EXPECT_THAT(linesOf("toc.htm"), Contains("<a href=\"page100.htm\">Stop 100&#151;100</a><BR>"));
    EXPECT_THAT(linesOf("toc.htm"), testing::SizeIs(105));
    EXPECT_THAT(tour.log.failures, IsEmpty());
}

TEST_F(ContentsPage, stopsAtTheHundredAndFirstStop) {
    tour.model.stops.setCount(101);
    makeContentsPage(tour.context);
    EXPECT_EQ(linesOf("toc.htm").back(), "<a href=\"page100.htm\">Stop 100&#151;</a><BR>");
    EXPECT_EQ(tour.log.failures.size(), 1U);
}

TEST_F(ContentsPage, titlesSurviveTheCodePage) {
    tour.model.tourTitle = "\u0141";
    tour.addStop("\u2192 \u00e4", "a.htm");
    makeContentsPage(tour.context);
    EXPECT_THAT(linesOf("toc.htm"), Contains("&#321;</font></h5>"));
    EXPECT_THAT(linesOf("toc.htm"), Contains("<a href=\"page1.htm\">Stop 1&#151;&#8594; \xe4</a><BR>"));
}

TEST_F(ContentsPage, templateThatEndsEarlyLeavesWhatWasComposed) {
    test::expectCutTemplateGivesBeginning(tour, "toc.htm", "toc.htm", 2,
                                          [&] { makeContentsPage(tour.context); });
}

class TourGuide : public TourPages {
protected:
    TourGuide() {
        tour.writeTemplate("tguide.htm",
                           crlfLines({"<html>", "<!--variable one", "old", "<!--variable two", "<p>",
                                      "<!--variable three", "not used", "<!--variable-->"}));
    }
};

TEST_F(TourGuide, holdsTitleNarrationAndAddressOfEachStopAndNoInstruction) {
    tour.addStop("Cactus", "http://host/c.htm", "Cacti store water.<BR>\r\nLook.\r\n", "Instruction.");
    tour.addStop("Notes", "notes.htm", "<!--narration-->", "Instruction.");
    makeTourGuide(tour.context);
    EXPECT_EQ(tour.working("tguide.htm"),
              crlfLines({"<html>",
                         "<!--variable one",
                         "<CENTER><P><B><FONT SIZE=+2>Plants</FONT></B></P></CENTER>",
                         "<!--variable-->",
                         "<p>",
                         "<!--variable three",
                         "<P>",
                         "<HR WIDTH=\"100%\"></P>",
                         "",
                         "<P><B><FONT COLOR=\"#CC0000\"><FONT SIZE=+1>Stop-1: Cactus</FONT></FONT></B></P>",
                         "",
                         "Cacti store water.<BR>",
                         "Look.",
                         "",
                         "",
                         "<P><FONT COLOR=\"#800000\">http://host/c.htm</FONT></P>",
                         "",
                         "<P>",
                         "<HR WIDTH=\"100%\"></P>",
                         "",
                         "<P><B><FONT COLOR=\"#CC0000\"><FONT SIZE=+1>Stop-2: Notes</FONT></FONT></B></P>",
                         "",
                         "<!--narration-->",
                         "",
                         "<P><FONT COLOR=\"#800000\">Local File: notes.htm</FONT></P>",
                         "",
                         "</body>",
                         "</html>"}));
}

TEST_F(TourGuide, withoutStopsHasNoEntries) {
    makeTourGuide(tour.context);
    EXPECT_THAT(linesOf("tguide.htm"),
                ElementsAre("<html>", "<!--variable one",
                            "<CENTER><P><B><FONT SIZE=+2>Plants</FONT></B></P></CENTER>", "<!--variable-->",
                            "<p>", "<!--variable three", "</body>", "</html>"));
}

TEST_F(TourGuide, stopsAtTheHundredAndFirstStop) {
    tour.model.stops.setCount(101);
    tour.model.stops.at(100).stopTitle = "last";
    makeTourGuide(tour.context);
    EXPECT_THAT(linesOf("tguide.htm"),
                Contains("<P><B><FONT COLOR=\"#CC0000\"><FONT SIZE=+1>Stop-100: last</FONT></FONT></B></P>"));
    EXPECT_THAT(linesOf("tguide.htm"), Not(Contains("</html>")));
    EXPECT_EQ(tour.log.failures.size(), 1U);
}

TEST_F(TourGuide, textsSurviveTheCodePage) {
    tour.addStop("\u2192", "caf\u00e9\u2192.htm", "\u20ac\u2192", "");
    makeTourGuide(tour.context);
    EXPECT_THAT(
        linesOf("tguide.htm"),
        Contains("<P><B><FONT COLOR=\"#CC0000\"><FONT SIZE=+1>Stop-1: &#8594;</FONT></FONT></B></P>"));
    EXPECT_THAT(linesOf("tguide.htm"), Contains("\x80&#8594;"));
    EXPECT_THAT(linesOf("tguide.htm"),
                Contains("<P><FONT COLOR=\"#800000\">Local File: caf\xe9%E2%86%92.htm</FONT></P>"));
}

TEST_F(TourGuide, templateThatEndsEarlyLeavesWhatWasComposed) {
    tour.addStop("Cactus", "http://host/c.htm");
    test::expectCutTemplateGivesBeginning(tour, "tguide.htm", "tguide.htm", 6,
                                          [&] { makeTourGuide(tour.context); });
}

struct Generator {
    std::string_view name;
    void (*generate)(TourContext&);
};

constexpr Generator generators[] = {{"openhelp.htm", makeOpeningPageSimple},
                                    {"openhelp.htm", makeOpeningPage},
                                    {"index.htm", makeIndexPage},
                                    {"toc.htm", makeContentsPage},
                                    {"tguide.htm", makeTourGuide}};

TEST(EachTourPage, staysAsItWasWithoutItsTemplate) {
    for (const Generator& generator : generators) {
        SCOPED_TRACE(generator.name);
        TestTour tour;
        tour.writeWorking(generator.name, "old");
        generator.generate(tour.context);
        EXPECT_EQ(tour.working(generator.name), "old");
        EXPECT_EQ(tour.log.failures.size(), 1U);
        EXPECT_THAT(tour.desktop.calls, IsEmpty());
    }
}

TEST(EachTourPage, cannotReplaceAFolderOfItsName) {
    for (const Generator& generator : generators) {
        SCOPED_TRACE(generator.name);
        TestTour tour;
        tour.useGoldenTemplates();
        std::filesystem::create_directory(tour.workspace.workingFile(generator.name));
        generator.generate(tour.context);
        EXPECT_THAT(test::folderContents(tour.workspace.folders().newTourPath), IsEmpty());
        EXPECT_EQ(tour.log.failures.size(), 1U);
        EXPECT_THAT(tour.desktop.calls, IsEmpty());
    }
}

} // namespace
} // namespace wendmark
