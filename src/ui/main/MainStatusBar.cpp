#include "ui/main/MainStatusBar.h"

#include "commands/TourDocument.h"
#include "ui/controls/ElidedLabel.h"
#include "ui/dialogs/DialogParts.h"

#include <QDateTime>
#include <QLabel>
#include <QLocale>
#include <QRegularExpression>

namespace wendmark {

namespace {

constexpr int noticeShare = 3;      ///< Of the width that the other panels leave, to one of the first panel.
constexpr qsizetype mostRead = 500; ///< Characters of an address that are read out.

/// Without seconds, which would paint the whole window anew each time.
QString clockFormat() {
    QString format = QLocale().timeFormat(QLocale::ShortFormat);
    return format.remove(QRegularExpression(QStringLiteral("[:.]ss?")));
}

} // namespace

MainStatusBar::MainStatusBar(QWidget* parent)
    : QStatusBar(parent)
    , m_status(new ElidedLabel(this))
    , m_notice(new ElidedLabel(this))
    , m_date(makePanel("Date"))
    , m_time(makePanel("Time"))
    , m_saved(makePanel("Saved")) {
    setObjectName(QStringLiteral("sbStatusBar"));
    m_status->setObjectName(QStringLiteral("Status"));
    showStatus({});
    addWidget(m_status, 1);
    m_notice->setObjectName(QStringLiteral("Notice"));
    m_notice->hide();
    addWidget(m_notice, noticeShare);
    for (QLabel* const panel : {m_date, m_time, m_saved})
        addPermanentWidget(panel);
}

QLabel* MainStatusBar::makePanel(const char* name) {
    auto* const panel = new QLabel(this);
    panel->setObjectName(QLatin1String(name));
    panel->setTextFormat(Qt::PlainText);
    return panel;
}

void MainStatusBar::showStatus(const QString& text) {
    m_status->showText(text);
    m_status->setAccessibleName(text.isEmpty() ? tr("Status")
                                               : tr("Status: %1").arg(shortened(text, mostRead)));
}

void MainStatusBar::showNotice(const QString& text) {
    m_notice->showText(text);
    m_notice->setVisible(!text.isEmpty());
}

void MainStatusBar::showPrinted(const QString& path) {
    showNotice(tr("Printed to %1").arg(path));
}

void MainStatusBar::runTick() {
    const QDateTime now = QDateTime::currentDateTime();
    m_date->setText(QLocale().toString(now.date(), QLocale::ShortFormat));
    m_time->setText(QLocale().toString(now.time(), clockFormat()));
}

void MainStatusBar::showHistory(const TourDocument& document) {
    if (!document.isAsSaved())
        m_saved->setText(tr("Unsaved changes"));
    else
        m_saved->setText(m_savedAt.isEmpty() ? QString() : tr("Saved %1").arg(m_savedAt));
    if (document.droppedSteps() > m_droppedSteps)
        showNotice(tr("The oldest changes cannot be undone any more."));
    m_droppedSteps = document.droppedSteps();
}

void MainStatusBar::noteSaved(bool complete) {
    m_savedAt = complete ? QLocale().toString(QTime::currentTime(), clockFormat()) : QString();
    if (!complete)
        showNotice(tr("The tour was not saved completely. The log says what failed."));
}

void MainStatusBar::forgetSaved() {
    m_savedAt.clear();
}

} // namespace wendmark
