#include "ui/support/RandomHands.h"

#include "platform/Gate.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPointer>
#include <QScopedValueRollback>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <QWindow>
#include <array>
#include <csignal>
#include <cstdio>
#include <unistd.h>

namespace wendmark::test {

namespace {

constexpr int longestRest = 12;    // Milliseconds between two events.
constexpr std::size_t kept = 50;   // Events that are printed.
constexpr std::size_t width = 240; // Bytes of each.

/// Plain memory, which can be printed while the process is dying.
std::array<std::array<char, width>, kept> lastEvents;
std::size_t eventCount = 0;

void printAndDie(int signal) {
    RandomHands::printLast();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

/// What the window is called in the list of events.
QString nameOf(const QWidget& widget) {
    const QString name = widget.objectName();
    return name.isEmpty()
               ? QLatin1String(widget.metaObject()->className()) + QLatin1Char(':') + widget.windowTitle()
               : name;
}

QList<QWidget*> visibleWindows() {
    QList<QWidget*> windows;
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        const Qt::WindowType type = window->windowType();
        const bool isWindow = type == Qt::Window || type == Qt::Dialog;
        if (isWindow && window->isVisible() && window->windowHandle() != nullptr)
            windows.append(window);
    }
    return windows;
}

/// Folder dialogs may lead out of the folders that are made for the test; only the first drive may not.
void keepFirstDrive(const QWidget& window) {
    if (auto* const drives = window.findChild<QComboBox*>(QStringLiteral("Drive1"))) {
        while (drives->count() > 1)
            drives->removeItem(drives->count() - 1);
    }
}

/// Unlike QTest::keyClick(), which handles events in between, this takes notice that the window has gone.
void strike(const QPointer<QWindow>& window, int key, Qt::KeyboardModifiers modifiers, const QString& text) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        if (!window.isNull())
            qt_handleKeyEvent(window, type, key, modifiers, text);
    }
}

/// What the system says that a key without letters types.
QString textOf(Qt::Key key) {
    switch (key) {
    case Qt::Key_Return:
        return QStringLiteral("\r");
    case Qt::Key_Space:
        return QStringLiteral(" ");
    case Qt::Key_Tab:
        return QStringLiteral("\t");
    default:
        return {};
    }
}

constexpr Qt::Key keys[] = {Qt::Key_Tab,   Qt::Key_Tab,       Qt::Key_Backtab, Qt::Key_Return, Qt::Key_Escape,
                            Qt::Key_Space, Qt::Key_Backspace, Qt::Key_Delete,  Qt::Key_Up,     Qt::Key_Down,
                            Qt::Key_Left,  Qt::Key_Right,     Qt::Key_Home,    Qt::Key_End,    Qt::Key_PageUp,
                            Qt::Key_F10,   Qt::Key_F9,        Qt::Key_PageDown};
constexpr Qt::Key editingKeys[] = {Qt::Key_Z, Qt::Key_Z, Qt::Key_Y, Qt::Key_A, Qt::Key_C,     Qt::Key_V,
                                   Qt::Key_X, Qt::Key_B, Qt::Key_I, Qt::Key_U, Qt::Key_Return};
/// None that leads to another folder in a name.
constexpr char letters[] = "abcdefghijklmnop qrstuvwxyz 0123456789 <>&\"'=;,!?";

} // namespace

RandomHands::RandomHands(unsigned seed) : m_random(seed) {
    eventCount = 0;
    for (const int signal : {SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGILL})
        std::signal(signal, printAndDie);
    QTimer::singleShot(longestRest, this, &RandomHands::tick);
}

RandomHands::~RandomHands() {
    for (const int signal : {SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGILL})
        std::signal(signal, SIG_DFL);
}

void RandomHands::printLast() {
    const auto put = [](const char* text) {
        [[maybe_unused]] const auto written =
            write(STDERR_FILENO, text, std::char_traits<char>::length(text));
    };
    put("the last events:\n");
    for (std::size_t i = eventCount < kept ? 0 : eventCount - kept; i < eventCount; ++i) {
        put(lastEvents.at(i % kept).data());
        put("\n");
    }
}

/// Closes the popup or modal dialog on top. False when there is none.
bool RandomHands::dismiss() {
    if (QWidget* const popup = QApplication::activePopupWidget()) {
        popup->close();
        return true;
    }
    auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || !dialog->isVisible())
        return false;
    const QPointer<QDialog> rejected = dialog;
    note(QStringLiteral("dismiss ") + nameOf(*dialog));
    dialog->reject();
    // Some questions take no rejection.
    if (!rejected.isNull() && rejected->isVisible() && rejected == QApplication::activeModalWidget())
        rejected->QDialog::done(QDialog::Rejected);
    return true;
}

