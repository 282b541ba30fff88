#include "platform/Gate.h"
#include "platform/RecentTours.h"
#include "ui/main/FileCommands.h"
#include "ui/narration/frmNarEdit.h"
#include "ui/site/frmBrowser.h"
#include "ui/support/HurriedAuthor.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>
#include <vector>

namespace wendmark {

using test::HurriedAuthor;
using test::UiFixture;

namespace {

using Act = void (*)(HurriedAuthor&);
using Belongings = std::map<std::string, std::string>;

/// What is needed before a command can be given.
enum class Needs { nothing, siteEditor, narrationEditor, findWindow, undone, changed };

struct Command {
    const char* name = nullptr;
    Act give = nullptr;
    Needs needs = Needs::nothing;
};

/// How it shows that a command waits.
enum class Wait {
    closed,      ///< Nothing else may run.
    turn,        ///< The same, in the turns that a long command gives the windows.
    lookThrough, ///< It changes nothing, and looks run.
    dialog       ///< It asks something.
};

struct WaitingCommand {
    Command command;
    Wait wait = Wait::closed;
};

void useSite(HurriedAuthor& author) {
    author.siteButton("Yes");
}

void closeMain(HurriedAuthor& author) {
    HurriedAuthor::askToClose(&author.window);
}

/// The sample, whatever tour the other command works on.
void openRecent(HurriedAuthor& author) {
    RecentTours(author.program.settings)
        .note(author.program.path(QStringLiteral("MyTours/Sample")), QStringLiteral("Sample"),
              QDateTime::currentDateTime());
    QMenu* const menu = author.window.findChild<QAction*>(QStringLiteral("mnuFileRecent"))->menu();
    emit menu->aboutToShow(); // Which fills it.
    author.menu("recentTour1");
}

/// A second start with the sample.
void handOver(HurriedAuthor& author) {
    author.window.files().takeTours({author.program.path(QStringLiteral("MyTours/Sample"))});
}

void quit(HurriedAuthor& author) {
    author.menu("mnuFileExit");
}

void testFrame(HurriedAuthor& author) {
    author.siteButton("Test");
}

void testInWindow(HurriedAuthor& author) {
    if (const frmBrowser* const editor = author.siteEditor())
        editor->findChild<QAction*>(QStringLiteral("mnuTestFrame"))->trigger();
}

/// Every command that waits, or that is long on a long tour and then gives the windows their turn.
const WaitingCommand waitingCommands[] = {
    {{"save", [](HurriedAuthor& a) { a.button("Save"); }}, Wait::closed},
    {{"saveAs", [](HurriedAuthor& a) { a.menu("mnuFileSaveAs"); }}, Wait::closed},
    {{"new", [](HurriedAuthor& a) { a.button("New"); }}, Wait::closed},
    {{"open", [](HurriedAuthor& a) { a.button("Open"); }}, Wait::turn},
    {{"insert", [](HurriedAuthor& a) { a.button("Insert"); }}, Wait::turn},
    {{"delete", [](HurriedAuthor& a) { a.button("Delete"); }}, Wait::turn},
    {{"moveForward", [](HurriedAuthor& a) { a.button("Forward"); }}, Wait::turn},
    {{"moveBack", [](HurriedAuthor& a) { a.button("Back"); }}, Wait::turn},
    {{"undo", [](HurriedAuthor& a) { a.menu("mnuEditUndo"); }}, Wait::turn},
    {{"redo", [](HurriedAuthor& a) { a.menu("mnuEditRedo"); }, Needs::undone}, Wait::turn},
    {{"properties", [](HurriedAuthor& a) { a.button("Properties"); }}, Wait::dialog},
    {{"useSite", useSite, Needs::siteEditor}, Wait::lookThrough},
    {{"testFrame", testFrame, Needs::siteEditor}, Wait::lookThrough},
    {{"testInWindow", testInWindow, Needs::siteEditor}, Wait::lookThrough},
    {{"selectFile", [](HurriedAuthor& a) { a.siteButton("btnSelectFile"); }, Needs::siteEditor},
     Wait::closed},
    {{"addImage", [](HurriedAuthor& a) { a.narrationButton("btnImage"); }, Needs::narrationEditor},
     Wait::closed},
    {{"quit", quit}, Wait::closed},
    {{"quitAsked", closeMain, Needs::changed}, Wait::closed},
};

/// Every command that an author can give.
const Command commands[] = {
    {"new", [](HurriedAuthor& a) { a.menu("mnuFileNew"); }},
    {"open", [](HurriedAuthor& a) { a.button("Open"); }},
    {"save", [](HurriedAuthor& a) { a.button("Save"); }},
    {"saveAs", [](HurriedAuthor& a) { a.menu("mnuFileSaveAs"); }},
    {"print", [](HurriedAuthor& a) { a.button("Print"); }},
    {"openRecent", openRecent},
    {"handOver", handOver},
    {"playServed", [](HurriedAuthor& a) { a.menu("mnuFilePlayServed"); }},
    {"playFromDisk", [](HurriedAuthor& a) { a.menu("mnuFilePlayFromDisk"); }},
    {"tourFolder", [](HurriedAuthor& a) { a.menu("mnuFileFolder"); }},
    {"earlierSaves", [](HurriedAuthor& a) { a.menu("mnuFileEarlier"); }},
    {"undo", [](HurriedAuthor& a) { a.menu("mnuEditUndo"); }},
    {"redo", [](HurriedAuthor& a) { a.menu("mnuEditRedo"); }, Needs::undone},
    {"properties", [](HurriedAuthor& a) { a.menu("mnuEditProperties"); }},
    {"editSite", [](HurriedAuthor& a) { a.button("EdBro"); }},
    {"editNarration", [](HurriedAuthor& a) { a.menu("mnuEditNarration"); }},
    {"insert", [](HurriedAuthor& a) { a.button("Insert"); }},
    {"delete", [](HurriedAuthor& a) { a.button("Delete"); }},
    {"moveForward", [](HurriedAuthor& a) { a.button("Forward"); }},
    {"moveBack", [](HurriedAuthor& a) { a.menu("mnuStopsBack"); }},
    {"listInsert", [](HurriedAuthor& a) { a.menu("listInsert"); }},
    {"listDuplicate", [](HurriedAuthor& a) { a.menu("listDuplicate"); }},
    {"listDelete", [](HurriedAuthor& a) { a.menu("listDelete"); }},
    {"findNext", [](HurriedAuthor& a) { a.findButton("btnFindNext"); }, Needs::findWindow},
    {"replace", [](HurriedAuthor& a) { a.findButton("btnReplace"); }, Needs::findWindow},
    {"replaceAll", [](HurriedAuthor& a) { a.findButton("btnReplaceAll"); }, Needs::findWindow},
    {"previous", [](HurriedAuthor& a) { a.button("Prev"); }},
    {"next", [](HurriedAuthor& a) { a.button("Next"); }},
    {"stopLoading", [](HurriedAuthor& a) { a.button("Stop"); }},
    {"refresh", [](HurriedAuthor& a) { a.menu("mnuViewRefresh"); }},
    {"options", [](HurriedAuthor& a) { a.menu("mnuViewOptions"); }},
    {"launching", [](HurriedAuthor& a) { a.menu("mnuViewLaunch"); }},
    {"help", [](HurriedAuthor& a) { a.button("Help"); }},
    {"about", [](HurriedAuthor& a) { a.menu("mnuHelpAbout"); }},
    {"apply",
     [](HurriedAuthor& a) {
         a.typeTitle(QStringLiteral("Applied"));
         a.narrationButton("btnOK");
     },
     Needs::narrationEditor},
    {"addImage", [](HurriedAuthor& a) { a.narrationButton("btnImage"); }, Needs::narrationEditor},
    {"escapeNarration", [](HurriedAuthor& a) { a.escape(a.narrationEditor()); }, Needs::narrationEditor},
    {"closeNarration", [](HurriedAuthor& a) { HurriedAuthor::askToClose(a.narrationEditor()); },
     Needs::narrationEditor},
    {"useSite", useSite, Needs::siteEditor},
    {"testFrame", testFrame, Needs::siteEditor},
    {"testInWindow", testInWindow, Needs::siteEditor},
    {"selectFile", [](HurriedAuthor& a) { a.siteButton("btnSelectFile"); }, Needs::siteEditor},
    {"goToAddress", [](HurriedAuthor& a) { a.typeAddress(a.server.address(QStringLiteral("/plain.htm"))); },
     Needs::siteEditor},
    {"remember", [](HurriedAuthor& a) { a.siteButton("btnSave"); }, Needs::siteEditor},
    {"escapeSite", [](HurriedAuthor& a) { a.escape(a.siteEditor()); }, Needs::siteEditor},
    {"closeSite", [](HurriedAuthor& a) { HurriedAuthor::askToClose(a.siteEditor()); }, Needs::siteEditor},
    {"close", closeMain},
    {"closeAndStay",
     [](HurriedAuthor& a) {
         a.quitAnswer = QStringLiteral("No");
         closeMain(a);
     }},
    {"quit", quit},
};

/// What a command means that is given while another one waits.
enum class Meaning {
    afterwards, ///< It runs when the other one has ended.
    atOnce,     ///< It runs while the other one waits, with no effect on what that does.
    ahead,      ///< The same, and its step comes before the other one's.
    givesUp,    ///< The other one gives up and changes nothing more; then it runs.
    endsIt,     ///< All that it does is that the other one gives up.
    notTaken    ///< It is not there to be given, or there is nothing left to give it to.
};

struct Exception {
    std::string_view waiting;
    std::string_view command; ///< "*" for every one.
    Meaning meaning = Meaning::afterwards;
    const char* said = ""; ///< What the program says about it.
};

constexpr const char* timedOut = "Test Timed out.... try again later";

/// All pairs whose command does not just run afterwards.
constexpr Exception exceptions[] = {
    // The program ends: there is no tour any more.
    {"quit", "*", Meaning::notTaken},
    {"quitAsked", "*", Meaning::notTaken},
    // A frame test changes nothing: what looks at the tour runs meanwhile, and bookmarks live. (So does
    // Refresh, which leaves nothing to tell it by.)
    {"useSite", "next", Meaning::atOnce},
    {"useSite", "previous", Meaning::atOnce},
    {"useSite", "findNext", Meaning::atOnce},
    {"useSite", "remember", Meaning::ahead},
    {"testFrame", "next", Meaning::atOnce},
    {"testFrame", "previous", Meaning::atOnce},
    {"testFrame", "findNext", Meaning::atOnce},
    {"testFrame", "remember", Meaning::ahead},
    {"testInWindow", "next", Meaning::atOnce},
    {"testInWindow", "previous", Meaning::atOnce},
    {"testInWindow", "findNext", Meaning::atOnce},
    {"testInWindow", "remember", Meaning::ahead},
    // Of a page that the author leaves there is no verdict.
    {"useSite", "goToAddress", Meaning::givesUp},
    {"testFrame", "goToAddress", Meaning::givesUp},
    // Esc is "No" to the test's question, closing its window ends it without a word. The test in a window of
    // its own keeps Esc from the site editor; it ends by its own.
    {"useSite", "escapeSite", Meaning::givesUp, timedOut},
    {"useSite", "closeSite", Meaning::givesUp},
    {"useSite", "close", Meaning::givesUp},
    {"useSite", "closeAndStay", Meaning::givesUp},
    {"useSite", "quit", Meaning::givesUp},
    {"testFrame", "escapeSite", Meaning::givesUp, timedOut},
    {"testFrame", "closeSite", Meaning::givesUp},
    {"testFrame", "close", Meaning::givesUp},
    {"testFrame", "closeAndStay", Meaning::givesUp},
    {"testFrame", "quit", Meaning::givesUp},
    {"testInWindow", "goToAddress", Meaning::givesUp},
    {"testInWindow", "closeSite", Meaning::givesUp},
    {"testInWindow", "close", Meaning::givesUp},
    {"testInWindow", "closeAndStay", Meaning::givesUp},
    {"testInWindow", "quit", Meaning::givesUp},
    {"testInWindow", "escapeSite", Meaning::endsIt},
    {"testInWindow", "escapeNarration", Meaning::endsIt},
    // The toolbar is off.
    {"useSite", "useSite", Meaning::notTaken},
    {"useSite", "testFrame", Meaning::notTaken},
    {"useSite", "testInWindow", Meaning::notTaken},
    {"testFrame", "useSite", Meaning::notTaken},
    {"testFrame", "testFrame", Meaning::notTaken},
    {"testFrame", "testInWindow", Meaning::notTaken},
    // An image that is being copied has its place in the text: the window is off.
    {"addImage", "apply", Meaning::notTaken},
    {"addImage", "addImage", Meaning::notTaken},
    {"addImage", "escapeNarration", Meaning::notTaken},
    // Esc belongs to the dialog.
    {"properties", "escapeSite", Meaning::endsIt, "Wendmark - Tour Properties"},
    {"properties", "escapeNarration", Meaning::endsIt, "Wendmark - Tour Properties"},
};

Exception meaningOf(const Command& waiting, const Command& command) {
    const auto* const found =
        std::find_if(std::begin(exceptions), std::end(exceptions), [&](const Exception& one) {
            return one.waiting == waiting.name && (one.command == "*" || one.command == command.name);
        });
    return found == std::end(exceptions) ? Exception{waiting.name, command.name, Meaning::afterwards}
                                         : *found;
}

bool testsFrame(const Command& command) {
    const std::string_view name = command.name;
    return name == "useSite" || name == "testFrame" || name == "testInWindow";
}

void prepare(HurriedAuthor& author, const Command& command) {
    switch (command.needs) {
    case Needs::nothing:
        break;
    case Needs::siteEditor:
        author.openSiteEditor();
        break;
    case Needs::narrationEditor:
        author.openNarrationEditor();
        break;
    case Needs::findWindow:
        author.openFindWindow();
        break;
    case Needs::undone:
        author.menu("mnuStopsBack");
        author.menu("mnuEditUndo");
        break;
    case Needs::changed:
        author.button("Insert");
        break;
    }
}

bool isWaiting(const HurriedAuthor& author, Wait wait) {
    const Gate& gate = author.program.gate;
    return wait == Wait::lookThrough ? gate.isLookedThrough() && author.showsTestPage()
                                     : wait != Wait::dialog && gate.isClosed();
}

/// Gives a command when no other one is under way, and waits until it has ended.
bool giveAlone(HurriedAuthor& author, const Command& command) {
    // Time that goes on by itself would be up before a page is there.
    author.program.clockStep = testsFrame(command) ? 0 : 0.5F;
    command.give(author);
    const bool rested = author.rest();
    author.program.clockStep = 0.5F;
    return rested;
}

/// The commands that are to run, in the order in which they are to.
std::vector<const Command*> turnsOf(const Command& waiting, const Command& command) {
    switch (meaningOf(waiting, command).meaning) {
    case Meaning::ahead:
        return {&command, &waiting};
    case Meaning::givesUp:
        return {&command};
    case Meaning::endsIt:
        return {};
    case Meaning::notTaken:
        return {&waiting};
    case Meaning::afterwards:
    case Meaning::atOnce:
        break;
    }
    return {&waiting, &command};
}

/// What the author has when the commands are given one after the other. Empty when that never ends.
Belongings inTurn(const WaitingCommand& waiting, const Command& command) {
    HurriedAuthor author(UiFixture::Time::passesAtOnce);
    prepare(author, waiting.command);
    prepare(author, command);
    const Exception pair = meaningOf(waiting.command, command);
    if (pair.meaning == Meaning::givesUp && waiting.command.give == useSite)
        author.program.document.markChanged(); // Comes before the test.
    for (const Command* const one : turnsOf(waiting.command, command)) {
        if (!giveAlone(author, *one))
            return {};
    }
    Belongings found = author.belongings();
    std::string& asked = found["asked"];
    if (*pair.said != '\0')
        asked = pair.said + std::string(asked.empty() ? "" : "; ") + asked;
    return found;
}

/// What came of a command that was given while another one waited.
struct Reentry {
    bool met = false;       ///< The other one did wait.
    bool ranAtOnce = false; ///< It changed something at once.
    bool rested = false;    ///< Both have come back.
    Belongings found;
};

/// Gives the second one as soon as the first one waits, on the real clock.
Reentry inside(const WaitingCommand& waiting, const Command& command) {
    Reentry result;
    HurriedAuthor author(UiFixture::Time::real);
    prepare(author, waiting.command);
    prepare(author, command);
    QTimer watch;
    const auto give = [&] {
        watch.stop();
        result.met = true;
        const std::string before = author.glance();
        command.give(author);
        result.ranAtOnce = author.glance() != before;
    };
    const auto look = [&] {
        if (!result.met && isWaiting(author, waiting.wait))
            give();
    };
    watch.callOnTimeout(look);
    if (waiting.wait == Wait::dialog)
        author.onDialog = give;
    if (waiting.wait == Wait::turn)
        author.makeStepsLong(look);
    author.letPageTake(500);
    watch.start(0);
    waiting.command.give(author);
    result.rested = author.rest();
    author.letPageTake(0);
    result.found = author.belongings();
    return result;
}

/// Says where the two differ; empty when they do not.
std::string difference(const Belongings& found, const Belongings& expected) {
    std::string text;
    for (const auto& [name, value] : expected) {
        const auto other = found.find(name);
        if (other == found.end())
            text += "missing: " + name + "\n";
        else if (other->second != value)
            text += name + "\n  found: " + other->second.substr(0, 600) +
                    "\n  expected: " + value.substr(0, 600) + "\n";
    }
    for (const auto& [name, value] : found) {
        if (!expected.contains(name))
            text += "too much: " + name + "\n";
    }
    return text;
}

constexpr int waitingCount = static_cast<int>(std::size(waitingCommands));
constexpr int commandCount = static_cast<int>(std::size(commands));
constexpr int usualBreadth =
    3; ///< Commands given inside each wait, when not all are; others in the next one.

/// Pairs that lost something once.
constexpr std::pair<std::string_view, std::string_view> mended[] = {{"save", "remember"},
                                                                    {"undo", "remember"},
                                                                    {"useSite", "goToAddress"},
                                                                    {"addImage", "new"},
                                                                    {"testInWindow", "remember"}};

bool isUsual(int waiting, int command) {
    const std::pair<std::string_view, std::string_view> names = {waitingCommands[waiting].command.name,
                                                                 commands[command].name};
    return (command - usualBreadth * waiting % commandCount + commandCount) % commandCount < usualBreadth ||
           std::find(std::begin(mended), std::end(mended), names) != std::end(mended);
}

} // namespace

/// Every command, given in the middle of each one that waits, does what it does when it is given afterwards,
/// or what the table of exceptions says. A part of the pairs, or with WENDMARK_REENTRY all of them: "all", or
/// those of the waiting commands that it names.
class ReentryTest final : public QObject {
    Q_OBJECT

private slots:
    void usualPairsHaveEveryCommand() {
        for (int c = 0; c < commandCount; ++c) {
            bool given = false;
            for (int w = 0; w < waitingCount; ++w)
                given = given || isUsual(w, c);
            QVERIFY2(given, commands[c].name);
        }
    }

