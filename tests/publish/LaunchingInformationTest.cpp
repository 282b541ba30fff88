#include "publish/LaunchingInformation.h"

#include "model/TourModel.h"
#include "support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace wendmark {
namespace {

using test::crlfLines;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

TourModel tourWith(std::int16_t points) {
    TourModel model;
    model.tourTitle = "Rivers";
    model.launchURLCount = points;
    for (std::int16_t i = 0; i < std::min(points, tourCapacity); ++i)
        model.launchURL.at(static_cast<std::size_t>(i)) = "http://host/" + std::to_string(i + 1);
    return model;
}

const std::string explanation = crlfLines(
    {"A tour is launched by creating a hyperlink to a particular tour file. This file (TOURLAUNCH) is "
     "automatically created by Wendmark. Apart from launching the tour. this file also remembers the URL of "
     "the launching point so that the user may be returned to the launching point when the Exit button is "
     "clicked.",
     "",
     "A tour may be launched from multiple locations. For each such location a version of the TOURLAUNCH "
     "file "
     "is created. The first TOURLAUNCH file is named as '_tourlaunch1.htm', the second one as "
     "'_tourlaunch2.htm' etc. To launch the tour from launching point one, you should hyperlink to "
     "'_tourlaunch1.htm'. Similarly, to launch the same tour from launching point two, you should hyperlink "
     "to "
     "'_tourlaunch2.htm'.",
     "",
     "To see which TOURLAUNCH file corresponds to which launching point, take a look at the 'launch.txt' "
     "file "
     "in the tour's folder. This file is modified each time the launching point list is modified in Tour "
     "Properties.",
     "", "The current launching points and their corresponding TOURLAUNCH files are shown below:", ""});

TEST(LaunchingInformation, withoutPointsSaysHowToAddThem) {
    EXPECT_EQ(
        launchingInformation(tourWith(0)),
        explanation +
            "    NO LAUNCHING POINTS SPECIFIED\r\n\r\n"
            "[Launching points are not yet specified. You must do so before you post the tour for public "
            "viewing. To do so, Click on the 'Tour Properties' button on Wendmark's toolbar and select "
            "the 'Launching' tab. Add all the launching points from which you want to launch this tour. "
            "You can always add new launching points in the future, or delete existing ones.]");
}

TEST(LaunchingInformation, listsEachPointWithItsFile) {
    EXPECT_EQ(launchingInformation(tourWith(2)),
              explanation +
                  crlfLines({" 1.  When launching from  'http://host/1'  hyperlink to  '_tourlaunch1.htm'",
                             " 2.  When launching from  'http://host/2'  hyperlink to  '_tourlaunch2.htm'"}));
}

TEST(LaunchingInformation, numbersAreNotPadded) {
    const std::string text = launchingInformation(tourWith(10));
    EXPECT_THAT(text,
                HasSubstr("\r\n 9.  When launching from  'http://host/9'  hyperlink to  "
                          "'_tourlaunch9.htm'\r\n 10.  When launching from  'http://host/10'  hyperlink "
                          "to  '_tourlaunch10.htm'\r\n"));
}

TEST(LaunchingInformation, listsAHundredPointsAtMost) {
    for (const std::int16_t points : {std::int16_t{100}, std::int16_t{101}}) {
        const std::string text = launchingInformation(tourWith(points));
        EXPECT_THAT(text, EndsWith("'_tourlaunch100.htm'\r\n"));
    }
}

TEST(LaunchingInformation, printedListBeginsBelowItsHeading) {
    EXPECT_THAT(launchingListToPrint(tourWith(2)),
                ElementsAre("", "", "", "", "", "", "          Launching URLs", "          Rivers", "", "",
                            "", "",
                            "           1.  When launching from  'http://host/1'  hyperlink to  "
                            "'_tourlaunch1.htm'",
                            "           2.  When launching from  'http://host/2'  hyperlink to  "
                            "'_tourlaunch2.htm'"));
}

TEST(LaunchingInformation, printsNothingWithoutPoints) {
    EXPECT_THAT(launchingListToPrint(tourWith(0)), IsEmpty());
}

} // namespace
} // namespace wendmark
