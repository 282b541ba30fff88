#include "recovery/RecoveryStore.h"

#include "support/SystemLimits.h"
#include "support/TestTour.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace wendmark {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Key;
using testing::Pair;
using testing::SizeIs;

class RecoveryStoreTest : public testing::Test {
protected:
    RecoveryStoreTest() { write("cactus.htm", "A cactus."); }

    void write(std::string_view name, std::string_view bytes) const {
        test::writeFile(working + "/" + std::string(name), bytes);
    }

    static RecoveryRecord recordOf(const std::string& title, std::int64_t time = 1) {
        RecoveryRecord record;
        record.time = time;
        record.model.tourTitle = title;
        return record;
    }

    /// What a program that is started now finds.
    std::vector<RecoverySession> found() { return RecoveryStore(folder, log).leftovers(); }

    std::map<std::string, std::string> restored(const RecoverySession& session) {
        const std::string target = scratch / "restored";
        fs::remove_all(target);
        fs::create_directory(target);
        RecoveryStore(folder, log).restoreFiles(session, target);
        return test::folderContents(target);
    }

    test::ScratchFolder scratch;
    test::RecordingLog log;
    std::string folder = scratch / "state/recovery";
    std::string working = scratch / "NewTour";
    RecoveryStore store{folder, log};
};

TEST_F(RecoveryStoreTest, nothingIsThereBeforeSomethingIsKept) {
    EXPECT_THAT(store.leftovers(), IsEmpty());
    EXPECT_FALSE(test::exists(folder));
    EXPECT_TRUE(store.keep(recordOf("A"), working));
    EXPECT_THAT(store.leftovers(), IsEmpty()); // Its own is no leftover.
    ASSERT_THAT(found(), SizeIs(1));
    EXPECT_EQ(found()[0].record.model.tourTitle, "A");
    EXPECT_THAT(restored(found()[0]), ElementsAre(Pair("cactus.htm", "A cactus.")));
}

TEST_F(RecoveryStoreTest, latestStateIsFound) {
    store.keep(recordOf("A"), working);
    write("cactus.htm", "Another cactus.");
    write("new page.htm", "New.");
    store.keep(recordOf("B"), working);
    ASSERT_THAT(found(), SizeIs(1));
    EXPECT_EQ(found()[0].record.model.tourTitle, "B");
    EXPECT_THAT(restored(found()[0]),
                ElementsAre(Pair("cactus.htm", "Another cactus."), Pair("new page.htm", "New.")));
    fs::remove(working + "/cactus.htm");
    store.keep(recordOf("C"), working);
    EXPECT_THAT(restored(found()[0]), ElementsAre(Pair("new page.htm", "New.")));
}

TEST_F(RecoveryStoreTest, keptFilesOutliveTheWorkingCopy) {
    store.keep(recordOf("A"), working);
    fs::remove_all(working);
    EXPECT_THAT(restored(found()[0]), ElementsAre(Pair("cactus.htm", "A cactus.")));
}

TEST_F(RecoveryStoreTest, generatedFilesAreLeftOut) {
    for (const std::string name :
         {"page1.htm", "page100.htm", "framever.htm", "_tourlaunch12.htm", "script.txt", "toc.htm"})
        write(name, "generated");
    for (const std::string name : {"page.htm", "page-one.htm", "pages.htm", "page1.html"})
        write(name, "own");
    EXPECT_THAT(authorsFiles(working), ElementsAre(Key("cactus.htm"), Key("page-one.htm"), Key("page.htm"),
                                                   Key("page1.html"), Key("pages.htm")));
}

TEST_F(RecoveryStoreTest, linksThatLeadOutAreNotFollowed) {
    test::writeFile(scratch / "secret.txt", "secret");
    fs::create_symlink(scratch / "secret.txt", working + "/innocent.htm");
    store.keep(recordOf("A"), working);
    EXPECT_THAT(restored(found()[0]), ElementsAre(Key("cactus.htm")));
}

