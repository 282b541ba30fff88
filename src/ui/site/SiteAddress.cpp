#include "ui/site/SiteAddress.h"

#include "model/TourModel.h"
#include "model/Workspace.h"
#include "platform/Strings.h"
#include "ui/dialogs/TypedAddress.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

namespace wendmark {

namespace {

QString say(const char* text) {
    return QCoreApplication::translate("SiteAddress", text);
}

bool matches(const QString& text, const QString& pattern) {
    return QRegularExpression(pattern, QRegularExpression::DotMatchesEverythingOption).match(text).hasMatch();
}

/// With "://". Tolerant readings of a broken one would lead to somebody else.
SiteAddress fromWhole(const QString& typed) {
    const QUrl address(typed);
    if (address.isValid() && (address.isLocalFile() || !address.host().isEmpty()))
        return {address, {}, false};
    const QString server = typed.section(QStringLiteral("://"), 1).section(QLatin1Char('/'), 0, 0);
    if (server.isEmpty())
        return {{}, say("Behind the \"//\" the name of a server is missing."), false};
    if (server.contains(QLatin1Char(' ')))
        return {{}, say("Names of servers have no blanks."), false};
    return {};
}

QUrl fromFile(const QString& typed, const QString& folder) {
    const bool isThere = QFileInfo(folder + typed).isFile();
    return isThere || QDir::isAbsolutePath(typed) ? QUrl::fromLocalFile(QDir(folder).absoluteFilePath(typed))
                                                  : QUrl();
}

/// Such as "mailto:" and "about:", and servers that are named without a dot.
QUrl fromScheme(const QString& typed) {
    if (matches(typed, QStringLiteral("^([\\w-]+|\\[[0-9a-fA-F:.]+\\]):\\d+([/?#]\\S*)?$")) ||
        matches(typed, QStringLiteral("^\\[[0-9a-fA-F:.]+\\]([/?#]\\S*)?$")))
        return QUrl(QStringLiteral("http://") + typed);
    const bool written = matches(typed, QStringLiteral("^(data|javascript):")) ||
                         matches(typed, QStringLiteral("^[A-Za-z][A-Za-z0-9+.-]*:\\S+$"));
    return written ? QUrl(typed) : QUrl();
}

QString missingIn(const QString& words) {
    if (words.contains(QLatin1Char(' ')))
        return say("Addresses have no blanks.");
    if (words.contains(QLatin1Char('@')))
        return say("It looks like one for letters; a page needs the name of a server.");
    return words.contains(QLatin1Char('.')) ? QString() : say("An ending such as \".org\" is missing.");
}

} // namespace

SiteAddress siteAddressFrom(const QString& typed, const Workspace& workspace) {
    if (typed.size() > longestAddress)
        return {};
    if (typed.contains(QLatin1String("://")) && !typed.startsWith(QLatin1String("data:")))
        return fromWhole(typed);
    const QString folder = toQString(workspace.folders().newTourPath);
    if (QUrl file = fromFile(typed, folder); !file.isEmpty())
        return {std::move(file), {}, false};
    if (const std::string address = addressFromTyping(typed, workspace); !address.empty()) {
        const QUrl link(toQString(address));
        return {isRemoteAddress(address) ? link : QUrl::fromLocalFile(folder).resolved(link), {}, false};
    }
    if (QUrl address = fromScheme(typed); address.isValid() && !address.isEmpty())
        return {std::move(address), {}, false};
    return {{}, missingIn(typed), true};
}

QUrl searchAddress(const QString& pattern, const QString& words) {
    QString address = pattern;
    return QUrl(address.replace(QLatin1String("%1"), QString::fromLatin1(QUrl::toPercentEncoding(words))));
}

QString longAddressNotice() {
    return say("An address of more than %L1 characters cannot be shown.").arg(longestAddress);
}

} // namespace wendmark
