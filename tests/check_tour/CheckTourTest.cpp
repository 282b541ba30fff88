#include "platform/Strings.h"
#include "support/ScratchFolder.h"
#include "ui/support/LoopbackServer.h"
#include "ui/support/Patience.h"
#include "ui/support/UiFixture.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>
#include <array>
#include <csignal>
#include <fcntl.h>
#include <set>
#include <unistd.h>

namespace wendmark {

using test::LoopbackServer;
using test::waitUntil;

namespace {

struct ScriptStop {
    QString page; ///< Of the server when it begins with a slash.
    QByteArray title = "A stop";
};

struct End {
    int status = -1;
    QByteArray output;
    QByteArray errors;
};

/// Tours in a scratch folder, a server for their pages, and the companion as a process of its own.
class Companion final {
public:
    Companion() {
        server.answer("/moved.htm", {301, {{"Location", "/plain.htm"}}, {}});
        for (const char* folder : {"tmp", "run"})
            QDir(toQString(scratch.path())).mkdir(folder);
        QFile::setPermissions(path("run"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        environment.insert("TMPDIR", path("tmp"));
        environment.insert("XDG_RUNTIME_DIR", path("run")); // Else Qt makes one in TMPDIR.
        environment.insert("QT_QPA_PLATFORM", "xcb");       // There is no such display.
        environment.remove("DISPLAY");
        environment.remove("WAYLAND_DISPLAY");
    }

    QString path(const QString& name) const { return toQString(scratch / toUtf8(name)); }

    void makeTour(const QString& name, const QList<ScriptStop>& stops, const QByteArray& header = {}) const {
        QByteArray script = header + "<<<VoskInfo>>>#SingleWindow\r\n\r\nA tour\r\n\r\n";
        int number = 0;
        for (const ScriptStop& stop : stops) {
            const QString address = stop.page.startsWith('/') ? server.address(stop.page) : stop.page;
            script += "<<<VoskInfo>>> Stop" + QByteArray::number(++number) + "\r\n" + stop.title + "\r\n" +
                      address.toLatin1() + "\r\n\r\nWords.\r\n\r\nDo it.\r\n\r\n";
        }
        test::writeFile(scratch / (toUtf8(name) + "/script.txt"), script.toStdString());
    }

    /// Without patience no busy machine makes a page fail.
    void start(QProcess& process, const QStringList& words, const QString& patience = "600") const {
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(toQString(scratch.path()));
        process.start(WENDMARK_TOUR, QStringList{"check", "--timeout", patience} + words);
    }

    static End endOf(QProcess& process) {
        if (!waitUntil([&] { return process.state() == QProcess::NotRunning; }))
            qFatal("The check does not end");
        if (process.exitStatus() != QProcess::NormalExit)
            qFatal("The check has crashed");
        return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
    }

    End run(const QStringList& words, const QString& patience = "600") const {
        QProcess process;
        start(process, words, patience);
        return endOf(process);
    }

    LoopbackServer server;
    test::ScratchFolder scratch;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
};

QJsonArray toursIn(const QByteArray& json) {
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError)
        qFatal("No JSON: %s", json.constData());
    return document.object().value("tours").toArray();
}

QJsonArray stopsIn(const QByteArray& json, int tour = 0) {
    return toursIn(json).at(tour).toObject().value("stops").toArray();
}

QJsonObject stopIn(const QByteArray& json, int stop) {
    return stopsIn(json).at(stop - 1).toObject();
}

/// On a busy machine what plays may be slow.
QStringList verdictsIn(const QByteArray& json, int tour = 0) {
    QStringList verdicts;
    for (const auto& stop : stopsIn(json, tour))
        verdicts.append(stop.toObject().value("verdict").toString().replace("slow", "plays"));
    return verdicts;
}

bool steersNoTerminal(const QByteArray& text) {
    const QString decoded = QString::fromUtf8(text);
    return std::ranges::all_of(decoded.split('\n'), [](const QString& line) {
        return onOneLine(line) == line && !line.contains(QChar(0x7F));
    });
}

} // namespace

class CheckTourTest final : public QObject {
    Q_OBJECT

private slots:
    void everyStopHasItsVerdict() {
        const Companion companion;
        companion.makeTour("tour", {{"/plain.htm"},
                                    {"/none.htm"},
                                    {"/deny.htm"},
                                    {"/moved.htm"},
                                    {"/download.zip"},
                                    {"missing.htm"},
                                    {"newpage.htm"},
                                    {"/plain.htm#part"},
                                    {"/broken.htm"},
                                    {"/busting.htm"}});
        const End end = companion.run({"tour", "--json", "-"});
        QCOMPARE(end.status, 1);
        QCOMPARE(end.errors, QByteArray());
        QCOMPARE(verdictsIn(end.output),
                 (QStringList{"plays", "gone", "refuses", "moved", "download", "file-missing", "no-page",
                              "plays", "fails", "takes-over"}));
        QCOMPARE(stopIn(end.output, 8).value("sameAs").toInt(), 1);
        QVERIFY(!stopIn(end.output, 1).contains("sameAs"));
        QCOMPARE(companion.server.requestsFor("/plain.htm"), 4); // The moved page leads there, too.
    }