TEST_F(RecoveryStoreTest, nothingIsLeftAfterForgetting) {
    store.keep(recordOf("A"), working);
    store.forget();
    EXPECT_THAT(found(), IsEmpty());
    EXPECT_TRUE(fs::is_empty(folder));
    EXPECT_TRUE(store.keep(recordOf("B"), working));
    EXPECT_THAT(restored(found()[0]), ElementsAre(Key("cactus.htm")));
}

TEST_F(RecoveryStoreTest, severalRunsAreFoundTheLatestFirst) {
    RecoveryStore second(folder, log);
    RecoveryStore third(folder, log);
    store.keep(recordOf("old", 10), working);
    second.keep(recordOf("latest", 30), working);
    third.keep(recordOf("middle", 20), working);
    std::vector<std::string> titles;
    for (const RecoverySession& session : found())
        titles.push_back(session.record.model.tourTitle);
    EXPECT_THAT(titles, ElementsAre("latest", "middle", "old"));
    store.discard(found()[0]);
    EXPECT_THAT(found(), SizeIs(2));
}

TEST_F(RecoveryStoreTest, runThatEndedBeforeItsFirstRecordLeavesNothing) {
    fs::create_directories(folder + "/1234/files");
    EXPECT_THAT(found(), IsEmpty());
    EXPECT_FALSE(test::exists(folder + "/1234"));
}

TEST_F(RecoveryStoreTest, recordThatIsNoneStaysAndIsAWarning) {
    test::writeFile(folder + "/1234/record", "of a later version");
    EXPECT_THAT(found(), IsEmpty());
    EXPECT_TRUE(test::exists(folder + "/1234/record"));
    EXPECT_THAT(log.warnings, SizeIs(1));
}

TEST_F(RecoveryStoreTest, formerStateStaysWhenTheNewOneCannotBeKept) {
    store.keep(recordOf("A"), working);
    bool kept = true;
    {
        const test::FileSizeLimit limit(100);
        kept = store.keep(recordOf(std::string(1000, 'B')), working);
    }
    EXPECT_FALSE(kept);
    EXPECT_THAT(log.failures, testing::Not(IsEmpty()));
    EXPECT_EQ(found()[0].record.model.tourTitle, "A");
    EXPECT_TRUE(store.keep(recordOf("C"), working));
}

TEST_F(RecoveryStoreTest, folderThatCannotBeMadeIsOneLineUntilItCan) {
    for (int round = 1; round <= 2; ++round) {
        SCOPED_TRACE(round);
        store.forget();
        fs::remove_all(scratch / "state");
        test::writeFile(scratch / "state", "a file where a folder is needed");
        for (int look = 0; look < 20; ++look)
            EXPECT_FALSE(store.keep(recordOf("A"), working));
        EXPECT_THAT(log.failures, SizeIs(round));
        fs::remove(scratch / "state");
        for (int look = 0; look < 20; ++look)
            EXPECT_TRUE(store.keep(recordOf("A"), working));
        EXPECT_THAT(log.failures, SizeIs(round));
        EXPECT_THAT(log.notes, SizeIs(round));
        EXPECT_THAT(restored(found()[0]), ElementsAre(Pair("cactus.htm", "A cactus.")));
    }
}

TEST_F(RecoveryStoreTest, fileThatCannotBeKeptIsOneLineAndTheRestIsKept) {
    store.keep(recordOf("A"), working);
    const std::string session = found()[0].folder;
    fs::create_directories(session + "/files/stone.htm/in the way");
    write("stone.htm", "A stone.");
    write("tree.htm", "A tree.");
    for (const std::string title : {"B", "C", "D"})
        EXPECT_TRUE(store.keep(recordOf(title), working));
    EXPECT_THAT(log.failures, SizeIs(1));
    EXPECT_THAT(restored(found()[0]), ElementsAre(Key("cactus.htm"), Key("tree.htm")));
    fs::remove_all(session + "/files/stone.htm");
    EXPECT_TRUE(store.keep(recordOf("E"), working));
    EXPECT_THAT(log.failures, SizeIs(1));
    EXPECT_THAT(log.notes, SizeIs(1));
    EXPECT_THAT(restored(found()[0]), ElementsAre(Key("cactus.htm"), Key("stone.htm"), Key("tree.htm")));
}

} // namespace
} // namespace wendmark
