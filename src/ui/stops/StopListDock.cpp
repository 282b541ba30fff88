#include "ui/stops/StopListDock.h"

#include "platform/Settings.h"
#include "platform/Twips.h"
#include "ui/ProgramParts.h"
#include "ui/stops/StopListPanel.h"

#include <QCloseEvent>
#include <QMainWindow>

namespace wendmark {

namespace {

constexpr int roomyWidth = 1200;   // Pixels of a window that has room for the list beside the preview.
constexpr int smallestWidth = 150; // Pixels.

} // namespace

StopListDock::StopListDock(const ProgramParts& parts, QMainWindow& window)
    : QDockWidget(tr("Stop List"), &window)
    , m_settings(parts.settings)
    , m_window(window)
    , m_panel(new StopListPanel(parts, this))
    , m_width(pixelsFromTwips(parts.settings.read(stopListSettings::width)))
    , m_chosen(!parts.settings.read(stopListSettings::shown).isEmpty()) {
    setObjectName(QStringLiteral("stopList"));
    setFeatures(DockWidgetClosable | DockWidgetMovable);
    setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    m_panel->setMinimumWidth(smallestWidth);
    setWidget(m_panel);
    connect(m_panel, &StopListPanel::noticeShown, this, &StopListDock::noticeShown);
    connect(m_panel, &StopListPanel::left, this, &StopListDock::left);
    window.addDockWidget(Qt::LeftDockWidgetArea, this);
    window.installEventFilter(this);
    m_placed.setSingleShot(true);
    m_placed.callOnTimeout(this, &StopListDock::takeWidth);
    if (m_chosen)
        setVisible(booleanFromText(m_settings.read(stopListSettings::shown), false));
    else
        showIfThereIsRoom();
}

void StopListDock::toggle() {
    choose(isHidden());
    if (isHidden())
        emit left();
    else
        m_panel->focusList();
}

void StopListDock::store() {
    m_settings.store(stopListSettings::width, twipsFromPixels(m_width));
}

void StopListDock::closeEvent(QCloseEvent* event) {
    QDockWidget::closeEvent(event);
    choose(false);
}

void StopListDock::showEvent(QShowEvent* event) {
    QDockWidget::showEvent(event);
    m_placed.start(0);
}

void StopListDock::hideEvent(QHideEvent* event) {
    QDockWidget::hideEvent(event);
    m_sized = false;
}

void StopListDock::resizeEvent(QResizeEvent* event) {
    QDockWidget::resizeEvent(event);
    if (m_sized && m_window.width() >= roomyWidth)
        m_width = width(); // Not what a small window has left of it.
}

bool StopListDock::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &m_window && event->type() == QEvent::Resize && !m_chosen)
        showIfThereIsRoom();
    return QDockWidget::eventFilter(watched, event);
}

void StopListDock::takeWidth() {
    m_window.resizeDocks({this}, {m_width}, Qt::Horizontal);
    m_sized = true;
}

void StopListDock::choose(bool shown) {
    m_chosen = true;
    m_settings.store(stopListSettings::shown, shown ? QStringLiteral("True") : QStringLiteral("False"));
    setVisible(shown);
}

void StopListDock::showIfThereIsRoom() {
    setVisible(m_window.width() >= roomyWidth);
}

} // namespace wendmark
