#include "ui/main/MakingNotice.h"

#include "commands/TourDocument.h"
#include "platform/Gate.h"
#include "platform/Icons.h"
#include "platform/QtDesktop.h"
#include "platform/Strings.h"
#include "ui/Messages.h"
#include "ui/WindowPlace.h"
#include "ui/dialogs/DialogParts.h"

#include <QApplication>
#include <QDir>
#include <QHBoxLayout>
#include <algorithm>

namespace wendmark {

namespace {

constexpr int lookInterval = 50; // Milliseconds.
constexpr int pictureSide = 48;
constexpr Qt::WindowFlags flags = Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint;

bool anotherWindowIsShown(const QWidget& notice) {
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::any_of(windows.begin(), windows.end(),
                       [&](const QWidget* window) { return window != &notice && window->isVisible(); });
}

/// A tour is known by its folder before its title has been read.
QString nameOf(const std::string& folder) {
    return QDir(toQString(folder)).dirName();
}

} // namespace

MakingNotice::MakingNotice(const TourDocument& document, const Gate& gate, const QtDesktop& desktop)
    : QWidget(nullptr, flags)
    , m_document(document)
    , m_gate(gate)
    , m_text(makeTextLabel("lblMaking", {}, this)) {
    setObjectName(QStringLiteral("frmMaking"));
    setWindowTitle(tr("%1 - Making Pages").arg(programTitle()));
    auto* const picture = new QLabel(this);
    picture->setPixmap(programIcon().pixmap(pictureSide));
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(2 * dialogGap, 2 * dialogGap, 2 * dialogGap, 2 * dialogGap);
    layout->setSpacing(2 * dialogGap);
    layout->addWidget(picture);
    layout->addWidget(m_text, 1);
    setMinimumWidth(48 * dialogGap);
    m_look.setInterval(lookInterval);
    m_look.callOnTimeout(this, &MakingNotice::leave);
    connect(&desktop, &QtDesktop::lasting, this, &MakingNotice::tell);
}

void MakingNotice::tell() {
    if (anotherWindowIsShown(*this))
        return;
    const std::string folder = m_document.workspace().tourPath();
    const QString text = folder.empty() ? tr("Making the pages of the tour...")
                                        : tr("Making the pages of %1...").arg(nameOf(folder));
    if (isVisible() && text == m_text->text())
        return;
    m_text->setText(text);
    setAccessibleDescription(text);
    adjustSize();
    centreOnScreen(*this);
    keepOnScreen(*this);
    show();
    m_look.start();
}

/// The command has ended, or asks something in a window of its own, when events are handled for good.
void MakingNotice::leave() {
    if (m_gate.isBreathing() && !anotherWindowIsShown(*this))
        return;
    m_look.stop();
    hide();
}

} // namespace wendmark
