#pragma once

#include <QGuiApplication>
#include <QWidget>
#include <QWindow>

namespace wendmark::test {

/// Milliseconds that a test waits for what has to come. It judges no time: a busy machine may need much of
/// it, and what never comes ends the wait in the end.
constexpr int patience = 120'000;

/// Whether the keys go to this window. QWindow::isActive(), and Qt Test's wait for it, also say so of a
/// window whose parent has the keys.
inline bool hasKeys(const QWidget& window) {
    return window.windowHandle() != nullptr && QGuiApplication::focusWindow() == window.windowHandle();
}

} // namespace wendmark::test
