#include "ui/controls/LoadingIndicator.h"

#include "ui/controls/IconSide.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPainter>
#include <QRasterWindow>
#include <algorithm>
#include <optional>

namespace wendmark {

namespace {

constexpr qreal sideOfDrawing = 24;
constexpr qreal radius = 7.5;
constexpr qreal dot = 1.75;
constexpr float faintest = 0.3F; // Share of the ink.

/// Whether windows inside windows cost little and lie where they should.
bool hasCheapWindows() {
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

/// How strong the dot in this place is while the one in the place `leading` leads the others round.
float strengthOf(int place, int leading) {
    constexpr int count = LoadingIndicator::frameCount;
    constexpr float tail = 4; // Places.
    const int behind = (leading - place + count) % count;
    return std::max(faintest, 1 - static_cast<float>(behind) / tail);
}

void paintDots(QPainter& painter, const QSizeF& size, QColor ink, std::optional<int> leading) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size.width() / sideOfDrawing, size.height() / sideOfDrawing);
    painter.translate(sideOfDrawing / 2, sideOfDrawing / 2);
    painter.setPen(Qt::NoPen);
    for (int place = 0; place < LoadingIndicator::frameCount; ++place) {
        ink.setAlphaF(leading ? strengthOf(place, *leading) : faintest);
        painter.setBrush(ink);
        painter.drawEllipse(QPointF(0, -radius), dot, dot);
        painter.rotate(360.0 / LoadingIndicator::frameCount);
    }
}

} // namespace

/// The turning dots in a window of the system inside the program's. Where a page of the web is in a window,
/// all of that is composed anew whenever a widget in it paints; here, only the dots are.
class LoadingIndicator::Turning final : public QRasterWindow {
public:
    explicit Turning(const LoadingIndicator& indicator) : m_indicator(indicator) {
        setFlags(Qt::WindowTransparentForInput | Qt::WindowDoesNotAcceptFocus);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(QRect(QPoint(), size()), m_indicator.palette().color(QPalette::Window));
        paintDots(painter, size(), m_indicator.palette().color(QPalette::ButtonText),
                  m_indicator.m_shownFrame - 1);
    }

private:
    const LoadingIndicator& m_indicator;
};

LoadingIndicator::LoadingIndicator(QWidget* parent) : QWidget(parent) {
    fitText();
    setAccessibleName(tr("Not loading"));
}

void LoadingIndicator::tick(bool busy) {
    showBusy(busy);
    if (m_busyFrame == 0)
        m_busyFrame = 1;
    if (!busy) {
        show(1);
        return;
    }
    show(m_busyFrame);
    ++m_busyFrame;
    if (m_busyFrame > frameCount)
        m_busyFrame = 1;
}

void LoadingIndicator::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paintDots(painter, size(), palette().color(QPalette::ButtonText),
              m_busy ? std::optional(m_shownFrame - 1) : std::nullopt);
}

void LoadingIndicator::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        fitText();
}

void LoadingIndicator::fitText() {
    const int side = iconSideFor(fontMetrics());
    setFixedSize(side, side);
}

void LoadingIndicator::showBusy(bool busy) {
    if (busy == m_busy)
        return;
    m_busy = busy;
    setAccessibleName(busy ? tr("Loading") : tr("Not loading"));
    showTurning(busy && isVisible() && hasCheapWindows());
    update();
}

void LoadingIndicator::showTurning(bool turning) {
    if (turning && m_turning == nullptr) {
        m_turning = new Turning(*this);
        m_place = createWindowContainer(m_turning, this); // Which takes it over.
    }
    if (m_place == nullptr)
        return;
    m_place->setGeometry(rect());
    m_place->setVisible(turning);
}

void LoadingIndicator::show(std::int16_t frame) {
    if (frame == m_shownFrame)
        return;
    m_shownFrame = frame;
    if (m_place != nullptr && m_place->isVisible())
        m_turning->update();
    else
        update();
}

} // namespace wendmark
