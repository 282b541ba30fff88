#include "ui/dialogs/frmPageFiles.h"

#include "commands/PageBundle.h"
#include "platform/Strings.h"
#include "ui/dialogs/DialogParts.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace wendmark {

namespace {

enum Column { fileColumn, nameColumn, sizeColumn };

constexpr qsizetype longestList = 300; // Characters of a list of names in a sentence.

QString oneLine(const std::vector<std::string>& names) {
    QStringList all;
    for (const std::string& name : names)
        all.append(toQString(name));
    all.removeDuplicates();
    return shortened(all.join(QStringLiteral(", ")), longestList);
}

/// What else the author has to know of the page's files.
QString remarksOn(const PageBundle& bundle) {
    QStringList remarks;
    if (bundle.page.bytes)
        remarks.append(
            frmPageFiles::tr("All files of a tour lie in one folder. In the tour's copy of the page, "
                             "the places that name these files are changed; your own page stays as "
                             "it is."));
    if (!bundle.elsewhere.empty())
        remarks.append(frmPageFiles::tr("Stay behind, since they are not in the page's folder: %1")
                           .arg(oneLine(bundle.elsewhere)));
    if (!bundle.missing.empty())
        remarks.append(frmPageFiles::tr("Cannot be read: %1").arg(oneLine(bundle.missing)));
    if (bundle.leftOut > 0)
        remarks.append(frmPageFiles::tr("%n more stay behind.", nullptr, static_cast<int>(bundle.leftOut)));
    return remarks.join(QLatin1Char('\n'));
}

} // namespace

frmPageFiles::frmPageFiles(const PageBundle& bundle, QWidget* parent)
    : QDialog(parent), m_list(new QTreeWidget(this)) {
    setObjectName(QStringLiteral("frmPageFiles"));
    setWindowTitle(QStringLiteral("Wendmark - Files of the Page"));
    m_list->setObjectName(QStringLiteral("lstFiles"));
    m_list->setAccessibleName(tr("Files of the page"));
    m_list->setHeaderLabels({tr("File"), tr("Name in the tour"), tr("Size")});
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->setTabKeyNavigation(false);
    m_list->setTextElideMode(Qt::ElideMiddle);
    fill(bundle);
    setupLayout(bundle);
}

QSize frmPageFiles::sizeHint() const {
    return {70 * dialogGap, 45 * dialogGap};
}

void frmPageFiles::fill(const PageBundle& bundle) {
    for (const PageBundle::Part& part : bundle.parts) {
        auto* const row = new QTreeWidgetItem(m_list);
        row->setText(fileColumn, toQString(part.path));
        row->setToolTip(fileColumn, toQString(part.file.source));
        row->setText(nameColumn, part.isThere ? tr("%1 (is there)").arg(toQString(part.file.name))
                                              : toQString(part.file.name));
        row->setText(sizeColumn, QLocale().formattedDataSize(QFileInfo(toQString(part.file.source)).size()));
        row->setTextAlignment(sizeColumn, Qt::AlignRight | Qt::AlignVCenter);
    }
    m_list->setCurrentItem(m_list->topLevelItem(0));
    m_list->header()->setStretchLastSection(false);
    m_list->header()->setSectionResizeMode(fileColumn, QHeaderView::Stretch);
    m_list->header()->setSectionResizeMode(nameColumn, QHeaderView::Stretch);
    m_list->header()->setSectionResizeMode(sizeColumn, QHeaderView::ResizeToContents);
}

void frmPageFiles::setupLayout(const PageBundle& bundle) {
    auto* const buttons = new QHBoxLayout;
    buttons->setSpacing(dialogGap);
    buttons->addStretch();
    addButton(*buttons, "btnTogether", tr("&Take Them Along"), Answer::together);
    addButton(*buttons, "btnAlone", tr("The &Page Alone"), Answer::alone);
    addButton(*buttons, "btnCancel", tr("Cancel"), Answer::cancel);
    auto* const together = findChild<QPushButton*>(QStringLiteral("btnTogether"));
    together->setDefault(true);
    const QString name = QFileInfo(toQString(bundle.page.source)).fileName();
    QVBoxLayout* const layout = makeDialogLayout(*this);
    layout->addWidget(makeTextLabel(
        "lblPage",
        tr("%1 shows files of this computer. Without them visitors will not see the page as you do.")
            .arg(shortened(name, longestList)),
        this));
    layout->addWidget(m_list, 1);
    if (const QString remarks = remarksOn(bundle); !remarks.isEmpty())
        layout->addWidget(makeTextLabel("lblRemarks", remarks, this));
    layout->addLayout(buttons);
    setMinimumWidth(46 * dialogGap);
    together->setFocus();
}

void frmPageFiles::addButton(QLayout& row, const char* name, const QString& caption, Answer answer) {
    QPushButton* const button = makeButton(name, caption, this);
    row.addWidget(button);
    connect(button, &QPushButton::clicked, this, [this, answer] {
        m_answer = answer;
        done(answer == Answer::cancel ? Rejected : Accepted);
    });
}

} // namespace wendmark
