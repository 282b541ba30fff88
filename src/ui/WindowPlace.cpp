#include "ui/WindowPlace.h"

#include <QApplication>
#include <QEvent>
#include <QFontMetrics>
#include <QLayout>
#include <QPointer>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>
#include <algorithm>

namespace wendmark {

namespace {

constexpr int besideTitle = 120; ///< What the frame's icon and buttons take.

/// The frame of a window that is on screen; null as long as nobody has told.
QMargins knownFrame(const QWidget& window) {
    const QWindow* const handle = window.windowHandle();
    return window.isVisible() && handle != nullptr ? handle->frameMargins() : QMargins();
}

/// More rather than less than desktops put around a window.
QMargins guessedFrame() {
    const QStyle& style = *QApplication::style();
    const int side = style.pixelMetric(QStyle::PM_MdiSubWindowFrameWidth);
    return {side, side + style.pixelMetric(QStyle::PM_TitleBarHeight), side, side};
}

bool isPlain(const QWidget& window) {
    return !window.isMaximized() && !window.isFullScreen() && !window.isMinimized();
}

/// Smallest size at which a layout cuts nothing off. Its own leaves wrapped texts out of account.
QSize smallestSizeOf(const QLayout& layout, int width) {
    const QSize smallest = layout.totalMinimumSize();
    if (!layout.hasHeightForWidth())
        return smallest;
    return {smallest.width(), std::max(smallest.height(),
                                       layout.totalMinimumHeightForWidth(std::max(width, smallest.width())))};
}

/// The last item of a window's layout, taken out of it, when it is a row of buttons that is no wider than
/// this: else nothing.
QLayoutItem* takeButtonRow(QLayout& layout, int widest) {
    const int last = layout.count() - 1;
    QLayoutItem& item = *layout.itemAt(last);
    const QLayout* const row = item.widget() == nullptr ? item.layout() : item.widget()->layout();
    const bool isRow = last > 0 && row != nullptr && !item.expandingDirections().testFlag(Qt::Vertical);
    return isRow && item.minimumSize().width() <= widest ? layout.takeAt(last) : nullptr;
}

void addRow(QBoxLayout& layout, QLayoutItem* row) {
    if (row->layout() != nullptr) {
        layout.addLayout(row->layout());
    } else {
        layout.addWidget(row->widget());
        delete row;
    }
}

/// What scrolls is as high as it must be, not as high as it would like.
class Parts final : public QWidget {
public:
    using QWidget::QWidget;

    int heightForWidth(int width) const override { return layout()->totalMinimumHeightForWidth(width); }
};

/// The parts get scroll bars; the buttons below them stay in sight.
void addScrollBars(QWidget& window, int widest) {
    const QPointer<QWidget> focused = window.focusWidget();
    QLayout* const layout = window.layout();
    const QMargins margins = layout->contentsMargins();
    QLayoutItem* const buttons = takeButtonRow(*layout, widest - margins.left() - margins.right());
    auto* const area = new QScrollArea(&window);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    auto* const parts = new Parts(area);
    parts->setLayout(layout); // Takes the parts along.
    area->setWidget(parts);
    parts->setAutoFillBackground(false);
    auto* const whole = new QVBoxLayout(&window);
    whole->setContentsMargins({});
    whole->setSpacing(0);
    whole->addWidget(area, 1);
    if (buttons != nullptr) {
        auto* const below = new QVBoxLayout;
        below->setContentsMargins(margins.left(), 0, margins.right(), margins.bottom());
        addRow(*below, buttons);
        whole->addLayout(below);
    }
    if (focused != nullptr)
        focused->setFocus();
}

/// Moves a window that reaches out of the screen, once its frame is known. From then on it is the author's to
/// move.
class FrameWatch final : public QObject {
public:
    explicit FrameWatch(QWidget& window) : QObject(&window), m_window(window) {
        setObjectName(QStringLiteral("frameWatch"));
        m_turn.setSingleShot(true);
        m_turn.callOnTimeout(this, &FrameWatch::look);
        window.installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* event) override {
        switch (event->type()) {
        case QEvent::Show:
        case QEvent::Move:
        case QEvent::Resize:
        case QEvent::WindowActivate:
            m_turn.start(0);
            break;
        default:
            break;
        }
        return false;
    }

private:
    void look() {
        const QMargins around = knownFrame(m_window);
        if (m_done || around.isNull() || !isPlain(m_window))
            return;
        m_done = true;
        deleteLater();
        const QRect present = m_window.geometry();
        QRect wanted = rectInside(present + around, screenAreaFor(m_window)) - around;
        wanted.setSize(wanted.size().expandedTo(m_window.minimumSize()));
        if (wanted != present)
            m_window.setGeometry(wanted);
    }

