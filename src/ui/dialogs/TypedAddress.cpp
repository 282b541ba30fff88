#include "ui/dialogs/TypedAddress.h"

#include "commands/StopCommands.h"
#include "model/FoundLinks.h"
#include "model/StopAddress.h"
#include "model/StopList.h"
#include "model/TourFiles.h"
#include "model/Workspace.h"
#include "platform/Strings.h"

#include <QFileInfo>
#include <QHostAddress>
#include <QRegularExpression>
#include <QUrl>

namespace wendmark {

namespace {

/// The tour's file of this name; empty: there is none, or the program makes it.
std::string fileOfTour(const QString& name, const Workspace& workspace) {
    if (name.contains(QLatin1Char('/')) || name.contains(QLatin1Char('\\')))
        return {};
    const std::string file = localFileName(toUtf8(name.toLower())); // As all names of pages are stored.
    const QString path = toQString(workspace.workingFile(file));
    if (file.empty() || isReservedName(file) || !QFileInfo(path).isFile())
        return {};
    return stopAddressFor(toUtf8(QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded)));
}

bool isOnThisComputer(const QString& host) {
    return host == QLatin1String("localhost") || QHostAddress(host).isLoopback();
}

/// As with a scheme; pages of today answer to the safe one.
QString withScheme(const QString& text) {
    static const QRegularExpression place(QStringLiteral(R"(^([^\s/?#:@\\]+)(:\d+)?([/?#].*)?$)"),
                                          QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = place.match(text);
    const QString host = match.captured(1);
    if (isOnThisComputer(host))
        return QStringLiteral("http://") + text;
    const bool isHost = host.contains(QLatin1Char('.')) && !host.startsWith(QLatin1Char('.')) &&
                        !host.endsWith(QLatin1String(".htm")) && !host.endsWith(QLatin1String(".html"));
    return isHost ? QStringLiteral("https://") + text : QString();
}

} // namespace

std::string addressFromTyping(const QString& text, const Workspace& workspace) {
    const QString typed = text.trimmed();
    if (typed.isEmpty())
        return newStop().stopURL;
    if (std::string file = fileOfTour(typed, workspace); !file.empty())
        return file;
    const QString whole = isWebAddress(toUtf8(typed)) ? typed : withScheme(typed);
    const QUrl address(whole, QUrl::TolerantMode);
    if (whole.isEmpty() || !address.isValid() || address.host().isEmpty())
        return {};
    const FoundLinks found = linksInUriList(toUtf8(address.toString(QUrl::FullyEncoded)));
    return found.stops.size() == 1 ? found.stops.front().stopURL : std::string();
}

} // namespace wendmark
