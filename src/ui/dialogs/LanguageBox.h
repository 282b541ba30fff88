#pragma once

class QComboBox;
class QString;
class QWidget;

namespace wendmark {

/// The languages that a tour's buttons and sentences can have, each by its own name; the data of an entry is
/// its code. English, the first, has none.
QComboBox* makeLanguageBox(QWidget* parent);

/// Selects the language of this code, which gets an entry of its own where it has none.
void chooseLanguage(QComboBox& box, const QString& code);

} // namespace wendmark
