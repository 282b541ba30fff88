#pragma once

#include <QMargins>
#include <QRect>
#include <QSize>
#include <Qt>

class QWidget;

/// Where windows stand: inside the screen that they are on, the frame that the desktop puts around them
/// included. Lengths are in pixels of the program, of which a scaled screen has fewer than of its own.
namespace wendmark {

/// Kind of the windows that are worked in beside the main window: they stay above it and can be maximised.
inline constexpr Qt::WindowFlags editorFlags = Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                                               Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint;

/// `frame` moved into `area`, and made smaller where that is not enough.
QRect rectInside(QRect frame, const QRect& area);

/// What the desktop puts around the window; nobody knows it before a window is shown: then it is that of the
/// program's other windows, or a guess.
QMargins frameAround(const QWidget& window);

/// The part of the screen that windows may take, of the screen that the window is on or, while it is hidden,
/// that its parent is on.
QRect screenAreaFor(const QWidget& window);

/// Largest size that the window may have there, its frame left out.
QSize largestSizeOf(const QWidget& window);

/// Width, as far as the screen has it, at which the frame shows the whole title beside its buttons.
int widthForTitle(const QWidget& window);

/// Moves a window, still hidden, to the middle of its screen.
void centreOnScreen(QWidget& window);

/// Same, to the middle of its parent, if that is on screen.
void centreOverParent(QWidget& window);

/// For a window, mostly still hidden, that has the size and the place that it wants: keeps it inside its
/// screen, now and when it has been shown and its frame is known. A smallest size that is larger than the
/// screen gives way; what then has no room gets scroll bars, but for the last row, the buttons. Call it each
/// time before the window is shown.
void keepOnScreen(QWidget& window);

/// Same, for a window with a smallest size that holds on any screen.
void keepOnScreenFrom(QWidget& window, const QSize& smallest);

} // namespace wendmark
