#include "commands/StopLook.h"

#include "support/TestTour.h"

#include <gmock/gmock.h>

namespace wendmark {
namespace {

class StopLookTest : public testing::Test {
protected:
    /// Both ways of looking, which must agree.
    StopLook lookOf(const Stop& stop) {
        tour.model.stops.setCount(0);
        tour.model.stops.insert(1, stop);
        const StopLook look = lookAtStop(stop, tour.workspace);
        EXPECT_THAT(lookAtStops(tour.model, tour.workspace), testing::ElementsAre(look));
        return look;
    }

    StopLook lookAtPage(const std::string& address) { return lookOf({"T", address, "Words.", ""}); }

    test::TestTour tour;
};

TEST_F(StopLookTest, titleIsWhatVisitorsRead) {
    EXPECT_EQ(lookOf({"The <B>old</B> t&ouml;wn &amp; more", "http://host/", "Words.", ""}).title,
              "The old t\xC3\xB6wn & more");
    EXPECT_EQ(lookOf({"<IMG SRC=a.gif>", "http://host/", "Words.", ""}).title, "");
}

TEST_F(StopLookTest, webPageIsShownByItsHost) {
    EXPECT_EQ(lookAtPage("https://www.host.example:8080/a/b.htm?c#d"),
              (StopLook{"T", "www.host.example:8080", false, false, false}));
    EXPECT_EQ(lookAtPage("other://page/x").page, "other://page/x");
    EXPECT_EQ(lookAtPage("http://host.example/newpage.htm"),
              (StopLook{"T", "host.example", false, false, false}));
}

TEST_F(StopLookTest, fileIsLookedForInTheWorkingCopyWhateverItsCase) {
    tour.writeWorking("My Page.HTM", "page");
    EXPECT_EQ(lookAtPage("my%20page.htm#part"), (StopLook{"T", "my page.htm", false, false, false}));
    EXPECT_EQ(lookAtPage("other.htm"), (StopLook{"T", "other.htm", false, true, false}));
}

TEST_F(StopLookTest, newStopHasNoPageAndNoWords) {
    tour.writeWorking("newpage.htm", "page");
    EXPECT_EQ(lookOf({"Title", "newpage.htm", std::string(noNarration), {}}),
              (StopLook{"Title", "", true, false, true}));
    EXPECT_TRUE(lookAtPage("").noPage);
    EXPECT_TRUE(lookAtPage("NoURL").noPage);
}

TEST_F(StopLookTest, placeholderAndWhiteSpaceAreNoWords) {
    for (const char* none : {"", " \r\n", "<!--narration-->\r\n\r\n", " <!--narration-->"})
        EXPECT_TRUE(lookOf({"T", "http://host/", none, ""}).noWords) << none;
    for (const char* some : {"a", "<!--narration-->\r\nWords.", "<IMG SRC=a.gif>"})
        EXPECT_FALSE(lookOf({"T", "http://host/", some, ""}).noWords) << some;
}

} // namespace
} // namespace wendmark
