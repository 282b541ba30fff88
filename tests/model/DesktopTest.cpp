#include "model/Desktop.h"

#include "support/TestTour.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace wendmark {
namespace {

TEST(BusyPointer, showsTheHourglassForAsLongAsItLives) {
    test::RecordingDesktop desktop;
    {
        const BusyPointer busy(desktop);
        EXPECT_EQ(desktop.calls, std::vector<std::string>{"pointer: 11"});
    }
    EXPECT_EQ(desktop.calls, (std::vector<std::string>{"pointer: 11", "pointer: 0"}));
}

} // namespace
} // namespace wendmark
