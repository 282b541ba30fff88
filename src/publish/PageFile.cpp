#include "publish/PageFile.h"

#include "base/Files.h"
#include "base/Log.h"
#include "model/Desktop.h"
#include "model/TourContext.h"
#include "model/Workspace.h"
#include "publish/TemplateFiller.h"

namespace wendmark {

bool fillPage(TourContext& context, const std::string& templatePath, std::string_view name,
              const std::function<void(TemplateFiller&)>& fill) {
    const files::Contents source = files::read(templatePath);
    context.log.skip(source.outcome);
    return source.outcome.ok() && fillPageFrom(context, source.bytes, name, fill);
}

bool fillPageFrom(TourContext& context, std::string_view templateText, std::string_view name,
                  const std::function<void(TemplateFiller&)>& fill) {
    TemplateFiller filler(templateText);
    fill(filler);
    if (filler.stopped())
        context.log.fail("cannot complete " + std::string(name) + " from its template: " + filler.reason());
    context.desktop.stayResponsive();
    const Outcome written = context.workspace.writeWorkingFile(name, filler.output());
    context.desktop.stayResponsive();
    context.log.skip(written);
    return !filler.stopped() && written.ok();
}

} // namespace wendmark
