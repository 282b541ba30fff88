#include "ui/main/PreviewVeil.h"

#include <QEvent>
#include <QPainter>

namespace wendmark {

namespace {

constexpr float density = 0.35F;

} // namespace

PreviewVeil::PreviewVeil(QWidget& browser) : QWidget(browser.parentWidget()), m_browser(browser) {
    setObjectName(QStringLiteral("previewVeil"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_OpaquePaintEvent);
    hide();
    browser.installEventFilter(this);
}

void PreviewVeil::cover() {
    if (isVisible() || !m_browser.isVisible())
        return;
    m_picture = m_browser.grab();
    setGeometry(m_browser.geometry());
    raise();
    show();
}

void PreviewVeil::lift() {
    hide();
    m_picture = QPixmap();
}

void PreviewVeil::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QColor veil = palette().color(QPalette::Window);
    painter.fillRect(rect(), veil);
    painter.drawPixmap(0, 0, m_picture);
    veil.setAlphaF(density);
    painter.fillRect(rect(), veil);
}

bool PreviewVeil::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize || event->type() == QEvent::Move)
        setGeometry(m_browser.geometry());
    return QWidget::eventFilter(watched, event);
}

} // namespace wendmark
