#pragma once

#include <QDialog>

class QLineEdit;

namespace wendmark {

class FolderPicker;
class Workspace;
struct HandOver;

/// Picks where a tour is saved under another name, and makes its folder. Sets tourPath and saveFolderChosen.
class frmSelectFolderSave final : public QDialog {
    Q_OBJECT

public:
    frmSelectFolderSave(HandOver& handOver, Workspace& workspace, QWidget* parent = nullptr);

    void reject() override;

private:
    void choose();

    HandOver& m_handOver;
    Workspace& m_workspace;
    FolderPicker* m_picker;
    QLineEdit* m_tourName;
    std::string m_formerTourPath; ///< Holds again when the dialog is cancelled.
};

} // namespace wendmark
