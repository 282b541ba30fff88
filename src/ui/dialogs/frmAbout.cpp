#include "ui/dialogs/frmAbout.h"

#include "maker.h"
#include "platform/Icons.h"
#include "platform/Registry.h"
#include "ui/Messages.h"
#include "ui/dialogs/DialogParts.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QVBoxLayout>
#include <optional>

namespace wendmark {

namespace {

constexpr int pictureSide = 64;

/// The system's information tool; empty when none is known.
QString systemInformationTool(const Registry& registry) {
    const auto path = registry.GetKeyValue(RegistryRoot::localMachine,
                                           QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools\\MSINFO"),
                                           QStringLiteral("PATH"));
    if (path)
        return *path;
    const auto folder = registry.GetKeyValue(RegistryRoot::localMachine,
                                             QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools Location"),
                                             QStringLiteral("MSINFO"));
    if (!folder)
        return {};
    const QString tool = *folder + QStringLiteral("/MSINFO32.EXE");
    return QFileInfo::exists(tool) ? tool : QString();
}

} // namespace

frmAbout::frmAbout(const Registry& registry, QWidget* parent) : QDialog(parent), m_registry(registry) {
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(tr("About Wendmark"));

    auto* const picture = new QLabel(this);
    picture->setObjectName(QStringLiteral("picIcon"));
    picture->setPixmap(programIcon().pixmap(pictureSide));
    picture->setAccessibleName(tr("Wendmark's sign"));
    QPushButton* const okButton = makeButton("cmdOK", tr("OK"), this);
    okButton->setDefault(true);
    QPushButton* const systemButton = makeButton("cmdSysInfo", tr("&System Info..."), this);

    auto* const top = new QHBoxLayout;
    top->setSpacing(2 * dialogGap);
    top->addWidget(picture, 0, Qt::AlignTop);
    top->addLayout(makeTexts(), 1);
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(systemButton);
    buttons->addStretch();
    buttons->addWidget(okButton);
    QVBoxLayout* const layout = makeDialogLayout(*this);
    layout->setSpacing(2 * dialogGap);
    layout->addLayout(top);
    layout->addStretch();
    layout->addLayout(buttons);
    setMinimumWidth(52 * dialogGap);
    okButton->setFocus();
    connect(okButton, &QPushButton::clicked, this, &QDialog::accept);
    connect(systemButton, &QPushButton::clicked, this, &frmAbout::showSystemInformation);
}

QVBoxLayout* frmAbout::makeTexts() {
    QLabel* const title = makeTextLabel("lblTitle", programTitle(), this);
    QFont large = title->font();
    large.setPointSizeF(large.pointSizeF() * 1.6);
    large.setBold(true);
    title->setFont(large);
    auto* const texts = new QVBoxLayout;
    texts->setSpacing(dialogGap);
    texts->addWidget(title);
    texts->addWidget(makeTextLabel("lblVersion", tr("Version ") + QLatin1String(programVersion), this));
    texts->addWidget(
        makeTextLabel("lblDescription",
                      tr("An authoring system for creation of Brenholt Inc.'s virtual web tours."), this));
    texts->addWidget(makeTextLabel(
        "lblDisclaimer",
        tr("Made by Brenholt Inc. The tours that you make with it are yours. It comes without any warranty."),
        this));
    return texts;
}

void frmAbout::showSystemInformation() {
    const QString tool = systemInformationTool(m_registry);
    if (tool.isEmpty() || !QProcess::startDetached(tool, {}))
        showMessage(this, tr("System Information Is Unavailable At This Time"));
}

} // namespace wendmark
