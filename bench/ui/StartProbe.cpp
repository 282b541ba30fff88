#include <QCoreApplication>
#include <QGenericPlugin>
#include <QKeyEvent>
#include <QTimer>
#include <cstdio>

namespace {

/// Rides in the programs that are measured: closes the splash window with a key as soon as that is shown, and
/// says on the standard output "shown" when the wizard's first page has been painted and "loaded" each time
/// that a web view has loaded its page.
class StartProbe final : public QObject {
    Q_OBJECT

public:
    StartProbe() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Show && watched->objectName() == QLatin1String("frmSplash"))
            QCoreApplication::postEvent(watched,
                                        new QKeyEvent(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier));
        if (event->type() == QEvent::Paint && watched->objectName() == QLatin1String("frmWizard1"))
            QTimer::singleShot(0, watched, [] { report("shown"); });
        // By name: nothing of the engine is linked.
        if (event->type() == QEvent::Show && watched->inherits("QWebEngineView"))
            connect(watched, SIGNAL(loadFinished(bool)), SLOT(reportLoaded()), Qt::UniqueConnection);
        return false;
    }

private slots:
    static void reportLoaded() { report("loaded"); }

private:
    static void report(const char* what) {
        std::puts(what);
        std::fflush(stdout);
    }
};

} // namespace

class StartProbePlugin final : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "StartProbe.json")

public:
    QObject* create(const QString&, const QString&) override { return new StartProbe; }
};

#include "StartProbe.moc"
