#pragma once

#include <QDockWidget>
#include <QTimer>

class QMainWindow;

namespace wendmark {

class SettingsStore;
class StopListPanel;
struct ProgramParts;

/// The stop list at the side of the main window. It is there while the window has room for it, until the
/// author has shown or hidden it; from then on it stays so, in later runs of the program, too.
class StopListDock final : public QDockWidget {
    Q_OBJECT

public:
    /// What `parts` refers to must outlive the dock, which becomes part of the window.
    StopListDock(const ProgramParts& parts, QMainWindow& window);

    /// The author wants it shown, with the focus in it, or hidden.
    void toggle();

    /// Keeps its width for the next run.
    void store();

signals:
    /// What the author should know of the command that has just ended; empty: nothing.
    void noticeShown(const QString& text);

    /// The author wants to be back in the preview.
    void left();

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void takeWidth();
    void choose(bool shown);
    void showIfThereIsRoom();

    SettingsStore& m_settings;
    QMainWindow& m_window;
    StopListPanel* m_panel;
    int m_width;          ///< Pixels that the author has given it.
    bool m_chosen;        ///< The author has shown or hidden it.
    QTimer m_placed;      ///< Runs out once it has a place in the window.
    bool m_sized = false; ///< It has that width, or what the author makes of it.
};

} // namespace wendmark
