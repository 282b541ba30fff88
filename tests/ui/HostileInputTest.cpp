#include "model/TourModel.h"
#include "platform/Strings.h"
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

namespace wendmark {

using test::UiFixture;
using test::waitUntil;

namespace {

#if defined(NDEBUG) && !defined(__SANITIZE_ADDRESS__)
constexpr qint64 longestAllowed = 1000; // Milliseconds, as all that follow.
#else
constexpr qint64 longestAllowed = 10000; // Without optimisation everything takes several times as long.
#endif
constexpr qint64 perPrintedStop = longestAllowed / 50;
constexpr int aftermath = 700; // What a command sets off is over by then, also what waits for a timer.

constexpr int usualMegabytes = 10;

int megabytes() {
    const int wanted = qEnvironmentVariableIntValue("WENDMARK_MEGABYTES");
    return wanted > 0 ? wanted : usualMegabytes;
}

/// Bytes of whatever is huge.
qsizetype hugeSize() {
    return qsizetype{1'000'000} * megabytes();
}

/// Of more than the usual size the work grows with the size.
qint64 allowedSilence() {
    return longestAllowed * std::max(megabytes(), usualMegabytes) / usualMegabytes;
}

QByteArray repeated(const QByteArray& part) {
    return part.repeated(hugeSize() / part.size());
}

QByteArray noise() {
    QRandomGenerator generator(20261121);
    QByteArray bytes(hugeSize(), '\0');
    std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(generator.generate()); });
    return bytes;
}

/// A script of one stop.
QByteArray script(const QByteArray& title, const QByteArray& stopTitle, const QByteArray& address,
                  const QByteArray& narration, const QByteArray& instruction) {
    return title + "\r\n\r\n" + stopTitle + "\r\n" + address + "\r\n\r\n" + narration + "\r\n\r\n" +
           instruction + "\r\n\r\n";
}

/// Measures for how long at most the windows have not answered.
class Heartbeat final {
public:
    Heartbeat() {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { beat(); });
        m_timer.start(interval);
        m_lastBeat.start();
    }

    qint64 longestSilence() {
        beat();
        return m_longest;
    }

private:
    static constexpr int interval = 10;

    void beat() { m_longest = std::max(m_longest, m_lastBeat.restart() - interval); }

    QTimer m_timer;
    QElapsedTimer m_lastBeat;
    qint64 m_longest = 0;
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
        folder = program.makeTour(QStringLiteral("huge"), 1);
        test::writeFile(toUtf8(folder + QStringLiteral("/script.txt")), script.toStdString());
    }

    void expectAnswers(const char* during, const std::function<void()>& act,
                       qint64 allowed = allowedSilence()) {
        Heartbeat heartbeat;
        act();
        QElapsedTimer passed;
        passed.start();
        static_cast<void>(waitUntil([&] { return passed.elapsed() >= aftermath; }));
        const qint64 silence = heartbeat.longestSilence();
        qInfo("%s: no answer for %lld ms", during, silence);
        QVERIFY2(silence <= allowed, during);
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
    Accepting m_accepting;
};

} // namespace

