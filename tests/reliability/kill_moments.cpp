#include "base/Files.h"
#include "model/ScriptFile.h"
#include "model/TourModel.h"
#include "recovery/RecoveryStore.h"
#include "reliability/Report.h"
#include "support/ScratchFolder.h"
#include "support/TestTour.h"

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <random>
#include <set>
#include <sstream>
#include <sys/wait.h>
#include <vector>

namespace wendmark::test {

namespace {

/// Looks of the recovery that begin after a change and before the kill. The first one keeps the change, and
/// is over when the second begins. How much time lies between two looks is up to the machine.
constexpr int mostLooks = 1;

struct Moment {
    char kind = 0;
    std::int64_t time = 0;
    std::string state;
    int looksBefore = 0; ///< Of the recovery.
};

/// What an author has said.
struct Said {
    std::vector<Moment> moments;
    int looks = 0;
};

/// A process that is started to be killed, and what it says until then.
class Victim final {
public:
    explicit Victim(const std::vector<std::string>& words) {
        int ends[2];
        if (pipe(ends) != 0)
            throw std::runtime_error("no pipe");
        m_process = fork();
        if (m_process == 0) {
            dup2(ends[1], STDOUT_FILENO);
            close(ends[0]);
            close(ends[1]);
            std::vector<char*> arguments;
            for (const std::string& word : words)
                arguments.push_back(const_cast<char*>(word.c_str()));
            arguments.push_back(nullptr);
            execv(arguments[0], arguments.data());
            _exit(127);
        }
        close(ends[1]);
        m_output = ends[0];
    }
    ~Victim() { close(m_output); }
    Victim(const Victim&) = delete;
    Victim& operator=(const Victim&) = delete;

    /// Until its first line is there; false when it ends before.
    bool waitForFirstLine() {
        while (m_said.find('\n') == std::string::npos) {
            if (!readMore())
                return false;
        }
        return true;
    }

    void waitForEnd() {
        while (readMore()) {
        }
        waitpid(m_process, &m_status, 0);
    }

    /// The time at which it was killed. Everything that it has said is then read.
    std::int64_t kill() {
        const std::int64_t time = timeNow();
        ::kill(m_process, SIGKILL);
        waitForEnd();
        return time;
    }

    /// Whether it was alive to be killed.
    bool wasKilled() const { return WIFSIGNALED(m_status) && WTERMSIG(m_status) == SIGKILL; }

    const std::string& said() const { return m_said; }

private:
    bool readMore() {
        char block[65536];
        const ssize_t count = read(m_output, block, sizeof block);
        if (count > 0)
            m_said.append(block, static_cast<std::size_t>(count));
        return count > 0;
    }

