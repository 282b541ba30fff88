#include "model/SiteLists.h"
#include "model/Workspace.h"
#include "platform/BrowserView.h"
#include "platform/RecentTours.h"
#include "platform/Strings.h"
#include "publish/StopPages.h"
#include "recovery/SavedScripts.h"
#include "ui/check/frmCheck.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/dialogs/WizardState.h"
#include "ui/dialogs/frmAbout.h"
#include "ui/dialogs/frmEarlierSaves.h"
#include "ui/dialogs/frmHelp.h"
#include "ui/dialogs/frmLaunch.h"
#include "ui/dialogs/frmMessage.h"
#include "ui/dialogs/frmOptions.h"
#include "ui/dialogs/frmPageFiles.h"
#include "ui/dialogs/frmPrint.h"
#include "ui/dialogs/frmPropTab.h"
#include "ui/dialogs/frmRecover.h"
#include "ui/dialogs/frmRenameFile.h"
#include "ui/dialogs/frmSelectFolderOpen.h"
#include "ui/dialogs/frmSelectFolderSave.h"
#include "ui/dialogs/frmSplash.h"
#include "ui/dialogs/frmWizard1.h"
#include "ui/dialogs/frmWizard2.h"
#include "ui/dialogs/frmWizard3.h"
#include "ui/find/frmFind.h"
#include "ui/looks/Looks.h"
#include "ui/main/Editors.h"
#include "ui/main/SidePanels.h"
#include "ui/main/frmMain.h"
#include "ui/narration/frmNarEdit.h"
#include "ui/site/frmBrowser.h"
#include "ui/site/frmWarnURL.h"
#include "ui/support/PageWithParts.h"
#include "ui/support/UiFixture.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDialog>
#include <QDir>
#include <QDockWidget>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTcpServer>
#include <QTest>
#include <filesystem>

namespace wendmark {

namespace {

using test::onNextDialog;
using test::press;
using test::UiFixture;

constexpr QSize laptop(1366, 768);
constexpr QSize usual(800, 700);
constexpr int patience = 30000;     // Milliseconds that a page may take.
constexpr int paintingTime = 150;   // Milliseconds in which something changes if a window is not complete.
constexpr int mostPaintings = 8;    // A clock or a moon may go on changing.
constexpr qreal largeFontSize = 18; // Points.

void letTimePass(int milliseconds) {
    test::waitUntil([] { return false; }, milliseconds);
}

/// Takes the pictures of one run of the program into one folder.
class Photographer final {
public:
    explicit Photographer(const QString& folder) : m_folder(folder), m_window(m_program.parts()) {
        std::filesystem::copy(WENDMARK_ASSETS "/Help", m_program.scratch / "Help");
        m_window.load(m_program.path(QStringLiteral("MyTours/Sample")));
        m_window.show();
        waitUntilLoaded();
    }

    bool takeAll() {
        takeMainWindow();
        takeStopList();
        takeStopPanel();
        takeMenus();
        takeLastTours();
        takeDialogs();
        takeMessages();
        takeHelp();
        takeFindWindow();
        takeCheckWindow();
        takeNarrationEditor();
        takeSiteEditor();
        return m_allWritten;
    }

private:
    void take(QWidget& window, const QString& name) {
        m_allWritten = QTest::qWaitForWindowExposed(&window) && m_allWritten;
        const QImage picture = completePicture(window);
        m_allWritten = picture.save(m_folder.filePath(name + QStringLiteral(".png"))) && m_allWritten;
    }

    /// The window once it has stopped changing: folders are read and pages painted in the background.
    static QImage completePicture(QWidget& window) {
        QImage former;
        QImage picture;
        for (int painting = 0; painting < mostPaintings; ++painting) {
            letTimePass(paintingTime);
            picture = window.grab().toImage();
            if (picture == former)
                break;
            former = picture;
        }
        return picture;
    }

    void takeAt(QWidget& window, const QSize& size, const QString& name) {
        window.resize(size);
        take(window, name);
    }

    /// Twice: at its smallest size and at the size of a small laptop's screen.
    void takeInTwoSizes(QWidget& window, const QString& name) {
        takeAt(window, QSize(0, 0), name + QStringLiteral("-smallest"));
        takeAt(window, laptop, name + QStringLiteral("-laptop"));
    }

