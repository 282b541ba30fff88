#include "model/TourModel.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace wendmark {
namespace {

TEST(TourModel, beginsWithTheDefaults) {
    const TourModel model;
    EXPECT_EQ(model.tourTitle, "");
    EXPECT_EQ(model.tourAuthor, "");
    EXPECT_EQ(model.stopCount, 0);
    EXPECT_EQ(model.launchURLCount, 0);
    EXPECT_TRUE(model.autoInstruction);
    EXPECT_TRUE(model.singleWindow);
    EXPECT_EQ(model.narHeight, 100);
    EXPECT_EQ(model.advWidth, 110);
    EXPECT_EQ(model.navWidth, 94);
    EXPECT_EQ(model.stopLabel, "");
    EXPECT_EQ(model.helpFile, "");
    EXPECT_EQ(model.currentStop, 0);
    EXPECT_FALSE(model.tourChanged);
    EXPECT_TRUE(model.editingMode);
}

TEST(TourModel, holdsAHundredOfEachAndChecksTheIndex) {
    TourModel model;
    for (TourTexts* const texts :
         {&model.stopTitle, &model.stopURL, &model.stopNarration, &model.stopInstruction, &model.launchURL}) {
        EXPECT_EQ(texts->size(), 100U);
        EXPECT_THROW(texts->at(100), std::out_of_range);
    }
}

TEST(TourModel, addressWithASlashIsRemote) {
    EXPECT_TRUE(isRemoteAddress("http://host/x"));
    EXPECT_TRUE(isRemoteAddress("/"));
    EXPECT_FALSE(isRemoteAddress("intro.htm"));
    EXPECT_FALSE(isRemoteAddress("folder\\intro.htm"));
    EXPECT_FALSE(isRemoteAddress(""));
}

} // namespace
} // namespace wendmark
