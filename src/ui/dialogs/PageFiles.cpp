#include "ui/dialogs/PageFiles.h"

#include "base/Log.h"
#include "commands/PageBundle.h"
#include "commands/TourDocument.h"
#include "platform/Strings.h"
#include "ui/ProgramParts.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/dialogs/frmPageFiles.h"

namespace wendmark {

std::vector<AddedFile> filesOfPage(const ProgramParts& parts, const QString& path, const std::string& name,
                                   const std::vector<AddedFile>& others, QWidget& window) {
    const PageBundle bundle = bundlePage(parts.document.workspace(), toUtf8(path), name, others);
    for (const std::string& missing : bundle.missing)
        parts.document.log().warn(toUtf8(path) + " names a file that cannot be read: " + missing);
    const AddedFile alone = {toUtf8(path), name};
    if (!bundle.needsMore())
        return {alone};
    frmPageFiles dialog(bundle, &window);
    runDialog(dialog);
    switch (dialog.dialogAnswer()) {
    case frmPageFiles::Answer::together:
        return bundle.files();
    case frmPageFiles::Answer::alone:
        return {alone};
    case frmPageFiles::Answer::cancel:
        break;
    }
    return {};
}

} // namespace wendmark
