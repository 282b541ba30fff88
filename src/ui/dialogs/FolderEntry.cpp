#include "ui/dialogs/FolderEntry.h"

#include "platform/SingleProgram.h"
#include "platform/Strings.h"
#include "ui/Messages.h"

#include <QCoreApplication>
#include <QDir>
#include <QLocale>
#include <QPushButton>

namespace wendmark {

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("FolderEntry", text);
}

/// Asks whether to do what `goOn` says; Return and Esc quit.
bool askToGoOn(const QString& text, const QString& goOn) {
    QMessageBox box(QMessageBox::Warning, programTitle(), text);
    box.setTextFormat(Qt::PlainText);
    const QPushButton* const goOnButton = box.addButton(goOn, QMessageBox::AcceptRole);
    QPushButton* const quit = box.addButton(tr("&Quit"), QMessageBox::RejectRole);
    box.setDefaultButton(quit);
    box.setEscapeButton(quit);
    runMessage(box);
    return box.clickedButton() == goOnButton;
}

bool askToTakeOver(const SingleProgram& program) {
    const SingleProgram::Holder holder = program.holder();
    const QString text =
        tr("Wendmark on the computer \"%1\" has been working in this folder since %2:\n%3\n\n"
           "If it does not any more, because the folder was copied or its disk was taken away, go on. If it "
           "does, both programs would change the same tour and spoil it.");
    return askToGoOn(text.arg(holder.machine, QLocale().toString(holder.since, QLocale::ShortFormat),
                              QDir::toNativeSeparators(program.folder())),
                     tr("&Go On Here"));
}

bool askToTryAgain(const SingleProgram& program, const QStringList& tours) {
    QString text = tr("Wendmark is already working in this folder but does not answer:\n%1\n\n"
                      "It may be busy. Try again in a while, or end it first.");
    text = text.arg(QDir::toNativeSeparators(program.folder()));
    if (!tours.isEmpty())
        text += tr("\n\nNot opened: %1").arg(onOneLine(QDir::toNativeSeparators(tours.first())));
    return askToGoOn(text, tr("&Try Again"));
}

/// `why` begins the question. True when the author goes on.
bool goOnWithoutLock(SingleProgram& program, const QString& why) {
    const QString text = tr("%1\n%2\n\nYou may go on, but what you do may be lost, and nothing would keep "
                            "another Wendmark from working in this folder, too.");
    if (!askToGoOn(text.arg(why, QDir::toNativeSeparators(program.folder())), tr("&Go On Anyway")))
        return false;
    program.goOnWithoutLock();
    return true;
}

bool takeOver(SingleProgram& program) {
    if (!askToTakeOver(program))
        return false;
    return program.takeOver() ||
           goOnWithoutLock(program, tr("The lock of that program cannot be taken away. Either it is still "
                                       "working in this folder, or the folder cannot be written:"));
}

} // namespace

bool enterFolder(SingleProgram& program, const QStringList& tours) {
    SingleProgram::Entry entry = program.enter(tours);
    while (entry == SingleProgram::Entry::unanswered && askToTryAgain(program, tours))
        entry = program.enter(tours);
    switch (entry) {
    case SingleProgram::Entry::first:
        return true;
    case SingleProgram::Entry::answered:
    case SingleProgram::Entry::unanswered:
        return false;
    case SingleProgram::Entry::elsewhere:
        return takeOver(program);
    case SingleProgram::Entry::unwritable:
        break;
    }
    return goOnWithoutLock(program,
                           tr("Wendmark cannot write into its folder. It is protected or missing, or "
                              "its disk is full:"));
}

} // namespace wendmark
