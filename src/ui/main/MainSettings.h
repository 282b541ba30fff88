#pragma once

#include "platform/SettingsStore.h"

/// What the main window keeps in the author's settings.
namespace wendmark::mainSettings {

// Twips.
inline constexpr Setting<float> left{"MainLeft", 1000};
inline constexpr Setting<float> top{"MainTop", 1000};
inline constexpr Setting<float> width{"MainWidth", 6500};
inline constexpr Setting<float> height{"MainHeight", 6500};

/// Full path of the external HTML editor, or "NONE".
inline const Setting<QString> htmlEditor{"HTMLEditor", QStringLiteral("NONE")};
inline constexpr Setting<bool> warnURLChange{"WarnURLChange", true};
inline constexpr Setting<bool> autoCloseBrowser{"AutoCloseBrowser", false};

} // namespace wendmark::mainSettings
