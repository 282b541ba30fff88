#include <QCoreApplication>
#include <QGenericPlugin>
#include <QKeyEvent>
#include <QTimer>
#include <cstdio>

namespace {

/// Rides in the real program: closes its splash window with a key as soon as that is shown, and says "shown"
/// on the standard output when the wizard's first page has been painted.
class StartProbe final : public QObject {
public:
    StartProbe() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Show && watched->objectName() == QLatin1String("frmSplash"))
            QCoreApplication::postEvent(watched,
                                        new QKeyEvent(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier));
        if (event->type() == QEvent::Paint && watched->objectName() == QLatin1String("frmWizard1"))
            QTimer::singleShot(0, watched, &StartProbe::reportShown);
        return false;
    }

private:
    static void reportShown() {
        std::puts("shown");
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
