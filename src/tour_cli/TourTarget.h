#pragma once

#include "base/Outcome.h"
#include "base/StagedReplacement.h"
#include "tour_cli/Folders.h"

#include <csignal>
#include <string>

namespace wendmark::cli {

/// Lets the signals that ask a program to end wait for as long as it lives.
class HeldSignals final {
public:
    HeldSignals();
    ~HeldSignals();
    HeldSignals(const HeldSignals&) = delete;
    HeldSignals& operator=(const HeldSignals&) = delete;

    /// Whether one has come.
    static bool isWaiting();

private:
    sigset_t m_before{};
};

/// The folder that a tour is published into, all or nothing. The tour is finished in a hidden folder, on the
/// same disk and with the owner and the rights that are handed down there, and then renamed into place. The
/// hidden folder goes in the end, unless it holds files that could not be put back.
class TourTarget final {
public:
    explicit TourTarget(std::string folder);
    TourTarget(const TourTarget&) = delete;
    TourTarget& operator=(const TourTarget&) = delete;

    /// Gets ready for a new folder in an existing one. Fails when it is there.
    Outcome make();

    /// Gets ready for the folder, or for a new one whose parents are made if they are missing.
    Outcome makeIfMissing();

    const std::string& folder() const { return m_folder; }

    /// The hidden folder, empty at first.
    const std::string& finished() const { return m_replacement.staging(); }

    /// Replaces files of the folder by those of finished(), script.txt last. Others stay. When one file
    /// cannot be replaced, or a signal to end has come, the folder stays what it was.
    Outcome putInPlace();

    /// The outcome in words that name the folder in place of the hidden one, if that goes.
    Outcome inOwnWords(const Outcome& outcome) const;

private:
    HeldSignals m_signals; ///< First, so that they wait until everything else is cleared away.
    std::string m_folder;
    MadeFolder m_parent;
    StagedReplacement m_replacement;
};

} // namespace wendmark::cli
