#pragma once

#include "maker.h"
#include "platform/SettingsStore.h"

/// What the site editor keeps in the author's settings.
namespace wendmark::siteSettings {

/// Address that "Home" goes to.
inline const Setting<QString> homePage{"HomePage", QLatin1String(makerSiteURL)};

} // namespace wendmark::siteSettings
