#pragma once

#include <QList>
#include <QObject>
#include <QUrl>

namespace wendmark::test {

/// While it lives, nothing is opened with programs of this desktop: what would be is only written down.
class OutsidePrograms final : public QObject {
    Q_OBJECT

public:
    OutsidePrograms();
    ~OutsidePrograms() override;

    QList<QUrl> opened;

public slots:
    void open(const QUrl& address) { opened.append(address); }
};

} // namespace wendmark::test