    void nothingIsLostInsideAWait_data() {
        QTest::addColumn<int>("waiting");
        QTest::addColumn<int>("command");
        const QStringList wanted = qEnvironmentVariable("WENDMARK_REENTRY").split(QLatin1Char(' '));
        const bool usual = wanted.first().isEmpty();
        const bool all = wanted.first() == QLatin1String("all");
        for (int w = 0; w < waitingCount; ++w) {
            const char* const waiting = waitingCommands[w].command.name;
            if (!usual && !all && !wanted.contains(QLatin1String(waiting)))
                continue;
            for (int c = 0; c < commandCount; ++c) {
                if (!usual || isUsual(w, c))
                    QTest::addRow("%s: %s", waiting, commands[c].name) << w << c;
            }
        }
    }
    void nothingIsLostInsideAWait() {
        QFETCH(int, waiting);
        QFETCH(int, command);
        const WaitingCommand& first = waitingCommands[waiting];
        const Command& second = commands[command];
        const Belongings expected = inTurn(first, second);
        QVERIFY2(!expected.empty(), "given one after the other, they never end");
        const Reentry reentry = inside(first, second);
        QVERIFY2(reentry.met, "the first one does not wait");
        QVERIFY2(reentry.rested, "a command never comes back");
        const std::string differs = difference(reentry.found, expected);
        QVERIFY2(differs.empty(), differs.c_str());
        const Meaning meaning = meaningOf(first.command, second).meaning;
        QCOMPARE(reentry.ranAtOnce, meaning == Meaning::atOnce || meaning == Meaning::ahead);
        for (const auto& [name, value] : reentry.found)
            QVERIFY2(name.find(".wendmark") == std::string::npos, name.c_str());
        QVERIFY(!reentry.found.contains("failures"));
    }
};

} // namespace wendmark

QTEST_MAIN(wendmark::ReentryTest)
#include "ReentryTest.moc"
