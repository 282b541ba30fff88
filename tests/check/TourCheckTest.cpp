#include "check/TourCheck.h"

#include "support/TestTour.h"

#include <gmock/gmock.h>

namespace wendmark {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class TourCheckTest : public testing::Test {
protected:
    void addStop(const std::string& address) {
        tour.model.stops.insert(static_cast<std::int16_t>(tour.model.stopCount() + 1),
                                {"T", address, "Words.", ""});
    }

    std::vector<StopToCheck> stops() const { return stopsToCheck(tour.model, tour.workspace); }

    StopToCheck only(const std::string& address) {
        tour.model.stops.setCount(0);
        addStop(address);
        return stops().at(0);
    }

    test::TestTour tour;
};

TEST_F(TourCheckTest, pagesOfTheWebAreAskedFor) {
    const StopToCheck stop = only("https://a.example/");
    EXPECT_TRUE(stop.asksTheWeb);
    EXPECT_EQ(stop.stop, 1);
    EXPECT_EQ(stop.title, "T");
    EXPECT_EQ(stop.address, "https://a.example/");
}

TEST_F(TourCheckTest, whatIsNoPageOfTheWebIsKnownAtOnce) {
    tour.writeWorking("there.htm", "<p>Page.");
    EXPECT_EQ(only("newpage.htm").known.verdict, Verdict::noPage);
    EXPECT_EQ(only("").known.verdict, Verdict::noPage);
    EXPECT_EQ(only("there.htm").known.verdict, Verdict::plays);
    EXPECT_EQ(only("missing.htm").known.verdict, Verdict::fileMissing);
    EXPECT_EQ(only("other://page/x").known.verdict, Verdict::fails);
    EXPECT_FALSE(only("missing.htm").asksTheWeb);
}

TEST_F(TourCheckTest, partsThatAreMissingAreNamed) {
    tour.writeWorking("page.htm",
                      R"(<img src="there.gif"><img src="b.gif"><link rel=stylesheet href="a.css">)");
    tour.writeWorking("there.gif", "GIF89a");
    const StopToCheck stop = only("page.htm");
    EXPECT_EQ(stop.known.verdict, Verdict::plays);
    EXPECT_THAT(stop.missingParts, ElementsAre("a.css", "b.gif"));
    EXPECT_EQ(stop.known.why, "Files of the page are missing: a.css, b.gif.");
    tour.writeWorking("a.css", "p {}");
    EXPECT_EQ(only("page.htm").known.why, "A file of the page is missing: b.gif.");
}

TEST_F(TourCheckTest, samePageIsToldFromTheSecondStopOn) {
    tour.model.stops.setCount(0);
    for (const char* address : {"http://a.example/", "newpage.htm", "http://a.example/#part", "newpage.htm"})
        addStop(address);
    const std::vector<StopToCheck> all = stops();
    ASSERT_THAT(all, SizeIs(4));
    EXPECT_EQ(all[0].sameAs, 0);
    EXPECT_EQ(all[2].sameAs, 1);
    EXPECT_EQ(all[3].sameAs, 0);
}

TEST_F(TourCheckTest, toursOfNoAndOfAHundredStops) {
    tour.model.stops.setCount(0);
    EXPECT_THAT(stops(), IsEmpty());
    tour.model.stops.setCount(100);
    EXPECT_THAT(stops(), SizeIs(100));
}

TEST_F(TourCheckTest, launchingPointsSayWhereTheTourIsPlayed) {
    const auto usualWith = [this](std::initializer_list<const char*> points) {
        tour.model.launchURLCount = 0;
        for (const char* point : points)
            tour.model.launchURL.at(static_cast<std::size_t>(tour.model.launchURLCount++)) = point;
        return usualPosting(tour.model);
    };
    EXPECT_EQ(usualWith({}), Posting::https);
    EXPECT_EQ(usualWith({"start.htm"}), Posting::https);
    EXPECT_EQ(usualWith({"start.htm", "http://a.example/"}), Posting::http);
    EXPECT_EQ(usualWith({"http://a.example/", "https://a.example/"}), Posting::https);
}

TEST_F(TourCheckTest, audienceStartsFromTheLaunchingPoints) {
    tour.model.launchURLCount = 3;
    tour.model.launchURL[0] = "https://M.example/start.htm";
    tour.model.launchURL[1] = "start.htm";
    tour.model.launchURL[2] = "https://m.example/other.htm";
    tour.model.launchURL[3] = "https://leftover.example/";
    const Audience audience = audienceOf(tour.model, Posting::https);
    EXPECT_THAT(audience.sites, ElementsAre(WebOrigin{"https", "m.example", 443}));
}

} // namespace
} // namespace wendmark
