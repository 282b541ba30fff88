#include "platform/BrowserView.h"
#include "ui/main/frmMain.h"
#include "ui/support/UiFixture.h"

#include <QApplication>
#include <QCursor>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QTest>
#include <QTimer>
#include <QUrl>
#include <algorithm>

namespace wendmark {

using test::UiFixture;

namespace {

constexpr int stops = 12;
constexpr int longestSilence = 100; // Milliseconds of a command after which the windows get their turn.

/// Calls `act` in each turn that the windows get while a command is under way.
class BetweenSteps final {
public:
    BetweenSteps(UiFixture& program, std::function<void()> act) : m_act(std::move(act)) {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this, &program] {
            if (!program.gate.isClosed())
                return;
            ++turns;
            m_act();
        });
        m_timer.start(0);
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
        everyStepTakes(0);
        m_program = std::make_unique<UiFixture>();
        const QString small = m_program->makeTour(QStringLiteral("small"), 3);
        m_big = m_program->makeTour(QStringLiteral("big"), stops);
        m_program->stepClock = [this] { return m_milliseconds += m_stepTime; };
        m_window = std::make_unique<frmMain>(m_program->parts());
        m_window->load(small);
        m_window->show();
        QVERIFY(test::waitUntil([this] { return !browser().isBusy(); }));
        everyStepTakes(longestSilence);
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
        const auto turnsOfASave = [&] {
            const int before = between.turns;
            m_window->save();
            return between.turns - before;
        };
        everyStepTakes(0);
        const int inItsPauses = turnsOfASave();
        everyStepTakes(longestSilence);
        QVERIFY(turnsOfASave() >= inItsPauses + stops);
        QCOMPARE(m_program->log.failures, std::vector<std::string>());
    }

    /// A command's first step begins the count, and the second one ends it here.
    void ordinaryCommandsAreNotInterrupted() {
        BetweenSteps between(*m_program, [] {});
        everyStepTakes(0);
        openBig();
        m_window->insertStop();
        QCOMPARE(m_program->model.stopCount(), std::int16_t(stops + 1));
        QCOMPARE(between.turns, 0);
        QCoreApplication::sendPostedEvents();
        everyStepTakes(longestSilence - 1);
        m_program->desktop.stayResponsive();
        m_program->desktop.stayResponsive();
        QCOMPARE(between.turns, 0);
    }

    void turnsComeAsSoonAsACommandIsLong() {
        int betweenSteps = 0;
        QObject events;
        QCoreApplication::sendPostedEvents();
        QTimer::singleShot(0, &events, [&] { betweenSteps += m_program->gate.isClosed() ? 1 : 0; });
        m_program->desktop.stayResponsive();
        QCOMPARE(betweenSteps, 0);
        m_program->desktop.stayResponsive();
        QCOMPARE(betweenSteps, 1);
    }

    void commandIsLongByTheSystemsTime() {
        m_program->stepClock = realStepClock();
        int turns = 0;
        QObject events;
        QTimer::singleShot(0, &events, [&] { turns += m_program->gate.isClosed() ? 1 : 0; });
        while (turns == 0) // As long as it takes; the step clock is not asked to be quick.
            m_program->desktop.stayResponsive();
        QCOMPARE(turns, 1);
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
        test::fireClocks(*m_window);
        QCOMPARE(m_program->model.currentStop, std::int16_t(0)); // The page before it said that.
    }

    /// The page of the tour before is on screen until the new one's is loaded.
    void stopOfTheTourBeforeIsNotTakenOverAfterNew() {
        everyStepTakes(0);
        test::onNextDialog([](QDialog& wizard) {
            wizard.findChild<QLineEdit*>(QStringLiteral("txtTourName"))->setText(QStringLiteral("garden"));
            wizard.findChild<QLineEdit*>(QStringLiteral("txtTitle"))->setText(QStringLiteral("Garden"));
            test::press(wizard, QStringLiteral("btnNext"));
        });
        test::onNextDialog([](QDialog& wizard) { test::press(wizard, QStringLiteral("btnNext")); });
        m_program->model.tourChanged = false;
        m_window->newTour();
        QCOMPARE(m_program->model.tourTitle, std::string("Garden"));
        announceStop2();
        QCOMPARE(m_program->model.currentStop, std::int16_t(0));
    }

    void announcedStopIsTakenOverAfterASave() {
        openBig();
        m_window->next();
        const auto& label = *m_window->findChild<QLabel*>(QStringLiteral("lblStopNum"));
        QVERIFY(test::waitUntil([&] { return label.text() == QLatin1String("1"); }));
        showSilentPage();
        bool said = false;
        std::vector<std::int16_t> stopsSeen;
        BetweenSteps between(*m_program, [&] {
            if (!std::exchange(said, true))
                announceStop2();
            stopsSeen.push_back(m_program->model.currentStop);
        });
        m_window->save();
        QVERIFY(said);
        QCOMPARE(std::count(stopsSeen.begin(), stopsSeen.end(), std::int16_t(1)),
                 qsizetype(stopsSeen.size()));
        QVERIFY(test::waitUntil([&] { return m_program->model.currentStop == 2; }));
    }

    void recoveryWaits() {
        int checks = 0;
        int checksBetweenSteps = 0;
        m_program->recovery.unappliedTexts = [&]() -> std::optional<UnappliedTexts> {
            ++checks;
            checksBetweenSteps += m_program->gate.isClosed() ? 1 : 0;
            return std::nullopt;
        };
        BetweenSteps between(*m_program, [this] { test::fireClocks(*m_window); });
        openBig();
        QVERIFY(between.turns > 0);
        QCOMPARE(checksBetweenSteps, 0);
        test::fireClocks(*m_window);
        QVERIFY(checks > 0);
    }

private:
    /// From now on the clock of long commands goes on by so many milliseconds whenever it is looked at.
    void everyStepTakes(qint64 milliseconds) { m_stepTime = milliseconds; }

    /// Shows a page that announces no stop, so that no announcement comes but those that a test makes up.
    /// Each stop announces itself more than once: the navigator may not have been there the first time.
    void showSilentPage() const {
        browser().navigate(m_program->working(QStringLiteral("newpage.htm")));
        QVERIFY(test::waitUntil([this] {
            return browser().locationName() == QLatin1String("A stop without a page") && !browser().isBusy();
        }));
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
    qint64 m_milliseconds = 0;
    qint64 m_stepTime = 0;
};

} // namespace wendmark

QTEST_MAIN(wendmark::LongCommandsTest)
#include "LongCommandsTest.moc"
