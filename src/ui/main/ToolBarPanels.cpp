#include "ui/main/ToolBarPanels.h"

#include "ui/controls/CommandBar.h"
#include "ui/controls/LoadingIndicator.h"
#include "ui/main/StopNumber.h"

#include <QCheckBox>
#include <QCoreApplication>

namespace wendmark {

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("ToolBarPanels", text);
}

} // namespace

ToolBarPanels addPanels(CommandBar& bar) {
    ToolBarPanels panels{new StopNumber, new LoadingIndicator, nullptr};
    panels.busy->setObjectName(QStringLiteral("picBusy"));
    panels.busy->setToolTip(tr("Loading Status"));
    panels.offline = new QCheckBox(tr("Work Offline"));
    panels.offline->setObjectName(QStringLiteral("chkOffline"));
    bar.addPlaceholder(QStringLiteral("picStopNum"), panels.stopNumber);
    bar.addPlaceholder(QStringLiteral("picBusy"), panels.busy);
    bar.addPlaceholder(QStringLiteral("chkOffline"), panels.offline);
    return panels;
}

} // namespace wendmark
