#pragma once

#include "model/TourModel.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace wendmark {

/// What stands in the narration editor and in no stop yet.
struct UnappliedTexts {
    std::string title;
    std::string narration;
    std::string instruction;

    friend bool operator==(const UnappliedTexts&, const UnappliedTexts&) = default;
};

/// A tour at one moment of its editing, without its files.
struct RecoveryRecord {
    std::int64_t time = 0; ///< Seconds since 1970, UTC.
    std::string tourPath;  ///< Empty: the tour was never saved.
    TourModel model;
    std::optional<UnappliedTexts> unapplied;
};

std::string encodeRecord(const RecoveryRecord& record);

/// Bytes that differ when the author's work differs: where the author is in the tour is no change of it, and
/// neither is what the program notes for itself.
std::string encodeWork(const RecoveryRecord& record);

/// None when the bytes are no complete record.
std::optional<RecoveryRecord> decodeRecord(std::string_view bytes);

} // namespace wendmark
