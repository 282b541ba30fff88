#include "ui/dialogs/TourFileNames.h"

#include "base/Files.h"
#include "base/Names.h"
#include "model/TourFiles.h"
#include "model/Workspace.h"
#include "platform/Strings.h"
#include "ui/Messages.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/dialogs/frmRenameFile.h"

#include <QCoreApplication>

namespace wendmark {

namespace {

constexpr std::string_view reservedName =
    "which is essential for correct operation of the tour, and cannot be overwritten or replaced.";

QString tr(const char* text) {
    return QCoreApplication::translate("TourFileNames", text);
}

/// Why names of generated files are not free.
std::string writtenByUs() {
    return toUtf8(tr("which Wendmark writes itself, so that your file would be lost."));
}

bool mayOverwrite(const std::string& name, QWidget* parent) {
    return askYesNo(parent,
                    tr("There is already a file called %1 in the tour folder. Do you want to overwrite this "
                       "file?")
                        .arg(toQString(name)),
                    QStringLiteral("Wendmark - File overwrite"));
}

} // namespace

std::string TourFileNames::nameForPage(const QString& path, QWidget* parent) {
    std::string name = lastPathPart(toUtf8(path), pathSeparator);
    while (!name.empty()) {
        const bool taken = files::canBeRead(m_workspace.workingFile(name));
        const bool ofTemplate = taken && m_workspace.isTemplateFile(name);
        if (ofTemplate || (taken && !mayOverwrite(name, parent))) {
            m_renameReason = ofTemplate ? reservedName : std::string_view();
            name = askForOther(name, m_renameReason, parent);
        } else if (isReservedName(name)) {
            name = askForOther(name, writtenByUs(), parent);
        } else {
            break;
        }
    }
    return name;
}

std::string TourFileNames::nameForImage(const QString& path, QWidget* parent) {
    const std::string source = toUtf8(path);
    std::string name = lastPathPart(source, pathSeparator);
    while (!name.empty()) {
        if (m_workspace.isTemplateFile(name))
            name = askForOther(name, m_renameReason, parent);
        else if (isReservedName(name))
            name = askForOther(name, writtenByUs(), parent);
        else if (isOtherFile(source, name) && !mayOverwrite(name, parent))
            name = askForOther(name, {}, parent);
        else
            break;
    }
    return name;
}

/// Whether the tour has a file of this name with other contents.
bool TourFileNames::isOtherFile(const std::string& source, const std::string& name) const {
    const files::Contents present = files::read(m_workspace.workingFile(name));
    return present.outcome.ok() && present.bytes != files::read(source).bytes;
}

/// Files of a tour have lower-case names and lie in its own folder, whatever was typed.
std::string TourFileNames::askForOther(const std::string& name, const std::string& reason, QWidget* parent) {
    frmRenameFile dialog(name, reason, parent);
    runDialog(dialog);
    return lastPathPart(dialog.dialogAnswer(), pathSeparator);
}

} // namespace wendmark
