#pragma once

#include <QString>
#include <QUrl>

namespace wendmark {

class Workspace;

/// What the author has typed into the address box.
struct SiteAddress {
    QUrl address;         ///< Empty: it is none.
    QString missing;      ///< Then: a sentence that says what is missing; empty where nothing can be said.
    bool isWords = false; ///< Then: it may be something to search the web for.
};

/// Understands whole addresses of any kind, paths, the names of the tour's files, and addresses of the web
/// without their scheme. Too long ones, see longestAddress, are none.
SiteAddress siteAddressFrom(const QString& typed, const Workspace& workspace);

/// Where words are searched for. `pattern` has "%1" in the place of the words.
QUrl searchAddress(const QString& pattern, const QString& words);

/// Characters; the engine shows nothing that is longer.
inline constexpr int longestAddress = 2 * 1024 * 1024;

/// Why one that is longer is not shown.
QString longAddressNotice();

} // namespace wendmark
