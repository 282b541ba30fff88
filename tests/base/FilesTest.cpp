#include "base/Files.h"

#include "support/ScratchFolder.h"
#include "support/SystemLimits.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace wendmark {
namespace {

namespace fs = std::filesystem;

using test::exists;
using test::FileSizeLimit;
using test::folderContents;
using test::readFile;
using test::UnprivilegedUser;
using test::writeFile;
using FileMap = std::map<std::string, std::string>;
using Names = std::vector<std::string>;

/// A folder "t" to work in, beside things that must not be touched.
class FilesTest : public testing::Test {
protected:
    FilesTest() { fs::create_directory(m_folder); }

    std::string path(std::string_view name) const { return m_folder + "/" + std::string(name); }
    void write(std::string_view name, std::string_view bytes) const { writeFile(path(name), bytes); }
    FileMap contents() const { return folderContents(m_folder); }

    void makePipe(std::string_view name) const { ASSERT_EQ(mkfifo(path(name).c_str(), 0600), 0); }

    /// Root may still change what it holds.
    void makeFolderReadOnly() const { fs::permissions(m_folder, fs::perms(0555)); }

    test::ScratchFolder m_scratch;
    std::string m_folder = m_scratch / "t";
};

void expectFailure(const Outcome& outcome, const std::string& message) {
    EXPECT_FALSE(outcome.ok());
    EXPECT_EQ(outcome.message(), message);
}

const std::string missing = ": No such file or directory";

TEST_F(FilesTest, joinPutsOneSeparatorBetween) {
    EXPECT_EQ(files::join("/a", "b"), "/a/b");
    EXPECT_EQ(files::join("/a/", "b"), "/a/b");
    EXPECT_EQ(files::join("/a", ""), "/a/");
    EXPECT_EQ(files::join("/", "b"), "/b");
    EXPECT_EQ(files::join("", "b"), "b");
}

TEST_F(FilesTest, everyByteIsReadAsItStands) {
    std::string bytes(200'000, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i);
    write("a", bytes);
    const files::Contents found = files::read(path("a"));
    EXPECT_TRUE(found.outcome.ok());
    EXPECT_TRUE(found.bytes == bytes);
}

TEST_F(FilesTest, fileThatIsLongerThanTheSystemSaysIsReadToItsEnd) {
    const std::string longerThanItsSize = "/proc/self/smaps";
    if (!exists(longerThanItsSize) || fs::file_size(longerThanItsSize) != 0)
        GTEST_SKIP() << "no such file on this system";
    const files::Contents found = files::read(longerThanItsSize);
    EXPECT_TRUE(found.outcome.ok());
    EXPECT_GT(found.bytes.size(), 8192U);
    EXPECT_TRUE(found.bytes.ends_with('\n'));
}

TEST_F(FilesTest, missingIsWhatIsSurelyNotThere) {
    write("A", "");
    EXPECT_TRUE(files::isMissing(path("b")));
    EXPECT_TRUE(files::isMissing(path("no/a")));
    EXPECT_FALSE(files::isMissing(path("a")));
    EXPECT_FALSE(files::isMissing(path("")));
    fs::create_symlink("loop", path("loop"));
    EXPECT_FALSE(files::isMissing(path("loop")));
}

TEST_F(FilesTest, emptyFileIsReadAsNothing) {
    write("a", "");
    EXPECT_TRUE(files::read(path("a")).outcome.ok());
    EXPECT_EQ(files::read(path("a")).bytes, "");
    EXPECT_TRUE(files::canBeRead(path("a")));
}

TEST_F(FilesTest, noMoreThanTheBeginningIsRead) {
    write("a", "0123456789");
    EXPECT_EQ(files::readBeginning(path("a"), 4).bytes, "0123");
    EXPECT_EQ(files::readBeginning(path("A"), 10).bytes, "0123456789");
    EXPECT_EQ(files::readBeginning(path("a"), 1000).bytes, "0123456789");
    EXPECT_TRUE(files::readBeginning(path("a"), 1000).outcome.ok());
    expectFailure(files::readBeginning(path("b"), 4).outcome, "cannot read " + path("b") + missing);
    EXPECT_FALSE(files::readBeginning("/dev/zero", 4).outcome.ok());
}

TEST_F(FilesTest, missingFileIsAFailureThatNamesIt) {
    expectFailure(files::read(path("a")).outcome, "cannot read " + path("a") + missing);
    expectFailure(files::read(path("no/a")).outcome, "cannot read " + path("no/a") + missing);
    EXPECT_FALSE(files::canBeRead(path("a")));
    EXPECT_FALSE(files::canBeRead(path("no/a")));
    EXPECT_FALSE(files::canBeRead(""));
}

TEST_F(FilesTest, folderIsNoFileToRead) {
    fs::create_directory(path("a"));
    expectFailure(files::read(path("a")).outcome, "cannot read " + path("a") + ": Is a directory");
    EXPECT_FALSE(files::canBeRead(path("a")));
}

TEST_F(FilesTest, fileInPlaceOfAFolderIsAFailure) {
    write("a", "x");
    expectFailure(files::read(path("a/b")).outcome, "cannot read " + path("a/b") + ": Not a directory");
}

TEST_F(FilesTest, pipesAndDevicesAreNeverWaitedFor) {
    makePipe("pipe");
    fs::create_symlink("/dev/zero", path("device"));
    fs::create_symlink("pipe", path("link to pipe"));
    for (const std::string& name :
         {path("pipe"), path("device"), path("link to pipe"), std::string("/dev/zero")}) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(files::canBeRead(name));
        expectFailure(files::read(name).outcome, "cannot read " + name + ": Operation not supported");
        EXPECT_FALSE(files::copy(name, path("copy")).ok());
        EXPECT_FALSE(files::copyNew(name, path("copy")).ok());
    }
    EXPECT_EQ(contents(), FileMap{});
}

TEST_F(FilesTest, linksAreFollowedWhenRead) {
    write("a", "x");
    fs::create_symlink("a", path("link"));
    fs::create_symlink("nowhere", path("broken"));
    fs::create_symlink("loop", path("loop"));
    EXPECT_EQ(files::read(path("link")).bytes, "x");
    EXPECT_TRUE(files::canBeRead(path("link")));
    EXPECT_FALSE(files::canBeRead(path("broken")));
    EXPECT_FALSE(files::canBeRead(path("loop")));
    EXPECT_FALSE(files::read(path("loop")).outcome.ok());
}

TEST_F(FilesTest, fileWithoutPermissionIsAFailure) {
    write("a", "x");
    fs::permissions(path("a"), fs::perms::none);
    const UnprivilegedUser nobody;
    EXPECT_FALSE(files::canBeRead(path("a")));
    expectFailure(files::read(path("a")).outcome, "cannot read " + path("a") + ": Permission denied");
}

TEST_F(FilesTest, lookUpIgnoresTheCaseOfTheName) {
    write("Script.TXT", "found");
    write("ÄŠŒŽŸ.htm", "letters");
    EXPECT_EQ(files::read(path("script.txt")).bytes, "found");
    EXPECT_EQ(files::read(path("SCRIPT.TXT")).bytes, "found");
    EXPECT_EQ(files::read(path("äšœžÿ.HTM")).bytes, "letters");
    EXPECT_TRUE(files::canBeRead(path("sCRIPT.txt")));
    EXPECT_FALSE(files::canBeRead(path("script.txt2")));
}

TEST_F(FilesTest, exactNameWinsAndElseTheFirstByItsBytes) {
    write("script.txt", "exact");
    write("SCRIPT.TXT", "first");
    write("Script.txt", "second");
    EXPECT_EQ(files::read(path("script.txt")).bytes, "exact");
    EXPECT_EQ(files::read(path("Script.txt")).bytes, "second");
    EXPECT_EQ(files::read(path("scripT.txt")).bytes, "first");
}

TEST_F(FilesTest, brokenLinkOfTheExactNameWinsToo) {
    write("Script.TXT", "other");
    fs::create_symlink("nowhere", path("script.txt"));
    EXPECT_FALSE(files::canBeRead(path("script.txt")));
    EXPECT_FALSE(files::read(path("script.txt")).outcome.ok());
}

TEST_F(FilesTest, namesWithBlanksQuotesAndAnyLettersAreNames) {
    for (const std::string_view name : {"a b", "'\"`$;|", "→😀Ж", "-rf", "a\nb", "\xE9\xFF"}) {
        EXPECT_TRUE(files::write(path(name), name).ok());
        EXPECT_EQ(files::read(path(name)).bytes, name);
    }
}

TEST_F(FilesTest, writtenFileHasExactlyTheGivenNameAndBytes) {
    const std::string bytes("\0\r\n\n\xFF", 5);
    EXPECT_TRUE(files::write(path("Page1.HTM"), bytes).ok());
    EXPECT_TRUE(files::write(path("empty"), "").ok());
    EXPECT_EQ(contents(), (FileMap{{"Page1.HTM", bytes}, {"empty", ""}}));
}

TEST_F(FilesTest, writingReplacesTheOldFile) {
    write("a", "old and longer");
    EXPECT_TRUE(files::write(path("a"), "new").ok());
    EXPECT_EQ(contents(), (FileMap{{"a", "new"}}));
}

TEST_F(FilesTest, writingReplacesALinkAndNotWhatItLeadsTo) {
    writeFile(m_scratch / "elsewhere", "kept");
    fs::create_symlink("../elsewhere", path("a"));
    EXPECT_TRUE(files::write(path("a"), "new").ok());
    EXPECT_EQ(readFile(m_scratch / "elsewhere"), "kept");
    EXPECT_EQ(contents(), (FileMap{{"a", "new"}}));
}

TEST_F(FilesTest, writingReplacesAPipeWithoutWaiting) {
    makePipe("a");
    EXPECT_TRUE(files::write(path("a"), "new").ok());
    EXPECT_EQ(contents(), (FileMap{{"a", "new"}}));
}

TEST_F(FilesTest, writtenFileCanBeWrittenAndReadAsTheSystemHasIt) {
    const mode_t former = umask(022);
    EXPECT_TRUE(files::write(path("a"), "x").ok());
    umask(former);
    EXPECT_EQ(fs::status(path("a")).permissions(), fs::perms(0644));
}

TEST_F(FilesTest, writingOverAFolderFailsAndLeavesNothing) {
    write("a/inner", "kept");
    expectFailure(files::write(path("a"), "new"), "cannot write " + path("a") + ": Is a directory");
    EXPECT_EQ(contents(), (FileMap{{"a/inner", "kept"}}));
}

TEST_F(FilesTest, writingIntoAMissingFolderFails) {
    expectFailure(files::write(path("no/a"), "new"), "cannot write " + path("no/a") + missing);
    EXPECT_FALSE(exists(path("no")));
}

TEST_F(FilesTest, writingUnderANameThatIsTooLongFailsAndLeavesNothing) {
    const std::string name(256, 'x');
    expectFailure(files::write(path(name), "new"), "cannot write " + path(name) + ": File name too long");
    EXPECT_EQ(contents(), FileMap{});
    EXPECT_TRUE(files::write(path(name.substr(1)), "new").ok());
}

TEST_F(FilesTest, fullDiskLeavesTheOldFileAndNoOther) {
    write("a", "old");
    for (const std::size_t size : {101U, 4096U, 70'000U, 1'000'000U}) {
        Outcome outcome = Outcome::success();
        {
            const FileSizeLimit limit(100);
            outcome = files::write(path("a"), std::string(size, 'x'));
        }
        expectFailure(outcome, "cannot write " + path("a") + ": File too large");
        EXPECT_EQ(contents(), (FileMap{{"a", "old"}}));
    }
    const FileSizeLimit limit(100);
    EXPECT_TRUE(files::write(path("a"), std::string(100, 'x')).ok());
}

TEST_F(FilesTest, readOnlyFolderLeavesTheOldFile) {
    write("a", "old");
    makeFolderReadOnly();
    {
        const UnprivilegedUser nobody;
        expectFailure(files::write(path("a"), "new"), "cannot write " + path("a") + ": Permission denied");
        EXPECT_FALSE(files::copy(path("a"), path("b")).ok());
        EXPECT_FALSE(files::copyNew(path("a"), path("b")).ok());
        EXPECT_FALSE(files::move(path("a"), path("b")).ok());
        EXPECT_FALSE(files::remove(path("a")).ok());
        EXPECT_FALSE(files::makeFolder(path("f")).ok());
    }
    EXPECT_EQ(contents(), (FileMap{{"a", "old"}}));
}

TEST_F(FilesTest, copyReplacesTheOldFile) {
    write("a", "new");
    write("b", "old and longer");
    EXPECT_TRUE(files::copy(path("a"), path("b")).ok());
    EXPECT_EQ(contents(), (FileMap{{"a", "new"}, {"b", "new"}}));
}

TEST_F(FilesTest, copyFindsItsSourceInAnyCase) {
    write("Page.HTM", "x");
    EXPECT_TRUE(files::copy(path("page.htm"), path("copy.htm")).ok());
    EXPECT_TRUE(files::copyNew(path("PAGE.htm"), path("new.htm")).ok());
    EXPECT_EQ(contents(), (FileMap{{"Page.HTM", "x"}, {"copy.htm", "x"}, {"new.htm", "x"}}));
}

TEST_F(FilesTest, largeAndEmptyFilesAreCopied) {
    const std::string large(3'000'000, 'x');
    write("large", large);
    write("empty", "");
    EXPECT_TRUE(files::copy(path("large"), path("b")).ok());
    EXPECT_TRUE(files::copy(path("empty"), path("c")).ok());
    EXPECT_TRUE(readFile(path("b")) == large);
    EXPECT_EQ(readFile(path("c")), "");
}

TEST_F(FilesTest, copyOfALinkIsAFile) {
    writeFile(m_scratch / "elsewhere", "x");
    fs::create_symlink("../elsewhere", path("a"));
    EXPECT_TRUE(files::copy(path("a"), path("b")).ok());
    EXPECT_FALSE(fs::is_symlink(path("b")));
    EXPECT_EQ(readFile(path("b")), "x");
}

TEST_F(FilesTest, copyReplacesALinkAndNotWhatItLeadsTo) {
    writeFile(m_scratch / "elsewhere", "kept");
    fs::create_symlink("../elsewhere", path("b"));
    write("a", "new");
    EXPECT_TRUE(files::copy(path("a"), path("b")).ok());
    EXPECT_EQ(readFile(m_scratch / "elsewhere"), "kept");
    EXPECT_EQ(contents(), (FileMap{{"a", "new"}, {"b", "new"}}));
}

TEST_F(FilesTest, copyOfAReadOnlyFileCanBeWritten) {
    write("a", "x");
    fs::permissions(path("a"), fs::perms::owner_read);
    EXPECT_TRUE(files::copy(path("a"), path("b")).ok());
    EXPECT_TRUE(files::copyNew(path("a"), path("c")).ok());
    for (const std::string_view name : {"b", "c"})
        EXPECT_NE(fs::status(path(name)).permissions() & fs::perms::owner_write, fs::perms::none);
    EXPECT_EQ(fs::status(path("a")).permissions(), fs::perms::owner_read);
}

TEST_F(FilesTest, fileIsNeverCopiedOntoItself) {
    write("a", "kept");
    fs::create_symlink("a", path("symbolic"));
    fs::create_hard_link(path("a"), path("hard"));
    for (const std::string_view to : {"a", "./a", "../t/a", "symbolic", "hard"}) {
        SCOPED_TRACE(to);
        EXPECT_FALSE(files::copy(path("a"), path(to)).ok());
    }
    EXPECT_FALSE(files::copy(path("A"), path("a")).ok());
    EXPECT_FALSE(files::copy(path("symbolic"), path("a")).ok());
    EXPECT_FALSE(files::copy(path("missing"), path("missing")).ok());
    EXPECT_TRUE(fs::is_symlink(path("symbolic")));
    EXPECT_EQ(fs::hard_link_count(path("a")), 2U);
    EXPECT_EQ(contents(), (FileMap{{"a", "kept"}, {"hard", "kept"}, {"symbolic", "kept"}}));
}

TEST_F(FilesTest, failedCopyLeavesTheOldFileAndNoOther) {
    write("old", "old");
    write("folder/inner", "kept");
    const FileMap before = contents();
    expectFailure(files::copy(path("no"), path("old")),
                  "cannot copy " + path("no") + " to " + path("old") + missing);
    EXPECT_FALSE(files::copy(path("folder"), path("old")).ok());
    EXPECT_FALSE(files::copy(path("old"), path("folder")).ok());
    EXPECT_FALSE(files::copy(path("old"), path("no/where")).ok());
    EXPECT_FALSE(files::copy(path("old"), path(std::string(256, 'x'))).ok());
    EXPECT_EQ(contents(), before);
}

TEST_F(FilesTest, fullDiskLeavesTheOldCopyAndNoOther) {
    write("old", "old");
    for (const std::size_t size : {101U, 4096U, 70'000U, 1'000'000U}) {
        SCOPED_TRACE(size);
        writeFile(m_scratch / "source", std::string(size, 'x'));
        const FileSizeLimit limit(100);
        EXPECT_FALSE(files::copy(m_scratch / "source", path("old")).ok());
        EXPECT_FALSE(files::copyNew(m_scratch / "source", path("new")).ok());
        EXPECT_EQ(contents(), (FileMap{{"old", "old"}}));
    }
}

TEST_F(FilesTest, quickReplacementWritesOverFilesLinksAndPipes) {
    constexpr auto quick = files::Replacing::oldFirst;
    writeFile(m_scratch / "elsewhere", "kept");
    write("old", "old and longer");
    fs::create_symlink("../elsewhere", path("link"));
    makePipe("pipe");
    write("source", "new");
    for (const std::string_view name : {"free", "old", "link", "pipe"}) {
        EXPECT_TRUE(files::write(path(name), "new", quick).ok());
        EXPECT_EQ(readFile(path(name)), "new");
    }
    fs::remove(path("link"));
    fs::create_symlink("../elsewhere", path("link"));
    for (const std::string_view name : {"another", "old", "link"}) {
        EXPECT_TRUE(files::copy(path("source"), path(name), quick).ok());
        EXPECT_FALSE(fs::is_symlink(path(name)));
        EXPECT_EQ(readFile(path(name)), "new");
    }
    EXPECT_EQ(readFile(m_scratch / "elsewhere"), "kept");
}

TEST_F(FilesTest, quickReplacementTakesNoFolderAway) {
    constexpr auto quick = files::Replacing::oldFirst;
    fs::create_directory(path("folder"));
    write("a", "x");
    EXPECT_FALSE(files::write(path("folder"), "new", quick).ok());
    EXPECT_FALSE(files::copy(path("a"), path("folder"), quick).ok());
    EXPECT_TRUE(fs::is_directory(path("folder")));
}

TEST_F(FilesTest, quickReplacementKeepsTheOldFileWhenThereIsNothingToCopy) {
    constexpr auto quick = files::Replacing::oldFirst;
    write("old", "old");
    EXPECT_FALSE(files::copy(path("missing"), path("old"), quick).ok());
    EXPECT_FALSE(files::copy(path("old"), path("old"), quick).ok());
    EXPECT_EQ(contents(), (FileMap{{"old", "old"}}));
}

TEST_F(FilesTest, quickReplacementLeavesNoPartOfAFile) {
    constexpr auto quick = files::Replacing::oldFirst;
    for (const std::string_view name : {"written", "copied"})
        write(name, "old");
    writeFile(m_scratch / "source", std::string(70'000, 'x'));
    const FileSizeLimit limit(100);
    EXPECT_FALSE(files::write(path("written"), std::string(70'000, 'x'), quick).ok());
    EXPECT_FALSE(files::copy(m_scratch / "source", path("copied"), quick).ok());
    EXPECT_EQ(contents(), FileMap{});
}

TEST_F(FilesTest, otherSpellingsDifferFromTheNamesOnlyInCase) {
    for (const std::string_view name :
         {"page1.htm", "Page1.HTM", "PAGE1.htm", "ÄPFEL.gif", "Other.htm", "Folder/x"})
        write(name, "x");
    EXPECT_EQ(files::otherSpellings(m_folder, {"page1.htm", "äpfel.gif", "folder", "missing"}),
              (Names{"PAGE1.htm", "Page1.HTM", "ÄPFEL.gif"}));
    EXPECT_EQ(files::otherSpellings(m_folder, {}), Names{});
    EXPECT_EQ(files::otherSpellings(path("no"), {"page1.htm"}), Names{});
}

TEST_F(FilesTest, spellingThatIsTheSameFileIsNoOther) {
    write("page1.htm", "x");
    fs::create_hard_link(path("page1.htm"), path("Page1.HTM"));
    EXPECT_EQ(files::otherSpellings(m_folder, {"page1.htm"}), Names{});
}

TEST_F(FilesTest, copyNewNeedsAFreeName) {
    write("a", "new");
    write("taken", "old");
    write("folder/inner", "kept");
    fs::create_symlink("nowhere", path("link"));
    EXPECT_TRUE(files::copyNew(path("a"), path("free")).ok());
    EXPECT_EQ(readFile(path("free")), "new");
    EXPECT_FALSE(files::copyNew(path("a"), path("taken")).ok());
    EXPECT_EQ(readFile(path("taken")), "old");
    EXPECT_FALSE(files::copyNew(path("a"), path("a")).ok());
    EXPECT_EQ(readFile(path("a")), "new");
    EXPECT_FALSE(files::copyNew(path("a"), path("folder")).ok());
    EXPECT_EQ(readFile(path("folder/inner")), "kept");
    EXPECT_FALSE(files::copyNew(path("a"), path("link")).ok());
    EXPECT_FALSE(exists(path("nowhere")));
    EXPECT_TRUE(fs::is_symlink(path("link")));
}

TEST_F(FilesTest, failedCopyNewLeavesNothing) {
    fs::create_directory(path("folder"));
    EXPECT_FALSE(files::copyNew(path("no"), path("b")).ok());
    EXPECT_FALSE(files::copyNew(path("folder"), path("b")).ok());
    EXPECT_EQ(contents(), FileMap{});
}

TEST_F(FilesTest, moveReplacesItsTarget) {
    write("a", "new");
    write("b", "old");
    EXPECT_TRUE(files::move(path("a"), path("b")).ok());
    EXPECT_EQ(contents(), (FileMap{{"b", "new"}}));
}

TEST_F(FilesTest, failedMoveLeavesBothFiles) {
    write("a", "new");
    write("b/inner", "kept");
    expectFailure(files::move(path("a"), path("b")), "cannot replace " + path("b") + ": Is a directory");
    expectFailure(files::move(path("no"), path("a")), "cannot replace " + path("a") + missing);
    EXPECT_EQ(contents(), (FileMap{{"a", "new"}, {"b/inner", "kept"}}));
}

TEST_F(FilesTest, removeTakesAwayOneFileOrLink) {
    writeFile(m_scratch / "elsewhere", "kept");
    write("a", "x");
    fs::create_symlink("../elsewhere", path("link"));
    fs::create_symlink("nowhere", path("broken"));
    for (const std::string_view name : {"a", "link", "broken"}) {
        EXPECT_TRUE(files::remove(path(name)).ok());
        EXPECT_FALSE(exists(path(name)));
    }
    EXPECT_EQ(readFile(m_scratch / "elsewhere"), "kept");
}

TEST_F(FilesTest, removeNeedsTheExactNameOfAFile) {
    write("a", "x");
    fs::create_directory(path("empty"));
    expectFailure(files::remove(path("A")), "cannot remove " + path("A") + missing);
    expectFailure(files::remove(path("empty")), "cannot remove " + path("empty") + ": Is a directory");
    EXPECT_TRUE(exists(path("a")));
    EXPECT_TRUE(exists(path("empty")));
}

TEST_F(FilesTest, makeFolderMakesOneFolderUnderAFreeName) {
    write("file", "x");
    EXPECT_TRUE(files::makeFolder(path("f")).ok());
    EXPECT_TRUE(fs::is_directory(path("f")));
    expectFailure(files::makeFolder(path("f")), "cannot create the folder " + path("f") + ": File exists");
    EXPECT_FALSE(files::makeFolder(path("file")).ok());
    EXPECT_FALSE(files::makeFolder(path("no/f")).ok());
    EXPECT_FALSE(exists(path("no")));
}

TEST_F(FilesTest, removeFolderTakesAllThatItHoldsAndFollowsNoLink) {
    write("f/a", "x");
    write("f/sub/.b", "x");
    writeFile(m_scratch / "elsewhere/a", "kept");
    fs::create_directory_symlink(m_scratch / "elsewhere", path("f/link"));
    fs::create_directory_symlink(m_scratch / "elsewhere", path("link"));
    EXPECT_TRUE(files::removeFolder(path("f")).ok());
    EXPECT_TRUE(files::removeFolder(path("link")).ok());
    EXPECT_FALSE(exists(path("f")));
    EXPECT_FALSE(exists(path("link")));
    EXPECT_EQ(readFile(m_scratch / "elsewhere/a"), "kept");
}

TEST_F(FilesTest, missingFolderIsRemovedAlready) {
    EXPECT_TRUE(files::removeFolder(path("no")).ok());
}

TEST_F(FilesTest, enterFolderChangesTheCurrentFolder) {
    EXPECT_TRUE(files::enterFolder(m_folder).ok());
    EXPECT_TRUE(fs::equivalent(fs::current_path(), m_folder));
    EXPECT_FALSE(files::enterFolder(path("no")).ok());
    EXPECT_TRUE(fs::equivalent(fs::current_path(), m_folder));
}

TEST_F(FilesTest, sameMeansOneFileUnderWhateverName) {
    write("a", "x");
    write("b", "x");
    fs::create_symlink("a", path("link"));
    EXPECT_TRUE(files::same(path("a"), path("a")));
    EXPECT_TRUE(files::same(path("a"), path("link")));
    EXPECT_TRUE(files::same(m_folder, m_folder + "/."));
    EXPECT_FALSE(files::same(path("a"), path("b")));
    EXPECT_FALSE(files::same(path("a"), path("no")));
    EXPECT_FALSE(files::same(path("no"), path("no")));
}

TEST_F(FilesTest, listNamesTheRegularFilesSortedByTheirBytes) {
    for (const std::string_view name : {"b", "a.htm", "B", "→", "Ä", ".hidden", "sub/inner"})
        write(name, "x");
    makePipe("pipe");
    const files::Listing listing = files::list(m_folder, files::Links::anywhere);
    EXPECT_TRUE(listing.outcome.ok());
    EXPECT_EQ(listing.names, (Names{"B", "a.htm", "b", "Ä", "→"}));
    EXPECT_EQ(listing.leadOut, Names{});
}

TEST_F(FilesTest, listTakesAPattern) {
    for (const std::string_view name : {"page1.htm", "PAGE2.HTM", "page10.htm", "a.gif"})
        write(name, "x");
    EXPECT_EQ(files::list(m_folder, files::Links::anywhere, "page?.htm").names,
              (Names{"PAGE2.HTM", "page1.htm"}));
    EXPECT_EQ(files::list(m_folder, files::Links::anywhere, "no*").names, Names{});
}

TEST_F(FilesTest, listLeavesOutLinksThatLeadOutWhenAsked) {
    writeFile(m_scratch / "elsewhere", "x");
    writeFile(m_scratch / "t2/near", "x");
    write("a", "x");
    write("sub/inner", "x");
    fs::create_symlink("a", path("in"));
    fs::create_symlink("in", path("in twice"));
    fs::create_symlink("sub/inner", path("in sub"));
    fs::create_symlink(path("a"), path("in absolute"));
    fs::create_symlink("../elsewhere", path("out"));
    fs::create_symlink("out", path("out twice"));
    fs::create_symlink("../t2/near", path("out to a folder of like name"));
    fs::create_symlink("sub/../../elsewhere", path("out by detour"));
    fs::create_symlink("/dev/zero", path("device"));
    fs::create_symlink("..", path("folder"));
    fs::create_symlink("nowhere", path("broken"));

    const files::Listing inside = files::list(m_folder, files::Links::insideFolder);
    EXPECT_EQ(inside.names, (Names{"a", "in", "in absolute", "in sub", "in twice"}));
    EXPECT_EQ(inside.leadOut, (Names{"device", "folder", "out", "out by detour",
                                     "out to a folder of like name", "out twice"}));

    const files::Listing anywhere = files::list(m_folder, files::Links::anywhere);
    EXPECT_EQ(anywhere.names, (Names{"a", "in", "in absolute", "in sub", "in twice", "out", "out by detour",
                                     "out to a folder of like name", "out twice"}));
    EXPECT_EQ(anywhere.leadOut, Names{});
}

TEST_F(FilesTest, linksInsideAFolderThatIsReachedByALinkStayInside) {
    write("a", "x");
    fs::create_symlink("a", path("in"));
    fs::create_directory_symlink(m_folder, m_scratch / "alias");
    const files::Listing listing = files::list(m_scratch / "alias/", files::Links::insideFolder);
    EXPECT_EQ(listing.names, (Names{"a", "in"}));
    EXPECT_EQ(listing.leadOut, Names{});
}

TEST_F(FilesTest, folderThatCannotBeListedIsAFailure) {
    write("file", "x");
    expectFailure(files::list(path("no"), files::Links::anywhere).outcome,
                  "cannot list " + path("no") + missing);
    EXPECT_FALSE(files::list(path("file"), files::Links::anywhere).outcome.ok());
    EXPECT_FALSE(files::list("", files::Links::anywhere).outcome.ok());
    EXPECT_FALSE(files::listRemovable(path("no")).outcome.ok());
}

TEST_F(FilesTest, everythingButFoldersIsRemovable) {
    write(".hidden", "x");
    write("a", "x");
    write("sub/inner", "x");
    makePipe("pipe");
    fs::create_symlink("nowhere", path("broken"));
    fs::create_symlink("sub", path("link to folder"));
    EXPECT_EQ(files::listRemovable(m_folder).names,
              (Names{".hidden", "a", "broken", "link to folder", "pipe"}));
}

} // namespace
} // namespace wendmark
