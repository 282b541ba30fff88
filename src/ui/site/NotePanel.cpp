#include "ui/site/NotePanel.h"

#include "model/SiteLists.h"
#include "platform/Strings.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/site/BookmarkModel.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace wendmark {

NotePanel::NotePanel(QWidget* parent)
    : QWidget(parent), m_title(makeTextLabel("Label1", QString(), this)), m_note(new QLineEdit(this)) {
    setObjectName(QStringLiteral("picNote"));
    m_note->setObjectName(QStringLiteral("Text1"));
    m_note->setAccessibleName(tr("Research notes"));
    m_title->setBuddy(m_note);
    QPushButton* const back = makeButton("btnOK", tr("&Back to Bookmarks"), this);
    auto* const row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(back);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(dialogGap);
    layout->addWidget(m_title);
    layout->addWidget(m_note);
    layout->addLayout(row);
    layout->addStretch();
    connect(m_note, &QLineEdit::returnPressed, this, &NotePanel::returnPressed);
    connect(back, &QPushButton::clicked, this, &NotePanel::backWanted);
}

void NotePanel::showNote(const Bookmark& bookmark) {
    m_title->setText(tr("Research Notes for:  ") +
                     shortened(toQString(bookmark.address), BookmarkModel::longestShown));
    m_note->setText(toQString(bookmark.note));
}

void NotePanel::focusNote() {
    m_note->setFocus();
}

std::string NotePanel::note(const std::string& given) const {
    return wholeText(*m_note, given);
}

} // namespace wendmark
