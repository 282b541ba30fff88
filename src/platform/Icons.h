#pragma once

#include <QColor>
#include <QIcon>
#include <QString>

namespace wendmark {

/// A toolbar or menu icon by name, drawn from its SVG in the colour of the text around it, light or dark, and
/// sharp at every size.
QIcon themedIcon(const QString& name);

/// The same, always in this colour.
QIcon colouredIcon(const QString& name, const QColor& colour);

/// The program's own sign.
QIcon programIcon();

} // namespace wendmark
