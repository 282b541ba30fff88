#pragma once

#include <QObject>
#include <QSet>
#include <QStringDecoder>
#include <QStringEncoder>
#include <QStringList>
#include <memory>

class Hunspell;

namespace wendmark {

class Log;

/// Checks words against one of the dictionaries that are installed, and against the words that the author has
/// added. Without a dictionary every word is right.
class SpellChecker final : public QObject {
    Q_OBJECT

public:
    /// The log must outlive the checker.
    explicit SpellChecker(Log& log, QObject* parent = nullptr);
    ~SpellChecker() override;

    /// Names of the dictionaries that are installed, such as "en_US", sorted.
    static QStringList installedLanguages();

    /// The dictionary for the author's own language, in the author's country if there is one; empty when none
    /// is installed.
    static QString preferredLanguage();

    /// The dictionary in use; empty: words are not checked.
    QString language() const { return m_language; }

    /// A dictionary that cannot be had is a note in the log, and words are then not checked.
    void setLanguage(const QString& language);

    bool isCorrect(const QString& word);

    /// The best first.
    QStringList suggestionsFor(const QString& word);

    /// From now on the word is right, in later runs of the program too.
    void addWord(const QString& word);

signals:
    /// Words may be right now that were wrong, or the other way round.
    void changed();

private:
    void readOwnWords();
    bool load(const QString& language);

    Log& m_log;
    std::unique_ptr<Hunspell> m_dictionary;
    QStringEncoder m_encoder; ///< Into the encoding of the dictionary.
    QStringDecoder m_decoder;
    QString m_language;
    QSet<QString> m_ownWords;
};

} // namespace wendmark
