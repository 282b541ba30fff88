#include "ui/narration/NarrationPreview.h"

#include "platform/BrowserView.h"

#include <QVBoxLayout>

namespace wendmark {

NarrationPreview::NarrationPreview(QWebEngineProfile& profile, const QString& folder, QWidget* parent)
    : QWidget(parent), m_browser(new BrowserView(profile, this)), m_folder(folder) {
    m_browser->setObjectName(QStringLiteral("broPreview"));
    m_browser->setAccessibleName(tr("The stop's words as visitors see them"));
    m_browser->setAllowedFolders({folder});
    m_browser->setLookOnly();
    m_browser->setBackground(palette().color(QPalette::Base));
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_browser);
    setFocusProxy(m_browser);
    connect(m_browser, &BrowserView::navigationCompleted, this, &NarrationPreview::scrollBack);
}

void NarrationPreview::showPage(const QByteArray& html) {
    if (!m_browser->isBusy())
        m_scrolledTo = m_browser->scrollPosition();
    m_browser->showPage(html, m_folder);
}

void NarrationPreview::scrollBack() {
    m_browser->scrollTo(m_scrolledTo);
}

} // namespace wendmark
