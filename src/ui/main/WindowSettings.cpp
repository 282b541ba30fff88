#include "ui/main/WindowSettings.h"

#include "model/Options.h"
#include "platform/Settings.h"
#include "platform/SettingsStore.h"
#include "platform/Strings.h"
#include "platform/Twips.h"
#include "ui/Messages.h"

#include <QWidget>

namespace wendmark {

void placeWindow(QWidget& window, const SettingsStore& settings) {
    window.move(pixelsFromTwips(settings.read(mainSettings::left)),
                pixelsFromTwips(settings.read(mainSettings::top)));
    window.resize(pixelsFromTwips(settings.read(mainSettings::width)),
                  pixelsFromTwips(settings.read(mainSettings::height)));
    centreOnScreen(window);
}

void storePlacement(const QWidget& window, SettingsStore& settings) {
    if (window.isMinimized())
        return;
    settings.store(mainSettings::left, twipsFromPixels(window.x()));
    settings.store(mainSettings::top, twipsFromPixels(window.y()));
    settings.store(mainSettings::width, twipsFromPixels(window.width()));
    settings.store(mainSettings::height, twipsFromPixels(window.height()));
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
