#include "commands/TourCommands.h"
#include "model/ScriptFile.h"
#include "support/TestTour.h"
#include "tour_cli/ProgramRun.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>

/// Every call on files of a whole session fails once, and nothing that was there may be lost. By default only
/// some of the calls fail, with one error; the environment asks for more: FAULT_STEP (1: every call) and
/// FAULT_ERRORS (1: all errors).
namespace wendmark::test {
namespace {

namespace fs = std::filesystem;

using Files = std::map<std::string, std::string>;

struct Stop {
    std::string title;
    std::string address;
    std::string narration;

    friend bool operator==(const Stop&, const Stop&) = default;
};
using Stops = std::vector<Stop>;

Stops stopsOf(const TourModel& model) {
    Stops stops;
    for (int n = 0; n < std::min<int>(model.stopCount(), tourCapacity); ++n) {
        const auto i = static_cast<std::size_t>(n);
        stops.push_back({model.stops.at(i + 1).stopTitle, model.stops.at(i + 1).stopURL,
                         model.stops.at(i + 1).stopNarration});
    }
    return stops;
}

std::string numberedScript(const std::string& title, int stops) {
    std::string script = title + "\r\n\r\n";
    for (int n = 1; n <= stops; ++n)
        script += title + " " + std::to_string(n) + "\r\nhttp://" + title + ".example/" + std::to_string(n) +
                  "\r\n\r\nWords.\r\n\r\nDo it.\r\n\r\n";
    return script;
}

bool isHtml(const std::string& name) {
    return name.ends_with(".htm");
}

/// Whether a generated file ends as it should; the words of a tour may be those of all languages.
bool isWhole(const std::string& name, const std::string& bytes) {
    const bool isWords = name.ends_with("/tourwords.js");
    return (isHtml(name) && bytes.find("</html>") != std::string::npos) ||
           (isWords && bytes.ends_with("//languages end\r\n"));
}

bool isOwnScratch(const std::string& name) {
    return name.starts_with(".wendmark") || name.find("/.wendmark") != std::string::npos;
}

int numberIn(const std::string& variable, int otherwise) {
    const char* const value = std::getenv(variable.c_str());
    return value == nullptr ? otherwise : std::atoi(value);
}

/// What one run did, with one call failing.
struct FaultyRun {
    ProgramResult result;
    std::string failedCall; ///< "change rename /path" or "look stat /path"; empty when there was none.
    long calls = 0;
};

struct Totals {
    long calls = 0;
    long runs = 0;
    long told = 0;
    long lost = 0;
    long leftBehind = 0;
    std::map<std::string, long> untold; ///< By the kind of call.
};

class FaultsTest : public ::testing::Test {
protected:
    /// Thousands of tours are written here, each file over an old one: in memory that takes a twentieth of
    /// the time.
    static void SetUpTestSuite() {
        std::error_code error;
        if (fs::is_directory("/dev/shm", error) && fs::space("/dev/shm", error).available > 100'000'000U)
            setenv("TMPDIR", "/dev/shm", 0);
    }

    FaultsTest() {
        fs::create_directory(pristine);
        fs::copy(WENDMARK_ASSETS "/Template", pristine + "/Template");
        makeTour("desert", 3);
        makeTour("garden", 5);
        makeTour("harbour", 2);
        writeFile(pristine + "/MyTours/empty/notes.doc", "An empty folder but for this.");
        renew();
        before = folderContents(world);
    }

    /// A published tour, among files that are not a tour's.
    void makeTour(const std::string& name, int stops) const {
        const std::string folder = pristine + "/MyTours/" + name;
        writeFile(folder + "/script.txt", numberedScript(name, stops));
        writeFile(folder + "/photo.gif", std::string(9000, 'x'));
        const ProgramResult made =
            ProgramRun(WENDMARK_TOUR).run({"publish", folder, "--template", pristine + "/Template"});
        if (made.status != 0)
            throw std::runtime_error("no tour to begin with: " + made.errors);
        writeFile(folder + "/notes.doc", std::string(5000, 'n') + name);
        writeFile(folder + "/papers/letter.txt", "Dear " + name);
    }

    void renew() const {
        fs::remove_all(world);
        fs::copy(pristine, world, fs::copy_options::recursive);
    }

    std::string tour(const std::string& name) const { return world + "/MyTours/" + name; }

