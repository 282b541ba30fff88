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

// What a later program says is one line: this word, and the tours percent-encoded, with blanks between them.
constexpr char openCommand[] = "open";
constexpr char taken[] = "taken\n"; ///< What the first one answers.
constexpr qint64 longestRequest = 1 << 20;

QByteArray requestFor(const QStringList& tours) {
    QByteArray request = openCommand;
    for (const QString& tour : tours) {
        const QByteArray encoded = ' ' + tour.toUtf8().toPercentEncoding("/");
        if (request.size() + encoded.size() < longestRequest)
            request += encoded;
    }
    return request + '\n';
}

QStringList toursOf(const QByteArray& request) {
    QStringList tours;
    for (const QByteArray& word : request.trimmed().split(' ').mid(1))
        tours.append(QString::fromUtf8(QByteArray::fromPercentEncoding(word)));
    return tours;
}

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

SingleProgram::SingleProgram(const QString& applicationFolder, const QString& socketFolder, QObject* parent)
    : QObject(parent)
    , m_folder(applicationFolder)
    , m_names(nameFor(applicationFolder))
    , m_lock(applicationFolder + QStringLiteral("/.wendmark.lock")) {
    m_lock.setStaleLockTime(0); // A lock counts for as long as its program lives.
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, &SingleProgram::welcome);
    if (!socketFolder.isEmpty())
        m_names.prepend(socketFolder + QLatin1Char('/') + m_names.first());
}

SingleProgram::Entry SingleProgram::enter(const QStringList& tours) {
    if (lock())
        return Entry::first;
    if (m_lock.error() != QLockFile::LockFailedError)
        return askFirst(tours, QDeadlineTimer(patience)) ? Entry::answered : Entry::unwritable;
    if (!isThisMachine(machineIn(m_lock.fileName())))
        return Entry::elsewhere;
    const Entry entry = waitForFirst(tours);
    // The process that the lock names may live and work in another folder, from which this one was copied.
    return entry == Entry::unanswered && takeOver() ? Entry::first : entry;
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
    for (const QString& name : m_names) {
        QLocalServer::removeServer(name); // Left behind by a program that crashed.
        if (m_server.listen(name))
            return;
    }
}

void SingleProgram::welcome() {
    QLocalSocket* const asking = m_server.nextPendingConnection();
    connect(asking, &QLocalSocket::disconnected, asking, &QObject::deleteLater);
    connect(asking, &QLocalSocket::readyRead, this, [this, asking] { answer(*asking); });
    answer(*asking); // What it says may be here already.
}

void SingleProgram::answer(QLocalSocket& asking) {
    if (asking.bytesAvailable() > longestRequest)
        asking.abort();
    if (!asking.canReadLine())
        return;
    const QByteArray request = asking.readLine(longestRequest);
    if (!request.startsWith(openCommand)) {
        asking.abort();
        return;
    }
    asking.write(taken);
    asking.flush(); // What follows may take its time.
    if (asking.state() != QLocalSocket::ConnectedState)
        return; // Its author was told that there is no answer.
    asking.disconnectFromServer();
    m_tours += toursOf(request);
    emit activationRequested();
}

/// Tries again for a while: a program that has just started locks first and listens then, and one that is
/// about to end listens no more.
SingleProgram::Entry SingleProgram::waitForFirst(const QStringList& tours) {
    const QDeadlineTimer deadline(patience);
    while (!askFirst(tours, deadline)) {
        if (deadline.hasExpired())
            return Entry::unanswered;
        QEventLoop pause;
        wait(pause, pauseBetweenTries);
        if (lock())
            return Entry::first;
    }
    return Entry::answered;
}

bool SingleProgram::askFirst(const QStringList& tours, const QDeadlineTimer& deadline) const {
    QLocalSocket socket;
    QEventLoop untilAnswer;
    connect(&socket, &QLocalSocket::readyRead, &untilAnswer, &QEventLoop::quit);
    connect(&socket, &QLocalSocket::disconnected, &untilAnswer, &QEventLoop::quit);
    for (const QString& name : m_names) {
        socket.connectToServer(name);
        if (socket.state() != QLocalSocket::UnconnectedState)
            break;
    }
    if (socket.state() == QLocalSocket::UnconnectedState)
        return false;
    socket.write(requestFor(tours));
    wait(untilAnswer, deadline.remainingTime());
    return socket.readAll() == taken;
}

} // namespace wendmark
