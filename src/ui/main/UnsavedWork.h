#pragma once

#include "recovery/RecoveryRecord.h"

#include <QObject>
#include <functional>
#include <optional>
#include <string>

class QTimer;
class QWidget;

namespace wendmark {

class Gate;
class RecoveryKeeper;
class TourDocument;
struct RecoverySession;

/// Watches over work that is not saved: keeps it for the next start, offers what a former run has left, and
/// keeps the scripts of saves.
class UnsavedWork final : public QObject {
    Q_OBJECT

public:
    /// All must outlive it. `savedScripts` is the folder for the scripts.
    UnsavedWork(TourDocument& document, RecoveryKeeper& recovery, Gate& gate, std::string savedScripts,
                QObject* parent);
    ~UnsavedWork() override;

    /// What stands in the narration editor and in no stop; asked for whenever the work is looked at.
    void setUnappliedTexts(std::function<std::optional<UnappliedTexts>()> texts);

    /// From now on the work is looked at twice a second. The tour as it is now is saved.
    void start();
    void stop();

    /// The tour is on the disk as it is now.
    void noteOpened();
    void noteSaved(bool complete);

    /// Keeps the script that lies in the tour's folder among those of its last saves.
    void keepScript() const;

    /// True when the author goes on with a tour of a former run.
    bool offerRecovery(QWidget& window);

    /// Texts of a recovered tour that were not applied; takes them out.
    std::optional<UnappliedTexts> takeRecoveredTexts();
    bool hasRecoveredTexts() const { return m_recoveredTexts.has_value(); }

    /// The program ends. `asked`: the author was asked about everything that is not saved; else it is kept
    /// for the next start.
    void end(bool asked);

signals:
    /// The work is about to be looked at.
    void looking();

private:
    void look();

    TourDocument& m_document;
    RecoveryKeeper& m_recovery;
    Gate& m_gate;
    std::string m_savedScripts;
    std::function<std::optional<UnappliedTexts>()> m_unapplied;
    QTimer* m_timer;
    std::optional<UnappliedTexts> m_recoveredTexts; ///< For the narration editor, once the window is there.
};

} // namespace wendmark