    FaultyRun run(const std::string& program, const std::vector<std::string>& arguments, long failAt,
                  int error, const std::string& lasts = "none") const {
        const std::string report = scratch / "report";
        fs::remove(report);
        renew();
        FaultyRun faulty;
        faulty.result = ProgramRun(program)
                            .with("LD_PRELOAD", WENDMARK_FAIL_CALLS)
                            .with("FAIL_BELOW", world)
                            .with("FAIL_AT", std::to_string(failAt))
                            .with("FAIL_ERROR", std::to_string(error))
                            .with("FAIL_LASTS", lasts)
                            .with("FAIL_REPORT", report)
                            .run(arguments);
        std::istringstream lines(exists(report) ? readFile(report) : "");
        for (std::string line; std::getline(lines, line);) {
            if (line.starts_with("failed "))
                faulty.failedCall = line.substr(7);
            else if (line.starts_with("calls "))
                faulty.calls = std::stol(line.substr(6));
        }
        return faulty;
    }

    FaultyRun runAuthor(long failAt, int error, const std::string& lasts = "none") const {
        return run(WENDMARK_AUTHOR, {world, tour("desert"), tour("garden"), tour("new")}, failAt, error,
                   lasts);
    }

    /// Opens the tour as the program does, elsewhere and without faults.
    static Stops openedStops(const std::string& folder, std::string& problem) {
        TestTour program;
        program.useShippedTemplates();
        program.workspace.initTourDefaults();
        program.workspace.setTourPath(folder);
        openTour(program.context);
        if (!program.log.failures.empty())
            problem = "does not open: " + program.log.failures.front();
        else if (!program.desktop.lineErrors.empty())
            problem = "does not open: " + program.desktop.lineErrors.front();
        return stopsOf(program.model);
    }

    static Stops scriptStops(const std::string& bytes) {
        TourModel model;
        parseScript(bytes, model, [](int, std::string_view) {});
        return stopsOf(model);
    }

    /// What was lost of a tour that was there before; empty when nothing was. `stops` are the lists that it
    /// may have, `after` what the files of the world are after a run without faults.
    std::string lossIn(const std::string& name, const std::vector<Stops>& stops, const Files& after,
                       const Files& now) const {
        const std::string inWorld = "MyTours/" + name + "/";
        const auto file = [&](const std::string& path) {
            const auto found = now.find(inWorld + path);
            return found == now.end() ? std::string() : found->second;
        };
        std::string problem;
        const Stops opened = openedStops(tour(name), problem);
        if (!problem.empty())
            return name + " " + problem;
        if (std::find(stops.begin(), stops.end(), opened) == stops.end())
            return name + " has other stops than before or after: " + std::to_string(opened.size());
        const std::string frameset = file("playtour.htm");
        const std::size_t count = frameset.find("numStops = ");
        if (count == std::string::npos)
            return name + ": playtour.htm has no number of stops";
        const int played = std::atoi(frameset.c_str() + count + std::string("numStops = ").size());
        for (int n = 1; n <= std::max<int>(played, static_cast<int>(opened.size())); ++n) {
            if (file("page" + std::to_string(n) + ".htm").find("</html>") == std::string::npos)
                return name + ": page " + std::to_string(n) + " of " + std::to_string(played) +
                       " is not there";
        }
        return lostFile(inWorld, after, now);
    }

    /// A file below the folder that was there before and is now neither what it was nor what it becomes.
    std::string lostFile(const std::string& folder, const Files& after, const Files& now) const {
        for (const auto& [path, bytes] : before) {
            if (!path.starts_with(folder))
                continue;
            const auto found = now.find(path);
            if (found == now.end())
                return path + " is gone";
            if (found->second == bytes || (after.contains(path) && found->second == after.at(path)))
                continue;
            const bool written = path.ends_with("/script.txt") || path.ends_with("/link.txt");
            if (!isWhole(path, found->second) && !written)
                return path + " is damaged";
        }
        return {};
    }

    /// What was lost of everything that was there before an author's session.
    std::string lossAfterSession(const Files& after) const {
        const Files now = folderContents(world);
        const auto stopsIn = [](const Files& files, const std::string& name) {
            return scriptStops(files.at("MyTours/" + name + "/script.txt"));
        };
        for (const std::string name : {"desert", "garden", "harbour"}) {
            std::string loss = lossIn(name, {stopsIn(before, name), stopsIn(after, name)}, after, now);
            if (!loss.empty())
                return loss;
        }
        std::string loss = lostFile("Template/", after, now);
        return loss.empty() ? lostFile("MyTours/", after, now) : loss;
    }

