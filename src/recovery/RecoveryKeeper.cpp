#include "recovery/RecoveryKeeper.h"

#include "model/TourContext.h"
#include "model/Workspace.h"
#include "publish/TourCommands.h"

namespace wendmark {

namespace {

/// Where the author is in the tour is no change of the tour, and neither is what the program notes for
/// itself.
RecoveryRecord withoutPosition(RecoveryRecord record) {
    record.model.currentStop = 0;
    record.model.tourChanged = false;
    return record;
}

} // namespace

RecoveryKeeper::RecoveryKeeper(TourContext& tour, RecoveryStore& store) : m_tour(tour), m_store(store) {}

void RecoveryKeeper::noteSaved() {
    m_saved = describe(withoutPosition({0, m_tour.workspace.tourPath, m_tour.model, {}}));
}

void RecoveryKeeper::check(std::int64_t now) {
    RecoveryRecord record{0, m_tour.workspace.tourPath, m_tour.model, {}};
    if (unappliedTexts)
        record.unapplied = unappliedTexts();
    if (!record.unapplied && describe(withoutPosition(record)) == m_saved) {
        forget();
        return;
    }
    const std::string present = describe(record);
    if (present == m_kept)
        return;
    record.time = now;
    if (m_store.keep(record, m_tour.workspace.folders().newTourPath))
        m_kept = present;
}

void RecoveryKeeper::recover(const RecoverySession& session, std::int64_t now) {
    m_tour.workspace.tourPath = session.record.tourPath;
    m_store.restoreFiles(session, m_tour.workspace.folders().newTourPath);
    m_tour.model = session.record.model;
    generateRecoveredTour(m_tour);
    m_saved.clear();
    RecoveryRecord record = session.record;
    record.time = now;
    if (m_store.keep(record, m_tour.workspace.folders().newTourPath))
        m_store.discard(session);
}

void RecoveryKeeper::forget() {
    m_store.forget();
    m_kept.clear();
}

std::string RecoveryKeeper::describe(const RecoveryRecord& record) const {
    std::string description = encodeRecord(record);
    for (const auto& [name, stamp] : authorsFiles(m_tour.workspace.folders().newTourPath))
        description.append(name).append(" ").append(stamp).append("\n");
    return description;
}

} // namespace wendmark
