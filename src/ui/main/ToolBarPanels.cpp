#include "ui/main/ToolBarPanels.h"

#include "ui/controls/CommandBar.h"
#include "ui/controls/LoadingIndicator.h"
#include "ui/dialogs/DialogParts.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QFrame>
#include <QLabel>
#include <QVBoxLayout>

namespace wendmark {

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("ToolBarPanels", text);
}

/// picStopNum, with the label lblStopNum in it.
QFrame* makeStopPanel(QLabel& number) {
    auto* const stopPanel = new QFrame;
    stopPanel->setObjectName(QStringLiteral("picStopNum"));
    stopPanel->setToolTip(tr("Current Stop Number"));
    stopPanel->setFrameShape(QFrame::StyledPanel);
    number.setParent(stopPanel);
    number.setObjectName(QStringLiteral("lblStopNum"));
    number.setAccessibleName(tr("Current Stop Number"));
    number.setAlignment(Qt::AlignCenter);
    number.setTextFormat(Qt::PlainText);
    number.setFixedWidth(number.fontMetrics().horizontalAdvance(QStringLiteral("000")));
    auto* const stopLayout = new QVBoxLayout(stopPanel);
    stopLayout->setContentsMargins(dialogGap / 2, dialogGap / 4, dialogGap / 2, dialogGap / 4);
    stopLayout->addWidget(&number);
    return stopPanel;
}

} // namespace

ToolBarPanels addPanels(CommandBar& bar) {
    ToolBarPanels panels{new QLabel, new LoadingIndicator, nullptr};
    panels.busy->setObjectName(QStringLiteral("picBusy"));
    panels.busy->setToolTip(tr("Loading Status"));
    panels.busy->setAccessibleName(tr("Loading Status"));
    panels.offline = new QCheckBox(tr("Work Offline"));
    panels.offline->setObjectName(QStringLiteral("chkOffline"));
    bar.addPlaceholder(QStringLiteral("picStopNum"), makeStopPanel(*panels.stopNumber));
    bar.addPlaceholder(QStringLiteral("picBusy"), panels.busy);
    bar.addPlaceholder(QStringLiteral("chkOffline"), panels.offline);
    return panels;
}

} // namespace wendmark
