#include "platform/LoadFailure.h"

#include <algorithm>
#include <iterator>

namespace wendmark {

namespace {

struct Meaning {
    int lowest;
    int highest;
    LoadFailure failure;
};

constexpr Meaning meanings[] = {
    {-3, -3, LoadFailure::nothingSent},      // Aborted.
    {-6, -6, LoadFailure::noSuchFile},       // File not found.
    {-7, -7, LoadFailure::noAnswer},         // Timed out.
    {-21, -21, LoadFailure::notReachable},   // Network changed.
    {-101, -100, LoadFailure::cutOff},       // Connection closed, reset.
    {-102, -102, LoadFailure::noServer},     // Connection refused.
    {-103, -103, LoadFailure::cutOff},       // Connection aborted.
    {-104, -104, LoadFailure::noServer},     // Connection failed.
    {-105, -105, LoadFailure::noSuchHost},   // Name not resolved.
    {-106, -106, LoadFailure::notReachable}, // Disconnected.
    {-109, -108, LoadFailure::notReachable}, // Address invalid, unreachable.
    {-118, -118, LoadFailure::noAnswer},     // Connection timed out.
    {-130, -130, LoadFailure::notReachable}, // Proxy connection failed.
    {-137, -137, LoadFailure::noSuchHost},   // Name resolution failed.
    {-299, -200, LoadFailure::untrusted},    // All of certificates.
    {-310, -310, LoadFailure::goesRound},    // Too many redirects.
    {-324, -324, LoadFailure::cutOff},       // Empty response.
};

} // namespace

LoadFailure loadFailureFrom(int errorCode) {
    const auto* const found =
        std::find_if(std::begin(meanings), std::end(meanings), [&](const Meaning& meaning) {
            return errorCode >= meaning.lowest && errorCode <= meaning.highest;
        });
    return found == std::end(meanings) ? LoadFailure::other : found->failure;
}

} // namespace wendmark
