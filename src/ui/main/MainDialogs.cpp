#include "ui/main/MainDialogs.h"

#include "commands/TourDocument.h"
#include "platform/Gate.h"
#include "platform/Settings.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/dialogs/LastFolder.h"
#include "ui/dialogs/frmAbout.h"
#include "ui/dialogs/frmLaunch.h"
#include "ui/dialogs/frmOptions.h"
#include "ui/dialogs/frmPrint.h"
#include "ui/dialogs/frmPropTab.h"
#include "ui/main/MainStatusBar.h"

#include <utility>

namespace wendmark {

MainDialogs::MainDialogs(ProgramParts parts, MainStatusBar& statusBar, QWidget& window)
    : QObject(&window), m_parts(std::move(parts)), m_statusBar(statusBar), m_window(window) {}

void MainDialogs::run(std::function<void()> command) {
    m_parts.gate.run(*this, [this, command = std::move(command)] {
        m_statusBar.showNotice({}); // Of the command before.
        command();
    });
}

void MainDialogs::printTourScript() {
    run([this] {
        frmPrint dialog(m_parts.document, m_logoFile, m_parts.desktop, &m_window);
        connect(&dialog, &frmPrint::printedToFile, &m_statusBar, &MainStatusBar::showPrinted);
        runDialog(dialog);
    });
}

void MainDialogs::editTourProperties() {
    run([this] {
        LastFolder logos(m_parts.settings, mainSettings::logoFolder, m_parts.document.workspace(),
                         QStandardPaths::PicturesLocation);
        frmPropTab dialog(m_parts.document, m_logoFile, m_parts.desktop, &m_window);
        dialog.setLogoFolder(logos);
        runDialog(dialog);
        m_logoFile = dialog.logoFile();
        m_parts.document.showCurrentStop();
    });
}

void MainDialogs::editOptions() {
    run([this] {
        frmOptions dialog(m_parts.options, &m_window);
        runDialog(dialog);
    });
}

void MainDialogs::showLaunchingInformation() {
    run([this] {
        frmLaunch dialog(m_parts.document, m_parts.desktop, &m_window);
        connect(&dialog, &frmLaunch::printedToFile, &m_statusBar, &MainStatusBar::showPrinted);
        runDialog(dialog);
    });
}

void MainDialogs::showAbout() {
    run([this] {
        frmAbout dialog(m_parts.registry, &m_window);
        runDialog(dialog);
    });
}

} // namespace wendmark
