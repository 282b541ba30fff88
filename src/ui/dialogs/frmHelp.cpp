#include "ui/dialogs/frmHelp.h"

#include "platform/BrowserView.h"
#include "ui/WindowPlace.h"

#include <QEvent>
#include <QShortcut>
#include <QVBoxLayout>

namespace wendmark {

frmHelp::frmHelp(QWebEngineProfile& profile, const QString& helpFolder, QWidget* parent)
    : QWidget(parent, Qt::Window), m_browser(new BrowserView(profile, this)) {
    setObjectName(QStringLiteral("frmHelp"));
    setWindowTitle(QStringLiteral("Wendmark Help"));
    m_browser->setObjectName(QStringLiteral("brwHelp"));
    m_browser->setAccessibleName(tr("Help page"));
    m_browser->setAllowedFolders({helpFolder});
    takeColours();
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_browser);
    setMinimumSize(320, 240); // Below it the pages need scrolling both ways.
    resize(900, 640);
    centreOnScreen(*this);
    // A key event would end in the page, which has the focus most of the time.
    new QShortcut(QKeySequence(QKeySequence::Cancel), this, this, &QWidget::close);
}

void frmHelp::showPage(const QString& helpStartPage) {
    if (isHidden())
        keepOnScreen(*this);
    showNormal();
    raise();
    activateWindow();
    m_browser->navigate(helpStartPage);
}

void frmHelp::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        takeColours();
}

void frmHelp::takeColours() {
    const QColor paper = palette().color(QPalette::Window);
    m_browser->setDark(paper.lightness() < palette().color(QPalette::WindowText).lightness());
    m_browser->setBackground(paper);
}

} // namespace wendmark
