#include "ui/narration/Spelling.h"

#include "platform/Settings.h"
#include "platform/SpellChecker.h"
#include "ui/ProgramParts.h"

namespace wendmark {

void beginSpelling(const ProgramParts& parts) {
    const QString chosen = parts.settings.read(narrationSettings::spellingLanguage);
    const QString language = chosen.isEmpty() ? SpellChecker::preferredLanguage() : chosen;
    if (language != narrationSettings::noSpelling && language != parts.spelling.language())
        parts.spelling.setLanguage(language);
}

void chooseSpelling(const ProgramParts& parts, const QString& language) {
    parts.spelling.setLanguage(language);
    parts.settings.store(narrationSettings::spellingLanguage,
                         language.isEmpty() ? narrationSettings::noSpelling : language);
}

} // namespace wendmark