    void count(Totals& totals, const FaultyRun& faulty, const std::string& loss, bool told) const {
        ++totals.runs;
        if (told)
            ++totals.told;
        else
            ++totals.untold[faulty.failedCall.substr(0, faulty.failedCall.find('/'))];
        if (!loss.empty() && ++totals.lost <= 40)
            std::printf("LOSS %s\n  after %s\n", loss.c_str(), faulty.failedCall.c_str());
        for (const auto& [path, bytes] : folderContents(world)) {
            if (isOwnScratch(path)) {
                ++totals.leftBehind;
                break;
            }
        }
    }

    static void print(const char* what, const Totals& totals) {
        std::printf("%s: %ld calls, %ld runs, %ld told, %ld with something left behind, %ld losses\n", what,
                    totals.calls, totals.runs, totals.told, totals.leftBehind, totals.lost);
        for (const auto& [call, times] : totals.untold)
            std::printf("  told of nothing: %s%ld times\n", call.c_str(), times);
    }

    /// Whether a change that failed may go without a word: what the program removes is its own.
    static bool mayBeUntold(const std::string& failedCall) {
        return failedCall.starts_with("look ") || failedCall.find("/.wendmark") != std::string::npos;
    }

    static std::vector<int> errors() {
        return numberIn("FAULT_ERRORS", 0) != 0 ? std::vector<int>{EIO, ENOSPC, EACCES}
                                                : std::vector<int>{EIO};
    }

    static long step() { return numberIn("FAULT_STEP", 11); }

