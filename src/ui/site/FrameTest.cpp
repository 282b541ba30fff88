#include "ui/site/FrameTest.h"

#include "base/Files.h"
#include "base/Log.h"
#include "base/TextLines.h"
#include "model/Workspace.h"
#include "platform/BrowserView.h"
#include "platform/Gate.h"
#include "platform/Strings.h"
#include "probe/HeaderRequest.h"

#include <QCoreApplication>

namespace wendmark {

namespace {

constexpr std::string_view testPage = "ft.htm";
constexpr std::string_view beforeAddress = "<frame src = \"";
constexpr std::string_view behindAddress = "\"name=\"tw\">";

QString say(const char* text) {
    return QCoreApplication::translate("FrameTest", text);
}

QString whyNot(const FramingVerdict& verdict) {
    if (verdict.allowed)
        return {};
    return say("Its server refuses frames of other sites: %1").arg(toQString(verdict.reason));
}

/// Lets the browser give way to pages that try to take over the test page, for as long as it lives.
class TakeOverGrant final {
public:
    TakeOverGrant(BrowserView& browser, const QUrl& page) : m_browser(browser) {
        m_browser.grantTakeOverOf(page);
    }
    ~TakeOverGrant() { m_browser.grantTakeOverOf({}); }
    TakeOverGrant(const TakeOverGrant&) = delete;
    TakeOverGrant& operator=(const TakeOverGrant&) = delete;

private:
    BrowserView& m_browser;
};

} // namespace

FrameTest::FrameTest(BrowserView& browser, const Workspace& workspace, Gate& gate, Log& log,
                     QString userAgent)
    : m_browser(browser)
    , m_workspace(workspace)
    , m_gate(gate)
    , m_log(log)
    , m_userAgent(std::move(userAgent)) {}

bool FrameTest::CreateFTFile(const QString& address, int lowerFrame) const {
    const std::string lines[] = {"<html>",
                                 "<head>",
                                 "<title>Frame Test </title>",
                                 "</head>",
                                 "<frameset rows=\"*," + std::to_string(lowerFrame) + "\">",
                                 std::string(beforeAddress).append(toUtf8(address)).append(behindAddress),
                                 "<frame src = \"lower.htm\" name=\"bw\">",
                                 "</frameset>",
                                 "</html>"};
    std::string page;
    for (const std::string& line : lines)
        page.append(line).append(lineBreak);
    const Outcome written = m_workspace.writeWorkingFile(testPage, page);
    m_log.skip(written);
    return written.ok();
}

FrameTest::Result FrameTest::run(const QUrl& location, const std::function<bool()>& goOn, int lowerFrame) {
    m_reason.clear();
    if (!CreateFTFile(location.toString(QUrl::FullyEncoded), lowerFrame))
        return Result::notRun;
    const QUrl page = QUrl::fromLocalFile(toQString(m_workspace.workingFile(testPage)));
    // A page that goes over into the next while it is being loaded is not told from that by the browser.
    m_browser.stop();
    if (!waitWhile([&] { return m_browser.isBusy(); }, goOn))
        return Result::abandoned;
    m_gate.handleEvents(true);
    const TakeOverGrant grant(m_browser, page);
    const HeaderRequest request(location, m_userAgent);
    bool begun = false;
    bool ended = false;
    QObject watcher;
    QObject::connect(&m_browser, &BrowserView::navigationStarted, &watcher,
                     [&](const QUrl& address) { begun = begun || address == page; });
    QObject::connect(&m_browser, &BrowserView::navigationCompleted, &watcher, [&] { ended = begun; });
    m_browser.navigate(page);
    // The browser is not busy any more a little before it says that it has ended.
    const auto isOpen = [&] { return m_browser.frameRefusals().isEmpty() && !request.isDone(); };
    const bool settled = waitWhile([&] { return !begun; }, goOn) &&
                         waitWhile([&] { return m_browser.isBusy() || !ended; }, goOn) &&
                         waitWhile(isOpen, goOn);
    if (!settled)
        return Result::abandoned;
    const Result result = judge(request);
    if (result == Result::failed && showsTestPage())
        m_browser.navigate(location);
    return result;
}

QUrl testedPageOf(const QUrl& location) {
    const files::Contents file = files::read(toUtf8(location.toLocalFile()));
    const std::string_view page = file.bytes;
    const std::size_t start = page.find(beforeAddress);
    const std::size_t end = page.find(behindAddress, start);
    if (start == std::string_view::npos || end == std::string_view::npos)
        return location;
    const std::size_t address = start + beforeAddress.size();
    return QUrl(toQString(std::string(page.substr(address, end - address))));
}

bool FrameTest::showsTestPage() const {
    return m_browser.location() == QUrl::fromLocalFile(toQString(m_workspace.workingFile(testPage)));
}

FrameTest::Result FrameTest::judge(const HeaderRequest& request) {
    if (!showsTestPage())
        m_reason = say("The page has left its frame and taken over the whole window.");
    else if (m_browser.firstFrameShowsError())
        m_reason = whyError(request);
    else if (framingPolicyFromDisk(request.answers()).allowed)
        m_reason = whyNot(framingPolicy(request.answers()));
    return m_reason.isEmpty() ? Result::passed : Result::failed;
}

/// Why an error page stands in place of the page; empty when browsers show it in tours on web servers, or
/// its server has answered that there is none.
QString FrameTest::whyError(const HeaderRequest& request) const {
    bool refusesDisk = false;
    for (const QString& message : m_browser.frameRefusals()) {
        const std::optional<FramingVerdict> told = refusalOnConsole(toUtf8(message));
        if (told && !told->allowed)
            return whyNot(*told);
        refusesDisk = refusesDisk || told;
    }
    if (refusesDisk)
        return {};
    if (request.answers().empty())
        return say("The page has not come: the frame shows an error of the browser.");
    // Should the engine use other words one day.
    return whyNot(framingPolicy(request.answers()));
}

bool FrameTest::waitWhile(const std::function<bool()>& condition, const std::function<bool()>& goOn) {
    while (condition()) {
        m_gate.handleEvents(true);
        if (!goOn())
            return false;
    }
    return true;
}

} // namespace wendmark
