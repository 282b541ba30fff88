#include "base/Files.h"
#include "commands/TourCommands.h"
#include "commands/TourSave.h"
#include "hostile/Effort.h"
#include "model/SiteLists.h"
#include "publish/Framesets.h"
#include "publish/StopPages.h"
#include "publish/TemplateFiller.h"
#include "publish/TourPages.h"
#include "support/TestTour.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <random>

namespace wendmark::test {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

std::string randomBytes(std::size_t count) {
    std::mt19937_64 generator(7);
    std::string bytes(count, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(generator() >> 56);
    return bytes;
}

std::string repeated(std::string_view part, std::size_t times) {
    std::string text;
    text.reserve(part.size() * times);
    for (std::size_t i = 0; i < times; ++i)
        text += part;
    return text;
}

TEST(HostileSiteListsTest, bookmarksOfAHundredMegabytesOfNoise) {
    const ScratchFolder scratch;
    constexpr std::size_t size = 100'000'000;
    BookmarkList list;
    expectEffortInProportion("read bookmarks", randomBytes(size), 4, [&](std::string_view part) {
        writeFile(scratch / "goodlist.txt", part);
        list = readBookmarks(files::read(scratch / "goodlist.txt").bytes);
    });
    EXPECT_EQ(list.bookmarks.size(), bookmarkCapacity);
    std::string written;
    expectLittleEffort("write bookmarks", size, 4, [&] { written = bookmarksFile(list); });
    EXPECT_EQ(readBookmarks(written).bookmarks.size(), bookmarkCapacity);
}

TEST(HostileSiteListsTest, bookmarksInOneLineAndInNone) {
    BookmarkList list;
    const std::string line(10'000'000, 'x');
    const auto read = [&](std::string_view part) { list = readBookmarks(part); };
    expectEffortInProportion("read a bookmark of 10 MB", line, 4, read);
    ASSERT_EQ(list.bookmarks.size(), 1U);
    EXPECT_EQ(list.bookmarks[0].address, line);
    EXPECT_EQ(list.bookmarks[0].colour, white);
    const std::string ends(5'000'000, '\n');
    expectEffortInProportion("read empty bookmarks", ends, 16, read);
    EXPECT_EQ(list.bookmarks.size(), bookmarkCapacity);
}

TEST(HostileSiteListsTest, historyOfFiftyThousandLongLines) {
    const std::string address = "http://a.example/" + std::string(1983, '\xe9');
    const std::string bytes = repeated(address + "\r\n", 50'000);
    History history;
    expectEffortInProportion("read history", bytes, 3,
                             [&](std::string_view part) { history = readHistory(part); });
    ASSERT_EQ(history.addresses.size(), 50'000U);
    EXPECT_TRUE(history.addresses[49'999].ends_with("\xc3\xa9"));
    std::string written;
    expectLittleEffort("write history", bytes.size(), 4, [&] { written = historyFile(history); });
    EXPECT_EQ(written, bytes);
}

TEST(HostileSiteListsTest, historyOfAHundredMegabytesOfLineEnds) {
    const std::string ends(100'000'000, '\n');
    History history;
    expectEffortInProportion("read an empty history", ends, 2,
                             [&](std::string_view part) { history = readHistory(part); });
    EXPECT_EQ(history.addresses.size(), historyCapacity);
    EXPECT_EQ(history.further.size(), ends.size() - historyCapacity);
}

TEST(HostileTemplateTest, aMillionMarkers) {
    for (const std::string_view marker : {pageMarker, loosePageMarker, scriptBlockMarker}) {
        const std::string text = repeated(std::string(marker) + "\r\n", 1'000'000);
        std::string output;
        expectEffortInProportion("fill through a million markers", text, 4, [&](std::string_view part) {
            TemplateFiller filler(part);
            while (!filler.stopped()) {
                filler.copyThrough(marker);
                filler.write("new");
                filler.closeRegion(marker);
            }
            output = filler.output();
        });
        EXPECT_GT(output.size(), text.size());
        expectEffortInProportion("look for a marker that is not there", text, 4, [&](std::string_view part) {
            TemplateFiller filler(part);
            filler.copyThrough("<!--nowhere-->");
            EXPECT_TRUE(filler.stopped());
        });
    }
}

/// A tour of a hundred stops, whose files somebody else has made.
class HostileTourTest : public ::testing::Test {
protected:
    HostileTourTest() {
        tour.useShippedTemplates();
        for (int n = 1; n <= 100; ++n)
            tour.addStop("Stop", "http://a.example/", "Words.\r\n", "Do it.\r\n");
    }

    void makeEverything() {
        makeStopPages(tour.context, 1, 100);
        makeContentsPage(tour.context);
        makeOpeningPageSimple(tour.context);
        makeIndexPage(tour.context);
        makeTourGuide(tour.context);
        makeOpeningPage(tour.context);
        makeWorkingFrameset(tour.context);
        makeTourFramesets(tour.context);
    }

    TestTour tour;
};

TEST_F(HostileTourTest, templatesOfAMillionMarkers) {
    const std::string text = repeated("<!--variable-->\n//variable\n", 500'000);
    expectEffortInProportion("pages from a million markers", text, 5, [&](std::string_view part) {
        for (const std::string_view name :
             {"toc.htm", "openhelp.htm", "index.htm", "tguide.htm", "framever.htm"})
            tour.writeTemplate(name, part);
        makeEverything();
    });
    EXPECT_THAT(tour.log.failures, IsEmpty());
    EXPECT_THAT(tour.working("index.htm"), HasSubstr("//variable"));
}

TEST_F(HostileTourTest, aPageTemplateOfAMillionMarkers) {
    const std::string text = repeated("<!--variable-->\n//variable\n", 500'000);
    // A hundred pages could each become as large as the template; the first that has no end stops the rest.
    expectEffortInProportion("a page without an end", text, 5, [&](std::string_view part) {
        tour.writeTemplate("page.htm", part);
        makeStopPages(tour.context, 1, 100);
    });
    EXPECT_THAT(tour.log.failures, Contains(HasSubstr("cannot complete page1.htm")));
    EXPECT_FALSE(exists(tour.workspace.workingFile("page2.htm")));
}

TEST_F(HostileTourTest, templatesOfNoise) {
    const std::string noise = randomBytes(10'000'000);
    expectEffortInProportion("pages from noise", noise, 5, [&](std::string_view part) {
        for (const std::string_view name :
             {"toc.htm", "openhelp.htm", "index.htm", "tguide.htm", "framever.htm", "page.htm"})
            tour.writeTemplate(name, part);
        tour.log.failures.clear();
        makeEverything();
    });
    for (const std::string_view name :
         {"page1.htm", "toc.htm", "openhelp.htm", "index.htm", "tguide.htm", "framever.htm", "playtour.htm"})
        EXPECT_THAT(tour.log.failures, Contains(HasSubstr("cannot complete " + std::string(name))));
}

TEST_F(HostileTourTest, imagesThatAreNone) {
    const std::string folder = tour.scratch / "MyTours/images";
    const std::string noise = randomBytes(10'000'000);
    const std::vector<std::string> names = {"a.gif", "b.jpg", "c.png", "grbullet.gif"};
    for (const std::string& name : names)
        writeFile(folder + "/" + name, noise);
    writeFile(folder + "/empty.gif", "");
    writeFile(folder + "/script.txt", "Title\r\nStop\r\na.gif\r\n\r\nWords.\r\n\r\nDo it.\r\n\r\n");
    tour.workspace.setTourPath(folder);
    expectLittleEffort("open a tour of no images", 40'000'000, 1, [&] { openTour(tour.context); });
    expectLittleEffort("save a tour of no images", 40'000'000, 1, [&] { saveTour(tour.context); });
    EXPECT_THAT(tour.log.failures, IsEmpty());
    for (const std::string& name : names)
        EXPECT_TRUE(readFile(folder + "/" + name) == noise) << name;
    EXPECT_EQ(readFile(folder + "/empty.gif"), "");
}

TEST_F(HostileTourTest, aFileOfHundredMegabytesInTheTour) {
    const std::string folder = tour.scratch / "MyTours/large";
    writeFile(folder + "/film.gif", std::string(100'000'000, 'x'));
    writeFile(folder + "/script.txt", "Title\r\nStop\r\na.gif\r\n\r\nWords.\r\n\r\nDo it.\r\n\r\n");
    tour.workspace.setTourPath(folder);
    expectLittleEffort("open a tour with a large file", 100'000'000, 0, [&] { openTour(tour.context); });
    EXPECT_EQ(std::filesystem::file_size(tour.workspace.workingFile("film.gif")), 100'000'000U);
}

} // namespace
} // namespace wendmark::test
