#pragma once

#include <QStatusBar>

class QLabel;

namespace wendmark {

class TourDocument;

/// The status bar "sbStatusBar": what the browser says, the date, the time, and whether the tour is saved.
class MainStatusBar final : public QStatusBar {
    Q_OBJECT

public:
    explicit MainStatusBar(QWidget* parent);

    /// In the first panel.
    void showStatus(const QString& text);

    /// There is no printer: the pages are in this file.
    void showPrinted(const QString& path);

    /// Brings date and time up to date.
    void runTick();

    /// Brings the last panel up to date.
    void showSaved(const TourDocument& document);

    /// The tour was saved now, or not completely.
    void noteSaved(bool complete);

    /// Another tour: nothing was saved of it in this run.
    void forgetSaved();

private:
    QLabel* makePanel(const char* name);

    QLabel* m_status;
    QLabel* m_date;
    QLabel* m_time;
    QLabel* m_saved;
    QString m_savedAt; ///< Time of the last save of this tour; empty: none in this run.
};

} // namespace wendmark