    pid_t m_process = -1;
    int m_output = -1;
    int m_status = 0;
    std::string m_said;
};

Said readSaid(const std::string& text) {
    Said said;
    std::istringstream lines(text.substr(0, text.rfind('\n') + 1));
    for (std::string line; std::getline(lines, line);) {
        Moment moment;
        std::istringstream(line) >> moment.kind >> moment.time >> moment.state;
        moment.looksBefore = said.looks;
        if (moment.kind == 'L')
            ++said.looks;
        else
            said.moments.push_back(moment);
    }
    return said;
}

int stopsNamedIn(const std::string& frameset) {
    const std::size_t at = frameset.find("numStops = ");
    return at == std::string::npos ? -1 : std::atoi(frameset.c_str() + at + 11);
}

/// Why a visitor cannot play the tour in this folder, or an author open it; empty when both can.
std::string damageOf(const std::string& folder) {
    std::string script;
    try {
        script = readFile(folder + "/script.txt");
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    TourModel model;
    int errors = 0;
    parseScript(script, model, [&](int, std::string_view) { ++errors; });
    if (errors > 0 || model.stopCount() < 1 || model.tourTitle.empty())
        return "the script is damaged";
    for (const std::string name : {"playtour.htm", "framever.htm", "fv1.htm"}) {
        if (!exists(folder + "/" + name))
            continue;
        const std::string frameset = readFile(folder + "/" + name);
        const int stops = stopsNamedIn(frameset);
        if (stops < 1 || frameset.find("</html>") == std::string::npos)
            return name + " is damaged";
        for (int n = 1; n <= stops; ++n) {
            const std::string page = folder + "/page" + std::to_string(n) + ".htm";
            if (!exists(page) || readFile(page).find("</html>") == std::string::npos)
                return page + " is missing or damaged, and " + name + " names it";
        }
    }
    return {};
}

/// Kills an author with real windows again and again, and counts.
class AuthorKills final {
public:
    void run(unsigned seed) {
        const ScratchFolder scratch;
        const std::string app = scratch / "Wendmark";
        setenv("WENDMARK_SCRATCH_FOLDER", app.c_str(), 1);
        Victim author({WENDMARK_KILLED_AUTHOR, std::to_string(seed)});
        unsetenv("WENDMARK_SCRATCH_FOLDER");
        if (!author.waitForFirstLine()) {
            fail("the author did not start");
            author.kill();
            return;
        }
        std::minstd_rand random(seed);
        usleep(static_cast<useconds_t>(random() % 3000) * 1000);
        const std::int64_t killed = author.kill();
        ++m_runs;
        if (!author.wasKilled())
            fail("the author ended by itself");
        if (const std::string damage = damageOf(app + "/MyTours/walk"); !damage.empty())
            fail("tour lost: " + damage);
        judge(readSaid(author.said()), killed, app);
    }

    int runs() const { return m_runs; }
    int failures() const { return m_failures; }
    std::int64_t longestLoss() const { return m_longestLoss; }
    int recovered() const { return m_recovered; }

private:
    void fail(const std::string& what) {
        ++m_failures;
        std::cout << "FAILED in run " << m_runs << ": " << what << std::endl;
    }

    /// Finds the reported state that could be recovered and looks how often the recovery could have kept the
    /// first one after it.
    void judge(const Said& said, std::int64_t killed, const std::string& app) {
        const std::vector<Moment>& moments = said.moments;
        const std::vector<RecoverySession> left = RecoveryStore(app + "/state/recovery", m_log).leftovers();
        std::ptrdiff_t had = -1;
        if (left.empty()) {
            had = lastIndex(moments, [](const Moment& moment) { return moment.kind == 'C'; });
        } else {
            ++m_recovered;
            const std::string state = stateOf(left.front().record);
            had = lastIndex(moments, [&](const Moment& moment) { return moment.state == state; });
            // Killed inside a command: its outcome was kept and not yet reported.
            if (had < 0 && moments.back().kind == 'B')
                return;
        }
        if (had < 0) {
            fail("what was kept is no state that the author was in");
            return;
        }
        const auto last = static_cast<std::ptrdiff_t>(moments.size());
        for (std::ptrdiff_t i = had + 1; i < last; ++i) {
            const Moment& moment = moments[static_cast<std::size_t>(i)];
            if (moment.kind == 'B' || moment.state == moments[static_cast<std::size_t>(had)].state)
                continue;
            m_longestLoss = std::max(m_longestLoss, killed - moment.time);
            if (const int looks = said.looks - moment.looksBefore; looks > mostLooks)
                fail("work lost that the recovery has looked at " + std::to_string(looks) + " times");
            return;
        }
    }

    template <typename Fits>
    static std::ptrdiff_t lastIndex(const std::vector<Moment>& moments, Fits fits) {
        for (std::ptrdiff_t i = static_cast<std::ptrdiff_t>(moments.size()) - 1; i >= 0; --i) {
            if (fits(moments[static_cast<std::size_t>(i)]))
                return i;
        }
        return -1;
    }

    RecordingLog m_log;
    int m_runs = 0;
    int m_failures = 0;
    int m_recovered = 0;
    std::int64_t m_longestLoss = 0;
};

/// Kills the companion while it publishes over a published tour, first a shorter and then a longer one.
class PublishKills final {
public:
    PublishKills() {
        for (const int stops : {3, 8})
            writeFile(tourOf(stops) + "/script.txt", scriptOf(stops));
        publish(3, -1);
        for (const auto& [name, bytes] : folderContents(m_target))
            m_ours.insert(name);
        writeFile(m_target + "/notes.doc", "not ours");
        writeFile(m_target + "/sub/notes.doc", "not ours");
    }

    void run(unsigned seed) {
        std::minstd_rand random(seed);
        random();
        m_killed += publish(seed % 2 == 0 ? 3 : 8, static_cast<int>(random() % 14000)) ? 1 : 0;
        ++m_runs;
        std::string damage = damageOf(m_target);
        for (const std::string name : {"/notes.doc", "/sub/notes.doc"}) {
            if (readFile(m_target + name) != "not ours")
                damage = "a file that is not the tour's was changed";
        }
        if (damage.empty())
            return;
        ++m_failures;
        std::cout << "FAILED in publishing " << m_runs << ": " << damage << std::endl;
    }

    int runs() const { return m_runs; }
    int killed() const { return m_killed; }
    int failures() const { return m_failures; }

private:
    std::string tourOf(int stops) const { return m_scratch / ("tour" + std::to_string(stops)); }

    static std::string scriptOf(int stops) {
        std::string script = "\r\nTour of " + std::to_string(stops) + "\r\n\r\n";
        for (int n = 1; n <= stops; ++n)
            script += "<<<VoskInfo>>> Stop\r\nStop\r\nhttps://www.brenholt.example/\r\n\r\nWords.\r\n\r\nGo "
                      "on.\r\n\r\n";
        return script;
    }

    /// Kills it after that many microseconds, never if that is negative. True when it was killed.
    bool publish(int stops, int microseconds) {
        Victim companion({WENDMARK_TOUR, "publish", tourOf(stops), "--into", m_target});
        if (microseconds < 0) {
            companion.waitForEnd();
            return false;
        }
        usleep(static_cast<useconds_t>(microseconds));
        companion.kill();
        return companion.wasKilled();
    }

    ScratchFolder m_scratch;
    std::string m_target = m_scratch / "www";
    std::set<std::string> m_ours;
    int m_runs = 0;
    int m_killed = 0;
    int m_failures = 0;
};

int runAll(int authorKills, int publishKills, unsigned seed) {
    AuthorKills authors;
    for (int i = 0; i < authorKills; ++i)
        authors.run(seed + static_cast<unsigned>(i));
    PublishKills companions;
    for (int i = 0; i < publishKills; ++i)
        companions.run(seed + static_cast<unsigned>(i));
    std::cout << "author killed while editing and saving: " << authors.runs()
              << " times, of these with work to recover " << authors.recovered() << ", longest work lost "
              << authors.longestLoss() << " ms, failures " << authors.failures()
              << "\nkilled while publishing: " << companions.killed() << " of " << companions.runs()
              << " runs, failures " << companions.failures() << std::endl;
    const bool enough = authors.runs() == authorKills && (publishKills == 0 || companions.killed() > 0);
    return enough && authors.failures() + companions.failures() == 0 ? 0 : 1;
}

} // namespace

} // namespace wendmark::test

/// Arguments: how often an author is killed, how often the companion, and the first seed.
int main(int argc, char* argv[]) {
    const auto number = [&](int i, int otherwise) { return argc > i ? std::atoi(argv[i]) : otherwise; };
    return wendmark::test::runAll(number(1, 1000), number(2, 1000), static_cast<unsigned>(number(3, 1)));
}