    void stopHasAllItsFields() {
        const Companion companion;
        companion.makeTour("tour", {{"/moved.htm", "Moved"}, {"page.htm", "Own"}});
        test::writeFile(companion.scratch / "tour/page.htm", "<img src=\"b.gif\"><img src=\"a.gif\">");
        const End end = companion.run({"tour", "--json", "-"});
        QCOMPARE(end.status, 0);
        const QJsonObject moved{
            {"stop", 1},
            {"title", "Moved"},
            {"address", companion.server.address("/moved.htm")},
            {"verdict", "moved"},
            {"why", "Its server names another address for good: " + companion.server.address("/plain.htm")},
            {"final", companion.server.address("/plain.htm")},
            {"remedies", QJsonArray{"new-address"}}};
        QCOMPARE(stopIn(end.output, 1), moved);
        const QJsonObject own{{"stop", 2},
                              {"title", "Own"},
                              {"address", "page.htm"},
                              {"verdict", "plays"},
                              {"why", "Files of the page are missing: a.gif, b.gif."},
                              {"final", "page.htm"},
                              {"remedies", QJsonArray()},
                              {"missingParts", QJsonArray{"a.gif", "b.gif"}}};
        QCOMPARE(stopIn(end.output, 2), own);
        QVERIFY(companion.run({"tour"}).output.contains("Files missing"));
    }

    void pageOfTwoToursIsAskedForOnce() {
        const Companion companion;
        companion.makeTour("b", {{"/plain.htm"}, {"/deny.htm"}});
        companion.makeTour("a", {{"/plain.htm#part"}, {"/plain.htm"}});
        const End end = companion.run({"b", "a", "./b", "--json", "found.json"});
        QCOMPARE(end.status, 1);
        QCOMPARE(companion.server.requestsFor("/plain.htm"), 2); // By the engine, and by the program.
        const QByteArray json = QByteArray::fromStdString(test::readFile(companion.scratch / "found.json"));
        QStringList names;
        for (const auto& tour : toursIn(json))
            names.append(tour.toObject().value("tour").toString());
        QCOMPARE(names, (QStringList{"b", "a", "./b"}));
        QCOMPARE(verdictsIn(json, 0), (QStringList{"plays", "refuses"}));
        QCOMPARE(verdictsIn(json, 1), (QStringList{"plays", "plays"}));
        QCOMPARE(verdictsIn(json, 2), verdictsIn(json, 0));
    }

    void textsMayHoldAnyLetter() {
        const Companion companion;
        const QByteArray title = "\"W\xfcste\" \\ &#26085; &#128512; &#8238;\x1b[31m\x7f";
        companion.makeTour("tour", {{"newpage.htm", title}, {"mi\x1b[2Jss\x7f.htm", "T"}});
        const End json = companion.run({"tour", "--json", "-"});
        QVERIFY2(steersNoTerminal(json.output), json.output.constData());
        const QString read = stopIn(json.output, 1).value("title").toString();
        QVERIFY2(read.startsWith(QString::fromUtf8("\"Wüste\" \\ 日 😀 ")), qPrintable(read));
        QVERIFY(read.contains(QChar(0x202E)));
        QVERIFY(stopIn(json.output, 2).value("address").toString().contains("ss\x7f.htm"));
        const End table = companion.run({"tour"});
        QVERIFY2(steersNoTerminal(table.output), table.output.constData());
        QVERIFY2(QString::fromUtf8(table.output).contains(QString::fromUtf8("\"Wüste\" \\ 日 😀 ")),
                 table.output.constData());
    }

