#pragma once

#include "recovery/RecoveryStore.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace wendmark {

class TourDocument;

/// Watches the tour that is being edited and keeps what is not saved. Nobody tells it of changes: call
/// check() once a second or more often.
class RecoveryKeeper final {
public:
    /// Both must outlive the keeper.
    RecoveryKeeper(TourDocument& tour, RecoveryStore& store);

    /// The texts in the narration editor, none when there is nothing to apply. Called by check(); may be
    /// empty.
    std::function<std::optional<UnappliedTexts>()> unappliedTexts;

    /// The tour is on the disk as it is now: nothing of it needs to be kept.
    void noteSaved();

    /// Keeps the tour if it is not what was kept last. `now`: seconds since 1970.
    void check(std::int64_t now);

    /// What former runs have left, the latest first.
    std::vector<RecoverySession> leftovers() const { return m_store.leftovers(); }

    /// Makes the session's tour the open one, changed and not saved, with its pages in the working copy, and
    /// shows the stop where it was left. It is kept for this run before the session is discarded.
    void recover(const RecoverySession& session, std::int64_t now);

    void discard(const RecoverySession& session) { m_store.discard(session); }

    /// Whether there is work that is nowhere on the disk but with this keeper.
    bool holdsUnsaved();

    /// The program ends by itself: nothing is left to recover.
    void forget();

private:
    /// What of the tour can change.
    struct State {
        RecoveryRecord record;
        AuthorsFiles files;
    };

    bool isAsChecked(const std::optional<UnappliedTexts>& unapplied, const AuthorsFiles& files) const;
    bool keep(const State& state);
    bool isAsSaved(const State& state);
    bool isAsSaved(const AuthorsFiles& files);
    bool isAsInItsFolder(const std::string& name) const;

    TourDocument& m_tour;
    RecoveryStore& m_store;
    std::optional<State> m_checked; ///< Nothing to do while the tour is still this.
    std::string m_savedWork;        ///< Of the tour as it was saved.
    AuthorsFiles m_savedFiles;      ///< Same.
};

} // namespace wendmark
