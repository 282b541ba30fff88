#include "platform/QtDesktop.h"

#include "platform/Gate.h"
#include "platform/Strings.h"

#include <QApplication>
#include <QDesktopServices>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QTime>
#include <QTimer>

namespace wendmark {

namespace {

/// Milliseconds of a command after which the windows get their turn. Commands on ordinary tours are done by
/// then.
constexpr qint64 longestSilence = 100;

} // namespace

Clock realClock() {
    QElapsedTimer elapsed;
    elapsed.start();
    const auto start = static_cast<float>(QTime::currentTime().msecsSinceStartOfDay()) / 1000;
    return [=] { return start + static_cast<float>(elapsed.elapsed()) / 1000; };
}

StepClock realStepClock() {
    QElapsedTimer elapsed;
    elapsed.start();
    return [=] { return elapsed.elapsed(); };
}

QtDesktop::QtDesktop(Gate& gate, Clock clock, StepClock stepClock)
    : m_gate(gate), m_clock(std::move(clock)), m_stepClock(std::move(stepClock)) {}

void QtDesktop::showLineError(const std::string& text) {
    QMessageBox box(QMessageBox::Warning, QStringLiteral("Wendmark"), toQString(text), QMessageBox::Ok,
                    QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

void QtDesktop::processPendingEvents() {
    m_gate.handleEvents();
}

void QtDesktop::stayResponsive() {
    if (m_gate.isClosed())
        return;
    if (!m_firstStep) {
        m_firstStep = m_stepClock();
        QCoreApplication::postEvent(this, new QEvent(QEvent::User)); // Comes when events are handled.
    } else if (m_stepClock() - *m_firstStep >= longestSilence) {
        emit lasting();
        m_gate.breathe();
    }
}

void QtDesktop::customEvent(QEvent*) {
    m_firstStep.reset();
}

void QtDesktop::navigateMainBrowser(const std::string& address) {
    emit mainBrowserNavigationRequested(toQString(address));
}

void QtDesktop::setBusyPointer(Pointer pointer) {
    const bool hourglass = pointer == Pointer::hourglass;
    if (hourglass == m_hourglass)
        return;
    m_hourglass = hourglass;
    if (hourglass)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

bool QtDesktop::openOutside(const QUrl& address) {
    return QDesktopServices::openUrl(address);
}

void QtDesktop::beep() {
    QApplication::beep();
    emit beeped();
}

} // namespace wendmark
