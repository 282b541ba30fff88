#include "ui/find/PlaceDelegate.h"

#include "ui/find/PlaceModel.h"

#include <QApplication>
#include <QPainter>
#include <QTextLayout>
#include <utility>

namespace wendmark {

namespace {

void layOut(QTextLayout& layout) {
    layout.beginLayout();
    layout.createLine(); // Without a width: what finds no room is cut off.
    layout.endLayout();
}

QColor inkOf(const QStyleOptionViewItem& option) {
    const bool active = option.state.testFlag(QStyle::State_Active);
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    return option.palette.color(active ? QPalette::Active : QPalette::Inactive,
                                selected ? QPalette::HighlightedText : QPalette::Text);
}

} // namespace

void PlaceDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const {
    QStyleOptionViewItem row = option;
    initStyleOption(&row, index);
    const QString text = std::exchange(row.text, QString());
    const QStyle& style = row.widget == nullptr ? *QApplication::style() : *row.widget->style();
    style.drawControl(QStyle::CE_ItemViewItem, &row, painter, row.widget);

    const QPoint words = index.data(PlaceModel::wordsRole).toPoint();
    QTextLayout::FormatRange bold{words.x(), words.y(), {}};
    bold.format.setFontWeight(QFont::Bold);
    QTextLayout layout(text, row.font);
    layout.setFormats({bold});
    layOut(layout);
    const int margin = style.pixelMetric(QStyle::PM_FocusFrameHMargin, &row, row.widget) + 1;
    const QRect place = row.rect.adjusted(margin, 0, -margin, 0);
    const qreal top = place.top() + (place.height() - layout.boundingRect().height()) / 2;
    painter->save();
    painter->setClipRect(place);
    painter->setPen(inkOf(row));
    layout.draw(painter, QPointF(place.left(), top));
    painter->restore();
}

} // namespace wendmark
