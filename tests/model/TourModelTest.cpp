#include "model/TourModel.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace wendmark {
namespace {

TEST(TourModel, beginsWithTheDefaults) {
    const TourModel model;
    EXPECT_EQ(model.tourTitle, "");
    EXPECT_EQ(model.tourAuthor, "");
    EXPECT_EQ(model.stopCount(), 0);
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
    EXPECT_EQ(model.launchURL.size(), 100U);
    EXPECT_THROW(model.launchURL.at(100), std::out_of_range);
    model.stops.setCount(100);
    model.stops.at(1).stopTitle = "first";
    model.stops.at(100).stopTitle = "last";
    for (const int beside : {0, -1, 101})
        EXPECT_THROW(model.stops.at(beside), std::out_of_range);
    EXPECT_THROW(model.stops.insert(1, {}), std::out_of_range);
    EXPECT_EQ(model.stopCount(), 100);
}

TEST(TourModel, stopsBeyondTheHundredthAreOnlyCounted) {
    TourModel model;
    model.stops.setCount(32767);
    EXPECT_EQ(model.stopCount(), 32767);
    EXPECT_EQ(model.stops.held(), 100);
    EXPECT_THROW(model.stops.at(101), std::out_of_range);
    model.stops.setCount(-1);
    EXPECT_EQ(model.stopCount(), 0);
}

TEST(TourModel, stopsAreInsertedAndTakenOutByTheirNumbers) {
    TourModel model;
    for (const int n : {1, 1, 3})
        model.stops.insert(n, {std::to_string(model.stopCount() + 1), "", "", ""});
    EXPECT_THROW(model.stops.insert(5, {}), std::out_of_range);
    EXPECT_THROW(model.stops.insert(0, {}), std::out_of_range);
    const auto titles = [&] {
        std::string all;
        for (const Stop& stop : model.stops)
            all += stop.stopTitle;
        return all;
    };
    EXPECT_EQ(titles(), "213");
    model.stops.erase(2);
    EXPECT_EQ(titles(), "23");
    EXPECT_THROW(model.stops.erase(3), std::out_of_range);
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
