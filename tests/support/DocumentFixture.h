#pragma once

#include "commands/TourDocument.h"
#include "support/ScratchFolder.h"
#include "support/TestTour.h"

#include <functional>
#include <string>

namespace wendmark {

/// Reaches into a document, for tests that need a tour in a state that no command leads to.
struct TourDocumentAccess {
    static TourModel& model(TourDocument& document) { return document.m_model; }
    static Workspace& workspace(TourDocument& document) { return document.m_workspace; }
    static TourContext& context(TourDocument& document) { return document.m_context; }
    static std::uint64_t lastNumber(const TourDocument& document) { return document.m_timeline.lastNumber(); }
};

namespace test {

/// A document in a temporary application folder with the program's own templates, for one test.
class DocumentFixture final {
public:
    DocumentFixture();

    ScratchFolder scratch; ///< The application folder.
    RecordingDesktop desktop;
    RecordingLog log;
    Options options;
    TourDocument document;

    /// A tour of `stops` stops in MyTours, not opened; its stops are "Stop 1" and so on. Returns its folder.
    std::string makeTour(const std::string& name, int stops);
    std::string tourFolder(const std::string& name) const { return scratch / ("MyTours/" + name); }
    std::string tourFile(const std::string& name, const std::string& file) const {
        return scratch / ("MyTours/" + name + "/" + file);
    }

    Opening openTour(const std::string& folder);
    bool newTour(const std::string& name, const std::string& title);

    /// Changes the tour behind the document's back.
    void change(const std::function<void(TourModel&)>& edit) { edit(TourDocumentAccess::model(document)); }

    std::string workingCopy() const { return scratch / "NewTour"; }
    std::string working(const std::string& name) const { return scratch / ("NewTour/" + name); }

    /// How many steps the document has recorded so far, undone ones included.
    std::uint64_t steps() const { return TourDocumentAccess::lastNumber(document); }
};

/// Lines of a script with this many stops, as readScript() takes them.
std::string scriptOfStops(int stops);

} // namespace test
} // namespace wendmark
