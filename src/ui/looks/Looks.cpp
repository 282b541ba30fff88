#include "ui/looks/Looks.h"

#include "ui/looks/DarkWish.h"
#include "ui/looks/LookPalette.h"
#include "ui/looks/LookStyle.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QStyle>

namespace wendmark {

namespace {

constexpr qreal smallestText = 10; // Points; a desktop without a theme has none of its own.

} // namespace

bool desktopBringsLooks() {
    const QStyle& style = *QApplication::style();
    const bool isToolkitStyle = style.name().compare(QLatin1String("fusion"), Qt::CaseInsensitive) == 0;
    return !isToolkitStyle || qEnvironmentVariableIsSet("QT_STYLE_OVERRIDE") ||
           QApplication::palette() != style.standardPalette();
}

void applyLooks(bool dark) {
    if (qobject_cast<LookStyle*>(QApplication::style()) == nullptr) {
        auto* const style = new LookStyle;
        style->setParent(QApplication::instance());
        QApplication::setStyle(style);
    }
    QApplication::setPalette(lookPalette(dark));
    QFont font = QApplication::font();
    if (font.pointSizeF() > 0 && font.pointSizeF() < smallestText) {
        font.setPointSizeF(smallestText);
        QApplication::setFont(font);
    }
}

Looks::Looks(QObject* parent) : QObject(parent) {
    if (desktopBringsLooks())
        return;
    m_wish = new DarkWish(this);
    applyLooks(m_wish->isDark());
    connect(m_wish, &DarkWish::changed, this, [this] { applyLooks(m_wish->isDark()); });
}

} // namespace wendmark
