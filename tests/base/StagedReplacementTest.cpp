#include "base/StagedReplacement.h"

#include "support/ScratchFolder.h"
#include "support/SystemLimits.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <string>
#include <sys/inotify.h>
#include <unistd.h>
#include <vector>

namespace wendmark {
namespace {

namespace fs = std::filesystem;

using test::exists;
using test::FileSizeLimit;
using test::folderContents;
using test::readFile;
using test::writeFile;
using FileMap = std::map<std::string, std::string>;

/// Tells in which order files were renamed into a folder.
class FolderWatch final {
public:
    explicit FolderWatch(const std::string& folder) : m_watch(inotify_init1(IN_NONBLOCK)) {
        if (m_watch < 0 || inotify_add_watch(m_watch, folder.c_str(), IN_MOVED_TO) < 0)
            throw std::runtime_error("cannot watch " + folder);
    }
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;
    ~FolderWatch() { close(m_watch); }

    std::vector<std::string> namesMovedIn() const {
        alignas(inotify_event) std::array<char, 4096> buffer{};
        const ssize_t size = ::read(m_watch, buffer.data(), buffer.size());
        std::vector<std::string> names;
        for (ssize_t position = 0; position < size;) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + position, sizeof event);
            names.emplace_back(buffer.data() + position + sizeof event);
            position += static_cast<ssize_t>(sizeof event + event.len);
        }
        return names;
    }

private:
    int m_watch;
};

/// A folder "target" whose files are replaced by those of a folder "source".
class StagedReplacementTest : public testing::Test {
protected:
    StagedReplacementTest() {
        fs::create_directory(m_target);
        fs::create_directory(m_scratch / "source");
    }

    std::string source(std::string_view name, std::string_view bytes) const {
        const std::string path = m_scratch / "source/" + std::string(name);
        writeFile(path, bytes);
        return path;
    }
    void writeTarget(std::string_view name, std::string_view bytes) const {
        writeFile(m_target + "/" + std::string(name), bytes);
    }
    FileMap target() const { return folderContents(m_target); }
    bool stagingIsThere() const { return exists(m_target + "/.wendmark-save"); }

    test::ScratchFolder m_scratch;
    std::string m_target = m_scratch / "target";
};

TEST_F(StagedReplacementTest, filesAreReplacedOnlyWhenCommitted) {
    writeTarget("a.htm", "old");
    writeTarget("other.htm", "kept");
    {
        StagedReplacement replacement(m_target);
        ASSERT_TRUE(replacement.begin().ok());
        ASSERT_TRUE(replacement.stage(source("a.htm", "new"), "a.htm").ok());
        ASSERT_TRUE(replacement.stage(source("b.htm", "new"), "b.htm").ok());
        EXPECT_EQ(readFile(m_target + "/a.htm"), "old");
        EXPECT_FALSE(exists(m_target + "/b.htm"));
        EXPECT_TRUE(replacement.commit({"b.htm"}).empty());
    }
    EXPECT_EQ(target(), (FileMap{{"a.htm", "new"}, {"b.htm", "new"}, {"other.htm", "kept"}}));
    EXPECT_FALSE(stagingIsThere());
}

TEST_F(StagedReplacementTest, whatIsNotCommittedLeavesNoTrace) {
    writeTarget("a.htm", "old");
    {
        StagedReplacement replacement(m_target);
        ASSERT_TRUE(replacement.begin().ok());
        ASSERT_TRUE(replacement.stage(source("a.htm", "new"), "a.htm").ok());
        EXPECT_TRUE(stagingIsThere());
    }
    EXPECT_EQ(target(), (FileMap{{"a.htm", "old"}}));
    EXPECT_FALSE(stagingIsThere());
}

TEST_F(StagedReplacementTest, stagingLeftBehindByACrashIsReplaced) {
    writeTarget(".wendmark-save/a.htm", "of the crash");
    {
        StagedReplacement replacement(m_target);
        ASSERT_TRUE(replacement.begin().ok());
        ASSERT_TRUE(replacement.stage(source("b.htm", "new"), "b.htm").ok());
        EXPECT_TRUE(replacement.commit({"b.htm"}).empty());
    }
    EXPECT_EQ(target(), (FileMap{{"b.htm", "new"}}));
}

TEST_F(StagedReplacementTest, fileUnderTheNameOfTheStagingFolderIsReplaced) {
    writeTarget(".wendmark-save", "in the way");
    StagedReplacement replacement(m_target);
    EXPECT_TRUE(replacement.begin().ok());
    EXPECT_TRUE(fs::is_directory(m_target + "/.wendmark-save"));
}

