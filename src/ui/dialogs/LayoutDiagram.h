#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;

namespace wendmark {

/// A drawing of the window in which a tour is played, with a field at each dimension that the author can set.
/// It is always the same drawing: the numbers do not change it.
class LayoutDiagram final : public QWidget {
    Q_OBJECT

public:
    explicit LayoutDiagram(QWidget* parent = nullptr);

    QLineEdit& narHeight() const { return *m_narHeight; }
    QLineEdit& advWidth() const { return *m_advWidth; }
    QLineEdit& navWidth() const { return *m_navWidth; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QLineEdit* makeField(const char* name, const QString& meaning);
    QRectF drawing() const;
    QPointF at(QPointF unitPoint) const;

    QLabel* m_siteLabel;
    QLabel* m_narrationLabel;
    QLineEdit* m_advWidth;
    QLineEdit* m_narHeight;
    QLineEdit* m_navWidth;
};

} // namespace wendmark
