#include "ui/controls/ElidedLabel.h"

#include <QPainter>
#include <QStyle>

namespace wendmark {

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void ElidedLabel::showText(const QString& text) {
    setText(text);
    showToolTip();
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect area = contentsRect();
    style()->drawItemText(&painter, area, static_cast<int>(Qt::AlignVCenter | Qt::AlignLeading), palette(),
                          isEnabled(), fontMetrics().elidedText(text(), Qt::ElideRight, area.width()),
                          foregroundRole());
}

void ElidedLabel::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    showToolTip();
}

bool ElidedLabel::fits() const {
    return fontMetrics().horizontalAdvance(text()) <= contentsRect().width();
}

void ElidedLabel::showToolTip() {
    setToolTip(fits() ? QString() : text());
}

} // namespace wendmark
