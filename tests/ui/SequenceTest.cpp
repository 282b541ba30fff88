#include "platform/BrowserView.h"
#include "platform/Strings.h"
#include "support/FolderWatch.h"
#include "ui/main/frmMain.h"
#include "ui/support/Patience.h"
#include "ui/support/UiFixture.h"

#include <QCursor>
#include <QDialog>
#include <QDir>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <map>

namespace wendmark {

using test::FolderWatch;
using test::onNextDialog;
using test::patience;
using test::press;
using test::UiFixture;

namespace {

constexpr int stops = 2;

/// The program with a tour of two stops and one launching point open, and a watch over what it does to files.
struct Watched {
    explicit Watched(const QString& opened = QStringLiteral("walk")) : window(program.parts()) {
        program.stepClock = [] { return 0; }; // Only its pauses let events come.
        const QString folder = program.makeTour(QStringLiteral("walk"), stops);
        QDir().mkpath(program.path(QStringLiteral("NewTour")));
        watch = std::make_unique<FolderWatch>(
            std::map<std::string, std::string>{{"NewTour", toUtf8(program.path(QStringLiteral("NewTour")))},
                                               {"walk", toUtf8(folder)},
                                               {"settings", program.scratch.path()}});
        if (opened.isEmpty())
            return;
        window.load(folder);
        program.model.launchURLCount = 1;
        program.model.launchURL[0] = "http://host/";
        events();
    }

    /// What has happened to files since the last call.
    QStringList events() const {
        QStringList all;
        for (const std::string& event : watch->events())
            all.append(toQString(event));
        return all;
    }

    /// Same for a command that ends by noting the tour among the last ones, in the settings.
    QStringList eventsBeforeNoting() const {
        QStringList all = events();
        if (all.isEmpty() || !all.last().contains(QLatin1String("settings/")))
            return {QStringLiteral("the tour is not noted at the end")};
        while (!all.isEmpty() && all.last().contains(QLatin1String("settings/")))
            all.removeLast();
        return all;
    }

    /// The events of a folder that is emptied of what it holds now.
    QStringList emptying() const { return eventsOf(QStringLiteral("-NewTour/"), program.filesOf("NewTour")); }

    /// The events of a working copy that is filled from the templates.
    QStringList filling() const { return eventsOf(QStringLiteral("+NewTour/"), program.filesOf("Template")); }

    /// The events of a saved tour that gets what the working copy holds now: what leads to stops after the
    /// stops, and the script last.
    QStringList copying() const {
        QStringList names = program.filesOf("NewTour");
        for (const char* last :
             {"toc.htm", "framever.htm", "fv1.htm", "_tourlaunch1.htm", "playtour.htm", "script.txt"}) {
            if (names.removeAll(QLatin1String(last)) > 0)
                names.append(QLatin1String(last));
        }
        return eventsOf(QStringLiteral("+walk/"), names);
    }

