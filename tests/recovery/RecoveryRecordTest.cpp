#include "recovery/RecoveryRecord.h"

#include <gtest/gtest.h>

namespace wendmark {
namespace {

RecoveryRecord fullRecord(std::int16_t stops) {
    RecoveryRecord record;
    record.time = 1700000000;
    record.tourPath = "/tours/W\xc3\xbcste\nend 0\n";
    TourModel& model = record.model;
    model.tourTitle = "Title\r\nof two lines";
    model.tourAuthor = std::string("with\0zero", 9);
    model.autoBuffer = true;
    model.bufferDelay = 2147483647;
    model.autoInstruction = false;
    model.singleWindow = false;
    model.narHeight = -5;
    model.advWidth = 32767;
    model.navWidth = -32768;
    model.stopLabel = "halt";
    model.helpFile = "help.htm";
    model.homeSiteURL = "https://www.brenholt.example/";
    model.currentStop = stops;
    model.tourChanged = true;
    model.launchURLCount = stops;
    model.stops.setCount(stops);
    for (std::size_t i = 0; i < static_cast<std::size_t>(stops); ++i) {
        const std::string number = std::to_string(i);
        model.launchURL.at(i) = "https://host/" + number;
        model.stops.at(i + 1).stopTitle = "Stop " + number;
        model.stops.at(i + 1).stopURL = i % 2 == 0 ? "" : "page " + number;
        model.stops.at(i + 1).stopNarration = "N\r\n\r\n" + number;
        model.stops.at(i + 1).stopInstruction = "end 0\n" + number;
    }
    record.unapplied = UnappliedTexts{"\nunappliedTitle 3\nabc\n", "", "\xff\xfe"};
    return record;
}

TEST(RecoveryRecord, everyFieldComesBack) {
    for (const std::int16_t stops : std::initializer_list<std::int16_t>{0, 1, 100}) {
        const RecoveryRecord record = fullRecord(stops);
        const std::optional<RecoveryRecord> back = decodeRecord(encodeRecord(record));
        ASSERT_TRUE(back);
        EXPECT_EQ(back->time, record.time);
        EXPECT_EQ(back->tourPath, record.tourPath);
        const TourModel& had = record.model;
        const TourModel& has = back->model;
        EXPECT_EQ(has.tourTitle, had.tourTitle);
        EXPECT_EQ(has.tourAuthor, had.tourAuthor);
        EXPECT_EQ(has.autoBuffer, had.autoBuffer);
        EXPECT_EQ(has.bufferDelay, had.bufferDelay);
        EXPECT_EQ(has.autoInstruction, had.autoInstruction);
        EXPECT_EQ(has.singleWindow, had.singleWindow);
        EXPECT_EQ(has.narHeight, had.narHeight);
        EXPECT_EQ(has.advWidth, had.advWidth);
        EXPECT_EQ(has.navWidth, had.navWidth);
        EXPECT_EQ(has.stopLabel, had.stopLabel);
        EXPECT_EQ(has.helpFile, had.helpFile);
        EXPECT_EQ(has.homeSiteURL, had.homeSiteURL);
        EXPECT_EQ(has.currentStop, had.currentStop);
        EXPECT_EQ(has.tourChanged, had.tourChanged);
        EXPECT_EQ(has.launchURLCount, had.launchURLCount);
        EXPECT_EQ(has.stopCount(), had.stopCount());
        EXPECT_EQ(has.launchURL, had.launchURL);
        EXPECT_EQ(has.stops, had.stops);
        ASSERT_TRUE(back->unapplied);
        EXPECT_EQ(back->unapplied->title, record.unapplied->title);
        EXPECT_EQ(back->unapplied->narration, record.unapplied->narration);
        EXPECT_EQ(back->unapplied->instruction, record.unapplied->instruction);
    }
}

TEST(RecoveryRecord, choicesComeBackWithAndWithoutUnappliedTexts) {
    for (const bool withTexts : {true, false}) {
        RecoveryRecord record = fullRecord(2);
        if (!withTexts)
            record.unapplied.reset();
        record.model.language = "he";
        record.model.wordsBesidePage = true;
        const std::optional<RecoveryRecord> back = decodeRecord(encodeRecord(record));
        ASSERT_TRUE(back);
        EXPECT_EQ(back->model.language, "he");
        EXPECT_TRUE(back->model.wordsBesidePage);
        EXPECT_EQ(back->unapplied, record.unapplied);
    }
}

TEST(RecoveryRecord, whatIsNoLanguageIsNoRecord) {
    RecoveryRecord record = fullRecord(1);
    record.model.language = "';stop()//";
    EXPECT_FALSE(decodeRecord(encodeRecord(record)));
}

TEST(RecoveryRecord, whatNobodyHasChosenIsNotInARecord) {
    EXPECT_EQ(encodeRecord(fullRecord(1)).find("language"), std::string::npos);
}

TEST(RecoveryRecord, withoutUnappliedTextsThereAreNone) {
    RecoveryRecord record = fullRecord(2);
    record.unapplied.reset();
    record.model.stops.at(1).stopTitle = "x\nunappliedTitle 3\nabc\n";
    const std::optional<RecoveryRecord> back = decodeRecord(encodeRecord(record));
    ASSERT_TRUE(back);
    EXPECT_FALSE(back->unapplied);
    EXPECT_EQ(back->model.stops.at(1).stopTitle, record.model.stops.at(1).stopTitle);
}

TEST(RecoveryRecord, stopsBeyondTheHundredthAreCountedAndNotKept) {
    RecoveryRecord record = fullRecord(100);
    record.model.stops.setCount(101);
    const std::optional<RecoveryRecord> back = decodeRecord(encodeRecord(record));
    ASSERT_TRUE(back);
    EXPECT_EQ(back->model.stopCount(), 101);
    EXPECT_EQ(back->model.stops, record.model.stops);
}

TEST(RecoveryRecord, positionIsNoWork) {
    const RecoveryRecord record = fullRecord(3);
    RecoveryRecord other = record;
    other.time += 1;
    other.model.currentStop = 1;
    other.model.tourChanged = false;
    other.unapplied.reset();
    EXPECT_EQ(encodeWork(other), encodeWork(record));
}

TEST(RecoveryRecord, everyOtherChangeIsWork) {
    const RecoveryRecord record = fullRecord(3);
    const std::string work = encodeWork(record);
    const auto differs = [&](auto change) {
        RecoveryRecord other = record;
        change(other);
        return encodeWork(other) != work;
    };
    EXPECT_TRUE(differs([](RecoveryRecord& other) { other.tourPath += "x"; }));
    EXPECT_TRUE(differs([](RecoveryRecord& other) { other.model.tourTitle += "x"; }));
    EXPECT_TRUE(differs([](RecoveryRecord& other) { other.model.stops.setCount(2); }));
    EXPECT_TRUE(differs([](RecoveryRecord& other) { other.model.stops.at(3).stopNarration += "x"; }));
    EXPECT_TRUE(differs([](RecoveryRecord& other) { other.model.navWidth = 1; }));
}

TEST(RecoveryRecord, whatWasCutShortIsNoRecord) {
    const std::string bytes = encodeRecord(fullRecord(3));
    for (std::size_t length = 0; length < bytes.size(); ++length)
        EXPECT_FALSE(decodeRecord(std::string_view(bytes).substr(0, length))) << length;
    EXPECT_FALSE(decodeRecord(bytes + "x"));
}

TEST(RecoveryRecord, damageIsNoticedOrHarmless) {
    const std::string bytes = encodeRecord(fullRecord(2));
    int noticed = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        for (const char byte : {'\0', '9', '\n', '-', '\xff'}) {
            std::string damaged = bytes;
            damaged[i] = byte;
            const std::optional<RecoveryRecord> back = decodeRecord(damaged);
            noticed += back ? 0 : 1;
            if (back) {
                EXPECT_GE(back->model.stopCount(), 0);
                EXPECT_GE(back->model.launchURLCount, 0);
            }
        }
    }
    EXPECT_GT(noticed, 0);
}

TEST(RecoveryRecord, anythingElseIsNoRecord) {
    for (const std::string_view bytes : {"", "x", "wendmark-recovery 1\n", "wendmark-recovery 2\n",
                                         "wendmark-recovery 1\ntime 99999999999999999999\n1\n"})
        EXPECT_FALSE(decodeRecord(bytes)) << bytes;
}

} // namespace
} // namespace wendmark
