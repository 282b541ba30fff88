#pragma once

#include <QString>

class QUrl;

/// Scripts of the program's own for the page around frames. They do nothing when no frame has the name.
namespace wendmark {

/// Gives the page that the frame shows the body of `html`, a whole page; it hears the event "bodyreplaced".
QString scriptToReplaceBody(const QString& frame, const QString& html);

/// Shows another page in the frame, in place of the one there.
QString scriptToReplaceFrame(const QString& frame, const QUrl& address);

} // namespace wendmark
