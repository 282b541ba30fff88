#include "model/LineError.h"

#include "support/TestTour.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace wendmark {
namespace {

TEST(LineError, messageAndLineAreShownTogether) {
    test::RecordingDesktop desktop;
    reportLineError(desktop, 3, "Command Syntax Error - '=' sign not found");
    reportLineError(desktop, 0, "Premature end of file");
    EXPECT_EQ(desktop.lineErrors,
              (std::vector<std::string>{"Command Syntax Error - '=' sign not found in line 3",
                                        "Premature end of file in line 0"}));
}

} // namespace
} // namespace wendmark
