#pragma once

#include <QLocalServer>
#include <QLockFile>
#include <QObject>
#include <QString>

namespace wendmark {

/// Sees to it that only one program works in an application folder, so that two never share a working copy.
class SingleProgram final : public QObject {
    Q_OBJECT

public:
    explicit SingleProgram(const QString& applicationFolder, QObject* parent = nullptr);

    /// True when this program is the first. Else the first one was asked to come to the front.
    bool isFirst();

signals:
    /// Another program was started in the same folder and has ended again.
    void activationRequested();

private:
    void listen();
    bool wakeFirst() const;

    QString m_name;
    QLockFile m_lock;
    QLocalServer m_server;
};

} // namespace wendmark
