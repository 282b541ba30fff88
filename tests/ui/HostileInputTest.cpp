#include "model/TourModel.h"
#include "platform/Strings.h"
#include "support/Allocations.h"
#include "ui/main/frmMain.h"
#include "ui/narration/frmNarEdit.h"
#include "ui/site/frmBrowser.h"
#include "ui/support/UiFixture.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QPushButton>
#include <QRandomGenerator>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <functional>
#include <utility>

namespace wendmark {

using test::UiFixture;
using test::waitUntil;

namespace {

/// Bytes that the windows' thread may allocate between two turns of its events, as a multiple of what is
/// huge, and beyond that. Texts are held in several forms while one is made from the other.
constexpr std::size_t mostTimesHuge = 16;
constexpr std::size_t mostTimesHugeList = 32; // Lists are read and written in one step each.
constexpr std::size_t mostBeside = 16'000'000;

constexpr int aftermath = 700; // Milliseconds, after which also what a command left to a timer has begun.

constexpr int usualMegabytes = 10;

/// With a size that is asked for, the silences are printed as they are on this machine and nothing is judged.
bool isMeasured() {
    return qEnvironmentVariableIsSet("WENDMARK_MEGABYTES");
}

/// Bytes of whatever is huge.
qsizetype hugeSize() {
    const int wanted = qEnvironmentVariableIntValue("WENDMARK_MEGABYTES");
    return qsizetype{1'000'000} * (wanted > 0 ? wanted : usualMegabytes);
}

/// Rows are made when they are needed: all of them at once would take the machine's memory.
using MakeBytes = std::function<QByteArray()>;

QByteArray repeated(const QByteArray& part) {
    return part.repeated(hugeSize() / part.size());
}

QByteArray noise() {
    QRandomGenerator generator(20261121);
    QByteArray bytes(hugeSize(), '\0');
    std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(generator.generate()); });
    return bytes;
}

QByteArray line() {
    return repeated("word ");
}

QByteArray lines() {
    return repeated("The quick <b>brown</b> fox jumps.\r\n");
}

/// A script of one stop.
QByteArray script(const QByteArray& title, const QByteArray& stopTitle, const QByteArray& address,
                  const QByteArray& narration, const QByteArray& instruction) {
    return title + "\r\n\r\n" + stopTitle + "\r\n" + address + "\r\n\r\n" + narration + "\r\n\r\n" +
           instruction + "\r\n\r\n";
}

/// Measures what happens at most between two turns of the events: while it does, no window answers.
class Heartbeat final {
public:
    Heartbeat() {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { beat(); });
        m_timer.start(0);
        m_lastBeat.start();
        m_allocated = test::Allocations::now().bytes;
    }

    void beat() {
        m_longestSilence = std::max(m_longestSilence, m_lastBeat.restart());
        const std::size_t allocated = test::Allocations::now().bytes;
        m_mostAllocated = std::max(m_mostAllocated, allocated - std::exchange(m_allocated, allocated));
    }

    qint64 longestSilence() const { return m_longestSilence; } ///< Milliseconds.
    std::size_t mostAllocated() const { return m_mostAllocated; }

private:
    QTimer m_timer;
    QElapsedTimer m_lastBeat;
    qint64 m_longestSilence = 0;
    std::size_t m_allocated = 0;
    std::size_t m_mostAllocated = 0;
};

/// Accepts every modal dialog by its default button.
class Accepting final {
public:
    Accepting() {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [] {
            if (auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
                accept(*dialog);
        });
        m_timer.start(20);
    }

private:
    static void accept(QDialog& dialog) {
        for (QPushButton* const button : dialog.findChildren<QPushButton*>()) {
            if (button->isDefault() && button->isEnabled()) {
                button->click();
                return;
            }
        }
        dialog.accept();
    }

    QTimer m_timer;
};

/// The program with a tour open that no author wrote.
class HugeTour final {
public:
    explicit HugeTour(const QByteArray& script) : window(program.parts()) {
        if (!isMeasured())
            program.stepClock = [this] { return m_milliseconds += 100; }; // Each step is a long one.
        folder = program.makeTour(QStringLiteral("huge"), 1);
        test::writeFile(toUtf8(folder + QStringLiteral("/script.txt")), script.toStdString());
    }

    void expectAnswers(const char* during, const std::function<void()>& act,
                       std::size_t mostTimes = mostTimesHuge) {
        Heartbeat heartbeat;
        act();
        QElapsedTimer passed;
        passed.start();
        static_cast<void>(waitUntil([&] { return passed.elapsed() >= aftermath; }));
        heartbeat.beat();
        const auto huge = static_cast<std::size_t>(hugeSize());
        qInfo("%s: no answer for %lld ms, %.1f times the input allocated", during, heartbeat.longestSilence(),
              static_cast<double>(heartbeat.mostAllocated()) / static_cast<double>(huge));
        QVERIFY2(isMeasured() || heartbeat.mostAllocated() <= mostTimes * huge + mostBeside, during);
    }

    void run(const char* menuItem) const {
        auto* const item = window.findChild<QAction*>(QLatin1String(menuItem));
        QVERIFY2(item != nullptr && item->isEnabled(), menuItem);
        item->trigger();
    }

    UiFixture program;
    frmMain window;
    QString folder;

private:
    qint64 m_milliseconds = 0;
    Accepting m_accepting;
};

} // namespace