    QWidget& m_window;
    QTimer m_turn;
    bool m_done = false;
};

} // namespace

QRect rectInside(QRect frame, const QRect& area) {
    frame.setSize(frame.size().boundedTo(area.size()));
    frame.moveLeft(std::clamp(frame.left(), area.left(), area.left() + area.width() - frame.width()));
    frame.moveTop(std::clamp(frame.top(), area.top(), area.top() + area.height() - frame.height()));
    return frame;
}

QMargins frameAround(const QWidget& window) {
    if (window.windowFlags().testFlag(Qt::FramelessWindowHint))
        return {};
    if (const QMargins own = knownFrame(window); !own.isNull())
        return own;
    for (const QWidget* const other : QApplication::topLevelWidgets()) {
        if (const QMargins around = knownFrame(*other); !around.isNull())
            return around;
    }
    return guessedFrame();
}

QRect screenAreaFor(const QWidget& window) {
    const QWidget* const parent = window.parentWidget();
    const QWidget& shown = window.isHidden() && parent != nullptr ? *parent->window() : window;
    return shown.screen()->availableGeometry();
}

QSize largestSizeOf(const QWidget& window) {
    return screenAreaFor(window).size().shrunkBy(frameAround(window));
}

int widthForTitle(const QWidget& window) {
    QFont bold = QApplication::font("QMdiSubWindowTitleBar");
    bold.setBold(true);
    const int title = QFontMetrics(bold).horizontalAdvance(window.windowTitle());
    return std::min(title + besideTitle, largestSizeOf(window).width());
}

void centreOnScreen(QWidget& window) {
    const QRect screen = screenAreaFor(window);
    window.move(screen.left() + (screen.width() - window.width()) / 2,
                screen.top() + (screen.height() - window.height()) / 2);
}

void centreOverParent(QWidget& window) {
    const QWidget* const parent = window.parentWidget();
    if (parent == nullptr || !parent->isVisible())
        centreOnScreen(window);
    else
        window.move(parent->window()->geometry().center() - window.rect().center());
}

void keepOnScreen(QWidget& window) {
    const QSize largest = largestSizeOf(window);
    const QSize wanted = window.size();
    window.setMinimumSize(window.minimumSize().boundedTo(largest));
    const QLayout* const layout = window.layout();
    const QSize needed =
        layout == nullptr ? QSize() : smallestSizeOf(*layout, std::min(wanted.width(), largest.width()));
    if (needed.width() > largest.width() || needed.height() > largest.height()) {
        addScrollBars(window, largest.width());
        window.resize(wanted.expandedTo(needed) +
                      QSize(window.style()->pixelMetric(QStyle::PM_ScrollBarExtent), 0));
    } else {
        window.resize(wanted.expandedTo(needed)); // Wrapped text is higher where the screen is narrow.
    }
    keepOnScreenFrom(window, window.minimumSize());
}

void keepOnScreenFrom(QWidget& window, const QSize& smallest) {
    const QMargins around = frameAround(window);
    const QRect inside = rectInside({window.pos(), window.size().grownBy(around)}, screenAreaFor(window));
    window.resize(inside.size().shrunkBy(around).expandedTo(smallest));
    window.move(inside.topLeft());
    if (window.findChild<QObject*>(QStringLiteral("frameWatch"), Qt::FindDirectChildrenOnly) == nullptr)
        new FrameWatch(window);
}

} // namespace wendmark
