#include "ui/site/LocalPage.h"

#include "commands/TourDocument.h"
#include "platform/Settings.h"
#include "platform/Strings.h"
#include "ui/ProgramParts.h"
#include "ui/dialogs/FileChooser.h"
#include "ui/dialogs/LastFolder.h"
#include "ui/dialogs/PageFiles.h"
#include "ui/dialogs/TourFileNames.h"

#include <QCoreApplication>
#include <QStringList>
#include <QWidget>

namespace wendmark {

namespace {

QString translated(const char* text) {
    return QCoreApplication::translate("LocalPage", text);
}

} // namespace

LocalPage takeLocalPage(const ProgramParts& parts, QWidget& window) {
    LastFolder last(parts.settings, siteSettings::pagesFolder, parts.document.workspace(),
                    QStandardPaths::DocumentsLocation);
    const QString path =
        chooseFile(&window, QStringLiteral("Wendmark - Select Local File"),
                   QStringLiteral("HTML (*.htm *.html);;All (*)"), QStringLiteral("htm"), last.folder());
    if (path.isEmpty())
        return {};
    last.remember(path);
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
