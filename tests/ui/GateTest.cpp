#include "platform/Gate.h"

#include "ui/support/UiFixture.h"

#include <QTest>
#include <QTimer>
#include <memory>

namespace wendmark {

/// Commands never run inside one another, and none is lost.
class GateTest final : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_order.clear();
        m_gate = std::make_unique<Gate>();
    }

    void openGateRunsACommandAtOnce() {
        give("a");
        QCOMPARE(m_order, QString("a"));
        QVERIFY(m_gate->isOpen());
    }

    void commandGivenInsideAnotherOneComesAfterIt() {
        m_gate->run(*this, [this] {
            m_order += "(";
            give("b");
            give("c");
            m_order += ")";
        });
        QCOMPARE(m_order, QString("()"));
        QVERIFY(!m_gate->isOpen());
        QVERIFY(test::waitUntil([this] { return m_order == "()bc"; }));
        QVERIFY(m_gate->isOpen());
    }

    void commandGivenWhileAnotherOneWaitsComesAfterIt() {
        QTimer::singleShot(0, this, [this] { give("b"); });
        m_gate->run(*this, [this] {
            while (m_gate->isOpen() || m_order.isEmpty()) {
                m_gate->handleEvents();
                m_order += QLatin1Char('w');
                if (m_order.size() > 3)
                    break;
            }
            m_order += ")";
        });
        QVERIFY(m_order.endsWith(")"));
        QVERIFY(test::waitUntil([this] { return m_order.endsWith(")b"); }));
    }

    void commandGivenBetweenTwoQueuedOnesKeepsItsTurn() {
        m_gate->run(*this, [this] {
            give("b");
            give("c");
        });
        give("d");
        QVERIFY(test::waitUntil([this] { return m_order == "bcd"; }));
    }

    void lookRunsInsideAWaitThatChangesNothingAndAChangeDoesNot() {
        QTimer::singleShot(0, this, [this] {
            m_gate->run(
                *this, [this] { m_order += "l"; }, Gate::Kind::look);
            give("c");
        });
        m_gate->run(*this, [this] {
            while (!m_order.contains("l"))
                m_gate->handleEvents(true);
            m_order += ")";
        });
        QCOMPARE(m_order, QString("l)"));
        QVERIFY(test::waitUntil([this] { return m_order == "l)c"; }));
    }

    void lookWaitsWhileTheTourMayBeHalfDone() {
        QTimer::singleShot(0, this, [this] {
            m_order += "t";
            m_gate->run(
                *this, [this] { m_order += "l"; }, Gate::Kind::look);
        });
        m_gate->run(*this, [this] {
            while (!m_order.contains("t"))
                m_gate->handleEvents();
            m_order += ")";
        });
        QCOMPARE(m_order, QString("t)"));
        QVERIFY(test::waitUntil([this] { return m_order == "t)l"; }));
    }

    void commandOfAnOwnerThatIsGoneIsLeftOutAndTheNextOneComes() {
        auto owner = std::make_unique<QObject>();
        m_gate->run(*this, [&] {
            m_gate->run(*owner, [this] { m_order += "x"; });
            give("b");
        });
        owner.reset();
        QVERIFY(test::waitUntil([this] { return m_order == "b"; }));
    }

    void sameCommandGivenAgainWhileItWaitsIsGivenOnce() {
        m_gate->run(*this, [this] {
            for (int k = 0; k < 3; ++k)
                m_gate->runOnce(*this, "save", [this] { m_order += "s"; });
            give("b");
            m_gate->runOnce(*this, "save", [this] { m_order += "s"; });
        });
        QVERIFY(test::waitUntil([this] { return m_gate->isOpen(); }));
        QCOMPARE(m_order, QString("sbs"));
    }

    void breathingRunsNothingThatTheAuthorGives() {
        QTimer::singleShot(0, this, [this] { give("b"); });
        m_gate->run(*this, [this] {
            m_gate->breathe();
            m_order += ")";
        });
        QVERIFY(test::waitUntil([this] { return m_order == ")b"; }));
    }

private:
    void give(const QString& name) {
        m_gate->run(*this, [this, name] { m_order += name; });
    }

    std::unique_ptr<Gate> m_gate;
    QString m_order;
};

} // namespace wendmark

QTEST_MAIN(wendmark::GateTest)
#include "GateTest.moc"
