#include "platform/SpellChecker.h"

#include "support/TestTour.h"
#include "ui/support/Dictionaries.h"

#include <QLocale>
#include <QSignalSpy>
#include <QTest>

namespace wendmark {

using test::Dictionaries;

class SpellCheckerTest final : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void wordsAreRightOrWrong() {
        const Dictionaries dictionaries;
        SpellChecker spelling(m_log);
        spelling.setLanguage("en_US");
        QCOMPARE(spelling.language(), QString("en_US"));
        for (const char* word : {"cactus", "Cactus", "CACTUS", "café", "don't", "don’t"})
            QVERIFY2(spelling.isCorrect(QString::fromUtf8(word)), word);
        for (const char* word : {"cactsu", "cafe", "dont"})
            QVERIFY2(!spelling.isCorrect(QString::fromUtf8(word)), word);
        QVERIFY(spelling.suggestionsFor("cactsu").contains("cactus"));
        QVERIFY(spelling.suggestionsFor("caffé").contains(QString::fromUtf8("café")));
    }

    void dictionaryOfAnotherEncodingIsUnderstood() {
        const Dictionaries dictionaries;
        SpellChecker spelling(m_log);
        spelling.setLanguage("de_DE");
        QVERIFY(spelling.isCorrect(QString::fromUtf8("Wüste")));
        QVERIFY(!spelling.isCorrect(QString::fromUtf8("Wüsste")));
        QVERIFY(spelling.suggestionsFor(QString::fromUtf8("Wüstte")).contains(QString::fromUtf8("Wüste")));
    }

    void wordInLettersThatTheDictionaryLacksIsNotWrong() {
        const Dictionaries dictionaries;
        SpellChecker spelling(m_log);
        spelling.setLanguage("de_DE");
        QVERIFY(spelling.isCorrect(QString::fromUtf8("Ωμέγα")));
        QVERIFY(!spelling.isCorrect("Wuesste")); // The word before has left no trace.
    }

    void everyWordIsRightWithoutADictionary() {
        const Dictionaries dictionaries;
        SpellChecker spelling(m_log);
        QVERIFY(spelling.isCorrect("cactsu"));
        spelling.setLanguage("xx_YY");
        QCOMPARE(spelling.language(), QString());
        QVERIFY(spelling.isCorrect("cactsu"));
        QCOMPARE(spelling.suggestionsFor("cactsu"), QStringList());
        QVERIFY(m_log.failures.empty());
    }

    void dictionaryInAnUnknownEncodingIsNotUsed() {
        const Dictionaries dictionaries;
        dictionaries.install("qq", "SET no-such-encoding\n", "1\nword\n");
        SpellChecker spelling(m_log);
        spelling.setLanguage("qq");
        QCOMPARE(spelling.language(), QString());
        QVERIFY(spelling.isCorrect("wrod"));
    }

    void dictionariesOfTheUserAndOfTheSystemAreFound() {
        const Dictionaries dictionaries;
        dictionaries.installForUser("fr_FR", "SET UTF-8\n", "1\nmot\n");
        test::writeFile(dictionaries.systemFile("hyph_de_DE.dic"), "UTF-8\n"); // Not for spelling.
        QCOMPARE(SpellChecker::installedLanguages(), QStringList({"de_DE", "en_US", "fr_FR"}));
    }

    void dictionaryOfTheAuthorsOwnLanguageIsPreferred_data() {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("language");
        QTest::newRow("same country") << "de_DE"
                                      << "de_DE";
        QTest::newRow("another country") << "de_AT"
                                         << "de_DE";
        QTest::newRow("no dictionary") << "fr_FR"
                                       << "";
        QTest::newRow("no locale") << "C"
                                   << "en_US";
    }
    void dictionaryOfTheAuthorsOwnLanguageIsPreferred() {
        QFETCH(QString, locale);
        const Dictionaries dictionaries;
        QLocale::setDefault(QLocale(locale));
        QTEST(SpellChecker::preferredLanguage(), "language");
    }

    void addedWordIsRightInLaterRunsToo() {
        const Dictionaries dictionaries;
        const QString word = QString::fromUtf8("Çapuccino");
        {
            SpellChecker spelling(m_log);
            spelling.setLanguage("en_US");
            QVERIFY(!spelling.isCorrect(word));
            const QSignalSpy changed(&spelling, &SpellChecker::changed);
            spelling.addWord(word);
            QVERIFY(spelling.isCorrect(word));
            QCOMPARE(changed.count(), 1);
            spelling.addWord("second");
        }
        SpellChecker later(m_log);
        later.setLanguage("en_US");
        QVERIFY(later.isCorrect(word));
        QVERIFY(later.isCorrect("second"));
        QVERIFY(!later.isCorrect("third"));
    }

    void wordThatCannotBeKeptIsAFailureAndRightForNow() {
        const Dictionaries dictionaries;
        test::writeFile(dictionaries.configFolder() + "/Wendmark", "A file where the folder should be");
        SpellChecker spelling(m_log);
        spelling.setLanguage("en_US");
        spelling.addWord("Wendmark");
        QVERIFY(spelling.isCorrect("Wendmark"));
        QCOMPARE(m_log.failures.size(), std::size_t(1));
    }

private:
    test::RecordingLog m_log;
};

} // namespace wendmark

QTEST_GUILESS_MAIN(wendmark::SpellCheckerTest)

#include "SpellCheckerTest.moc"
