#include "recovery/RecoveryKeeper.h"

#include "base/Files.h"
#include "commands/TourDocument.h"

#include <algorithm>

namespace wendmark {

namespace {

/// What tells the author's work from what is saved. Instructions that the program writes are none of it: they
/// come anew whenever pages are made.
std::string workOf(RecoveryRecord record) {
    if (record.model.autoInstruction) {
        for (Stop& stop : record.model.stops)
            stop.stopInstruction.clear();
    }
    return encodeWork(record);
}

} // namespace

RecoveryKeeper::RecoveryKeeper(TourDocument& tour, RecoveryStore& store) : m_tour(tour), m_store(store) {}

void RecoveryKeeper::noteSaved() {
    m_savedWork = workOf({0, m_tour.workspace().tourPath(), m_tour.model(), {}});
    m_savedFiles = authorsFiles(m_tour.workspace().folders().newTourPath);
    m_checked.reset();
}

void RecoveryKeeper::check(std::int64_t now) {
    if (!m_tour.filesAreThere())
        return;
    std::optional<UnappliedTexts> unapplied = unappliedTexts ? unappliedTexts() : std::nullopt;
    AuthorsFiles files = authorsFiles(m_tour.workspace().folders().newTourPath);
    if (isAsChecked(unapplied, files))
        return;
    m_checked = {{now, m_tour.workspace().tourPath(), m_tour.model(), std::move(unapplied)},
                 std::move(files)};
    if (!keep(*m_checked))
        m_checked.reset();
}

bool RecoveryKeeper::isAsChecked(const std::optional<UnappliedTexts>& unapplied,
                                 const AuthorsFiles& files) const {
    return m_checked && m_checked->record.tourPath == m_tour.workspace().tourPath() &&
           m_checked->record.model == m_tour.model() && m_checked->record.unapplied == unapplied &&
           m_checked->files == files;
}

/// False when it could not be kept.
bool RecoveryKeeper::keep(const State& state) {
    if (!state.record.unapplied && isAsSaved(state)) {
        m_store.forget();
        return true;
    }
    return m_store.keep(state.record, m_tour.workspace().folders().newTourPath);
}

bool RecoveryKeeper::isAsSaved(const State& state) {
    return workOf(state.record) == m_savedWork && isAsSaved(state.files);
}

/// A file that was only written anew, as the templates are by a wizard that is then left, is no change.
bool RecoveryKeeper::isAsSaved(const AuthorsFiles& files) {
    const auto isSaved = [this](const auto& file) {
        const auto saved = m_savedFiles.find(file.first);
        if (saved == m_savedFiles.end() || (saved->second != file.second && !isAsInItsFolder(file.first)))
            return false;
        saved->second = file.second;
        return true;
    };
    return files.size() == m_savedFiles.size() && std::ranges::all_of(files, isSaved);
}

/// Whether the file is what the tour's folder holds, else the Template folder.
bool RecoveryKeeper::isAsInItsFolder(const std::string& name) const {
    const Workspace& workspace = m_tour.workspace();
    const bool isInTour = !workspace.tourPath().empty() && fileExists(workspace.tourFile(name));
    const files::Contents own = files::read(workspace.workingFile(name));
    const files::Contents source =
        files::read(isInTour ? workspace.tourFile(name) : workspace.templateFile(name));
    return own.outcome.ok() && source.outcome.ok() && own.bytes == source.bytes;
}

void RecoveryKeeper::recover(const RecoverySession& session, std::int64_t now) {
    m_tour.recover(session.record.model, session.record.tourPath,
                   [&] { m_store.restoreFiles(session, m_tour.workspace().folders().newTourPath); });
    m_savedWork.clear();
    m_checked.reset();
    RecoveryRecord record = session.record;
    record.time = now;
    if (m_store.keep(record, m_tour.workspace().folders().newTourPath))
        m_store.discard(session);
}

bool RecoveryKeeper::holdsUnsaved() {
    const std::optional<UnappliedTexts> unapplied = unappliedTexts ? unappliedTexts() : std::nullopt;
    const State present = {{0, m_tour.workspace().tourPath(), m_tour.model(), unapplied},
                           authorsFiles(m_tour.workspace().folders().newTourPath)};
    return m_tour.filesAreThere() && (unapplied || !isAsSaved(present));
}

void RecoveryKeeper::forget() {
    m_store.forget();
    m_checked.reset();
}

} // namespace wendmark
