#include "ui/dialogs/LanguageBox.h"

#include <QComboBox>
#include <QString>
#include <array>

namespace wendmark {

namespace {

struct Language {
    const char* code;
    const char* name; ///< UTF-8.
};

constexpr std::array<Language, 11> languages = {{{"", "English"},
                                                 {"de", "Deutsch"},
                                                 {"es", "Espa\u00f1ol"},
                                                 {"fr", "Fran\u00e7ais"},
                                                 {"it", "Italiano"},
                                                 {"nl", "Nederlands"},
                                                 {"pl", "Polski"},
                                                 {"pt", "Portugu\u00eas"},
                                                 {"he", "\u05e2\u05d1\u05e8\u05d9\u05ea"},
                                                 {"ar", "\u0627\u0644\u0639\u0631\u0628\u064a\u0629"},
                                                 {"ja", "\u65e5\u672c\u8a9e"}}};

} // namespace

QComboBox* makeLanguageBox(QWidget* parent) {
    auto* const box = new QComboBox(parent);
    box->setObjectName(QStringLiteral("cboLanguage"));
    for (const Language& language : languages)
        box->addItem(QString::fromUtf8(language.name), QString::fromUtf8(language.code));
    return box;
}

void chooseLanguage(QComboBox& box, const QString& code) {
    if (box.findData(code) < 0)
        box.addItem(code, code);
    box.setCurrentIndex(box.findData(code));
}

} // namespace wendmark