    /// Beside the tour on a usual screen and, because the author wants it so, in a small window.
    void takeStopList() {
        m_program.document.goToStop(3);
        m_program.document.insertStop();
        waitUntilLoaded();
        takeAt(m_window, laptop, QStringLiteral("stopList-laptop"));
        takeAt(m_window, QSize(900, 600), QStringLiteral("stopList-hidden"));
        m_window.sides().toggleList();
        take(m_window, QStringLiteral("stopList-small"));
        m_window.sides().toggleList();
        m_program.document.undo();
    }

    /// With a new stop whose page is no address, then at a stop of the sample: alone in a small window,
    /// beside the list on a usual screen, and while the narration editor has the texts.
    void takeStopPanel() {
        showStop(3);
        waitUntilLoaded();
        takeAt(m_window, QSize(1920, 1000), QStringLiteral("stopPanel-desktop"));
        m_window.resize(laptop);
        m_window.sides().toggleStop();
        take(m_window, QStringLiteral("stopPanel-laptop"));
        takeAt(m_window, QSize(900, 600), QStringLiteral("stopPanel-small"));
        m_window.resize(laptop);
        m_window.insertStop();
        auto& address = *m_window.findChild<QLineEdit*>(QStringLiteral("txtPanelAddress"));
        address.setText(QStringLiteral("garden"));
        emit address.editingFinished();
        take(m_window, QStringLiteral("stopPanel-noAddress"));
        m_program.document.undo();
        m_window.editNarrationFrame();
        take(m_window, QStringLiteral("stopPanel-elsewhere"));
        m_window.findChild<QWidget*>(QStringLiteral("frmNarEdit"))->hide();
        m_window.findChild<QDockWidget*>(QStringLiteral("stopPanel"))->close();
    }

    void takeMainWindow() {
        takeInTwoSizes(m_window, QStringLiteral("frmMain-opening"));
        showStop(3);
        waitUntilLoaded();
        takeAt(m_window, usual, QStringLiteral("frmMain-stop"));
        takeInTwoSizes(m_window, QStringLiteral("frmMain-stop"));
        takeNotice();
        takeBusyMainWindow();
    }

    /// Behind the stop's tag, what the program has to say, and that the tour is not saved.
    void takeNotice() {
        m_program.model.tourAuthor = "Ann";
        m_program.document.markChanged();
        onNextDialog([](QDialog& question) { press(question, QStringLiteral("Yes")); });
        onNextDialog([](QDialog& dialog) { press(dialog, QStringLiteral("btnCancel")); });
        m_window.openTour();
        m_allWritten = !test::noticeOf(m_window).isEmpty() && m_allWritten;
        takeInTwoSizes(m_window, QStringLiteral("frmMain-notice"));
        m_window.undo();
        waitUntilLoaded();
    }

    void takeBusyMainWindow() {
        QTcpServer silent; // Takes connections and never answers.
        silent.listen(QHostAddress::LocalHost);
        std::string& address = m_program.model.stops.at(2).stopURL;
        const std::string former = address;
        address = "http://127.0.0.1:" + std::to_string(silent.serverPort()) + "/";
        makeStopPages(m_program.tour, 2, 2);
        showStop(2);
        takeInTwoSizes(m_window, QStringLiteral("frmMain-busy"));
        m_allWritten = browser().isBusy() && m_allWritten;
        m_window.stopLoading();
        address = former;
        makeStopPages(m_program.tour, 2, 2);
        m_program.model.currentStop = 0;
        m_window.refresh();
        waitUntilLoaded();
    }

    void takeMenus() {
        for (const QAction* title : m_window.menuBar()->actions()) {
            QMenu& menu = *title->menu();
            menu.popup(m_window.mapToGlobal(QPoint()));
            menu.setActiveAction(menu.actions().first());
            take(menu, QStringLiteral("menu-") + title->text().remove(QLatin1Char('&')));
            menu.close();
        }
    }

    void takeLastTours() {
        lastToursInSettings();
        QMenu& menu = *m_window.findChild<QAction*>(QStringLiteral("mnuFileRecent"))->menu();
        menu.popup(m_window.mapToGlobal(QPoint()));
        menu.setActiveAction(menu.actions().first());
        take(menu, QStringLiteral("menu-File-Open Recent"));
        menu.close();
    }

