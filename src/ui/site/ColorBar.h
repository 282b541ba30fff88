#pragma once

#include "model/SiteLists.h"

#include <QWidget>
#include <array>

namespace wendmark {

/// A bar of six colours to choose from, by a click or, with the keyboard, by Left, Right and the space bar or
/// by the digits 1 to 6.
class ColorBar final : public QWidget {
    Q_OBJECT

public:
    static constexpr int segmentCount = 6;

    explicit ColorBar(QWidget* parent = nullptr);

    /// Colour of segment k, 1 to 6 from left to right.
    static Colour colourOf(int k);

    /// Name of the colour of segment k in the author's language.
    static QString nameOf(int k);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    /// Segment k, 1 to 6, was chosen.
    void chosen(int k);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;

private:
    void PaintColorBar(QPainter& painter) const;
    int segmentAt(double x) const;
    void moveTo(int k);

    int m_current = 1; ///< Segment that the space bar chooses.
};

} // namespace wendmark
