#include "platform/SingleProgram.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QLocalSocket>
#include <QSysInfo>
#include <QTimer>

namespace wendmark {

namespace {

constexpr int pauseBetweenTries = 50; // Milliseconds.

QString nameFor(const QString& applicationFolder) {
    const QFileInfo folder(applicationFolder);
    const QString path = folder.exists() ? folder.canonicalFilePath() : folder.absoluteFilePath();
    const QByteArray digest =
        QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha256).toHex().left(24);
    return QStringLiteral("wendmark-") + QString::fromLatin1(digest);
}

/// What a lock file says of the machine of its program. Both are empty when it cannot be read, or breaks off.
struct Machine {
    QString name;
    QByteArray id; ///< Empty also when the system gives none.
};

Machine machineIn(const QString& lockFile) {
    QFile file(lockFile);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    constexpr qint64 longest = 4096;
    const QList<QByteArray> lines = file.read(longest).split('\n'); // Process, program, machine, its id.
    return {QString::fromUtf8(lines.value(2)), lines.value(3)};
}

/// The id decides: many machines have the same name.
bool isThisMachine(const Machine& machine) {
    const QByteArray own = QSysInfo::machineUniqueId();
    if (!machine.id.isEmpty() && !own.isEmpty())
        return machine.id == own;
    return machine.name.isEmpty() || machine.name == QSysInfo::machineHostName();
}

/// Handles events until `loop` is left, or the time is over.
void wait(QEventLoop& loop, qint64 milliseconds) {
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    timer.start(static_cast<int>(milliseconds));
    loop.exec();
}

} // namespace

SingleProgram::SingleProgram(const QString& applicationFolder, QObject* parent)
    : QObject(parent)
    , m_folder(applicationFolder)
    , m_name(nameFor(applicationFolder))
    , m_lock(applicationFolder + QStringLiteral("/.wendmark.lock")) {
    m_lock.setStaleLockTime(0); // A lock counts for as long as its program lives.
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, &SingleProgram::answer);
}

SingleProgram::Entry SingleProgram::enter() {
    if (lock())
        return Entry::first;
    if (m_lock.error() != QLockFile::LockFailedError)
        return askFirst(QDeadlineTimer(patience)) ? Entry::answered : Entry::unwritable;
    if (!isThisMachine(machineIn(m_lock.fileName())))
        return Entry::elsewhere;
    if (wakeFirst())
        return Entry::answered;
    // The process that the lock names may live and work in another folder, from which this one was copied.
    return takeOver() ? Entry::first : Entry::unanswered;
}

bool SingleProgram::takeOver() {
    m_lock.removeStaleLockFile(); // Fails while a program holds the file itself, not only its name.
    return lock();
}

void SingleProgram::goOnWithoutLock() {
    listen();
}

SingleProgram::Holder SingleProgram::holder() const {
    return {machineIn(m_lock.fileName()).name, QFileInfo(m_lock.fileName()).lastModified()};
}

bool SingleProgram::lock() {
    const bool locked = m_lock.tryLock(0);
    if (locked)
        listen();
    return locked;
}

void SingleProgram::listen() {
    QLocalServer::removeServer(m_name); // Left behind by a program that crashed.
    m_server.listen(m_name);
}

void SingleProgram::answer() {
    QLocalSocket* const asking = m_server.nextPendingConnection();
    connect(asking, &QLocalSocket::disconnected, asking, &QObject::deleteLater);
    asking->write("here\n");
    asking->disconnectFromServer();
    emit activationRequested();
}

/// Tries again for a while: a program that has just started locks first and listens then.
bool SingleProgram::wakeFirst() const {
    const QDeadlineTimer deadline(patience);
    while (!askFirst(deadline)) {
        if (deadline.hasExpired())
            return false;
        QEventLoop pause;
        wait(pause, pauseBetweenTries);
    }
    return true;
}

bool SingleProgram::askFirst(const QDeadlineTimer& deadline) const {
    QLocalSocket socket;
    QEventLoop untilAnswer;
    connect(&socket, &QLocalSocket::readyRead, &untilAnswer, &QEventLoop::quit);
    connect(&socket, &QLocalSocket::disconnected, &untilAnswer, &QEventLoop::quit);
    socket.connectToServer(m_name);
    if (socket.state() == QLocalSocket::UnconnectedState)
        return false;
    wait(untilAnswer, deadline.remainingTime());
    return socket.bytesAvailable() > 0;
}

} // namespace wendmark
