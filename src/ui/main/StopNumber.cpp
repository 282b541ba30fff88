#include "ui/main/StopNumber.h"

#include "model/StopList.h"
#include "ui/dialogs/DialogParts.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <algorithm>

namespace wendmark {

namespace {

QLabel* makePart(const char* name, QWidget* parent) {
    auto* const label = new QLabel(parent);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    return label;
}

} // namespace

StopNumber::StopNumber(QWidget* parent)
    : QFrame(parent)
    , m_before(makePart("lblStopBefore", this))
    , m_number(makePart("lblStopNum", this))
    , m_behind(makePart("lblStopBehind", this)) {
    setObjectName(QStringLiteral("picStopNum"));
    setToolTip(tr("Current Stop Number"));
    QFont bold = m_number->font();
    bold.setBold(true);
    m_number->setFont(bold);
    auto* const parts = new QHBoxLayout(this);
    parts->setContentsMargins(dialogGap / 2, dialogGap / 4, dialogGap / 2, dialogGap / 4);
    parts->setSpacing(dialogGap / 2);
    for (QLabel* const part : {m_before, m_number, m_behind})
        parts->addWidget(part);
    parts->addStretch();
    tellAll();
    reserveWidth();
}

void StopNumber::showStop(const QString& text) {
    m_number->setText(text);
    tellAll();
}

void StopNumber::showCount(std::int16_t count) {
    m_count = count;
    tellAll();
}

void StopNumber::showLoading(bool loading) {
    m_loading = loading;
    for (QLabel* const part : {m_before, m_number, m_behind})
        part->setForegroundRole(loading ? QPalette::PlaceholderText : QPalette::WindowText);
    tellAll();
}

void StopNumber::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        reserveWidth();
}

void StopNumber::tellAll() {
    const bool isStop = m_number->text().toInt() > 0;
    m_before->setText(isStop ? tr("Stop") : QString());
    m_behind->setText(isStop ? tr("of %1").arg(m_count) : tr("Opening page"));
    m_before->setVisible(isStop);
    QString all = isStop ? tr("Stop %1 of %2").arg(m_number->text()).arg(m_count) : tr("Opening page");
    if (m_loading)
        all = tr("%1, the next page is loading").arg(all);
    m_number->setAccessibleName(all);
}

/// The controls behind it stay where they are, whatever stop is on screen.
void StopNumber::reserveWidth() {
    const QString widest = tr("Stop") + tr("of %1").arg(tourCapacity);
    const QString number = QString::number(tourCapacity);
    const int texts = std::max(fontMetrics().horizontalAdvance(widest) +
                                   QFontMetrics(m_number->font()).horizontalAdvance(number),
                               fontMetrics().horizontalAdvance(tr("Opening page")));
    setMinimumWidth(texts + 3 * dialogGap + 2 * frameWidth());
}

} // namespace wendmark
