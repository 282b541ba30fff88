#include "ui/site/LocalPage.h"

#include "commands/TourDocument.h"
#include "platform/Settings.h"
#include "platform/SettingsStore.h"
#include "platform/Strings.h"
#include "ui/ProgramParts.h"
#include "ui/dialogs/FileChooser.h"
#include "ui/dialogs/PageFiles.h"
#include "ui/dialogs/TourFileNames.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringList>
#include <QWidget>

namespace wendmark {

namespace {

/// The working copy is the program's own: what lies there is in the tour already.
bool isOfAuthor(const QString& folder, const Workspace& workspace) {
    const QString own = QFileInfo(toQString(workspace.folders().newTourPath)).canonicalFilePath();
    const QString path = QFileInfo(folder).canonicalFilePath();
    return !path.isEmpty() && path != own && !path.startsWith(own + QLatin1Char('/'));
}

/// Where the author has found a page last, else where documents are.
QString folderToBeginIn(const ProgramParts& parts) {
    const QString last = parts.settings.read(siteSettings::pagesFolder);
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    for (const QString& folder : {last, documents}) {
        if (isOfAuthor(folder, parts.document.workspace()))
            return folder;
    }
    return QDir::homePath();
}

void remember(const QString& folder, const ProgramParts& parts) {
    if (isOfAuthor(folder, parts.document.workspace()))
        parts.settings.store(siteSettings::pagesFolder, folder);
}

QString translated(const char* text) {
    return QCoreApplication::translate("LocalPage", text);
}

} // namespace

LocalPage takeLocalPage(const ProgramParts& parts, QWidget& window) {
    const QString path = chooseFile(&window, QStringLiteral("Wendmark - Select Local File"),
                                    QStringLiteral("HTML (*.htm *.html);;All (*)"), QStringLiteral("htm"),
                                    folderToBeginIn(parts));
    if (path.isEmpty())
        return {};
    remember(QFileInfo(path).absolutePath(), parts);
    const std::string name = parts.fileNames.nameForPage(path, &window);
    if (name.empty())
        return {};
    const std::vector<AddedFile> files = filesOfPage(parts, path, name, {}, window);
    if (files.empty())
        return {};
    LocalPage page;
    QStringList notCopied;
    for (const std::string& missing : parts.document.addFiles(files, "Select Local File"))
        notCopied.append(missing == name ? path : toQString(missing));
    if (!notCopied.isEmpty())
        page.notice =
            translated("%1 could not be copied into the tour.").arg(notCopied.join(QStringLiteral(", ")));
    const Workspace& workspace = parts.document.workspace();
    workspace.pause(1.0F);
    page.address = QUrl::fromLocalFile(toQString(workspace.workingFile(name)));
    return page;
}

} // namespace wendmark