    void tableHasARowForEachStop() {
        const Companion companion;
        companion.makeTour("tour", {{"/deny.htm", "Short"},
                                    {"newpage.htm", "&#26085;&#26412;"},
                                    {"missing.htm", QByteArray(200, 'x')}});
        companion.makeTour("other", {});
        const End end = companion.run({"tour", "other"});
        QCOMPARE(end.status, 1);
        QCOMPARE(end.errors, QByteArray()); // No terminal, so nobody wants to know how far it is.
        const QString blanks(35, ' ');
        const QStringList lines{"\"A tour\", stops: 3, in tour",
                                "Stop  Title" + blanks + "  Page            Why",
                                "   1  Short" + blanks +
                                    "  Refuses frames  Its server refuses frames of other sites: "
                                    "X-Frame-Options: deny",
                                QString::fromUtf8("   2  日本") + blanks + "   No page yet",
                                "   3  " + QString(39, 'x') +
                                    QString::fromUtf8("…  File missing    The tour has no file missing.htm."),
                                "",
                                "\"A tour\", stops: 0, in other",
                                ""};
        QCOMPARE(QString::fromUtf8(end.output).split('\n'), lines);
    }

    void whoPlaysTheTourChangesTheVerdict() {
        Companion companion;
        companion.server.answer(
            "/some.htm",
            {200, {{"Content-Security-Policy", "frame-ancestors http://tours.example"}}, "<p>Some"});
        const QList<ScriptStop> stops{{"/some.htm"}, {"/anybody.htm"}};
        companion.makeTour("there", stops, "<<<VoskInfo>>>#LaunchURL = http://tours.example/start.htm\r\n");
        companion.makeTour("anywhere", stops);
        const auto verdicts = [&](const QStringList& words) {
            return verdictsIn(companion.run(words + QStringList{"--json", "-"}).output);
        };
        QCOMPARE(verdicts({"there"}), (QStringList{"plays", "plays"}));
        QCOMPARE(verdicts({"anywhere"}), (QStringList{"refuses", "plays"}));
        QCOMPARE(verdicts({"there", "--for", "https"}), (QStringList{"refuses", "plays"}));
        QCOMPARE(verdicts({"there", "--for", "disk"}), (QStringList{"refuses", "refuses"}));
        const End end = companion.run({"there", "--json", "-"});
        QCOMPARE(stopIn(end.output, 1).value("playsFor").toArray(), QJsonArray{"http://tours.example"});
    }

    void tourThatCannotBeReadKeepsNoOtherFromBeingChecked() {
        const Companion companion;
        companion.makeTour("tour", {{"/plain.htm"}});
        test::writeFile(companion.scratch / "untitled/script.txt", "\r\n");
        const End end = companion.run({"none", "tour", "untitled", "--json", "-"});
        QCOMPARE(end.status, 1);
        QCOMPARE(verdictsIn(end.output), QStringList{"plays"});
        QCOMPARE(end.errors.count('\n'), 2);
        QVERIFY2(end.errors.contains("none/script.txt"), end.errors.constData());
        QVERIFY2(end.errors.contains("before the title of a tour"), end.errors.constData());
    }

    void toursOfNoAndOfAHundredStops() {
        Companion companion;
        companion.makeTour("empty", {});
        const End empty = companion.run({"empty", "--json", "-"});
        QCOMPARE(empty.status, 0);
        QCOMPARE(toursIn(empty.output).size(), 1);
        QCOMPARE(stopsIn(empty.output).size(), 0);
        QList<ScriptStop> stops;
        for (int n = 1; n <= 100; ++n) {
            companion.server.page("/" + QString::number(n), "<p>A page.");
            stops.append({"/" + QString::number(n)});
        }
        companion.makeTour("full", stops);
        const End full = companion.run({"full", "--json", "-"});
        QCOMPARE(full.status, 0);
        QCOMPARE(verdictsIn(full.output), QStringList(100, "plays"));
        QCOMPARE(stopIn(full.output, 100).value("stop").toInt(), 100);
    }

    void oneJobAsksForOnePageAfterTheOther() {
        const Companion companion;
        companion.makeTour("a", {{"/plain.htm"}, {"/deny.htm"}});
        companion.makeTour("b", {{"/anybody.htm"}, {"/nobody.htm"}});
        QCOMPARE(companion.run({"a", "b", "--jobs", "1"}).status, 1);
        QStringList order;
        for (const LoopbackServer::Request& request : companion.server.requests()) {
            if (request.path.endsWith(".htm") && (order.isEmpty() || order.last() != request.path))
                order.append(request.path);
        }
        QCOMPARE(order.size(), 4);
        QCOMPARE(std::set<QString>(order.begin(), order.end()).size(), std::size_t{4});
    }

