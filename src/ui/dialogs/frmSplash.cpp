#include "ui/dialogs/frmSplash.h"

#include "maker.h"
#include "platform/Icons.h"
#include "ui/Messages.h"
#include "ui/dialogs/DialogParts.h"

#include <QFrame>
#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>

namespace wendmark {

namespace {

constexpr int logoSide = 96;

QLabel* makeCentredLabel(const char* name, const QString& text, qreal scale, QWidget* parent) {
    QLabel* const label = makeTextLabel(name, text, parent);
    label->setAlignment(Qt::AlignCenter);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * scale);
    label->setFont(font);
    return label;
}

} // namespace

// Not of the type SplashScreen: Qt handles events while it shows such a window, and a key that came then
// would be answered before exec() waits for an answer.
frmSplash::frmSplash(QWidget* parent) : QDialog(parent, Qt::FramelessWindowHint) {
    setObjectName(QStringLiteral("frmSplash"));
    setWindowTitle(programTitle());
    auto* const frame = new QFrame(this);
    frame->setObjectName(QStringLiteral("fraMainFrame"));
    frame->setFrameShape(QFrame::StyledPanel);
    auto* const logo = new QLabel(frame);
    logo->setObjectName(QStringLiteral("picLogo"));
    logo->setAlignment(Qt::AlignCenter);
    logo->setPixmap(programIcon().pixmap(logoSide));

    auto* const lines = new QVBoxLayout(frame);
    lines->setContentsMargins(4 * dialogGap, 3 * dialogGap, 4 * dialogGap, 3 * dialogGap);
    lines->setSpacing(dialogGap);
    lines->addWidget(logo);
    lines->addWidget(makeCentredLabel("lblProductName", programTitle(), 2.4, frame));
    lines->addWidget(
        makeCentredLabel("lblVersion", tr("Version ") + QLatin1String(programVersion), 1, frame));
    lines->addWidget(makeCentredLabel("lblPlatform", tr("for Windows"), 1, frame));
    lines->addWidget(makeCentredLabel("lblCompany", tr("Brenholt Inc."), 1, frame));
    lines->addWidget(makeCentredLabel("lblNotice", tr("Guided tours of the web"), 1, frame));
    lines->addWidget(makeCentredLabel("Label1", tr("(Click anywhere to begin)"), 1, frame));
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(frame);
    setMinimumWidth(52 * dialogGap);

    auto* const timer = new QTimer(this);
    timer->setObjectName(QStringLiteral("Timer1"));
    timer->setSingleShot(true);
    connect(timer, &QTimer::timeout, this, &QDialog::accept);
    timer->start(shownFor);
}

void frmSplash::keyPressEvent(QKeyEvent*) {
    accept();
}

void frmSplash::mousePressEvent(QMouseEvent*) {
    accept();
}

} // namespace wendmark
