#include "ui/main/MainStatusBar.h"

#include "commands/TourDocument.h"

#include <QDateTime>
#include <QLabel>
#include <QLocale>

namespace wendmark {

MainStatusBar::MainStatusBar(QWidget* parent)
    : QStatusBar(parent)
    , m_status(makePanel("Status"))
    , m_date(makePanel("Date"))
    , m_time(makePanel("Time"))
    , m_saved(makePanel("Saved")) {
    setObjectName(QStringLiteral("sbStatusBar"));
    m_status->setAccessibleName(tr("Status"));
    m_status->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    addWidget(m_status, 1);
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
    m_status->setText(text);
}

void MainStatusBar::showPrinted(const QString& path) {
    showStatus(tr("Printed to %1").arg(path));
}

void MainStatusBar::runTick() {
    const QDateTime now = QDateTime::currentDateTime();
    m_date->setText(QLocale().toString(now.date(), QLocale::ShortFormat));
    m_time->setText(QLocale().toString(now.time(), QLocale::ShortFormat));
}

void MainStatusBar::showSaved(const TourDocument& document) {
    if (!document.isAsSaved())
        m_saved->setText(tr("Unsaved changes"));
    else
        m_saved->setText(m_savedAt.isEmpty() ? QString() : tr("Saved %1").arg(m_savedAt));
}

void MainStatusBar::noteSaved(bool complete) {
    m_savedAt = complete ? QLocale().toString(QTime::currentTime(), QLocale::ShortFormat) : QString();
}

void MainStatusBar::forgetSaved() {
    m_savedAt.clear();
}

} // namespace wendmark
