#include "ui/site/frmSignIn.h"

#include "platform/BrowserView.h"
#include "ui/dialogs/DialogParts.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace wendmark {

namespace {

constexpr qsizetype mostShown = 200; // Characters of what a server says of itself.

QString wordsOf(const PasswordQuestion& question) {
    const QString host = shortened(question.host, mostShown);
    return question.ofProxy
               ? frmSignIn::tr("The proxy %1, through which the page comes, wants a password.").arg(host)
               : frmSignIn::tr("%1 wants a password for this page.").arg(host);
}

/// The server's own words stand apart, so that they are not taken for the program's.
QString realmOf(const PasswordQuestion& question) {
    return question.realm.isEmpty()
               ? QString()
               : frmSignIn::tr("It calls this part \"%1\".").arg(shortened(question.realm, mostShown));
}

QString hintOf(const PasswordQuestion& question) {
    const QString hint = frmSignIn::tr(
        "Visitors of the tour are asked, too. The password is forgotten when the program ends.");
    return question.scheme == QLatin1String("http") ? frmSignIn::tr("It is sent unprotected. ") + hint : hint;
}

} // namespace

frmSignIn::frmSignIn(const PasswordQuestion& question, QWidget* parent)
    : QDialog(parent), m_user(new QLineEdit(this)), m_password(new QLineEdit(this)) {
    setObjectName(QStringLiteral("frmSignIn"));
    setWindowTitle(QStringLiteral("Wendmark - Sign In"));
    m_user->setObjectName(QStringLiteral("txtUser"));
    m_password->setObjectName(QStringLiteral("txtPassword"));
    m_password->setEchoMode(QLineEdit::Password);
    auto* const fields = new QFormLayout;
    fields->addRow(tr("&Name"), m_user);
    fields->addRow(tr("&Password"), m_password);
    QDialogButtonBox* const buttons = makeOkCancelButtons(this);
    buttons->findChild<QPushButton*>(QStringLiteral("OKButton"))->setText(tr("Sign In"));
    QVBoxLayout* const layout = makeDialogLayout(*this);
    layout->addWidget(makeTextLabel("lblHost", wordsOf(question), this));
    if (!question.realm.isEmpty())
        layout->addWidget(makeTextLabel("lblRealm", realmOf(question), this));
    layout->addLayout(fields);
    layout->addWidget(makeTextLabel("lblHint", hintOf(question), this));
    layout->addStretch();
    layout->addWidget(buttons);
    setMinimumWidth(48 * dialogGap);
    m_user->setFocus();
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

QString frmSignIn::user() const {
    return m_user->text();
}

QString frmSignIn::password() const {
    return m_password->text();
}

void answerPasswordQuestions(BrowserView& browser, QWidget& window) {
    QObject::connect(&browser, &BrowserView::passwordWanted, &window, [&window](PasswordQuestion& question) {
        frmSignIn dialog(question, &window);
        runDialog(dialog);
        question.answered = dialog.result() == QDialog::Accepted;
        question.user = dialog.user();
        question.password = dialog.password();
    });
}

} // namespace wendmark
