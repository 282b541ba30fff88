#include "ui/support/Dictionaries.h"

#include "support/TestTour.h"

#include <QByteArray>
#include <QtGlobal>
#include <array>
#include <filesystem>

namespace wendmark::test {

namespace {

constexpr std::array<const char*, 3> folderVariables = {"XDG_DATA_DIRS", "XDG_DATA_HOME", "XDG_CONFIG_HOME"};
std::array<QByteArray, 3> formerFolders;

} // namespace

Dictionaries::Dictionaries() {
    const std::array<std::string, 3> folders = {m_scratch / "system", m_scratch / "user", configFolder()};
    for (std::size_t i = 0; i < folderVariables.size(); ++i) {
        formerFolders[i] = qgetenv(folderVariables[i]);
        qputenv(folderVariables[i], QByteArray::fromStdString(folders[i]));
    }
    install("en_US", "SET UTF-8\nTRY esianrtolcdugmphbyfvkwz'\nWORDCHARS '\n",
            "7\ncactus\nwater\nstores\nthe\ncafé\ndon't\nand\n");
    install("de_DE", "SET ISO8859-1\nTRY esianrtolcdugmphbyfvkwz\n", "1\nW\xFCste\n");
}

Dictionaries::~Dictionaries() {
    for (std::size_t i = 0; i < folderVariables.size(); ++i) {
        if (formerFolders[i].isNull())
            qunsetenv(folderVariables[i]);
        else
            qputenv(folderVariables[i], formerFolders[i]);
    }
}

void Dictionaries::install(const std::string& language, const std::string& rules,
                           const std::string& words) const {
    writeFile(systemFile(language + ".aff"), rules);
    writeFile(systemFile(language + ".dic"), words);
}

void Dictionaries::installForUser(const std::string& language, const std::string& rules,
                                  const std::string& words) const {
    writeFile(m_scratch / ("user/hunspell/" + language + ".aff"), rules);
    writeFile(m_scratch / ("user/hunspell/" + language + ".dic"), words);
}

void Dictionaries::removeAll() const {
    std::filesystem::remove_all(m_scratch / "system");
    std::filesystem::remove_all(m_scratch / "user");
}

std::string Dictionaries::systemFile(const std::string& name) const {
    return m_scratch / ("system/hunspell/" + name);
}

std::string Dictionaries::configFolder() const {
    return m_scratch / "config";
}

} // namespace wendmark::test
