#include "platform/Icons.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

/// A static library's resources are there only for who asks for them; outside any namespace, as Qt wants it.
static void loadIconResources() {
    Q_INIT_RESOURCE(icons);
}

namespace wendmark {

namespace {

QColor inkFor(QIcon::Mode mode) {
    const QPalette palette = QApplication::palette();
    const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    const auto role = mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText;
    return palette.color(group, role);
}

/// Draws anew each time, so that a change of the palette shows at once.
class ThemedIconEngine final : public QIconEngine {
public:
    /// Without a valid colour, in that of the text around it.
    explicit ThemedIconEngine(QByteArray svg, const QColor& colour)
        : m_svg(std::move(svg)), m_colour(colour) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        QByteArray inked = m_svg;
        inked.replace("currentColor", (m_colour.isValid() ? m_colour : inkFor(mode)).name().toLatin1());
        QSvgRenderer(inked).render(painter, rect);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return picture;
    }

    QIconEngine* clone() const override { return new ThemedIconEngine(m_svg, m_colour); }

private:
    QByteArray m_svg;
    QColor m_colour;
};

} // namespace

QIcon themedIcon(const QString& name) {
    return colouredIcon(name, {});
}

QIcon colouredIcon(const QString& name, const QColor& colour) {
    loadIconResources();
    QFile file(QStringLiteral(":/icons/%1.svg").arg(name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QIcon(new ThemedIconEngine(file.readAll(), colour));
}

QIcon programIcon() {
    loadIconResources();
    return QIcon(QStringLiteral(":/icons/wendmark.svg"));
}

} // namespace wendmark
