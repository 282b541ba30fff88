#pragma once

#include <QStyledItemDelegate>

namespace wendmark {

/// Paints the text around a place with the found words in bold.
class PlaceDelegate final : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
};

} // namespace wendmark
