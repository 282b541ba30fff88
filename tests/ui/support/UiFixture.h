#pragma once

#include "base/Log.h"
#include "model/Options.h"
#include "model/TourContext.h"
#include "model/TourModel.h"
#include "model/Workspace.h"
#include "platform/Gate.h"
#include "platform/QtDesktop.h"
#include "platform/Registry.h"
#include "platform/SettingsStore.h"
#include "platform/SpellChecker.h"
#include "recovery/RecoveryKeeper.h"
#include "support/DocumentFixture.h"
#include "ui/ProgramParts.h"
#include "ui/check/StopCheck.h"
#include "ui/dialogs/TourFileNames.h"
#include "ui/site/HtmlEditor.h"
#include "ui/support/DialogWatch.h"
#include "ui/support/Patience.h"

#include <QTemporaryDir>
#include <functional>
#include <memory>

class QDialog;
class QWebEngineProfile;
class QWebEngineView;
class QWidget;

namespace wendmark {
class BrowserView;
}

namespace wendmark::test {

/// Everything that windows need, in a temporary application folder with the program's own templates and
/// sample tour, settings of its own, and a clock on which pauses pass at once. For one test.
class UiFixture final {
public:
    enum class Time {
        passesAtOnce, ///< Pauses are over as soon as the clock was looked at.
        real          ///< The program's own clock.
    };

    UiFixture() : UiFixture(std::make_shared<ScratchFolder>(), Time::passesAtOnce) {}
    /// A further run of the program in an application folder that may have seen others; one at a time.
    UiFixture(std::shared_ptr<ScratchFolder> applicationFolder, Time time);
    ~UiFixture();

    std::shared_ptr<ScratchFolder> applicationFolder;
    ScratchFolder& scratch; ///< The application folder.
    Options options;
    RecordingLog log;
    StepClock stepClock = realStepClock(); ///< Says when a command has become a long one.
    Gate gate;
    QtDesktop desktop;
    SettingsStore settings;
    Registry registry; ///< Reads "registry.ini" of the scratch folder, which does not exist unless a test
                       ///< writes it.
    TourDocument document;
    TourModel& model;     ///< Of the document, open to the test.
    Workspace& workspace; ///< Same.
    TourContext& tour;    ///< Same.
    std::unique_ptr<QWebEngineProfile> profile;
    RecoveryStore recoveryStore; ///< In "state/recovery" of the scratch folder.
    RecoveryKeeper recovery;
    TourFileNames fileNames;
    HtmlEditor htmlEditor;
    SpellChecker spelling;
    StopCheck check;
    int beeps = 0;

    /// Seconds by which the clock goes on each time it is looked at.
    float clockStep = 0.5F;

    void letPass(float seconds) { m_seconds += seconds; }

    ProgramParts parts();

    /// A tour of `stopCount` stops in MyTours, saved; its stops are "Stop 1" at "newpage.htm" and so on.
    QString makeTour(const QString& name, int stopCount);

    QString path(const QString& nameInApplicationFolder) const;
    QString working(const QString& name) const { return path(QStringLiteral("NewTour/") + name); }

    /// Names of the files of a folder of the application folder, sorted.
    QStringList filesOf(const QString& folder) const;

private:
    float m_seconds = 1000;
};

/// Runs the event loop until `condition` holds; false when it still does not after so many `milliseconds`.
/// Unlike Qt Test's own waits, which look for events and then sleep, it never holds the engine up.
bool waitUntil(const std::function<bool()>& condition, int milliseconds = patience);

/// Lets the time come at once for each clock of a window: the timers that run again and again, at least every
/// `longest` milliseconds.
void fireClocks(const QWidget& window, int longest = 500);

/// Presses the button of this object name or, in a message box, of this caption.
void press(QDialog& dialog, const QString& button);

/// Picks a folder in a folder dialog by walking its tree.
void selectFolder(QDialog& dialog, const QString& path);

/// The engine inside a browser view, which only tests look into.
QWebEngineView& engineOf(const BrowserView& browser);

/// What the status bar of the main window has to say of the last command; empty: nothing.
QString noticeOf(const QWidget& window);

/// Text and title of a message box.
QString textOf(QDialog& dialog);

} // namespace wendmark::test
