#include "ui/dialogs/frmHelp.h"

#include "platform/BrowserView.h"
#include "ui/Messages.h"

#include <QKeyEvent>
#include <QVBoxLayout>

namespace wendmark {

frmHelp::frmHelp(QWebEngineProfile& profile, const QString& helpFolder, QWidget* parent)
    : QWidget(parent, Qt::Window), m_browser(new BrowserView(profile, this)) {
    setObjectName(QStringLiteral("frmHelp"));
    setWindowTitle(QStringLiteral("Wendmark Help"));
    m_browser->setObjectName(QStringLiteral("brwHelp"));
    m_browser->setAccessibleName(tr("Help page"));
    m_browser->setAllowedFolders({helpFolder});
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_browser);
    resize(900, 640);
    centreOnScreen(*this);
}

void frmHelp::showPage(const QString& helpStartPage) {
    showNormal();
    raise();
    activateWindow();
    m_browser->navigate(helpStartPage);
}

void frmHelp::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Cancel))
        close();
    else
        QWidget::keyPressEvent(event);
}

} // namespace wendmark
