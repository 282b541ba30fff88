#pragma once

#include <QDialog>

namespace wendmark {

class QtDesktop;
struct TourContext;

/// Explains how a finished tour is started from a web page, and lists its launching points.
class frmLaunch final : public QDialog {
    Q_OBJECT

public:
    frmLaunch(TourContext& tour, QtDesktop& desktop, QWidget* parent = nullptr);

    QSize sizeHint() const override;

signals:
    /// What was printed went into this file, because there is no printer.
    void printedToFile(const QString& path);

private:
    void print();

    TourContext& m_tour;
    QtDesktop& m_desktop;
};

} // namespace wendmark
