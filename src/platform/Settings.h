#pragma once

#include "maker.h"
#include "platform/SettingsStore.h"

/// Everything that the program keeps in the author's settings: the only place that knows keys and defaults.
namespace wendmark {

namespace mainSettings {

// Twips.
inline constexpr Setting<float> left{"MainLeft", 1000};
inline constexpr Setting<float> top{"MainTop", 1000};
inline constexpr Setting<float> width{"MainWidth", 6500};
inline constexpr Setting<float> height{"MainHeight", 6500};
/// Place and size are then those that it has otherwise.
inline constexpr Setting<bool> maximised{"MainMaximised", false};

/// Full path of the external HTML editor, or "NONE".
inline const Setting<QString> htmlEditor{"HTMLEditor", QStringLiteral("NONE")};
inline constexpr Setting<bool> warnURLChange{"WarnURLChange", true};
inline constexpr Setting<bool> autoCloseBrowser{"AutoCloseBrowser", false};

/// Folder from which the author took a logo last; empty: none yet.
inline const Setting<QString> logoFolder{"LogoFolder", QString()};

} // namespace mainSettings

namespace stopListSettings {

/// Whether the author wants to see the list, "True" or "False"; empty: when the window has room for it.
inline const Setting<QString> shown{"StopList", QString()};
/// In twips.
inline constexpr Setting<float> width{"StopListWidth", 5100};

} // namespace stopListSettings

namespace stopPanelSettings {

/// Same for the fields of the current stop.
inline const Setting<QString> shown{"StopPanel", QString()};
inline constexpr Setting<float> width{"StopPanelWidth", 4800};

} // namespace stopPanelSettings

namespace recentSettings {

/// The last tours, several texts for each; see RecentTours.
inline const Setting<QStringList> tours{"RecentTours", QStringList()};

} // namespace recentSettings

namespace findSettings {

inline constexpr Setting<bool> matchCase{"FindMatchCase", false};
inline constexpr Setting<bool> wholeWords{"FindWholeWords", false};
inline constexpr Setting<bool> addresses{"FindInAddresses", false};

} // namespace findSettings

namespace checkSettings {

/// Where the tour is posted that stops are judged for: "https", "http" or "disk".
inline const Setting<QString> posting{"CheckPosting", QStringLiteral("https")};

/// What the author has been told of pages and leaves as it is, "https refuses http://..." each: where the
/// tour is posted, the verdict's name, the address.
inline const Setting<QStringList> left{"CheckLeft", {}};

} // namespace checkSettings

namespace siteSettings {

/// Address that "Home" goes to.
inline const Setting<QString> homePage{"HomePage", QLatin1String(makerSiteURL)};
inline constexpr Setting<bool> maximised{"SiteMaximised", false};
/// Of the list of bookmarks, in twips; 0: what the page leaves.
inline constexpr Setting<float> bookmarksHeight{"SiteBookmarksHeight", 0};

/// Folder from which the author took a page last; empty: none yet.
inline const Setting<QString> pagesFolder{"PagesFolder", QString()};

/// Where words are searched for that were typed in the place of an address; "%1" stands for them.
inline const Setting<QString> searchPage{"SearchPage", QStringLiteral("https://duckduckgo.com/?q=%1")};

} // namespace siteSettings

namespace narrationSettings {

/// Folder from which the author took a picture last; empty: none yet.
inline const Setting<QString> picturesFolder{"PicturesFolder", QString()};

/// Value of spellingLanguage with which words are not checked.
inline const QString noSpelling = QStringLiteral("NONE");

/// Name of a dictionary; empty: the one for the author's own language.
inline const Setting<QString> spellingLanguage{"SpellingLanguage", QString()};
inline constexpr Setting<bool> previewShown{"NarrationPreview", true};
// Of the editor, in twips.
inline constexpr Setting<float> width{"NarrationWidth", 10800};
inline constexpr Setting<float> height{"NarrationHeight", 9600};

} // namespace narrationSettings

} // namespace wendmark
