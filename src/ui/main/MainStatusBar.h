#pragma once

#include <QStatusBar>

class QLabel;

namespace wendmark {

class ElidedLabel;
class TourDocument;

/// The status bar "sbStatusBar": what the browser says, what the program has to say, the date, the time, and
/// whether the tour is saved.
class MainStatusBar final : public QStatusBar {
    Q_OBJECT

public:
    explicit MainStatusBar(QWidget* parent);

    /// In the first panel.
    void showStatus(const QString& text);

    /// In a panel of its own, which is there while it has something to say: what the author should know about
    /// the command that has just ended. Empty: nothing.
    void showNotice(const QString& text);

    /// There is no printer: the pages are in this file.
    void showPrinted(const QString& path);

    /// Brings date and time up to date.
    void runTick();

    /// Brings the last panel up to date, and says once when steps of the history had to be dropped.
    void showHistory(const TourDocument& document);

    /// The tour was saved now, or not completely; the latter is said.
    void noteSaved(bool complete);

    /// Another tour: nothing was saved of it in this run.
    void forgetSaved();

private:
    QLabel* makePanel(const char* name);

    ElidedLabel* m_status;
    ElidedLabel* m_notice;
    QLabel* m_date;
    QLabel* m_time;
    QLabel* m_saved;
    QString m_savedAt;      ///< Time of the last save of this tour; empty: none in this run.
    int m_droppedSteps = 0; ///< Of which the author was told.
};

} // namespace wendmark
