#pragma once

#include <QLayout>
#include <QList>

namespace wendmark {

/// Lays its widgets out in rows and goes on to a further row where the width ends, so that none ever
/// disappears. The widgets of a row are centred on its height; one that wants to be wide takes what the
/// others leave of the row.
class FlowLayout final : public QLayout {
public:
    /// `gap`: pixels between widgets and between rows.
    explicit FlowLayout(int gap) : m_gap(gap) {}
    ~FlowLayout() override;

    void addItem(QLayoutItem* item) override { m_items.append(item); }
    int count() const override { return static_cast<int>(m_items.size()); }
    QLayoutItem* itemAt(int index) const override { return m_items.value(index); }
    QLayoutItem* takeAt(int index) override;
    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize minimumSize() const override;
    QSize sizeHint() const override;
    void setGeometry(const QRect& rect) override;

private:
    /// Items of one row, with where the row ends.
    struct Row {
        QList<QLayoutItem*> items;
        int height = 0;
        int width = 0;
    };
    QList<Row> rowsFor(int width) const;

    QList<QLayoutItem*> m_items;
    int m_gap;
};

} // namespace wendmark
