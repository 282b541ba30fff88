#include "base/Log.h"

#include "base/Outcome.h"
#include "support/TestTour.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace wendmark {
namespace {

using Lines = std::vector<std::string>;

TEST(Log, eachLevelGetsItsOwnLines) {
    test::RecordingLog log;
    log.note("n");
    log.warn("w");
    log.fail("f");
    EXPECT_EQ(log.notes, Lines{"n"});
    EXPECT_EQ(log.warnings, Lines{"w"});
    EXPECT_EQ(log.failures, Lines{"f"});
}

TEST(Log, skippedFailureIsOneLine) {
    test::RecordingLog log;
    log.skip(Outcome::failure("cannot do it"));
    log.skipAsNote(Outcome::failure("as expected"));
    EXPECT_EQ(log.failures, Lines{"cannot do it"});
    EXPECT_EQ(log.notes, Lines{"as expected"});
}

TEST(Log, skippedSuccessIsNoLine) {
    test::RecordingLog log;
    log.skip(Outcome::success());
    log.skipAsNote(Outcome::success());
    EXPECT_EQ(log.failures, Lines{});
    EXPECT_EQ(log.notes, Lines{});
}

TEST(Log, whatCouldForgeALineOrSteerATerminalIsEscaped) {
    struct Case {
        std::string_view text;
        std::string_view line;
    };
    using namespace std::string_view_literals;
    for (const Case& given :
         {Case{"a\r\nb", "a\\x0D\\x0Ab"}, Case{"a\0b"sv, "a\\x00b"},
          Case{"\t\x1B[31m\x7F", "\\x09\\x1B[31m\\x7F"}, Case{"a\u0085b", "a\\xC2\\x85b"},
          Case{"\u009B31m", "\\xC2\\x9B31m"}, Case{"\u2028\u2029", "\\xE2\\x80\\xA8\\xE2\\x80\\xA9"},
          Case{"\x9B\xFF", "\\x9B\\xFF"}}) {
        test::RecordingLog log;
        log.fail(given.text);
        EXPECT_EQ(log.failures, Lines{std::string(given.line)});
    }
}

TEST(Log, readableTextIsWrittenAsItStands) {
    test::RecordingLog log;
    log.warn("Ä → 😀 \\ \"quoted\" \u00A0");
    EXPECT_EQ(log.warnings, Lines{"Ä → 😀 \\ \"quoted\" \u00A0"});
}

TEST(Log, linesOfAnyOutcomeAreEscaped) {
    test::RecordingLog log;
    log.skip(Outcome::failure("read", "/t/a\nb", std::make_error_code(std::errc::permission_denied)));
    EXPECT_EQ(log.failures, Lines{"cannot read /t/a\\x0Ab: Permission denied"});
}

} // namespace
} // namespace wendmark
