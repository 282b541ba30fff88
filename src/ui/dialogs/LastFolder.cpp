#include "ui/dialogs/LastFolder.h"

#include "model/Workspace.h"
#include "platform/Strings.h"

#include <QDir>
#include <QFileInfo>

namespace wendmark {

LastFolder::LastFolder(SettingsStore& settings, const Setting<QString>& setting, const Workspace& workspace,
                       QStandardPaths::StandardLocation usual)
    : m_settings(settings), m_setting(setting), m_workspace(workspace), m_usual(usual) {}

QString LastFolder::folder() const {
    for (const QString& folder : {m_settings.read(m_setting), QStandardPaths::writableLocation(m_usual)}) {
        if (isOfAuthor(folder))
            return folder;
    }
    return QDir::homePath();
}

void LastFolder::remember(const QString& file) {
    const QString folder = QFileInfo(file).absolutePath();
    if (isOfAuthor(folder))
        m_settings.store(m_setting, folder);
}

bool LastFolder::isOfAuthor(const QString& folder) const {
    const QString own = QFileInfo(toQString(m_workspace.folders().newTourPath)).canonicalFilePath();
    const QString path = QFileInfo(folder).canonicalFilePath();
    return !folder.isEmpty() && !path.isEmpty() && path != own && !path.startsWith(own + QLatin1Char('/'));
}

} // namespace wendmark
