#include "platform/SpellChecker.h"

#include "base/Log.h"
#include "platform/Strings.h"

#include <QDir>
#include <QFile>
#include <QLocale>
#include <QStandardPaths>
#include <hunspell/hunspell.hxx>

namespace wendmark {

namespace {

constexpr char16_t typographicApostrophe = u'\u2019';

/// The user's own folders come first.
QStringList dictionaryFolders() {
    QStringList folders;
    for (const QString& data : QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation)) {
        for (const char* name : {"/hunspell", "/myspell", "/myspell/dicts"})
            folders.append(data + QLatin1String(name));
    }
    return folders;
}

/// Path of a dictionary's two files without their endings; empty when it is not installed.
QString dictionaryPath(const QString& language) {
    for (const QString& folder : dictionaryFolders()) {
        QString path = folder + QLatin1Char('/') + language;
        if (QFile::exists(path + QStringLiteral(".dic")) && QFile::exists(path + QStringLiteral(".aff")))
            return path;
    }
    return {};
}

QString ownWordsPath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/Wendmark/words.txt");
}

/// An encoding's name as dictionaries write it, in the form that converters know.
QByteArray converterName(const std::string& encoding) {
    const QByteArray name = QByteArray::fromStdString(encoding);
    const QByteArray vendor = QByteArrayLiteral("microsoft-");
    return name.startsWith(vendor) ? name.mid(vendor.size()) : name;
}

/// Dictionaries know the straight apostrophe only.
QString asInDictionary(const QString& word) {
    return QString(word).replace(QChar(typographicApostrophe), QLatin1Char('\''));
}

} // namespace

SpellChecker::SpellChecker(Log& log, QObject* parent) : QObject(parent), m_log(log) {
    readOwnWords();
}

SpellChecker::~SpellChecker() = default;

QStringList SpellChecker::installedLanguages() {
    QStringList languages;
    for (const QString& folder : dictionaryFolders()) {
        for (const QString& file : QDir(folder).entryList({QStringLiteral("*.dic")}, QDir::Files)) {
            const QString language = file.chopped(4);
            // Hyphenation patterns and other lists stand beside the dictionaries.
            if (!languages.contains(language) && !dictionaryPath(language).isEmpty())
                languages.append(language);
        }
    }
    languages.sort();
    return languages;
}

QString SpellChecker::preferredLanguage() {
    const QStringList installed = installedLanguages();
    const QLocale locale;
    QString own = locale.language() == QLocale::C ? QStringLiteral("en_US") : locale.name();
    if (installed.contains(own))
        return own;
    const QString language = own.section(QLatin1Char('_'), 0, 0);
    for (const QString& candidate : installed) {
        if (candidate.section(QLatin1Char('_'), 0, 0) == language)
            return candidate;
    }
    return {};
}

void SpellChecker::setLanguage(const QString& language) {
    m_dictionary.reset();
    m_language.clear();
    if (!language.isEmpty() && load(language))
        m_language = language;
    emit changed();
}

bool SpellChecker::isCorrect(const QString& word) {
    if (!m_dictionary || m_ownWords.contains(word))
        return true;
    const QString form = asInDictionary(word);
    const QByteArray encoded = m_encoder.encode(form);
    // A word in letters that the dictionary does not have cannot be judged by it.
    return m_decoder.decode(encoded) != form || m_dictionary->spell(encoded.toStdString());
}

QStringList SpellChecker::suggestionsFor(const QString& word) {
    if (!m_dictionary)
        return {};
    const QByteArray encoded = m_encoder.encode(asInDictionary(word));
    QStringList suggestions;
    for (const std::string& suggestion : m_dictionary->suggest(encoded.toStdString()))
        suggestions.append(m_decoder.decode(QByteArray::fromStdString(suggestion)));
    return suggestions;
}

void SpellChecker::addWord(const QString& word) {
    m_ownWords.insert(word);
    const QString path = ownWordsPath();
    QFile file(path);
    QDir().mkpath(QFileInfo(path).absolutePath());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append) || file.write(word.toUtf8() + '\n') < 0)
        m_log.fail("cannot keep a word in " + toUtf8(path) + ": " + toUtf8(file.errorString()));
    emit changed();
}

void SpellChecker::readOwnWords() {
    QFile file(ownWordsPath());
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return;
    const QStringList words = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    m_ownWords = QSet<QString>(words.begin(), words.end());
}

bool SpellChecker::load(const QString& language) {
    const QString path = dictionaryPath(language);
    if (path.isEmpty()) {
        m_log.note("no spelling dictionary " + toUtf8(language));
        return false;
    }
    m_dictionary = std::make_unique<Hunspell>(QFile::encodeName(path + QStringLiteral(".aff")).constData(),
                                              QFile::encodeName(path + QStringLiteral(".dic")).constData());
    const QByteArray encoding = converterName(m_dictionary->get_dict_encoding());
    m_encoder = QStringEncoder(encoding.constData(), QStringEncoder::Flag::Stateless);
    m_decoder = QStringDecoder(encoding.constData(), QStringDecoder::Flag::Stateless);
    if (m_encoder.isValid() && m_decoder.isValid())
        return true;
    m_log.note("the spelling dictionary " + toUtf8(path) +
               " has an unknown encoding: " + encoding.toStdString());
    m_dictionary.reset();
    return false;
}

} // namespace wendmark