/// Every window goes on answering, whatever the size of a tour's texts, and gives them back whole.
class HostileInputTest final : public QObject {
    Q_OBJECT

private slots:
    void hugeTexts_data() {
        QTest::addColumn<QByteArray>("script");
        const QByteArray line = repeated("word ");
        const QByteArray lines = repeated("The quick <b>brown</b> fox jumps.\r\n");
        const QByteArray header = "<<<VoskInfo>>>#";
        QTest::newRow("title") << script(line, "Stop", "newpage.htm", "Words.", "Do it.");
        QTest::newRow("stop's title") << script("Title", line, "newpage.htm", "Words.", "Do it.");
        QTest::newRow("stop's local page") << script("Title", "Stop", line.simplified(), "Words.", "Do it.");
        QTest::newRow("stop's address")
            << script("Title", "Stop", "http://127.0.0.1:9/" + repeated("a"), "Words.", "Do it.");
        QTest::newRow("narration of lines") << script("Title", "Stop", "newpage.htm", lines, "Do it.");
        QTest::newRow("narration of one line") << script("Title", "Stop", "newpage.htm", line, "Do it.");
        QTest::newRow("narration of one word")
            << script("Title", "Stop", "newpage.htm", repeated("a"), "Do it.");
        QTest::newRow("narration of tags")
            << script("Title", "Stop", "newpage.htm", repeated("<i>"), "Do it.");
        QTest::newRow("instruction") << script("Title", "Stop", "newpage.htm", "Words.", lines);
        QTest::newRow("author") << header + "Author=" + line + "\r\n" +
                                       script("Title", "Stop", "newpage.htm", "Words.", "Do it.");
        QTest::newRow("launching point") << header + "LaunchURL=http://127.0.0.1:9/" + repeated("a") +
                                                "\r\n" +
                                                script("Title", "Stop", "newpage.htm", "Words.", "Do it.");
        QTest::newRow("100 launching points")
            << (header + "LaunchURL=" + repeated("a").left(hugeSize() / 100) + "\r\n").repeated(100) +
                   script("Title", "Stop", "newpage.htm", "Words.", "Do it.");
        QTest::newRow("stop label") << header + "StopName=" + line + "\r\n" +
                                           script("Title", "Stop", "newpage.htm", "Words.", "Do it.");
        QTest::newRow("100,000 stops")
            << "Title\r\n" +
                   QByteArray("Stop\r\nnewpage.htm\r\n\r\nWords.\r\n\r\nDo it.\r\n\r\n").repeated(100'000);
        QTest::newRow("NUL bytes") << QByteArray(hugeSize(), '\0');
        QTest::newRow("noise") << noise();
    }

    void hugeTexts() {
        QFETCH(QByteArray, script);
        HugeTour tour(script);
        const TourModel& model = tour.program.model;
        tour.expectAnswers("opening", [&] {
            tour.window.load(tour.folder);
            tour.window.show();
        });
        const auto read = model;
        tour.expectAnswers("next stop", [&] { tour.run("mnuNavigateNext"); });
        if (model.stopCount > 0) {
            tour.expectAnswers("narration editor", [&] { tour.run("mnuEditNarration"); });
            auto* const editor = tour.window.findChild<frmNarEdit*>();
            QVERIFY(editor != nullptr);
            tour.expectAnswers("apply", [&] { editor->findChild<QPushButton*>("btnOK")->click(); });
            tour.expectAnswers("site editor", [&] { tour.run("mnuEditSite"); });
            tour.expectAnswers("site editor's end", [&] { tour.window.findChild<frmBrowser*>()->close(); });
        }
        tour.expectAnswers("properties", [&] { tour.run("mnuEditProperties"); });
        tour.expectAnswers("launching information", [&] { tour.run("mnuViewLaunch"); });
        const qint64 printing = perPrintedStop * std::clamp<qint64>(model.stopCount, 0, tourCapacity);
        tour.expectAnswers(
            "print", [&] { tour.run("mnuFilePrint"); }, allowedSilence() + printing);
        tour.expectAnswers("save", [&] { tour.run("mnuFileSave"); });
        QVERIFY(model.tourTitle == read.tourTitle);
        QVERIFY(model.tourAuthor == read.tourAuthor);
        QVERIFY(model.stopTitle == read.stopTitle);
        QVERIFY(model.stopURL == read.stopURL);
        QVERIFY(model.stopNarration == read.stopNarration);
    }

    void hugeLists_data() {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("bytes");
        for (const QString& file : {QStringLiteral("goodlist.txt"), QStringLiteral("brhist.txt")}) {
            const auto add = [&](const char* name, const QByteArray& bytes) {
                QTest::addRow("%s, %s", qPrintable(file), name) << file << bytes;
            };
            add("noise", noise());
            add("one line", repeated("a"));
            add("short lines", repeated("a\r\n"));
            add("empty lines", repeated("\r\n"));
            add("addresses", repeated("http://127.0.0.1:9/a/page/of/some/length.htm\r\n"));
            add("NUL bytes", QByteArray(hugeSize(), '\0'));
        }
        QTest::newRow("goodlist.txt, noted addresses")
            << QStringLiteral("goodlist.txt")
            << "{Wendmark Bookmark List}\r\n" +
                   repeated("http://127.0.0.1:9/a/page/of/some/length.htm\r\nWhat I think of it.\r\n1\r\n");
    }

    void hugeLists() {
        QFETCH(QString, file);
        QFETCH(QByteArray, bytes);
        HugeTour tour("Title\r\n\r\nStop\r\nnewpage.htm\r\n\r\nWords.\r\n\r\nDo it.\r\n\r\n");
        test::writeFile(toUtf8(tour.folder + QLatin1Char('/') + file), bytes.toStdString());
        tour.expectAnswers("opening", [&] {
            tour.window.load(tour.folder);
            tour.window.show();
        });
        tour.expectAnswers("next stop", [&] { tour.run("mnuNavigateNext"); });
        tour.expectAnswers("site editor", [&] { tour.run("mnuEditSite"); });
        tour.expectAnswers("site editor's end", [&] { tour.window.findChild<frmBrowser*>()->close(); });
        tour.expectAnswers("save", [&] { tour.run("mnuFileSave"); });
    }
};

} // namespace wendmark

QTEST_MAIN(wendmark::HostileInputTest)
#include "HostileInputTest.moc"
