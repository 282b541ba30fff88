#include "platform/SingleProgram.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QLocalSocket>

namespace wendmark {

namespace {

constexpr int patience = 2000; // Milliseconds that the first program has to answer.

QString nameFor(const QString& applicationFolder) {
    const QByteArray path = QFileInfo(applicationFolder).canonicalFilePath().toUtf8();
    const QByteArray digest = QCryptographicHash::hash(path, QCryptographicHash::Sha256).toHex().left(24);
    return QStringLiteral("wendmark-") + QString::fromLatin1(digest);
}

} // namespace

SingleProgram::SingleProgram(const QString& applicationFolder, QObject* parent)
    : QObject(parent)
    , m_name(nameFor(applicationFolder))
    , m_lock(applicationFolder + QStringLiteral("/.wendmark.lock")) {
    m_lock.setStaleLockTime(0); // A lock counts for as long as its program lives.
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, [this] {
        delete m_server.nextPendingConnection();
        emit activationRequested();
    });
}

bool SingleProgram::isFirst() {
    if (!m_lock.tryLock(0)) {
        wakeFirst();
        return false;
    }
    listen();
    return true;
}

void SingleProgram::listen() {
    QLocalServer::removeServer(m_name); // Left behind by a program that crashed.
    m_server.listen(m_name);
}

bool SingleProgram::wakeFirst() const {
    QLocalSocket socket;
    socket.connectToServer(m_name);
    return socket.waitForConnected(patience);
}

} // namespace wendmark
