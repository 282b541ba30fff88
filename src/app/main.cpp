#include "base/Files.h"
#include "base/Log.h"
#include "commands/TourDocument.h"
#include "maker.h"
#include "model/Options.h"
#include "platform/ApplicationFolder.h"
#include "platform/BrowserView.h"
#include "platform/FileLog.h"
#include "platform/Gate.h"
#include "platform/Icons.h"
#include "platform/QtDesktop.h"
#include "platform/Registry.h"
#include "platform/SettingsStore.h"
#include "platform/SingleProgram.h"
#include "platform/SpellChecker.h"
#include "platform/StateFolder.h"
#include "platform/Strings.h"
#include "platform/TourArguments.h"
#include "recovery/RecoveryKeeper.h"
#include "recovery/SavedScripts.h"
#include "ui/check/StopCheck.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/dialogs/FolderEntry.h"
#include "ui/dialogs/TourFileNames.h"
#include "ui/dialogs/frmSplash.h"
#include "ui/looks/Looks.h"
#include "ui/main/FileCommands.h"
#include "ui/main/frmMain.h"
#include "ui/site/HtmlEditor.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QStandardPaths>
#include <QTimer>
#include <QWebEngineProfile>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace {

using namespace wendmark;

constexpr int splashPaintingTime = 100; // Milliseconds.

void prepareApplication(QCommandLineParser& parser, const QApplication& application) {
    QApplication::setApplicationName(QStringLiteral("Wendmark"));
    QApplication::setApplicationVersion(QLatin1String(programVersion));
    QApplication::setDesktopFileName(QStringLiteral("example.brenholt.Wendmark"));
    QApplication::setWindowIcon(programIcon());
    new Looks(QApplication::instance());
    QApplication::setQuitOnLastWindowClosed(
        false); // The wizard comes and goes before the main window is shown.
    parser.setApplicationDescription(QObject::tr("Authoring tool for guided web tours"));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("tour"),
                                 QObject::tr("Folder of a tour to open, or its script.txt"),
                                 QStringLiteral("[tour...]"));
    parser.process(application);
}

void warnWithoutTemplates(const Workspace& workspace, Log& log) {
    if (!fileExists(workspace.templateFile("page.htm")))
        log.fail("the Template folder is missing or empty: " + workspace.folders().templatePath);
}

ApplicationFolder applicationFolder(Log& log) {
    ApplicationFolder folder =
        findApplicationFolder(QApplication::applicationDirPath(),
                              QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
    log.skip(folder.outcome);
    return folder;
}

/// Shows the splash window and makes the main window behind it, so that nobody waits for that without a
/// window.
void showSplash(std::function<void()> makeWindow) {
    frmSplash splash;
    const auto make = [&makeWindow] {
        if (makeWindow)
            std::exchange(makeWindow, {})();
    };
    QTimer timer;
    timer.setSingleShot(true);
    timer.callOnTimeout(make);
    timer.start(splashPaintingTime);
    runDialog(splash);
    make(); // The author was quicker.
}

/// With the tour that the program was started with, and then those that later starts bring.
void showWindow(frmMain& window, SingleProgram& program, QStringList tours) {
    const auto takeTours = [&window, &program] { window.files().takeTours(program.takeTours()); };
    if (tours.isEmpty())
        tours = program.takeTours(); // A later start was quicker than the splash.
    QObject::connect(&window, &frmMain::closed, QCoreApplication::instance(), &QCoreApplication::quit,
                     Qt::QueuedConnection);
    QObject::connect(&program, &SingleProgram::activationRequested, &window, &frmMain::bringToFront);
    QObject::connect(&program, &SingleProgram::activationRequested, &window, takeTours, Qt::QueuedConnection);
    window.load(tours.value(0));
    window.files().nameLeftOut(tours.mid(1));
    window.show();
    takeTours();
}

} // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QCommandLineParser parser;
    prepareApplication(parser, application);

    FileLog log(FileLog::defaultPath());
    const ApplicationFolder folder = applicationFolder(log);
    const QStringList tours = toursFrom(parser.positionalArguments());
    SingleProgram program(folder.path, stateFolder());
    if (!enterFolder(program, tours))
        return 0;

    Options options;
    Gate gate;
    QtDesktop desktop(gate);
    SettingsStore settings;
    const Registry registry;
    const std::string state = toUtf8(stateFolder());
    const std::string ownName = folderNameFor(toUtf8(folder.path));
    TourDocument document(WorkspaceFolders::inside(toUtf8(folder.path)), desktop, log,
                          files::join(files::join(state, "undo"), ownName));
    document.startProgram(options);
    warnWithoutTemplates(document.workspace(), log);
    std::unique_ptr<QWebEngineProfile> profile;
    RecoveryStore recoveryStore(files::join(files::join(state, "recovery"), ownName), log);
    RecoveryKeeper recovery(document, recoveryStore);
    TourFileNames fileNames(document.workspace());
    HtmlEditor htmlEditor(options, log);
    SpellChecker spelling(log);
    StopCheck check(document, settings);
    std::optional<frmMain> window;
    showSplash([&] {
        profile.reset(makeBrowserProfile(nullptr));
        window.emplace(ProgramParts{document, gate, options, desktop, settings, registry, *profile, recovery,
                                    fileNames, htmlEditor, spelling, check, files::join(state, "scripts")});
    });
    QObject::connect(&gate, &Gate::closedForGood, &program, &SingleProgram::leave);
    showWindow(*window, program, tours);
    return QApplication::exec();
}
