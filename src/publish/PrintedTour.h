#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

/// What a tour looks like on paper: three stops to a page, and a sheet with the tour's properties.
namespace wendmark {

struct TourModel;

/// Stops from `first` to `last`, which count from 1 and are both included. With a last stop before the first
/// there are none.
struct StopRange {
    std::int32_t first = 1;
    std::int32_t last = 0;
};

/// The range that is printed when this one is asked for: inside the tour, and at least one stop long where
/// the tour has one.
StopRange printableRange(StopRange wanted, std::int16_t stopCount);

inline constexpr std::int32_t blocksOnAPage = 3;

/// Pages that these stops need.
std::int32_t stopPageCount(StopRange range);

struct StopBlock {
    std::string title;   ///< HTML.
    std::string address; ///< As stored: the web, or a file of the tour.
    std::string text;    ///< HTML: narration and instruction, a line break between them.
};

struct StopSheet {
    std::string header;
    std::vector<StopBlock> blocks; ///< 1 to 3; the other places stay empty.
};

struct PropertySheet {
    struct Row {
        std::string caption;
        std::string value;
    };

    std::string header;
    std::array<Row, 11> rows;
    std::vector<std::string> launchURLs;      ///< Under "Launch URL".
    std::vector<std::string> launchFileNames; ///< Under "Launch File Name".
};

/// `range` must be printable. `pageCount` is the number of all pages that the headers tell.
std::vector<StopSheet> stopSheets(const TourModel& model, StopRange range, std::int32_t pageCount);

PropertySheet propertySheet(const TourModel& model, const std::string& tourPath, const std::string& logoFile,
                            std::int32_t pageCount);

/// What is printed, page by page.
struct PrintedTour {
    std::vector<StopSheet> stops;
    PropertySheet properties; ///< The last page.
};

/// Everything that is printed when this range is asked for. The property sheet is printed in every case;
/// `countProperties` says whether the headers count it.
PrintedTour composePrintedTour(const TourModel& model, StopRange wanted, bool countProperties,
                               const std::string& tourPath, const std::string& logoFile);

} // namespace wendmark
