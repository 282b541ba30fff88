// An author's session without windows: author APP-FOLDER TOUR SAVE-AS-FOLDER NEW-TOUR [--in-place]. What the
// log gets is printed, a line each. With --in-place the session ends with a script that is written over the
// old one, as no program should: whoever looks for losses must find this one.

#include "base/Files.h"
#include "base/Log.h"
#include "commands/StopCommands.h"
#include "commands/TourCommands.h"
#include "commands/TourSave.h"
#include "model/Desktop.h"
#include "model/Options.h"
#include "model/ScriptFile.h"
#include "model/TourContext.h"
#include "model/TourModel.h"
#include "model/Workspace.h"
#include "publish/StopPages.h"

#include <cstdio>
#include <string>
#include <vector>

namespace {

using namespace wendmark;

class PrintingLog final : public Log {
    void write(Level level, const std::string& line) override {
        const char* const name = level == Level::failure   ? "failure"
                                 : level == Level::warning ? "warning"
                                                           : "note";
        std::printf("%s: %s\n", name, line.c_str());
    }
};

class PatientDesktop final : public Desktop {
public:
    void showLineError(const std::string& text) override { std::printf("shown: %s\n", text.c_str()); }
    void processPendingEvents() override {}
    float timeOfDay() override { return m_seconds += 60; }
    void navigateMainBrowser(const std::string&) override {}
    void setBusyPointer(Pointer) override {}

private:
    float m_seconds = 0;
};

class Author final {
public:
    explicit Author(const std::string& appFolder)
        : m_workspace(WorkspaceFolders::inside(appFolder), m_model, m_desktop, m_log)
        , m_context{m_model, m_workspace, m_desktop, m_log} {}

    void start() {
        startProgram(m_context, m_options);
        loadTemplateTour(m_context);
    }

    /// False when not all of the tour has arrived.
    bool editTour(const std::string& folder) {
        if (!folderHoldsTour(folder)) {
            std::printf("shown: the folder holds no tour\n");
            return false;
        }
        m_workspace.initTourDefaults();
        m_workspace.setTourPath(folder);
        openTour(m_context);
        showNextStop(m_context);
        insertStop(m_context);
        if (m_model.stops.held() >= 2) // The disk may have kept them back.
            m_model.stops.at(2).stopTitle = "A new stop";
        makeStopPages(m_context, 2, 2);
        showNextStop(m_context);
        deleteStop(m_context);
        moveStopBack(m_context);
        save();
        return !m_workspace.isIncomplete();
    }

    void saveAs(const std::string& folder) {
        m_workspace.setTourPath(folder);
        saveTourAs(m_context);
    }

    void beginTour(const std::string& folder) {
        m_workspace.resetWorkingCopy();
        if (const Outcome made = files::makeFolder(folder); !made.ok()) {
            m_log.skip(made);
            return;
        }
        m_workspace.setTourPath(folder);
        finishNewTour(m_context, "New");
        insertStop(m_context);
        save();
    }

    void overwriteScript(const std::string& folder) const {
        std::FILE* const file = std::fopen(files::join(folder, "script.txt").c_str(), "wb");
        if (file == nullptr)
            return;
        const std::string script = files::read(m_workspace.workingFile("script.txt")).bytes;
        std::fwrite(script.data(), 1, script.size(), file);
        std::fclose(file);
    }

private:
    void save() { saveTour(m_context); }

    TourModel m_model;
    Options m_options;
    PrintingLog m_log;
    PatientDesktop m_desktop;
    Workspace m_workspace;
    TourContext m_context;
};

} // namespace

int main(int argc, char* argv[]) {
    const std::vector<std::string> words(argv + 1, argv + argc);
    if (words.size() < 4)
        return 2;
    Author author(words[0]);
    author.start();
    const bool complete = author.editTour(words[1]);
    if (words.size() > 4 && words[4] == "--in-place") {
        author.overwriteScript(words[1]);
        return 0;
    }
    // Nobody puts a tour that did not open completely over another one.
    if (complete)
        author.saveAs(words[2]);
    author.beginTour(words[3]);
    return 0;
}
