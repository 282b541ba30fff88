#include "InsertBench.h"

#include "Comparison.h"
#include "platform/BrowserView.h"
#include "platform/Strings.h"
#include "ui/main/frmMain.h"
#include "ui/support/UiFixture.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QLabel>
#include <QTimer>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>
#include <QWebEngineView>
#include <filesystem>
#include <functional>
#include <optional>
#include <stdexcept>

namespace wendmark::bench {

namespace {

constexpr int patience = 60000; // Milliseconds.
constexpr int tick = 50;        // Milliseconds.
constexpr int ticksOfRest = 6;  // Between two runs the engine comes to rest.
constexpr int stopsBefore = 99;
constexpr double aim = 1.3;
constexpr QLatin1String stopTag(">*>*>vosktourstop->");

/// Milliseconds in a running event loop from the call of `begin` until `isDone` holds, which is looked at
/// whenever the signal comes. Nothing is polled, so that neither the engine nor the time is held up.
template <typename Sender, typename Signal>
double timeUntil(const std::function<bool()>& isDone, const Sender& sender, Signal signal,
                 const std::function<void()>& begin) {
    QEventLoop loop;
    std::optional<double> time;
    QElapsedTimer timer;
    QObject::connect(&sender, signal, &loop, [&] {
        if (time || !timer.isValid() || !isDone())
            return;
        time = static_cast<double>(timer.nsecsElapsed()) / 1e6;
        loop.quit();
    });
    QTimer::singleShot(patience, &loop, &QEventLoop::quit);
    timer.start();
    begin();
    if (!time)
        loop.exec();
    if (!time)
        throw std::runtime_error("a page does not come");
    return *time;
}

/// Runs the event loop until a view has been at rest for a while.
void rest(const std::function<bool()>& isBusy) {
    QEventLoop loop;
    int quietTicks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
        quietTicks = isBusy() ? 0 : quietTicks + 1;
        if (quietTicks == ticksOfRest)
            loop.quit();
    });
    timer.start(tick);
    loop.exec();
}

/// Reports the status texts that pages set, as the program's own view has to.
class StatusPage final : public QWebEnginePage {
    Q_OBJECT

public:
    StatusPage(QWebEngineProfile* profile, QObject* parent) : QWebEnginePage(profile, parent) {
        QWebEngineScript script;
        script.setWorldId(QWebEngineScript::MainWorld);
        script.setInjectionPoint(QWebEngineScript::DocumentCreation);
        script.setRunsOnSubFrames(true);
        script.setSourceCode(QStringLiteral("Object.defineProperty(window, 'status', {set: function (text) {"
                                            "console.debug(text); }});"));
        scripts().insert(script);
    }

    const QString& lastStatus() const { return m_lastStatus; }

signals:
    void statusTextSet();

protected:
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString& message, int,
                                  const QString&) override {
        m_lastStatus = message;
        emit statusTextSet();
    }

private:
    QString m_lastStatus;
};

/// The engine on its own, with a folder of pages.
class BareView final {
public:
    explicit BareView(const QSize& size) : m_page(&m_profile, &m_view) {
        m_view.setPage(&m_page);
        m_view.resize(size);
        m_view.show();
    }

    void load(const QString& path) {
        m_page.load(QUrl::fromLocalFile(path));
        rest();
    }

    /// Milliseconds until the stop page of the reloaded frameset has set its status text.
    double reload() {
        const double time = timeUntil([this] { return m_page.lastStatus().startsWith(stopTag); }, m_page,
                                      &StatusPage::statusTextSet, [this] { m_view.reload(); });
        rest();
        return time;
    }

private:
    void rest() const {
        bench::rest([this] { return m_page.isLoading(); });
    }

    QWebEngineProfile m_profile;
    QWebEngineView m_view;
    StatusPage m_page;
};

/// The main window with a tour of 99 stops.
class Editor final {
public:
    Editor() : m_window(m_program.parts()) {
        m_window.load(m_program.makeTour(QStringLiteral("bench"), stopsBefore));
        m_window.show();
        rest();
    }

    QSize browserSize() const { return browser().size(); }

    void goTo(int stop) {
        timeUntilLabelSays(stop, [=, this] {
            m_program.model.currentStop = static_cast<std::int16_t>(stop);
            m_window.refresh();
        });
    }

    /// Milliseconds until the stop label shows the new stop, which is after the current one.
    double insert() {
        return timeUntilLabelSays(m_program.model.currentStop + 1,
                                  [this] { m_window.runToolBarCommand(QStringLiteral("Insert")); });
    }

    void deleteAndGoTo(int stop) {
        m_window.runToolBarCommand(QStringLiteral("Delete"));
        rest();
        goTo(stop);
    }

    /// Copies the pages as they are now, and returns the way to the frameset on screen.
    QString copyPagesTo(const QString& name) const {
        const QString folder = m_program.path(name);
        std::filesystem::copy(toUtf8(m_program.path(QStringLiteral("NewTour"))), toUtf8(folder));
        return folder + QStringLiteral("/tmpframe.htm");
    }

private:
    double timeUntilLabelSays(int stop, const std::function<void()>& begin) {
        // The window's own handler is called before this one, so that the label has followed.
        const double time = timeUntil([=, this] { return label() == QString::number(stop); }, browser(),
                                      &BrowserView::statusTextChanged, begin);
        rest();
        return time;
    }

    BrowserView& browser() const { return *m_window.findChild<BrowserView*>(QStringLiteral("broMain")); }
    QString label() const { return m_window.findChild<QLabel*>(QStringLiteral("lblStopNum"))->text(); }

    void rest() const {
        bench::rest([this] { return browser().isBusy(); });
    }

    test::UiFixture m_program;
    frmMain m_window;
};

Comparison insertAfter(int stop, int runs) {
    Comparison result{"Insert after stop " + std::to_string(stop) +
                          " of 99 until the label shows the new one",
                      "reload in a bare view until the page sets its status text",
                      aim,
                      {},
                      {}};
    Editor editor;
    BareView bare(editor.browserSize());
    editor.goTo(stop);
    editor.insert();
    bare.load(editor.copyPagesTo(QStringLiteral("bare")));
    bare.reload();
    for (int run = 0; run < runs; ++run) {
        editor.deleteAndGoTo(stop);
        result.ours.push_back(editor.insert());
        result.baselines.push_back(bare.reload());
    }
    return result;
}

} // namespace

void runInsertBench(int runs) {
    for (const int stop : {1, 50, 99})
        print(insertAfter(stop, runs));
}

} // namespace wendmark::bench

#include "InsertBench.moc"
