#include "commands/AddedFiles.h"

#include "base/Files.h"
#include "base/Log.h"
#include "model/Desktop.h"
#include "model/TourContext.h"
#include "model/Workspace.h"

namespace wendmark {

std::vector<std::string> namesOf(const std::vector<AddedFile>& files) {
    std::vector<std::string> names;
    names.reserve(files.size());
    for (const AddedFile& file : files)
        names.push_back(file.name);
    return names;
}

std::vector<std::string> addFilesOfAuthor(TourContext& context, const std::vector<AddedFile>& added) {
    const BusyPointer busy(context.desktop);
    const Workspace& workspace = context.workspace;
    std::vector<std::string> notCopied;
    for (const AddedFile& file : added) {
        if (files::same(file.source, workspace.workingFile(file.name)))
            continue;
        const Outcome copied = file.bytes ? workspace.writeWorkingFile(file.name, *file.bytes)
                                          : workspace.copyToWorkingFile(file.source, file.name);
        context.log.skip(copied);
        if (!copied.ok())
            notCopied.push_back(file.name);
        context.desktop.stayResponsive();
    }
    return notCopied;
}

} // namespace wendmark
