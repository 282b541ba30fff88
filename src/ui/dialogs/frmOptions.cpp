#include "ui/dialogs/frmOptions.h"

#include "model/Options.h"
#include "platform/Strings.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/dialogs/FileChooser.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace wendmark {

frmOptions::frmOptions(Options& options, QWidget* parent)
    : QDialog(parent)
    , m_options(options)
    , m_htmlEditor(new QLineEdit(toQString(options.htmlEditorPath), this))
    , m_warnURLChange(new QCheckBox(tr("&Warn before changing URL"), this))
    , m_closeBrowser(
          new QCheckBox(tr("&Automatically close browser window after selecting each URL"), this)) {
    setObjectName(QStringLiteral("frmOptions"));
    setWindowTitle(QStringLiteral("Wendmark - Options"));
    m_htmlEditor->setMinimumWidth(30 * dialogGap);
    m_htmlEditor->setObjectName(QStringLiteral("txtHTMLEdit"));
    m_warnURLChange->setObjectName(QStringLiteral("chkWarnURLChange"));
    m_warnURLChange->setChecked(options.warnURLChange);
    m_closeBrowser->setObjectName(QStringLiteral("chkCloseBrowser"));
    m_closeBrowser->setChecked(options.autoCloseBrowser);

    auto* const editorLabel = new QLabel(tr("&HTML Editor :"), this);
    editorLabel->setObjectName(QStringLiteral("Label1"));
    editorLabel->setBuddy(m_htmlEditor);
    QPushButton* const browseButton = makeButton("btnBrowse", tr("&Browse"), this);
    auto* const editor = new QHBoxLayout;
    editor->addWidget(editorLabel);
    editor->addWidget(m_htmlEditor, 1);
    editor->addWidget(browseButton);

    QVBoxLayout* const layout = makeDialogLayout(*this);
    layout->addLayout(editor);
    layout->addSpacing(dialogGap);
    layout->addWidget(m_warnURLChange);
    layout->addWidget(m_closeBrowser);
    layout->addStretch();
    layout->addSpacing(dialogGap);
    QDialogButtonBox* const buttons = makeOkCancelButtons(this);
    layout->addWidget(buttons);
    m_htmlEditor->setFocus();
    connect(browseButton, &QPushButton::clicked, this, &frmOptions::browse);
    connect(buttons, &QDialogButtonBox::accepted, this, &frmOptions::takeOver);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void frmOptions::browse() {
    const QString program = chooseProgram(this, tr("Select HTML Editor"));
    if (!program.isEmpty())
        m_htmlEditor->setText(program);
}

void frmOptions::takeOver() {
    m_options.htmlEditorPath = toUtf8(m_htmlEditor->text());
    m_options.warnURLChange = m_warnURLChange->isChecked();
    m_options.autoCloseBrowser = m_closeBrowser->isChecked();
    accept();
}

} // namespace wendmark
