#pragma once

#include <QString>
#include <QUrl>

class QWidget;

namespace wendmark {

struct ProgramParts;

/// A page of the author's own that was taken into the tour.
struct LocalPage {
    QUrl address;   ///< In the working copy; empty: the author has chosen none.
    QString notice; ///< Why it could not be copied; empty when it was.
};

/// "Select Local File": asks for a page and copies it into the working copy, under another name if need be.
LocalPage takeLocalPage(const ProgramParts& parts, QWidget& window);

} // namespace wendmark
