#pragma once

#include <QDialog>
#include <string>

class QDialogButtonBox;

namespace wendmark {

class FolderPicker;
struct WorkspaceFolders;

/// Picks the folder of a tour that exists.
class frmSelectFolderOpen final : public QDialog {
    Q_OBJECT

public:
    /// `tourPath` is the folder of the tour that was open until now. `folders` must outlive the dialog.
    frmSelectFolderOpen(const WorkspaceFolders& folders, std::string tourPath, QWidget* parent = nullptr);

    /// The author has confirmed a folder.
    bool folderChosen() const { return m_folderChosen; }
    QString folder() const { return m_folder; }

private:
    void addSample(QDialogButtonBox& buttons);
    void choose(const QString& folder);

    const WorkspaceFolders& m_folders;
    std::string m_tourPath;
    FolderPicker* m_picker;
    QString m_folder;
    bool m_folderChosen = false;
};

} // namespace wendmark
