#include "probe/FramePages.h"

#include "base/Files.h"
#include "platform/Strings.h"

#include <QUuid>

namespace wendmark {

namespace {

QString composePage(const QString& address) {
    return QStringLiteral(
               "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>Page in its "
               "frame</title>\n</head>\n<frameset rows=\"*,100\">\n<frame src=\"%1\" name=\"mw\">\n<frame "
               "name=\"nar\">\n</frameset>\n</html>\n")
        .arg(address.toHtmlEscaped());
}

} // namespace

FramePages::FramePages()
    : m_state(m_folder.isValid() ? m_server.serve(toUtf8(m_folder.path()))
                                 : Outcome::failure(toUtf8(m_folder.errorString()))) {}

QUrl FramePages::make(const QString& address) {
    const QString name = QUuid::createUuid().toString(QUuid::WithoutBraces) + QLatin1String(".htm");
    if (m_state.ok())
        m_state = files::write(toUtf8(m_folder.filePath(name)), toUtf8(composePage(address)));
    return m_state.ok() ? QUrl(toQString(m_server.addressOf(toUtf8(name)))) : QUrl();
}

void FramePages::remove(const QUrl& page) {
    QFile::remove(m_folder.filePath(page.fileName()));
}

} // namespace wendmark
