#pragma once

#include <QPixmap>
#include <QWidget>

namespace wendmark {

/// Keeps the last picture of a browser in sight, veiled, while the next page is on its way: nothing flashes.
/// The mouse reaches what lies below it.
class PreviewVeil final : public QWidget {
    Q_OBJECT

public:
    /// Lies over `browser`, its sibling, which must outlive it.
    explicit PreviewVeil(QWidget& browser);

    /// Takes the picture, unless the veil is there already, or nobody sees the browser.
    void cover();
    void lift();

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget& m_browser;
    QPixmap m_picture;
};

} // namespace wendmark
