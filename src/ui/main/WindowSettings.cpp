#include "ui/main/WindowSettings.h"

#include "model/Options.h"
#include "platform/Settings.h"
#include "platform/SettingsStore.h"
#include "platform/Strings.h"
#include "platform/Twips.h"
#include "ui/WindowPlace.h"

#include <QWidget>

namespace wendmark {

void placeWindow(QWidget& window, const SettingsStore& settings) {
    window.move(pixelsFromTwips(settings.read(mainSettings::left)),
                pixelsFromTwips(settings.read(mainSettings::top)));
    window.resize(pixelsFromTwips(settings.read(mainSettings::width)),
                  pixelsFromTwips(settings.read(mainSettings::height)));
    centreOnScreen(window);
    keepOnScreenFrom(window, window.minimumSize());
    if (settings.read(mainSettings::maximised))
        window.setWindowState(window.windowState() | Qt::WindowMaximized);
}

void storePlacement(const QWidget& window, SettingsStore& settings) {
    if (window.isMinimized())
        return;
    const bool maximised = window.isMaximized() && window.normalGeometry().isValid();
    const QRect place = maximised ? window.normalGeometry() : QRect(window.pos(), window.size());
    settings.store(mainSettings::left, twipsFromPixels(place.x()));
    settings.store(mainSettings::top, twipsFromPixels(place.y()));
    settings.store(mainSettings::width, twipsFromPixels(place.width()));
    settings.store(mainSettings::height, twipsFromPixels(place.height()));
    settings.store(mainSettings::maximised, maximised);
}

void loadOptions(Options& options, const SettingsStore& settings) {
    options.htmlEditorPath = toUtf8(settings.read(mainSettings::htmlEditor));
    options.warnURLChange = settings.read(mainSettings::warnURLChange);
    options.autoCloseBrowser = settings.read(mainSettings::autoCloseBrowser);
}

void storeOptions(const Options& options, SettingsStore& settings) {
    settings.store(mainSettings::htmlEditor, toQString(options.htmlEditorPath));
    settings.store(mainSettings::warnURLChange, options.warnURLChange);
    settings.store(mainSettings::autoCloseBrowser, options.autoCloseBrowser);
}

} // namespace wendmark
