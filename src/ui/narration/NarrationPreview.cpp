#include "ui/narration/NarrationPreview.h"

#include "platform/BrowserView.h"

#include <QVBoxLayout>
#include <QWebEnginePage>
#include <QWebEngineScript>
#include <QWebEngineView>

namespace wendmark {

NarrationPreview::NarrationPreview(QWebEngineProfile& profile, const QString& folder, QWidget* parent)
    : QWidget(parent), m_browser(new BrowserView(profile, this)), m_folder(folder) {
    m_browser->setObjectName(QStringLiteral("broPreview"));
    m_browser->setAccessibleName(tr("The stop's words as visitors see them"));
    m_browser->setAllowedFolders({folder});
    m_browser->setLookOnly();
    m_browser->engineView().page()->setBackgroundColor(palette().color(QPalette::Base));
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_browser);
    setFocusProxy(m_browser);
    connect(m_browser, &BrowserView::navigationCompleted, this, &NarrationPreview::scrollBack);
}

void NarrationPreview::showPage(const QByteArray& html) {
    if (!m_browser->isBusy())
        m_scrolledTo = m_browser->engineView().page()->scrollPosition();
    m_browser->showPage(html, m_folder);
}

void NarrationPreview::scrollBack() {
    // Scripts of pages are off; those of the program run in a world of their own.
    m_browser->engineView().page()->runJavaScript(
        QStringLiteral("window.scrollTo(%1, %2)").arg(m_scrolledTo.x()).arg(m_scrolledTo.y()),
        QWebEngineScript::ApplicationWorld);
}

} // namespace wendmark
