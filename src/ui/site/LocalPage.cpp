#include "ui/site/LocalPage.h"

#include "commands/TourDocument.h"
#include "platform/Strings.h"
#include "ui/ProgramParts.h"
#include "ui/dialogs/FileChooser.h"
#include "ui/dialogs/TourFileNames.h"

#include <QCoreApplication>
#include <QWidget>

namespace wendmark {

LocalPage takeLocalPage(const ProgramParts& parts, QWidget& window) {
    const QString path = chooseFile(&window, QStringLiteral("Wendmark - Select Local File"),
                                    QStringLiteral("HTML (*.htm *.html);;All (*)"), QStringLiteral("htm"));
    if (path.isEmpty())
        return {};
    const std::string name = parts.fileNames.nameForPage(path, &window);
    if (name.empty())
        return {};
    LocalPage page;
    if (!parts.document.addFile(toUtf8(path), name, "Select Local File").ok())
        page.notice =
            QCoreApplication::translate("LocalPage", "%1 could not be copied into the tour.").arg(path);
    const Workspace& workspace = parts.document.workspace();
    workspace.pause(1.0F);
    page.address = QUrl::fromLocalFile(toQString(workspace.workingFile(name)));
    return page;
}

} // namespace wendmark
