#pragma once

#include <QPalette>

namespace wendmark {

/// The one colour of the program's sign that leads the eye: the first choice among buttons, what is selected
/// and where the keyboard is. In dark it is lighter, of the same hue.
QColor accentColour(bool dark);

/// The colours of the program's own looks.
QPalette lookPalette(bool dark);

} // namespace wendmark
