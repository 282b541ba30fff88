#include "ui/controls/FlowLayout.h"

#include <QStyle>
#include <QWidget>
#include <algorithm>
#include <utility>

namespace wendmark {

FlowLayout::~FlowLayout() {
    qDeleteAll(m_items);
}

QLayoutItem* FlowLayout::takeAt(int index) {
    return index >= 0 && index < m_items.size() ? m_items.takeAt(index) : nullptr;
}

int FlowLayout::heightForWidth(int width) const {
    const QMargins margins = contentsMargins();
    int height = margins.top() + margins.bottom();
    const QList<Row> rows = rowsFor(width - margins.left() - margins.right());
    for (const Row& row : rows)
        height += row.height;
    return height + m_gap * static_cast<int>(std::max<qsizetype>(rows.size() - 1, 0));
}

QSize FlowLayout::minimumSize() const {
    QSize widest;
    for (const QLayoutItem* item : m_items)
        widest = widest.expandedTo(item->minimumSize());
    const QMargins margins = contentsMargins();
    return widest + QSize(margins.left() + margins.right(), margins.top() + margins.bottom());
}

QSize FlowLayout::sizeHint() const {
    int width = 0;
    int height = 0;
    for (const QLayoutItem* item : m_items) {
        width += item->sizeHint().width() + m_gap;
        height = std::max(height, item->sizeHint().height());
    }
    const QMargins margins = contentsMargins();
    return {width + margins.left() + margins.right(), height + margins.top() + margins.bottom()};
}

void FlowLayout::setGeometry(const QRect& rect) {
    QLayout::setGeometry(rect);
    const QRect inner = rect.marginsRemoved(contentsMargins());
    int top = inner.top();
    for (const Row& row : rowsFor(inner.width())) {
        int left = inner.left();
        int spare = std::max(inner.width() - row.width, 0);
        for (QLayoutItem* item : row.items) {
            QSize size = item->sizeHint();
            if (item->expandingDirections().testFlag(Qt::Horizontal))
                size.rwidth() += std::exchange(spare, 0);
            const QRect place(QPoint(left, top + (row.height - size.height()) / 2), size);
            item->setGeometry(QStyle::visualRect(parentWidget()->layoutDirection(), inner, place));
            left += size.width() + m_gap;
        }
        top += row.height + m_gap;
    }
}

QList<FlowLayout::Row> FlowLayout::rowsFor(int width) const {
    QList<Row> rows;
    for (QLayoutItem* item : m_items) {
        const QSize size = item->sizeHint();
        const int used = rows.isEmpty() ? 0 : rows.last().width + m_gap;
        const bool fits = !rows.isEmpty() && used + size.width() <= width;
        if (!fits)
            rows.append(Row());
        Row& row = rows.last();
        row.items.append(item);
        row.height = std::max(row.height, size.height());
        row.width = (fits ? used : 0) + size.width();
    }
    return rows;
}

} // namespace wendmark
