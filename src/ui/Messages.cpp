#include "ui/Messages.h"

#include <QPushButton>
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

SaveAnswer askToSave(QWidget* parent, const QString& text, const QString& save, const QString& goOn) {
    QMessageBox box(QMessageBox::Question, programTitle(), text, QMessageBox::NoButton, parent);
    box.setTextFormat(Qt::PlainText);
    const QAbstractButton* const saves = box.addButton(save, QMessageBox::AcceptRole);
    const QAbstractButton* const goesOn =
        goOn.isEmpty() ? nullptr : box.addButton(goOn, QMessageBox::AcceptRole);
    box.setEscapeButton(box.addButton(QMessageBox::Cancel));
    box.setDefaultButton(qobject_cast<QPushButton*>(box.buttons().constFirst()));
    box.exec();
    const QAbstractButton* const clicked = box.clickedButton();
    if (clicked == saves)
        return SaveAnswer::save;
    return clicked != nullptr && clicked == goesOn ? SaveAnswer::goOn : SaveAnswer::cancel;
}

void centreOnScreen(QWidget& window) {
    const QRect screen = window.screen()->availableGeometry();
    window.move(screen.left() + (screen.width() - window.width()) / 2,
                screen.top() + (screen.height() - window.height()) / 2);
}

} // namespace wendmark
