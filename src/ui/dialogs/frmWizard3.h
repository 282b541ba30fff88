#pragma once

#include <QDialog>

namespace wendmark {

class FolderPicker;
class QtDesktop;
struct WizardState;
struct WorkspaceFolders;

/// Third page of the wizard: where the new tour's folder goes. Makes that folder.
class frmWizard3 final : public QDialog {
    Q_OBJECT

public:
    frmWizard3(WizardState& state, const WorkspaceFolders& folders, QtDesktop& desktop,
               QWidget* parent = nullptr);

private:
    void createNewFolder();
    void finish();
    void previous();

    WizardState& m_state;
    const WorkspaceFolders& m_folders;
    QtDesktop& m_desktop;
    FolderPicker* m_picker;
};

} // namespace wendmark
