#pragma once

#include "recovery/RecoveryRecord.h"
#include "ui/ProgramParts.h"

#include <QObject>
#include <optional>

class QMainWindow;

namespace wendmark {

class Editors;
class HeldKeys;
class SideDock;
class StopListPanel;
class StopPanel;

/// What stands at the sides of the main window: the list of all stops, and the fields of the current one.
class SidePanels final : public QObject {
    Q_OBJECT

public:
    /// What `parts` refers to, and the others, must outlive them.
    SidePanels(const ProgramParts& parts, Editors& editors, QMainWindow& window);

    /// Shows the panel and leads into it, or hides it when the focus is there already.
    void toggleList();
    void toggleStop();

    /// The command to insert a stop was given: what is typed from now on is meant for that stop.
    void awaitStop();

    /// The command has ended. The new stop's address comes first, if the panel is shown.
    void beginStop(bool isInserted);

    /// What stands in the narration editor, or was typed here, and in no stop yet.
    std::optional<UnappliedTexts> unappliedTexts() const;

    /// Keeps what the author has made of them for the next run.
    void store();

signals:
    /// What the author should know of the command that has just ended; empty: nothing.
    void noticeShown(const QString& text);

    /// The author wants to be back in the preview.
    void left();

    /// The stop on screen shows another page.
    void pageChanged();

    /// The author wants to choose the page in the site editor.
    void siteEditorWanted();

private:
    void takeLocalFile();

    ProgramParts m_parts;
    Editors& m_editors;
    QMainWindow& m_window;
    StopListPanel* m_list;
    StopPanel* m_stop;
    SideDock* m_listDock;
    SideDock* m_stopDock;
    HeldKeys* m_keys;
    bool m_stopBegun = false; ///< The last command to insert one has led into its address.
};

} // namespace wendmark
