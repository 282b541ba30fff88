#include "ui/site/NoticeBar.h"

#include "ui/dialogs/DialogParts.h"

#include <QAccessible>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <algorithm>

namespace wendmark {

namespace {

constexpr qsizetype mostShown = 600; // Characters; addresses may have millions.

} // namespace

NoticeBar::NoticeBar(QWidget& page, QWidget& window)
    : QFrame(&window)
    , m_page(page)
    , m_text(makeTextLabel("lblNotice", QString(), this))
    , m_offer(makeButton("btnNotice", tr("&Search the Web for It"), this))
    , m_close(makeButton("btnCloseNotice", tr("&Hide"), this)) {
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    m_close->setToolTip(tr("Hide this message"));
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(dialogGap, dialogGap / 2, dialogGap / 2, dialogGap / 2);
    layout->setSpacing(dialogGap);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_offer);
    layout->addWidget(m_close);
    hide();
    for (QWidget* widget = &page; widget != &window; widget = widget->parentWidget())
        widget->installEventFilter(this);
    connect(m_offer, &QPushButton::clicked, this, [this] {
        m_page.setFocus();
        emit searchWanted();
    });
    connect(m_close, &QPushButton::clicked, this, [this] {
        m_page.setFocus();
        showText({});
    });
}

void NoticeBar::showText(const QString& text, bool ofLoading, bool offersSearch) {
    m_ofLoading = ofLoading;
    m_text->setText(shortened(text, mostShown));
    m_offer->setVisible(offersSearch);
    setVisible(!text.isEmpty());
    if (text.isEmpty())
        return;
    takePlace();
    raise();
    QAccessibleEvent alert(m_text, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void NoticeBar::endLoadNotice() {
    if (m_ofLoading)
        showText({});
}

QString NoticeBar::text() const {
    return m_text->text();
}

bool NoticeBar::eventFilter(QObject* watched, QEvent* event) {
    if ((event->type() == QEvent::Resize || event->type() == QEvent::Move) && isVisible())
        takePlace();
    return QFrame::eventFilter(watched, event);
}

void NoticeBar::takePlace() {
    const QRect page(m_page.mapTo(parentWidget(), QPoint()), m_page.size());
    const int height = std::max(layout()->heightForWidth(page.width()), layout()->minimumSize().height());
    const int top = std::max(page.top(), page.bottom() + 1 - height);
    setGeometry(page.left(), top, page.width(), height);
}

} // namespace wendmark
