#pragma once

#include "platform/SettingsStore.h"

/// What the narration editor keeps in the author's settings.
namespace wendmark::narrationSettings {

/// Value of spellingLanguage with which words are not checked.
inline const QString noSpelling = QStringLiteral("NONE");

/// Name of a dictionary; empty: the one for the author's own language.
inline const Setting<QString> spellingLanguage{"SpellingLanguage", QString()};
inline constexpr Setting<bool> previewShown{"NarrationPreview", true};

} // namespace wendmark::narrationSettings