    void lastToursInSettings() {
        RecentTours tours(m_program.settings);
        for (const RecentTour& tour : lastTours())
            tours.note(tour.folder, tour.title, tour.time);
    }

    void takeDialogs() {
        WizardState state;
        state.wizardTourName = "Rivers of Europe";
        state.wizardTourTitle = "The rivers of Europe, from their springs to the sea";
        const Workspace& workspace = m_program.workspace;
        frmSplash splash;
        takeDialog(splash);
        const QString sample = m_program.path(QStringLiteral("MyTours/Sample"));
        frmWizard1 first(state, {}, sample);
        first.setObjectName(QStringLiteral("frmWizard1-without-tours"));
        takeDialog(first);
        frmWizard1 later(state, lastTours(), sample);
        takeDialog(later);
        frmWizard2 second(state, true);
        takeDialog(second);
        frmWizard3 third(state, workspace.folders(), m_program.desktop);
        takeDialog(third);
        frmSelectFolderOpen open(workspace.folders(), workspace.tourPath());
        takeDialog(open);
        frmSelectFolderSave save(workspace.folders());
        takeDialog(save);
        frmAbout about(m_program.registry);
        takeDialog(about);
        frmRecover recover({1700000000, workspace.tourPath(), m_program.model, {}});
        takeDialog(recover);
        const std::string saves = m_program.scratch / "state/scripts";
        for (const int stops : {3, 12})
            keepSavedScript(saves, workspace.tourPath(), test::scriptOfStops(stops), 1700000000 + stops).ok();
        frmEarlierSaves earlier(saves, workspace.tourPath());
        takeDialog(earlier);
        frmPageFiles files(test::pageWithParts());
        takeDialog(files);
        takeSettingsDialogs();
        takeSmallDialogs();
    }

    /// Two that are there, and one that is not.
    QList<RecentTour> lastTours() {
        const QDateTime noon(QDate(2026, 11, 20), QTime(12, 0));
        return {
            {m_program.makeTour(QStringLiteral("rivers"), 3),
             QStringLiteral("The rivers of Europe, from their springs to the sea"), noon},
            {m_program.path(QStringLiteral("MyTours/Sample")), QStringLiteral("How a Tour Is Made"),
             noon.addDays(-1)},
            {m_program.path(QStringLiteral("MyTours/castles")), QStringLiteral("Castles"), noon.addDays(-2)}};
    }

    void takeSettingsDialogs() {
        frmOptions options(m_program.options);
        takeDialog(options);
        frmLaunch launching(m_program.document, m_program.desktop);
        takeDialog(launching);
        frmPrint print(m_program.document, {}, m_program.desktop);
        takeDialog(print);
        for (int tab = 0; tab < 5; ++tab) {
            frmPropTab properties(m_program.document, {}, m_program.desktop);
            properties.findChild<QTabWidget*>(QStringLiteral("TabStrip1"))->setCurrentIndex(tab);
            properties.setObjectName(QStringLiteral("frmPropTab-%1").arg(tab));
            takeDialog(properties);
        }
    }

    void takeSmallDialogs() {
        frmRenameFile reserved(
            "fr-logo.gif",
            "which is essential for correct operation of the tour, and cannot be overwritten or replaced.");
        takeDialog(reserved);
        frmRenameFile taken("notes.htm", {});
        taken.setObjectName(QStringLiteral("frmRenameFile-without-reason"));
        takeDialog(taken);
        frmMessage message(QStringLiteral("Wendmark - HTML Editor not specified"),
                           QStringLiteral("To use this feature you have to specify your favorite HTML editor:"
                                          "\r\n  Go to the Wendmark main window."
                                          "\r\n  Select Options from the View menu."
                                          "\r\n  Specify the path to the editor's EXE file."));
        takeDialog(message);
        frmMessage failed(
            QStringLiteral("Wendmark - Frame Test"),
            QStringLiteral("Test Failed.... You cannot use this site in a tour, because it cannot "
                           "be viewed inside a frame.\r\n\r\n"));
        failed.setObjectName(QStringLiteral("frmMessage-with-offer"));
        failed.addReason(QStringLiteral("Its server refuses frames of other sites: X-Frame-Options: DENY"));
        failed.addOffer(QStringLiteral("&Make a Card"), {});
        takeDialog(failed);
        frmWarnURL warning(
            m_program.options, QStringLiteral("https://www.brenholt.example/history/bridges.htm"),
            QStringLiteral("https://www.brenholt.example/search?words=old+bridges+of+the+upper+"
                           "valley&page=2&order=newest&language=en"));
        takeDialog(warning);
    }

