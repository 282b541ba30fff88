#include "ui/main/PlayCommands.h"

#include "base/Log.h"
#include "commands/TourDocument.h"
#include "platform/Gate.h"
#include "platform/QtDesktop.h"
#include "platform/Strings.h"
#include "ui/Messages.h"
#include "ui/ProgramParts.h"
#include "ui/main/FileCommands.h"

#include <QFileInfo>
#include <QUrl>
#include <QWidget>
#include <utility>

namespace wendmark {

namespace {

constexpr const char* firstPage = "playtour.htm";

} // namespace

PlayCommands::PlayCommands(const ProgramParts& parts, FileCommands& files, QWidget& window)
    : QObject(&window), m_parts(parts), m_document(parts.document), m_files(files), m_window(window) {
    m_document.addListener(*this);
}

PlayCommands::~PlayCommands() {
    m_document.removeListener(*this);
}

void PlayCommands::playServed() {
    run([this] {
        if (mayPlay())
            serveAndOpen();
    });
}

void PlayCommands::playFromDisk() {
    run([this] {
        if (mayPlay())
            open(QUrl::fromLocalFile(pathOf(firstPage)));
    });
}

void PlayCommands::openTourFolder() {
    run([this] {
        if (hasSavedFolder(tr("&Save")))
            open(QUrl::fromLocalFile(toQString(m_document.workspace().tourPath())));
    });
}

void PlayCommands::run(std::function<void()> command) {
    m_parts.gate.run(*this, std::move(command));
}

void PlayCommands::serveAndOpen() {
    const Outcome served = m_server.serve(m_document.workspace().tourPath());
    m_document.log().skip(served);
    if (served.ok())
        open(QUrl(toQString(m_server.addressOf(firstPage))));
    else
        showMessage(&m_window,
                    tr("The tour cannot be played from a web server: %1.").arg(toQString(served.message())),
                    programTitle(), QMessageBox::Warning);
}

/// Without a folder the author is asked to save; false: there still is none.
bool PlayCommands::hasSavedFolder(const QString& save) {
    if (!m_document.hasFolder() &&
        askToSave(&m_window, tr("The tour has no folder yet. Save it first?"), save) == SaveAnswer::save)
        m_files.save();
    return m_document.hasFolder();
}

bool PlayCommands::mayPlay() {
    const QString save = tr("&Save and Play");
    if (!hasSavedFolder(save))
        return false;
    const QFileInfo first(pathOf(firstPage));
    if (first.isFile() && m_document.isAsSaved())
        return true;
    const SaveAnswer answer =
        first.isFile() ? askToSave(&m_window,
                                   tr("The browser plays the tour as it was saved, and there are unsaved "
                                      "changes. Save it first?"),
                                   save, tr("&Play What Is Saved"))
                       : askToSave(&m_window,
                                   tr("The tour’s folder holds no %1, with which tours begin. Save it first?")
                                       .arg(QLatin1String(firstPage)),
                                   save);
    if (answer != SaveAnswer::save)
        return answer == SaveAnswer::goOn;
    m_files.save();
    return m_document.isAsSaved();
}

/// Of a file in the tour's folder.
QString PlayCommands::pathOf(const char* name) const {
    return toQString(m_document.workspace().tourPath()) + QLatin1Char('/') + QLatin1String(name);
}

void PlayCommands::open(const QUrl& address) {
    if (!QtDesktop::openOutside(address))
        showMessage(&m_window,
                    tr("No program could be started for it. The address is %1")
                        .arg(address.toDisplayString(QUrl::PreferLocalFile)),
                    programTitle(), QMessageBox::Warning);
}

/// The tour may be another one.
void PlayCommands::tourChangedNow() {
    if (m_server.folder() != m_document.workspace().tourPath())
        m_server.stop();
}

void PlayCommands::tourSaved(bool) {
    tourChangedNow();
}

} // namespace wendmark
