#include "ui/stops/SideDock.h"

#include "platform/Twips.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMainWindow>
#include <QScrollArea>
#include <QScrollBar>
#include <algorithm>
#include <utility>

namespace wendmark {

namespace {

constexpr int smallestWidth = 150; // Pixels.

/// What the dock shows of its panel: all of it, or a part that scrolls where the window is too low for it.
class PanelArea final : public QScrollArea {
public:
    PanelArea(QWidget* panel, QWidget* parent) : QScrollArea(parent) {
        setWidgetResizable(true);
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
        setWidget(panel);
        panel->setAutoFillBackground(false);
        connect(qApp, &QApplication::focusChanged, this, &PanelArea::showFocus);
    }

    ~PanelArea() override { disconnect(qApp, nullptr, this, nullptr); } // The focus may leave its parts now.
    Q_DISABLE_COPY_MOVE(PanelArea)

    /// As wide as the panel's texts need, beside the scroll bar.
    QSize minimumSizeHint() const override {
        const int needed = widget()->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width();
        return {std::max(smallestWidth, needed), QScrollArea::minimumSizeHint().height()};
    }

private:
    void showFocus(const QWidget*, QWidget* now) {
        if (now != nullptr && widget()->isAncestorOf(now))
            ensureWidgetVisible(now);
    }
};

} // namespace

SideDock::SideDock(SideDockKind kind, QWidget* panel, SettingsStore& settings, QMainWindow& window)
    : QDockWidget(kind.title, &window)
    , m_kind(std::move(kind))
    , m_settings(settings)
    , m_window(window)
    , m_width(pixelsFromTwips(settings.read(m_kind.width)))
    , m_chosen(!settings.read(m_kind.shown).isEmpty()) {
    setObjectName(m_kind.name);
    setFeatures(DockWidgetClosable | DockWidgetMovable);
    setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    setWidget(new PanelArea(panel, this));
    window.addDockWidget(m_kind.area, this);
    window.installEventFilter(this);
    m_placed.setSingleShot(true);
    m_placed.callOnTimeout(this, &SideDock::takeWidth);
    if (m_chosen)
        setVisible(booleanFromText(m_settings.read(m_kind.shown), false));
    else
        showIfThereIsRoom();
}

void SideDock::toggle() {
    const bool hides = isVisible() && isAncestorOf(m_window.focusWidget());
    choose(!hides);
    if (hides)
        emit left();
    else
        emit entered();
}

void SideDock::store() {
    m_settings.store(m_kind.width, twipsFromPixels(m_width));
}

void SideDock::closeEvent(QCloseEvent* event) {
    QDockWidget::closeEvent(event);
    choose(false);
}

void SideDock::showEvent(QShowEvent* event) {
    QDockWidget::showEvent(event);
    m_placed.start(0);
}

void SideDock::hideEvent(QHideEvent* event) {
    QDockWidget::hideEvent(event);
    m_sized = false;
}

void SideDock::resizeEvent(QResizeEvent* event) {
    QDockWidget::resizeEvent(event);
    if (m_sized && m_window.width() >= m_kind.roomyWidth)
        m_width = width(); // Not what a small window has left of it.
}

bool SideDock::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &m_window && event->type() == QEvent::Resize && !m_chosen)
        showIfThereIsRoom();
    return QDockWidget::eventFilter(watched, event);
}

void SideDock::takeWidth() {
    m_window.resizeDocks({this}, {m_width}, Qt::Horizontal);
    m_sized = true;
}

void SideDock::choose(bool shown) {
    m_chosen = true;
    m_settings.store(m_kind.shown, shown ? QStringLiteral("True") : QStringLiteral("False"));
    setVisible(shown);
}

void SideDock::showIfThereIsRoom() {
    setVisible(m_window.width() >= m_kind.roomyWidth);
}

} // namespace wendmark
