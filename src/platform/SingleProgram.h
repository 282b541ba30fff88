#pragma once

#include <QDateTime>
#include <QLocalServer>
#include <QLockFile>
#include <QObject>
#include <QString>
#include <QStringList>
#include <utility>

class QDeadlineTimer;
class QLocalSocket;

namespace wendmark {

/// Sees to it that only one program works in an application folder, so that two never share a working copy. A
/// later one hands over the tours that it was started with.
class SingleProgram final : public QObject {
    Q_OBJECT

public:
    /// How a program finds the folder in which it wants to work.
    enum class Entry {
        first,      ///< The folder is locked for this program, also in place of one that has crashed here.
        answered,   ///< Another program works there. It has come to the front and has taken the tours.
        unanswered, ///< Another program of this machine works there and gives no answer.
        elsewhere,  ///< The lock is that of a program on another machine, see holder().
        unwritable  ///< No lock can be made there.
    };

    /// Whose lock it is.
    struct Holder {
        QString machine;
        QDateTime since;
    };

    /// The programs find each other in `socketFolder`, which belongs to the user; empty, or where it takes
    /// none: in the folder for temporary files.
    explicit SingleProgram(const QString& applicationFolder, const QString& socketFolder = {},
                           QObject* parent = nullptr);

    const QString& folder() const { return m_folder; }

    /// Tries to lock the folder for as long as this object lives. May be called again after a failure. A
    /// program that works there is given `tours`, absolute paths.
    Entry enter(const QStringList& tours = {});

    /// Takes over a lock of another machine. False when that program holds it this very moment, or the folder
    /// cannot be written.
    bool takeOver();

    /// From now on later programs find this one although it has no lock.
    void goOnWithoutLock();

    Holder holder() const;

    /// The tours that later programs have handed over since this was asked last, in their order.
    QStringList takeTours() { return std::exchange(m_tours, {}); }

    /// The program is about to end: later ones wait for that, and then take its place.
    void leave() { m_server.close(); }

    /// Milliseconds that the other program has to answer.
    int patience = 3000;

signals:
    /// Another program was started in the same folder and has ended again; takeTours() has what it brought.
    void activationRequested();

private:
    void listen();
    void welcome();
    void answer(QLocalSocket& asking);
    bool lock();
    Entry waitForFirst(const QStringList& tours);
    bool askFirst(const QStringList& tours, const QDeadlineTimer& deadline) const;

    QString m_folder;
    QStringList m_names; ///< Of the socket: the one to be had comes first.
    QLockFile m_lock;
    QLocalServer m_server;
    QStringList m_tours;
};

} // namespace wendmark
