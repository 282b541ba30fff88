#include "model/TourLook.h"

#include "model/ScriptFile.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace wendmark {
namespace {

class TourLookTest : public testing::Test {
protected:
    TourLook lookAtScript(const std::string& script, const std::string& name = "script.txt") const {
        test::writeFile(scratch / ("tour/" + name), script);
        return lookAtTour(scratch / "tour");
    }

    test::ScratchFolder scratch;
};

TEST_F(TourLookTest, titleIsTheFirstTextOfTheScript) {
    EXPECT_EQ(titleInScript(" \r\n<<<VoskInfo>>>#Author = A\r\n\r\n  My tour \r\nNot this\r\n"), "My tour");
    EXPECT_EQ(titleInScript("D\xFCne &#8594; See"), "D\u00FCne \u2192 See");
    EXPECT_EQ(titleInScript("<<<VoskInfo>>>#Author = A\r\n"), "");
    EXPECT_EQ(titleInScript(""), "");
}

TEST_F(TourLookTest, titleIsShownAsVisitorsReadIt) {
    const TourLook look = lookAtScript("\r\n<B>Sand</B> &amp;\x01 sea\r\n", "Script.TXT");
    EXPECT_TRUE(look.isTour);
    EXPECT_EQ(look.title, "Sand & sea");
}

TEST_F(TourLookTest, folderWithAnyScriptIsATour) {
    EXPECT_TRUE(lookAtScript("").isTour);
    EXPECT_EQ(lookAtScript("").title, "");
}

TEST_F(TourLookTest, folderWithoutAScriptIsNone) {
    std::filesystem::create_directories(scratch / "tour/script.txt");
    EXPECT_FALSE(lookAtTour(scratch / "tour").isTour);
    EXPECT_FALSE(lookAtTour(scratch / "missing").isTour);
    EXPECT_FALSE(lookAtTour("").isTour);
}

TEST_F(TourLookTest, titleFarBehindTheBeginningIsNotLookedFor) {
    const std::string points(1'000'000, '\n');
    const TourLook look = lookAtScript(points + "Title\n");
    EXPECT_TRUE(look.isTour);
    EXPECT_EQ(look.title, "");
}

} // namespace
} // namespace wendmark
