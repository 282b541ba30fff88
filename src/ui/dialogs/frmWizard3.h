#pragma once

#include <QDialog>

namespace wendmark {

class FolderPicker;
class QtDesktop;
class Workspace;
struct HandOver;

/// Third page of the wizard: where the new tour's folder goes. Makes that folder and sets the workspace's
/// tourPath to it.
class frmWizard3 final : public QDialog {
    Q_OBJECT

public:
    frmWizard3(HandOver& handOver, Workspace& workspace, QtDesktop& desktop, QWidget* parent = nullptr);

private:
    void createNewFolder();
    void finish();
    void previous();

    HandOver& m_handOver;
    Workspace& m_workspace;
    QtDesktop& m_desktop;
    FolderPicker* m_picker;
};

} // namespace wendmark