    void serverIsAskedForFourPagesOfAllToursAtOnce() {
        Companion companion;
        QStringList tours{"a", "b", "c"};
        for (const QString& tour : tours) {
            QList<ScriptStop> stops;
            for (const char* name : {"1", "2", "3", "4"}) {
                companion.server.answer("/" + tour + name,
                                        {200, {}, {}, 0, LoopbackServer::Answer::Kind::silence});
                stops.append({"/" + tour + name});
            }
            companion.makeTour(tour, stops);
        }
        QProcess process;
        companion.start(process, tours);
        QVERIFY(waitUntil([&] { return companion.server.requests().size() >= 8; }));
        std::set<QString> asked;
        for (const LoopbackServer::Request& request : companion.server.requests())
            asked.insert(request.path);
        QCOMPARE(asked.size(), std::size_t{4}); // By the engine and by the program.
        process.terminate();
        QCOMPARE(Companion::endOf(process).status, 128 + SIGTERM);
    }

    void silentServerIsWaitedForAsLongAsWanted() {
        const Companion companion;
        companion.makeTour("tour", {{"/silent.htm"}});
        const End end = companion.run({"tour", "--json", "-"}, "1");
        QCOMPARE(end.status, 1);
        QCOMPARE(verdictsIn(end.output), QStringList{"fails"});
    }

    void signalsEndTheCheckAndNothingIsLeft_data() {
        QTest::addColumn<int>("signal");
        for (const int signal : {SIGHUP, SIGINT, SIGTERM})
            QTest::addRow("%d", signal) << signal;
    }
    void signalsEndTheCheckAndNothingIsLeft() {
        QFETCH(const int, signal);
        const Companion companion;
        companion.makeTour("tour", {{"/silent.htm"}});
        QProcess process;
        companion.start(process, {"tour", "--json", "found.json"});
        QVERIFY(waitUntil([&] { return companion.server.requestsFor("/silent.htm") == 2; }));
        QVERIFY(!QDir(companion.path("tmp")).isEmpty());
        ::kill(static_cast<pid_t>(process.processId()), signal);
        const End end = Companion::endOf(process);
        QCOMPARE(end.status, 128 + signal);
        QCOMPARE(end.output, QByteArray());
        QVERIFY(QDir(companion.path("tmp")).isEmpty());
        QVERIFY(!test::exists(companion.scratch / "found.json"));
    }

    void terminalIsToldHowFarItIs() {
        const Companion companion;
        companion.makeTour("tour", {{"/plain.htm"}, {"/deny.htm"}});
        const int terminal = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
        QVERIFY(terminal >= 0 && grantpt(terminal) == 0 && unlockpt(terminal) == 0);
        const QByteArray name = ptsname(terminal);
        QProcess process;
        process.setStandardErrorFile(name, QIODevice::Append);
        companion.start(process, {"tour"});
        const End end = Companion::endOf(process);
        std::array<char, 4000> block{};
        const auto count = read(terminal, block.data(), block.size());
        close(terminal);
        QCOMPARE(end.status, 1);
        QVERIFY(!end.output.contains('\r'));
        QVERIFY(count > 0);
        const QByteArray said(block.data(), count);
        QVERIFY2(said.contains("\rChecked: 0 of 2 pages") && said.contains("\rChecked: 2 of 2 pages"), said);
        QVERIFY(said.endsWith(" \r"));
    }

    void reportThatCannotBeWrittenIsAFailure() {
        const Companion companion;
        companion.makeTour("tour", {{"newpage.htm"}});
        const End end = companion.run({"tour", "--json", "none/found.json"});
        QCOMPARE(end.status, 1);
        QVERIFY2(end.errors.startsWith("wendmark-tour: cannot write "), end.errors.constData());
        QCOMPARE(end.output, QByteArray());
        QCOMPARE(companion.run({"tour", "--json", "/dev/full"}).status, 1);
        QVERIFY(test::exists("/dev/full"));
    }

    void rootIsToldWhyTheEngineDoesNotStart() {
        if (geteuid() != 0)
            QSKIP("Only root cannot have the engine's sandbox");
        Companion companion;
        companion.environment.remove("QTWEBENGINE_DISABLE_SANDBOX");
        companion.makeTour("tour", {{"/plain.htm"}});
        const End end = companion.run({"tour"});
        QCOMPARE(end.status, 2);
        QCOMPARE(end.errors.count('\n'), 1);
        QVERIFY2(end.errors.contains("QTWEBENGINE_DISABLE_SANDBOX=1"), end.errors.constData());
        QVERIFY(QDir(companion.path("tmp")).isEmpty());
    }
};

} // namespace wendmark

QTEST_MAIN(wendmark::CheckTourTest)

#include "CheckTourTest.moc"