/// The next event is asked for first: it comes also while this one is being handled.
void RandomHands::tick() {
    QTimer::singleShot(1 + pick(longestRest), this, &RandomHands::tick);
    if (m_gate != nullptr && m_gate->isBreathing())
        return;
    const QScopedValueRollback depth(m_depth, m_depth + 1);
    if (m_left < 1) {
        m_dismissed += dismiss() ? 1 : 0;
        return;
    }
    --m_left;
    if (beforeEvent)
        beforeEvent();
    act();
}

void RandomHands::act() {
    if (QWidget* const popup = QApplication::activePopupWidget()) {
        actOnPopup(*popup);
        return;
    }
    QWidget* const window = target();
    if (window == nullptr)
        return;
    keepFirstDrive(*window);
    if (auto* const files = qobject_cast<QFileDialog*>(window))
        answerFileDialog(*files);
    else
        actOnWindow(*window);
}

/// The modal dialog on top or, without one, any window.
QWidget* RandomHands::target() {
    QWidget* const modal = QApplication::activeModalWidget();
    if (modal != nullptr)
        return modal->isVisible() && modal->windowHandle() != nullptr ? modal : nullptr;
    const QList<QWidget*> windows = visibleWindows();
    return windows.isEmpty() ? nullptr : windows.at(pick(static_cast<int>(windows.size())));
}

void RandomHands::actOnPopup(QWidget& popup) {
    constexpr Qt::Key choices[] = {Qt::Key_Down, Qt::Key_Up, Qt::Key_Return, Qt::Key_Escape};
    if (popup.windowHandle() == nullptr || pick(8) == 0) {
        note(QStringLiteral("close popup"));
        popup.close();
        return;
    }
    sendKey(popup, choices[pick(4)], Qt::NoModifier);
}

void RandomHands::actOnWindow(QWidget& window) {
    const int kind = pick(100);
    if (kind < 22)
        pressShortcut(window);
    else if (kind < 34)
        pressKey(window);
    else if (kind < 46)
        type(window);
    else if (kind < 72)
        click(window);
    else if (kind < 86)
        chooseMenuItem(window);
    else if (kind < 91)
        closeWindow(window);
    else if (kind < 95)
        activate();
    else
        selectFolder(window);
}

/// Nothing else is done in it: its keys rename and delete files.
void RandomHands::answerFileDialog(QFileDialog& dialog) {
    auto* const name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    if (name == nullptr || m_files.isEmpty() || pick(3) == 0) {
        note(QStringLiteral("reject file dialog"));
        dialog.reject();
        return;
    }
    const QString file = m_files.at(pick(static_cast<int>(m_files.size())));
    note(QStringLiteral("choose file ") + file);
    name->setText(file);
    static_cast<QDialog&>(dialog).accept();
}

void RandomHands::sendKey(QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    note(QStringLiteral("key %1 in %2")
             .arg(QKeySequence(key | modifiers).toString(QKeySequence::PortableText), nameOf(window)));
    strike(window.windowHandle(), key, modifiers, modifiers == Qt::NoModifier ? textOf(key) : QString());
}

void RandomHands::pressShortcut(QWidget& window) {
    QList<QKeySequence> sequences;
    for (const QAction* const action : window.findChildren<QAction*>()) {
        const bool ends = action->objectName() == QLatin1String("mnuFileExit");
        if (!action->shortcut().isEmpty() && (!ends || pick(30) == 0))
            sequences.append(action->shortcut());
    }
    if (sequences.isEmpty()) {
        pressKey(window);
        return;
    }
    const QKeyCombination chosen = sequences.at(pick(static_cast<int>(sequences.size())))[0];
    window.activateWindow();
    sendKey(window, chosen.key(), chosen.keyboardModifiers());
}

void RandomHands::pressKey(QWidget& window) {
    if (pick(4) == 0)
        sendKey(window, editingKeys[pick(static_cast<int>(std::size(editingKeys)))], Qt::ControlModifier);
    else
        sendKey(window, keys[pick(static_cast<int>(std::size(keys)))], Qt::NoModifier);
}

