#pragma once

#include "platform/SettingsStore.h"

#include <QStandardPaths>
#include <QString>

namespace wendmark {

class Workspace;

/// The folder in which the author found a file of one kind last, so that the next file dialog begins there.
/// Never the working copy: what lies there is in the tour already.
class LastFolder final {
public:
    /// `usual` is where the first dialog begins. Settings and workspace must outlive it.
    LastFolder(SettingsStore& settings, const Setting<QString>& setting, const Workspace& workspace,
               QStandardPaths::StandardLocation usual);

    /// A folder that exists.
    QString folder() const;

    /// Takes the folder of the file that was chosen.
    void remember(const QString& file);

private:
    bool isOfAuthor(const QString& folder) const;

    SettingsStore& m_settings;
    const Setting<QString>& m_setting;
    const Workspace& m_workspace;
    QStandardPaths::StandardLocation m_usual;
};

} // namespace wendmark