    UiFixture program;
    frmMain window;
    std::unique_ptr<FolderWatch> watch;

private:
    static QStringList eventsOf(const QString& prefix, const QStringList& names) {
        QStringList all;
        for (const QString& name : names)
            all.append(prefix + name);
        return all;
    }
};

/// Runs `look` the first time that the program handles events: that is where its pauses are.
void onFirstPause(std::function<void()> look) {
    QTimer::singleShot(0, qApp, std::move(look));
}

bool pointerIsBusy() {
    return QApplication::overrideCursor() != nullptr &&
           QApplication::overrideCursor()->shape() == Qt::WaitCursor;
}

/// What differs between a tour that is edited and one that is saved, but for the navigator.
const QStringList twoForms = {"+NewTour/framever.htm", "+NewTour/playtour.htm", "+NewTour/fv1.htm",
                              "+NewTour/_tourlaunch1.htm", "+NewTour/tourwords.js"};
const QStringList finalForm =
    QStringList{"+NewTour/script.txt"} + twoForms + QStringList{"+NewTour/nav3.htm"};
const QStringList editingForm = QStringList{"+NewTour/nav3.htm"} + twoForms;

} // namespace

/// What the commands do, in which order: seen from the files that they write and remove.
class SequenceTest final : public QObject {
    Q_OBJECT

private slots:
    void loadFillsTheWorkingCopyTwiceAndAsksBeforeTheWindowShows() {
        Watched program(QString{});
        onNextDialog([&](QDialog& wizard) {
            QCOMPARE(wizard.objectName(), QString("frmWizard1"));
            QVERIFY(!program.window.isVisible());
            // The load itself, and then the New command that the load ends with.
            QCOMPARE(program.events(), program.filling() + QStringList{"+NewTour/nav3.htm"} +
                                           program.emptying() + program.filling());
            wizard.close();
        });
        program.window.load();
        QVERIFY(!program.window.isVisible());
        // What New has refilled comes back, and the templates' tour gets its pages.
        QStringList happened = program.events();
        const QStringList made =
            QStringList{"+NewTour/nav3.htm", "+NewTour/page1.htm", "+NewTour/page2.htm"} +
            QStringList{"+NewTour/framever.htm", "+NewTour/openhelp.htm", "+NewTour/index.htm"} +
            QStringList{"+NewTour/toc.htm", "+NewTour/tguide.htm", "+NewTour/openhelp.htm"} +
            QStringList{"+NewTour/tourwords.js", "+NewTour/tmpframe.htm"};
        QCOMPARE(happened.mid(happened.size() - made.size()).join(' '), made.join(' '));
        QStringList broughtBack = program.filling();
        for (const char* apart : {"script.txt", "nav3.htm"})
            broughtBack.removeAll(QLatin1String("+NewTour/") + QLatin1String(apart));
        QCOMPARE(happened.mid(0, happened.size() - made.size()).join(' '), broughtBack.join(' '));
        auto& browser = *program.window.findChild<BrowserView*>("broMain");
        QTRY_VERIFY_WITH_TIMEOUT(browser.locationURL().endsWith("NewTour/framever.htm"), patience);
    }

    void closeMakesTheFinalFormStoresEmptiesWaitsAndLeavesTheScript() {
        Watched program;
        program.window.show();
        const QStringList beforeStoring = QStringList{"+NewTour/nav3.htm", "+walk/nav3.htm"} + twoForms;
        bool waited = false;
        onFirstPause([&] {
            waited = true;
            QStringList happened = program.events();
            QCOMPARE(happened.mid(0, beforeStoring.size()), beforeStoring);
            happened = happened.mid(beforeStoring.size());
            const auto firstRemoval =
                std::find_if(happened.begin(), happened.end(),
                             [](const QString& event) { return event.startsWith("-NewTour/"); });
            const qsizetype settingsEvents = std::distance(happened.begin(), firstRemoval);
            QVERIFY(settingsEvents > 0);
            QVERIFY(happened.mid(0, settingsEvents).filter("NewTour/").isEmpty());
            QVERIFY(program.program.filesOf("NewTour").isEmpty());
            QCOMPARE(happened.mid(settingsEvents).filter("-NewTour/").size(),
                     happened.size() - settingsEvents);
        });
        QVERIFY(program.window.close());
        QVERIFY(waited);
        QCOMPARE(program.events(), QStringList{"+NewTour/script1.txt"});
        QVERIFY(!program.program.model.editingMode);
    }

    void saveMakesTheFinalFormWaitsCopiesAndGoesBack() {
        Watched program;
        program.program.model.tourChanged = true;
        bool waited = false;
        onFirstPause([&] {
            waited = true;
            QVERIFY(pointerIsBusy());
            QVERIFY(!program.program.model.editingMode);
            QCOMPARE(program.events(), finalForm + QStringList{"+walk/nav3.htm"});
        });
        program.window.save();
        QVERIFY(waited);
        QVERIFY(!pointerIsBusy());
        QVERIFY(program.program.model.editingMode);
        QVERIFY(!program.program.model.tourChanged);
        QStringList copying = program.copying();
        copying.removeAll("+walk/link.txt"); // Written after the copy.
        QCOMPARE(program.eventsBeforeNoting(), copying + editingForm + QStringList{"+NewTour/link.txt"});
    }

