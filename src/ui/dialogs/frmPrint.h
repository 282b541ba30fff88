#pragma once

#include "publish/PrintedTour.h"

#include <QDialog>
#include <string>

class QCheckBox;
class QLineEdit;
class QRadioButton;
class QWidget;

namespace wendmark {

class QtDesktop;
class TourDocument;

/// Asks which stops of the tour to print, and prints them with the tour's properties as the last page. The
/// properties are printed in any case; their box only changes the number of pages that the headers tell. The
/// box of the stops' images changes nothing.
class frmPrint final : public QDialog {
    Q_OBJECT

public:
    /// The references must outlive the dialog.
    frmPrint(const TourDocument& document, std::string logoFile, QtDesktop& desktop,
             QWidget* parent = nullptr);

signals:
    /// There is no printer: the pages are in this new PDF file.
    void printedToFile(const QString& path);

private:
    QWidget* makeRange();
    QWidget* makeIncluded();
    void selectStops(bool selected);
    void correct(QLineEdit& field, const QString& otherwise);
    StopRange wantedRange() const;
    void print();

    const TourDocument& m_document;
    std::string m_logoFile;
    QtDesktop& m_desktop;
    QRadioButton* m_allStops;      ///< optAllStops
    QRadioButton* m_selectedStops; ///< optSelStops
    QLineEdit* m_from;             ///< txtFrom
    QLineEdit* m_to;               ///< txtTo
    QCheckBox* m_image;            ///< chkImage
    QCheckBox* m_properties;       ///< chkProp
};

} // namespace wendmark