    /// Twice: as it opens, and at its smallest size.
    void takeDialog(QDialog& dialog) {
        onNextDialog([this](QDialog& shown) {
            take(shown, shown.objectName());
            takeAt(shown, QSize(0, 0), shown.objectName() + QStringLiteral("-smallest"));
            shown.reject();
        });
        runDialog(dialog);
    }

    void takeMessages() {
        takeNextMessage("stop-not-deleted");
        m_window.deleteStop();
        takeNextMessage("stop-not-editable");
        m_window.editSiteFrame();
        m_program.model.tourChanged = true;
        takeNextMessage("quit");
        m_window.close();
        takeNextMessage("new");
        m_window.newTour();
        takeNextMessage("open");
        m_window.openTour();
        m_program.model.tourChanged = false;
        takeNextMessage("line-error");
        m_program.desktop.showLineError("Premature end of file in line 12");
        takeNextMessage("no-system-information");
        frmAbout about(m_program.registry);
        press(about, QStringLiteral("cmdSysInfo"));
        takeDialogMessages();
    }

    void takeDialogMessages() {
        WizardState state;
        frmWizard2 unnamed(state, true);
        takeNextMessage("name-missing");
        press(unnamed, QStringLiteral("btnNext"));
        state.wizardTourName = "SampleTwo";
        frmWizard3 reserved(state, m_program.workspace.folders(), m_program.desktop);
        takeNextMessage("sample-reserved");
        press(reserved, QStringLiteral("btnNext"));
        takeNextMessage("new-folder");
        press(reserved, QStringLiteral("btnCreate"));
    }

    void takeNextMessage(const char* name) {
        onNextDialog([this, name](QDialog& message) {
            take(message, QStringLiteral("message-") + QLatin1String(name));
            message.reject();
        });
    }

    void takeHelp() {
        m_window.showHelp();
        auto& help = *m_window.findChild<frmHelp*>();
        waitUntilLoaded(*help.findChild<BrowserView*>());
        take(help, QStringLiteral("frmHelp"));
        takeInTwoSizes(help, QStringLiteral("frmHelp"));
    }

    void takeFindWindow() {
        m_window.editors().findInTour();
        auto& find = *m_window.findChild<frmFind*>();
        find.findChild<QLineEdit*>(QStringLiteral("txtFind"))->setText(QStringLiteral("the"));
        find.findChild<QPushButton*>(QStringLiteral("btnFindNext"))->click();
        take(find, QStringLiteral("frmFind"));
        takeInTwoSizes(find, QStringLiteral("frmFind"));
        find.reject();
    }

    void takeCheckWindow() {
        m_window.editors().checkStops();
        auto& check = *m_window.findChild<frmCheck*>();
        QTRY_VERIFY_WITH_TIMEOUT(!m_program.check.isRunning(), patience);
        take(check, QStringLiteral("frmCheck"));
        takeInTwoSizes(check, QStringLiteral("frmCheck"));
        check.reject();
    }

    void takeNarrationEditor() {
        m_program.model.autoInstruction = false;
        showStop(3);
        waitUntilLoaded();
        m_program.model.stops.at(3).stopNarration +=
            "A word that is spelt wrng, an entity &eacute; and <!-- a comment -->.\r\n";
        m_window.editNarrationFrame();
        auto& editor = *m_window.findChild<frmNarEdit*>();
        waitUntilLoaded(*editor.findChild<BrowserView*>());
        take(editor, QStringLiteral("frmNarEdit"));
        takeInTwoSizes(editor, QStringLiteral("frmNarEdit"));
        auto* const words = editor.findChild<QPlainTextEdit*>(QStringLiteral("txtText"));
        words->insertPlainText(QStringLiteral("<IMG SRC=\"fr-logo.gif\" ALT=\"An eel\">"));
        takeInTwoSizes(editor, QStringLiteral("frmNarEdit-picture"));
        words->undo();
        editor.findChild<QPushButton*>(QStringLiteral("btnPreview"))->click();
        takeAt(editor, QSize(0, 0), QStringLiteral("frmNarEdit-folded-smallest"));
        takeNextMessage("nothing-to-link");
        editor.findChild<QPushButton*>(QStringLiteral("btnHLink"))->click();
        words->selectAll();
        takeNextMessage("address-of-link");
        editor.findChild<QPushButton*>(QStringLiteral("btnHLink"))->click();
        editor.reject();
    }

