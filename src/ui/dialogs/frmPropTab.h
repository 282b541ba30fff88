#pragma once

#include <QDialog>
#include <cstdint>
#include <string>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QTabWidget;

namespace wendmark {

class LayoutDiagram;
class LastFolder;
class QtDesktop;
class TourDocument;

/// The properties of the whole tour, on five tabs. They go into the model, and the pages that show them are
/// generated again, when the author presses OK, and only then.
class frmPropTab final : public QDialog {
    Q_OBJECT

public:
    /// `logoFile` is the logo that the author chose last in this run of the program, or empty.
    frmPropTab(TourDocument& document, std::string logoFile, QtDesktop& desktop, QWidget* parent = nullptr);

    /// Where the file dialog for logos begins; without it where the program was started. Must outlive the
    /// dialog.
    void setLogoFolder(LastFolder& folder) { m_logoFolder = &folder; }

    /// The logo that the author has chosen by now, also when the dialog was cancelled.
    const std::string& logoFile() const { return m_logoFile; }

    /// Number of the tab on show, counted from 1.
    std::int16_t currentTab() const;

private:
    QWidget* makeGeneralPage();
    QWidget* makeCachingPage();
    QWidget* makeLaunchingPage();
    QWidget* makeLayoutPage();
    QWidget* makeLogoPage();
    void addTab(const QString& caption, const QString& key, QWidget* page);
    void fillFromModel();

    void AddToListIfOK();
    void removeLaunchURL();
    void showSelectedLaunchURL();
    void refuseText(const QString& message);
    void keepNumeric(QLineEdit& field, const std::int16_t& current);
    void resetLayout();
    void chooseLogo();
    void setLogo(const QString& file);
    void showLogo(const QString& file);
    void takeOver();

    TourDocument& m_document;
    std::string m_logoFile;
    QtDesktop& m_desktop;
    LastFolder* m_logoFolder = nullptr;
    QTabWidget* m_tabs; ///< TabStrip1
    QLineEdit* m_tourTitle = nullptr;
    QLineEdit* m_author = nullptr;
    QCheckBox* m_addInstructions = nullptr;
    QComboBox* m_language = nullptr;
    QCheckBox* m_besidePage = nullptr;
    QLineEdit* m_cachePeriod = nullptr;
    QCheckBox* m_bufFlag = nullptr;
    QLineEdit* m_launchURL = nullptr;
    QListWidget* m_launchURLList = nullptr;
    LayoutDiagram* m_layout = nullptr;
    QLabel* m_picture = nullptr; ///< Picture1
};

} // namespace wendmark