/// Every window goes on answering, whatever the size of a tour's texts, and gives them back whole.
class HostileInputTest final : public QObject {
    Q_OBJECT

private slots:
    void hugeTexts_data() {
        QTest::addColumn<MakeBytes>("makeScript");
        const auto add = [](const char* name, const MakeBytes& make) { QTest::newRow(name) << make; };
        const QByteArray header = "<<<VoskInfo>>>#";
        const auto ordinary = [] { return script("Title", "Stop", "newpage.htm", "Words.", "Do it."); };
        const auto narrated = [](const QByteArray& narration) {
            return script("Title", "Stop", "newpage.htm", narration, "Do it.");
        };
        add("title", [] { return script(line(), "Stop", "newpage.htm", "Words.", "Do it."); });
        add("stop's title", [] { return script("Title", line(), "newpage.htm", "Words.", "Do it."); });
        add("stop's local page",
            [] { return script("Title", "Stop", line().simplified(), "Words.", "Do it."); });
        add("stop's address", [] {
            return script("Title", "Stop", "http://127.0.0.1:9/" + repeated("a"), "Words.", "Do it.");
        });
        add("narration of lines", [=] { return narrated(lines()); });
        add("narration of one line", [=] { return narrated(line()); });
        add("narration of one word", [=] { return narrated(repeated("a")); });
        add("narration of tags", [=] { return narrated(repeated("<i>")); });
        add("instruction", [] { return script("Title", "Stop", "newpage.htm", "Words.", lines()); });
        add("author", [=] { return header + "Author=" + line() + "\r\n" + ordinary(); });
        add("launching point",
            [=] { return header + "LaunchURL=http://127.0.0.1:9/" + repeated("a") + "\r\n" + ordinary(); });
        add("100 launching points", [=] {
            const QByteArray address = repeated("a").left(hugeSize() / 100);
            return (header + "LaunchURL=" + address + "\r\n").repeated(100) + ordinary();
        });
        add("stop label", [=] { return header + "StopName=" + line() + "\r\n" + ordinary(); });
        add("100,000 stops", [] {
            return "Title\r\n" +
                   QByteArray("Stop\r\nnewpage.htm\r\n\r\nWords.\r\n\r\nDo it.\r\n\r\n").repeated(100'000);
        });
        add("NUL bytes", [] { return QByteArray(hugeSize(), '\0'); });
        add("noise", noise);
    }

    void hugeTexts() {
        QFETCH(MakeBytes, makeScript);
        HugeTour tour(makeScript());
        const TourModel& model = tour.program.model;
        tour.expectAnswers("opening", [&] {
            tour.window.load(tour.folder);
            tour.window.show();
        });
        const auto read = model;
        tour.expectAnswers("next stop", [&] { tour.run("mnuNavigateNext"); });
        if (model.stopCount() > 0) {
            tour.expectAnswers("narration editor", [&] { tour.run("mnuEditNarration"); });
            auto* const editor = tour.window.findChild<frmNarEdit*>();
            QVERIFY(editor != nullptr);
            tour.expectAnswers("apply", [&] { editor->findChild<QPushButton*>("btnOK")->click(); });
            tour.expectAnswers("site editor", [&] { tour.run("mnuEditSite"); });
            tour.expectAnswers("site editor's end", [&] { tour.window.findChild<frmBrowser*>()->close(); });
        }
        tour.expectAnswers("properties", [&] { tour.run("mnuEditProperties"); });
        tour.expectAnswers("launching information", [&] { tour.run("mnuViewLaunch"); });
        tour.expectAnswers("print", [&] { tour.run("mnuFilePrint"); });
        tour.expectAnswers("save", [&] { tour.run("mnuFileSave"); });
        QVERIFY(model.tourTitle == read.tourTitle);
        QVERIFY(model.tourAuthor == read.tourAuthor);
        QVERIFY(model.stops == read.stops);
    }

    void hugeLists_data() {
        QTest::addColumn<QString>("file");
        QTest::addColumn<MakeBytes>("makeBytes");
        for (const QString& file : {QStringLiteral("goodlist.txt"), QStringLiteral("brhist.txt")}) {
            const auto add = [&](const char* name, const MakeBytes& make) {
                QTest::addRow("%s, %s", qPrintable(file), name) << file << make;
            };
            add("noise", noise);
            add("one line", [] { return repeated("a"); });
            add("short lines", [] { return repeated("a\r\n"); });
            add("empty lines", [] { return repeated("\r\n"); });
            add("addresses", [] { return repeated("http://127.0.0.1:9/a/page/of/some/length.htm\r\n"); });
            add("NUL bytes", [] { return QByteArray(hugeSize(), '\0'); });
        }
        const MakeBytes noted = [] {
            return "{Wendmark Bookmark List}\r\n" +
                   repeated("http://127.0.0.1:9/a/page/of/some/length.htm\r\nWhat I think of it.\r\n1\r\n");
        };
        QTest::newRow("goodlist.txt, noted addresses") << QStringLiteral("goodlist.txt") << noted;
    }

    void hugeLists() {
        QFETCH(QString, file);
        QFETCH(MakeBytes, makeBytes);
        HugeTour tour("Title\r\n\r\nStop\r\nnewpage.htm\r\n\r\nWords.\r\n\r\nDo it.\r\n\r\n");
        test::writeFile(toUtf8(tour.folder + QLatin1Char('/') + file), makeBytes().toStdString());
        tour.expectAnswers("opening", [&] {
            tour.window.load(tour.folder);
            tour.window.show();
        });
        tour.expectAnswers("next stop", [&] { tour.run("mnuNavigateNext"); });
        tour.expectAnswers(
            "site editor", [&] { tour.run("mnuEditSite"); }, mostTimesHugeList);
        tour.expectAnswers(
            "site editor's end", [&] { tour.window.findChild<frmBrowser*>()->close(); }, mostTimesHugeList);
        tour.expectAnswers("save", [&] { tour.run("mnuFileSave"); });
    }
};

} // namespace wendmark

QTEST_MAIN(wendmark::HostileInputTest)
#include "HostileInputTest.moc"
