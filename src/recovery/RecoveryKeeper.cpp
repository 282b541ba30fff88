#include "recovery/RecoveryKeeper.h"

#include "model/TourContext.h"
#include "model/Workspace.h"
#include "publish/TourCommands.h"

namespace wendmark {

namespace {

std::string describe(const RecoveryRecord& record, const AuthorsFiles& files) {
    std::string description = encodeWork(record);
    for (const auto& [name, stamp] : files)
        description.append(name).append(" ").append(stamp).append("\n");
    return description;
}

} // namespace

RecoveryKeeper::RecoveryKeeper(TourContext& tour, RecoveryStore& store) : m_tour(tour), m_store(store) {}

void RecoveryKeeper::noteSaved() {
    m_saved = describe({0, m_tour.workspace.tourPath, m_tour.model, {}},
                       authorsFiles(m_tour.workspace.folders().newTourPath));
    m_checked.reset();
}

void RecoveryKeeper::check(std::int64_t now) {
    std::optional<UnappliedTexts> unapplied = unappliedTexts ? unappliedTexts() : std::nullopt;
    AuthorsFiles files = authorsFiles(m_tour.workspace.folders().newTourPath);
    if (isAsChecked(unapplied, files))
        return;
    m_checked = {{now, m_tour.workspace.tourPath, m_tour.model, std::move(unapplied)}, std::move(files)};
    if (!keep(*m_checked))
        m_checked.reset();
}

bool RecoveryKeeper::isAsChecked(const std::optional<UnappliedTexts>& unapplied,
                                 const AuthorsFiles& files) const {
    return m_checked && m_checked->record.tourPath == m_tour.workspace.tourPath &&
           m_checked->record.model == m_tour.model && m_checked->record.unapplied == unapplied &&
           m_checked->files == files;
}

/// False when it could not be kept.
bool RecoveryKeeper::keep(const State& state) {
    if (!state.record.unapplied && describe(state.record, state.files) == m_saved) {
        m_store.forget();
        return true;
    }
    return m_store.keep(state.record, m_tour.workspace.folders().newTourPath);
}

void RecoveryKeeper::recover(const RecoverySession& session, std::int64_t now) {
    m_tour.workspace.tourPath = session.record.tourPath;
    m_store.restoreFiles(session, m_tour.workspace.folders().newTourPath);
    m_tour.model = session.record.model;
    generateRecoveredTour(m_tour);
    m_saved.clear();
    m_checked.reset();
    RecoveryRecord record = session.record;
    record.time = now;
    if (m_store.keep(record, m_tour.workspace.folders().newTourPath))
        m_store.discard(session);
}

void RecoveryKeeper::forget() {
    m_store.forget();
    m_checked.reset();
}

} // namespace wendmark
