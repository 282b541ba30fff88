#pragma once

#include <QDialog>

namespace wendmark {

class FolderPicker;
class Workspace;
struct HandOver;

/// Picks the folder of a tour that exists. Sets tourPath and openFolderChosen.
class frmSelectFolderOpen final : public QDialog {
    Q_OBJECT

public:
    frmSelectFolderOpen(HandOver& handOver, Workspace& workspace, QWidget* parent = nullptr);

    void reject() override;

private:
    void choose();

    HandOver& m_handOver;
    Workspace& m_workspace;
    FolderPicker* m_picker;
};

} // namespace wendmark
