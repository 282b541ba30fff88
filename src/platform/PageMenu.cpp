#include "platform/PageMenu.h"

#include <QAction>
#include <QWebEngineContextMenuRequest>
#include <QWebEnginePage>
#include <QWebEngineView>

namespace wendmark {

namespace {

using Request = QWebEngineContextMenuRequest;

struct Editing {
    QWebEnginePage::WebAction action;
    Request::EditFlag flag;
};

constexpr Editing editing[] = {{QWebEnginePage::Cut, Request::CanCut},
                               {QWebEnginePage::Copy, Request::CanCopy},
                               {QWebEnginePage::Paste, Request::CanPaste},
                               {QWebEnginePage::SelectAll, Request::CanSelectAll}};

} // namespace

PageMenu::PageMenu(QWebEngineView& view, const QList<QAction*>& actions, QWidget* parent)
    : QMenu(parent), m_view(view) {
    addActions(actions);
    addSeparator();
    for (const Editing& kind : editing)
        addAction(view.page()->action(kind.action));
    view.setContextMenuPolicy(Qt::CustomContextMenu);
    connect(&view, &QWidget::customContextMenuRequested, this, [this](const QPoint& place) {
        enableEditing();
        popup(m_view.mapToGlobal(place));
    });
}

void PageMenu::enableEditing() {
    const Request* const request = m_view.lastContextMenuRequest();
    if (request == nullptr)
        return;
    for (const Editing& kind : editing)
        m_view.page()->action(kind.action)->setEnabled(request->editFlags().testFlag(kind.flag));
}

} // namespace wendmark
