#include "platform/BrowserView.h"
#include "ui/main/frmMain.h"
#include "ui/support/UiFixture.h"

#include <QApplication>
#include <QCursor>
#include <QElapsedTimer>
#include <QLabel>
#include <QMouseEvent>
#include <QTest>
#include <QTimer>
#include <QUrl>
#include <algorithm>

namespace wendmark {

using test::UiFixture;

namespace {

constexpr int stops = 12;
constexpr std::size_t narrationSize = 4'000'000; // Bytes.

/// Calls `act` every few milliseconds that the windows get while a command is under way.
class BetweenSteps final {
public:
    BetweenSteps(UiFixture& program, std::function<void()> act) : m_act(std::move(act)) {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this, &program] {
            if (!program.desktop.isBetweenSteps())
                return;
            ++turns;
            m_act();
        });
        m_timer.start(1);
    }

    int turns = 0;

private:
    std::function<void()> m_act;
    QTimer m_timer;
};

class MouseMoves final : public QObject {
public:
    explicit MouseMoves(QWidget& window) : m_window(window) { qApp->installEventFilter(this); }

    int count = 0;

protected:
    bool eventFilter(QObject* object, QEvent* event) override {
        if (object == m_window.windowHandle() && event->type() == QEvent::MouseMove)
            ++count;
        return false;
    }

private:
    QWidget& m_window;
};

} // namespace

/// A command that takes long leaves the windows their turns between its steps, and none to what would get in
/// its way.
class LongCommandsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_program = std::make_unique<UiFixture>();
        const QString small = m_program->makeTour(QStringLiteral("small"), 3);
        m_big = m_program->makeTour(QStringLiteral("big"), stops);
        m_window = std::make_unique<frmMain>(m_program->parts());
        m_window->load(small);
        m_window->show();
        QVERIFY(test::waitUntil([this] { return !browser().isBusy(); }));
        makeBig();
    }

    void cleanup() {
        QCOMPARE(test::dialogsExpected(), 0);
        m_window.reset();
        m_program.reset();
    }

    void windowsGetTheirTurns() {
        BetweenSteps between(*m_program, [] {});
        openBig();
        QVERIFY(between.turns > 0);
        const int whileOpening = between.turns;
        m_window->save();
        QVERIFY(between.turns > whileOpening);
        QCOMPARE(m_program->log.failures, std::vector<std::string>());
    }

    void ordinaryCommandsAreNotInterrupted() {
        BetweenSteps between(*m_program, [] {});
        int quick = 0; // A busy disk makes any command a long one.
        for (int k = 0; k < 20; ++k) {
            QElapsedTimer passed;
            passed.start();
            m_window->refresh();
            if (passed.elapsed() >= 100) {
                between.turns = 0;
                continue;
            }
            QCOMPARE(between.turns, 0);
            ++quick;
        }
        QVERIFY(quick > 0);
    }

    void authorsInputWaits() {
        MouseMoves moves(*m_window);
        const QPoint middle = m_window->geometry().center();
        int seenBetweenSteps = 0;
        BetweenSteps between(*m_program, [&] {
            QCursor::setPos(middle + QPoint(moves.count, between.turns % 50));
            seenBetweenSteps = moves.count;
        });
        openBig();
        QVERIFY(between.turns > 1);
        QCOMPARE(seenBetweenSteps, 0);
        QVERIFY(test::waitUntil([&] { return moves.count > 0; }));
    }

    void announcedStopWaits() {
        std::vector<std::int16_t> stopsSeen;
        BetweenSteps between(*m_program, [&] {
            announceStop2();
            stopsSeen.push_back(m_program->model.currentStop);
        });
        openBig();
        QVERIFY(!stopsSeen.empty());
        QCOMPARE(std::count(stopsSeen.begin(), stopsSeen.end(), std::int16_t(0)),
                 qsizetype(stopsSeen.size()));
        QElapsedTimer passed;
        passed.start();
        QVERIFY(test::waitUntil([&] { return passed.elapsed() > 300; })); // Nothing tells that nothing comes.
        QCOMPARE(m_program->model.currentStop, std::int16_t(0));          // The page before it said that.
    }

    void announcedStopIsTakenOverAfterASave() {
        openBig();
        m_window->next();
        const auto& label = *m_window->findChild<QLabel*>(QStringLiteral("lblStopNum"));
        QVERIFY(test::waitUntil([&] { return label.text() == QLatin1String("1") && !browser().isBusy(); }));
        bool said = false;
        BetweenSteps between(*m_program, [&] {
            if (!std::exchange(said, true))
                announceStop2();
        });
        m_window->save();
        QVERIFY(said);
        QVERIFY(test::waitUntil([&] { return m_program->model.currentStop == 2; }));
    }

    void recoveryWaits() {
        int checks = 0;
        int checksBetweenSteps = 0;
        m_program->recovery.unappliedTexts = [&]() -> std::optional<UnappliedTexts> {
            ++checks;
            checksBetweenSteps += m_program->desktop.isBetweenSteps() ? 1 : 0;
            return std::nullopt;
        };
        QElapsedTimer passed;
        passed.start();
        while (passed.elapsed() < 1500) // Three times as long as the recovery waits between two looks.
            openBig();
        QVERIFY(test::waitUntil([&] { return checks > 0; }));
        QCOMPARE(checksBetweenSteps, 0);
    }

private:
    /// Gives each stop of the tour on disk a narration that takes its time.
    void makeBig() const {
        std::string script = "<<<VoskInfo>>>#BufferDelay = 30\r\n\r\nBig tour\r\n\r\n";
        const std::string line(80, 'w');
        for (int n = 1; n <= stops; ++n) {
            script += "<<<VoskInfo>>> Stop" + std::to_string(n) + "\r\nStop\r\nnewpage.htm\r\n\r\n";
            for (std::size_t size = 0; size < narrationSize; size += line.size() + 2)
                script += line + "\r\n";
            script += "\r\n<!--instruction-->\r\n\r\n";
        }
        test::writeFile(m_big.toStdString() + "/script.txt", script);
    }

    void openBig() const {
        test::onNextDialog([this](QDialog& dialog) {
            test::selectFolder(dialog, m_big);
            test::press(dialog, QStringLiteral("btnOK"));
        });
        m_program->model.tourChanged = false;
        m_window->openTour();
        QCOMPARE(m_program->model.stopCount(), std::int16_t(stops));
    }

    BrowserView& browser() const { return *m_window->findChild<BrowserView*>(QStringLiteral("broMain")); }

    void announceStop2() const {
        const QUrl page = QUrl::fromLocalFile(m_program->working(QStringLiteral("page2.htm")));
        emit browser().statusTextChanged(QStringLiteral(">*>*>vosktourstop->2"), page);
    }

    std::unique_ptr<UiFixture> m_program;
    std::unique_ptr<frmMain> m_window;
    QString m_big;
};

} // namespace wendmark

QTEST_MAIN(wendmark::LongCommandsTest)
#include "LongCommandsTest.moc"
