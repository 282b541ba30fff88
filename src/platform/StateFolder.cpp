#include "platform/StateFolder.h"

#include <QDir>

namespace wendmark {

QString stateFolder() {
    QString folder = qEnvironmentVariable("XDG_STATE_HOME");
    if (folder.isEmpty())
        folder = QDir::homePath() + QStringLiteral("/.local/state");
    folder += QStringLiteral("/wendmark");
    QDir().mkpath(folder);
    return folder;
}

} // namespace wendmark
