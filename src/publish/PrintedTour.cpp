#include "publish/PrintedTour.h"

#include "model/TourModel.h"
#include "publish/Framesets.h"

#include <algorithm>

namespace wendmark {

namespace {

std::string headerOf(const TourModel& model, std::int32_t page, std::int32_t pageCount) {
    std::string header = model.tourTitle;
    header.append("   [ ").append(std::to_string(page));
    header.append(" of ").append(std::to_string(pageCount)).append(" ]");
    return header;
}

std::string yesOrNo(bool yes) {
    return yes ? "Yes" : "No";
}

StopBlock blockOf(const Stop& stop) {
    return {stop.stopTitle, stop.stopURL, stop.stopNarration + "\r" + stop.stopInstruction};
}

} // namespace

StopRange printableRange(StopRange wanted, std::int16_t stopCount) {
    const std::int32_t count = std::min(stopCount, tourCapacity);
    StopRange range = wanted;
    range.first = std::min(std::max(range.first, 1), count);
    range.last = std::min(std::max(range.last, range.first), count);
    return count < 1 ? StopRange{} : range;
}

std::int32_t stopPageCount(StopRange range) {
    const std::int32_t stops = std::max(range.last - range.first + 1, 0);
    return (stops + blocksOnAPage - 1) / blocksOnAPage;
}

std::vector<StopSheet> stopSheets(const TourModel& model, StopRange range, std::int32_t pageCount) {
    std::vector<StopSheet> sheets;
    const std::int32_t pages = stopPageCount(range);
    sheets.reserve(static_cast<std::size_t>(pages));
    for (std::int32_t page = 1; page <= pages; ++page) {
        StopSheet sheet{headerOf(model, page, pageCount), {}};
        const std::int32_t top = range.first + blocksOnAPage * (page - 1);
        for (std::int32_t stop = top; stop < top + blocksOnAPage && stop <= range.last; ++stop)
            sheet.blocks.push_back(blockOf(model.stops.at(stop)));
        sheets.push_back(std::move(sheet));
    }
    return sheets;
}

PropertySheet propertySheet(const TourModel& model, const std::string& tourPath, const std::string& logoFile,
                            std::int32_t pageCount) {
    PropertySheet sheet{headerOf(model, pageCount, pageCount),
                        {{{"Title :", model.tourTitle},
                          {"Path :", tourPath},
                          {"Add Instructions Automatically :", yesOrNo(model.autoInstruction)},
                          {"Caching Period :", std::to_string(model.bufferDelay)},
                          {"Start Caching Automatically :", yesOrNo(model.autoBuffer)},
                          {"Height of Narration Frame :", std::to_string(model.narHeight)},
                          {"Width of Logo Frame :", std::to_string(model.advWidth)},
                          {"Width of Navigator Frame :", std::to_string(model.navWidth)},
                          {"Logo File Name :", logoFile},
                          {"Launch Tour in New Window :", yesOrNo(!model.singleWindow)},
                          {"Launch Tour in same Window :", yesOrNo(model.singleWindow)}}},
                        {},
                        {}};
    const std::int16_t points =
        model.singleWindow ? std::min(model.launchURLCount, tourCapacity) : std::int16_t(0);
    for (std::int16_t i = 1; i <= points; ++i) {
        sheet.launchFileNames.push_back(launchFileName(i));
        sheet.launchURLs.push_back(model.launchURL.at(static_cast<std::size_t>(i - 1)));
    }
    return sheet;
}

PrintedTour composePrintedTour(const TourModel& model, StopRange wanted, bool countProperties,
                               const std::string& tourPath, const std::string& logoFile) {
    const StopRange range = printableRange(wanted, model.stopCount());
    const std::int32_t pageCount = stopPageCount(range) + (countProperties ? 1 : 0);
    return {stopSheets(model, range, pageCount), propertySheet(model, tourPath, logoFile, pageCount)};
}

} // namespace wendmark
