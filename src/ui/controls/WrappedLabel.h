#pragma once

#include <QLabel>

namespace wendmark {

/// Plain text in as many lines as its width needs. Words that are longer than a line, as addresses and paths
/// are, break anywhere, so that they never make a window wider.
class WrappedLabel final : public QLabel {
    Q_OBJECT

public:
    explicit WrappedLabel(const QString& text, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int widestAsked() const;
    int besideText() const;
    bool hasLongWord(int width) const;
};

} // namespace wendmark
