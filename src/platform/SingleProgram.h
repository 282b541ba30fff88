#pragma once

#include <QDateTime>
#include <QLocalServer>
#include <QLockFile>
#include <QObject>
#include <QString>

class QDeadlineTimer;

namespace wendmark {

/// Sees to it that only one program works in an application folder, so that two never share a working copy.
class SingleProgram final : public QObject {
    Q_OBJECT

public:
    /// How a program finds the folder in which it wants to work.
    enum class Entry {
        first,      ///< The folder is locked for this program, also in place of one that has crashed here.
        answered,   ///< Another program works there. It has come to the front.
        unanswered, ///< Another program of this machine works there and gives no answer.
        elsewhere,  ///< The lock is that of a program on another machine, see holder().
        unwritable  ///< No lock can be made there.
    };

    /// Whose lock it is.
    struct Holder {
        QString machine;
        QDateTime since;
    };

    explicit SingleProgram(const QString& applicationFolder, QObject* parent = nullptr);

    const QString& folder() const { return m_folder; }

    /// Tries to lock the folder for as long as this object lives. May be called again after a failure.
    Entry enter();

    /// Takes over a lock of another machine. False when that program holds it this very moment, or the folder
    /// cannot be written.
    bool takeOver();

    /// From now on later programs find this one although it has no lock.
    void goOnWithoutLock();

    Holder holder() const;

    /// Milliseconds that the other program has to answer.
    int patience = 3000;

signals:
    /// Another program was started in the same folder and has ended again.
    void activationRequested();

private:
    void listen();
    void answer();
    bool lock();
    bool wakeFirst() const;
    bool askFirst(const QDeadlineTimer& deadline) const;

    QString m_folder;
    QString m_name;
    QLockFile m_lock;
    QLocalServer m_server;
};

} // namespace wendmark
