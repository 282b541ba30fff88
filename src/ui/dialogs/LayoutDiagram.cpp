#include "ui/dialogs/LayoutDiagram.h"

#include <QLabel>
#include <QLineEdit>
#include <QPainter>

namespace wendmark {

namespace {

// The drawing has a grid of its own, one unit of which is half the height of a line of text.
constexpr QSizeF gridSize(72, 36);
constexpr qreal arrowLength = 1.2;

/// The site frame, and below it the logo, the narration and the navigator.
constexpr QRectF frames[] = {
    QRectF(0, 0, 72, 18),
    QRectF(0, 18, 18, 18),
    QRectF(18, 18, 36, 18),
    QRectF(54, 18, 18, 18),
};

/// The dimension lines: two beside the field of the height, one above the field of each width, and a tick at
/// each end that no frame's edge marks. Their arrows follow from them.
constexpr QLineF heightLines[] = {QLineF(24, 25, 24, 18), QLineF(24, 29, 24, 36)};
constexpr QLineF widthLines[] = {QLineF(9, 23, 0, 23), QLineF(9, 23, 18, 23), QLineF(63, 23, 54, 23),
                                 QLineF(63, 23, 72, 23)};
constexpr QLineF ticks[] = {QLineF(22, 18.4, 26, 18.4), QLineF(22, 35.6, 26, 35.6)};

constexpr QPointF siteLabelCentre(36, 9);
constexpr QPointF narrationLabelCentre(42, 22);
constexpr QPointF narHeightCentre(24, 27);
constexpr QPointF advWidthCentre(9, 27);
constexpr QPointF navWidthCentre(63, 27);

/// The two strokes at the end of a dimension line.
std::array<QLineF, 2> arrowAtEndOf(const QLineF& line) {
    QLineF left(line.p2(), line.p1());
    left.setLength(arrowLength);
    QLineF right = left;
    left.setAngle(left.angle() + 30);
    right.setAngle(right.angle() - 30);
    return {left, right};
}

} // namespace

LayoutDiagram::LayoutDiagram(QWidget* parent)
    : QWidget(parent)
    , m_siteLabel(new QLabel(tr("Browser Frame"), this))
    , m_narrationLabel(new QLabel(tr("Narration Frame"), this))
    , m_advWidth(makeField("txtAdvWidth", tr("Width of the logo frame, in pixels")))
    , m_narHeight(makeField("txtNarHeight", tr("Height of the narration frame, in pixels")))
    , m_navWidth(makeField("txtNavWidth", tr("Width of the navigator frame, in pixels"))) {
    setObjectName(QStringLiteral("LayoutDiagram"));
    m_siteLabel->setObjectName(QStringLiteral("Label4"));
    m_narrationLabel->setObjectName(QStringLiteral("Label5"));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize LayoutDiagram::sizeHint() const {
    return (gridSize * fontMetrics().height() / 2).toSize() + QSize(2, 2);
}

void LayoutDiagram::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(drawing().topLeft());
    const qreal unit = drawing().width() / gridSize.width();
    painter.scale(unit, unit);
    QPen pen(palette().color(QPalette::WindowText), 1);
    pen.setCosmetic(true);
    painter.setPen(pen);
    painter.setBrush(palette().alternateBase()); // Not that of the fields, which would not stand out.
    for (const QRectF& frame : frames)
        painter.drawRect(frame);
    const auto drawDimension = [&painter](const QLineF& line) {
        painter.drawLine(line);
        for (const QLineF& stroke : arrowAtEndOf(line))
            painter.drawLine(stroke);
    };
    for (const QLineF& line : heightLines)
        drawDimension(line);
    for (const QLineF& line : widthLines)
        drawDimension(line);
    for (const QLineF& tick : ticks)
        painter.drawLine(tick);
}

void LayoutDiagram::resizeEvent(QResizeEvent*) {
    const auto centre = [this](QWidget& widget, QPointF unitPoint) {
        widget.resize(widget.sizeHint().boundedTo(QSize(widget.maximumWidth(), widget.sizeHint().height())));
        widget.move((at(unitPoint) - QPointF(widget.width(), widget.height()) / 2).toPoint());
    };
    centre(*m_siteLabel, siteLabelCentre);
    centre(*m_narrationLabel, narrationLabelCentre);
    centre(*m_narHeight, narHeightCentre);
    centre(*m_advWidth, advWidthCentre);
    centre(*m_navWidth, navWidthCentre);
}

QLineEdit* LayoutDiagram::makeField(const char* name, const QString& meaning) {
    auto* const field = new QLineEdit(this);
    field->setObjectName(QLatin1String(name));
    field->setAccessibleName(meaning);
    field->setToolTip(meaning);
    field->setAlignment(Qt::AlignCenter);
    field->setMaximumWidth(fontMetrics().horizontalAdvance(QStringLiteral("0000000")));
    return field;
}

QRectF LayoutDiagram::drawing() const {
    return QRectF(rect()).adjusted(1, 1, -1, -1);
}

QPointF LayoutDiagram::at(QPointF unitPoint) const {
    return drawing().topLeft() + unitPoint * drawing().width() / gridSize.width();
}

} // namespace wendmark
