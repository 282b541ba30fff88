#include "ui/controls/WrappedLabel.h"

#include <QPainter>
#include <QTextLayout>
#include <QTextOption>
#include <algorithm>
#include <cmath>

namespace wendmark {

namespace {

constexpr int lettersAsked = 40; ///< Of a word: no label asks for more width.

QTextOption wrapping() {
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    return option;
}

/// Of all lines, when none is wider than this.
int heightOf(const QString& paragraph, const QFont& font, int width) {
    QTextLayout layout(paragraph, font);
    layout.setTextOption(wrapping());
    layout.beginLayout();
    qreal height = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        height += line.height();
    }
    layout.endLayout();
    return static_cast<int>(std::ceil(height));
}

} // namespace

WrappedLabel::WrappedLabel(const QString& text, QWidget* parent) : QLabel(text, parent) {
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
}

QSize WrappedLabel::sizeHint() const {
    const QSize hint = QLabel::sizeHint();
    const int width = std::max(2 * widestAsked(), minimumSizeHint().width());
    return hint.width() <= width ? hint : QSize(width, heightForWidth(width));
}

QSize WrappedLabel::minimumSizeHint() const {
    const QSize hint = QLabel::minimumSizeHint();
    return {std::min(hint.width(), widestAsked()), hint.height()};
}

int WrappedLabel::heightForWidth(int width) const {
    if (!hasLongWord(width))
        return QLabel::heightForWidth(width);
    int height = 2 * margin();
    for (const QString& paragraph : text().split(QLatin1Char('\n')))
        height += std::max(heightOf(paragraph, font(), width - besideText()), fontMetrics().lineSpacing());
    return height;
}

void WrappedLabel::paintEvent(QPaintEvent* event) {
    if (!hasLongWord(width())) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, foregroundRole()));
    QTextOption option = wrapping();
    option.setAlignment(alignment());
    painter.drawText(QRectF(contentsRect()).adjusted(margin(), margin(), -margin(), -margin()), text(),
                     option);
}

int WrappedLabel::widestAsked() const {
    return lettersAsked * fontMetrics().averageCharWidth() + besideText();
}

int WrappedLabel::besideText() const {
    return contentsMargins().left() + contentsMargins().right() + 2 * margin();
}

/// What the words ask for is the smallest width of a usual label.
bool WrappedLabel::hasLongWord(int width) const {
    return QLabel::minimumSizeHint().width() > width;
}

} // namespace wendmark
