#include "ui/dialogs/frmLaunch.h"

#include "base/Log.h"
#include "commands/TourDocument.h"
#include "model/TourModel.h"
#include "platform/Printing.h"
#include "platform/QtDesktop.h"
#include "platform/Strings.h"
#include "publish/LaunchingInformation.h"
#include "ui/dialogs/DialogParts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPrinter>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

namespace wendmark {

namespace {

constexpr qsizetype longestShown = 10'000; ///< UTF-16 units. No address that works is as long as this.

QString shown(const QString& line) {
    return shortened(line, longestShown);
}

QString shownLines(const QString& text) {
    const QString lineEnd = QStringLiteral("\r\n");
    QStringList lines = text.split(lineEnd);
    std::transform(lines.begin(), lines.end(), lines.begin(), shown);
    return lines.join(lineEnd);
}

} // namespace

frmLaunch::frmLaunch(const TourDocument& document, QtDesktop& desktop, QWidget* parent)
    : QDialog(parent), m_document(document), m_desktop(desktop) {
    setObjectName(QStringLiteral("frmLaunch"));
    setWindowTitle(QStringLiteral("Wendmark - Launching Information"));
    QLabel* const heading = makeTextLabel("Label1", tr("Launching a Tour:"), this);
    auto* const text =
        new QPlainTextEdit(shownLines(toQString(launchingInformation(document.model()))), this);
    text->setObjectName(QStringLiteral("Text1"));
    text->setAccessibleName(tr("Launching a Tour"));
    text->setReadOnly(true);
    text->setTabChangesFocus(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    QPushButton* const printButton = makeButton("btnPrint", tr("&Print"), this);
    QPushButton* const exitButton = makeButton("btnExit", tr("E&xit"), this);
    exitButton->setDefault(true);

    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(printButton);
    buttons->addWidget(exitButton);
    QVBoxLayout* const layout = makeDialogLayout(*this);
    layout->addWidget(heading);
    layout->addWidget(text, 1);
    layout->addLayout(buttons);
    setMinimumSize(50 * dialogGap, 35 * dialogGap);
    exitButton->setFocus();
    connect(printButton, &QPushButton::clicked, this, &frmLaunch::print);
    connect(exitButton, &QPushButton::clicked, this, &QDialog::accept);
}

QSize frmLaunch::sizeHint() const {
    return {80 * dialogGap, 60 * dialogGap};
}

void frmLaunch::print() {
    QStringList lines;
    for (const std::string& line : launchingListToPrint(m_document.model()))
        lines.append(shown(toQString(line)));
    if (!lines.isEmpty()) {
        const std::unique_ptr<QPrinter> printer =
            makeDefaultPrinter(beginningOf(m_document.model().tourTitle, longestShown));
        if (!printLines(*printer, lines))
            m_document.log().fail("cannot print the launching points");
        else if (!printer->outputFileName().isEmpty())
            emit printedToFile(printer->outputFileName());
    }
    m_desktop.beep();
}

} // namespace wendmark
