#include "ui/Messages.h"

#include <QScreen>
#include <QWidget>

namespace wendmark {

QString programTitle() {
    return QStringLiteral("Wendmark");
}

void showMessage(QWidget* parent, const QString& text, const QString& title, QMessageBox::Icon icon) {
    QMessageBox box(icon, title, text, QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

bool askYesNo(QWidget* parent, const QString& text, const QString& title, QMessageBox::Icon icon) {
    QMessageBox box(icon, title, text, QMessageBox::Yes | QMessageBox::No, parent);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::No);
    box.setEscapeButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

void centreOnScreen(QWidget& window) {
    const QRect screen = window.screen()->availableGeometry();
    window.move(screen.left() + (screen.width() - window.width()) / 2,
                screen.top() + (screen.height() - window.height()) / 2);
}

} // namespace wendmark