    void takeSiteEditor() {
        const std::vector<Bookmark> bookmarks = {
            {"https://www.brenholt.example/atlas/rivers.htm", "Good maps, slow server", 65280},
            {"https://www.brenholt.example/atlas/lakes.htm", "For stop 4 or 5", 65280},
            {"https://www.brenholt.example/history/bridges.htm", "Ask for permission first", 255},
            {"https://www.brenholt.example/history/floods.htm", "", white},
            {"https://www.brenholt.example/about.htm", "Says who wrote it all", 16776960}};
        test::writeFile(m_program.workspace.workingFile("goodlist.txt"), bookmarksFile({bookmarks, {}}));
        m_window.resize(usual);
        showStop(3);
        waitUntilLoaded();
        m_window.editSiteFrame();
        auto& editor = *m_window.findChild<frmBrowser*>();
        waitUntilLoaded(*editor.findChild<BrowserView*>());
        auto& grid = *editor.findChild<QTableView*>(QStringLiteral("grdResearch"));
        grid.selectRow(2);
        take(editor, QStringLiteral("frmBrowser"));
        takeInTwoSizes(editor, QStringLiteral("frmBrowser"));
        editor.resize(usual);
        editor.findChild<QPushButton*>(QStringLiteral("btnEdit"))->click();
        take(editor, QStringLiteral("frmBrowser-note"));
        takeAt(editor, QSize(0, 0), QStringLiteral("frmBrowser-note-smallest"));
        editor.findChild<QPushButton*>(QStringLiteral("btnOK"))->click();
        m_window.editSiteFrame();
        waitUntilLoaded(*editor.findChild<BrowserView*>());
        onNextDialog([this](QDialog& test) {
            take(test, QStringLiteral("frmTestFrame"));
            test.accept();
        });
        editor.findChild<QAction*>(QStringLiteral("mnuTestFrame"))->trigger();
        editor.close();
    }

    void showStop(std::int16_t n) {
        m_program.model.currentStop = n;
        m_window.refresh();
    }

    BrowserView& browser() const { return *m_window.findChild<BrowserView*>(QStringLiteral("broMain")); }
    void waitUntilLoaded() { waitUntilLoaded(browser()); }
    void waitUntilLoaded(const BrowserView& view) {
        letTimePass(paintingTime); // Until the engine has begun.
        m_allWritten = test::waitUntil([&] { return !view.isBusy(); }, patience) && m_allWritten;
    }

    QDir m_folder;
    UiFixture m_program;
    frmMain m_window;
    bool m_allWritten = true;
};

void applyOptions(const QCommandLineParser& options) {
    applyLooks(options.isSet(QStringLiteral("dark")));
    if (options.isSet(QStringLiteral("large-font"))) {
        QFont font = QApplication::font();
        font.setPointSizeF(largeFontSize);
        QApplication::setFont(font);
    }
}

} // namespace

} // namespace wendmark

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QCommandLineParser options;
    options.setApplicationDescription(QStringLiteral("Takes pictures of every window and dialog"));
    options.addHelpOption();
    options.addOption({QStringLiteral("dark"), QStringLiteral("In dark")});
    options.addOption({QStringLiteral("large-font"), QStringLiteral("With text of 18 points")});
    options.addPositionalArgument(QStringLiteral("folder"), QStringLiteral("Where the pictures go"));
    options.process(application);
    if (options.positionalArguments().size() != 1 ||
        !QDir().mkpath(options.positionalArguments().constFirst()))
        options.showHelp(1);

    wendmark::applyOptions(options);
    const bool allWritten = wendmark::Photographer(options.positionalArguments().constFirst()).takeAll();
    return allWritten && wendmark::test::dialogsExpected() == 0 ? 0 : 1;
}