    void saveAsAsksFirstAndLeavesTheLaunchList() {
        Watched program;
        onNextDialog([&](QDialog& dialog) {
            QCOMPARE(dialog.objectName(), QString("frmSelectFolderSave"));
            QVERIFY(!pointerIsBusy());
            QCOMPARE(program.events(), QStringList());
            dialog.findChild<QLineEdit*>("txtTourName")->setText("other");
            press(dialog, "btnOK");
        });
        program.window.saveAs();
        QCOMPARE(program.eventsBeforeNoting(), finalForm + editingForm);
        QVERIFY(!pointerIsBusy());
        QCOMPARE(program.program.workspace.tourPath(), toUtf8(program.program.path("MyTours/other")));
    }

    void saveAsThatIsCancelledWritesNothing() {
        Watched program;
        onNextDialog([](QDialog& dialog) { press(dialog, "btnCancel"); });
        program.window.saveAs();
        QCOMPARE(program.events(), QStringList());
    }

    void openResetsTheDefaultsAsksAndGeneratesEveryPage() {
        Watched program;
        program.program.model.narHeight = 200;
        QStringList expected;
        onNextDialog([&](QDialog& dialog) {
            QCOMPARE(dialog.objectName(), QString("frmSelectFolderOpen"));
            QCOMPARE(program.program.model.narHeight, std::int16_t{100});
            QCOMPARE(program.events(), QStringList());
            expected = program.emptying();
            test::selectFolder(dialog, program.program.path("MyTours/walk"));
            press(dialog, "btnOK");
        });
        program.window.openTour();
        expected += program.filling() +
                    QStringList{"+NewTour/script.txt",   "+NewTour/framever.htm", "+NewTour/script.txt",
                                "+NewTour/page1.htm",    "+NewTour/page2.htm",    "+NewTour/toc.htm",
                                "+NewTour/openhelp.htm", "+NewTour/index.htm",    "+NewTour/tguide.htm",
                                "+NewTour/openhelp.htm", "+NewTour/tourwords.js", "+NewTour/nav3.htm"};
        QCOMPARE(program.eventsBeforeNoting(), expected);
        QVERIFY(!pointerIsBusy());
    }

    void newRefillsAsksGeneratesAndSaves() {
        Watched program;
        const QStringList emptying = program.emptying();
        onNextDialog([&](QDialog& page) {
            QCOMPARE(program.events(), emptying + program.filling());
            page.findChild<QLineEdit*>("txtTourName")->setText("fresh");
            page.findChild<QLineEdit*>("txtTitle")->setText("Fresh");
            press(page, "btnNext");
        });
        onNextDialog([](QDialog& page) { press(page, "btnNext"); });
        program.window.newTour();
        const QStringList noLaunch = {"+NewTour/framever.htm", "+NewTour/playtour.htm", "+NewTour/fv1.htm",
                                      "+NewTour/tourwords.js"};
        QCOMPARE(program.eventsBeforeNoting(),
                 QStringList({"+NewTour/nav3.htm", "+NewTour/page1.htm", "+NewTour/page2.htm",
                              "+NewTour/framever.htm", "+NewTour/openhelp.htm", "+NewTour/index.htm",
                              "+NewTour/toc.htm", "+NewTour/tguide.htm", "+NewTour/openhelp.htm",
                              "+NewTour/tourwords.js"}) +
                     QStringList{"+NewTour/script.txt"} + noLaunch + QStringList{"+NewTour/nav3.htm"} +
                     QStringList{"+NewTour/nav3.htm"} + noLaunch + QStringList{"+NewTour/link.txt"});
        QVERIFY(!pointerIsBusy());
        QVERIFY(!program.program.model.tourChanged);
    }
};

} // namespace wendmark

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    wendmark::SequenceTest tests;
    return QTest::qExec(&tests, argc, argv);
}

#include "SequenceTest.moc"
