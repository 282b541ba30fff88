#pragma once

#include <QLabel>

namespace wendmark {

/// A line of plain text that never asks for width: what does not fit is cut at its end, and the tool tip
/// shows all of it. The accessible name is the whole text.
class ElidedLabel final : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    void showText(const QString& text);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    bool fits() const;
    void showToolTip();
};

} // namespace wendmark
