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

// Pixels.
constexpr int usualWidth = 90 * dialogGap;
constexpr int besideText = 8 * dialogGap; ///< Margins and scroll bar.
constexpr int belowText = 14 * dialogGap; ///< Heading, buttons, margins.

constexpr int mostRows = 60;

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
    : QDialog(parent)
    , m_document(document)
    , m_desktop(desktop)
    , m_text(new QPlainTextEdit(shownLines(toQString(launchingInformation(document.model()))), this)) {
    setObjectName(QStringLiteral("frmLaunch"));
    setWindowTitle(QStringLiteral("Wendmark - Launching Information"));
    QLabel* const heading = makeTextLabel("Label1", tr("Launching a Tour:"), this);
    m_text->setObjectName(QStringLiteral("Text1"));
    m_text->setAccessibleName(tr("Launching a Tour"));
    m_text->setReadOnly(true);
    m_text->setTabChangesFocus(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    QPushButton* const printButton = makeButton("btnPrint", tr("&Print"), this);
    QPushButton* const exitButton = makeButton("btnExit", tr("E&xit"), this);
    exitButton->setDefault(true);

    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(printButton);
    buttons->addWidget(exitButton);
    QVBoxLayout* const layout = makeDialogLayout(*this);
    layout->addWidget(heading);
    layout->addWidget(m_text, 1);
    layout->addLayout(buttons);
    setMinimumSize(50 * dialogGap, 35 * dialogGap);
    exitButton->setFocus();
    connect(printButton, &QPushButton::clicked, this, &frmLaunch::print);
    connect(exitButton, &QPushButton::clicked, this, &QDialog::accept);
}

/// Shows the list at the end of the text, too, where the screen has room for it.
QSize frmLaunch::sizeHint() const {
    const QRect lines = m_text->fontMetrics().boundingRect(
        QRect(0, 0, usualWidth - besideText, QWIDGETSIZE_MAX), Qt::TextWordWrap, m_text->toPlainText());
    const int rows = lines.height() / m_text->fontMetrics().lineSpacing() + 2;
    return {usualWidth, std::min(rows, mostRows) * m_text->fontMetrics().lineSpacing() + belowText};
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
