#include "ui/controls/CommandButton.h"

#include "ui/controls/IconSide.h"

#include <QAction>
#include <QHelpEvent>
#include <QToolTip>

namespace wendmark {

CommandButton::CommandButton(const QString& toolTip, const QAction& action, QWidget* parent)
    : QToolButton(parent), m_action(action) {
    setToolTip(toolTip);
    setAccessibleName(toolTip);
    setAutoRaise(true);
    setFocusPolicy(Qt::TabFocus);
    setIcon(action.icon());
    setEnabled(action.isEnabled());
    fitIcon();
    connect(&action, &QAction::changed, this, [this] { setEnabled(m_action.isEnabled()); });
}

void CommandButton::showText(const QString& text) {
    setText(text);
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    setAutoRaise(false);
    setProperty("isPrimary", true); // For the program's own looks.
}

void CommandButton::changeEvent(QEvent* event) {
    QToolButton::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        fitIcon();
}

bool CommandButton::event(QEvent* event) {
    const auto* const help = dynamic_cast<const QHelpEvent*>(event);
    if (help == nullptr || help->type() != QEvent::ToolTip)
        return QToolButton::event(event);
    QToolTip::showText(help->globalPos(), toolTipWithKeys(), this);
    return true;
}

void CommandButton::fitIcon() {
    const int side = iconSideFor(fontMetrics());
    setIconSize(QSize(side, side));
}

QString CommandButton::toolTipWithKeys() const {
    const QString keys = m_action.shortcut().toString(QKeySequence::NativeText);
    return keys.isEmpty() ? toolTip() : QStringLiteral("%1 (%2)").arg(toolTip(), keys);
}

} // namespace wendmark
