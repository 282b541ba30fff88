#include "platform/Gate.h"
#include "ui/main/frmMain.h"
#include "ui/narration/frmNarEdit.h"
#include "ui/support/LoopbackServer.h"
#include "ui/support/UiFixture.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <map>

namespace wendmark {

using test::UiFixture;

namespace {

/// A program with a tour of four stops on its second one, whose pauses take their real time.
struct Program {
    Program()
        : program(std::make_shared<test::ScratchFolder>(), UiFixture::Time::real), window(program.parts()) {
        window.load(program.makeTour(QStringLiteral("walk"), 4));
        window.show();
        program.document.goToStop(2);
    }

    UiFixture program;
    frmMain window;
};

/// What the author has in the end.
struct Result {
    std::string tour;
    bool changed = false;
    std::map<std::string, std::string> folder;
};

Result resultOf(const Program& author) {
    Result result;
    const TourModel& model = author.program.document.model();
    for (const Stop& stop : model.stops)
        result.tour += stop.stopTitle + "|" + stop.stopURL + "|" + stop.stopNarration + "\n";
    result.tour += model.tourTitle + std::to_string(model.currentStop);
    result.changed = model.tourChanged;
    for (const auto& [name, bytes] : test::folderContents(author.program.scratch / "MyTours/walk")) {
        if (name != "link.txt" && name != "tmpframe.htm") // What the save before has left.
            result.folder[name] = bytes;
    }
    return result;
}

using Act = void (*)(Program&);

struct Command {
    const char* name;
    Act give;
};

void apply(Program& author) {
    author.window.editNarrationFrame();
    const auto give = [&author] {
        auto* const editor = author.window.findChild<frmNarEdit*>(QStringLiteral("frmNarEdit"));
        editor->findChild<QLineEdit*>(QStringLiteral("txtStopTitle"))->setText(QStringLiteral("Applied"));
        editor->findChild<QPushButton*>(QStringLiteral("btnOK"))->click();
    };
    author.program.gate.run(author.window, [&author, give] { QTimer::singleShot(0, &author.window, give); });
}

const Command commands[] = {
    {"insert", [](Program& author) { author.window.runToolBarCommand(QStringLiteral("Insert")); }},
    {"delete", [](Program& author) { author.window.runToolBarCommand(QStringLiteral("Delete")); }},
    {"moveForward", [](Program& author) { author.window.runToolBarCommand(QStringLiteral("Forward")); }},
    {"moveBack", [](Program& author) { author.window.runToolBarCommand(QStringLiteral("Back")); }},
    {"save", [](Program& author) { author.window.save(); }},
    {"next", [](Program& author) { author.window.next(); }},
    {"previous", [](Program& author) { author.window.previous(); }},
    {"refresh", [](Program& author) { author.window.refresh(); }},
    {"undo", [](Program& author) { author.window.undo(); }},
    {"redo", [](Program& author) { author.window.redo(); }},
    {"apply", apply},
    {"quit", [](Program& author) { author.window.quit(); }},
};

bool isQuiet(Program& author) {
    bool quiet = false;
    return test::waitUntil([&] {
        const bool was = std::exchange(quiet, author.program.gate.isOpen());
        return was && quiet;
    });
}

/// Gives the commands one after the other, each when the one before it has ended.
Result inTurn(const Command& first, const Command& second) {
    Program author;
    author.window.insertStop();
    for (const Command* const command : {&first, &second}) {
        command->give(author);
        if (!isQuiet(author))
            return {};
    }
    return resultOf(author);
}

/// Gives the second one as soon as the first one waits.
Result inside(const Command& first, const Command& second, bool& waited) {
    Program author;
    author.window.insertStop();
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        if (!author.program.gate.isClosed())
            return;
        watch.stop();
        waited = true;
        second.give(author);
    });
    watch.start(1);
    first.give(author);
    if (!isQuiet(author))
        return {};
    if (!waited)
        second.give(author);
    return isQuiet(author) ? resultOf(author) : Result();
}

} // namespace

/// Every command, given in the middle of each one that waits, does what it does when it is given afterwards.
class ReentryTest final : public QObject {
    Q_OBJECT

private slots:
    void commandInsideAWaitComesAfterIt_data() {
        QTest::addColumn<int>("index");
        for (int i = 0; i < static_cast<int>(std::size(commands)); ++i)
            QTest::newRow(commands[i].name) << i;
    }
    void commandInsideAWaitComesAfterIt() {
        QFETCH(int, index);
        const Command save = {"save", [](Program& author) { author.window.save(); }};
        const Command& command = commands[index];
        const bool quits = std::string_view(command.name) == "quit";
        bool waited = false;
        const Result expected = inTurn(save, command);
        const Result found = inside(save, command, waited);
        QVERIFY(waited);
        QCOMPARE(found.tour, expected.tour);
        QCOMPARE(found.changed, expected.changed);
        for (const auto& [name, bytes] : expected.folder)
            QVERIFY2(found.folder.contains(name) && found.folder.at(name) == bytes, name.c_str());
        QCOMPARE(found.folder.size(), expected.folder.size());
        QVERIFY(!found.folder.contains("script1.txt"));
        QVERIFY(quits || found.folder.at("script.txt").find("Stop5") != std::string::npos);
    }
};

} // namespace wendmark

QTEST_MAIN(wendmark::ReentryTest)
#include "ReentryTest.moc"