    ScratchFolder scratch;
    std::string pristine = scratch / "pristine";
    std::string world = scratch / "world";
    Files before;
};

std::set<std::string> linesIn(const std::string& text) {
    std::set<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.insert(line);
    return lines;
}

TEST_F(FaultsTest, authorsSession) {
    const FaultyRun whole = runAuthor(0, EIO);
    ASSERT_EQ(whole.result.status, 0);
    const Files after = folderContents(world);
    ASSERT_EQ(lossAfterSession(after), "");
    ASSERT_EQ(after.at("MyTours/garden/script.txt"), after.at("MyTours/desert/script.txt"));
    ASSERT_NE(after.at("MyTours/desert/script.txt"), before.at("MyTours/desert/script.txt"));
    ASSERT_TRUE(after.contains("MyTours/new/script.txt"));
    const std::set<std::string> usual = linesIn(whole.result.output);
    Totals totals;
    totals.calls = whole.calls;
    ASSERT_GT(whole.calls, 1000);
    for (const int error : errors()) {
        for (long n = 1; n <= whole.calls; n += step()) {
            const FaultyRun faulty = runAuthor(n, error);
            EXPECT_EQ(faulty.result.status, 0) << "call " << n << ": " << faulty.failedCall;
            EXPECT_NE(faulty.failedCall, "") << "call " << n;
            const std::set<std::string> lines = linesIn(faulty.result.output);
            const bool told = !std::includes(usual.begin(), usual.end(), lines.begin(), lines.end());
            EXPECT_TRUE(told || mayBeUntold(faulty.failedCall)) << faulty.failedCall;
            count(totals, faulty, lossAfterSession(after), told);
        }
    }
    print("author's session", totals);
    EXPECT_EQ(totals.lost, 0);
}

TEST_F(FaultsTest, diskIsGoneInAnAuthorsSession) {
    const FaultyRun whole = runAuthor(0, EIO);
    const Files after = folderContents(world);
    Totals totals;
    totals.calls = whole.calls;
    for (long n = 1; n <= whole.calls; n += 3 * step()) {
        const FaultyRun faulty = runAuthor(n, EROFS, "all");
        EXPECT_EQ(faulty.result.status, 0) << "call " << n << ": " << faulty.failedCall;
        count(totals, faulty, lossAfterSession(after), true);
    }
    print("author's session, disk gone", totals);
    EXPECT_EQ(totals.lost, 0);
}

TEST_F(FaultsTest, aLossIsFound) {
    const std::vector<std::string> inPlace = {world, tour("desert"), tour("garden"), tour("new"),
                                              "--in-place"};
    const FaultyRun whole = run(WENDMARK_AUTHOR, inPlace, 0, EIO);
    ASSERT_EQ(whole.result.status, 0);
    const Files after = folderContents(world);
    ASSERT_EQ(lossAfterSession(after), "");
    long losses = 0;
    for (long n = whole.calls - 10; n <= whole.calls; ++n) {
        run(WENDMARK_AUTHOR, inPlace, n, ENOSPC);
        losses += lossAfterSession(after).empty() ? 0 : 1;
    }
    std::printf("staged losses found: %ld\n", losses);
    EXPECT_GE(losses, 2); // The write and the end of the writing.
}

class PublishFaults : public FaultsTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(PublishFaults, targetIsAllOldOrAllNew) {
    const std::string target = GetParam();
    const std::vector<std::string> arguments = {"publish",    tour("desert"), "--into",
                                                tour(target), "--template",   world + "/Template"};
    const FaultyRun whole = run(WENDMARK_TOUR, arguments, 0, EIO);
    ASSERT_EQ(whole.result.status, 0) << whole.result.errors;
    const Files after = folderContents(world);
    Totals totals;
    totals.calls = whole.calls;
    ASSERT_GT(whole.calls, 300);
    const auto withoutScratch = [](Files files) {
        std::erase_if(files, [](const auto& file) { return isOwnScratch(file.first); });
        return files;
    };
    for (const int error : errors()) {
        for (long n = 1; n <= whole.calls; n += step()) {
            const FaultyRun faulty = run(WENDMARK_TOUR, arguments, n, error);
            const Files now = withoutScratch(folderContents(world));
            EXPECT_THAT(faulty.result.status, ::testing::AnyOf(0, 1)) << faulty.failedCall;
            std::string loss;
            for (const auto& [path, bytes] : faulty.result.status == 0 ? after : before) {
                if (!now.contains(path))
                    loss = path + " is gone";
                else if (now.at(path) != bytes)
                    loss = path + " is neither old nor new";
            }
            if (loss.empty() && now.size() != (faulty.result.status == 0 ? after : before).size())
                loss = "there is a file too many";
            const bool told = faulty.result.status == 1 && !faulty.result.errors.empty();
            EXPECT_EQ(faulty.result.status == 1, told) << faulty.failedCall;
            EXPECT_TRUE(told || mayBeUntold(faulty.failedCall)) << faulty.failedCall;
            count(totals, faulty, loss, told);
        }
    }
    print(("publish into " + target).c_str(), totals);
    EXPECT_EQ(totals.lost, 0);
}

/// When neither the new files go into the folder nor all of the old ones back, they are kept beside it, and
/// the author is told where.
TEST_P(PublishFaults, oldFilesAreKeptWhenTheyDoNotGoBack) {
    const std::string target = GetParam();
    const std::vector<std::string> arguments = {"publish",    tour("desert"), "--into",
                                                tour(target), "--template",   world + "/Template"};
    const FaultyRun whole = run(WENDMARK_TOUR, arguments, 0, EIO);
    const Files after = folderContents(world);
    Totals totals;
    totals.calls = whole.calls;
    long mixed = 0;
    for (const char* lasts : {"all", "rename"}) {
        for (long n = 1 + whole.calls / 2; n <= whole.calls; n += 1 + step() / 2) {
            const FaultyRun faulty = run(WENDMARK_TOUR, arguments, n, EROFS, lasts);
            const Files now = folderContents(world);
            const bool toldWhere = faulty.result.errors.find("/.wendmark-publish-") != std::string::npos;
            std::string loss;
            for (const auto& [path, bytes] : before) {
                const auto found = now.find(path);
                if (found != now.end() && (found->second == bytes || faulty.result.status == 0))
                    continue;
                ++mixed;
                const std::string& old = bytes;
                const std::string end = "/replaced/" + fs::path(path).filename().string();
                const bool kept = std::any_of(now.begin(), now.end(), [&](const auto& file) {
                    return isOwnScratch(file.first) && file.first.ends_with(end) && file.second == old;
                });
                if (!kept || !toldWhere)
                    loss = path + (kept ? " is kept, and nobody is told where" : " is nowhere");
            }
            count(totals, faulty, loss, true);
        }
    }
    print(("publish into " + target + ", nothing goes back").c_str(), totals);
    EXPECT_EQ(totals.lost, 0);
    EXPECT_EQ(mixed > 0, target == "garden"); // A tour over itself changes nothing.
}

INSTANTIATE_TEST_SUITE_P(Targets, PublishFaults, ::testing::Values("desert", "garden", "new"),
                         [](const auto& target) { return std::string(target.param); });

} // namespace
} // namespace wendmark::test
