#pragma once

#include "model/StopList.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace wendmark {

/// What stands in a tour for a narration and an instruction that there is not; pages show nothing of it.
inline constexpr std::string_view noNarration = "<!--narration-->";
inline constexpr std::string_view noInstruction = "<!--instruction-->";

/// Instruction of a stop whose instruction the program writes.
inline constexpr std::string_view automaticInstruction = "AUTO";

using TourTexts = std::array<std::string, tourCapacity>;

/// The tour that is open. Texts are UTF-8. Stops are numbered from 1; number 0 is the opening page, which is
/// no stop. Launching points at and beyond their count are leftovers that nobody reads.
struct TourModel {
    std::string tourTitle;
    std::string tourAuthor; ///< Empty: none is shown.

    StopList stops;

    TourTexts launchURL; ///< Addresses of the pages from which the tour is started.
    std::int16_t launchURLCount = 0;

    bool autoBuffer = false;       ///< Load the stops ahead when the tour starts.
    std::int32_t bufferDelay = 10; ///< Seconds allowed for loading a stop ahead; 10 or more after reading.
    bool autoInstruction = true;   ///< Every generation of stop pages overwrites the instructions.
    bool singleWindow = true;      ///< The tour has framesets for its launching points.

    std::int16_t narHeight = 100; ///< Pixels: bottom row (narration, logo and navigator).
    std::int16_t advWidth = 110;  ///< Pixels: logo frame.
    std::int16_t navWidth = 94;   ///< Pixels: navigator frame.

    std::string language;         ///< Of the tour's buttons and sentences, as in "de"; empty: English.
    bool wordsBesidePage = false; ///< On wide screens the words stand beside the page, not below it.

    std::string stopLabel;   ///< Word before the number in a stop page's heading.
    std::string helpFile;    ///< Kept for scripts that name one; no page uses it.
    std::string homeSiteURL; ///< Where a stop page goes when it is opened outside any tour.

    std::int16_t currentStop = 0; ///< Stop on screen; 0 is the opening page.
    bool tourChanged = false;     ///< There are unsaved changes.
    bool editingMode = true;      ///< Pages are generated for the editor's preview, not for the saved tour.

    /// 0 to 100; more only after reading a script that holds more.
    std::int16_t stopCount() const { return stops.count(); }

    friend bool operator==(const TourModel&, const TourModel&) = default;
};

/// Whether a stop's address names a web page rather than a file of the tour folder.
inline bool isRemoteAddress(const std::string& address) {
    return address.find('/') != std::string::npos;
}

} // namespace wendmark
