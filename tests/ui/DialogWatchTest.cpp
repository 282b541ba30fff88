#include "ui/support/Patience.h"
#include "ui/support/UiFixture.h"

#include <QProcess>
#include <QTest>

namespace wendmark {

using test::patience;

/// A test that fails ends, whatever dialogs are open.
class DialogWatchTest final : public QObject {
    Q_OBJECT

private slots:
    void failingTestEnds_data() {
        QTest::addColumn<QByteArray>("message");
        QTest::newRow("failedComparison") << QByteArray("Compared values are not the same");
        QTest::newRow("failedComparisonInADialogOfADialog") << QByteArray("Compared values are not the same");
        QTest::newRow("missingButton") << QByteArray("no button Perhaps");
        QTest::newRow("dialogThatComesAfterTheFailure") << QByteArray("Compared values are not the same");
        QTest::newRow("dialogThatRefusesToClose") << QByteArray("Compared values are not the same");
        QTest::newRow("expectedDialogDoesNotCome") << QByteArray("the test expects does not come");
        QTest::newRow("dialogThatNobodyExpects") << QByteArray("the dialog \"Wendmark\" is not closed");
    }

    void failingTestEnds() {
        QFETCH(QByteArray, message);
        const auto [exitCode, output] = run(QTest::currentDataTag());
        QVERIFY2(output.contains(message), output.constData());
        QVERIFY2(output.contains("2 passed, 1 failed"), output.constData());
        QCOMPARE(exitCode, 1);
    }

    void testThatDoesNotFailIsLeftAlone() {
        const auto [exitCode, output] = run("nothingFails");
        QVERIFY2(output.contains("3 passed, 0 failed"), output.constData());
        QCOMPARE(exitCode, 0);
    }

private:
    struct Ended {
        int exitCode;
        QByteArray output;
    };

    /// Runs one function of the failing program; -1 when it does not end by itself.
    static Ended run(const char* function) {
        QProcess program;
        program.setProcessChannelMode(QProcess::MergedChannels);
        program.start(QStringLiteral(UNANSWERED_DIALOGS), {QLatin1String(function)});
        const bool ended = test::waitUntil([&] { return program.state() == QProcess::NotRunning; }, patience);
        if (!ended) {
            program.kill();
            program.waitForFinished(test::patience);
        }
        const bool byItself = ended && program.exitStatus() == QProcess::NormalExit;
        return {byItself ? program.exitCode() : -1, program.readAll()};
    }
};

} // namespace wendmark

QTEST_MAIN(wendmark::DialogWatchTest)
#include "DialogWatchTest.moc"
