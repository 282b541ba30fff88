#pragma once

#include "base/Log.h"
#include "model/Desktop.h"
#include "model/Options.h"
#include "model/TourContext.h"
#include "model/TourModel.h"
#include "model/Workspace.h"
#include "support/ScratchFolder.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace wendmark::test {

/// A desktop that writes down what it is asked for, and whose clock moves by a tenth of a second each time
/// window events are handled.
class RecordingDesktop final : public Desktop {
public:
    void showLineError(const std::string& text) override;
    void processPendingEvents() override;
    float timeOfDay() override { return seconds; }
    void navigateMainBrowser(const std::string& address) override;
    void setBusyPointer(Pointer pointer) override;

    /// Everything asked for except for events, in order: "error: ...", "navigate: ...", "pointer: 11".
    std::vector<std::string> calls;
    std::vector<std::string> lineErrors;
    std::vector<std::string> addresses;
    float seconds = 1000;
    int eventRounds = 0;                   ///< How often window events were handled.
    std::function<void()> onPendingEvents; ///< Called with each round; may be empty.
};

class RecordingLog final : public Log {
public:
    std::vector<std::string> notes;
    std::vector<std::string> warnings;
    std::vector<std::string> failures;

private:
    void write(Level level, const std::string& line) override;
};

/// An application folder of its own with a tour in it, for one test. The Template folder is empty unless
/// filled.
class TestTour final {
public:
    TestTour();

    ScratchFolder scratch;
    TourModel model;
    Options options;
    RecordingDesktop desktop;
    RecordingLog log;
    Workspace workspace; ///< appPath is the scratch folder; its folders exist; tourPath is empty.
    TourContext context;

    /// Copies the templates that the program comes with into the Template folder.
    void useShippedTemplates();

    /// Copies the small templates of the golden tours, which hold every marker that the generators need.
    void useGoldenTemplates();

    void writeTemplate(std::string_view name, std::string_view bytes);
    void writeWorking(std::string_view name, std::string_view bytes);
    std::string working(std::string_view name) const;

    /// Lines of a file of the working copy, which must all end in CR LF.
    std::vector<std::string> workingLines(std::string_view name) const;

    /// Adds a stop with these texts at the end of the tour.
    void addStop(std::string_view title, std::string_view address, std::string_view narration = "Words.\r\n",
                 std::string_view instruction = "Do it.\r\n");

private:
    void useTemplates(const std::string& folder);
};

/// Splits a text into its lines; throws when one does not end in CR LF.
std::vector<std::string> splitCrlfLines(std::string_view text);

} // namespace wendmark::test
