#include "ui/main/FileCommands.h"

#include "base/Files.h"
#include "base/Log.h"
#include "commands/TourDocument.h"
#include "platform/Gate.h"
#include "platform/QtDesktop.h"
#include "platform/RecentTours.h"
#include "platform/Strings.h"
#include "ui/Messages.h"
#include "ui/ProgramParts.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/dialogs/Wizard.h"
#include "ui/dialogs/frmEarlierSaves.h"
#include "ui/dialogs/frmSelectFolderOpen.h"
#include "ui/dialogs/frmSelectFolderSave.h"
#include "ui/dialogs/frmWizard1.h"
#include "ui/main/RecentMenu.h"
#include "ui/main/UnsavedWork.h"

#include <QAction>
#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QWidget>
#include <utility>

namespace wendmark {

namespace {

QString shownPath(const QString& path) {
    return onOneLine(QDir::toNativeSeparators(path));
}

} // namespace

FileCommands::FileCommands(const ProgramParts& parts, UnsavedWork& unsaved, QWidget& window,
                           std::function<bool()> mayLeaveWords)
    : QObject(&window)
    , m_parts(parts)
    , m_document(parts.document)
    , m_unsaved(unsaved)
    , m_window(window)
    , m_mayLeaveWords(std::move(mayLeaveWords)) {}

void FileCommands::newTour() {
    if (m_document.model().tourChanged &&
        !askYesNo(&m_window, tr("Are you sure you want to overwrite the current tour?"),
                  QStringLiteral("Wendmark : Abandon changes"), QMessageBox::Critical))
        return;
    if (!m_mayLeaveWords())
        return;
    emit filesLeaving();
    m_document.beginNew();
    askWizard();
}

void FileCommands::openTour() {
    if (!mayLeaveTour())
        return;
    m_document.beginOpening();
    emit defaultsSet();
    frmSelectFolderOpen dialog(m_document.workspace().folders(), m_document.shownTourPath(), &m_window);
    runDialog(dialog);
    if (dialog.folderChosen()) {
        openFolder(dialog.folder());
        return;
    }
    m_document.cancelOpening();
    if (!m_document.isAsSaved())
        emit noticeShown(tr("Author, launching points and sizes were reset. Undo brings them back."));
}

void FileCommands::save() {
    emit noticeShown({}); // Of the command before.
    if (!m_document.hasFolder()) {
        saveAs();
    } else if (mayOverwrite()) {
        const BusyPointer busy(m_parts.desktop);
        m_unsaved.noteSaved(m_document.save());
        noteTour();
    }
}

void FileCommands::saveAs() {
    frmSelectFolderSave dialog(m_document.workspace().folders(), &m_window);
    runDialog(dialog);
    if (!dialog.refusedFolder().isEmpty())
        m_document.showRefusedFolder(toUtf8(dialog.refusedFolder()));
    if (dialog.folderChosen())
        saveInto(toUtf8(dialog.folder()));
}

void FileCommands::openEarlierSave() {
    frmEarlierSaves dialog(m_parts.savedScripts, m_document.workspace().tourPath(), &m_window);
    runDialog(dialog);
    if (dialog.chosen().isEmpty() || !mayOpenSaveOf(dialog.chosenTour()) || !m_mayLeaveWords())
        return;
    const files::Contents script = files::read(toUtf8(dialog.chosen()));
    m_document.log().skip(script.outcome);
    emit tourLeaving();
    emit noticeShown(
        m_document.openScript(script.bytes)
            ? tr("The earlier save is open, and not saved again. Undo brings back what was here.")
            : tr("The earlier save cannot be read any more."));
}

void FileCommands::openTourIn(const QString& folder) {
    if (!mayOpenTourIn(folder, m_document.workspace().folders(), &m_window) ||
        !holdsTourToOpen(folder, &m_window) || !mayLeaveTour())
        return;
    m_document.beginOpening();
    emit defaultsSet();
    openFolder(folder);
    wizardFirstRun = false;
}

void FileCommands::offerLastTours(QAction& item) {
    auto* const menu = new RecentMenu(m_parts.settings, &m_window);
    item.setMenu(menu);
    connect(menu, &RecentMenu::tourChosen, this, [this](const QString& folder) {
        m_parts.gate.run(*this, [this, folder] {
            emit noticeShown({}); // Of the command before.
            openTourIn(folder);
        });
    });
}

void FileCommands::takeTours(const QStringList& tours) {
    if (tours.isEmpty())
        return;
    m_document.log().note("handed over by another start: " + toUtf8(tours.join(QLatin1String(", "))));
    // Nothing was entered on the wizard's first page; the tour is an answer to its question.
    if (auto* const wizard = qobject_cast<frmWizard1*>(QApplication::activeModalWidget()))
        wizard->reject();
    if (!m_parts.gate.isOpen())
        emit noticeShown(tr("%1 opens when the present command has ended.").arg(shownPath(tours.first())));
    m_parts.gate.run(*this, [this, tours] {
        emit noticeShown({});
        openHandedOver(tours.first());
        nameLeftOut(tours.mid(1));
    });
}

void FileCommands::nameLeftOut(const QStringList& tours) {
    if (tours.isEmpty())
        return;
    QStringList names;
    for (const QString& tour : tours)
        names.append(shownPath(tour));
    const QString text =
        tr("One tour is open at a time. Not opened: %1").arg(names.join(QLatin1String(", ")));
    m_document.log().note(toUtf8(text));
    emit noticeShown(text);
}

void FileCommands::skipWizard(const QString& tour) {
    wizardFirstRun = false;
    if (!tour.isEmpty())
        nameLeftOut({tour});
}

void FileCommands::openHandedOver(const QString& folder) {
    const std::string path = toUtf8(folder);
    if (m_document.hasFolder() && files::same(path, m_document.workspace().tourPath())) {
        emit noticeShown(tr("This tour is open already."));
        return;
    }
    openTourIn(folder);
    if (!files::same(path, m_document.workspace().tourPath()))
        emit noticeShown(tr("Not opened: %1").arg(shownPath(folder)));
}

void FileCommands::askWizard() {
    const bool firstRun = std::exchange(wizardFirstRun, false);
    const WizardEnd end = runWizard(firstRun, m_document.workspace().folders(), RecentTours(m_parts.settings),
                                    m_parts.desktop, &m_window);
    if (!end.refusedFolder.empty())
        m_document.showRefusedFolder(end.refusedFolder);
    if (end.answers && end.answers->newTour) {
        emit tourLeaving();
        emit defaultsSet();
        m_unsaved.noteSaved(m_document.finishNew(end.answers->tourTitle, end.answers->tourPath));
        noteTour();
        emit newTourMade();
        return;
    }
    m_document.cancelNew();
    if (end.answers && end.answers->tourPath.empty())
        openTour();
    else if (end.answers)
        openTourIn(toQString(end.answers->tourPath));
    if (firstRun && m_document.workspace().tourPath().empty() && m_document.model().stopCount() > 0)
        m_document.showCurrentStop(); // Of the templates' tour, which has no pages yet.
}

void FileCommands::openFolder(const QString& folder) {
    emit tourLeaving();
    const Opening opening = m_document.finishOpening(toUtf8(folder));
    m_unsaved.noteOpened();
    if (opening.hasTitle)
        noteTour();
    if (!opening.complete)
        emit noticeShown(
            tr("Something of the tour could not be read. The log says what; saving leaves it alone."));
    else if (!opening.hasTitle)
        emit noticeShown(
            tr("The script of this folder holds no tour. Its files are left alone until you agree."));
}

void FileCommands::saveInto(const std::string& folder) {
    m_parts.gate.setSaveInProgress(true);
    const BusyPointer busy(m_parts.desktop);
    m_unsaved.noteSaved(m_document.saveAs(folder));
    noteTour();
    m_parts.gate.setSaveInProgress(false);
}

bool FileCommands::mayLeaveTour() {
    return (!m_document.model().tourChanged ||
            askYesNo(&m_window, tr("Do you really want to open a new tour without saving this one?") +
                                    QStringLiteral("\r\n") +
                                    tr("All changes to the current Tour will be lost."))) &&
           m_mayLeaveWords();
}

/// The tour on screen is now among those that the author has worked on last.
void FileCommands::noteTour() {
    RecentTours(m_parts.settings)
        .note(toQString(m_document.workspace().tourPath()), toQString(m_document.model().tourTitle),
              QDateTime::currentDateTime());
}

/// A save of another tour finds the pages and pictures of this one, and its folder when it is saved again.
bool FileCommands::mayOpenSaveOf(const QString& tour) {
    const QString folder = toQString(m_document.workspace().tourPath());
    return tour == folder || folder.isEmpty() ||
           askYesNo(&m_window,
                    tr("This is a save of the tour in %1. Do you want to put it in the place of the "
                       "tour in %2?")
                        .arg(tour, folder));
}

/// The script that opened as no tour may be all that is left of one.
bool FileCommands::mayOverwrite() {
    if (m_document.mayOverwrite())
        return true;
    const QString folder = toQString(m_document.workspace().tourPath());
    if (!askYesNo(&m_window, tr("The script in %1 holds no tour. Do you want to save the tour that you see "
                                "over the files of this folder?")
                                 .arg(folder)))
        return false;
    m_unsaved.keepScript();
    m_document.agreeToOverwrite();
    return true;
}

} // namespace wendmark
