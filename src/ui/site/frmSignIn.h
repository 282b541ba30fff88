#pragma once

#include "platform/PasswordQuestion.h"

#include <QDialog>

class QLineEdit;

namespace wendmark {

class BrowserView;

/// Asks for the user's name and the password for a page. Nothing of it is stored.
class frmSignIn final : public QDialog {
    Q_OBJECT

public:
    explicit frmSignIn(const PasswordQuestion& question, QWidget* parent = nullptr);

    QString user() const;
    QString password() const;

private:
    QLineEdit* m_user;
    QLineEdit* m_password;
};

/// From now on the author is asked, over `window`, for the passwords of the browser's pages.
void answerPasswordQuestions(BrowserView& browser, QWidget& window);

} // namespace wendmark
