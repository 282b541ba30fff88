#include "commands/TourProperties.h"

#include "base/Log.h"
#include "base/Numbers.h"
#include "commands/TourSave.h"
#include "model/Desktop.h"
#include "model/StopTexts.h"
#include "model/TourContext.h"
#include "model/TourModel.h"
#include "model/Workspace.h"
#include "publish/TourPages.h"

#include <algorithm>

namespace wendmark {

namespace {

void setLaunchURLs(TourModel& model, const std::vector<std::string>& addresses) {
    const std::size_t count = std::min(addresses.size(), model.launchURL.size());
    std::copy_n(addresses.begin(), count, model.launchURL.begin());
    model.launchURLCount = static_cast<std::int16_t>(count);
}

void setDimension(std::int16_t& dimension, const std::string& text, const std::function<void()>& refuse) {
    if (isNumeric(text))
        dimension = roundTo16Bits(leadingNumber(text)).value_or(dimension);
    else
        refuse();
}

void copyLogo(TourContext& context, const std::string& logoFile) {
    if (!logoFile.empty())
        context.log.skip(context.workspace.copyToWorkingFile(logoFile, "fr-logo.gif"));
}

} // namespace

void changeTourProperties(TourContext& context, const TourProperties& properties,
                          const std::function<void()>& refuseDimension) {
    const BusyPointer busy(context.desktop);
    TourModel& model = context.model;
    model.tourTitle = storableTitle(properties.tourTitle);
    model.bufferDelay = roundTo32Bits(leadingNumber(properties.cachePeriod)).value_or(model.bufferDelay);
    model.autoBuffer = properties.autoBuffer;
    setLaunchURLs(model, properties.launchURLs);
    setDimension(model.narHeight, properties.narHeight, refuseDimension);
    setDimension(model.advWidth, properties.advWidth, refuseDimension);
    setDimension(model.navWidth, properties.navWidth, refuseDimension);
    model.autoInstruction = properties.autoInstruction;
    model.tourAuthor = properties.tourAuthor;
    model.language = properties.language;
    model.wordsBesidePage = properties.wordsBesidePage;
    copyLogo(context, properties.logoFile);
    makeEveryPage(context);
    writeLaunchList(context);
    model.tourChanged = true;
}

} // namespace wendmark