TEST_F(StagedReplacementTest, linkUnderTheNameOfTheStagingFolderIsNotFollowed) {
    writeFile(m_scratch / "elsewhere/a.htm", "kept");
    fs::create_directory_symlink(m_scratch / "elsewhere", m_target + "/.wendmark-save");
    {
        StagedReplacement replacement(m_target);
        ASSERT_TRUE(replacement.begin().ok());
        ASSERT_TRUE(replacement.stage(source("a.htm", "new"), "a.htm").ok());
        EXPECT_TRUE(replacement.commit({"a.htm"}).empty());
    }
    EXPECT_EQ(folderContents(m_scratch / "elsewhere"), (FileMap{{"a.htm", "kept"}}));
    EXPECT_EQ(target(), (FileMap{{"a.htm", "new"}}));
}

TEST_F(StagedReplacementTest, laterCopyOfANameCounts) {
    {
        StagedReplacement replacement(m_target);
        ASSERT_TRUE(replacement.begin().ok());
        ASSERT_TRUE(replacement.stage(source("first", "first"), "a.htm").ok());
        ASSERT_TRUE(replacement.stage(source("second", "second"), "a.htm").ok());
        EXPECT_TRUE(replacement.commit({"a.htm"}).empty());
    }
    EXPECT_EQ(target(), (FileMap{{"a.htm", "second"}}));
}

TEST_F(StagedReplacementTest, lastNameIsPutInPlaceLast) {
    StagedReplacement replacement(m_target);
    ASSERT_TRUE(replacement.begin().ok());
    for (const std::string_view name : {"script.txt", "a.htm", "z.htm"})
        ASSERT_TRUE(replacement.stage(source(name, "new"), std::string(name)).ok());
    FolderWatch watch(m_target);
    EXPECT_TRUE(replacement.commit({"script.txt"}).empty());
    EXPECT_EQ(watch.namesMovedIn(), (std::vector<std::string>{"a.htm", "z.htm", "script.txt"}));
}

TEST_F(StagedReplacementTest, spellingsThatDifferOnlyInCaseAreRemoved) {
    writeTarget("Page.HTM", "old");
    writeTarget("PAGE.htm", "old");
    writeTarget("ÄPFEL.GIF", "old");
    writeTarget("Other.HTM", "kept");
    writeTarget(".Page.htm", "kept");
    {
        StagedReplacement replacement(m_target);
        ASSERT_TRUE(replacement.begin().ok());
        ASSERT_TRUE(replacement.stage(source("a", "new"), "page.htm").ok());
        ASSERT_TRUE(replacement.stage(source("b", "new"), "äpfel.gif").ok());
        EXPECT_TRUE(replacement.commit({"page.htm"}).empty());
    }
    EXPECT_EQ(
        target(),
        (FileMap{{"page.htm", "new"}, {"äpfel.gif", "new"}, {"Other.HTM", "kept"}, {".Page.htm", "kept"}}));
}

TEST_F(StagedReplacementTest, fileThatCannotBeReplacedKeepsItsOldContentsAndTheOthersGoOn) {
    writeTarget("b.htm/inner", "kept");
    writeTarget("B.HTM", "kept, for nothing took its place");
    writeTarget("c.htm", "old");
    {
        StagedReplacement replacement(m_target);
        ASSERT_TRUE(replacement.begin().ok());
        for (const std::string_view name : {"a.htm", "b.htm", "c.htm"})
            ASSERT_TRUE(replacement.stage(source(name, "new"), std::string(name)).ok());
        const auto failures = replacement.commit({"a.htm"});
        ASSERT_EQ(failures.size(), 1U);
        EXPECT_EQ(failures[0].message(), "cannot replace " + m_target + "/b.htm: Is a directory");
    }
    EXPECT_EQ(target(), (FileMap{{"a.htm", "new"},
                                 {"b.htm/inner", "kept"},
                                 {"B.HTM", "kept, for nothing took its place"},
                                 {"c.htm", "new"}}));
    EXPECT_FALSE(stagingIsThere());
}

TEST_F(StagedReplacementTest, fileThatCannotBeStagedIsLeftOutOfTheCommit) {
    writeTarget("a.htm", "old");
    {
        StagedReplacement replacement(m_target);
        ASSERT_TRUE(replacement.begin().ok());
        EXPECT_FALSE(replacement.stage(m_scratch / "missing", "a.htm").ok());
        EXPECT_FALSE(replacement.stage(source("long", "new"), std::string(256, 'x')).ok());
        EXPECT_TRUE(replacement.stage(source("b.htm", "new"), "b.htm").ok());
        EXPECT_TRUE(replacement.commit({"a.htm"}).empty());
    }
    EXPECT_EQ(target(), (FileMap{{"a.htm", "old"}, {"b.htm", "new"}}));
}

