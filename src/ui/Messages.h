#pragma once

#include <QMessageBox>
#include <QString>

class QWidget;

/// The program's message boxes. Texts are plain; lines are separated by a line break.
namespace wendmark {

/// Title of a message that has none of its own.
QString programTitle();

/// Shows a message with an OK button and returns when it is closed.
void showMessage(QWidget* parent, const QString& text, const QString& title = programTitle(),
                 QMessageBox::Icon icon = QMessageBox::Information);

/// Asks a question with Yes and No; anything but Yes is no. No is what Esc and Return give.
bool askYesNo(QWidget* parent, const QString& text, const QString& title = programTitle(),
              QMessageBox::Icon icon = QMessageBox::Question);

/// Shows the box until it is left: as wide as its title, inside the screen, and no wider for long addresses
/// and paths, which then may break anywhere. Gives what QMessageBox::exec() does.
int runMessage(QMessageBox& box);

enum class SaveAnswer {
    save,
    goOn, ///< With what was saved last.
    cancel
};

/// Asks whether to save first. `goOn` is the caption of the button that goes on without; empty: there is
/// none. Return gives save, Esc cancel.
SaveAnswer askToSave(QWidget* parent, const QString& text, const QString& save,
                     const QString& goOn = QString());

} // namespace wendmark
