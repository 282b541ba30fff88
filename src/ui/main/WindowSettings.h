#pragma once

class QWidget;

namespace wendmark {

class SettingsStore;
struct Options;

/// Gives the main window the size that it had last, in the middle of the screen: whatever place was stored,
/// only the size counts, and that only as far as the screen has it. Maximised, if it was that.
void placeWindow(QWidget& window, const SettingsStore& settings);

/// Stores place and size, unless the window is minimised.
void storePlacement(const QWidget& window, SettingsStore& settings);

void loadOptions(Options& options, const SettingsStore& settings);
void storeOptions(const Options& options, SettingsStore& settings);

} // namespace wendmark
