// Takes arbitrary bytes as what is pasted or dropped: addresses, links, and stops of another program.

#include "fuzz/Require.h"
#include "model/FoundLinks.h"
#include "model/StopTransfer.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace wendmark::fuzz {
namespace {

std::vector<std::string> addressesOf(const std::vector<Stop>& stops) {
    std::vector<std::string> addresses;
    std::transform(stops.begin(), stops.end(), std::back_inserter(addresses),
                   [](const Stop& stop) { return stop.stopURL; });
    return addresses;
}

bool isOnOneLine(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char byte) { return static_cast<unsigned char>(byte) >= ' '; });
}

void checkStops(const std::vector<Stop>& stops) {
    for (const Stop& stop : stops) {
        require(isWebAddress(stop.stopURL), "a stop that was found has a page on the web");
        require(stop.stopURL.size() <= longestFoundAddress, "no address is too long");
        require(isOnOneLine(stop.stopURL), "an address stands on one line");
        require(isOnOneLine(stop.stopTitle), "a title stands on one line");
        require(!stop.stopTitle.empty(), "a stop that was found has a title");
    }
}

/// Where a title is an address, too, plain text does not tell which is which.
bool hasAddressAsTitle(const std::vector<Stop>& stops) {
    return std::any_of(stops.begin(), stops.end(), [](Stop stop) {
        stop.stopURL.clear();
        const FoundLinks found = linksInPlainText(stopsAsPlainText({stop}));
        return !found.stops.empty() || !found.files.empty();
    });
}

void checkWayToOtherPrograms(const std::vector<Stop>& stops) {
    require(hasAddressAsTitle(stops) ||
                addressesOf(linksInPlainText(stopsAsPlainText(stops)).stops) == addressesOf(stops),
            "stops as plain text are found again");
    require(addressesOf(linksInHtml(stopsAsHtml(stops)).stops) == addressesOf(stops),
            "stops as HTML are found again");
    if (stops.empty() || stops.size() > static_cast<std::size_t>(tourCapacity))
        return;
    const auto decoded = decodeStops(encodeStops(stops));
    require(decoded == stops, "stops on their way to another program stay as they are");
}

void checkLinks(const FoundLinks& found) {
    require(found.stops.size() + found.files.size() <= mostFoundLinks, "no more are taken than said");
    checkStops(found.stops);
    for (const FoundFile& file : found.files) {
        require(!file.path.empty() && file.path.find('\0') == std::string::npos, "a file has a path");
        require(file.stopsAhead <= found.stops.size(), "a file stands among the stops");
    }
    checkWayToOtherPrograms(found.stops);
}

void checkInput(std::string_view input) {
    checkLinks(linksInUriList(input));
    checkLinks(linksInPlainText(input));
    checkLinks(linksInHtml(input));
    const auto stops = decodeStops(input);
    if (!stops)
        return;
    require(!stops->empty() && stops->size() <= static_cast<std::size_t>(tourCapacity),
            "stops of another program have room");
    require(encodeStops(*stops) == input, "there is one form of the same stops");
    stopsAsHtml(*stops);
    stopsAsPlainText(*stops);
}

} // namespace
} // namespace wendmark::fuzz

// The fuzzer calls it by this name.
// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    wendmark::fuzz::checkInput({reinterpret_cast<const char*>(data), size});
    return 0;
}