TEST_F(StagedReplacementTest, fullDiskIsNoticedWhileStaging) {
    writeTarget("a.htm", "old");
    const std::string large = source("large", std::string(70'000, 'x'));
    {
        const FileSizeLimit limit(60'000);
        StagedReplacement replacement(m_target);
        ASSERT_TRUE(replacement.begin().ok());
        EXPECT_FALSE(replacement.stage(large, "a.htm").ok());
    }
    EXPECT_EQ(target(), (FileMap{{"a.htm", "old"}}));
    EXPECT_FALSE(stagingIsThere());
}

TEST_F(StagedReplacementTest, missingFolderIsNotMade) {
    StagedReplacement replacement(m_scratch / "no");
    EXPECT_FALSE(replacement.begin().ok());
    EXPECT_FALSE(exists(m_scratch / "no"));
}

TEST_F(StagedReplacementTest, allFilesAreReplacedWhenAllCanBe) {
    writeTarget("a.htm", "old");
    writeTarget("B.HTM", "old");
    writeTarget("other.htm", "kept");
    {
        StagedReplacement replacement(m_target, ".hidden");
        ASSERT_TRUE(replacement.begin().ok());
        EXPECT_EQ(replacement.staging(), m_target + "/.hidden");
        writeFile(replacement.staging() + "/a.htm", "new");
        ASSERT_TRUE(replacement.stage(source("b.htm", "new"), "b.htm").ok());
        ASSERT_TRUE(replacement.stage(source("script.txt", "new"), "script.txt").ok());
        FolderWatch watch(m_target);
        EXPECT_TRUE(replacement.commitAllOrNothing({"a.htm", "script.txt"}).ok());
        EXPECT_EQ(watch.namesMovedIn(), (std::vector<std::string>{"b.htm", "a.htm", "script.txt"}));
        EXPECT_FALSE(replacement.keepsOld());
    }
    EXPECT_EQ(target(),
              (FileMap{{"a.htm", "new"}, {"b.htm", "new"}, {"other.htm", "kept"}, {"script.txt", "new"}}));
}

TEST_F(StagedReplacementTest, noFileIsReplacedWhenOneCannotBe) {
    writeTarget("a.htm", "old");
    writeTarget("C.HTM", "old");
    writeTarget("d.htm/inner", "kept");
    fs::create_symlink("a.htm", m_target + "/b.htm");
    const FileMap before = target();
    {
        StagedReplacement replacement(m_target);
        ASSERT_TRUE(replacement.begin().ok());
        for (const std::string_view name : {"a.htm", "b.htm", "c.htm", "d.htm", "e.htm"})
            ASSERT_TRUE(replacement.stage(source(name, "new"), std::string(name)).ok());
        const Outcome outcome = replacement.commitAllOrNothing({"d.htm"});
        EXPECT_EQ(outcome.message(), "cannot replace " + m_target + "/d.htm: Is a directory");
        EXPECT_FALSE(replacement.keepsOld());
    }
    EXPECT_EQ(target(), before);
    EXPECT_TRUE(fs::is_symlink(m_target + "/b.htm"));
    EXPECT_FALSE(stagingIsThere());
}

TEST_F(StagedReplacementTest, newFolderIsThereOnlyWhenCommitted) {
    const std::string folder = m_scratch / "new";
    {
        StagedReplacement givenUp(folder);
        ASSERT_TRUE(givenUp.beginNew().ok());
        ASSERT_TRUE(givenUp.stage(source("a.htm", "new"), "a.htm").ok());
        EXPECT_FALSE(exists(folder));
    }
    EXPECT_FALSE(exists(folder));
    {
        StagedReplacement replacement(folder);
        ASSERT_TRUE(replacement.beginNew().ok());
        ASSERT_TRUE(replacement.stage(source("a.htm", "new"), "a.htm").ok());
        EXPECT_TRUE(replacement.commitAllOrNothing({}).ok());
    }
    EXPECT_EQ(folderContents(folder), (FileMap{{"a.htm", "new"}}));
    EXPECT_FALSE(exists(m_scratch / ".wendmark-save"));
}

TEST_F(StagedReplacementTest, folderThatIsThereIsNoNewOne) {
    writeTarget("a.htm", "old");
    fs::create_symlink("nowhere", m_scratch / "dangling");
    for (const std::string& folder : {m_target, m_scratch / "dangling"}) {
        StagedReplacement replacement(folder);
        EXPECT_EQ(replacement.beginNew().message(), "cannot create the folder " + folder + ": File exists");
    }
    EXPECT_EQ(target(), (FileMap{{"a.htm", "old"}}));
}

} // namespace
} // namespace wendmark