void RandomHands::type(QWidget& window) {
    const QPointer<QWindow> handle = window.windowHandle();
    const QString name = nameOf(window); // A key may close it.
    QString typed;
    for (int n = pick(6); n >= 0 && !handle.isNull(); --n) {
        const char letter = letters[pick(static_cast<int>(std::size(letters)) - 1)];
        typed.append(QLatin1Char(letter));
        note(QStringLiteral("type \"%1\" in %2").arg(typed, name));
        strike(handle, QChar(QLatin1Char(letter)).toUpper().unicode(), Qt::NoModifier, typed.right(1));
    }
}

void RandomHands::click(QWidget& window) {
    QList<QWidget*> buttons;
    QList<QWidget*> others;
    for (QWidget* const widget : window.findChildren<QWidget*>()) {
        if (widget->window() == &window && widget->isVisible() && widget->isEnabled())
            (qobject_cast<QAbstractButton*>(widget) != nullptr ? buttons : others).append(widget);
    }
    const QList<QWidget*>& from = buttons.isEmpty() || (!others.isEmpty() && pick(3) == 0) ? others : buttons;
    if (from.isEmpty())
        return;
    const QWidget& widget = *from.at(pick(static_cast<int>(from.size())));
    const QPoint place(pick(widget.width()), pick(widget.height()));
    const Qt::MouseButton button = pick(12) == 0 ? Qt::RightButton : Qt::LeftButton;
    note(QStringLiteral("click%1 %2 at %3, %4 in %5")
             .arg(button == Qt::RightButton ? QStringLiteral(" right") : QString(), nameOf(widget))
             .arg(place.x())
             .arg(place.y())
             .arg(nameOf(window)));
    const QPoint inWindow = widget.mapTo(&window, place);
    const QPointer<QWindow> handle = window.windowHandle();
    QTest::mousePress(handle, button, Qt::NoModifier, inWindow);
    if (!handle.isNull())
        QTest::mouseRelease(handle, button, Qt::NoModifier, inWindow);
}

void RandomHands::chooseMenuItem(QWidget& window) {
    QList<QAction*> items;
    for (const QMenuBar* const bar : window.findChildren<QMenuBar*>()) {
        for (const QAction* const menu : bar->actions()) {
            for (QAction* const item : menu->menu()->actions()) {
                const bool ends = item->objectName() == QLatin1String("mnuFileExit");
                if (item->isEnabled() && !item->isSeparator() && (!ends || pick(30) == 0))
                    items.append(item);
            }
        }
    }
    if (items.isEmpty()) {
        click(window);
        return;
    }
    QAction* const item = items.at(pick(static_cast<int>(items.size())));
    note(QStringLiteral("menu item ") + item->objectName());
    item->trigger();
}

/// The main window, with which the program ends, less often than the others; all at once as at the end of a
/// session, which no modal dialog keeps back.
void RandomHands::closeWindow(QWidget& window) {
    if (pick(60) == 0) {
        note(QStringLiteral("close all windows"));
        QApplication::closeAllWindows();
        return;
    }
    if (window.objectName() == QLatin1String("frmMain") && pick(10) != 0)
        return;
    note(QStringLiteral("close ") + nameOf(window));
    window.windowHandle()->close();
}

void RandomHands::activate() {
    const QList<QWidget*> windows = visibleWindows();
    if (windows.isEmpty())
        return;
    QWidget& window = *windows.at(pick(static_cast<int>(windows.size())));
    note(QStringLiteral("activate ") + nameOf(window));
    if (pick(6) == 0)
        window.showMinimized();
    else
        window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.raise();
    window.activateWindow();
}

void RandomHands::selectFolder(QWidget& window) {
    auto* const tree = window.findChild<QTreeView*>(QStringLiteral("Dir1"));
    const auto* const model = tree == nullptr ? nullptr : qobject_cast<QFileSystemModel*>(tree->model());
    if (model == nullptr || m_folders.isEmpty()) {
        click(window);
        return;
    }
    const QString folder = m_folders.at(pick(static_cast<int>(m_folders.size())));
    note(QStringLiteral("select folder ") + folder);
    tree->setCurrentIndex(model->index(folder));
}

void RandomHands::note(const QString& event) {
    const QByteArray line =
        QStringLiteral("%1 (inside %2) ").arg(eventCount).arg(m_depth - 1).toUtf8() + event.toUtf8();
    std::snprintf(lastEvents.at(eventCount % kept).data(), width, "%s", line.constData());
    ++eventCount;
}

} // namespace wendmark::test
