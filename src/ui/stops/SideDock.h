#pragma once

#include "platform/SettingsStore.h"

#include <QDockWidget>
#include <QTimer>

class QMainWindow;

namespace wendmark {

/// What tells one dock from another.
struct SideDockKind {
    QString name; ///< Of the object.
    QString title;
    Qt::DockWidgetArea area = Qt::LeftDockWidgetArea;
    int roomyWidth = 0; ///< Pixels of a window that has room for it beside the preview.
    Setting<QString> shown;
    Setting<float> width; ///< In twips.
};

/// A panel at a side of the main window. It is there while the window has room for it, until the author has
/// shown or hidden it; from then on it stays so, in later runs of the program, too.
class SideDock final : public QDockWidget {
    Q_OBJECT

public:
    /// The dock becomes part of the window, the panel part of the dock.
    SideDock(SideDockKind kind, QWidget* panel, SettingsStore& settings, QMainWindow& window);

    /// The author wants it shown, with the focus in it; with the focus in it already, hidden.
    void toggle();

    /// Keeps its width for the next run.
    void store();

signals:
    /// The panel is to take the focus.
    void entered();

    /// The preview is to take it.
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

    SideDockKind m_kind;
    SettingsStore& m_settings;
    QMainWindow& m_window;
    int m_width;          ///< Pixels that the author has given it.
    bool m_chosen;        ///< The author has shown or hidden it.
    QTimer m_placed;      ///< Runs out once it has a place in the window.
    bool m_sized = false; ///< It has that width, or what the author makes of it.
};

} // namespace wendmark
