#pragma once

#include <QDialog>

class QPlainTextEdit;

namespace wendmark {

class QtDesktop;
class TourDocument;

/// Explains how a finished tour is started from a web page, and lists its launching points.
class frmLaunch final : public QDialog {
    Q_OBJECT

public:
    frmLaunch(const TourDocument& document, QtDesktop& desktop, QWidget* parent = nullptr);

    QSize sizeHint() const override;

signals:
    /// What was printed went into this file, because there is no printer.
    void printedToFile(const QString& path);

private:
    void print();

    const TourDocument& m_document;
    QtDesktop& m_desktop;
    QPlainTextEdit* m_text; ///< Text1
};

} // namespace wendmark
