#include "base/Outcome.h"

#include <gtest/gtest.h>

namespace wendmark {
namespace {

TEST(Outcome, successHasNoMessage) {
    EXPECT_TRUE(Outcome::success().ok());
    EXPECT_EQ(Outcome::success().message(), "");
}

TEST(Outcome, failureSaysWhatFailedOnWhichFileAndWhy) {
    const Outcome outcome =
        Outcome::failure("read", "/t/script.txt", std::make_error_code(std::errc::permission_denied));
    EXPECT_FALSE(outcome.ok());
    EXPECT_EQ(outcome.message(), "cannot read /t/script.txt: Permission denied");
}

TEST(Outcome, failureKeepsItsOwnWords) {
    const Outcome outcome = Outcome::failure("no folder");
    EXPECT_FALSE(outcome.ok());
    EXPECT_EQ(outcome.message(), "no folder");
}

} // namespace
} // namespace wendmark
