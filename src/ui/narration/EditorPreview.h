#pragma once

#include "model/StopList.h"
#include "ui/ProgramParts.h"

#include <QObject>
#include <QTimer>
#include <functional>

class QPushButton;
class QSplitter;

namespace wendmark {

class NarrationPreview;

/// The preview of the narration editor: how its texts will look, below them, with the button that folds it
/// away. Whether it is shown is kept in the settings.
class EditorPreview final : public QObject {
    Q_OBJECT

public:
    /// Asked for the texts in the fields, as they would be stored.
    using Texts = std::function<Stop()>;

    /// What `parts` refers to, and the splitter, must outlive it.
    EditorPreview(ProgramParts parts, QSplitter& panes, Texts texts);

    QPushButton& button() { return *m_button; }

    /// Shows it as it was left.
    void restore();

    /// Brings it up to date once no key has come for a while, or now.
    void follow() { m_timer.start(); }
    void refresh();

signals:
    /// It is among the panes for the first time.
    void made();

    /// The window needs more room, or less.
    void folded();

private:
    void show(bool shown);

    ProgramParts m_parts;
    QSplitter& m_panes;
    Texts m_texts;
    QPushButton* m_button;                 ///< btnPreview
    NarrationPreview* m_preview = nullptr; ///< Made when it is first shown.
    QTimer m_timer;
};

} // namespace wendmark
