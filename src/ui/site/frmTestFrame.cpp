#include "ui/site/frmTestFrame.h"

#include "platform/BrowserView.h"
#include "ui/dialogs/DialogParts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShowEvent>
#include <QVBoxLayout>

namespace wendmark {

namespace {

constexpr int lowerFrame = 10; // Pixels.

} // namespace

frmTestFrame::frmTestFrame(FrameTest test, BrowserView& browser, QWidget* parent)
    : QDialog(parent)
    , m_test(std::move(test))
    , m_browser(browser)
    , m_message(makeTextLabel(
          "lblMessage", tr("Testing if this Web page can be used  in a tour. . . . Please wait . . ."), this))
    , m_reason(makeTextLabel("lblReason", QString(), this)) {
    setObjectName(QStringLiteral("frmTestFrame"));
    setWindowTitle(QStringLiteral("Wendmark - Frame Test"));
    QPushButton* const okButton = makeButton("OKButton", tr("OK"), this);
    okButton->setDefault(true);
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(okButton);
    QFont bold = m_message->font();
    bold.setBold(true);
    m_message->setFont(bold);
    QVBoxLayout* const layout = makeDialogLayout(*this);
    layout->setSpacing(2 * dialogGap);
    m_reason->hide();
    layout->addWidget(m_message);
    layout->addWidget(m_reason);
    layout->addWidget(makeTextLabel(
        "Label1",
        tr("Brenholt Tour can only work with sites that can be displayed inside a \"frame\". Some sites are "
           "designed to deliberately avoid such usage."),
        this));
    layout->addStretch();
    layout->addLayout(buttons);
    setMinimumWidth(56 * dialogGap);
    okButton->setFocus();
    connect(okButton, &QPushButton::clicked, this, &QDialog::accept);
}

void frmTestFrame::done(int result) {
    m_closing = true;
    if (!m_running)
        QDialog::done(result);
}

void frmTestFrame::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!event->spontaneous() && !m_done)
        QMetaObject::invokeMethod(this, "runTest", Qt::QueuedConnection);
}

void frmTestFrame::runTest() {
    const QUrl location = m_browser.location();
    m_running = true;
    const FrameTest::Result result = m_test.run(
        location, [this] { return !m_closing; }, lowerFrame);
    m_running = false;
    m_browser.navigate(location);
    switch (result) {
    case FrameTest::Result::passed:
        m_message->setText(tr("Passed . . . ."));
        break;
    case FrameTest::Result::failed:
        m_message->setText(tr("Failed . . . .  You cannot use this site in your tour."));
        m_reason->setText(m_test.reason());
        m_reason->show();
        break;
    case FrameTest::Result::notRun:
        m_message->setText(tr("The test page cannot be written into the tour's folder."));
        break;
    case FrameTest::Result::abandoned:
        QDialog::done(Rejected);
        return;
    }
    makeRoomForTexts(*this);
    m_done = result != FrameTest::Result::notRun;
}

} // namespace wendmark
