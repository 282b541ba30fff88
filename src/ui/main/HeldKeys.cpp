#include "ui/main/HeldKeys.h"

#include "platform/Gate.h"

#include <QApplication>
#include <QEvent>
#include <QScopedValueRollback>
#include <QWidget>
#include <QWindow>
#include <utility>

namespace wendmark {

HeldKeys::HeldKeys(Gate& gate, QWidget& window) : QObject(&window), m_gate(gate), m_window(window) {}

HeldKeys::~HeldKeys() = default;

void HeldKeys::holdForLast(std::function<bool()> hasArrived) {
    if (m_gate.isOpen())
        return;
    if (!m_held)
        QCoreApplication::instance()->installEventFilter(this);
    const auto keys = std::make_shared<Keys>();
    m_held = keys;
    m_gate.run(*this, [this, keys, hasArrived = std::move(hasArrived)] {
        if (m_held == keys)
            stopHolding();
        if (keys->empty())
            return;
        if (hasArrived())
            give(*keys);
        else
            emit dropped();
    });
}

void HeldKeys::stopHolding() {
    m_held.reset();
    QCoreApplication::instance()->removeEventFilter(this);
}

void HeldKeys::give(const Keys& keys) {
    const QScopedValueRollback giving(m_giving, true);
    for (const auto& key : keys) {
        if (QWidget* const field = m_window.focusWidget())
            QCoreApplication::sendEvent(field, key.get());
    }
    emit given();
}

/// The system gives keys to the window, and that to the field.
bool HeldKeys::isForWindow(const QObject& watched) const {
    const auto* const widget = qobject_cast<const QWidget*>(&watched);
    return &watched == m_window.windowHandle() || (widget != nullptr && widget->window() == &m_window);
}

bool HeldKeys::eventFilter(QObject* watched, QEvent* event) {
    if (m_giving)
        return false;
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::InputMethod:
        if (!m_held || !isForWindow(*watched))
            return false;
        m_held->emplace_back(event->clone());
        event->accept();
        return true;
    case QEvent::MouseButtonPress:
        if (m_held && isForWindow(*watched))
            stopHolding(); // The author types into another field.
        return false;
    default:
        return false;
    }
}

} // namespace wendmark
