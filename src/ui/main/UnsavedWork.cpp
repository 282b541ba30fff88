#include "ui/main/UnsavedWork.h"

#include "base/Files.h"
#include "base/Log.h"
#include "commands/TourDocument.h"
#include "platform/Gate.h"
#include "recovery/RecoveryKeeper.h"
#include "recovery/SavedScripts.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/dialogs/frmRecover.h"

#include <QDateTime>
#include <QTimer>
#include <utility>

namespace wendmark {

namespace {

constexpr int recoveryInterval = 500; // Milliseconds.

} // namespace

UnsavedWork::UnsavedWork(TourDocument& document, RecoveryKeeper& recovery, Gate& gate,
                         std::string savedScripts, QObject* parent)
    : QObject(parent)
    , m_document(document)
    , m_recovery(recovery)
    , m_gate(gate)
    , m_savedScripts(std::move(savedScripts))
    , m_timer(new QTimer(this)) {
    m_timer->setInterval(recoveryInterval);
    connect(m_timer, &QTimer::timeout, this, &UnsavedWork::look);
    m_recovery.unappliedTexts = [this] {
        return m_recoveredTexts || !m_unapplied ? m_recoveredTexts : m_unapplied();
    };
}

UnsavedWork::~UnsavedWork() {
    m_recovery.unappliedTexts = nullptr;
}

void UnsavedWork::setUnappliedTexts(std::function<std::optional<UnappliedTexts>()> texts) {
    m_unapplied = std::move(texts);
}

void UnsavedWork::start() {
    m_recovery.noteSaved();
    m_timer->start();
}

void UnsavedWork::stop() {
    m_timer->stop();
}

void UnsavedWork::noteOpened() {
    m_recovery.noteSaved();
}

void UnsavedWork::noteSaved(bool complete) {
    if (complete)
        m_recovery.noteSaved();
    keepScript();
}

void UnsavedWork::keepScript() const {
    const files::Contents script = files::read(m_document.workspace().tourFile("script.txt"));
    if (script.outcome.ok())
        m_document.log().skip(keepSavedScript(m_savedScripts, m_document.workspace().tourPath(), script.bytes,
                                              QDateTime::currentSecsSinceEpoch()));
}

bool UnsavedWork::offerRecovery(QWidget& window) {
    for (const RecoverySession& session : m_recovery.leftovers()) {
        frmRecover dialog(session.record, &window);
        runDialog(dialog);
        if (dialog.choice() == frmRecover::Choice::recover) {
            m_recoveredTexts = session.record.unapplied;
            m_recovery.recover(session, QDateTime::currentSecsSinceEpoch());
            return true;
        }
        if (dialog.choice() == frmRecover::Choice::notNow)
            return false;
        m_recovery.discard(session);
    }
    return false;
}

std::optional<UnappliedTexts> UnsavedWork::takeRecoveredTexts() {
    return std::exchange(m_recoveredTexts, std::nullopt);
}

void UnsavedWork::end(bool asked) {
    m_timer->stop();
    if (!asked && m_recovery.holdsUnsaved())
        m_recovery.check(QDateTime::currentSecsSinceEpoch());
    else
        m_recovery.forget();
}

void UnsavedWork::look() {
    if (m_gate.isClosed())
        return; // Half of a change is nothing to recover.
    emit looking();
    m_recovery.check(QDateTime::currentSecsSinceEpoch());
}

} // namespace wendmark
