#include "ui/dialogs/frmRecover.h"

#include "platform/Strings.h"
#include "recovery/RecoveryRecord.h"
#include "ui/dialogs/DialogParts.h"

#include <QDateTime>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

namespace wendmark {

frmRecover::frmRecover(const RecoveryRecord& record, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmRecover"));
    setWindowTitle(QStringLiteral("Wendmark - Recover Tour"));
    const QDateTime time = QDateTime::fromSecsSinceEpoch(record.time);
    const QString folder = toQString(record.tourPath);
    auto* const facts = new QFormLayout;
    facts->addRow(tr("Tour:"),
                  makeTextLabel("lblTitle", shortened(beginningOf(record.model.tourTitle, 201), 200), this));
    facts->addRow(tr("Last change:"),
                  makeTextLabel("lblTime", QLocale().toString(time, QLocale::LongFormat), this));
    facts->addRow(tr("Stops:"), makeTextLabel("lblStops", QString::number(record.model.stopCount()), this));
    facts->addRow(tr("Folder:"),
                  makeTextLabel("lblFolder", folder.isEmpty() ? tr("none, never saved") : folder, this));

    QPushButton* const recover = makeButton("btnRecover", tr("&Recover"), this);
    QPushButton* const discard = makeButton("btnDiscard", tr("&Discard"), this);
    QPushButton* const notNow = makeButton("btnNotNow", tr("&Not now"), this);
    recover->setDefault(true);
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    for (QPushButton* button : {recover, discard, notNow})
        buttons->addWidget(button);

    QVBoxLayout* const layout = makeDialogLayout(*this);
    layout->addWidget(makeTextLabel(
        "lblQuestion",
        tr("Wendmark ended before this tour was saved. Do you want to go on where you stopped?"), this));
    layout->addSpacing(dialogGap);
    layout->addLayout(facts);
    layout->addSpacing(dialogGap);
    layout->addWidget(
        makeTextLabel("lblHint", tr("“Not now” keeps the tour and asks again at the next start."), this));
    layout->addStretch();
    layout->addLayout(buttons);
    setMinimumWidth(56 * dialogGap);
    recover->setFocus();
    connect(recover, &QPushButton::clicked, this, [this] { choose(Choice::recover); });
    connect(discard, &QPushButton::clicked, this, [this] { choose(Choice::discard); });
    connect(notNow, &QPushButton::clicked, this, &QDialog::reject);
}

void frmRecover::choose(Choice choice) {
    m_choice = choice;
    accept();
}

} // namespace wendmark
